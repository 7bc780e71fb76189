#include <gtest/gtest.h>
#include <sys/stat.h>

#include "run/UpdateRun.h"
#include "run/ValidatePaths.h"
#include "scenery/SceneryCfg.h"
#include "support/BglBuilder.h"
#include "support/ExpectedBytes.h"
#include "support/RecordingFrontEnd.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

std::string SmallBgl() {
    test::BglFile file;
    file.Sections = {test::Section(test::kSectionTerrain, {{test::BglRecord{1, "abcd"}}})};
    return test::BuildBgl(file);
}

// A simulator installation in a temporary folder, run through ValidatePaths and
// a whole update.
struct Installation {
    test::TempDir Dir;
    fs::path Simulator = Dir.Path / "FS9";
    fs::path Program = Dir.Path / "Skyloom";
    std::vector<platform::DriveMapping> Mappings;
    RunState State;
    test::RecordingFrontEnd FrontEnd;
    std::string SimWin;  // the Windows form of the simulator folder, with a backslash

    RunEnd Run() {
        test::MakeProgramFolder(Program);
        State.Selection.Drives = platform::MakeDriveMap(Simulator.string(), Mappings);
        PathPickers pickers;
        SimWin = test::WindowsFolder(State.Selection.Drives, Simulator);
        pickers.SimulatorFolder = SimWin.substr(0, SimWin.size() - 1);
        std::string program = test::WindowsFolder(State.Selection.Drives, Program);
        State.Selection.ProgramFolder = program.substr(0, program.size() - 1);
        EXPECT_TRUE(ValidatePaths(State.Selection, pickers).UpdateEnabled);
        return cmdWorld_Click(State, FrontEnd);
    }

    // The log without its first line (date and time), and the first line apart.
    Lines Log(const char* name = "SKLDBM_FS09.LOG") {
        Lines lines = test::ReadLines(Program / name);
        EXPECT_FALSE(lines.empty());
        if (lines.empty()) return lines;
        EXPECT_EQ(lines[0].rfind(State.Selection.ProgramFolder +
                                     " Database Manager Vers.: 8.6 Net (Build: 021209) ",
                                 0),
                  0u)
            << lines[0];
        EXPECT_EQ(lines[0].size(), State.Selection.ProgramFolder.size() + 17 + 31 + 20);
        lines.erase(lines.begin());
        return lines;
    }
};

// The header and the item-by-item copy of a scenery.cfg as the log shows it.
Lines CfgCopy(const std::string& cfgPath, const std::string& cfg, bool fsx = false) {
    Lines lines{"", "based on: " + cfgPath, std::string(95, '='), "",
                fsx ? "===== start FSX scenery.cfg =====" : "===== start FS9 scenery.cfg =====",
                ""};
    CfgItemReader reader{cfg};
    while (!reader.AtEnd()) lines.push_back(reader.Next());
    lines.insert(lines.end(), {"===== end scenery.cfg =====", "", "=== start all bgl files ===", ""});
    return lines;
}

// The closing lines of a finished run without double airports, with the lines
// of the unbound add-on ILS. Without any airport the country and state tables
// fail with error 9 and the run goes on.
Lines Closing(const Lines& unbound = {}, bool noAirport = false) {
    const std::string banner(37, '=');
    Lines lines{banner, "Undefined ILS'es found: ", ""};
    lines.insert(lines.end(), unbound.begin(), unbound.end());
    lines.insert(lines.end(), {banner, "", "AssignIls2Airport successfull",
                               "RemoveIllegalState successfull", "Check4ILSDoubles successfull",
                               "WriteAirports2File successfull", "FillRegionTable successfull"});
    for (const char* table : {"FillCountryTable successfull", "FillStateTable successfull"}) {
        if (noAirport)
            lines.insert(lines.end(), {"===== Error Error Error =====",
                                       "Source: cmdWorld_Click  =  9 = Subscript out of range",
                                       "============================="});
        lines.push_back(table);
    }
    lines.push_back("FillCityTable successfull");
    return lines;
}

