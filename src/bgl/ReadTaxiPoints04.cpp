// Taxi points subrecord (id 0x1A), behind its 6-byte header: an i16 count,
// then 12 bytes each: 4 not used, i32 longitude, i32 latitude (packed). The
// points stay until the next such subrecord; the taxi paths resolve against them.
#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "platform/Checked.h"
#include "model/RunLog.h"

namespace skl {

void ReadTaxiPoints04(RunState& state, int32_t /*length*/) {
    platform::ByteReader& bgl = state.Reading.Bgl;
    std::vector<TaxiPoint>& points = state.Tables.TaxiPoints;
    ReaderStatement(state, "ReadTaxiPoints04", [&] {
        int16_t count = bgl.I16();
        if (count < 0) throw RunError(kSubscriptOutOfRange);
        points.assign(static_cast<size_t>(count) + 1, TaxiPoint());
        for (int32_t i = 0; i < count; ++i) {
            bgl.Skip(4);
            int32_t longitude = bgl.I32();
            int32_t latitude = bgl.I32();
            points[static_cast<size_t>(i)].Latitude = static_cast<float>(DecodeLatitude(latitude));
            points[static_cast<size_t>(i)].Longitude = static_cast<float>(DecodeLongitude(longitude));
        }
    });
}

}  // namespace skl
