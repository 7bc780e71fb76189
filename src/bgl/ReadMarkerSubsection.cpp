// Marker record (id 24), 28 bytes; the size field plays no part:
//    0 i16 id (24)     2 i32 size    6 u8 not used    7 u8 type (0 IM, 1 MM, else OM)
//    8 i32 longitude  12 i32 latitude (packed)        16 i32 elevation, mm
//   20 8   not used
// Each goes at once to Marker.skl while AirportIsNew of the last airport read is
// true (a blind airport counts too), as a
// record of 14 bytes: 0 char[2] kind, 2 f32 Latitude, 6 f32 Longitude,
// 10 i32 AltitudeFeet.
#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "model/RunLog.h"
#include "skl/ByteWriter.h"

namespace skl {

namespace {
constexpr size_t kMarkerFileIndex = 2;  // the third file of the set
constexpr size_t kMarkerRecordSize = 14;
}  // namespace

void ReadMarkerSubsection(RunState& state, int32_t position, int32_t recordCount, int32_t) {
    platform::ByteReader& bgl = state.Reading.Bgl;
    ReaderStatement(state, "ReadMarkerSubsection", [&] {
        bgl.Seek(position);
        for (int32_t record = 0; record < recordCount; ++record) {
            int16_t id = bgl.I16();
            bgl.Skip(5);
            uint8_t type = bgl.U8();
            int32_t longitude = bgl.I32();
            int32_t latitude = bgl.I32();
            int32_t elevation = bgl.I32();
            bgl.Skip(8);
            if (id != 24) return;
            ByteWriter out;
            out.Raw(type == 0 ? "IM" : type == 1 ? "MM" : "OM");
            out.F32(static_cast<float>(DecodeLatitude(latitude)));
            out.F32(static_cast<float>(DecodeLongitude(longitude)));
            out.I32(AltitudeFeetRounded(elevation));
            if (out.Size() != kMarkerRecordSize) throw std::logic_error("marker record size");
            if (state.Reading.AirportIsNew) {
                state.Files.Table.Write(state.Files.MarkerFile, out.Bytes);
                ++state.Files.RecordsWritten[kMarkerFileIndex];
            }
        }
    });
}

}  // namespace skl
