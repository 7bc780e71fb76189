// The FSX form of the airport delete subrecord: 6 bytes read, bits up to 11
// taken apart (see ReadAirportDelete04.cpp).
#include "bgl/BglReaders.h"

namespace skl {

void ReadAirportDelete10(RunState& state, int32_t length) {
    ReadAirportDelete(state, length, 6, 11);
}

}  // namespace skl
