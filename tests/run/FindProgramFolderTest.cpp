// The search for the moving-map program's folder of an installed program, over
// fake Wine prefixes and a memory file in a temporary folder.
#include <gtest/gtest.h>

#include "platform/ProgramFolderPlaces.h"
#include "run/FindProgramFolder.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

namespace fs = std::filesystem;

struct Places {
    test::TempDir Dir;
    fs::path Own = Dir.Path / "usr" / "bin";
    fs::path Prefix = Dir.Path / "wine";
    ProgramFolderPlaces Search;

    Places() {
        fs::create_directories(Own);
        Search.Memory = (Dir.Path / "config" / "skldbm" / "program-folder").string();
        Search.WinePrefixes = {Prefix.string()};
    }
    ProgramFolderSearch Find() const { return FindProgramFolder(Own.string(), "own", Search); }
    void Remember(const fs::path& folder) const {
        test::WriteFile(Search.Memory, folder.string() + "\n");
    }
};

std::string Lines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

TEST(FindProgramFolder, OwnFolderFirstThenTheRememberedOne) {
    Places places;
    fs::path remembered = places.Dir.Path / "Skyloom";
    test::MakeProgramFolder(remembered);
    places.Remember(remembered);

    test::MakeProgramFolder(places.Own);
    ProgramFolderSearch own = places.Find();
    EXPECT_EQ(own.Folder, places.Own.string());
    EXPECT_EQ(own.FoundBy, "");
    EXPECT_TRUE(own.Tried.empty());

    fs::remove(places.Own / "magvar10.swf");
    ProgramFolderSearch found = places.Find();
    EXPECT_EQ(found.Folder, remembered.string());
    EXPECT_EQ(found.FoundBy, "remembered in " + places.Search.Memory);
    EXPECT_EQ(Lines(found.Tried), places.Own.string() + " (own): magvar10.swf is missing\n");

    // Names are compared without regard to case, as the run's own check does.
    fs::rename(remembered / "SKL_Intro.bmp", remembered / "skl_intro.BMP");
    EXPECT_EQ(places.Find().Folder, remembered.string());
    EXPECT_TRUE(MissingInstallationFiles(remembered.string()).empty());
}

TEST(FindProgramFolder, WinePrefixProgramFilesWhenTheRememberedFolderIsGone) {
    Places places;
    fs::path gone = places.Dir.Path / "Gone";
    places.Remember(gone);
    fs::path programFiles = places.Prefix / "drive_c" / "Program Files (x86)";
    // A folder holding two of the three files is passed over; a maker's folder is
    // searched one level down.
    test::WriteFile(programFiles / "Alpha" / "magvar09.swf", "");
    test::WriteFile(programFiles / "Alpha" / "magvar10.swf", "");
    fs::create_directories(places.Prefix / "drive_c" / "Program Files" / "Common Files");
    fs::path skyloom = programFiles / "Maker" / "Skyloom";
    test::MakeProgramFolder(skyloom);

    ProgramFolderSearch search = places.Find();
    EXPECT_EQ(search.Folder, skyloom.string());
    EXPECT_EQ(search.FoundBy, "found in the Wine prefix " + places.Prefix.string());
    EXPECT_EQ(Lines(search.Tried),
              places.Own.string() +
                  " (own): magvar09.swf, magvar10.swf and SKL_Intro.bmp are missing\n" +
                  gone.string() + " (remembered in " + places.Search.Memory +
                  "): no longer exists\n" + (places.Prefix / "drive_c" / "Program Files").string() +
                  ": no folder in it holds magvar09.swf, magvar10.swf and SKL_Intro.bmp\n");
    // The search only reads: the vanished folder is still remembered, nothing made.
    EXPECT_EQ(platform::ReadProgramFolderMemory(places.Search.Memory), gone.string());
    EXPECT_FALSE(fs::exists(gone));
}

TEST(FindProgramFolder, NoneFoundSaysWhereItLooked) {
    Places places;
    fs::path broken = places.Dir.Path / "Broken";
    test::MakeProgramFolder(broken);
    fs::remove(broken / "SKL_Intro.bmp");
    places.Remember(broken);
    fs::create_directories(places.Prefix / "drive_c" / "windows");
    fs::path noPrefix = places.Dir.Path / "no-prefix";
    fs::path programFiles = places.Dir.Path / "C" / "Program Files";
    fs::create_directories(programFiles / "Empty");
    places.Search.WinePrefixes.push_back(noPrefix.string());
    places.Search.ProgramFiles = {programFiles.string(), (places.Dir.Path / "D").string()};

    ProgramFolderSearch search = places.Find();
    EXPECT_EQ(search.Folder, "");
    EXPECT_EQ(Lines(search.Tried),
              places.Own.string() +
                  " (own): magvar09.swf, magvar10.swf and SKL_Intro.bmp are missing\n" +
                  broken.string() + " (remembered in " + places.Search.Memory +
                  "): SKL_Intro.bmp is missing\n" + (places.Prefix / "drive_c").string() +
                  ": no Program Files folder\n" + noPrefix.string() +
                  ": no Wine prefix (no drive_c folder)\n" + programFiles.string() +
                  ": no folder in it holds magvar09.swf, magvar10.swf and SKL_Intro.bmp\n" +
                  (places.Dir.Path / "D").string() + ": does not exist\n");

    places.Search.Memory.clear();
    fs::remove(places.Dir.Path / "config" / "skldbm" / "program-folder");
    EXPECT_EQ(places.Find().Tried[1],
              "no folder remembered: this system gives no place to keep one");
    places.Search.Memory = (places.Dir.Path / "nothing" / "program-folder").string();
    EXPECT_EQ(places.Find().Tried[1], "no folder remembered in " + places.Search.Memory);
}

TEST(FindProgramFolder, RemembersOnlyAFolderThatPassesWhereItBelongs) {
    Places places;
    fs::path skyloom = places.Dir.Path / "Sky loom";
    test::MakeProgramFolder(skyloom);
    fs::path other = places.Dir.Path / "Other";
    fs::create_directories(other);

    EXPECT_EQ(RememberProgramFolder(places.Search, other.string()),
              other.string() + ": magvar09.swf, magvar10.swf and SKL_Intro.bmp are missing");
    EXPECT_FALSE(fs::exists(places.Search.Memory));

    EXPECT_EQ(RememberProgramFolder(places.Search, skyloom.string()), "");
    EXPECT_EQ(test::ReadBytes(places.Search.Memory), skyloom.string() + "\n");
    EXPECT_EQ(places.Find().Folder, skyloom.string());
    EXPECT_EQ(
        fs::status(fs::path(places.Search.Memory).parent_path()).permissions() & fs::perms::all,
        fs::perms::owner_all);

    // A configuration folder that cannot be made (a file stands in its place, which
    // even root cannot write through) is reported and leaves nothing behind.
    ProgramFolderPlaces blocked = places.Search;
    test::WriteFile(places.Dir.Path / "blocked", "a file");
    blocked.Memory = (places.Dir.Path / "blocked" / "skldbm" / "program-folder").string();
    std::string problem = RememberProgramFolder(blocked, skyloom.string());
    EXPECT_EQ(problem.rfind("cannot create " + (places.Dir.Path / "blocked").string() + ": ", 0),
              0u)
        << problem;
    EXPECT_EQ(test::ReadBytes(places.Dir.Path / "blocked"), "a file");
    blocked.Memory.clear();
    EXPECT_NE(RememberProgramFolder(blocked, skyloom.string()), "");
}

}  // namespace
}  // namespace skl
