// State.skl: the last index of the distinct pairs of state and country, then
// the pairs whose state is not "0" (the header counts those too).
#include <unordered_set>

#include "consolidation/Consolidation.h"
#include "platform/RunError.h"
#include "platform/Win1252.h"
#include "skl/TableFiles.h"

namespace skl {

void FillStateTable(RunState& state, FrontEnd& frontEnd) {
    const Tables& tables = state.Tables;
    if (tables.AirportTop < 0) throw RunError(kSubscriptOutOfRange);
    std::vector<std::pair<std::string, std::string>> pairs;
    std::unordered_set<std::string> seen;
    frontEnd.SetStatusText("   ...filling state table!   ");
    for (int32_t i = 0; i <= tables.AirportTop; ++i) {
        if (i > 0 && i % 10 == 0) frontEnd.SetProgressPercent(100.0 / (double(tables.AirportTop) / i));
        const AirportRecord& airport = tables.AirportTable.at(static_cast<size_t>(i));
        std::string stateKey = CodeKey(airport.State.Str());
        std::string key = std::to_string(stateKey.size()) + ':' + stateKey +
                          CodeKey(airport.Country.Str());
        if (seen.insert(key).second) pairs.emplace_back(airport.State.Str(), airport.Country.Str());
    }
    ByteWriter out;
    out.I32(static_cast<int32_t>(pairs.size()) - 1);
    int64_t written = 0;
    for (const auto& [stateName, country] : pairs) {
        if (TrimBlanks(stateName) == "0") continue;
        PutState(out, stateName, country);
        ++written;
    }
    state.Files.Table.Write(state.Files.StateFile, out.Bytes);
    state.Files.RecordsWritten[6] = written;
}

}  // namespace skl
