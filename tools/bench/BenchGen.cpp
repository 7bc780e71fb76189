// benchgen: writes a synthetic FS2004 installation for the benchmark.
//
//   benchgen OUTDIR AIRPORTS [SEED]
//
// OUTDIR/FS9 is the simulator folder (fs9.exe, scenery.cfg, one stock area per 200
// airports, at least 4, each with BGL files of up to 100 airports); OUTDIR/Skyloom is
// the program folder. Each BGL file holds a name list section covering its airports,
// an airport section, a VOR/ILS section, a marker section and a terrain section of
// random bytes about as large as its airport data, which the run must pass over.
//
// This file lays out the areas and files; BenchPlans.cpp draws the areas and
// airports, BenchAirportRecords.cpp and BenchStations.cpp build their records with
// the test builder. The output depends only on the arguments (see BenchRandom.h).
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "BenchPlan.h"
#include "BenchRandom.h"
#include "support/BglBuilder.h"
#include "support/SimFolder.h"

namespace fs = std::filesystem;
using namespace skl::bench;
using namespace skl::test;

namespace {

constexpr uint32_t kDefaultSeed = 20261123;
constexpr int64_t kAirportsPerArea = 200;
constexpr int64_t kMinimumAreas = 4;
constexpr int64_t kAirportsPerFile = 100;
constexpr int64_t kAirportsPerSubsection = 32;
constexpr int64_t kStationsPerSubsection = 16;
constexpr int64_t kMarkersPerSubsection = 32;
constexpr int64_t kTerrainSubsections = 4;
// Stations per 24,000 airports, as in the stock scenery.
constexpr int64_t kStationsAt24000 = 3500;

// Records cut into subsections of at most `per` records each.
BglSection Chunked(int32_t type, const std::vector<BglRecord>& records, int64_t per) {
    std::vector<std::vector<BglRecord>> parts;
    for (size_t i = 0; i < records.size(); i += static_cast<size_t>(per)) {
        const size_t end = std::min(records.size(), i + static_cast<size_t>(per));
        parts.emplace_back(records.begin() + static_cast<std::ptrdiff_t>(i),
                           records.begin() + static_cast<std::ptrdiff_t>(end));
    }
    return Section(type, parts);
}

// Random bytes in a few subsections: a section the run must pass over cheaply.
BglSection Terrain(std::mt19937& rng, int64_t bytes) {
    BglSection section{.Type = kSectionTerrain};
    for (int64_t part = 0; part < kTerrainSubsections; ++part) {
        const int64_t size =
            Share(bytes, part + 1, kTerrainSubsections) - Share(bytes, part, kTerrainSubsections);
        std::string data(static_cast<size_t>(size), '\0');
        for (size_t i = 0; i < data.size(); i += 4) {
            const uint32_t word = Next(rng);
            for (size_t b = 0; b < 4 && i + b < data.size(); ++b)
                data[i + b] = static_cast<char>((word >> (8 * b)) & 0xFF);
        }
        section.Subsections.push_back(BglSubsection{.RecordCount = 1, .Records = std::move(data)});
    }
    return section;
}

std::string FileBytes(std::mt19937& rng, const Area& area, const FilePlan& plan, int codeWidth,
                      Totals& totals) {
    std::vector<AirportPlan> airports;
    for (int64_t i = 0; i < plan.Airports; ++i)
        airports.push_back(MakeAirport(rng, area, plan.FirstAirport + i, codeWidth));

    // Stations first: an ILS writes its ident into a runway end of its airport.
    std::vector<BglRecord> stations;
    std::vector<BglRecord> markers;
    for (int64_t i = 0; i < plan.Ils; ++i)
        AddIls(rng, airports, plan.FirstIls + i, stations, markers);
    for (int64_t i = plan.Ils; i < plan.Stations; ++i)
        stations.push_back(Vor(rng, area, plan.FirstStation - plan.FirstIls + i - plan.Ils));

    std::vector<BglRecord> airportRecords;
    std::vector<NameListEntry> names;
    for (const AirportPlan& airport : airports) {
        airportRecords.push_back(AirportBytes(rng, airport, totals));
        names.push_back(airport.Names);
    }
    BglSection airportSection = Chunked(kSectionAirport, airportRecords, kAirportsPerSubsection);
    int64_t airportBytes = 0;
    for (const BglSubsection& subsection : airportSection.Subsections)
        airportBytes += static_cast<int64_t>(subsection.Records.size());

    // The terrain lies between the name list and the stations, so that the run
    // must pass over it inside the file.
    std::string bytes = BuildBgl(BglFile{
        .Sections = {std::move(airportSection), Section(kSectionNameList, {{NameList(names)}}),
                     Terrain(rng, airportBytes),
                     Chunked(kSectionNavaid, stations, kStationsPerSubsection),
                     Chunked(kSectionMarker, markers, kMarkersPerSubsection)}});

    totals.Files += 1;
    totals.Airports += plan.Airports;
    totals.Stations += plan.Stations;
    totals.Ils += plan.Ils;
    totals.Markers += static_cast<int64_t>(markers.size());
    totals.AirportBytes += airportBytes;
    totals.Bytes += static_cast<int64_t>(bytes.size());
    return bytes;
}

int64_t ParseCount(const char* text, int64_t lo, int64_t hi, const char* what) {
    char* end = nullptr;
    const long long value = std::strtoll(text, &end, 10);
    if (end == text || *end != '\0' || value < lo || value > hi)
        throw std::invalid_argument(std::string(what) + " must be a number from " +
                                    std::to_string(lo) + " to " + std::to_string(hi));
    return value;
}

void Generate(const fs::path& out, int64_t airportCount, uint32_t seed) {
    if (fs::exists(out) && !fs::is_empty(out))
        throw std::runtime_error(out.string() + " is not empty; remove it first");
    std::mt19937 rng(seed);
    const int codeWidth = airportCount <= 46656 ? 3 : 4;
    const int64_t areaCount = std::max(kMinimumAreas, airportCount / kAirportsPerArea);
    const int64_t stationCount = Share(kStationsAt24000, airportCount, 24000);
    const int64_t ilsCount = (stationCount + 1) / 3;
    const fs::path sim = out / "FS9";

    Totals totals;
    std::vector<CfgArea> cfgAreas;
    for (int64_t a = 0; a < areaCount; ++a) {
        const Area area = MakeArea(rng, a + 1);
        char folder[32];
        std::snprintf(folder, sizeof folder, "R%03lld", static_cast<long long>(a + 1));
        cfgAreas.push_back({"Stock Region " + std::to_string(a + 1),
                            std::string("Scenery\\") + folder, "", std::to_string(a + 1), "TRUE"});

        const int64_t first = Share(airportCount, a, areaCount);
        const int64_t last = Share(airportCount, a + 1, areaCount);
        const int64_t files =
            std::max<int64_t>(1, (last - first + kAirportsPerFile - 1) / kAirportsPerFile);
        for (int64_t f = 0; f < files; ++f) {
            FilePlan plan;
            plan.FirstAirport = first + Share(last - first, f, files);
            plan.Airports = first + Share(last - first, f + 1, files) - plan.FirstAirport;
            if (plan.Airports == 0) continue;
            const int64_t end = plan.FirstAirport + plan.Airports;
            plan.FirstStation = Share(stationCount, plan.FirstAirport, airportCount);
            plan.Stations = Share(stationCount, end, airportCount) - plan.FirstStation;
            plan.FirstIls = Share(ilsCount, plan.FirstAirport, airportCount);
            plan.Ils = std::min(plan.Stations, Share(ilsCount, end, airportCount) - plan.FirstIls);
            char name[40];
            // Mixed case of the extension, as stock folders have.
            std::snprintf(name, sizeof name,
                          (f % 2 == 0) ? "AP%03lld%02lld.BGL" : "ap%03lld%02lld.bgl",
                          static_cast<long long>(a + 1), static_cast<long long>(f + 1));
            WriteFile(sim / "Scenery" / folder / "scenery" / name,
                      FileBytes(rng, area, plan, codeWidth, totals));
        }
    }
    MakeFs9Folder(sim, SceneryCfg(cfgAreas));
    MakeProgramFolder(out / "Skyloom");

    std::printf(
        "benchgen: %lld files, %lld airports, %lld stations (%lld ILS), %lld markers, "
        "%lld runways, %lld parkings, %lld taxi points, %lld bytes (%lld of airport records) "
        "in %s\n",
        static_cast<long long>(totals.Files), static_cast<long long>(totals.Airports),
        static_cast<long long>(totals.Stations), static_cast<long long>(totals.Ils),
        static_cast<long long>(totals.Markers), static_cast<long long>(totals.Runways),
        static_cast<long long>(totals.Parkings), static_cast<long long>(totals.TaxiPoints),
        static_cast<long long>(totals.Bytes), static_cast<long long>(totals.AirportBytes),
        sim.string().c_str());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3 || argc > 4) {
        std::fprintf(stderr, "usage: benchgen OUTDIR AIRPORTS [SEED]\n");
        return 2;
    }
    try {
        const int64_t airports = ParseCount(argv[2], 1, 1000000, "AIRPORTS");
        const auto seed = static_cast<uint32_t>(
            argc == 4 ? ParseCount(argv[3], 0, UINT32_MAX, "SEED") : kDefaultSeed);
        Generate(argv[1], airports, seed);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "benchgen: %s\n", error.what());
        return 1;
    }
    return 0;
}
