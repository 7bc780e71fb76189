// Taxi names subrecord (id 0x1D), read only directly behind the taxi paths:
// its 6-byte header, an i16 count, then 8 characters each.
#include "bgl/BglReaders.h"
#include "platform/Checked.h"
#include "model/RunLog.h"

namespace skl {

TaxiNames ReadTaxiName04(RunState& state) {
    platform::ByteReader& bgl = state.Reading.Bgl;
    TaxiNames result;
    ReaderStatement(state, "ReadTaxiName04", [&] {
        int16_t id = bgl.I16();
        bgl.Skip(4);
        if (id != 29) {
            // The header belongs to the next subrecord: the airport walk reads it.
            bgl.Skip(-6);
            return;
        }
        int16_t count = bgl.I16();
        if (count < 0) throw RunError(kSubscriptOutOfRange);
        state.Tables.TaxiNames.assign(static_cast<size_t>(count) + 1, std::string());
        for (int32_t i = 0; i < count; ++i) {
            std::string name(8, '\0');
            bgl.Read(name.data(), 8);
            state.Tables.TaxiNames[static_cast<size_t>(i)] = name;
        }
        result = TaxiNames{true, count};
    });
    return result;
}

}  // namespace skl
