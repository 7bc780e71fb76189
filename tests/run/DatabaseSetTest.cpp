#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "run/DatabaseFiles.h"
#include "run/UpdateRun.h"
#include "run/ValidatePaths.h"
#include "support/BglBuilder.h"
#include "support/RecordingFrontEnd.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
// Every file and folder under a root by its relative path: a file's bytes, or
// "<folder>" for a folder.
using Snapshot = std::map<std::string, std::string>;

// The nine files of a set, live and backup name, in the order they are moved aside.
const std::pair<std::string, std::string> kSet[] = {
    {"Taxi.skl", "Taxiskl.old"},       {"Poly.skl", "Polyskl.old"},
    {"Marker.skl", "Markerskl.old"},   {"Ils.skl", "Ilsskl.old"},
    {"Airport.skl", "Airportskl.old"}, {"Region.skl", "Regionskl.old"},
    {"State.skl", "Stateskl.old"},     {"Country.skl", "Countryskl.old"},
    {"City.skl", "Cityskl.old"},
};
constexpr const char* kHealed = "Previous update was interrupted: database files restored";

Snapshot Snap(const fs::path& root) {
    Snapshot snapshot;
    if (!fs::exists(root)) return snapshot;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        std::string name = fs::relative(entry.path(), root).string();
        snapshot[name] = entry.is_directory() ? "<folder>" : test::ReadBytes(entry.path());
    }
    return snapshot;
}

std::vector<std::string> Names(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : Snap(folder)) names.push_back(name);
    return names;
}

std::vector<std::string> LiveNames() {
    std::vector<std::string> names;
    for (const auto& [live, backup] : kSet) names.push_back(live);
    std::sort(names.begin(), names.end());
    return names;
}

std::string Generation(int number, const std::string& name) {
    return "generation " + std::to_string(number) + " of " + name;
}

// Generation 2 in the live files, generation 1 in the backups.
void WriteGenerations(const fs::path& set) {
    for (const auto& [live, backup] : kSet) {
        test::WriteFile(set / live, Generation(2, live));
        test::WriteFile(set / backup, Generation(1, live));
    }
}

std::string AirportBgl(int index) {
    std::string icao = "KA" + std::to_string(10 + index);
    test::BglFile file;
    file.Sections = {
        test::Section(test::kSectionAirport,
                      {{test::Airport(3, icao, 47.0 + index, -122.0, 120000)}}),
        test::Section(
            test::kSectionNameList,
            {{test::NameList({{icao, "FIELD " + icao, "CITY", "STATE", "COUNTRY", "REGION"}})}})};
    return test::BuildBgl(file);
}

// An FS2004 and an FSX installation that share one program folder; each
// simulator has one area with three files of one airport each.
struct Installation {
    test::TempDir Dir;
    fs::path Program = Dir.Path / "Skyloom";
    fs::path Fs9 = Dir.Path / "FS9";
    fs::path Prefix = Dir.Path / "prefix";
    fs::path Fsx = Prefix / "drive_c" / "FSX";
    std::unique_ptr<RunState> State;
    test::RecordingFrontEnd FrontEnd;  // of the last run

    Installation() {
        std::string cfg = test::SceneryCfg({{"World", "Scenery\\World", "", "1", "TRUE"}});
        test::MakeFs9Folder(Fs9, cfg);
        test::MakeWinePrefix(Prefix, "C:\\ProgramData");
        test::MakeFsxFolder(Fsx);
        test::MakeFsxLibrary(Prefix / "drive_c" / "ProgramData" / "Microsoft" / "FSX", cfg);
        for (int i = 0; i < 3; ++i) {
            std::string name = std::string(1, static_cast<char>('a' + i)) + ".bgl";
            test::WriteFile(Fs9 / "Scenery" / "World" / "scenery" / name, AirportBgl(i));
            test::WriteFile(Fsx / "Scenery" / "World" / "scenery" / name, AirportBgl(i));
        }
        test::MakeProgramFolder(Program);
    }

