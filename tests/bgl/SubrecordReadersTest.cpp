// The readers of airport subrecords (runways, comms, parkings, delete records, taxiways,
// aprons) and of markers: whole runs that check Airport.skl, Taxi.skl, Poly.skl and
// Marker.skl byte for byte, and single files read with a log open for delete records,
// damaged records, blind airports and files cut short.
#include <gtest/gtest.h>

#include <optional>
#include <regex>

#include "bgl/BglReaders.h"
#include "run/UpdateRun.h"
#include "run/ValidatePaths.h"
#include "support/BglBuilder.h"
#include "support/ExpectedBytes.h"
#include "support/RecordingFrontEnd.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

namespace fs = std::filesystem;
using test::BglRecord;
using test::Le;
using test::NameListEntry;
using Lines = std::vector<std::string>;

float Lat(double degrees) {
    return test::Latitude(test::PackLatitude(degrees));
}
float Lon(double degrees) {
    return test::Longitude(test::PackLongitude(degrees));
}

// The expected records, field by field.
struct ExpectedAirport {
    int32_t Number = 0;
    std::string Icao{}, Name{}, Country{}, State{}, City{};
    double Latitude = 0, Longitude = 0;
    float Atis = 0;
    int32_t Feet = 0;
    std::string File{};
    int32_t Runways = 0, Comms = 0, Parkings = 0;
};

std::string Fixed(const ExpectedAirport& a) {
    Le le;
    le.I32(a.Number).Text(a.Icao, 5).Text(a.Name, 40).Text(a.Country, 40).Text(a.State, 40);
    le.Text(a.City, 40).F32(Lat(a.Latitude)).F32(Lon(a.Longitude));
    le.F32(Lat(a.Latitude)).F32(Lon(a.Longitude)).F32(a.Atis).I32(a.Feet).Text(a.File, 15);
    le.I32(a.Runways).I32(a.Comms).I32(0).I32(a.Parkings);
    return le.B;
}

struct ExpectedRunway {
    std::string Icao{}, Primary{}, Secondary{};
    double Latitude = 0, Longitude = 0;
    float Heading = 0;
    int32_t Feet = 0;
    int16_t Length = 0, Width = 0, Surface = 0;
    std::string PrimaryIls{}, SecondaryIls{};
};

std::string Runway(const ExpectedRunway& r) {
    Le le;
    le.Text(r.Icao, 5).Text(r.Primary, 5).Text(r.Secondary, 5).F32(Lat(r.Latitude));
    le.F32(Lon(r.Longitude)).F32(r.Heading).I32(r.Feet).I16(r.Length).I16(r.Width);
    le.I16(r.Surface).Text(r.PrimaryIls, 5).Text(r.SecondaryIls, 5).Text("R", 1);
    return le.B;
}

// A comm without a name keeps its 40 NUL bytes.
std::string Comm(const std::string& icao, std::optional<std::string> name, double airportLatitude,
                 double airportLongitude, float mhz, uint8_t type) {
    Le le;
    le.Text(icao, 5);
    name ? le.Text(*name, 40) : le.Text("", 40, '\0');
    le.F32(Lat(airportLatitude)).F32(Lon(airportLongitude)).F32(mhz).U8(type);
    return le.B;
}

std::string Parking(const std::string& icao, double latitude, double longitude, int32_t number,
                    int32_t type, int32_t name, float heading) {
    Le le;
    le.Text(icao, 5).F32(Lat(latitude)).F32(Lon(longitude)).I32(number).I32(type).I32(name);
    return le.F32(heading).B;
}

std::string Taxi(float startLatitude, float startLongitude, float endLatitude, float endLongitude,
                 const std::string& name, uint8_t nameIndex, uint8_t type,
                 const std::string& icao) {
    Le le;
    le.F32(startLatitude).F32(startLongitude).F32(endLatitude).F32(endLongitude);
    return le.Text(name, 8).U8(nameIndex).U8(type).Text(icao, 5).B;
}

std::string Poly(char kind, int32_t number, double latitude, double longitude) {
    Le le;
    le.U8(static_cast<uint8_t>(kind)).I32(number).F32(Lat(latitude)).F32(Lon(longitude));
    return le.I16(0).U8('P').B;
}

std::string Marker(const char* kind, double latitude, double longitude, int32_t feet) {
    return Le().Text(kind, 2).F32(Lat(latitude)).F32(Lon(longitude)).I32(feet).B;
}

// A name list entry with no state: the Airport file then says "0" whatever the
// passes after the reading make of states.
NameListEntry Named(const std::string& icao, const std::string& name, const std::string& city,
                    const std::string& country) {
    return {icao, name, city, "", country, "REGION"};
}

std::string Bgl(std::vector<test::BglSection> sections) {
    return test::BuildBgl(test::BglFile{.Sections = std::move(sections)});
}

// An FS2004 installation in a temporary folder, run through ValidatePaths and a
// whole update.
struct Installation {
    test::TempDir Dir;
    fs::path Simulator = Dir.Path / "FS9";
    fs::path Program = Dir.Path / "Skyloom";
    RunState State;
    test::RecordingFrontEnd FrontEnd;
    std::string SimWin;  // the Windows form of the simulator folder, with a backslash

    explicit Installation(const std::vector<test::CfgArea>& areas) {
        test::MakeFs9Folder(Simulator, test::SceneryCfg(areas));
    }

    void Write(const std::string& relative, const std::string& bytes) {
        test::WriteFile(Simulator / relative, bytes);
    }

    void Run() {
        test::MakeProgramFolder(Program);
        State.Selection.Drives = platform::MakeDriveMap(Simulator.string(), {});
        PathPickers pickers;
        SimWin = test::WindowsFolder(State.Selection.Drives, Simulator);
        pickers.SimulatorFolder = SimWin.substr(0, SimWin.size() - 1);
        std::string program = test::WindowsFolder(State.Selection.Drives, Program);
        State.Selection.ProgramFolder = program.substr(0, program.size() - 1);
        ASSERT_TRUE(ValidatePaths(State.Selection, pickers).UpdateEnabled);
        ASSERT_EQ(cmdWorld_Click(State, FrontEnd), RunEnd::Finished);
    }