TEST(UpdateRun, Fs2004RunReadsAreasFromTheTopLayerDownInNameOrder) {
    Installation inst;
    std::string cfg = test::SceneryCfg({
        {"World, Base", "Scenery\\World", "", "1", "TRUE"},
        {"Inactive", "Addon Scenery\\Off", "", "4", "FALSE"},
        {"Harbor", "..\\Shared\\Harbor", "", "5", "TRUE"},
        {"Old Alpine", "D:\\Packs\\Old", "", "7", "TRUE"},
        {"Alpine", "D:\\Packs\\Alpine", "", "7", "TRUE"},
        {"Addon", "Addon Scenery", "", "2", "TRUE"},
    });
    test::MakeFs9Folder(inst.Simulator, cfg);
    fs::path world = inst.Simulator / "Scenery" / "World" / "scenery";
    test::WriteFile(world / "b.bgl", SmallBgl());
    test::WriteFile(world / "A.BGL", SmallBgl());
    test::WriteFile(world / "_last.Bgl", SmallBgl());
    test::WriteFile(world / "readme.txt", "x");
    test::WriteFile(world / "old.bgl", std::string("\x01\x00", 2));  // no BGL file: no line
    test::WriteFile(world / "empty.bgl", "");
    fs::create_directories(world / "folder.bgl");
    ASSERT_EQ(::mkfifo((world / "pipe.bgl").c_str(), 0600), 0);
    test::WriteFile(inst.Simulator / "Addon Scenery" / "scenery" / "\xce\xa9mega.bgl", SmallBgl());
    test::WriteFile(inst.Simulator / "Addon Scenery" / "Off" / "scenery" / "off.bgl", SmallBgl());
    test::WriteFile(inst.Dir.Path / "Shared" / "Harbor" / "scenery" / "harbor.bgl", SmallBgl());
    fs::path driveD = inst.Dir.Path / "drive_d";
    test::WriteFile(driveD / "Packs" / "Alpine" / "scenery" / "alps.bgl", SmallBgl());
    test::WriteFile(driveD / "Packs" / "Old" / "scenery" / "old.bgl", SmallBgl());
    inst.Mappings = {{'D', driveD.string()}};

    ASSERT_EQ(inst.Run(), RunEnd::Finished);
    const std::string& sim = inst.SimWin;
    std::string parent = sim.substr(0, sim.size() - 4);  // the folder above FS9
    Lines expected = CfgCopy(sim + "scenery.cfg", cfg);
    for (std::string path : {std::string("D:\\PACKS\\ALPINE\\scenery\\alps.bgl"),
                             parent + "SHARED\\HARBOR\\scenery\\harbor.bgl",
                             sim + "ADDON SCENERY\\scenery\\?mega.bgl",
                             sim + "SCENERY\\WORLD\\scenery\\A.BGL",
                             sim + "SCENERY\\WORLD\\scenery\\b.bgl",
                             sim + "SCENERY\\WORLD\\scenery\\_last.Bgl"}) {
        expected.push_back(path);
        expected.push_back("");
    }
    Lines closing = Closing({}, /*noAirport=*/true);
    expected.insert(expected.end(), closing.begin(), closing.end());
    EXPECT_EQ(inst.Log(), expected);

    // Progress per slot from the top, none for slot 0; the status per file; one
    // cancel point per file from the second file of an area on.
    const Lines& all = inst.FrontEnd.Statuses;
    ASSERT_EQ(all.size(), 12u);  // old.bgl and empty.bgl are read too
    Lines statuses(all.begin() + 1, all.begin() + 9);
    EXPECT_EQ(all.front(), "Searching for *.bgl files!");
    EXPECT_EQ(statuses.front(), "ALPINE\r ... reading:  alps.bgl");
    EXPECT_EQ(statuses.back(), "WORLD\r ... reading:  _last.Bgl");
    // No airport: the country and state tables fail before their status texts.
    EXPECT_EQ(Lines(all.begin() + 9, all.end()),
              (Lines{"   ...assigning ILS to runways and airports!   ",
                     "   ...writing city table ", "Finished!"}));
    std::vector<double> percents;
    for (int i = 6; i >= 1; --i) percents.push_back(100.0 - 100.0 / (7.0 / i));
    EXPECT_EQ(inst.FrontEnd.Percents, percents);
    EXPECT_EQ(inst.FrontEnd.EventCalls, 4);
    EXPECT_EQ(inst.State.Reading.BglFilesRead, 8);
}

