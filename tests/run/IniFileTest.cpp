#include <gtest/gtest.h>

#include "platform/Win1252.h"
#include "run/IniFile.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

namespace fs = std::filesystem;

// A program folder and two simulator folders holding scenery.cfg, reached through Z:.
struct IniFolder {
    test::TempDir Dir;
    fs::path Program = Dir.Path / "Skyloom";
    fs::path Fs9 = Dir.Path / "Games" / "Fs9";
    fs::path Fsx = Dir.Path / "Games" / "FSX";
    platform::DriveMap Drives = platform::MakeDriveMap(Dir.Path.string(), {});

    IniFolder() {
        fs::create_directories(Program);
        test::WriteFile(Fs9 / "scenery.cfg", "");
        test::WriteFile(Fsx / "scenery.cfg", "");
    }
    // The stored form of a folder: its Windows path upper-cased, with a backslash.
    std::string Stored(const fs::path& folder) const {
        return Upper1252(test::WindowsFolder(Drives, folder));
    }
    IniSettings Read(const std::string& text, const char* name = kIniFileName) const {
        test::WriteFile(Program / name, text);
        return ReadIniFile(Program.string(), Drives);
    }
    std::string Bytes(const char* name = kIniFileName) const {
        return test::ReadBytes(Program / name);
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(Program))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST(IniFile, FirstStartThenKeyOrderShowsTheLastSimulator) {
    IniFolder f;
    IniSettings settings = ReadIniFile(f.Program.string(), f.Drives);
    EXPECT_EQ(PresetPath(settings), "");
    EXPECT_EQ(f.Names(), std::vector<std::string>{"SKLDbManager.ini"});  // created empty
    EXPECT_EQ(f.Bytes(), "");
    WriteIniFile(f.Program.string(), settings);
    EXPECT_EQ(f.Bytes(), "[FS]\r\nFSPATH09=\r\nFSPATH10=\r\nFSLAST=0\r\n");
    EXPECT_EQ(f.Bytes(kIniBackupName), "");

    settings = {f.Stored(f.Fs9), f.Stored(f.Fsx), 1};
    WriteIniFile(f.Program.string(), settings);
    const std::string fsxLast = "[FS]\r\nFSPATH10=" + f.Stored(f.Fsx) +
                                "\r\nFSPATH09=" + f.Stored(f.Fs9) + "\r\nFSLAST=1\r\n";
    EXPECT_EQ(f.Bytes(), fsxLast);
    EXPECT_EQ(f.Bytes(kIniBackupName), "[FS]\r\nFSPATH09=\r\nFSPATH10=\r\nFSLAST=0\r\n");
    IniSettings read = ReadIniFile(f.Program.string(), f.Drives);
    EXPECT_EQ(read.Fs09Path, settings.Fs09Path);
    EXPECT_EQ(read.Fs10Path, settings.Fs10Path);
    EXPECT_EQ(PresetPath(read), f.Stored(f.Fsx));
}

TEST(IniFile, FileNamesInAnyCaseAreOneFile) {
    IniFolder f;
    test::WriteFile(f.Program / "SKLDBMANAGERINI.OLD", "older");
    std::string text = "[fs]\r\nfspath09=" + f.Stored(f.Fs9) + "\r\nfslast=0\r\n";
    EXPECT_EQ(f.Read(text, "skldbmanager.ini").Fs09Path, f.Stored(f.Fs9));
    EXPECT_EQ(f.Names(), (std::vector<std::string>{"SKLDBMANAGERINI.OLD", "skldbmanager.ini"}));
    WriteIniFile(f.Program.string(), IniSettings{});
    EXPECT_EQ(f.Names(), (std::vector<std::string>{"SKLDbManager.ini", "SKLDbManagerini.old"}));
    EXPECT_EQ(f.Bytes(kIniBackupName), text);
}

TEST(IniFile, StoredPathsWithoutSceneryCfgAreForgotten) {
    IniFolder f;
    std::string fs9 = f.Stored(f.Fs9);
    std::string fsx = f.Stored(f.Fsx);
    fs::remove(f.Fsx / "scenery.cfg");
    IniSettings settings =
        f.Read("[FS]\r\nFSPATH09=" + fs9 + "\r\nFSPATH10=" + fsx + "\r\nFSLAST=1\r\n");
    EXPECT_EQ(settings.Fs09Path, fs9);  // found although the folder is spelt otherwise
    EXPECT_EQ(settings.Fs10Path, "");
    EXPECT_EQ(PresetPath(settings), "");  // FSX last without its path: no preset
    WriteIniFile(f.Program.string(), settings);
    EXPECT_EQ(f.Bytes(), "[FS]\r\nFSPATH10=\r\nFSPATH09=" + fs9 + "\r\nFSLAST=1\r\n");

    // Joined as they stand, so no trailing backslash fails; a letter that no
    // folder stands for, a relative path, a vanished folder, a Windows-1252 name.
    fs::path accented = f.Dir.Path / "J\xC3\xA4ger";
    test::WriteFile(accented / "scenery.cfg", "");
    EXPECT_EQ(f.Read("[FS]\r\nFSPATH09=" + f.Stored(accented) + "\r\n").Fs09Path,
              f.Stored(accented));
    for (const std::string& path : {fs9.substr(0, fs9.size() - 1), std::string("Q:\\FS9\\"),
                                    std::string("FS9\\"), f.Stored(f.Dir.Path / "Gone")}) {
        EXPECT_EQ(f.Read("[FS]\r\nFSPATH09=" + path + "\r\n").Fs09Path, "") << path;
    }
}

TEST(IniFile, ValuesAreReadAsThePrivateProfileReadGivesThem) {
    IniFolder f;
    std::string fs9 = f.Stored(f.Fs9);
    std::string fsx = f.Stored(f.Fsx);
    // Other sections, blanks around names and values, quotes, LF line ends, the
    // first of two keys.
    IniSettings settings =
        f.Read("[Other]\nFSLAST=7\nFSPATH10=" + fs9 + "\n[ fs ]\n FsPath09 = \"" + fs9 +
               "\" \nFSLAST = 1\nFSLAST=0\nFSPATH10='" + fsx + "'\n[More]\nFSPATH09=x\n");
    EXPECT_EQ(settings.Fs09Path, fs9);
    EXPECT_EQ(settings.Fs10Path, fsx);
    EXPECT_EQ(settings.FsLast, 1);
    EXPECT_EQ(f.Read("FSPATH09=" + fs9 + "\r\nFSLAST=1\r\n").Fs09Path, "");  // no [FS]
    EXPECT_EQ(f.Read(std::string("\0\xFF[FS\r\n=\r\n[\r\nFSLAST\r\n", 20)).FsLast, 0);
    // A value is cut at 255 characters.
    fs::path deep = f.Dir.Path / std::string(200, 'A') / std::string(100, 'B');
    test::WriteFile(deep / "scenery.cfg", "");
    EXPECT_EQ(f.Read("[FS]\r\nFSPATH09=" + f.Stored(deep) + "\r\n").Fs09Path, "");

    // A folder in the file's place, a program folder that is gone: no crash.
    fs::remove(f.Program / kIniFileName);
    fs::create_directories(f.Program / kIniFileName);
    EXPECT_EQ(ReadIniFile(f.Program.string(), f.Drives).FsLast, 0);
    WriteIniFile(f.Program.string(), IniSettings{"C:\\X\\", "", 0});
    EXPECT_TRUE(fs::is_directory(f.Program / kIniFileName));
    WriteIniFile((f.Dir.Path / "nowhere").string(), IniSettings{});
    EXPECT_FALSE(fs::exists(f.Dir.Path / "nowhere"));
}

TEST(IniFile, FsLastTakesTheLeadingNumberRoundedToEven) {
    const std::vector<std::pair<std::string, int>> cases = {
        {"0", 0},     {"1", 1},     {"2", 2},       {"255", 255}, {"256", 0},  {"-1", 0},
        {"abc", 0},   {"1x", 1},    {"", 0},        {"+1", 1},    {"0.5", 0},  {"1.5", 2},
        {"2.5", 2},   {"3.5", 4},   {"255.4", 255}, {"255.5", 0}, {"-0.4", 0}, {".6", 1},
        {"1e2", 100}, {"1E999", 0}, {"1d1", 10},    {" 1 2", 12}, {"2e", 2},   {"1,5", 1},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(FsLastValue(text), value) << text;
}

TEST(IniFile, ValidSelectionsAreStoredAndInvalidOnesLeaveTheSettings) {
    IniSettings settings{"D:\\FS9\\", "D:\\FSX\\", 2};
    EXPECT_EQ(PresetPath(settings), "D:\\FSX\\");  // 2 presets like 1
    StoreSelection(settings, Validation{});
    EXPECT_EQ(settings.FsLast, 2);
    Validation fs9;
    fs9.StoredPath = "E:\\FS9\\";
    fs9.FsLast = 0;
    StoreSelection(settings, fs9);
    EXPECT_EQ(settings.Fs09Path, "E:\\FS9\\");
    EXPECT_EQ(settings.Fs10Path, "D:\\FSX\\");
    EXPECT_EQ(settings.FsLast, 0);
    settings.Fs09Path.clear();
    EXPECT_EQ(PresetPath(settings), "");  // FS2004 last with no path: none
}

}  // namespace
}  // namespace skl
