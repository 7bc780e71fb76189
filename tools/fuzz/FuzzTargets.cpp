#include "fuzz/FuzzTargets.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "bgl/BglReaders.h"
#include "scenery/SceneryCfg.h"
#include "skl/ByteWriter.h"
#include "support/BglBuilder.h"
#include "support/RunHelpers.h"

namespace skl::fuzz {

namespace fs = std::filesystem;

namespace {

// The log and the files it holds are closed and made anew once they grow past
// this size, checked every kSizeCheckInterval inputs, so that a long run does not
// fill the disk. Nothing the readers do depends on the size of what they wrote.
constexpr uintmax_t kRecycleBytes = 16 * 1024 * 1024;
constexpr uint64_t kSizeCheckInterval = 64;
// File numbers above the log that a failed run could leave open.
constexpr int kHighestFileNumber = 16;

// Puts the bytes into the file in place: written over the old content, then cut to
// their length. Truncating to zero and writing anew frees and allocates the file's
// block for every input, which costs milliseconds on a file system mounted with
// discard.
void Overwrite(const fs::path& file, const uint8_t* data, size_t size) {
    int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) throw std::runtime_error("cannot open " + file.string());
    size_t done = 0;
    while (done < size) {
        ssize_t wrote = ::pwrite(fd, data + done, size - done, static_cast<off_t>(done));
        if (wrote <= 0) break;
        done += static_cast<size_t>(wrote);
    }
    bool ok = done == size && ::ftruncate(fd, static_cast<off_t>(size)) == 0;
    ::close(fd);
    if (!ok) throw std::runtime_error("cannot write " + file.string());
}

uintmax_t SizeOf(const fs::path& file) {
    std::error_code error;
    uintmax_t size = fs::file_size(file, error);
    return error ? 0 : size;
}

// A run state with its log in a temporary folder, kept for the whole process.
struct Context : test::LoggedState {
    uint64_t Inputs = 0;
    std::vector<std::string> OutputNames;

    // Closes every file but the log that a failed input left open.
    void CloseStrays() {
        for (int number = 1; number <= kHighestFileNumber; ++number) {
            if (number == State.Files.LogFile) continue;
            if (number == State.Files.TaxiFile || number == State.Files.PolyFile ||
                number == State.Files.MarkerFile)
                continue;
            State.Files.Table.Close(number);
        }
    }

    // Every kSizeCheckInterval inputs: when the log and the outputs together have
    // grown too big, they are truncated by opening them anew under the same numbers.
    void RecycleWhenBig() {
        if (++Inputs % kSizeCheckInterval != 0) return;
        uintmax_t total = SizeOf(Dir.Path / "TEST.LOG");
        for (const std::string& name : OutputNames) total += SizeOf(Dir.Path / name);
        if (total < kRecycleBytes) return;
        Files& files = State.Files;
        files.Table.CloseAll();
        OpenLogFile(State, "TEST.LOG");
        OpenOutputs();
    }

    virtual void OpenOutputs() {}
    virtual ~Context() = default;
};

// The BGL walk writes Taxi, Poly and Marker records while it reads.
struct BglContext : Context {
    BglContext() {
        OutputNames = {"Taxi.skl", "Poly.skl", "Marker.skl"};
        OpenOutputs();
    }

    void OpenOutputs() override {
        Files& files = State.Files;
        int16_t Files::*handles[] = {&Files::TaxiFile, &Files::PolyFile, &Files::MarkerFile};
        for (size_t i = 0; i < 3; ++i) {
            files.*handles[i] = static_cast<int16_t>(files.Table.FreeFile());
            files.Table.OpenOutput(files.*handles[i], (Dir.Path / OutputNames[i]).string());
        }
    }
};

struct CfgContext : Context {
    fs::path CfgFile = Dir.Path / "scenery.cfg";

    CfgContext() {
        Selection& selection = State.Selection;
        selection.IsFsx = false;
        selection.SimulatorFolder = "C:\\FS9\\";
        selection.CfgFolder = test::WindowsFolder(selection.Drives, Dir.Path);
        selection.CfgFileName = "scenery.cfg";
    }
};

}  // namespace

void FuzzBglWalk(const uint8_t* data, size_t size) {
    static BglContext context;
    RunState& state = context.State;
    state.Tables = Tables();
    state.Reading = Reading();
    state.Files.RecordsWritten = {};
    Reading& reading = state.Reading;
    reading.CurrentBglFile = "FUZZ.BGL";
    reading.StockScenery = size > 2 && (data[2] & 1) != 0;
    reading.AreaNumber = size > 3 ? data[3] : 1;
    reading.Bgl = platform::ByteReader::FromBytes(std::vector<uint8_t>(data, data + size));
    ReadBglFile(state);
    reading.Bgl = platform::ByteReader();
    context.RecycleWhenBig();
}

void FuzzSceneryCfg(const uint8_t* data, size_t size) {
    static CfgContext context;
    RunState& state = context.State;
    state.Reading = Reading();
    Overwrite(context.CfgFile, data, size);
    try {
        GetBGLFileDirectories(state);
    } catch (const RunAborted&) {
        // The run would end here; the next input starts from the same files.
    }
    context.CloseStrays();
    context.RecycleWhenBig();
}