    std::string File(const char* name) const {
        return test::ReadBytes(Program / "database" / "FS09" / name);
    }

    // The lines that the reading of the BGL files wrote: from behind the heading of
    // the file list to the empty line behind the last file's path.
    Lines ReadingLog() const {
        Lines lines = test::ReadLines(Program / "SKLDBM_FS09.LOG");
        auto from = std::find(lines.begin(), lines.end(), "=== start all bgl files ===");
        auto last = std::find_if(lines.rbegin(), lines.rend(),
                                 [](const std::string& line) { return line.ends_with(".bgl"); });
        EXPECT_TRUE(from != lines.end() && last != lines.rend());
        if (from == lines.end() || last == lines.rend()) return {};
        return Lines(from + 2, std::min(last.base() + 1, lines.end()));
    }
};

// One BGL file at a time read into one run state, as the area loop reads it, with
// the log and the Taxi, Poly and Marker files open in a temporary folder.
struct Walk : test::LoggedState {
    static constexpr std::pair<int16_t Files::*, const char*> kOutputs[] = {
        {&Files::TaxiFile, "Taxi.skl"},
        {&Files::PolyFile, "Poly.skl"},
        {&Files::MarkerFile, "Marker.skl"}};

    Walk() {
        for (const auto& [handle, name] : kOutputs) {
            State.Files.*handle = static_cast<int16_t>(State.Files.Table.FreeFile());
            State.Files.Table.OpenOutput(State.Files.*handle, (Dir.Path / name).string());
        }
    }

    void Read(const std::string& bytes, int32_t area = 5, bool stock = false,
              const std::string& name = "ap_test.bgl") {
        Reading& reading = State.Reading;
        reading.CurrentBglFile = name;
        reading.AreaNumber = area;
        reading.StockScenery = stock;
        reading.Bgl =
            platform::ByteReader::FromBytes(std::vector<uint8_t>(bytes.begin(), bytes.end()));
        ReadBglFile(State);
    }

    // The bytes of one of the three files; all three are closed first.
    std::string Output(const char* name) {
        for (const auto& [handle, unused] : kOutputs) State.Files.Table.Close(State.Files.*handle);
        return test::ReadBytes(Dir.Path / name);
    }

    const AirportRecord& Airport(size_t i) const { return State.Tables.AirportTable.at(i); }
    const AddonAirport& Entry(size_t i) const { return State.Tables.AddonAirports.at(i); }
};

std::string ErrorLine(const char* procedure, int number, const char* file = "AP_TEST.BGL") {
    return std::string("Error detection and correction in ") + procedure + ": " + file + " (#" +
           std::to_string(number) + ")";
}

test::ParkingSpot Spot(uint8_t name, uint8_t type, uint16_t number, float heading, double latitude,
                       double longitude, std::vector<std::string> codes = {}) {
    return {.Name = name,
            .Type = type,
            .Number = number,
            .Radius = 20,
            .Heading = heading,
            .Latitude = latitude,
            .Longitude = longitude,
            .AirlineCodes = std::move(codes)};
}

const NameListEntry kSea = Named("KSEA", "SEATTLE-TACOMA INTL", "SEATTLE", "UNITED STATES");
const NameListEntry kZurich = Named("LSZH", "ZURICH", "ZURICH", "SWITZERLAND");

