// Binds each ILS to every runway end that names its ident within 20 nautical
// miles of the runway's centre, copies it into that airport, and writes the
// add-on ILS that stay unbound to Ils.skl and to the log. Runway ends are
// found through an index from ident to every end with that ident, in table
// order, so the bindings come out as the plain double loop would make them.
#include <cstdio>
#include <unordered_map>

#include "consolidation/Consolidation.h"
#include "platform/Checked.h"
#include "platform/Win1252.h"
#include "model/RunLog.h"
#include "skl/AirportFile.h"

namespace skl {

namespace {

constexpr size_t kIlsFileIndex = 3;  // the fourth file of the set

struct RunwayEndEntry {
    int32_t AirportIndex = 0;
    std::string Designator;
    float Latitude = 0;
    float Longitude = 0;
};

}  // namespace

std::string FloatText(float value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.7G", static_cast<double>(value));
    return text;
}

void AssignIls2Airport(RunState& state, FrontEnd& frontEnd) {
    Tables& tables = state.Tables;
    frontEnd.SetStatusText("   ...assigning ILS to runways and airports!   ");

    std::vector<RunwayEndEntry> ends;
    std::unordered_map<std::string, std::vector<size_t>> endsByIdent;
    auto addEnd = [&](int32_t airport, const RunwayRecord& runway, const FixedText<5>& ident,
                      const FixedText<5>& designator) {
        std::string key = CodeKey(ident.Str());
        if (key.size() < 2) return;
        endsByIdent[key].push_back(ends.size());
        ends.push_back({airport, designator.Str(), runway.Latitude, runway.Longitude});
    };
    for (int32_t a = 0; a <= tables.AirportTop; ++a) {
        const AirportRecord& airport = At(tables.AirportTable, a);
        for (int32_t r = 0; r < airport.RunwayCount; ++r) {
            const RunwayRecord& runway = At(airport.Runways, r);
            addEnd(a, runway, runway.PrimaryIlsIdent, runway.PrimaryDesignator);
            addEnd(a, runway, runway.SecondaryIlsIdent, runway.SecondaryDesignator);
        }
    }

    frontEnd.ShowProgress(true);
    const int32_t count = static_cast<int32_t>(tables.IlsTable.size());
    for (int32_t i = 0; i < count; ++i) {
        if (i > 0 && i % 10 == 0) frontEnd.SetProgressPercent(100.0 / (double(count) / i));
        IlsRecord& ils = tables.IlsTable[static_cast<size_t>(i)];
        auto found = endsByIdent.find(CodeKey(ils.Ident.Str()));
        if (found == endsByIdent.end()) continue;
        for (size_t k : found->second) {
            const RunwayEndEntry& end = ends[k];
            float distance = static_cast<float>(
                RhumbDistanceNm(ils.Latitude, ils.Longitude, end.Latitude, end.Longitude));
            if (!(distance < 20.0f)) continue;
            AirportRecord& airport = At(tables.AirportTable, end.AirportIndex);
            int32_t n = airport.IlsCount;
            airport.IlsCount = To32(int64_t{n} + 1);
            airport.Ils.resize(static_cast<size_t>(To16(n)) + 1);
            // The copy keeps the AirportIndex of before this binding.
            airport.Ils[static_cast<size_t>(n)] = ils;
            airport.Ils[static_cast<size_t>(n)].RunwayIdent = end.Designator;
            ils.AirportIndex = end.AirportIndex;
        }
    }

    ByteWriter out;
    for (const IlsRecord& ils : tables.IlsTable) {
        if (ils.AirportIndex != -1) continue;
        out.Bytes.clear();
        PutIls(out, ils);
        state.Files.Table.Write(state.Files.IlsFile, out.Bytes);
        ++state.Files.RecordsWritten[kIlsFileIndex];
    }

    const std::string banner(37, '=');
    LogLine(state, banner);
    LogLine(state, "Undefined ILS'es found: ");
    LogLine(state, "");
    for (const IlsRecord& ils : tables.IlsTable) {
        if (ils.AirportIndex != -1) continue;
        LogLine(state, ils.BglFileName.Str() + "  -  " + ils.Ident.Str() + "  -  " + ils.Name.Str() +
                           "  -  " + FloatText(ils.Latitude) + "  -  " + FloatText(ils.Longitude));
    }
    LogLine(state, banner);
    LogLine(state, "");
}

}  // namespace skl
