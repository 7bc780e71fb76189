// VOR/ILS station record (id 19), offsets from its first byte:
//    0 i16 id (19)             2 i32 size with subrecords   6 u8 NavType (4: ILS)
//    7 u8  not used            8 i32 longitude, packed     12 i32 latitude, packed
//   16 i32 elevation, mm      20 i32 frequency, Hz        24 f32 range
//   28 f32 magnetic variation 32 i32 ident, packed (shifted) 36 4 not used
// Subrecords, behind their 6-byte header:
//   20 localizer   (10 bytes): 2 not used, f32 heading, 4 not used
//   21 glideslope  (22 bytes): 2 not used, i32 longitude, i32 latitude, 8 not
//                              used, f32 pitch
//   22 DME         (18 bytes): passed over
//   25 name        (size - 6 bytes of text)
//   19 the next station: the walk steps back over its header and ends.
// Only ILS stations are kept; an error logs one line and leaves the reader.
#include <cmath>

#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "platform/Checked.h"
#include "model/RunLog.h"

namespace skl {

namespace {

constexpr uint8_t kIls = 4;

}  // namespace

void ReadVORILSSubsection(RunState& state, int32_t position, int32_t recordCount, int32_t) {
    Reading& reading = state.Reading;
    Tables& tables = state.Tables;
    IlsWorkingValues& working = tables.IlsWorking;
    platform::ByteReader& bgl = reading.Bgl;
    ReaderStatement(state, "ReadVORILSSubsection", [&] {
        bgl.Seek(position);
        for (int32_t record = 0; record < recordCount; ++record) {
            int64_t start = bgl.Position();
            int16_t id = bgl.I16();
            int32_t size = bgl.I32();
            uint8_t navType = bgl.U8();
            bgl.Skip(1);
            int32_t longitude = bgl.I32();
            int32_t latitude = bgl.I32();
            int32_t elevation = bgl.I32();
            int32_t frequency = bgl.I32();
            bgl.Skip(8);
            int32_t ident = bgl.I32();
            bgl.Skip(4);
            if (id != 19) return;
            ++tables.StationsRead;

            const bool isIls = navType == kIls;
            IlsRecord ils;
            if (isIls) {
                ils.Ident = GetIcaoCode04(state, ident, true);
                ils.Latitude = static_cast<float>(DecodeLatitude(latitude));
                ils.Longitude = static_cast<float>(DecodeLongitude(longitude));
                ils.AltitudeFeet = AltitudeFeetRounded(elevation);
                ils.FrequencyMhz = FrequencyMhz(frequency);
                ils.Kind = "L";
            }

            const int64_t stationEnd = start + size;
            do {
                // A header at or behind the end of the file, of a station that
                // claims to go on behind it, would be read as zeros for ever.
                if (bgl.Position() >= bgl.Length() && stationEnd > bgl.Length())
                    throw RunError(kInputPastEnd);
                int16_t subId = bgl.I16();
                int32_t subSize = bgl.I32();
                if (subId == 20) {
                    bgl.Skip(2);
                    float heading = bgl.F32();
                    bgl.Skip(4);
                    if (isIls) working.Heading = heading;
                } else if (subId == 21) {
                    bgl.Skip(2);
                    int32_t gsLongitude = bgl.I32();
                    int32_t gsLatitude = bgl.I32();
                    bgl.Skip(8);
                    float pitch = bgl.F32();
                    if (isIls) {
                        working.GsLatitude = static_cast<float>(DecodeLatitude(gsLatitude));
                        working.GsLongitude = static_cast<float>(DecodeLongitude(gsLongitude));
                        working.GsPitch = pitch;
                        ils.Kind = "I";
                    }
                } else if (subId == 22) {
                    bgl.Skip(18);
                } else if (subId == 25) {
                    int32_t length = To32(int64_t{subSize} - 6);
                    if (isIls) {
                        // Zero bytes are left out; bytes behind the end of the
                        // file would all be zeros.
                        working.Name.clear();
                        int64_t inFile = std::max<int64_t>(
                            0, std::min<int64_t>(length, bgl.Length() - bgl.Position()));
                        for (int64_t i = 0; i < inFile; ++i) {
                            char c = static_cast<char>(bgl.U8());
                            if (c != '\0') working.Name += c;
                        }
                        if (length > inFile) bgl.Skip(length - inFile);
                    } else {
                        int64_t next = To32(bgl.Position() + length);
                        if (subSize < 6 && next < stationEnd) throw RunError(kInvalidArgument);
                        bgl.Seek(next);
                    }
                } else if (subId == 19) {
                    bgl.Skip(-6);
                    break;
                }
            } while (bgl.Position() < To32(stationEnd));

            if (isIls) {
                ils.AirportIndex = reading.StockScenery ? -2 : -1;
                ils.Name = working.Name;
                ils.GsLatitude = working.GsLatitude;
                ils.GsLongitude = working.GsLongitude;
                ils.GsPitch = working.GsPitch;
                ils.Heading = working.Heading;
                ils.BglFileName = reading.CurrentBglFile;
                tables.IlsTable.push_back(ils);
            }
        }
    });
}

}  // namespace skl
