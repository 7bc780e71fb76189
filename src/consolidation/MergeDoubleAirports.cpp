// Folds the records of every code met twice within one area into one new
// record at the end of the table, and withdraws the folded records ("#" in
// front of their code). Text fields, position and tower position come from the
// last record that has them, the altitude is the highest (not below -500), the
// lists are joined in table order.
#include <unordered_map>

#include "consolidation/Consolidation.h"
#include "platform/Checked.h"
#include "platform/Win1252.h"

namespace skl {

namespace {

template <typename T>
void Append(std::vector<T>& to, int32_t& toCount, const std::vector<T>& from, int32_t fromCount) {
    int32_t before = toCount;
    toCount = To32(int64_t{toCount} + fromCount);
    if (fromCount <= 0) return;
    to.resize(static_cast<size_t>(To16(toCount - 1)) + 1);
    for (int32_t i = 0; i < fromCount; ++i)
        to.at(static_cast<size_t>(before + i)) = from.at(static_cast<size_t>(i));
}

template <std::size_t N>
void TakeText(FixedText<N>& to, const FixedText<N>& from) {
    if (!TrimBlanks(from.Str()).empty()) to = from;
}

}  // namespace

void MergeDoubleAirports(RunState& state) {
    Tables& tables = state.Tables;
    const int32_t top = tables.AirportTop;
    // Every record of a listed code, in table order; records made here are
    // never scanned.
    std::unordered_map<std::string, std::vector<int32_t>> recordsByCode;
    for (int32_t m = 1; m <= tables.DoubleAddonTop(); ++m)
        recordsByCode.emplace(CodeKey(tables.DoubleAddonIcaos[static_cast<size_t>(m)]),
                              std::vector<int32_t>());
    for (int32_t i = 0; i <= top; ++i) {
        auto found = recordsByCode.find(CodeKey(tables.AirportTable.at(static_cast<size_t>(i)).Icao.Str()));
        if (found != recordsByCode.end()) found->second.push_back(i);
    }

    int32_t n = top;
    for (int32_t m = 1; m <= tables.DoubleAddonTop(); ++m) {
        const std::string& code = tables.DoubleAddonIcaos[static_cast<size_t>(m)];
        n = To32(int64_t{n} + 1);
        tables.AirportTable.resize(static_cast<size_t>(n) + 1);
        AirportRecord& r = tables.AirportTable[static_cast<size_t>(n)];
        r = AirportRecord();
        r.AirportNumber = n;
        r.Icao = code;
        r.AltitudeFeet = -500;
        for (int32_t index : recordsByCode[CodeKey(code)]) {
            AirportRecord& s = tables.AirportTable.at(static_cast<size_t>(index));
            TakeText(r.AirportName, s.AirportName);
            TakeText(r.City, s.City);
            TakeText(r.State, s.State);
            TakeText(r.Country, s.Country);
            if (s.Latitude != 0 || s.Longitude != 0) {
                r.Latitude = s.Latitude;
                r.Longitude = s.Longitude;
            }
            if (s.TowerLatitude != 0 || s.TowerLongitude != 0) {
                r.TowerLatitude = s.TowerLatitude;
                r.TowerLongitude = s.TowerLongitude;
            }
            if (s.AltitudeFeet > r.AltitudeFeet) r.AltitudeFeet = s.AltitudeFeet;
            TakeText(r.BglFileName, s.BglFileName);
            if (s.AtisFrequency != 0) r.AtisFrequency = s.AtisFrequency;
            Append(r.Runways, r.RunwayCount, s.Runways, s.RunwayCount);
            Append(r.Ils, r.IlsCount, s.Ils, s.IlsCount);
            Append(r.Parkings, r.ParkingCount, s.Parkings, s.ParkingCount);
            Append(r.Comms, r.CommCount, s.Comms, s.CommCount);
            s.Icao = "#" + s.Icao.Str().substr(0, 4);
        }
    }
    tables.AirportTop = n;
}

}  // namespace skl
