#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/DriveMap.h"
#include "platform/FileSystem.h"
#include "platform/Win1252.h"

namespace skl::platform {
namespace {

namespace fs = std::filesystem;

// A fresh folder under the temporary folder, removed with everything in it.
class DriveMapTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "skldrive-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        root_ = fs::canonical(pattern).string();
    }
    void TearDown() override {
        std::error_code error;
        fs::remove_all(root_, error);
    }
    std::string Make(const std::string& relative, const std::string& content = "x") {
        fs::path path = fs::path(root_) / relative;
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path.string();
    }
    std::string MakeFolder(const std::string& relative) {
        fs::create_directories(fs::path(root_) / relative);
        return root_ + "/" + relative;
    }
    std::string root_;
};

TEST(Win1252Test, CaseTablesAndUtf8) {
    EXPECT_EQ(ToUpper1252('\xE9'), '\xC9');
    EXPECT_EQ(ToLower1252('\xC9'), '\xE9');
    EXPECT_EQ(ToUpper1252('\xFF'), '\x9F');
    EXPECT_EQ(ToLower1252('\x9F'), '\xFF');
    EXPECT_EQ(ToUpper1252('\x9A'), '\x8A');
    for (char unchanged : {'\xF7', '\xDF', '\xB5', '\xD7', '1', '_'}) {
        EXPECT_EQ(ToUpper1252(unchanged), unchanged);
        EXPECT_EQ(ToLower1252(unchanged), unchanged);
    }
    EXPECT_EQ(Upper1252("z\xFCrich"), "Z\xDCRICH");
    EXPECT_EQ(TrimBlanks("  a\tb \t "), "a\tb \t");
    EXPECT_EQ(TrimBlanks("   "), "");

    // Every code survives the way to UTF-8 and back, the undefined ones included.
    std::string all;
    for (int code = 1; code < 256; ++code) all += static_cast<char>(code);
    EXPECT_EQ(Utf8ToWin1252(Win1252ToUtf8(all)), all);
    EXPECT_EQ(Win1252ToUtf8("\x80\x81\x9F"), "\u20AC\xC2\x81\u0178");
    EXPECT_EQ(Utf8ToWin1252("Z\u00FCrich \u2122 \u03A9 \U0001F600"), "Z\xFCrich \x99 ? ?");
    // Bytes that are no UTF-8 (a lone lead, an overlong form) stay as they are.
    EXPECT_EQ(Utf8ToWin1252("caf\xE9 \xC0\xAF"), "caf\xE9 \xC0\xAF");
}

