#include <gtest/gtest.h>

#include "model/LeadingNumber.h"
#include "platform/Checked.h"
#include "scenery/SceneryCfg.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

using test::LoggedState;
using Lines = std::vector<std::string>;

Lines Items(std::string_view bytes) {
    CfgItemReader reader{bytes};
    Lines items;
    while (!reader.AtEnd()) items.push_back(reader.Next());
    return items;
}

TEST(CfgItemReader, SplitsAtCommasLineEndsAndQuotes) {
    EXPECT_EQ(Items("Title=Lakes, Rivers\r\nLayer=1\r\n"), (Lines{"Title=Lakes", "Rivers", "Layer=1"}));
    // LF-only and CR-only line ends, and an empty line in the middle.
    EXPECT_EQ(Items("a\nb\rc\r\n\r\nd"), (Lines{"a", "b", "c", "", "d"}));
    // A quoted item keeps its commas; text behind the closing quote is dropped; a
    // quote inside an item is an ordinary character.
    EXPECT_EQ(Items("  \"x, y\"z,ab\"c\r\n"), (Lines{"x, y", "ab\"c"}));
    // An unterminated quote ends at the end of its line.
    EXPECT_EQ(Items("\"open, still\r\nnext"), (Lines{"open, still", "next"}));
    // Leading blanks are skipped, trailing ones kept; a comma before a line end
    // leaves an empty item.
    EXPECT_EQ(Items("   Local=X  ,\r\nb"), (Lines{"Local=X  ", "", "b"}));
}

TEST(CleanCfgItem, KeepsPrintableWindows1252UpperCasedAndTrimmed) {
    EXPECT_EQ(CleanCfgItem("  title=\tZ\xfcrich \x93quoted\x94 \x91ok\x92  "),
              "TITLE=Z\xdcRICH QUOTED \x91OK\x92");
    // 127 to 159 are dropped but for 145 and 146; 160 is kept, and only blanks are trimmed.
    EXPECT_EQ(CleanCfgItem("\x7f\x80\x9f\xa0"), "\xa0");
}

TEST(ResolveRelativePath, ClimbsFromTheBaseAndFallsAwayAboveTheDrive) {
    EXPECT_EQ(ResolveRelativePath("..\\Addon", "C:\\FS9\\"), "C:\\Addon");
    EXPECT_EQ(ResolveRelativePath("../Addon/X", "C:/FS9/"), "C:\\Addon\\X");
    EXPECT_EQ(ResolveRelativePath("..\\..\\Addon", "C:\\FS9\\"), "");
    EXPECT_EQ(ResolveRelativePath("..\\..\\Addon", "C:\\Games\\FS9\\"), "C:\\Addon");
    // Without "..\" the path stays; with it only in the middle the whole base goes
    // in front.
    EXPECT_EQ(ResolveRelativePath("Scenery\\World", "C:\\FS9\\"), "Scenery\\World");
    EXPECT_EQ(ResolveRelativePath("A\\..\\B", "C:\\FS9\\"), "C:\\FS9\\A\\..\\B");
    // Text behind the last backslash of the base is dropped.
    EXPECT_EQ(ResolveRelativePath("..\\X", "C:\\FS9\\tail"), "C:\\X");
}

TEST(LeadingNumber, ReadsLikeABasicValAndRoundsHalvesToEven) {
    EXPECT_EQ(LeadingNumber(" 1 2"), 12.0);
    EXPECT_EQ(LeadingNumber("5abc"), 5.0);
    EXPECT_EQ(LeadingNumber("abc"), 0.0);
    EXPECT_EQ(LeadingNumber("-3.5"), -3.5);
    EXPECT_EQ(LeadingNumber("1e2"), 100.0);
    EXPECT_EQ(LeadingNumber("&H10"), 16.0);
    EXPECT_EQ(Round16(LeadingNumber("2.5")), 2);
    EXPECT_EQ(Round16(LeadingNumber("3.5")), 4);
    EXPECT_THROW(Round16(LeadingNumber("32767.5")), RunError);
}

// Runs GetBGLFileDirectories over a scenery.cfg text for a simulator in D:\FS9\.
struct CfgRun : LoggedState {
    explicit CfgRun(std::string_view cfg, bool isFsx = false) {
        test::WriteFile(Dir.Path / "fs9" / "scenery.cfg", cfg);
        State.Selection.IsFsx = isFsx;
        State.Selection.Drives.Folders['D' - 'A'] = Dir.Path.string();
        State.Selection.SimulatorFolder = "D:\\FS9\\";
        State.Selection.CfgFolder = "D:\\FS9\\";
        State.Selection.CfgFileName = "scenery.cfg";
        GetBGLFileDirectories(State);
    }
};

