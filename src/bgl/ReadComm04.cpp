// Comm subrecord (id 0x12), behind its 6-byte header:
//    0 i16 comm type (1: the airport's ATIS)   2 i32 frequency, Hz
//    6 the name text up to the end of the subrecord
#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "platform/Checked.h"
#include "platform/Win1252.h"
#include "model/RunLog.h"

namespace skl {

void ReadComm04(RunState& state, int32_t length) {
    const Reading& reading = state.Reading;
    platform::ByteReader& bgl = state.Reading.Bgl;
    ReaderStatement(state, "ReadComm04", [&] {
        int16_t type = bgl.I16();
        float frequency = FrequencyMhz(bgl.I32());
        if (reading.AirportIsNew && type == 1)
            At(state.Tables.AirportTable, state.Tables.AirportTop).AtisFrequency = frequency;
        // Zero bytes are dropped wherever they stand; bytes behind the end of the
        // file would all be zeros.
        int64_t nameLength = int64_t{length} - 6;
        int64_t inFile = std::max<int64_t>(0, std::min(nameLength, bgl.Length() - bgl.Position()));
        std::string name;
        for (int64_t i = 0; i < inFile; ++i) {
            char c = static_cast<char>(bgl.U8());
            if (c != '\0') name += c;
        }
        if (nameLength > inFile) bgl.Skip(nameLength - inFile);
        name = TrimBlanks(name);
        if (!reading.AirportIsNew) return;

        AirportRecord& airport = At(state.Tables.AirportTable, state.Tables.AirportTop);
        airport.CommCount = To32(int64_t{airport.CommCount} + 1);
        airport.Comms.resize(static_cast<size_t>(To16(airport.CommCount - 1)) + 1);
        CommRecord& comm = airport.Comms.back();
        comm.Icao = reading.CurrentIcao.Str();
        if (!name.empty()) comm.CommName = name;
        comm.FrequencyMhz = frequency;
        comm.Latitude = reading.AirportLatitude;
        comm.Longitude = reading.AirportLongitude;
        if (type < 0 || type > 255) throw RunError(kOverflow);
        comm.CommType = static_cast<uint8_t>(type);
    });
}

}  // namespace skl