TEST(SubrecordRun, AirportTaxiPolyAndMarkerFilesOfBothFormsByteForByte) {
    Installation inst({{"World", "Scenery\\World", "", "1", "TRUE"},
                       {"Addon", "Addon Scenery", "", "2", "TRUE"}});

    // Zurich, FSX form, in the add-on area, which is read first.
    std::vector<test::ParkingSpot> zurichSpots = {
        Spot(5, 4, 12, 270.5f, 47.4610, 8.5510, {"SWR", "DLH"}),
        Spot(0, 8, 4095, 90, 47.4620, 8.5520)};
    BglRecord lszh = test::Airport(
        0x3C, "LSZH", 47.4647, 8.5492, 432000,
        {test::AirportName("Zurich"),
         test::Runway({14, 0, "IZH"}, {32, 0, ""}, 47.46, 8.55, 432000, 3300, 60, 137.6f, 4),
         test::Comm(1, 128525000, "  ZURICH ATIS  "), test::Comm(6, 118100000, ""),
         test::Comm(5, 121900000, std::string("GR\0OUND", 7)),
         test::Parking(false, zurichSpots),  // the FS2004 form: passed over in this one
         test::Parking(true, zurichSpots),
         test::TaxiPoints({{47.4630, 8.5530}, {47.4640, 8.5540}, {47.4650, 8.5550}}),
         test::TaxiPaths(
             {{.Start = 0, .End = 2, .Type = 1, .NameIndex = 0},
              {.Start = 1, .End = 2, .Type = 2, .NameIndex = 1},
              {.Start = 2, .End = 0, .Type = 0x64, .NameIndex = 1, .EndHighNibble = 0xF},
              {.Start = 0, .End = 1, .Type = 5, .NameIndex = 7}}),
         test::TaxiNames({"A", std::string{'\0', 'B', '\0', '1', '2', ' '}}),
         test::Apron({{47.4660, 8.5560}, {47.4670, 8.5570}, {47.4680, 8.5580}})});
    inst.Write("Addon Scenery/scenery/ap_lszh.bgl",
               Bgl({test::Section(test::kSectionNameList, {{test::NameList({kZurich})}}),
                    test::Section(test::kSectionAirport, {{lszh}}),
                    test::Section(test::kSectionMarker, {{test::Marker(0, 47.48, 8.53, 123456),
                                                          test::Marker(2, 47.54, 8.47, -500)}})}));

    // Seattle, FS2004 form, in the stock area.
    test::ParkingSpot packedWord = Spot(0, 0, 0, 45, 47.4440, -122.3010, {"AAL", "UAL"});
    packedWord.Word = 0x02012305;  // name 5 (bits 6 and 7 set too), type 3, number 18
    BglRecord ils16 =
        test::Runway({16, 1, "ISNQ"}, {34, 2, ""}, 47.4497, -122.3078, 132588, 3627, 46, 179.9f, 4);
    ils16.Children = {test::Comm(1, 129000000, "NESTED")};  // passed over with the runway
    BglRecord ksea = test::Airport(
        3, "KSEA", 47.449, -122.309, 132588,
        {ils16, test::Runway({7, 5}, {25, 6}, 47.45, -122.31, -500, 152.4f, 30, 70, 1),
         test::Runway({1, 0}, {19, 0}, 47.45, -122.31, 0, 152.39f, 30, 10, 1),  // too short
         test::Runway({123, 4}, {9, 0}, 47.46, -122.32, 0, 20000, 45, 0, 2),
         test::Comm(1, 118000000, "SEATTLE ATIS"), test::Comm(1, 118027500, ""),
         test::Comm(8, 121700000, "ABCDEFGHIJABCDEFGHIJABCDEFGHIJABCDEFGHIJKLMNO"),
         test::Parking(true, zurichSpots),  // the FSX form: passed over in this one
         test::Parking(false, {packedWord, Spot(63, 15, 1, 359.5f, 47.4450, -122.3020)}),
         test::TaxiNames({"Z"}),  // not behind the paths: passed over
         test::TaxiPoints({{47.440, -122.300}, {47.441, -122.301}, {47.442, -122.302}}),
         test::TaxiPaths({{.Start = 0, .End = 1, .Type = 4},
                          {.Start = 9, .End = 1, .Type = 6},     // no point 9
                          {.Start = 0, .End = 3, .Type = 0x21},  // the spare point at 0, 0
                          {.Start = 1, .End = 2, .Type = 3},
                          {.Start = 2, .End = 0, .Type = 0x65, .NameIndex = 3},
                          {.Start = -1, .End = 4000, .Type = 97}}),  // both ends bad
         test::Apron({}, "xyz"), test::Apron({{47.443, -122.303}, {47.444, -122.304}}, "12345"),
         test::Comm(6, 119900000, "SEATTLE TOWER")});
    inst.Write(
        "Scenery/World/scenery/ap_ksea.bgl",
        Bgl({test::Section(test::kSectionAirport, {{ksea}}),
             test::Section(test::kSectionNameList, {{test::NameList({kSea})}}),
             test::Section(test::kSectionMarker, {{test::Marker(1, 47.483, -122.308, 0),
                                                   test::Marker(3, 47.49, -122.31, 1000),
                                                   test::Marker(255, 47.50, -122.32, 2999)}})}));
    inst.Run();

    EXPECT_EQ(inst.ReadingLog(), (Lines{"00000 , 0002 , LSZH  - Zurich",
                                        inst.SimWin + "ADDON SCENERY\\scenery\\ap_lszh.bgl", "",
                                        "00001 , 0001 , KSEA  - Seattle-Tacoma Intl",
                                        ErrorLine("ReadTaxiPath04", 9, "AP_KSEA.BGL"),
                                        ErrorLine("ReadTaxiPath04", 9, "AP_KSEA.BGL"),
                                        ErrorLine("ReadTaxiPath04", 9, "AP_KSEA.BGL"),
                                        ErrorLine("ReadTaxiPath04", 9, "AP_KSEA.BGL"),
                                        ErrorLine("ReadTaxiPath04", 9, "AP_KSEA.BGL"),
                                        ErrorLine("ReadTaxiPath04", 9, "AP_KSEA.BGL"),
                                        inst.SimWin + "SCENERY\\WORLD\\scenery\\ap_ksea.bgl", ""}));

    const double zLat = 47.4647, zLon = 8.5492, sLat = 47.449, sLon = -122.309;
    std::string airports =
        Le().I32(1).B +
        Fixed({.Number = 0,
               .Icao = "LSZH",
               .Name = "Zurich",
               .Country = "Switzerland",
               .State = "0",
               .City = "Zurich",
               .Latitude = zLat,
               .Longitude = zLon,
               .Atis = 128.525f,
               .Feet = 1417,
               .File = "ap_lszh.bgl",
               .Runways = 1,
               .Comms = 3,
               .Parkings = 2}) +
        Runway({"LSZH", "14", "32", 47.46, 8.55, 137.6f, 1417, 10826, 196, 4, "IZH", ""}) +
        Comm("LSZH", "ZURICH ATIS", zLat, zLon, 128.525f, 1) +
        Comm("LSZH", std::nullopt, zLat, zLon, 118.1f, 6) +
        Comm("LSZH", "GROUND", zLat, zLon, 121.9f, 5) +
        Parking("LSZH", 47.4610, 8.5510, 12, 4, 5, 270.5f) +
        Parking("LSZH", 47.4620, 8.5520, 4095, 8, 0, 90) +
        Fixed({.Number = 1,
               .Icao = "KSEA",
               .Name = "Seattle-Tacoma Intl",
               .Country = "United States",
               .State = "0",
               .City = "Seattle",
               .Latitude = sLat,
               .Longitude = sLon,
               .Atis = 118.027f,
               .Feet = 433,
               .File = "ap_ksea.bgl",
               .Runways = 3,
               .Comms = 4,
               .Parkings = 2}) +
        // Runway altitudes are rounded down in feet (435, -2), the airport's in metres.
        Runway({"KSEA", "16L", "34R", 47.4497, -122.3078, 179.9f, 435, 11899, 150, 4, "ISNQ", ""}) +
        Runway({"KSEA", "07A", "25B", 47.45, -122.31, 70, -2, 500, 98, 1, "", ""}) +
        Runway({"KSEA", "123", "09", 47.46, -122.32, 0, 0, 32000, 147, 2, "", ""}) +
        Comm("KSEA", "SEATTLE ATIS", sLat, sLon, 118.0f, 1) +
        Comm("KSEA", std::nullopt, sLat, sLon, 118.027f, 1) +
        Comm("KSEA", "ABCDEFGHIJABCDEFGHIJABCDEFGHIJABCDEFGHIJ", sLat, sLon, 121.7f, 8) +
        Comm("KSEA", "SEATTLE TOWER", sLat, sLon, 119.9f, 6) +
        Parking("KSEA", 47.4440, -122.3010, 18, 3, 5, 45) +
        Parking("KSEA", 47.4450, -122.3020, 1, 15, 63, 359.5f);
    EXPECT_EQ(inst.File("Airport.skl"), airports);

    // Paths of a written type, with the names read directly behind them.
    std::string taxi =
        Taxi(Lat(47.4630), Lon(8.5530), Lat(47.4650), Lon(8.5550), "A", 0, 1, "LSZH") +
        Taxi(Lat(47.4650), Lon(8.5550), Lat(47.4630), Lon(8.5530), "B12", 1, 0x64, "LSZH") +
        Taxi(Lat(47.4630), Lon(8.5530), Lat(47.4640), Lon(8.5540), "", 7, 5, "LSZH") +
        Taxi(Lat(47.440), Lon(-122.300), Lat(47.441), Lon(-122.301), "", 0, 4, "KSEA") +
        Taxi(0, 0, Lat(47.441), Lon(-122.301), "", 0, 6, "KSEA") +
        Taxi(Lat(47.440), Lon(-122.300), 0, 0, "", 0, 0x21, "KSEA") +
        Taxi(Lat(47.442), Lon(-122.302), Lat(47.440), Lon(-122.300), "", 3, 0x65, "KSEA") +
        Taxi(0, 0, 0, 0, "", 0, 97, "KSEA");
    EXPECT_EQ(inst.File("Taxi.skl"), taxi);

    // The empty apron uses up number 2.
    EXPECT_EQ(inst.File("Poly.skl"), Poly('M', 1, 47.4660, 8.5560) + Poly('L', 1, 47.4670, 8.5570) +
                                         Poly('L', 1, 47.4680, 8.5580) +
                                         Poly('M', 3, 47.443, -122.303) +
                                         Poly('L', 3, 47.444, -122.304));

    EXPECT_EQ(inst.File("Marker.skl"),
              Marker("IM", 47.48, 8.53, 404) + Marker("OM", 47.54, 8.47, -3) +
                  Marker("MM", 47.483, -122.308, 0) + Marker("OM", 47.49, -122.31, 3) +
                  Marker("OM", 47.50, -122.32, 7));
}

