// Airport name subrecord (id 0x19): the 6-byte header, then the name text. The
// airport's names come from the name list alone; the text is passed over.
#include "bgl/BglReaders.h"
#include "platform/RunError.h"
#include "run/RunLog.h"

namespace skl {

void ReadAirportName04(RunState& state, int32_t length) {
    ReaderStatement(state, "ReadAirportName04", [&] {
        // A header size below 6 would move the walk back: the record is damaged.
        if (length < 0) throw RunError(kInvalidArgument);
        state.Reading.Bgl.Skip(length);
    });
}

}  // namespace skl
