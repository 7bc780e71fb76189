// The airport records of the benchmark installation, with their subrecords: name,
// runways, comms, parking spots, taxi points, paths and names, and aprons.
#include <algorithm>
#include <string>
#include <vector>

#include "BenchPlan.h"
#include "BenchRandom.h"
#include "skl/ByteWriter.h"
#include "support/BglBuilder.h"

namespace skl::bench {

using namespace skl::test;

namespace {

const std::vector<std::string> kCommSuffixes = {"ATIS",      "TOWER",     "GROUND", "APPROACH",
                                                "DEPARTURE", "CLEARANCE", "UNICOM"};

// The packed word puts the type in the low byte, the spot's number from bit 8 and the
// name from bit 20: not the order the readers take it in (name, type, number). It is
// kept as it is so that the installation, and the database files a run makes of it,
// stay the same from one version of this program to the next.
BglRecord ParkingOf(std::mt19937& rng, const AirportPlan& airport) {
    std::vector<ParkingSpot> spots;
    for (int64_t i = 0; i < airport.Parkings; ++i) {
        const auto type = static_cast<uint32_t>(Between(rng, 0, 11));
        const auto name = static_cast<uint32_t>(Between(rng, 1, 8));
        ParkingSpot spot;
        spot.Word = type | (static_cast<uint32_t>(i + 1) << 8) | (name << 20);
        spot.Radius = static_cast<float>(Between(rng, 8, 40));
        spot.Heading = static_cast<float>(Between(rng, 0, 359));
        spot.Longitude = airport.Longitude + BetweenReal(rng, -0.01, 0.01);
        spot.Latitude = airport.Latitude + BetweenReal(rng, -0.01, 0.01);
        spots.push_back(std::move(spot));
    }
    return Parking(false, spots);
}

// Points of kind 1 to 3 (the readers pass over the kind).
BglRecord TaxiPointsOf(std::mt19937& rng, const AirportPlan& airport) {
    std::vector<Position> points;
    std::vector<uint8_t> kinds;
    for (int64_t i = 0; i < airport.TaxiPoints; ++i) {
        kinds.push_back(static_cast<uint8_t>(Between(rng, 1, 3)));
        const double longitude = airport.Longitude + BetweenReal(rng, -0.02, 0.02);
        const double latitude = airport.Latitude + BetweenReal(rng, -0.02, 0.02);
        points.push_back({latitude, longitude});
    }
    return TaxiPoints(points, kinds);
}

// Paths between random points, with a drawing flag above the end point. Behind the
// name index: u8 surface, u8 flags, f32 width, f32 weight limit, 4 not used.
BglRecord TaxiPathsOf(std::mt19937& rng, const AirportPlan& airport) {
    // Mostly taxiways (1), some runways (4) and parking paths (5, 6).
    static constexpr uint8_t kTypes[] = {1, 1, 1, 4, 5, 6, 2};
    std::vector<TaxiPathEntry> paths;
    for (int64_t i = 0; i < airport.TaxiPaths; ++i) {
        TaxiPathEntry path;
        path.Start = static_cast<int16_t>(Between(rng, 0, airport.TaxiPoints - 1));
        path.End = static_cast<uint16_t>(Between(rng, 0, airport.TaxiPoints - 1));
        path.EndHighNibble = static_cast<uint8_t>(Between(rng, 1, 3));
        path.Type = kTypes[Between(rng, 0, 6)];
        path.NameIndex =
            static_cast<uint8_t>(Between(rng, 0, std::max<int64_t>(airport.TaxiNames, 1) - 1));
        skl::ByteWriter rest;
        rest.U8(static_cast<uint8_t>(Between(rng, 0, 6)));
        rest.U8(0);
        rest.F32(static_cast<float>(Between(rng, 10, 30)));
        rest.F32(0.0f);
        rest.U32(0);
        path.Rest = std::move(rest.Bytes);
        paths.push_back(std::move(path));
    }
    return TaxiPaths(paths);
}

// A letter, half of them with a digit behind.
BglRecord TaxiNamesOf(std::mt19937& rng, const AirportPlan& airport) {
    std::vector<std::string> names;
    for (int64_t i = 0; i < airport.TaxiNames; ++i) {
        std::string name(1, static_cast<char>('A' + Between(rng, 0, 25)));
        if (Chance(rng, 50)) name += std::to_string(Between(rng, 1, 9));
        names.push_back(std::move(name));
    }
    return TaxiNames(names);
}

// 4 to 24 vertices around the reference point, on a surface of 0 to 6.
BglRecord ApronOf(std::mt19937& rng, const AirportPlan& airport) {
    const int64_t count = Between(rng, 4, 24);
    const auto surface = static_cast<uint8_t>(Between(rng, 0, 6));
    std::vector<Position> vertices;
    for (int64_t i = 0; i < count; ++i) {
        const double longitude = airport.Longitude + BetweenReal(rng, -0.01, 0.01);
        const double latitude = airport.Latitude + BetweenReal(rng, -0.01, 0.01);
        vertices.push_back({latitude, longitude});
    }
    return Apron(vertices, {}, surface);
}

}  // namespace

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
    if (airport.Parkings > 0) subrecords.push_back(ParkingOf(rng, airport));
    if (airport.TaxiPoints > 0) {
        subrecords.push_back(TaxiPointsOf(rng, airport));
        subrecords.push_back(TaxiPathsOf(rng, airport));
    }
    if (airport.TaxiNames > 0) subrecords.push_back(TaxiNamesOf(rng, airport));
    for (int64_t i = 0; i < airport.Aprons; ++i) subrecords.push_back(ApronOf(rng, airport));

    totals.Runways += static_cast<int64_t>(airport.Runways.size());
    totals.Parkings += airport.Parkings;
    totals.TaxiPoints += airport.TaxiPoints;
    return Airport(3, airport.Names.Icao, airport.Latitude, airport.Longitude, airport.AltitudeMm,
                   std::move(subrecords));
}

}  // namespace skl::bench