TEST_F(DriveMapTest, WinePrefixLettersAndLookup) {
    std::string prefix = root_ + "/wine";
    Make("wine/system.reg", "WINE REGISTRY Version 2\n");
    MakeFolder("wine/dosdevices");
    std::string sim = MakeFolder("wine/drive_c/Program Files/FS9");
    Make("wine/drive_c/Program Files/FS9/Scenery/Zürich/scenery/Ωmega.bgl");
    Make("wine/drive_c/Program Files/FS9/Scenery/Zürich/scenery/Abc.bgl");
    Make("wine/drive_c/Program Files/FS9/Scenery/Zürich/scenery/ABC.bgl");
    fs::create_symlink("../drive_c", prefix + "/dosdevices/c:");
    fs::create_symlink("/", prefix + "/dosdevices/z:");
    fs::create_symlink("/dev/null", prefix + "/dosdevices/c::");
    fs::create_symlink("/dev/null", prefix + "/dosdevices/com1");

    EXPECT_EQ(FindWinePrefix(sim + "/Scenery"), prefix);
    EXPECT_EQ(FindWinePrefix(root_), std::nullopt);
    DriveMap map = MakeDriveMap(sim, {});
    EXPECT_EQ(map.Folders['C' - 'A'], prefix + "/drive_c");
    EXPECT_EQ(map.Folders['Z' - 'A'], "/");
    EXPECT_EQ(map.Folders['D' - 'A'], "");
    EXPECT_EQ(ToWindows(map, sim + "/"), "C:\\Program Files\\FS9\\");
    EXPECT_EQ(ToWindows(map, prefix + "/drive_c"), "C:\\");

    // scenery.cfg paths come upper-cased; "Ü" is 0xDC in Windows-1252.
    std::string scenery = sim + "/Scenery/Zürich/scenery";
    EXPECT_EQ(ToNative(map, "C:\\PROGRAM FILES\\FS9\\SCENERY\\Z\xDCRICH\\SCENERY\\"),
              scenery + "/");
    EXPECT_EQ(ToNative(map, "c:\\program files\\fs9\\.\\x\\..\\\\scenery\\z\xFCrich\\scenery"),
              scenery);
    EXPECT_EQ(ToNative(map, "C:\\..\\..\\Program Files"), sim.substr(0, sim.rfind('/')));
    EXPECT_EQ(ToNative(map, "C:\\"), prefix + "/drive_c/");
    // An exact name wins; otherwise of several matches the first in byte order.
    EXPECT_EQ(ToNative(map, "C:\\Program Files\\FS9\\Scenery\\Z\xFCrich\\scenery\\Abc.bgl"),
              scenery + "/Abc.bgl");
    EXPECT_EQ(ToNative(map, "C:\\Program Files\\FS9\\Scenery\\Z\xFCrich\\scenery\\abc.BGL"),
              scenery + "/ABC.bgl");
    // What exists in no case is kept as given, and so is the rest behind it.
    EXPECT_EQ(ToNative(map, "C:\\PROGRAM FILES\\Missing\\SCENERY\\a.bgl"),
              prefix + "/drive_c/Program Files/Missing/SCENERY/a.bgl");
    EXPECT_EQ(ToNative(map, "D:\\Scenery\\"), "");
    EXPECT_EQ(ToNative(map, "\\\\server\\share\\Scenery"), "");
    EXPECT_EQ(ToNative(map, "Scenery\\World"), "");
    EXPECT_EQ(ToNative(map, "C:Scenery"), "");

    // A name that Windows-1252 cannot hold shows as '?', and its native path opens.
    std::vector<FoundFile> files = ListBglFiles(scenery);
    ASSERT_EQ(files.size(), 3u);
    EXPECT_EQ(files[0].Name, "?mega.bgl");  // '?' (0x3F) sorts before letters
    EXPECT_TRUE(IsRegularFile(files[0].NativePath));
    EXPECT_EQ(ToWindows(map, files[0].NativePath),
              "C:\\Program Files\\FS9\\Scenery\\Z\xFCrich\\scenery\\?mega.bgl");

    // The user's letters are applied last and win.
    DriveMap mapped = MakeDriveMap(sim, {{'c', root_ + "/other/"}});
    EXPECT_EQ(mapped.Folders['C' - 'A'], root_ + "/other");
}

TEST_F(DriveMapTest, ToWindowsTakesLongestPrefixAndZLast) {
    std::string outer = MakeFolder("fs");
    std::string inner = MakeFolder("fs/nested");
    DriveMap map = MakeDriveMap(root_, {{'D', outer}, {'e', inner + "/"}});
    EXPECT_EQ(ToWindows(map, inner + "/Scenery/a.bgl"), "E:\\Scenery\\a.bgl");
    EXPECT_EQ(ToWindows(map, inner + "x/Zürich/"), "D:\\nestedx\\Z\xFCrich\\");
    EXPECT_EQ(ToWindows(map, outer + "/nested/../b/./c"), "D:\\b\\c");
    EXPECT_EQ(ToWindows(map, "/no/such/folder"), "Z:\\no\\such\\folder");
    EXPECT_EQ(ToNative(map, "E:\\Scenery\\"), inner + "/Scenery/");

    // Z: is tried last: a letter for the root wins over it.
    DriveMap rooted = MakeDriveMap(root_, {{'Y', "/"}});
    EXPECT_EQ(ToWindows(rooted, "/etc"), "Y:\\etc");
    DriveMap none = MakeDriveMap(root_, {{'Z', ""}});
    EXPECT_EQ(ToWindows(none, "/etc"), std::nullopt);

    // A path that reaches a letter's folder through a link still finds the letter.
    fs::create_symlink(inner, root_ + "/link");
    EXPECT_EQ(ToWindows(map, root_ + "/link/a"), "E:\\a");

    EXPECT_EQ(DriveType(map, 'q'), 1);
    EXPECT_EQ(DriveType(MakeDriveMap(root_, {{'Q', root_ + "/gone"}}), 'Q'), 1);
    EXPECT_NE(DriveType(map, 'd'), 1);
    EXPECT_FALSE(IsNetworkFolder(root_ + "/gone"));
}