TEST(UpdateRun, FsxRunTakesTheLibraryFromTheWinePrefix) {
    Installation inst;
    fs::path prefix = inst.Dir.Path / "prefix";
    test::MakeWinePrefix(prefix, "C:\\ProgramData");
    inst.Simulator = prefix / "drive_c" / "FSX";
    test::MakeFsxFolder(inst.Simulator);
    std::string cfg = test::SceneryCfg({{"Addon", "Addon Scenery", "", "3", "TRUE"},
                                        {"Stock", "Scenery\\0000", "", "1", "TRUE"}},
                                       "\n");
    test::MakeFsxLibrary(prefix / "drive_c" / "ProgramData" / "Microsoft" / "FSX", cfg);
    test::WriteFile(inst.Simulator / "Scenery" / "0000" / "scenery" / "APX.bgl", SmallBgl());
    ASSERT_EQ(inst.Run(), RunEnd::Finished);
    EXPECT_EQ(inst.SimWin, "C:\\FSX\\");
    Lines expected = CfgCopy("C:\\ProgramData\\Microsoft\\FSX\\scenery.cfg", cfg, true);
    expected.insert(expected.end(), {"C:\\FSX\\SCENERY\\0000\\scenery\\APX.bgl", ""});
    Lines closing = Closing({}, /*noAirport=*/true);
    expected.insert(expected.end(), closing.begin(), closing.end());
    EXPECT_EQ(inst.Log("SKLDBM_FS10.LOG"), expected);
    // Empty tables: the files say so, and the failing tables stay empty.
    fs::path set = inst.Program / "database" / "FS10";
    EXPECT_EQ(test::ReadBytes(set / "Airport.skl"), test::Le().I32(-1).B);
    EXPECT_EQ(test::ReadBytes(set / "City.skl"), test::Le().I32(-1).B);
    EXPECT_EQ(test::ReadBytes(set / "Region.skl"), test::Le().I32(1).Text("World", 30).B);
    for (const char* empty : {"Country.skl", "State.skl", "Ils.skl", "Taxi.skl"})
        EXPECT_EQ(fs::file_size(set / empty), 0u) << empty;
    EXPECT_EQ(inst.FrontEnd.Percents, (std::vector<double>{100.0 - 100.0 / (3.0 / 2),
                                                           100.0 - 100.0 / (3.0 / 1)}));
}

TEST(UpdateRun, CancelAtTheSecondFileRestoresAndEndsTheLog) {
    Installation inst;
    std::string cfg = test::SceneryCfg({{"World", "Scenery\\World", "", "1", "TRUE"}});
    test::MakeFs9Folder(inst.Simulator, cfg);
    for (const char* name : {"a.bgl", "b.bgl", "c.bgl"})
        test::WriteFile(inst.Simulator / "Scenery" / "World" / "scenery" / name, SmallBgl());
    inst.FrontEnd.CancelAt = 1;
    ASSERT_EQ(inst.Run(), RunEnd::Cancelled);
    Lines log = inst.Log();
    Lines tail(log.end() - 3, log.end());
    EXPECT_EQ(tail, (Lines{inst.SimWin + "SCENERY\\WORLD\\scenery\\a.bgl", "",
                           "Terminated via User!!!"}));
    EXPECT_EQ(inst.FrontEnd.Statuses.back(), " ");
    EXPECT_FALSE(inst.State.Reading.RunActive);
    EXPECT_FALSE(inst.State.Files.Table.IsOpen(1));
}