    // Sets the selection as the window would; false when it allows no update.
    bool Select(RunState& state, bool fsx) const {
        const fs::path& simulator = fsx ? Fsx : Fs9;
        state.Selection.Drives = platform::MakeDriveMap(simulator.string(), {});
        PathPickers pickers;
        std::string sim = test::WindowsFolder(state.Selection.Drives, simulator);
        pickers.SimulatorFolder = sim.substr(0, sim.size() - 1);
        std::string program = test::WindowsFolder(state.Selection.Drives, Program);
        state.Selection.ProgramFolder = program.substr(0, program.size() - 1);
        return ValidatePaths(state.Selection, pickers).UpdateEnabled;
    }

    RunEnd Run(bool fsx = false, int cancelAt = 0) {
        State = std::make_unique<RunState>();
        FrontEnd = test::RecordingFrontEnd();
        FrontEnd.CancelAt = cancelAt;
        EXPECT_TRUE(Select(*State, fsx));
        return cmdWorld_Click(*State, FrontEnd);
    }

    fs::path Set(bool fsx = false) const { return Program / "database" / (fsx ? "FS10" : "FS09"); }
    // Windows forms as the last run saw them.
    std::string ProgramWin() const {
        std::string folder = test::WindowsFolder(State->Selection.Drives, Program);
        return folder.substr(0, folder.size() - 1);
    }
    std::string SetWin() const { return test::WindowsFolder(State->Selection.Drives, Set()); }

    // The log of the last FS2004 run without its first line.
    Lines Log() const {
        Lines lines = test::ReadLines(Program / "SKLDBM_FS09.LOG");
        if (!lines.empty()) lines.erase(lines.begin());
        return lines;
    }
    // The first line that the set's opening wrote, behind the list of the areas.
    std::string FirstSetLine() const {
        Lines log = Log();
        auto start = std::find(log.begin(), log.end(), "=== start all bgl files ===");
        if (log.end() - start < 3) return "<none>";
        return start[2];
    }
};