TEST(SubrecordRun, AnAddonAirportWithAllDeleteFlagsHidesItsCodeInLowerLayers) {
    Installation inst({{"World", "Scenery\\World", "", "1", "TRUE"},
                       {"Low", "Addon Scenery\\Low", "", "2", "TRUE"},
                       {"High", "Addon Scenery\\High", "", "3", "TRUE"}});
    BglRecord names =
        test::NameList({kSea, Named("EGLL", "LONDON HEATHROW", "LONDON", "UNITED KINGDOM"),
                        Named("LFPG", "CHARLES DE GAULLE", "PARIS", "FRANCE"),
                        Named("KJFK", "JOHN F KENNEDY INTL", "NEW YORK", "UNITED STATES")});
    auto file = [&](std::vector<BglRecord> airports, std::vector<BglRecord> markers = {},
                    bool markersFirst = false) {
        std::vector<test::BglSection> sections = {test::Section(test::kSectionNameList, {{names}}),
                                                  test::Section(test::kSectionAirport, {airports})};
        if (!markers.empty()) {
            auto section = test::Section(test::kSectionMarker, {markers});
            sections.insert(markersFirst ? sections.begin() : sections.end(), section);
        }
        return Bgl(sections);
    };
    auto sea = [](std::vector<BglRecord> subrecords) {
        return test::Airport(3, "KSEA", 47.449, -122.309, 132588, std::move(subrecords));
    };
    BglRecord runway = test::Runway({16, 1}, {34, 2}, 47.45, -122.31, 132588, 3000, 45, 180);
    BglRecord spot = test::Parking(false, {{.Number = 7, .Latitude = 47.44, .Longitude = -122.3}});

    // Layer 3: KSEA notes its delete flags over two records (aprons, then runways and
    // taxiways); EGLL only two of them. The markers in front of the first airport of
    // the run are not written.
    inst.Write("Addon Scenery/High/scenery/high.bgl",
               file({sea({test::AirportDelete(0x04, false), runway,
                          test::Comm(6, 119900000, "TOWER"), test::AirportDelete(0xA0, false, 3),
                          test::Apron({{47.45, -122.30}, {47.46, -122.31}})}),
                     test::Airport(0x3C, "EGLL", 51.4775, -0.4614, 25000,
                                   {test::AirportDelete(0x24, true)})},
                    {test::Marker(0, 51.0, 0.0, 0)}, /*markersFirst=*/true));
    // Layer 2: KSEA is hidden, so its delete record has no entry of its own to note
    // on and is passed over (on EGLL's entry it would complete the flags). The
    // second file's last airport is the hidden KSEA: its markers are not written.
    BglRecord hiddenSea =
        sea({runway, test::Comm(1, 118000000, "ATIS"), spot, test::AirportDelete(0xA0, false),
             test::Apron({{47.47, -122.32}}), test::TaxiPoints({{47.4, -122.3}, {47.5, -122.3}}),
             test::TaxiPaths({{.Start = 0, .End = 1, .Type = 1}})});
    inst.Write("Addon Scenery/Low/scenery/low.bgl",
               file({hiddenSea, test::Airport(3, "LFPG", 49.0097, 2.5479, 119000,
                                              {test::AirportDelete(0x04, false)})}));
    inst.Write("Addon Scenery/Low/scenery/low2.bgl",
               file({sea({test::AirportName("")})}, {test::Marker(1, 47.40, -122.30, 0)}));
    // Layer 1, stock: KSEA is hidden; KJFK's delete record is passed over (on LFPG's
    // entry it would complete the flags). Markers behind KJFK, and markers in front of
    // the airports of the next file, follow KJFK.
    inst.Write("Scenery/World/scenery/a.bgl",
               file({sea({runway, test::Comm(1, 118000000, "ATIS"), spot,
                          test::Apron({{47.47, -122.32}, {47.48, -122.33}})}),
                     test::Airport(3, "KJFK", 40.6398, -73.7789, 4000,
                                   {test::AirportDelete(0xA0, false),
                                    test::Comm(6, 119100000, "KENNEDY TOWER")})},
                    {test::Marker(1, 40.60, -73.80, 0)}));
    inst.Write("Scenery/World/scenery/b.bgl",
               file({test::Airport(3, "EGLL", 51.4775, -0.4614, 25000,
                                   {test::Apron({{51.47, -0.45}, {51.48, -0.46}, {51.49, -0.47}})}),
                     test::Airport(3, "LFPG", 49.0097, 2.5479, 119000, {test::AirportName("")})},
                    {test::Marker(2, 51.40, -0.40, 0)}, /*markersFirst=*/true));
    inst.Run();

    std::string scenery = inst.SimWin + "ADDON SCENERY\\";
    EXPECT_EQ(
        inst.ReadingLog(),
        (Lines{"00000 , 0003 , KSEA  - Seattle-Tacoma Intl",
               "00001 , 0003 , EGLL  - London Heathrow", scenery + "HIGH\\scenery\\high.bgl", "",
               "00002 , 0002 , LFPG  - Charles De Gaulle", scenery + "LOW\\scenery\\low.bgl", "",
               scenery + "LOW\\scenery\\low2.bgl", "", "00003 , 0001 , KJFK  - John F Kennedy Intl",
               inst.SimWin + "SCENERY\\WORLD\\scenery\\a.bgl", "",
               "00004 , 0001 , EGLL  - London Heathrow", "00005 , 0001 , LFPG  - Charles De Gaulle",
               inst.SimWin + "SCENERY\\WORLD\\scenery\\b.bgl", ""}));

    const Tables& t = inst.State.Tables;
    ASSERT_EQ(t.AddonTop(), 3);
    auto flags = [&](int i) {
        const AddonAirport& e = t.AddonAirports[static_cast<size_t>(i)];
        return std::vector<bool>{e.DeletesAprons, e.DeletesRunways, e.DeletesTaxiways,
                                 e.ReplacesOthers};
    };
    EXPECT_EQ(t.AddonAirports[1].Icao, "KSEA ");
    EXPECT_EQ(flags(1), (std::vector<bool>{true, true, true, true}));
    EXPECT_EQ(flags(2), (std::vector<bool>{true, true, false, false}));  // EGLL
    EXPECT_EQ(t.AddonAirports[3].AreaNumber, 2);
    EXPECT_EQ(flags(3), (std::vector<bool>{true, false, false, false}));  // LFPG
    EXPECT_EQ(t.DoubleAddonTop(), 0);

    const ExpectedAirport egll = {.Icao = "EGLL",
                                  .Name = "London Heathrow",
                                  .Country = "United Kingdom",
                                  .State = "0",
                                  .City = "London",
                                  .Latitude = 51.4775,
                                  .Longitude = -0.4614,
                                  .Feet = 82};
    const ExpectedAirport lfpg = {.Icao = "LFPG",
                                  .Name = "Charles De Gaulle",
                                  .Country = "France",
                                  .State = "0",
                                  .City = "Paris",
                                  .Latitude = 49.0097,
                                  .Longitude = 2.5479,
                                  .Feet = 390};
    auto numbered = [](ExpectedAirport a, int32_t number, const char* file) {
        a.Number = number;
        a.File = file;
        return Fixed(a);
    };
    std::string airports =
        Le().I32(5).B +
        Fixed({.Number = 0,
               .Icao = "KSEA",
               .Name = "Seattle-Tacoma Intl",
               .Country = "United States",
               .State = "0",
               .City = "Seattle",
               .Latitude = 47.449,
               .Longitude = -122.309,
               .Feet = 433,
               .File = "high.bgl",
               .Runways = 1,
               .Comms = 1}) +
        Runway({"KSEA", "16L", "34R", 47.45, -122.31, 180, 435, 9842, 147, 4, "", ""}) +
        Comm("KSEA", "TOWER", 47.449, -122.309, 119.9f, 6) + numbered(egll, 1, "high.bgl") +
        numbered(lfpg, 2, "low.bgl") +
        Fixed({.Number = 3,
               .Icao = "KJFK",
               .Name = "John F Kennedy Intl",
               .Country = "United States",
               .State = "0",
               .City = "New York",
               .Latitude = 40.6398,
               .Longitude = -73.7789,
               .Feet = 13,
               .File = "a.bgl",
               .Comms = 1}) +
        Comm("KJFK", "KENNEDY TOWER", 40.6398, -73.7789, 119.1f, 6) + numbered(egll, 4, "b.bgl") +
        numbered(lfpg, 5, "b.bgl");
    EXPECT_EQ(inst.File("Airport.skl"), airports);

    // Every apron uses up a number, written or not: the hidden KSEA's are 2 and 3.
    EXPECT_EQ(inst.File("Poly.skl"), Poly('M', 1, 47.45, -122.30) + Poly('L', 1, 47.46, -122.31) +
                                         Poly('M', 4, 51.47, -0.45) + Poly('L', 4, 51.48, -0.46) +
                                         Poly('L', 4, 51.49, -0.47));
    EXPECT_EQ(inst.File("Marker.skl"),
              Marker("MM", 40.60, -73.80, 0) + Marker("OM", 51.40, -0.40, 0));
    EXPECT_EQ(inst.File("Taxi.skl"), "");
}

