// bglgen: writes synthetic simulator installations, built in code, to try the program on.
//
//   bglgen demo OUTDIR   an FS2004 folder with stock and add-on areas, an add-on folder
//                        beside it, a pack on drive D: (OUTDIR/drive_d) and the program
//                        folder. Run the program on it with --map-drive D=OUTDIR/drive_d.
//
// The output depends on nothing but the arguments: no clock, no randomness.
#include <cmath>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "support/BglBuilder.h"
#include "support/SimFolder.h"

namespace fs = std::filesystem;
using namespace skl::test;

namespace {

struct SceneryFile {
    std::string Name;
    std::string Bytes;
};

int32_t Mm(double metres) {
    return static_cast<int32_t>(std::lround(metres * 1000.0));
}

std::string Bgl(std::vector<BglSection> sections) {
    return BuildBgl(BglFile{.Sections = std::move(sections)});
}

// A section of a kind the program passes over: two subsections of opaque bytes.
BglSection Terrain() {
    BglSection section{.Type = kSectionTerrain};
    for (int part = 0; part < 2; ++part) {
        std::string bytes;
        for (int i = 0; i < 96; ++i) bytes += static_cast<char>((i * 37 + part * 11) & 0xFF);
        section.Subsections.push_back(BglSubsection{.RecordCount = 1, .Records = bytes});
    }
    return section;
}

// Parking spots in a row from a first position, a few metres apart, each with the
// airline codes given (FS2004 or FSX form).
BglRecord Gates(bool fsx, uint8_t type, uint16_t firstNumber, int count, double latitude,
                double longitude, float heading, std::vector<std::string> airlines = {}) {
    std::vector<ParkingSpot> spots;
    for (int i = 0; i < count; ++i) {
        spots.push_back({.Name = 12,  // "gate"
                         .Type = type,
                         .Number = static_cast<uint16_t>(firstNumber + i),
                         .Radius = 18,
                         .Heading = heading,
                         .Latitude = latitude + 0.0004 * i,
                         .Longitude = longitude,
                         .AirlineCodes = airlines});
    }
    return Parking(fsx, spots);
}

// A small taxiway network: a line of points along the apron edge, joined by paths of
// the types given (the last path runs back to the first point), and their names.
std::vector<BglRecord> Taxiways(double latitude, double longitude,
                                const std::vector<uint8_t>& types,
                                const std::vector<std::string>& names) {
    std::vector<Position> points;
    std::vector<TaxiPathEntry> paths;
    for (size_t i = 0; i < types.size(); ++i) {
        points.push_back({latitude + 0.001 * static_cast<double>(i), longitude});
        paths.push_back({.Start = static_cast<int16_t>(i),
                         .End = static_cast<uint16_t>((i + 1) % types.size()),
                         .Type = types[i],
                         .NameIndex = static_cast<uint8_t>(i % names.size())});
    }
    return {TaxiPoints(points), TaxiPaths(paths), TaxiNames(names)};
}

// A rectangular apron of the given size in degrees, south-west corner first.
BglRecord RectangleApron(double latitude, double longitude, double height, double width) {
    return Apron({{latitude, longitude},
                  {latitude + height, longitude},
                  {latitude + height, longitude + width},
                  {latitude, longitude + width}});
}

std::vector<BglRecord> Join(std::vector<BglRecord> records, const std::vector<BglRecord>& more) {
    records.insert(records.end(), more.begin(), more.end());
    return records;
}

// Seattle-Tacoma and Boeing Field, with the name list behind the airports.
std::string SeattleFile() {
    auto ksea = Airport(
        3, "KSEA", 47.4490, -122.3093, Mm(132),
        Join({AirportName("Seattle-Tacoma Intl"),
              // 34R names the localizer of Boeing Field's 32L: it binds to both airports.
              Runway({16, 1, "ISNQ"}, {34, 2, "IKNZ"}, 47.4497, -122.3078, Mm(132), 3627, 46,
                     179.9f),
              // Both ends name one ILS: it binds twice, with both designators.
              Runway({16, 3, "ISEA"}, {34, 3, "ISEA"}, 47.4490, -122.3110, Mm(132), 2873, 46,
                     179.9f),
              Comm(1, 118000000, "SEATTLE ATIS"), Comm(6, 119900000, "SEATTLE"),
              Comm(5, 121700000, "SEATTLE"), Comm(3, 128500000, ""),
              Gates(false, 10, 1, 3, 47.4440, -122.3010, 270, {"ASA", "UAL"}),
              Gates(false, 2, 20, 2, 47.4420, -122.3000, 90),
              RectangleApron(47.4430, -122.3020, 0.0030, 0.0020)},
             Taxiways(47.4430, -122.3040, {1, 4, 5, 2}, {"A", "B", "K"})));
    auto kbfi = Airport(
        3, "KBFI", 47.5300, -122.3020, Mm(6),
        {AirportName("Boeing Field/King County Intl"),
         Runway({14, 2, "IBFI"}, {32, 1, "IKNZ"}, 47.5300, -122.3020, Mm(6), 3048, 61, 148.8f),
         Comm(1, 127750000, "BOEING ATIS"), Comm(6, 120600000, "BOEING"),
         Gates(false, 8, 1, 2, 47.5360, -122.3070, 225),
         RectangleApron(47.5350, -122.3080, 0.0010, 0.0015)});
    auto ils16L = Navaid(4, "ISNQ", 47.4315, -122.3080, Mm(132), 110300000,
                         {Localizer(179.9f), Glideslope(47.4640, -122.3060, 3.0f),
                          Dme(47.4315, -122.3080), NavName("ILS RWY 16L")});
    auto ils14R =
        Navaid(4, "IBFI", 47.5110, -122.2880, Mm(6), 110900000,
               {Localizer(148.8f), Glideslope(47.5420, -122.3110, 3.0f), NavName("ILS RWY 14R")});
    auto ils16C =
        Navaid(4, "ISEA", 47.4380, -122.3110, Mm(132), 111700000,
               {Localizer(179.9f), Glideslope(47.4620, -122.3100, 3.0f), NavName("ILS RWY 16C")});
    auto names = NameList(
        {{"KSEA", "SEATTLE-TACOMA INTL", "SEATTLE", "WASHINGTON", "UNITED STATES", "NORTH AMERICA"},
         {"KBFI", "Boeing Field/King County Intl", "Seattle", "Washington", "United States",
          "North America"}});
    return Bgl({Section(kSectionAirport, {{ksea, kbfi}}),
                Section(kSectionNavaid, {{ils16L, ils16C}, {ils14R}}),
                Section(kSectionMarker, {{Marker(2, 47.5870, -122.3090, Mm(120)),
                                          Marker(1, 47.4830, -122.3080, Mm(125))}}),
                Terrain(), Section(kSectionNameList, {{names}})});
}

// Paine Field: id 3 in the stock scenery, id 0x3C in the add-on. The add-on replaces
// the stock airport: its delete record names aprons, runways and taxiways, so the
// stock one, read later from a lower layer, is hidden.
std::string PaineFile(uint16_t airportId) {
    const bool addon = airportId == 0x3C;
    std::vector<BglRecord> subrecords = {
        AirportName("Snohomish County"),
        Runway({16, 2, "IPAE"}, {34, 1}, 47.9063, -122.2816, Mm(185), 2746, 46, 179.6f),
        Comm(1, 128650000, "PAINE ATIS"),
        Comm(6, 132950000, "PAINE"),
        Gates(addon, 4, 1, addon ? 3 : 2, 47.9100, -122.2850, 90, {"ASA"}),
        RectangleApron(47.9090, -122.2860, 0.0020, 0.0010)};
    if (addon) {
        subrecords.insert(subrecords.begin() + 1, AirportDelete(0xA4, true));
        subrecords = Join(subrecords, Taxiways(47.9090, -122.2870, {1, 1, 4}, {"A", "B"}));
    }
    auto kpae = Airport(airportId, "KPAE", 47.9063, -122.2816, Mm(185), subrecords);
    auto names = NameList({{"KPAE", "SNOHOMISH COUNTY (PAINE FLD)", "EVERETT", "WASHINGTON",
                            "UNITED STATES", "NORTH AMERICA"}});
    auto ils =
        Navaid(4, "IPAE", 47.8880, -122.2810, Mm(185), 109300000,
               {Localizer(179.6f), Glideslope(47.9180, -122.2830, 3.0f), NavName("ILS RWY 16R")});
    return Bgl({Section(kSectionNameList, {{names}}), Section(kSectionAirport, {{kpae}}),
                Section(kSectionNavaid, {{ils}}), Terrain()});
}

// Navaids without airports: a VOR, a localizer-only ILS and a marker; no name list.
std::string NamerNavFile() {
    auto sea = Navaid(3, "SEA", 47.4354, -122.3097, Mm(110), 116800000,
                      {Dme(47.4354, -122.3097), NavName("SEATTLE")});
    auto loc = Navaid(4, "IKNZ", 47.5500, -122.3120, Mm(6), 111700000,
                      {Localizer(328.8f), NavName("LOC RWY 32L")});
    return Bgl({Section(kSectionNavaid, {{sea, loc}}),
                Section(kSectionMarker, {{Marker(2, 48.0260, -122.2900, Mm(150))}}), Terrain()});
}

std::string WorldNavFile() {
    auto pae = Navaid(3, "PAE", 47.9199, -122.2779, Mm(180), 110600000,
                      {Dme(47.9199, -122.2779), NavName("PAINE")});
    auto klo = Navaid(3, "KLO", 47.4575, 8.5456, Mm(430), 114850000, {NavName("KLOTEN")});
    return Bgl({Terrain(), Section(kSectionNavaid, {{pae}, {klo}})});
}

std::string OneAirportFile(uint16_t id, const NameListEntry& entry, double latitude,
                           double longitude, double metres, std::vector<BglRecord> subrecords,
                           std::vector<BglSection> more = {}) {
    more.insert(more.begin(),
                {Section(kSectionNameList, {{NameList({entry})}}),
                 Section(kSectionAirport, {{Airport(id, entry.Icao, latitude, longitude, Mm(metres),
                                                    std::move(subrecords))}})});
    return Bgl(std::move(more));
}

const NameListEntry kLowi = {"LOWI", "INNSBRUCK", "INNSBRUCK", "TIROL", "AUSTRIA", "EUROPE"};

std::string InnsbruckFile(bool oldVersion) {
    auto runway = Runway({8, 0, oldVersion ? "" : "OEV"}, {26, 0}, 47.2602, 11.3440, Mm(581),
                         oldVersion ? 1800 : 2000, 45, 81.0f);
    auto ils = Navaid(4, "OEV", 47.2570, 11.3650, Mm(581), 111100000,
                      {Localizer(81.0f), Dme(47.2570, 11.3650), NavName("LOC DME RWY 08")});
    return OneAirportFile(3, kLowi, 47.2602, 11.3440, 581,
                          {runway, Comm(1, 126020000, "ATIS"), Comm(6, 120100000, "TOWER"),
                           Gates(false, 3, 1, 2, 47.2600, 11.3500, 180, {"AUA"})},
                          {Section(kSectionNavaid, {{ils}})});
}

std::string ZurichFile() {
    auto runway = Runway({14, 0, "IZH"}, {32, 0}, 47.4647, 8.5492, Mm(432), 3300, 60, 137.6f);
    auto ils = Navaid(4, "IZH", 47.4810, 8.5360, Mm(432), 108300000,
                      {Localizer(137.6f), Glideslope(47.4790, 8.5330, 3.0f), NavName("ILS 14")});
    return OneAirportFile(
        0x3C, {"LSZH", "ZURICH", "ZURICH", "", "SWITZERLAND", "EUROPE"}, 47.4647, 8.5492, 432,
        Join({AirportName("Zurich"), runway, Comm(1, 128525000, "ZURICH ATIS"),
              Comm(6, 118100000, "ZURICH TOWER"), Comm(5, 121900000, "ZURICH GROUND"),
              Gates(true, 10, 1, 4, 47.4600, 8.5600, 315, {"SWR", "DLH", "EDW"}),
              Gates(true, 4, 60, 2, 47.4560, 8.5580, 45),
              RectangleApron(47.4590, 8.5590, 0.0020, 0.0030),
              RectangleApron(47.4550, 8.5570, 0.0010, 0.0010)},
             Taxiways(47.4580, 8.5550, {1, 4, 0x21, 0x64, 3}, {"A", "B", "E"})),
        {Section(kSectionNavaid, {{ils}}),
         Section(kSectionMarker,
                 {{Marker(2, 47.5420, 8.4720, Mm(450)), Marker(1, 47.4900, 8.5250, Mm(440))}}),
         Terrain()});
}

// Brisbane, Toronto and Portland (Maine): one airport of each state that keeps
// the states of its country.
std::string StatesFile() {
    std::vector<BglRecord> airports = {
        Airport(3, "YBBN", -27.3842, 153.1175, Mm(4), {AirportName("Brisbane")}),
        Airport(3, "CYYZ", 43.6772, -79.6306, Mm(173), {AirportName("Toronto")}),
        Airport(3, "KPWM", 43.6462, -70.3093, Mm(23), {AirportName("Portland")})};
    auto names = NameList(
        {{"YBBN", "BRISBANE", "BRISBANE", "QUEENSLAND", "AUSTRALIA", "AUSTRALIA"},
         {"CYYZ", "TORONTO PEARSON INTL", "TORONTO", "ONTARIO", "CANADA", "NORTH AMERICA"},
         {"KPWM", "PORTLAND INTL JETPORT", "PORTLAND", "MAINE", "UNITED STATES",
          "NORTH AMERICA"}});
    return Bgl({Section(kSectionNameList, {{names}}), Section(kSectionAirport, {airports})});
}

void WriteScenery(const fs::path& folder, std::string_view what,
                  const std::vector<SceneryFile>& files) {
    for (const auto& file : files) WriteFile(folder / file.Name, file.Bytes);
    std::cout << folder.string() << ": " << what << '\n';
}

void WriteDemo(const fs::path& out) {
    const fs::path fs9 = out / "FS9";
    const std::string readme = "Demo scenery written by bglgen.\r\n";
    // Areas are listed in the file's order; layer 8 comes twice (the later one counts),
    // layer 6 is unused, and the titles with commas are cut at the comma.
    MakeFs9Folder(
        fs9, SceneryCfg(
                 {{"Default Terrain", "Scenery\\World", "", "1", "TRUE"},
                  {"Global Terrain", "Scenery\\Global", "", "2", "TRUE"},
                  {"North America, Pacific Northwest", "Scenery\\NAMER", "", "3", "TRUE"},
                  {"Alpine Pack v1", "Addon Scenery\\Alpine Old", "", "8", "TRUE"},
                  {"Boeing Field Beta", "Addon Scenery\\Disabled Pack", "", "4", "FALSE"},
                  {"Addon Scenery", "Addon Scenery", "", "4", "TRUE"},
                  {"Harbor Field, Lake Union", "..\\Shared Addons\\Harbor Field", "", "7", "TRUE"},
                  {"World Airports", "Addon Scenery\\World Airports", "", "5", "TRUE"},
                  {"Alps, Zurich and Innsbruck", "D:\\Scenery Packs\\Alpine", "", "8", "TRUE"}},
                 "\r\n", "FS9 World Scenery"));
    std::cout << fs9.string() << ": FS2004 folder (fs9.exe, scenery.cfg)\n";

    WriteScenery(fs9 / "Scenery/World/scenery", "stock, layer 1",
                 {{"NAV_World.bgl", WorldNavFile()}, {"readme.txt", readme}});
    WriteScenery(fs9 / "Scenery/Global/scenery", "stock, layer 2",
                 {{"Terrain_Global.BGL", Bgl({Terrain()})},
                  {"old_format.bgl", BuildBgl(BglFile{.Magic = 0x0001, .Sections = {Terrain()}})}});
    WriteScenery(fs9 / "Scenery/NAMER/scenery", "stock, layer 3",
                 {{"AP_KSEA.bgl", SeattleFile()},
                  {"ap_kpae.BGL", PaineFile(3)},
                  {"nav_namer.BGL", NamerNavFile()}});
    WriteScenery(fs9 / "Addon Scenery/Alpine Old/scenery", "layer 8, replaced by a later area",
                 {{"AP_LOWI_v1.bgl", InnsbruckFile(true)}});
    WriteScenery(fs9 / "Addon Scenery/Disabled Pack/scenery", "layer 4, inactive",
                 {{"AP_KBFI_beta.BGL",
                   OneAirportFile(0x3C,
                                  {"KBFI", "BOEING FIELD BETA", "SEATTLE", "WASHINGTON",
                                   "UNITED STATES", "NORTH AMERICA"},
                                  47.5300, -122.3020, 6, {AirportName("Boeing Field Beta")})}});
    WriteScenery(fs9 / "Addon Scenery/scenery", "add-on, layer 4, hides the stock KPAE",
                 {{"AP_KPAE_Addon.BGL", PaineFile(0x3C)}, {"readme.txt", readme}});
    WriteScenery(
        out / "Shared Addons/Harbor Field/scenery", "add-on outside FS9, layer 7",
        {{"AP_W55.bgl",
          OneAirportFile(3,
                         {"W55", "KENMORE AIR HARBOR SEAPLANE BASE", "SEATTLE", "WASHINGTON",
                          "UNITED STATES", "NORTH AMERICA"},
                         47.6290, -122.3390, 4,
                         {Runway({16, 0}, {34, 0}, 47.6290, -122.3390, Mm(4), 1524, 61, 160.0f, 2),
                          Comm(9, 122800000, "KENMORE UNICOM")},
                         // An add-on localizer that no runway names: it stays unbound and
                         // goes to Ils.skl and to the log's list.
                         {Section(kSectionNavaid,
                                  {{Navaid(4, "IKEN", 47.6200, -122.3400, Mm(4), 109900000,
                                           {Localizer(160.0f), NavName("LDA LAKE UNION")})}})})},
         {"readme.txt", readme}});
    // Two files of one area hold Innsbruck: a double add-on airport, merged at the end.
    WriteScenery(out / "drive_d/Scenery Packs/Alpine/scenery", "drive D:, layer 8",
                 {{"AP_LSZH.BGL", ZurichFile()},
                  {"ap_lowi.bgl", InnsbruckFile(false)},
                  {"ap_lowi_gates.bgl",
                   OneAirportFile(0x3C, kLowi, 47.2600, 11.3460, 579,
                                  {AirportName("Innsbruck"),
                                   Gates(true, 6, 10, 1, 47.2590, 11.3520, 180, {"AUA"})})}});
    // Airports of Queensland, Ontario and Maine: their countries keep their states.
    WriteScenery(fs9 / "Addon Scenery/World Airports/scenery", "add-on, layer 5",
                 {{"AP_STATES.bgl", StatesFile()}});

    MakeProgramFolder(out / "Skyloom");
    std::cout << (out / "Skyloom").string() << ": program folder\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3 || std::string_view(argv[1]) != "demo") {
        std::cerr << "usage: bglgen demo OUTDIR\n";
        return 2;
    }
    try {
        WriteDemo(argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "bglgen: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
