// Taxi paths subrecord (id 0x1C), behind its 6-byte header: an i16 count, then
// 20 bytes each: i16 start point, u8 low 8 bits of the end point, u8 (low 4
// bits: its high 4 bits), u8 path type, u8 name index, 14 not used.
// Each path of a written type goes to Taxi.skl as a record of 31 bytes:
//    0 f32 StartLatitude  4 f32 StartLongitude  8 f32 EndLatitude
//   12 f32 EndLongitude  16 text8 TaxiName  24 u8 NameIndex  25 u8 PathType
//   26 text5 Icao
#include <algorithm>

#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "platform/Checked.h"
#include "model/RunLog.h"
#include "skl/ByteWriter.h"

namespace skl {

namespace {

constexpr size_t kTaxiFileIndex = 0;  // the first file of the set
constexpr size_t kTaxiRecordSize = 31;
constexpr uint8_t kWrittenPathTypes[] = {1, 4, 5, 6, 33, 36, 97, 100, 101};

void PutTaxiRecord(ByteWriter& out, const TaxiPath& path) {
    out.Bytes.clear();
    out.F32(path.StartLatitude);
    out.F32(path.StartLongitude);
    out.F32(path.EndLatitude);
    out.F32(path.EndLongitude);
    out.Raw(std::string_view(path.TaxiName.Bytes.data(), path.TaxiName.Bytes.size()));
    out.U8(path.NameIndex);
    out.U8(path.PathType);
    out.Raw(std::string_view(path.Icao.Bytes.data(), path.Icao.Bytes.size()));
    if (out.Size() != kTaxiRecordSize) throw std::logic_error("taxi record size");
}

}  // namespace

void ReadTaxiPath04(RunState& state, int32_t /*length*/) {
    const Reading& reading = state.Reading;
    platform::ByteReader& bgl = state.Reading.Bgl;
    const std::vector<TaxiPoint>& points = state.Tables.TaxiPoints;
    // Every step goes on with the next after an error, with one line each.
    auto statement = [&](auto&& body) {
        ReaderStatement(state, "ReadTaxiPath04", body);
    };
    int16_t count = 0;
    std::vector<TaxiPath> paths;
    statement([&] { count = bgl.I16(); });
    statement([&] {
        if (count < 0) throw RunError(kSubscriptOutOfRange);
        paths.assign(static_cast<size_t>(count) + 1, TaxiPath());
    });
    for (int32_t i = 1; i <= count && static_cast<size_t>(i) < paths.size(); ++i) {
        TaxiPath& path = paths[static_cast<size_t>(i)];
        int16_t start = 0;
        int32_t end = 0;
        statement([&] {
            start = bgl.I16();
            uint8_t endLow = bgl.U8();
            uint8_t endHigh = bgl.U8();
            path.PathType = bgl.U8();
            path.NameIndex = bgl.U8();
            bgl.Skip(14);
            end = (endHigh & 0x0F) * 256 + endLow;
        });
        statement([&] { path.StartLatitude = At(points, start).Latitude; });
        statement([&] { path.StartLongitude = At(points, start).Longitude; });
        statement([&] { path.EndLatitude = At(points, end).Latitude; });
        statement([&] { path.EndLongitude = At(points, end).Longitude; });
        statement([&] { path.TaxiName = ""; });
        statement([&] { path.Icao = reading.CurrentIcao.Str(); });
    }
    TaxiNames names = ReadTaxiName04(state);
    if (names.Read) {
        for (int32_t i = 1; i <= count && static_cast<size_t>(i) < paths.size(); ++i) {
            TaxiPath& path = paths[static_cast<size_t>(i)];
            if (path.NameIndex < names.Count)
                path.TaxiName = StripNulls(state.Tables.TaxiNames[path.NameIndex]);
        }
    }
    if (!reading.AirportIsNew) return;
    ByteWriter record;
    for (int32_t i = 1; i <= count && static_cast<size_t>(i) < paths.size(); ++i) {
        const TaxiPath& path = paths[static_cast<size_t>(i)];
        if (std::find(std::begin(kWrittenPathTypes), std::end(kWrittenPathTypes), path.PathType) ==
            std::end(kWrittenPathTypes))
            continue;
        statement([&] {
            PutTaxiRecord(record, path);
            state.Files.Table.Write(state.Files.TaxiFile, record.Bytes);
            ++state.Files.RecordsWritten[kTaxiFileIndex];
        });
    }
}

}  // namespace skl