// Runs `child` in a forked process that is to kill itself with SIGKILL; true
// when it did. The child never returns into the test.
bool DiesOfKill(const std::function<void()>& child) {
    pid_t pid = ::fork();
    if (pid == 0) {
        try {
            child();
        } catch (...) {
        }
        ::_exit(3);
    }
    int status = 0;
    if (pid < 0 || ::waitpid(pid, &status, 0) != pid) return false;
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

struct KillingFrontEnd : test::RecordingFrontEnd {
    bool ProcessEvents() override {
        std::raise(SIGKILL);
        return false;
    }
};

TEST(DatabaseSet, EachRunKeepsThePreviousSetAsBackupAndTouchesOnlyItsOwnSet) {
    Installation inst;
    ASSERT_EQ(inst.Run(), RunEnd::Finished);
    fs::path fs9 = inst.Set();
    // Both sets' folders come with the first run; the set holds the nine files only.
    EXPECT_TRUE(fs::is_directory(inst.Set(true)));
    EXPECT_TRUE(fs::is_empty(inst.Set(true)));
    EXPECT_EQ(Names(fs9), LiveNames());
    Lines log = inst.Log();
    EXPECT_EQ(std::count(log.begin(), log.end(), kHealed), 0);
    std::string airports = test::ReadBytes(fs9 / "Airport.skl");
    EXPECT_GT(airports.size(), 4u);

    // The generation before the last goes, the last becomes the backup.
    WriteGenerations(fs9);
    ASSERT_EQ(inst.Run(), RunEnd::Finished);
    EXPECT_NE(inst.FirstSetLine(), kHealed);
    for (const auto& [live, backup] : kSet) {
        EXPECT_EQ(test::ReadBytes(fs9 / backup), Generation(2, live)) << backup;
        EXPECT_TRUE(fs::is_regular_file(fs9 / live)) << live;
    }
    EXPECT_EQ(test::ReadBytes(fs9 / "Airport.skl"), airports);
    EXPECT_EQ(Names(fs9).size(), 18u);

    // An FSX run writes its own set and leaves the FS2004 set as it is.
    Snapshot before = Snap(fs9);
    ASSERT_EQ(inst.Run(true), RunEnd::Finished);
    EXPECT_EQ(Snap(fs9), before);
    EXPECT_EQ(Names(inst.Set(true)), LiveNames());
}

TEST(DatabaseSet, TheInstallationCheckComesBeforeAnySetIsTouched) {
    Installation inst;
    fs::path database = inst.Program / "database";
    for (const auto& [live, backup] : kSet) {
        test::WriteFile(database / live, "old layout");
        test::WriteFile(database / backup, "old layout backup");
    }
    test::WriteFile(database / "Notes.txt", "kept");
    WriteGenerations(database / "FS09");
    // A marker of an interrupted run: it must wait for a run that passes the check.
    test::WriteFile(database / "FS09" / "update.running", "Taxi.skl\r\nPoly.skl\r\n");
    // No FSX set yet: its folder is made only after the check.
    Snapshot expected = Snap(database);
    for (const auto& [live, backup] : kSet) {
        expected.erase(live);
        expected.erase(backup);
    }
    fs::remove(inst.Program / "SKL_Intro.bmp");

    ASSERT_EQ(inst.Run(), RunEnd::Stopped);
    EXPECT_EQ(Snap(database), expected);
    std::string upper = inst.ProgramWin();
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    std::string text =
        "Database Manager is not in Skyloom main folder or installation failed! " + upper;
    EXPECT_EQ(inst.Log().back(), text);
    EXPECT_EQ(inst.FrontEnd.Messages,
              (Lines{"Database Manager: " + text + "! Program will now abort!"}));
    EXPECT_TRUE(inst.FrontEnd.Unloaded);
    EXPECT_FALSE(inst.State->Files.MarkerLock.IsHeld());
}

TEST(DatabaseSet, ACancelLeavesTheFolderAsItWasBeforeTheRun) {
    Installation inst;
    // A first run has nothing to give back: the set stays empty.
    ASSERT_EQ(inst.Run(false, 1), RunEnd::Cancelled);
    EXPECT_EQ(Snap(inst.Set()), Snapshot{});

    ASSERT_EQ(inst.Run(), RunEnd::Finished);
    test::WriteFile(inst.Set() / "Notes.txt", "kept");
    Snapshot before = Snap(inst.Set());
    ASSERT_EQ(inst.Run(false, 1), RunEnd::Cancelled);
    EXPECT_EQ(Snap(inst.Set()), before);
    EXPECT_FALSE(inst.State->Files.MarkerLock.IsHeld());

    // The cancel took its marker along: the next run finds nothing to heal.
    ASSERT_EQ(inst.Run(), RunEnd::Finished);
    Lines log = inst.Log();
    EXPECT_EQ(std::count(log.begin(), log.end(), kHealed), 0);
}

TEST(DatabaseSet, AKilledRunCostsNoSetAndTheNextRunPutsItBack) {
    constexpr int kDuringReading = -1;
    for (int killAt : {0, 3, 8, kDuringReading}) {
        SCOPED_TRACE(killAt);
        Installation inst;
        ASSERT_EQ(inst.Run(), RunEnd::Finished);
        fs::path set = inst.Set();
        std::string airports = test::ReadBytes(set / "Airport.skl");
        WriteGenerations(set);

        ASSERT_TRUE(DiesOfKill([&] {
            RunState state;
            if (!inst.Select(state, false)) return;
            if (killAt == kDuringReading) {
                KillingFrontEnd frontEnd;
                cmdWorld_Click(state, frontEnd);
                return;
            }
            OpenLogFile(state, "SKLDBM_FS09.LOG");
            test::RecordingFrontEnd frontEnd;
            OpenDatabaseFiles(state, frontEnd, [&](int index) {
                if (index == killAt) std::raise(SIGKILL);
            });
        }));

        // Generation 2 is whole on disk: in the backups of the files moved aside,
        // in the live files of the others (whose backups still hold generation 1).
        size_t moved = killAt == kDuringReading ? 9 : static_cast<size_t>(killAt) + 1;
        std::string listed;
        for (size_t i = 0; i < std::size(kSet); ++i) {
            const auto& [live, backup] = kSet[i];
            if (i < moved) {
                EXPECT_EQ(test::ReadBytes(set / backup), Generation(2, live)) << backup;
                listed += live + "\r\n";
            } else {
                EXPECT_EQ(test::ReadBytes(set / live), Generation(2, live)) << live;
                EXPECT_EQ(test::ReadBytes(set / backup), Generation(1, live)) << backup;
            }
        }
        EXPECT_EQ(test::ReadBytes(set / "update.running"), listed);

        ASSERT_EQ(inst.Run(), RunEnd::Finished);
        EXPECT_EQ(inst.FirstSetLine(), kHealed);
        for (const auto& [live, backup] : kSet)
            EXPECT_EQ(test::ReadBytes(set / backup), Generation(2, live)) << backup;
        EXPECT_EQ(test::ReadBytes(set / "Airport.skl"), airports);
        EXPECT_EQ(Names(set).size(), 18u);
    }
}

TEST(DatabaseSet, ASetHeldByAnotherRunIsLeftAloneAndAStaleMarkerIsHealed) {
    Installation inst;
    ASSERT_EQ(inst.Run(), RunEnd::Finished);
    fs::path set = inst.Set();
    test::WriteFile(set / "update.running", "Taxi.skl\r\n");
    test::WriteFile(set / "Taxiskl.old", "older Taxi.skl");
    Snapshot before = Snap(inst.Program);  // the log of the last run too

    int other = ::open((set / "update.running").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(other, 0);
    ASSERT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);
    EXPECT_EQ(inst.Run(), RunEnd::Busy);
    EXPECT_EQ(inst.FrontEnd.Statuses, (Lines{"Another update of this database is running"}));
    EXPECT_EQ(Snap(inst.Program), before);
    ::close(other);

    // The same marker without its lock is what a killed run leaves: the listed
    // file gets its backup back before the set is moved aside again.
    ASSERT_EQ(inst.Run(), RunEnd::Finished);
    EXPECT_EQ(inst.FirstSetLine(), kHealed);
    EXPECT_EQ(test::ReadBytes(set / "Taxiskl.old"), "older Taxi.skl");
    EXPECT_EQ(test::ReadBytes(set / "Polyskl.old"), before.at("database/FS09/Poly.skl"));
    EXPECT_FALSE(fs::exists(set / "update.running"));
}

TEST(DatabaseSet, ALiveFileThatCannotBeMovedAsideAbortsWithTheSetPutBack) {
    Installation inst;
    ASSERT_EQ(inst.Run(), RunEnd::Finished);
    fs::path set = inst.Set();
    for (const auto& [live, backup] : kSet) test::WriteFile(set / live, Generation(2, live));
    // A backup name that can be neither deleted nor renamed onto.
    test::WriteFile(set / "Airportskl.old" / "inside.txt", "x");
    Snapshot before = Snap(set);

    ASSERT_EQ(inst.Run(), RunEnd::Aborted);
    Snapshot after = Snap(set);
    EXPECT_EQ(after.erase("update.running"), 1u);  // an abort leaves the marker
    EXPECT_EQ(after, before);
    EXPECT_EQ(inst.Log().back(), "Cannot move aside " + inst.SetWin() + "Airport.skl");
    EXPECT_EQ(inst.FrontEnd.Messages, (Lines{std::string("Database Manager: ") + kAbortText}));

    // Once the backup can go, the next run moves the whole set aside.
    fs::remove_all(set / "Airportskl.old");
    ASSERT_EQ(inst.Run(), RunEnd::Finished);
    for (const auto& [live, backup] : kSet)
        EXPECT_EQ(test::ReadBytes(set / backup), Generation(2, live)) << backup;
}

}  // namespace
}  // namespace skl