// A file of airports with the codes below, all of them in its name list.
std::string CodedAirports(std::vector<BglRecord> records) {
    std::vector<NameListEntry> names;
    for (const char* code : {"KJFK", "AAAA", "BBBB", "CCCC", "DDDD", "EEEE", "FFFF", "GGGG", "HHHH",
                             "IIII", "JJJJ", "KKKK"})
        names.push_back(Named(code, code, "CITY", "COUNTRY"));
    return Bgl({test::Section(test::kSectionNameList, {{test::NameList(names)}}),
                test::Section(test::kSectionAirport, {records})});
}

BglRecord CodedAirport(uint16_t form, const char* icao, std::vector<BglRecord> subrecords) {
    return test::Airport(form, icao, 40, -70, 0, std::move(subrecords));
}

using Flags = std::vector<bool>;  // aprons, runways, taxiways, replaces others

Flags FlagsOf(const Walk& walk, size_t entry) {
    const AddonAirport& e = walk.Entry(entry);
    return Flags{e.DeletesAprons, e.DeletesRunways, e.DeletesTaxiways, e.ReplacesOthers};
}

TEST(ReadAirportDelete, FlagWordsOfBothFormsAddUpOnTheEntryOfTheirOwnAirport) {
    auto airports = CodedAirports;
    auto airport = CodedAirport;
    auto del = [](uint16_t word, bool fsx, size_t extra = 0) {
        return test::AirportDelete(word, fsx, extra);
    };
    BglRecord tower = test::Comm(6, 119900000, "TOWER");

    // A stock airport before any add-on airport: its delete record is passed over by
    // its size, and the comm behind it is read.
    Walk w;
    w.Read(airports({airport(3, "KJFK", {del(0xA4, false, 2), tower})}), 1, /*stock=*/true);
    EXPECT_EQ(w.State.Tables.AddonTop(), 0);
    EXPECT_EQ(w.Airport(0).CommCount, 1);

    w.Read(airports({
        airport(3, "AAAA", {del(0xA4, false)}),
        airport(3, "BBBB", {del(0xFF, false)}),
        airport(3, "CCCC", {del(0x24, false)}),
        airport(3, "DDDD", {del(0x04, false), del(0xA0, false, 3), tower}),
        airport(3, "EEEE", {del(0x1A4, false)}),  // bit 7 is the highest digit: here 3
        airport(0x3C, "FFFF", {del(0x1A4, true, 4), tower}),
        airport(0x3C, "GGGG", {del(0x80, true)}),
        airport(3, "HHHH", {del(0x8004, false)}),  // bit 15: the subsection is given up
        airport(3, "IIII", {}),
    }));
    // A stock airport after them: its record touches no entry.
    w.Read(airports({airport(3, "KJFK", {del(0xA0, false), tower})}), 1, /*stock=*/true);

    auto flags = [&](size_t i) { return FlagsOf(w, i); };
    const Flags all = {true, true, true, true}, apronsAndRunways = {true, true, false, false};
    ASSERT_EQ(w.State.Tables.AddonTop(), 8);
    EXPECT_EQ(flags(1), all);
    EXPECT_EQ(flags(2), all);
    EXPECT_EQ(flags(3), apronsAndRunways);
    EXPECT_EQ(flags(4), all);
    EXPECT_EQ(flags(5), apronsAndRunways);
    EXPECT_EQ(flags(6), all);
    EXPECT_EQ(flags(7), (Flags{false, false, true, false}));
    EXPECT_EQ(w.Entry(8).Icao, "HHHH ");
    EXPECT_EQ(flags(8), (Flags{false, false, false, false}));
    // The trailing bytes were passed over: the comms behind them were read.
    EXPECT_EQ(w.Airport(4).CommCount, 1);
    EXPECT_EQ(w.Airport(6).CommCount, 1);
    EXPECT_EQ(w.Airport(9).Icao.Str(), "KJFK ");
    EXPECT_EQ(w.Airport(9).CommCount, 1);
    Lines lines = w.Lines();
    ASSERT_EQ(lines.size(), 11u);
    EXPECT_EQ(lines[8], "00008 , 0005 , HHHH  - Hhhh");
    EXPECT_EQ(lines[9], ErrorLine("ReadAirportSubsection", 6));
}

