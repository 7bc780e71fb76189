#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "support/BglBuilder.h"

// What an area, an airport and a file of the benchmark installation hold, before
// they become bytes, and the steps that draw and build them. Every step takes the
// one random sequence of the run, so the order of the calls is part of the output.
namespace skl::bench {

struct Country {
    std::string Name{};
    std::vector<std::string> States{};  // empty: the country has none
};

struct Area {
    int64_t Number = 0;
    std::string Region{};
    char IcaoLetter = 'K';
    std::vector<Country> Countries{};
    std::vector<std::string> Cities{};
    double Latitude = 0;  // south-west corner
    double Longitude = 0;
    double Height = 0;  // degrees
    double Width = 0;
};

enum class Size { kSmall, kMedium, kLarge };

struct RunwayPlan {
    uint8_t Number = 1;  // 1 to 36
    uint8_t Designator = 0;
    std::string PrimaryIls{};
    std::string SecondaryIls{};
    double Latitude = 0;
    double Longitude = 0;
    float Length = 0;  // metres
    float Width = 0;
    uint16_t Surface = 4;
};

struct AirportPlan {
    test::NameListEntry Names{};
    Size Kind = Size::kSmall;
    double Latitude = 0;
    double Longitude = 0;
    int32_t AltitudeMm = 0;
    std::vector<RunwayPlan> Runways{};
    int64_t Comms = 0;
    int64_t Parkings = 0;
    int64_t TaxiPoints = 0;
    int64_t TaxiPaths = 0;
    int64_t TaxiNames = 0;
    int64_t Aprons = 0;
};

// The share of the airports and stations of one BGL file.
struct FilePlan {
    int64_t FirstAirport = 0;  // global index
    int64_t Airports = 0;
    int64_t FirstStation = 0;
    int64_t Stations = 0;
    int64_t FirstIls = 0;
    int64_t Ils = 0;
};

// What was written, for the closing line.
struct Totals {
    int64_t Files = 0;
    int64_t Airports = 0;
    int64_t Runways = 0;
    int64_t Parkings = 0;
    int64_t TaxiPoints = 0;
    int64_t Stations = 0;
    int64_t Ils = 0;
    int64_t Markers = 0;
    int64_t AirportBytes = 0;
    int64_t Bytes = 0;
};

// BenchPlans.cpp: an area with its countries, states and cities, and an airport of
// it; `index` numbers the airport across the installation and gives its code.
Area MakeArea(std::mt19937& rng, int64_t number);
AirportPlan MakeAirport(std::mt19937& rng, const Area& area, int64_t index, int codeWidth);

// BenchAirportRecords.cpp: the airport record with all its subrecords.
test::BglRecord AirportBytes(std::mt19937& rng, const AirportPlan& airport, Totals& totals);

// BenchStations.cpp: an ILS on a free runway end of one of the airports (which
// takes its ident), with its markers; and a VOR of the area.
void AddIls(std::mt19937& rng, std::vector<AirportPlan>& airports, int64_t ilsNumber,
            std::vector<test::BglRecord>& stations, std::vector<test::BglRecord>& markers);
test::BglRecord Vor(std::mt19937& rng, const Area& area, int64_t vorNumber);

}  // namespace skl::bench
