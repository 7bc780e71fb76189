// Areas and airports of the benchmark installation. Proportions follow the stock
// scenery: most airports are small strips with one runway and little else, a few are
// large with several runways, many parking spots and taxiways.
#include <string>
#include <vector>

#include "BenchPlan.h"
#include "BenchRandom.h"

namespace skl::bench {

namespace {

const std::vector<std::string> kAirportWords = {"INTL", "MUNI",   "FIELD",   "AIRPORT",
                                                "RGNL", "COUNTY", "AIRSTRIP"};
const std::vector<std::string> kRegions = {"NORTH AMERICA", "EUROPE",  "ASIA",        "AFRICA",
                                           "SOUTH AMERICA", "OCEANIA", "MIDDLE EAST", "CARIBBEAN"};
const std::string kIcaoLetters = "KCELSUYZRVWONFDGHMPTA";

}  // namespace

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

}  // namespace skl::bench
