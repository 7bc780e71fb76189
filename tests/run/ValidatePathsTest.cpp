#include <gtest/gtest.h>

#include "run/ValidatePaths.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

namespace fs = std::filesystem;

// A Wine prefix in a temporary folder with the simulator folder on its C: drive.
struct Prefix {
    test::TempDir Dir;
    fs::path Root = Dir.Path / "wine";
    fs::path Simulator = Root / "drive_c" / "Games" / "FSX";
    fs::path Library = Root / "drive_c" / "ProgramData" / "Microsoft" / "FSX";
    Selection Sel;
    PathPickers Pickers;

    explicit Prefix(std::string_view commonAppData) {
        test::MakeWinePrefix(Root, commonAppData);
        fs::create_directories(Simulator);
        Sel.Drives = platform::MakeDriveMap(Simulator.string(), {});
        Pickers.SimulatorFolder = "C:\\Games\\FSX";
    }
    Validation Validate() { return ValidatePaths(Sel, Pickers); }
};

TEST(ValidatePaths, RecognisesTheSimulatorByItsProgramFile) {
    Prefix p("C:\\ProgramData");
    p.Sel.IsFsx = true;
    p.Sel.SimulatorFolder = "C:\\OLD\\";
    Validation none = p.Validate();
    EXPECT_EQ(none.Result, Outcome::NoSimulator);
    EXPECT_FALSE(none.UpdateEnabled);
    EXPECT_EQ(none.MessageText, "Please select FS path in left drive and directory box!");
    EXPECT_TRUE(p.Sel.IsFsx);  // the last valid selection stays
    EXPECT_EQ(p.Sel.SimulatorFolder, "C:\\OLD\\");
    EXPECT_EQ(none.FsLast, -1);

    test::WriteFile(p.Simulator / "FS9.EXE", "");  // found whatever its case
    Validation fs9 = p.Validate();
    EXPECT_EQ(fs9.Result, Outcome::Fs2004);
    EXPECT_TRUE(fs9.UpdateEnabled);
    EXPECT_FALSE(p.Sel.IsFsx);
    EXPECT_EQ(p.Sel.SimulatorFolder, "C:\\Games\\FSX\\");
    EXPECT_EQ(p.Sel.CfgFolder, "C:\\Games\\FSX\\");
    EXPECT_EQ(p.Sel.CfgFileName, "scenery.cfg");
    EXPECT_EQ(p.Sel.DatabaseFolder, "\\database\\FS09\\");
    EXPECT_EQ(p.Sel.StockSceneryPath, "C:\\GAMES\\FSX\\Scenery");
    EXPECT_EQ(p.Pickers.LibraryFolder, "C:\\Games\\FSX");
    EXPECT_EQ(fs9.StoredPath, "C:\\GAMES\\FSX\\");
    EXPECT_EQ(fs9.FsLast, 0);

    // Both program files: FSX. The library comes from the prefix's registry.
    test::WriteFile(p.Simulator / "fsx.exe", "");
    test::WriteFile(p.Library / "scenery.cfg", "");
    test::WriteFile(p.Library / "scenerystatus.bin", "");
    Validation fsx = p.Validate();
    EXPECT_EQ(fsx.Result, Outcome::FsxReady);
    EXPECT_EQ(fsx.MessageText, "You have correctly chosen the paths for FSX\rPress Update button now!");
    EXPECT_TRUE(p.Sel.IsFsx);
    EXPECT_EQ(p.Sel.CfgFolder, "C:\\ProgramData\\Microsoft\\FSX\\");
    EXPECT_EQ(p.Sel.DatabaseFolder, "\\database\\FS10\\");
    EXPECT_EQ(p.Pickers.LibraryFolder, "C:\\ProgramData\\Microsoft\\FSX");
    EXPECT_TRUE(p.Pickers.LibraryPreset);
    EXPECT_EQ(fsx.FsLast, 1);
}

TEST(ValidatePaths, FsxLibraryCasesAndTheNetworkCopy) {
    Prefix p("C:\\ProgramData\\");  // a trailing backslash gives no double one
    EXPECT_EQ(GetFsxDataFolder(p.Sel, "C:\\Games\\FSX\\"), "C:\\ProgramData\\Microsoft\\FSX\\");
    test::WriteFile(p.Simulator / "fsx.exe", "");
    test::WriteFile(p.Library / "scenery.cfg", "");
    Validation missing = p.Validate();  // no scenerystatus.bin
    EXPECT_EQ(missing.Result, Outcome::FsxLibraryMissing);
    EXPECT_FALSE(missing.UpdateEnabled);
    EXPECT_FALSE(p.Sel.IsFsx);
    EXPECT_EQ(p.Sel.DatabaseFolder, "");
    EXPECT_EQ(p.Sel.CfgFolder, "C:\\ProgramData\\Microsoft\\FSX\\");
    EXPECT_EQ(missing.MessageText,
              "Please select path for scenery library in right drive and directory box!");

    // A library chosen by hand is not moved back to the data folder.
    fs::path own = p.Root / "drive_c" / "MyLib";
    test::WriteFile(own / "scenery.cfg", "");
    test::WriteFile(own / "scenerystatus.bin", "");
    p.Pickers.LibraryFolder = "C:\\MyLib";
    EXPECT_EQ(p.Validate().Result, Outcome::FsxReady);
    EXPECT_EQ(p.Sel.CfgFolder, "C:\\MyLib\\");

    // On a network drive only the copy in the simulator folder counts.
    p.Pickers.NetworkDrive = true;
    Validation copyMissing = p.Validate();
    EXPECT_EQ(copyMissing.Result, Outcome::FsxNetworkCopyMissing);
    EXPECT_FALSE(copyMissing.UpdateEnabled);
    EXPECT_EQ(p.Sel.CfgFolder, "C:\\MyLib\\");  // unchanged
    test::WriteFile(p.Simulator / "scenerycfg.skl", "");
    EXPECT_EQ(p.Validate().Result, Outcome::FsxNetworkReady);
    EXPECT_TRUE(p.Sel.NetworkDrive);
    EXPECT_EQ(p.Sel.CfgFolder, "C:\\Games\\FSX\\");
    EXPECT_EQ(p.Sel.CfgFileName, "scenerycfg.skl");
    EXPECT_EQ(p.Pickers.LibraryFolder, "C:\\Games\\FSX");
}

TEST(ValidatePaths, WithoutAPrefixTheDataFolderIsRelative) {
    test::TempDir dir;
    Selection sel;
    sel.Drives = platform::MakeDriveMap(dir.Path.string(), {});
    EXPECT_EQ(GetFsxDataFolder(sel, test::WindowsFolder(sel.Drives, dir.Path)),
              "\\Microsoft\\FSX\\");
    test::WriteFile(dir.Path / "fsx.exe", "");
    PathPickers pickers;
    std::string folder = test::WindowsFolder(sel.Drives, dir.Path);
    pickers.SimulatorFolder = folder.substr(0, folder.size() - 1);
    EXPECT_EQ(ValidatePaths(sel, pickers).Result, Outcome::FsxLibraryMissing);
    EXPECT_FALSE(pickers.LibraryPreset);
}

}  // namespace
}  // namespace skl
