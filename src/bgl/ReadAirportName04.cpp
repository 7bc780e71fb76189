// Airport name subrecord (id 0x19): the 6-byte header, then the name text. The
// airport's names come from the name list alone; the text is passed over.
#include "bgl/BglReaders.h"
#include "platform/RunError.h"
#include "model/RunLog.h"

namespace skl {

void MoveInAirportWalk(RunState& state, int64_t count) {
    platform::ByteReader& bgl = state.Reading.Bgl;
    if (count < 0 && bgl.Position() + count < state.Reading.WalkEnd)
        throw RunError(kInvalidArgument);
    bgl.Skip(count);
}

void ReadAirportName04(RunState& state, int32_t length) {
    ReaderStatement(state, "ReadAirportName04", [&] { MoveInAirportWalk(state, length); });
}

}  // namespace skl