namespace {

using test::BglRecord;

BglRecord Raw(uint16_t id, const ByteWriter& body) {
    return BglRecord{id, body.Bytes};
}

BglRecord TaxiPoints(int16_t count) {
    ByteWriter body;
    body.I16(count);
    for (int16_t i = 0; i < count; ++i) {
        body.I32(0);
        body.I32(test::PackLongitude(11.34 + 0.001 * i));
        body.I32(test::PackLatitude(47.26 + 0.001 * i));
    }
    return Raw(0x1A, body);
}

BglRecord TaxiPaths(const std::vector<std::pair<int16_t, int16_t>>& paths, uint8_t type) {
    ByteWriter body;
    body.I16(static_cast<int16_t>(paths.size()));
    uint8_t name = 0;
    for (auto [from, to] : paths) {
        body.I16(from);
        body.U8(static_cast<uint8_t>(to & 0xFF));
        body.U8(static_cast<uint8_t>((to >> 8) & 0x0F));
        body.U8(type);
        body.U8(name++);
        body.Text("", 14);
    }
    return Raw(0x1C, body);
}

BglRecord TaxiNames(const std::vector<std::string>& names) {
    ByteWriter body;
    body.I16(static_cast<int16_t>(names.size()));
    for (const std::string& name : names) body.Text(name, 8);
    return Raw(0x1D, body);
}

// Spots of the FS2004 form (20 bytes) or the FSX form (36 bytes), each with
// `airlines` airline codes.
BglRecord Parking(bool fsx, int16_t count, uint8_t airlines) {
    ByteWriter body;
    body.I16(count);
    for (int16_t i = 0; i < count; ++i) {
        body.U32((uint32_t{airlines} << 24) | (uint32_t(i + 1) << 12) | (3u << 8) | 12u);
        body.F32(18.0f);
        body.F32(90.0f * static_cast<float>(i));
        if (fsx) body.Text("", 16);
        body.I32(test::PackLongitude(11.35));
        body.I32(test::PackLatitude(47.26));
        for (uint8_t a = 0; a < airlines; ++a) body.Text("AUA", 4);
    }
    return Raw(fsx ? 0x3D : 0x1B, body);
}

BglRecord Apron(int16_t vertices) {
    ByteWriter body;
    body.U8(0);
    body.I16(vertices);
    for (int16_t i = 0; i < vertices; ++i) {
        body.I32(test::PackLongitude(11.34 + 0.002 * (i % 2)));
        body.I32(test::PackLatitude(47.26 + 0.002 * (i / 2)));
    }
    body.Text("tail", 4);  // the rest of the subrecord is passed over
    return Raw(0x37, body);
}

// Bits 2, 5 and 7: aprons, runways and taxiways.
BglRecord Delete(bool fsx, int16_t flags) {
    ByteWriter body;
    body.I16(flags);
    body.Text("", fsx ? 4 : 2);
    return Raw(0x33, body);
}

BglRecord Marker(uint8_t type, double latitude, double longitude) {
    return test::Marker(type, latitude, longitude, 580000);
}

std::vector<BglRecord> AirportSubrecords(bool fsx) {
    BglRecord runway =
        test::Runway({8, 0, "IINN"}, {26, 1, ""}, 47.26, 11.34, 580000, 2000.0f, 45.0f, 80.0f);
    // Nested records of a runway are passed over by their sizes.
    runway.Children = {BglRecord{0x05, std::string(10, '\x11')},
                       BglRecord{0x0E, std::string(16, '\x22')}};
    return {test::AirportName("Innsbruck"),
            runway,
            test::Comm(1, 126025000, "ATIS"),
            test::Comm(9, 120100000, "Tower"),
            TaxiPoints(4),
            TaxiPaths({{0, 1}, {1, 2}, {2, 3}, {3, 0}}, 1),
            TaxiNames({"A", "B", "C"}),
            Parking(fsx, 2, 1),
            Parking(!fsx, 1, 0),  // the other form is passed over
            Apron(4),
            Delete(fsx, 0xA4),
            BglRecord{0x99, std::string(7, '\x33')}};
}

std::vector<test::NameListEntry> Names() {
    return {{"LOWI", "Innsbruck Kranebitten", "Innsbruck", "Tirol", "Austria", "Europe"},
            {"KSEA", "Seattle Tacoma Intl", "Seattle", "Washington", "United States", "NA"},
            {"EGLL", "London Heathrow", "London", "", "United Kingdom", "Europe"}};
}

std::vector<BglRecord> Stations() {
    return {test::Navaid(4, "IINN", 47.26, 11.34, 580000, 109700000,
                         {test::Localizer(80.0f), test::Glideslope(47.26, 11.33, 3.0f),
                          test::Dme(47.26, 11.33), test::NavName("Innsbruck Loc")}),
            test::Navaid(2, "INN", 47.23, 11.5, 600000, 111850000,
                         {test::Dme(47.23, 11.5), test::NavName("Innsbruck VOR")}),
            test::Navaid(4, "ISEA", 47.45, -122.3, 130000, 110300000, {test::Localizer(160.0f)})};
}

// Sets the header byte that chooses stock scenery for the fuzz entry point.
std::string AsStock(std::string bytes) {
    bytes[2] = static_cast<char>(bytes[2] | 1);
    return bytes;
}

}  // namespace

