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
// Proportions follow the stock scenery: for 24,000 airports about 3,500 VOR/ILS
// stations (a third of them ILS); most airports are small strips with one runway and
// little else, a few are large with several runways, many parking spots and taxiways.
//
// The output depends only on the arguments: std::mt19937 gives the same sequence on
// every machine, the distributions are written here (the standard ones are not
// specified bit for bit), and no library function whose last bit may vary between
// machines (sin, cos) is used.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "skl/ByteWriter.h"
#include "support/BglBuilder.h"
#include "support/SimFolder.h"

namespace fs = std::filesystem;
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
constexpr double kPi = 3.14159265358979323846;
constexpr double kMetresPerDegree = 111120.0;

// ----- Random numbers that are the same on every machine -----

uint32_t Next(std::mt19937& rng) {
    return static_cast<uint32_t>(rng());
}

// An integer from lo to hi, both included (modulo: the small bias does not matter).
int64_t Between(std::mt19937& rng, int64_t lo, int64_t hi) {
    if (hi <= lo) return lo;
    const uint64_t span = static_cast<uint64_t>(hi - lo) + 1;
    const uint64_t high = Next(rng);
    const uint64_t wide = (high << 32) | Next(rng);
    return lo + static_cast<int64_t>(wide % span);
}

// A double in [0, 1) from 53 random bits.
double Fraction(std::mt19937& rng) {
    const uint64_t high = Next(rng) >> 5;  // 27 bits
    const uint64_t low = Next(rng) >> 6;   // 26 bits
    return static_cast<double>((high << 26) | low) / 9007199254740992.0;
}

double BetweenReal(std::mt19937& rng, double lo, double hi) {
    return lo + (hi - lo) * Fraction(rng);
}

bool Chance(std::mt19937& rng, int percent) {
    return Between(rng, 0, 99) < percent;
}

template <typename T>
const T& Pick(std::mt19937& rng, const std::vector<T>& items) {
    return items[static_cast<size_t>(Between(rng, 0, static_cast<int64_t>(items.size()) - 1))];
}

// Sine by its series after reducing the angle to [-pi/2, pi/2]: only additions and
// multiplications, so every machine gives the same bits.
double Sine(double radians) {
    double x = radians - 2.0 * kPi * static_cast<double>(static_cast<int64_t>(radians / (2 * kPi)));
    if (x > kPi) x -= 2.0 * kPi;
    if (x < -kPi) x += 2.0 * kPi;
    if (x > kPi / 2) x = kPi - x;
    if (x < -kPi / 2) x = -kPi - x;
    const double x2 = x * x;
    double term = x;
    double sum = x;
    for (int n = 1; n <= 9; ++n) {
        term = -term * x2 / static_cast<double>((2 * n) * (2 * n + 1));
        sum += term;
    }
    return sum;
}

double Cosine(double radians) {
    return Sine(radians + kPi / 2);
}

// total * part / whole, for cutting a total into consecutive shares.
int64_t Share(int64_t total, int64_t part, int64_t whole) {
    return total * part / whole;
}

// ----- Names -----

const std::vector<std::string> kSyllables = {
    "KAR", "VEL", "MON", "TAR", "LIN", "BRO", "SAN", "DEL", "OR",  "MAR", "TON",  "RA",
    "VIK", "HOL", "PER", "AL",  "BER", "GEN", "CAS", "LO",  "NOR", "WEL", "STAD", "FIN",
    "RO",  "ZAN", "MIR", "ES",  "KEL", "DOR", "AN",  "TRE", "BUR", "HAM", "VIL",  "SEN"};
const std::vector<std::string> kAirportWords = {"INTL", "MUNI",   "FIELD",   "AIRPORT",
                                                "RGNL", "COUNTY", "AIRSTRIP"};
const std::vector<std::string> kRegions = {"NORTH AMERICA", "EUROPE",  "ASIA",        "AFRICA",
                                           "SOUTH AMERICA", "OCEANIA", "MIDDLE EAST", "CARIBBEAN"};
const std::string kIcaoLetters = "KCELSUYZRVWONFDGHMPTA";
const std::string kBase36 = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

std::string MadeUpName(std::mt19937& rng) {
    std::string name;
    for (int64_t i = Between(rng, 2, 3); i > 0; --i) name += Pick(rng, kSyllables);
    return name;
}

// The number in base 36, at least width digits.
std::string Base36(int64_t value, int width) {
    std::string text;
    for (; value > 0 || static_cast<int>(text.size()) < width; value /= 36)
        text.insert(text.begin(), kBase36[static_cast<size_t>(value % 36)]);
    return text;
}