TEST_F(DriveMapTest, ReadCommonAppData) {
    const std::string key =
        "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Explorer\\\\Shell Folders] 1\n";
    Make("a/system.reg", "WINE REGISTRY Version 2\n\n" + key +
                             "#time=1d\n\"AppData\"=\"C:\\\\x\"\n"
                             "\"Common AppData\"=\"C:\\\\ProgramData\"\n");
    EXPECT_EQ(ReadCommonAppData(root_ + "/a"), "C:\\ProgramData");

    std::string crlfKey = key.substr(0, key.size() - 1) + "\r\n";
    Make("b/system.reg", "[Software\\\\Other] 1\r\n\"Common AppData\"=\"C:\\\\Wrong\"\r\n" +
                             Upper1252(crlfKey) +
                             "\"common appdata\"=str(2):\"C:\\\\Dat\\x00e9n \\\"q\\\"\\\\\"\r\n");
    EXPECT_EQ(ReadCommonAppData(root_ + "/b"), "C:\\Dat\xE9n \"q\"\\");

    Make("c/system.reg", "[Software\\\\Other] 1\n\"Common AppData\"=\"C:\\\\Wrong\"\n" + key +
                             "\"Common Desktop\"=\"C:\\\\D\"\n");
    EXPECT_EQ(ReadCommonAppData(root_ + "/c"), "");
    EXPECT_EQ(ReadCommonAppData(root_ + "/missing"), "");
}

TEST_F(DriveMapTest, ListBglFilesOrderAndFilter) {
    for (const char* name :
         {"b.bgl", "A.BGL", "Z.bgl", "_x.bgl", ".hidden.bgl", "x.bglx", "readme.txt", "bgl"}) {
        Make(std::string("s/") + name);
    }
    MakeFolder("s/dir.bgl");
    ASSERT_EQ(mkfifo((root_ + "/s/pipe.bgl").c_str(), 0600), 0);
    fs::create_symlink("A.BGL", root_ + "/s/link.Bgl");
    fs::create_symlink("gone", root_ + "/s/dead.bgl");

    std::vector<FoundFile> files = ListBglFiles(root_ + "/s");
    std::vector<std::string> names;
    for (const FoundFile& file : files) names.push_back(file.Name);
    // '_' (0x5F) sorts after 'Z'; "b" sorts as "B".
    EXPECT_EQ(names, (std::vector<std::string>{"A.BGL", "b.bgl", "link.Bgl", "Z.bgl", "_x.bgl"}));
    EXPECT_EQ(files[0].NativePath, root_ + "/s/A.BGL");
    EXPECT_TRUE(ListBglFiles(root_ + "/missing").empty());
    EXPECT_TRUE(ListBglFiles(root_ + "/s/A.BGL").empty());
    EXPECT_TRUE(IsDirectory(root_ + "/s/dir.bgl"));
    EXPECT_FALSE(IsRegularFile(root_ + "/s/pipe.bgl"));
}

}  // namespace
}  // namespace skl::platform
