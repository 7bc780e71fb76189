// Parking subrecord (id 0x1B in the FS2004 form, 0x3D in the FSX form), behind
// its 6-byte header: an i16 count, then the spots, each followed by its airline
// codes (4 bytes each):
//   FS2004: 0 u32 packed word, 4 f32 radius, 8 f32 heading,
//           12 i32 longitude, 16 i32 latitude                          (20 bytes)
//   FSX:    0 u32 packed word, 4 f32 radius, 8 f32 heading, 12 16 not used,
//           28 i32 longitude, 32 i32 latitude                          (36 bytes)
// Packed word: bits 0-5 name, 8-11 type, 12-23 number, 24-31 airline codes.
#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "platform/Checked.h"
#include "model/RunLog.h"

namespace skl {

ParkingBits GetParkingBits(uint32_t word) {
    ParkingBits bits;
    bits.ParkingName = static_cast<uint8_t>(word & 0x3F);
    bits.ParkingType = static_cast<uint8_t>((word >> 8) & 0x0F);
    bits.ParkingNumber = static_cast<int32_t>((word >> 12) & 0x0FFF);
    bits.AirlineCodeCount = static_cast<uint8_t>(word >> 24);
    return bits;
}

void ReadParking04(RunState& state, int32_t /*length*/) {
    const Reading& reading = state.Reading;
    platform::ByteReader& bgl = state.Reading.Bgl;
    const bool fsx = reading.AirportRecordId == 60;
    ReaderStatement(state, "ReadParking04", [&] {
        int16_t count = bgl.I16();
        for (int32_t spot = 0; spot < count; ++spot) {
            ParkingBits bits = GetParkingBits(bgl.U32());
            bgl.Skip(4);
            float heading = bgl.F32();
            if (fsx) bgl.Skip(16);
            int32_t longitude = bgl.I32();
            int32_t latitude = bgl.I32();
            bgl.Skip(4 * int64_t{bits.AirlineCodeCount});
            if (!reading.AirportIsNew) continue;

            AirportRecord& airport = At(state.Tables.AirportTable, state.Tables.AirportTop);
            int16_t index = To16(airport.ParkingCount);
            airport.ParkingCount = index + 1;
            airport.Parkings.resize(static_cast<size_t>(index) + 1);
            ParkingRecord& parking = airport.Parkings.back();
            parking.Icao = reading.CurrentIcao.Str();
            parking.Latitude = static_cast<float>(DecodeLatitude(latitude));
            parking.Longitude = static_cast<float>(DecodeLongitude(longitude));
            parking.ParkingNumber = bits.ParkingNumber;
            parking.ParkingType = bits.ParkingType;
            parking.ParkingName = bits.ParkingName;
            parking.Heading = heading;
        }
    });
}

}  // namespace skl
