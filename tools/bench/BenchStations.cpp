// The VOR and ILS stations of the benchmark installation and the markers of the
// ILS. For 24,000 airports there are about 3,500 stations, a third of them ILS, as
// in the stock scenery.
#include <string>
#include <utility>
#include <vector>

#include "BenchPlan.h"
#include "BenchRandom.h"
#include "support/BglBuilder.h"

namespace skl::bench {

using namespace skl::test;

namespace {

std::string RunwayText(uint8_t number, uint8_t designator) {
    std::string text = std::to_string(number);
    if (designator == 1) text += 'L';
    if (designator == 2) text += 'R';
    if (designator == 3) text += 'C';
    return text;
}

}  // namespace

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

}  // namespace skl::bench
