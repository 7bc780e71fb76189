// Apron subrecord (id 0x37), behind its 6-byte header:
//    0 u8  not used       1 i16 number of vertices n
//    3 8 * n vertices: i32 longitude, i32 latitude, packed
//    then the rest of the subrecord, passed over.
// Every vertex goes at once to Poly.skl as a record of 16 bytes:
//    0 char "M" for the first vertex of an apron, "L" for the others
//    1 i32 PolygonNumber   5 f32 Latitude   9 f32 Longitude   13 i16 0   15 char "P"
#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "platform/Checked.h"
#include "model/RunLog.h"
#include "skl/ByteWriter.h"

namespace skl {

namespace {
constexpr size_t kPolyFileIndex = 1;  // the second file of the set
constexpr size_t kPolyRecordSize = 16;
}  // namespace

void ReadApron104(RunState& state, int32_t length) {
    platform::ByteReader& bgl = state.Reading.Bgl;
    Tables& tables = state.Tables;
    ReaderStatement(state, "ReadApron104", [&] {
        bgl.Skip(1);
        int16_t count = bgl.I16();
        tables.PolygonCounter = To32(int64_t{tables.PolygonCounter} + 1);
        char kind = 'M';
        ByteWriter record;
        for (int32_t i = 0; i < count; ++i) {
            int32_t longitude = bgl.I32();
            int32_t latitude = bgl.I32();
            record.Bytes.clear();
            record.U8(static_cast<uint8_t>(kind));
            record.I32(tables.PolygonCounter);
            record.F32(static_cast<float>(DecodeLatitude(latitude)));
            record.F32(static_cast<float>(DecodeLongitude(longitude)));
            record.I16(0);
            record.U8('P');
            if (record.Size() != kPolyRecordSize) throw std::logic_error("poly record size");
            kind = 'L';
            if (state.Reading.AirportIsNew) {
                state.Files.Table.Write(state.Files.PolyFile, record.Bytes);
                ++state.Files.RecordsWritten[kPolyFileIndex];
            }
        }
        // The product and the rest are 16-bit values.
        int16_t rest = To16(int64_t{length} - 3 - To16(8 * int32_t{count}));
        if (rest > 0) bgl.Skip(rest);
    });
}

}  // namespace skl