std::vector<std::string> BglSeeds() {
    using test::BglFile;
    using test::Section;
    std::vector<std::string> seeds;

    // FS2004: a name list, two airports (the second one has no name: a blind
    // airport), stations, markers and a section of a kind the walk passes over.
    BglFile fs2004;
    fs2004.Sections = {
        Section(test::kSectionTerrain, {{BglRecord{0x65, std::string(12, '\x44')}}}),
        Section(test::kSectionAirport,
                {{test::Airport(3, "LOWI", 47.26, 11.34, 580000, AirportSubrecords(false)),
                  test::Airport(3, "LOWS", 47.79, 13.0, 430000, {test::Comm(1, 125725000, "")})}}),
        Section(test::kSectionNameList, {{test::NameList(Names())}}),
        Section(test::kSectionNavaid, {Stations()}),
        Section(test::kSectionMarker,
                {{Marker(0, 47.26, 11.3), Marker(1, 47.26, 11.2), Marker(2, 47.26, 11.0)}}),
    };
    seeds.push_back(test::BuildBgl(fs2004));
    seeds.push_back(AsStock(seeds.back()));

    // FSX: the same airport twice in one file (met twice within the area), the
    // first one with all three delete flags.
    BglFile fsx;
    fsx.Sections = {
        Section(test::kSectionNameList, {{test::NameList(Names())}}),
        Section(test::kSectionAirport,
                {{test::Airport(0x3C, "KSEA", 47.45, -122.3, 130000, AirportSubrecords(true)),
                  test::Airport(0x3C, "KSEA", 47.45, -122.3, 130000,
                                {test::AirportName("Seattle"), Delete(true, 0x04)})},
                 {test::Airport(0x3C, "EGLL", 51.47, -0.46, 25000, {})}}),
        Section(test::kSectionNavaid, {Stations(), {Stations()[1]}}),
        Section(test::kSectionMarker, {{Marker(1, 47.4, -122.3)}}),
    };
    seeds.push_back(test::BuildBgl(fsx));
    seeds.push_back(AsStock(seeds.back()));

    // Small files: one kind of section each.
    seeds.push_back(test::BuildBgl(BglFile{
        0x0201, std::nullopt, {Section(test::kSectionNameList, {{test::NameList(Names())}})}}));
    seeds.push_back(test::BuildBgl(
        BglFile{0x0201, std::nullopt, {Section(test::kSectionNavaid, {Stations()})}}));
    seeds.push_back(test::BuildBgl(
        BglFile{0x0201, std::nullopt, {Section(test::kSectionMarker, {{Marker(2, 10.0, 20.0)}})}}));
    return seeds;
}

std::vector<std::string> SceneryCfgSeeds() {
    using test::CfgArea;
    const std::vector<CfgArea> areas = {
        {"Default Terrain", "Scenery\\World", "", "1", "TRUE"},
        {"Addon", "..\\Addon Scenery", "", "2", "TRUE"},
        {"Remote", "", "D:\\Scenery\\Remote", "3", "FALSE"},
        {"Hex layer", "Scenery\\Hex", "", "&H4", "1"},
    };
    std::vector<std::string> seeds;
    for (const char* lineEnd : {"\r\n", "\n", "\r"})
        seeds.push_back(test::SceneryCfg(areas, lineEnd));
    // Quotes: a quoted item with a comma, text behind the closing quote, a quote
    // inside an item, an unterminated quote; a value that is no boolean; a layer
    // out of range; no line end at the end of the file.
    seeds.push_back(
        "[General]\r\nTitle=\"FS9 World Scenery, Base\"ignored\r\n\r\n"
        "[Area.001]\r\nTitle=O\"Hare\r\nLocal=\"Scenery\\World\r\nLayer=1\r\nActive=TRUE\r\n\r\n"
        "[Area.002]\nTitle=\"Odd\nLocal=..\\..\\Above\nLayer=2.5\nActive=maybe\n\n"
        "[Area.003]\rLocal=C:\\Abs\rLayer=99999\rActive=-1\r"
        "[Area.004]\r\nLocal=Scenery\\Last\r\nLayer= 4 \r\nActive=True");
    seeds.push_back("");
    seeds.push_back("\r\n\r\n,,,\"\"\r\n");
    return seeds;
}

void WriteSeeds(const std::vector<std::string>& seeds, const std::string& folder) {
    fs::create_directories(folder);
    for (size_t i = 0; i < seeds.size(); ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "seed-%03zu", i);
        test::WriteFile(fs::path(folder) / name, seeds[i]);
    }
}

}  // namespace skl::fuzz
