// Thins each airport's ILS list so that an ILS stands there once per runway
// end: of elements with the same ident (case ignored) and the same runway end
// (exact), the first stays. Only the count shrinks; the storage keeps its size.
#include "consolidation/Consolidation.h"
#include "platform/Win1252.h"

namespace skl {

void Check4ILSDoubles(RunState& state) {
    Tables& tables = state.Tables;
    for (int32_t a = 0; a <= tables.AirportTop; ++a) {
        AirportRecord& airport = tables.AirportTable.at(static_cast<size_t>(a));
        std::vector<IlsRecord>& list = airport.Ils;
        for (int32_t j = 0; j < airport.IlsCount; ++j) {
            const std::string ident = Upper1252(list.at(static_cast<size_t>(j)).Ident.Str());
            int32_t k = j + 1;
            while (k < airport.IlsCount) {
                const IlsRecord& other = list.at(static_cast<size_t>(k));
                if (Upper1252(other.Ident.Str()) == ident &&
                    other.RunwayIdent == list.at(static_cast<size_t>(j)).RunwayIdent) {
                    for (int32_t m = k; m + 1 < airport.IlsCount; ++m)
                        list.at(static_cast<size_t>(m)) = list.at(static_cast<size_t>(m + 1));
                    --airport.IlsCount;
                } else {
                    ++k;
                }
            }
        }
    }
}

}  // namespace skl