// ----- What an area and an airport hold, before they become bytes -----

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
    NameListEntry Names{};
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

Area MakeArea(std::mt19937& rng, int64_t number) {
    Area area;
    area.Number = number;
    area.Region = kRegions[static_cast<size_t>(number) % kRegions.size()];
    area.IcaoLetter = kIcaoLetters[static_cast<size_t>(number) % kIcaoLetters.size()];
    for (int64_t i = Between(rng, 1, 3); i > 0; --i) {
        Country country{MadeUpName(rng), {}};
        if (Chance(rng, 40)) {
            for (int64_t s = Between(rng, 3, 8); s > 0; --s)
                country.States.push_back(MadeUpName(rng));
        }
        area.Countries.push_back(std::move(country));
    }
    for (int64_t i = Between(rng, 60, 160); i > 0; --i) area.Cities.push_back(MadeUpName(rng));
    area.Latitude = BetweenReal(rng, -55.0, 60.0);
    area.Longitude = BetweenReal(rng, -175.0, 160.0);
    area.Height = BetweenReal(rng, 4.0, 10.0);
    area.Width = BetweenReal(rng, 6.0, 15.0);
    return area;
}

// A point at a distance (metres) and heading (degrees true) from another.
void Move(double& latitude, double& longitude, double metres, double heading) {
    const double radians = heading * kPi / 180.0;
    const double north = metres * Cosine(radians) / kMetresPerDegree;
    const double east = metres * Sine(radians) / kMetresPerDegree;
    const double shrink = std::max(0.05, Cosine(latitude * kPi / 180.0));
    latitude += north;
    longitude += east / shrink;
}

AirportPlan MakeAirport(std::mt19937& rng, const Area& area, int64_t index, int codeWidth) {
    AirportPlan airport;
    const int64_t roll = Between(rng, 0, 99);
    airport.Kind = roll < 3 ? Size::kLarge : roll < 18 ? Size::kMedium : Size::kSmall;

    const Country& country = Pick(rng, area.Countries);
    const std::string& city = Pick(rng, area.Cities);
    airport.Names.Icao = std::string(1, area.IcaoLetter) + Base36(index, codeWidth);
    airport.Names.City = city;
    airport.Names.Country = country.Name;
    airport.Names.State = country.States.empty() ? "" : Pick(rng, country.States);
    airport.Names.Region = area.Region;
    const std::string place = Chance(rng, 70) ? city : MadeUpName(rng);
    airport.Names.AirportName = place + " " + Pick(rng, kAirportWords);

    airport.Latitude = area.Latitude + BetweenReal(rng, 0.0, area.Height);
    airport.Longitude = area.Longitude + BetweenReal(rng, 0.0, area.Width);
    airport.AltitudeMm = static_cast<int32_t>(Between(rng, 0, 2500000));

    int64_t runways = 1;
    switch (airport.Kind) {
        case Size::kSmall:
            runways = Chance(rng, 85) ? 1 : 2;
            airport.Comms = Chance(rng, 70) ? 0 : Between(rng, 1, 2);
            airport.Parkings = Chance(rng, 50) ? 0 : Between(rng, 1, 6);
            airport.TaxiPoints = Chance(rng, 60) ? 0 : Between(rng, 4, 24);
            airport.TaxiNames = airport.TaxiPoints > 0 ? Between(rng, 0, 2) : 0;
            airport.Aprons = airport.TaxiPoints > 0 ? Between(rng, 0, 2) : 0;
            break;
        case Size::kMedium:
            runways = Between(rng, 1, 2);
            airport.Comms = Between(rng, 2, 4);
            airport.Parkings = Between(rng, 6, 24);
            airport.TaxiPoints = Between(rng, 30, 150);
            airport.TaxiNames = Between(rng, 3, 12);
            airport.Aprons = Between(rng, 1, 5);
            break;
        case Size::kLarge:
            runways = Between(rng, 2, 3);
            airport.Comms = Between(rng, 4, 6);
            airport.Parkings = Between(rng, 24, 40);
            airport.TaxiPoints = Between(rng, 200, 600);
            airport.TaxiNames = Between(rng, 10, 40);
            airport.Aprons = Between(rng, 4, 12);
            break;
    }
    airport.TaxiPaths = airport.TaxiPoints + airport.TaxiPoints / 8;

    const uint8_t firstNumber = static_cast<uint8_t>(Between(rng, 1, 18));
    for (int64_t i = 0; i < runways; ++i) {
        RunwayPlan runway;
        // The second runway of a large airport runs parallel to the first: L and R.
        const bool parallel = airport.Kind == Size::kLarge && i == 1;
        runway.Number = parallel || i == 0
                            ? firstNumber
                            : static_cast<uint8_t>((firstNumber + Between(rng, 3, 14)) % 18 + 1);
        runway.Designator = parallel ? 1 : (airport.Kind == Size::kLarge && i == 0) ? 2 : 0;
        runway.Latitude = airport.Latitude;
        runway.Longitude = airport.Longitude;
        const double offset = BetweenReal(rng, 0.0, 1200.0);
        Move(runway.Latitude, runway.Longitude, offset, BetweenReal(rng, 0.0, 360.0));
        switch (airport.Kind) {
            case Size::kSmall:
                runway.Length = static_cast<float>(Between(rng, 400, 1800));
                break;
            case Size::kMedium:
                runway.Length = static_cast<float>(Between(rng, 1500, 2800));
                break;
            case Size::kLarge:
                runway.Length = static_cast<float>(Between(rng, 2500, 4200));
                break;
        }
        runway.Width = airport.Kind == Size::kSmall ? 18.0f : 45.0f;
        runway.Surface = airport.Kind == Size::kSmall && Chance(rng, 40) ? 1 : 4;
        airport.Runways.push_back(runway);
    }
    return airport;
}