// A delete or name record whose size is below 6, but whose move ends the airport's
// walk, is no error: here the record's last byte lies within the short record's
// header. Mid-record, the same sizes raise 5.
TEST(AirportWalk, AShortDeleteOrNameRecordThatEndsTheWalkIsNoError) {
    BglRecord shortDelete = test::AirportDelete(0xA4, false);
    shortDelete.SizeOverride = 5;  // moves back 1 byte, to the walk's end
    BglRecord endsInDelete = CodedAirport(3, "JJJJ", {shortDelete});
    endsInDelete.SizeOverride = 52 + 6;
    BglRecord shortName = test::AirportName("");
    shortName.SizeOverride = 4;  // moves back 2 bytes, to 1 byte past the walk's end
    BglRecord endsInName = CodedAirport(3, "KKKK", {shortName});
    endsInName.SizeOverride = 52 + 4;
    Walk w;
    w.Read(CodedAirports({endsInDelete}));
    w.Read(CodedAirports({endsInName}));
    w.Read(CodedAirports({CodedAirport(3, "IIII", {shortDelete, test::AirportName("")})}));
    EXPECT_EQ(FlagsOf(w, 1), (Flags{true, true, true, true}));
    EXPECT_EQ(w.Lines(),
              (Lines{"00000 , 0005 , JJJJ  - Jjjj", "00001 , 0005 , KKKK  - Kkkk",
                     "00002 , 0005 , IIII  - Iiii", ErrorLine("ReadAirportSubsection", 5)}));
}