TEST(UpdateRun, AMissingSceneryCfgAbortsAndAMissingProgramFolderStartsNothing) {
    Installation inst;
    test::MakeFs9Folder(inst.Simulator, "");
    fs::remove(inst.Simulator / "scenery.cfg");
    ASSERT_EQ(inst.Run(), RunEnd::Aborted);
    EXPECT_EQ(inst.FrontEnd.Messages,
              (Lines{std::string("Database Manager: ") + kAbortText}));
    EXPECT_TRUE(inst.FrontEnd.Unloaded);
    Lines log = inst.Log();
    EXPECT_EQ(log.back(), "=============================");
    EXPECT_EQ(log[log.size() - 4], "Source: GetBGLFileDirectories  =  52 = Bad file name or number");
    EXPECT_EQ(std::count(log.begin(), log.end(), "===== Error Error Error ====="), 2);

    Installation noProgram;
    test::MakeFs9Folder(noProgram.Simulator, "");
    noProgram.Program = noProgram.Dir.Path / "missing" / "Skyloom";
    noProgram.State.Selection.Drives = platform::MakeDriveMap(noProgram.Simulator.string(), {});
    PathPickers pickers;
    std::string sim = test::WindowsFolder(noProgram.State.Selection.Drives, noProgram.Simulator);
    pickers.SimulatorFolder = sim.substr(0, sim.size() - 1);
    ValidatePaths(noProgram.State.Selection, pickers);
    std::string program = test::WindowsFolder(noProgram.State.Selection.Drives, noProgram.Dir.Path);
    noProgram.State.Selection.ProgramFolder = program + "missing";
    EXPECT_EQ(cmdWorld_Click(noProgram.State, noProgram.FrontEnd), RunEnd::LogNotCreated);
    EXPECT_EQ(noProgram.FrontEnd.Statuses,
              (Lines{"Cannot create the log file " + program + "missing\\SKLDBM_FS09.LOG"}));
}