// ----- Subrecords without a builder helper -----

BglRecord Raw(uint16_t id, const skl::ByteWriter& body) {
    return BglRecord{id, body.Bytes, {}, std::nullopt};
}

// Parking (0x1B): u16 count, then 20 bytes a spot: u32 name, number and type packed,
// f32 radius, f32 heading, i32 longitude, i32 latitude.
BglRecord Parkings(std::mt19937& rng, const AirportPlan& airport) {
    skl::ByteWriter body;
    body.U16(static_cast<uint16_t>(airport.Parkings));
    for (int64_t i = 0; i < airport.Parkings; ++i) {
        const auto type = static_cast<uint32_t>(Between(rng, 0, 11));
        const auto name = static_cast<uint32_t>(Between(rng, 1, 8));
        body.U32(type | (static_cast<uint32_t>(i + 1) << 8) | (name << 20));
        body.F32(static_cast<float>(Between(rng, 8, 40)));
        body.F32(static_cast<float>(Between(rng, 0, 359)));
        body.I32(PackLongitude(airport.Longitude + BetweenReal(rng, -0.01, 0.01)));
        body.I32(PackLatitude(airport.Latitude + BetweenReal(rng, -0.01, 0.01)));
    }
    return Raw(0x1B, body);
}

// Taxi points (0x1A): u16 count, then 12 bytes a point: u8 type, u8 orientation,
// 2 not used, i32 longitude, i32 latitude.
BglRecord TaxiPoints(std::mt19937& rng, const AirportPlan& airport) {
    skl::ByteWriter body;
    body.U16(static_cast<uint16_t>(airport.TaxiPoints));
    for (int64_t i = 0; i < airport.TaxiPoints; ++i) {
        body.U8(static_cast<uint8_t>(Between(rng, 1, 3)));
        body.U8(0);
        body.U16(0);
        body.I32(PackLongitude(airport.Longitude + BetweenReal(rng, -0.02, 0.02)));
        body.I32(PackLatitude(airport.Latitude + BetweenReal(rng, -0.02, 0.02)));
    }
    return Raw(0x1A, body);
}

// Taxi paths (0x1C): u16 count, then 20 bytes a path: u16 start point, u16 end
// point (12 bits) with a drawing flag above, u8 path type, u8 name index, u8
// surface, u8 flags, f32 width, f32 weight limit, 4 not used.
BglRecord TaxiPaths(std::mt19937& rng, const AirportPlan& airport) {
    skl::ByteWriter body;
    body.U16(static_cast<uint16_t>(airport.TaxiPaths));
    for (int64_t i = 0; i < airport.TaxiPaths; ++i) {
        body.U16(static_cast<uint16_t>(Between(rng, 0, airport.TaxiPoints - 1)));
        const auto end = static_cast<uint16_t>(Between(rng, 0, airport.TaxiPoints - 1));
        body.U16(static_cast<uint16_t>(end | Between(rng, 1, 3) << 12));
        // Mostly taxiways (1), some runways (4) and parking paths (5, 6).
        static constexpr uint8_t kTypes[] = {1, 1, 1, 4, 5, 6, 2};
        body.U8(kTypes[Between(rng, 0, 6)]);
        body.U8(static_cast<uint8_t>(Between(rng, 0, std::max<int64_t>(airport.TaxiNames, 1) - 1)));
        body.U8(static_cast<uint8_t>(Between(rng, 0, 6)));
        body.U8(0);
        body.F32(static_cast<float>(Between(rng, 10, 30)));
        body.F32(0.0f);
        body.U32(0);
    }
    return Raw(0x1C, body);
}