std::string SeattleFile(std::vector<std::vector<BglRecord>> airportSubsections,
                        std::vector<BglRecord> markers = {}) {
    std::vector<test::BglSection> sections = {
        test::Section(
            test::kSectionNameList,
            {{test::NameList({kSea, Named("KBFI", "BOEING FIELD", "SEATTLE", "UNITED STATES")})}}),
        test::Section(test::kSectionAirport, airportSubsections)};
    if (!markers.empty()) sections.push_back(test::Section(test::kSectionMarker, {markers}));
    return Bgl(sections);
}

TEST(AirportWalk, DamagedSubrecordsLogTheirLineAndTheWalkGoesOnWhereTheReaderStopped) {
    // 10000 m wide: 32809 feet do not fit the width's 16 bits when the runway is
    // stored. The record stays, with the fields behind the width never set.
    BglRecord wide = test::Runway({16, 1, "ISNQ"}, {34, 2, "IBEJ"}, 47.45, -122.3, 132588, 3000,
                                  10000, 179.9f, 4);
    // A length that does not fit 32 bits in feet fails before the nested records
    // are passed over: the walk takes the nested comm for one of the airport.
    BglRecord huge = test::Runway({1, 0}, {19, 0}, 47.45, -122.3, 0, 1e10f, 45, 10);
    huge.Children = {test::Comm(6, 121900000, "NESTED GROUND")};
    // A nested record of size 3 fails the runway behind its header: the walk goes on
    // with the bytes behind that header, here a comm.
    BglRecord backwards = test::Runway({2, 0}, {20, 0}, 47.45, -122.3, 0, 2000, 45, 20);
    backwards.Children = {
        BglRecord{0x99, test::Serialize(test::Comm(5, 118300000, "BEHIND")), {}, 3}};
    Walk w;
    w.Read(SeattleFile({{test::Airport(3, "KSEA", 47.449, -122.309, 0,
                                       {wide, huge, backwards, test::Comm(256, 122800000, "UNICOM"),
                                        test::Comm(6, 119900000, "LAST")})}}));
    EXPECT_EQ(w.Lines(), (Lines{"00000 , 0005 , KSEA  - Seattle-Tacoma Intl",
                                ErrorLine("ReadRunway04", 6), ErrorLine("ReadRunway04", 6),
                                ErrorLine("ReadRunway04", 5), ErrorLine("ReadComm04", 6)}));

    const AirportRecord& a = w.Airport(0);
    ASSERT_EQ(a.RunwayCount, 1);
    const RunwayRecord& r = a.Runways.at(0);
    EXPECT_EQ(r.Icao.Str(), "KSEA ");
    EXPECT_EQ(r.PrimaryDesignator.Str(), "16L  ");
    EXPECT_EQ(r.SecondaryDesignator.Str(), "34R  ");
    EXPECT_EQ(r.Heading, 179.9f);
    EXPECT_EQ(r.AltitudeFeet, 435);
    EXPECT_EQ(r.LengthFeet, 9842);
    EXPECT_EQ(r.WidthFeet, 0);
    EXPECT_EQ(r.Surface, 0);
    const std::array<char, 5> none{};
    EXPECT_EQ(r.PrimaryIlsIdent.Bytes, none);
    EXPECT_EQ(r.SecondaryIlsIdent.Bytes, none);
    EXPECT_EQ(r.RecordKind.Bytes, (std::array<char, 1>{}));

    // A comm type above 255: the record stays with CommType 0.
    ASSERT_EQ(a.CommCount, 4);
    Lines comms;
    for (const CommRecord& c : a.Comms) comms.push_back(c.CommName.Str().substr(0, 13));
    EXPECT_EQ(comms, (Lines{"NESTED GROUND", "BEHIND       ", "UNICOM       ", "LAST         "}));
    EXPECT_EQ(a.Comms[2].CommType, 0);
    EXPECT_EQ(a.Comms[2].FrequencyMhz, 122.8f);
    EXPECT_EQ(a.Comms[3].CommType, 6);
}

TEST(AirportWalk, BlindAirportsLogError9ForEachStoredSubrecordButWriteTaxiwaysAndAprons) {
    // The ATIS comm of a blind airport fails before its name is read: the walk takes
    // the name, here the bytes of another comm, for the next subrecord.
    std::string innerComm = test::Serialize(test::Comm(5, 121900000, "TWR"));
    BglRecord blind = test::Airport(
        3, "KXXX", 47.0, -122.0, 0,
        {test::Runway({16, 0}, {34, 0}, 47.0, -122.0, 0, 2000, 45, 160),
         test::Comm(6, 119900000, "TOWER"), test::Comm(1, 128000000, innerComm),
         test::Parking(false, {{.Number = 3, .Latitude = 47.1, .Longitude = -122.1}}),
         test::AirportName("Nowhere"), test::TaxiPoints({{47.2, -122.2}, {47.3, -122.3}}),
         test::TaxiPaths({{.Start = 0, .End = 1, .Type = 1}}), test::TaxiNames({"T"}),
         test::Apron({{47.4, -122.4}, {47.5, -122.5}}), test::AirportDelete(0xA4, false)});
    BglRecord kbfi = test::Airport(
        0x3C, "KBFI", 47.53, -122.30, 0,
        {test::Parking(true, {{.Number = 9, .Latitude = 47.52, .Longitude = -122.29}})});
    Walk w;
    BglRecord ksea = test::Airport(3, "KSEA", 47.449, -122.309, 0, {test::AirportName("")});
    w.Read(SeattleFile({{ksea, blind, kbfi}}, {test::Marker(0, 47.6, -122.6, 0)}));
    EXPECT_EQ(w.Lines(),
              (Lines{"00000 , 0005 , KSEA  - Seattle-Tacoma Intl", ErrorLine("ReadRunway04", 9),
                     ErrorLine("ReadComm04", 9), ErrorLine("ReadComm04", 9),
                     ErrorLine("ReadComm04", 9), ErrorLine("ReadParking04", 9),
                     "Blind Airport found at: 1", "00001 , 0005 , KBFI  - Boeing Field"}));
    const Tables& t = w.State.Tables;
    EXPECT_EQ(t.AirportTop, 1);
    EXPECT_EQ(w.Airport(0).RunwayCount + w.Airport(0).CommCount + w.Airport(0).ParkingCount, 0);
    EXPECT_EQ(w.Airport(1).ParkingCount, 1);
    EXPECT_EQ(w.Airport(1).Parkings.at(0).ParkingNumber, 9);
    // The blind add-on airport keeps its entry, and its delete record notes on it.
    ASSERT_EQ(t.AddonTop(), 3);
    EXPECT_EQ(w.Entry(2).Icao, "KXXX ");
    EXPECT_TRUE(w.Entry(2).ReplacesOthers);
    EXPECT_EQ(w.Output("Taxi.skl"),
              Taxi(Lat(47.2), Lon(-122.2), Lat(47.3), Lon(-122.3), "T", 0, 1, "KXXX"));
    EXPECT_EQ(w.Output("Poly.skl"), Poly('M', 1, 47.4, -122.4) + Poly('L', 1, 47.5, -122.5));
    EXPECT_EQ(w.Output("Marker.skl"), Marker("IM", 47.6, -122.6, 0));
}

