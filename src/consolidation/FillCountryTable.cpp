// Country.skl: the last index, then one record per country in the order and
// form of its first appearance; case and surrounding blanks make no new one.
#include <unordered_set>

#include "consolidation/Consolidation.h"
#include "platform/RunError.h"
#include "skl/TableFiles.h"

namespace skl {

void FillCountryTable(RunState& state, FrontEnd& frontEnd) {
    const Tables& tables = state.Tables;
    // The table has room for every airport; an empty airport table has none.
    if (tables.AirportTop < 0) throw RunError(kSubscriptOutOfRange);
    std::vector<std::string> countries;
    std::unordered_set<std::string> seen;
    frontEnd.SetStatusText("   ...filling country table!  ");
    for (int32_t i = 0; i <= tables.AirportTop; ++i) {
        if (i > 0 && i % 10 == 0) frontEnd.SetProgressPercent(100.0 / (double(tables.AirportTop) / i));
        const std::string country = tables.AirportTable.at(static_cast<size_t>(i)).Country.Str();
        if (seen.insert(CodeKey(country)).second) countries.push_back(country);
    }
    frontEnd.SetStatusText("   ...writing results! ");
    ByteWriter out;
    out.I32(static_cast<int32_t>(countries.size()) - 1);
    for (const std::string& country : countries) PutCountry(out, country);
    state.Files.Table.Write(state.Files.CountryFile, out.Bytes);
    state.Files.RecordsWritten[7] = static_cast<int64_t>(countries.size());
}

}  // namespace skl