TEST(UpdateRun, AirportsOfAllAreasReachTheAirportFile) {
    Installation inst;
    std::string cfg = test::SceneryCfg({{"World", "Scenery\\World", "", "1", "TRUE"},
                                        {"Zurich Addon", "Addon Scenery\\LSZH", "", "2", "TRUE"}});
    test::MakeFs9Folder(inst.Simulator, cfg);
    std::vector<test::NameListEntry> names = {
        {"KSEA", "SEATTLE-TACOMA INTL", "SEATTLE", "WASHINGTON", "UNITED STATES", "NA"},
        {"LSZH", "ZURICH", "ZURICH", "", "SWITZERLAND", "EU"}};
    auto bgl = [&](std::vector<test::BglRecord> airports, std::vector<test::BglRecord> navaids) {
        test::BglFile file;
        file.Sections = {test::Section(test::kSectionNameList, {{test::NameList(names)}}),
                         test::Section(test::kSectionAirport, {airports}),
                         test::Section(test::kSectionNavaid, {navaids})};
        return test::BuildBgl(file);
    };
    test::BglRecord name = test::AirportName("x");
    test::WriteFile(inst.Simulator / "Scenery/World/scenery/ksea.bgl",
                    bgl({test::Airport(3, "KSEA", 47.449, -122.309, 132588, {name}),
                         test::Airport(3, "KXXX", 1, 1, 0, {name})},
                        {test::Navaid(4, "ISNQ", 47.46, -122.31, 0, 110300000,
                                      {test::Localizer(163.5f)})}));
    test::WriteFile(inst.Simulator / "Addon Scenery/LSZH/scenery/lszh.bgl",
                    bgl({test::Airport(0x3C, "LSZH", 47.4647, 8.5492, 432000, {name})}, {}));
    ASSERT_EQ(inst.Run(), RunEnd::Finished);

    Lines log = inst.Log();
    Lines tail(log.end() - 20, log.end());
    Lines expectedTail{"00000 , 0002 , LSZH  - Zurich",
                       inst.SimWin + "ADDON SCENERY\\LSZH\\scenery\\lszh.bgl", "",
                       "00001 , 0001 , KSEA  - Seattle-Tacoma Intl", "Blind Airport found at: 2",
                       inst.SimWin + "SCENERY\\WORLD\\scenery\\ksea.bgl", ""};
    Lines closing = Closing();  // the stock ILS stays unbound and unlisted
    expectedTail.insert(expectedTail.end(), closing.begin(), closing.end());
    EXPECT_EQ(tail, expectedTail);

    auto fixed = [](int32_t number, const char* icao, const char* airportName, const char* country,
                    const char* state, const char* city, double lat, double lon, int32_t feet,
                    const char* file) {
        test::Le le;
        le.I32(number).Text(icao, 5).Text(airportName, 40).Text(country, 40).Text(state, 40);
        le.Text(city, 40);
        float latitude = test::Latitude(test::PackLatitude(lat));
        float longitude = test::Longitude(test::PackLongitude(lon));
        le.F32(latitude).F32(longitude).F32(latitude).F32(longitude).F32(0).I32(feet);
        le.Text(file, 15).I32(0).I32(0).I32(0).I32(0);
        return le.B;
    };
    // No airport of Queensland, Ontario or Maine: every state becomes "0".
    std::string airports =
        test::Le().I32(1).B +
        fixed(0, "LSZH", "Zurich", "Switzerland", "0", "Zurich", 47.4647, 8.5492, 1417, "lszh.bgl") +
        fixed(1, "KSEA", "Seattle-Tacoma Intl", "United States", "0", "Seattle", 47.449,
              -122.309, 433, "ksea.bgl");
    fs::path set = inst.Program / "database" / "FS09";
    EXPECT_EQ(test::ReadBytes(set / "Airport.skl"), airports);
    EXPECT_EQ(test::ReadBytes(set / "Region.skl"), test::Le().I32(1).Text("World", 30).B);
    EXPECT_EQ(test::ReadBytes(set / "Country.skl"),
              test::Le().I32(1).Text("Switzerland", 40).Text("World", 30).Text("United States", 40)
                  .Text("World", 30).B);
    EXPECT_EQ(test::ReadBytes(set / "State.skl"), test::Le().I32(1).B);  // two pairs, none written
    EXPECT_EQ(test::ReadBytes(set / "City.skl"),
              test::Le().I32(1).Text("Seattle", 40).Text("0", 40).Text("United States", 40)
                  .Text("Zurich", 40).Text("0", 40).Text("Switzerland", 40).B);
    for (const char* empty : {"Taxi.skl", "Poly.skl", "Marker.skl", "Ils.skl"})
        EXPECT_EQ(fs::file_size(set / empty), 0u) << empty;
    EXPECT_EQ(inst.State.Tables.IlsTable.size(), 1u);
    EXPECT_EQ(inst.State.Tables.IlsTable[0].AirportIndex, -2);
}

TEST(UpdateRun, StockSceneryIsFoundAnywhereInTheFolderWhateverItsCase) {
    EXPECT_TRUE(IsStockScenery("D:\\FS9\\Scenery", "D:\\FS9\\SCENERY\\WORLD\\scenery\\"));
    EXPECT_TRUE(IsStockScenery("D:\\FS9\\Scenery", "X:\\D:\\FS9\\SCENERY\\scenery\\"));
    EXPECT_FALSE(IsStockScenery("D:\\FS9\\Scenery", "D:\\FS9\\ADDON SCENERY\\X\\scenery\\"));
    EXPECT_TRUE(IsStockScenery("D:\\FS9\\Scenery", "d:\\fs9\\sceneryx\\scenery\\"));
}

}  // namespace
}  // namespace skl