// A file that holds every kind of subrecord the airport walk reads, in both forms of
// the airport record, with markers behind them. The blind airport in the middle has
// no ATIS comm and one parking spot, whose failures would leave the walk inside them.
std::string EveryKindFile() {
    auto subrecords = [](bool fsx, bool blind) {
        std::vector<test::ParkingSpot> spots = {
            {.Number = 1, .Latitude = 47.44, .Longitude = -122.30, .AirlineCodes = {"AAL"}},
            {.Number = 2, .Latitude = 47.45, .Longitude = -122.31}};
        if (blind) spots.pop_back();
        BglRecord runway =
            test::Runway({16, 1, "ISNQ"}, {34, 2}, 47.45, -122.31, 132588, 3000, 45, 180);
        runway.Children = {BglRecord{0x05, std::string(10, '\x01')}, BglRecord{0x06, {}}};
        std::vector<BglRecord> records = {
            test::AirportName("Seattle"),
            runway,
            test::Comm(6, 119900000, ""),
            test::Parking(false, spots),
            test::Parking(true, spots),
            test::TaxiPoints({{47.40, -122.30}, {47.41, -122.31}, {47.42, -122.32}}),
            test::TaxiPaths({{.Start = 0, .End = 1, .Type = 1}, {.Start = 1, .End = 2, .Type = 4}}),
            test::TaxiNames({"A", "B"}),
            test::TaxiNames({"C"}),
            test::Apron({{47.43, -122.33}, {47.44, -122.34}}, "ab"),
            test::AirportDelete(fsx ? 0xA4 : 0x24, fsx, 2),
            BglRecord{0x99, "xyz"}};
        if (!blind) records.push_back(test::Comm(1, 118000000, "ATIS"));
        return records;
    };
    return SeattleFile(
        {{test::Airport(3, "KSEA", 47.449, -122.309, 132588, subrecords(false, false)),
          test::Airport(0x3C, "KXXX", 47.0, -122.0, 0, subrecords(true, true))},
         {test::Airport(0x3C, "KBFI", 47.53, -122.30, 0, subrecords(true, false))}},
        {test::Marker(0, 47.5, -122.3, 100), test::Marker(2, 47.6, -122.3, 200)});
}

TEST(AirportWalk, EveryCutOfAFileWithEverySubrecordKindEndsWithReaderErrorsOnly) {
    const std::string whole = EveryKindFile();
    Walk full;
    full.Read(whole, 5, false, "cut.bgl");
    EXPECT_EQ(full.State.Tables.AirportTop, 1);
    EXPECT_EQ(full.Output("Taxi.skl").size(), 6 * 31u);
    EXPECT_EQ(full.Lines(),
              (Lines{"00000 , 0005 , KSEA  - Seattle-Tacoma Intl",
                     ErrorLine("ReadRunway04", 9, "CUT.BGL"), ErrorLine("ReadComm04", 9, "CUT.BGL"),
                     ErrorLine("ReadParking04", 9, "CUT.BGL"), "Blind Airport found at: 1",
                     "00001 , 0005 , KBFI  - Boeing Field"}));

    Walk w;
    for (size_t length = 0; length < whole.size(); ++length) {
        w.State.Tables = Tables();
        w.State.Reading.AirportIsNew = false;
        w.Read(whole.substr(0, length), 5, false, "cut.bgl");
        const Tables& t = w.State.Tables;
        // No index stays taken by an airport without its record.
        ASSERT_EQ(t.AirportTop + 1, static_cast<int32_t>(t.AirportTable.size())) << length;
    }
    const std::regex allowed(
        "\\d{5} , 0005 , .{5} - .*|Blind Airport found at: \\d+|"
        "Error detection and correction in (ReadBglFile|ReadNamelistSubsection|"
        "ReadAirportSubsection|ReadAirportName04|ReadRunway04|ReadComm04|ReadParking04|"
        "ReadApron104|ReadTaxiPoints04|ReadTaxiPath04|ReadTaxiName04|ReadMarkerSubsection|"
        "ReadVORILSSubsection|GetIcaoCode04): CUT\\.BGL \\(#(5|6|9|62|63)\\)");
    Lines lines = w.Lines();
    EXPECT_GT(lines.size(), whole.size());
    for (const std::string& line : lines) EXPECT_TRUE(std::regex_match(line, allowed)) << line;
    // Records are written whole.
    EXPECT_EQ(w.Output("Taxi.skl").size() % 31, 0u);
    EXPECT_EQ(w.Output("Poly.skl").size() % 16, 0u);
    EXPECT_EQ(w.Output("Marker.skl").size() % 14, 0u);
}

}  // namespace
}  // namespace skl
