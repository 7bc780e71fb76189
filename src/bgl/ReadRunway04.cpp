// Runway subrecord (id 4), behind its 6-byte header:
//    0 i16 surface              2 u8 primary number     3 u8 primary designator
//    4 u8  secondary number     5 u8 secondary designator
//    6 i32 primary ILS ident, packed (not shifted)    10 i32 secondary ILS ident
//   14 i32 longitude, packed   18 i32 latitude, packed 22 i32 altitude, mm
//   26 f32 length, m           30 f32 width, m         34 f32 heading
//   38 8   not used
// Nested subrecords follow up to the end of the subrecord; they are passed over
// by their sizes. Designator codes: 1 L, 2 R, 3 C, 5 A, 6 B, any other none.
#include <cstdio>

#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "platform/Checked.h"
#include "model/RunLog.h"

namespace skl {

namespace {

std::string Designator(uint8_t number, uint8_t letter) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "%02u", static_cast<unsigned>(number));
    const char* letters[] = {"", "L", "R", "C", "", "A", "B"};
    return std::string(digits) + (letter < 7 ? letters[letter] : "");
}

}  // namespace

void ReadRunway04(RunState& state, int32_t length) {
    const Reading& reading = state.Reading;
    platform::ByteReader& bgl = state.Reading.Bgl;
    ReaderStatement(state, "ReadRunway04", [&] {
        const int64_t start = bgl.Position();
        int16_t surface = bgl.I16();
        uint8_t primaryNumber = bgl.U8();
        uint8_t primaryLetter = bgl.U8();
        uint8_t secondaryNumber = bgl.U8();
        uint8_t secondaryLetter = bgl.U8();
        int32_t primaryIls = bgl.I32();
        int32_t secondaryIls = bgl.I32();
        int32_t longitude = bgl.I32();
        int32_t latitude = bgl.I32();
        int32_t altitude = bgl.I32();
        float lengthMetres = bgl.F32();
        float widthMetres = bgl.F32();
        float heading = bgl.F32();
        bgl.Skip(8);

        RunwayRecord runway;
        runway.PrimaryDesignator = Designator(primaryNumber, primaryLetter);
        runway.SecondaryDesignator = Designator(secondaryNumber, secondaryLetter);
        runway.Latitude = static_cast<float>(DecodeLatitude(latitude));
        runway.Longitude = static_cast<float>(DecodeLongitude(longitude));
        std::string primaryIdent = GetIcaoCode04(state, primaryIls, false);
        std::string secondaryIdent = GetIcaoCode04(state, secondaryIls, false);
        int32_t altitudeFeet = FloorFeet(altitude / 1000.0);
        int32_t lengthFeet = FloorFeet(lengthMetres);
        bool tooShort = lengthFeet < 500;
        if (lengthFeet > 32000) lengthFeet = 32000;
        int32_t widthFeet = FloorFeet(widthMetres);

        // The nested subrecords, up to the end of the subrecord or one byte
        // before it.
        const int64_t end = start + length;
        while (bgl.Position() < end - 1) {
            if (bgl.Position() >= bgl.Length() && end > bgl.Length()) throw RunError(kInputPastEnd);
            bgl.Skip(2);
            int32_t size = bgl.I32();
            int64_t next = To32(bgl.Position() + int64_t{size} - 6);
            if (size < 6 && next < end - 1) throw RunError(kInvalidArgument);
            bgl.Seek(next);
        }
        if (!reading.AirportIsNew || tooShort) return;

        AirportRecord& airport = At(state.Tables.AirportTable, state.Tables.AirportTop);
        airport.RunwayCount = To32(int64_t{airport.RunwayCount} + 1);
        airport.Runways.resize(static_cast<size_t>(To16(airport.RunwayCount - 1)) + 1);
        RunwayRecord& stored = airport.Runways.back();
        stored.Icao = reading.CurrentIcao.Str();
        stored.PrimaryDesignator = runway.PrimaryDesignator;
        stored.SecondaryDesignator = runway.SecondaryDesignator;
        stored.Latitude = runway.Latitude;
        stored.Longitude = runway.Longitude;
        stored.Heading = heading;
        stored.AltitudeFeet = altitudeFeet;
        stored.LengthFeet = To16(lengthFeet);
        stored.WidthFeet = To16(widthFeet);
        stored.RecordKind = "R";
        stored.Surface = surface;
        stored.PrimaryIlsIdent = primaryIdent;
        stored.SecondaryIlsIdent = secondaryIdent;
    });
}

}  // namespace skl