// Taxi names (0x1D): u16 count, then 8 bytes of text a name.
BglRecord TaxiNames(std::mt19937& rng, const AirportPlan& airport) {
    skl::ByteWriter body;
    body.U16(static_cast<uint16_t>(airport.TaxiNames));
    for (int64_t i = 0; i < airport.TaxiNames; ++i) {
        std::string name(1, static_cast<char>('A' + Between(rng, 0, 25)));
        if (Chance(rng, 50)) name += std::to_string(Between(rng, 1, 9));
        body.Text(name, 8);
    }
    return Raw(0x1D, body);
}

// Apron (0x37): u8 surface, u16 vertex count, then 8 bytes a vertex: i32
// longitude, i32 latitude.
BglRecord Apron(std::mt19937& rng, const AirportPlan& airport) {
    const int64_t vertices = Between(rng, 4, 24);
    skl::ByteWriter body;
    body.U8(static_cast<uint8_t>(Between(rng, 0, 6)));
    body.U16(static_cast<uint16_t>(vertices));
    for (int64_t i = 0; i < vertices; ++i) {
        body.I32(PackLongitude(airport.Longitude + BetweenReal(rng, -0.01, 0.01)));
        body.I32(PackLatitude(airport.Latitude + BetweenReal(rng, -0.01, 0.01)));
    }
    return Raw(0x37, body);
}

const std::vector<std::string> kCommSuffixes = {"ATIS",      "TOWER",     "GROUND", "APPROACH",
                                                "DEPARTURE", "CLEARANCE", "UNICOM"};

BglRecord AirportBytes(std::mt19937& rng, const AirportPlan& airport, Totals& totals) {
    std::vector<BglRecord> subrecords;
    subrecords.push_back(AirportName(airport.Names.AirportName));
    for (const RunwayPlan& runway : airport.Runways) {
        const uint8_t opposite = static_cast<uint8_t>((runway.Number + 17) % 36 + 1);
        const uint8_t oppositeDesignator = runway.Designator == 1   ? 2
                                           : runway.Designator == 2 ? 1
                                                                    : runway.Designator;
        subrecords.push_back(Runway({runway.Number, runway.Designator, runway.PrimaryIls},
                                    {opposite, oppositeDesignator, runway.SecondaryIls},
                                    runway.Latitude, runway.Longitude, airport.AltitudeMm,
                                    runway.Length, runway.Width,
                                    static_cast<float>(runway.Number * 10), runway.Surface));
    }
    for (int64_t i = 0; i < airport.Comms; ++i) {
        const auto type = static_cast<uint16_t>(Between(rng, 1, 10));
        const auto frequency = static_cast<int32_t>(118000000 + 25000 * Between(rng, 0, 719));
        subrecords.push_back(
            Comm(type, frequency, airport.Names.City + " " + Pick(rng, kCommSuffixes)));
    }
    if (airport.Parkings > 0) subrecords.push_back(Parkings(rng, airport));
    if (airport.TaxiPoints > 0) {
        subrecords.push_back(TaxiPoints(rng, airport));
        subrecords.push_back(TaxiPaths(rng, airport));
    }
    if (airport.TaxiNames > 0) subrecords.push_back(TaxiNames(rng, airport));
    for (int64_t i = 0; i < airport.Aprons; ++i) subrecords.push_back(Apron(rng, airport));

    totals.Runways += static_cast<int64_t>(airport.Runways.size());
    totals.Parkings += airport.Parkings;
    totals.TaxiPoints += airport.TaxiPoints;
    return Airport(3, airport.Names.Icao, airport.Latitude, airport.Longitude, airport.AltitudeMm,
                   std::move(subrecords));
}

// ----- Stations -----

std::string RunwayText(uint8_t number, uint8_t designator) {
    std::string text = std::to_string(number);
    if (designator == 1) text += 'L';
    if (designator == 2) text += 'R';
    if (designator == 3) text += 'C';
    return text;
}

