// City.skl: the last airport index, then every distinct key of City, State and
// Country (40 characters each) in ascending order, case counting. Goes on with
// the next statement after any error, without a log line.
#include "consolidation/Consolidation.h"
#include "model/RunLog.h"
#include "skl/TableFiles.h"

namespace skl {

namespace {

void Quietly(const std::function<void()>& statement) {
    try {
        statement();
    } catch (const RunAborted&) {
        throw;
    } catch (...) {
    }
}

}  // namespace

void FillCityTable(RunState& state, FrontEnd& frontEnd) {
    Tables& tables = state.Tables;
    Files& files = state.Files;
    std::vector<std::string>& keys = tables.CityKeys;
    std::string remembered;
    Quietly([&] { frontEnd.SetStatusText("   ...writing city table "); });
    keys.clear();
    for (int32_t i = 0; i <= tables.AirportTop; ++i) {
        Quietly([&] {
            if (i > 0 && i % 10 == 0)
                frontEnd.SetProgressPercent(100.0 / (double(tables.AirportTop) / i));
            const AirportRecord& airport = tables.AirportTable.at(static_cast<size_t>(i));
            keys.resize(static_cast<size_t>(i) + 1);
            keys[static_cast<size_t>(i)] =
                airport.City.Str() + airport.State.Str() + airport.Country.Str();
        });
    }
    Quietly([&] { SortVariantArray(keys); });
    Quietly([&] {
        ByteWriter out;
        out.I32(tables.AirportTop);
        files.Table.Write(files.CityFile, out.Bytes);
    });
    auto writeKey = [&](const std::string& key) {
        ByteWriter out;
        PutCity(out, key);
        files.Table.Write(files.CityFile, out.Bytes);
        ++files.RecordsWritten[8];
    };
    Quietly([&] {
        remembered = keys.at(0);
        writeKey(remembered);
    });
    for (int32_t i = 1; i <= tables.AirportTop; ++i) {
        Quietly([&] {
            const std::string& key = keys.at(static_cast<size_t>(i));
            if (key != remembered) {
                writeKey(key);
                remembered = key;
            }
        });
    }
    Quietly([&] { frontEnd.ShowProgress(false); });
}

}  // namespace skl