TEST(GetBGLFileDirectories, BuildsTheAreaTableAndCopiesTheFileIntoTheLog) {
    std::string cfg =
        "[General]\r\nTitle=Base, World\r\n\r\n"
        "[Area.001]\r\nTitle=World\r\nLocal=Scenery\\World\r\nLayer=1\r\nActive=TRUE\r\n"
        "[Area.002]\r\nTitle=Inactive Top\r\nLocal=Scenery\\Off\r\nLayer=12\r\nActive=FALSE\r\n"
        "[Area.003]\r\nTitle=Gets left-over path\r\nLayer=10\r\nActive=-1\r\n"
        "[Area.004]\r\nTitle=First five\r\nLocal=E:\\Add/Ons\r\nLayer=5\r\nActive=1\r\n"
        "[Area.005]\r\nTitle=Second five\r\nLocal=\r\nRemote=C:\\X\r\nLayer=5\r\nActive=TRUE\r\n"
        "[Area.006]\r\nTitle=Both\r\nLocal=C:\\A\r\nRemote=D:\\B\r\nLayer=3\r\n"
        "[Area.007]\r\nTitle=Up\r\nLocal=..\\Shared\r\nLayer=2\r\n"
        "[Area.008]\r\nTitle=Too far up\r\nLocal=..\\..\\Gone\r\nLayer=4\r\n"
        "[Area.009]\r\nTitle=Zero\r\nLocal=Zero\r\nLayer=0\r\n"
        "[Area.010]\r\nTitle=Last\r\nLocal=Scenery\\Last\\\r\nLayer=6\r\nActive=TRUE";
    CfgRun run(cfg);
    const Reading& reading = run.State.Reading;
    ASSERT_EQ(reading.AreaCount, 12);
    Lines expected(12);
    expected[0] = "D:\\FS9\\SCENERY\\WORLD\\scenery\\";
    expected[1] = "D:\\SHARED\\scenery\\";
    expected[2] = "D:\\B\\scenery\\";
    expected[4] = "C:\\X\\scenery\\";
    expected[5] = "D:\\FS9\\SCENERY\\LAST\\\\scenery\\";
    expected[9] = "D:\\FS9\\SCENERY\\OFF\\scenery\\";  // the inactive area's path runs on
    EXPECT_EQ(reading.AreaDirectories, expected);
    EXPECT_EQ(reading.AreaTitles[9], "GETS LEFT-OVER PATH");
    EXPECT_EQ(reading.AreaTitles[4], "SECOND FIVE");
    EXPECT_EQ(reading.AreaTitles[0], "WORLD");

    Lines lines = run.Lines();
    Lines head(lines.begin(), lines.begin() + 9);
    EXPECT_EQ(head, (Lines{"", "based on: D:\\FS9\\scenery.cfg", std::string(95, '='), "",
                           "===== start FS9 scenery.cfg =====", "", "[General]", "Title=Base",
                           "World"}));
    Lines tail(lines.end() - 5, lines.end());
    EXPECT_EQ(tail, (Lines{"Active=TRUE", "===== end scenery.cfg =====", "",
                           "=== start all bgl files ===", ""}));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), ""), 3 + 1 + 2);
}

TEST(GetBGLFileDirectories, BadValuesLogBlocksAndTheRunGoesOn) {
    std::string cfg =
        "[Area.001]\nTitle=Big\nLocal=Big\nLayer=99999\nActive=TRUE\n"
        "[Area.002]\nTitle=Maybe\nLocal=Maybe\nLayer=2\nActive=MAYBE\n"
        "[Area.003]\nTitle=Negative\nLocal=Neg\nLayer=-2\nActive=TRUE\n"
        "[Area.004]\n";
    CfgRun run(cfg, /*isFsx=*/true);
    EXPECT_EQ(run.State.Reading.AreaCount, 2);
    // The overflowing layer keeps the old layer (0): nothing stored; MAYBE keeps
    // the active flag of before (TRUE) so area 2 is stored; the negative layer
    // fails both stores.
    EXPECT_EQ(run.State.Reading.AreaDirectories, (Lines{"", "D:\\FS9\\MAYBE\\scenery\\"}));
    Lines lines = run.Lines();
    EXPECT_EQ(lines[4], "===== start FSX scenery.cfg =====");
    auto block = [](std::string source, std::string item) {
        return Lines{"===== Error Error Error =====", "Source: GetBGLFileDirectories  = " + source,
                     item, "FileNum:  2 /  1", "============================="};
    };
    auto find = [&](const Lines& wanted) {
        return std::search(lines.begin(), lines.end(), wanted.begin(), wanted.end()) != lines.end();
    };
    EXPECT_TRUE(find(block(" 6 = Overflow", "Layer=99999 ===> ")));  // first pass: title not read yet
    EXPECT_TRUE(find(block(" 6 = Overflow", "LAYER=99999 ===> BIG")));
    EXPECT_TRUE(find(block(" 13 = Type mismatch", "ACTIVE=MAYBE ===> MAYBE")));
    Lines oneStore = block(" 9 = Subscript out of range", "[AREA.004] ===> NEGATIVE");
    Lines twoStores = oneStore;
    twoStores.insert(twoStores.end(), oneStore.begin(), oneStore.end());
    EXPECT_TRUE(find(twoStores));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "===== Error Error Error ====="), 5);
}

TEST(GetBGLFileDirectories, AMissingFileAbortsWithTwoBlocks) {
    LoggedState run;
    run.State.Selection.CfgFolder = "Z:\\nowhere\\at\\all\\";
    run.State.Selection.CfgFileName = "scenery.cfg";
    EXPECT_THROW(GetBGLFileDirectories(run.State), RunAborted);
    Lines lines = run.Lines();
    Lines tail(lines.end() - 10, lines.end());
    EXPECT_EQ(tail, (Lines{"===== Error Error Error =====",
                           "Source: GetBGLFileDirectories  =  53 = File not found", " ===> ",
                           "FileNum:  2 /  1", "=============================",
                           "===== Error Error Error =====",
                           "Source: GetBGLFileDirectories  =  52 = Bad file name or number",
                           " ===> ", "FileNum:  2 /  1", "============================="}));
}

}  // namespace
}  // namespace skl