// An ILS on a free runway end of an airport of the file, preferring the larger
// airports; its markers go with it. Without a free end it is a localizer on its own.
void AddIls(std::mt19937& rng, std::vector<AirportPlan>& airports, int64_t ilsNumber,
            std::vector<BglRecord>& stations, std::vector<BglRecord>& markers) {
    std::string ident(1, 'I');  // appended, not "I" + text: GCC 12 warns falsely on that
    ident += Base36(ilsNumber % 46656, 3);
    AirportPlan* airport = nullptr;
    RunwayPlan* runway = nullptr;
    bool secondary = false;
    for (int attempt = 0; attempt < 24 && runway == nullptr; ++attempt) {
        AirportPlan& candidate = airports[static_cast<size_t>(
            Between(rng, 0, static_cast<int64_t>(airports.size()) - 1))];
        if (candidate.Kind == Size::kSmall && attempt < 12) continue;
        for (RunwayPlan& end : candidate.Runways) {
            if (end.PrimaryIls.empty() || end.SecondaryIls.empty()) {
                airport = &candidate;
                runway = &end;
                secondary = !end.PrimaryIls.empty();
                break;
            }
        }
    }

    double latitude = airports.front().Latitude + BetweenReal(rng, -0.2, 0.2);
    double longitude = airports.front().Longitude + BetweenReal(rng, -0.2, 0.2);
    int32_t elevation = airports.front().AltitudeMm;
    uint8_t number = static_cast<uint8_t>(Between(rng, 1, 36));
    uint8_t designator = 0;
    if (runway != nullptr) {
        (secondary ? runway->SecondaryIls : runway->PrimaryIls) = ident;
        number = secondary ? static_cast<uint8_t>((runway->Number + 17) % 36 + 1) : runway->Number;
        designator = runway->Designator;
        if (secondary && designator != 0 && designator != 3) designator = 3 - designator;
        latitude = runway->Latitude;
        longitude = runway->Longitude;
        elevation = airport->AltitudeMm;
    }
    const double heading = number * 10.0;
    double locLatitude = latitude;
    double locLongitude = longitude;
    Move(locLatitude, locLongitude, 2000.0, heading);
    const int64_t channel = Between(rng, 0, 19);
    const auto frequency =
        static_cast<int32_t>(108100000 + 200000 * channel + 50000 * Between(rng, 0, 1));

    std::vector<BglRecord> parts = {Localizer(static_cast<float>(heading))};
    const bool glideslope = Chance(rng, 85);
    if (glideslope) parts.push_back(Glideslope(latitude, longitude, 3.0f));
    if (Chance(rng, 50)) parts.push_back(Dme(locLatitude, locLongitude));
    parts.push_back(NavName(std::string(glideslope ? "ILS" : "LOC") + " RWY " +
                            RunwayText(number, designator)));
    stations.push_back(
        Navaid(4, ident, locLatitude, locLongitude, elevation, frequency, std::move(parts)));

    // Markers lie on the approach, before the threshold.
    const double approach = heading + 180.0;
    const std::pair<uint8_t, std::pair<int, double>> kinds[] = {
        {2, {60, 7400.0}}, {1, {40, 1050.0}}, {0, {5, 300.0}}};
    for (const auto& [type, placement] : kinds) {
        if (!Chance(rng, placement.first)) continue;
        double markerLatitude = latitude;
        double markerLongitude = longitude;
        Move(markerLatitude, markerLongitude, placement.second, approach);
        markers.push_back(Marker(type, markerLatitude, markerLongitude, elevation));
    }
}

BglRecord Vor(std::mt19937& rng, const Area& area, int64_t vorNumber) {
    std::string ident;
    for (int64_t n = vorNumber % 17576, i = 0; i < 3; ++i, n /= 26)
        ident.insert(ident.begin(), static_cast<char>('A' + n % 26));
    const double latitude = area.Latitude + BetweenReal(rng, 0.0, area.Height);
    const double longitude = area.Longitude + BetweenReal(rng, 0.0, area.Width);
    const auto frequency = static_cast<int32_t>(108000000 + 50000 * Between(rng, 0, 199));
    std::vector<BglRecord> parts;
    if (Chance(rng, 70)) parts.push_back(Dme(latitude, longitude));
    parts.push_back(NavName(MadeUpName(rng)));
    const auto navType = static_cast<uint8_t>(Between(rng, 1, 3));
    const auto elevation = static_cast<int32_t>(Between(rng, 0, 2000000));
    return Navaid(navType, ident, latitude, longitude, elevation, frequency, std::move(parts));
}

// ----- Files -----

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

struct FilePlan {
    int64_t FirstAirport = 0;  // global index
    int64_t Airports = 0;
    int64_t FirstStation = 0;
    int64_t Stations = 0;
    int64_t FirstIls = 0;
    int64_t Ils = 0;
};

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
