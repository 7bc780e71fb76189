// Keeps State only for airports in the countries of Queensland, Ontario and
// Maine, as the scenery at hand names those countries; every other airport's
// State becomes "0".
#include <array>

#include "consolidation/Consolidation.h"

namespace skl {

void RemoveIllegalState(RunState& state) {
    Tables& tables = state.Tables;
    // Lower case: a slot nothing has taught matches no upper-cased country.
    std::array<std::string, 3> countries{"qzkjm", "qzkjm", "qzkjm"};
    for (int32_t i = 0; i <= tables.AirportTop; ++i) {
        const AirportRecord& airport = tables.AirportTable.at(static_cast<size_t>(i));
        std::string stateName = CodeKey(airport.State.Str());
        std::string country = CodeKey(airport.Country.Str());
        if (stateName == "QUEENSLAND")
            countries[0] = country;
        else if (stateName == "ONTARIO")
            countries[1] = country;
        else if (stateName == "MAINE")
            countries[2] = country;
    }
    for (int32_t i = 0; i <= tables.AirportTop; ++i) {
        AirportRecord& airport = tables.AirportTable.at(static_cast<size_t>(i));
        std::string country = CodeKey(airport.Country.Str());
        if (country != countries[0] && country != countries[1] && country != countries[2])
            airport.State = "0";
    }
}

}  // namespace skl
