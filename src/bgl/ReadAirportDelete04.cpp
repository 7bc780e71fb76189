// Airport delete subrecord (id 0x33), behind its 6-byte header:
//    0 i16 flag word: bit 2 aprons, bit 5 runways, bit 7 taxiways
//    2 2   not used;  FSX form: 4 2 not used too
// The flags are noted on the add-on entry that the current airport made; flags
// of several records add up. No handler of its own: an error gives up the
// airport's subsection.
#include "bgl/BglReaders.h"
#include "platform/Checked.h"

namespace skl {

void ReadAirportDelete(RunState& state, int32_t length, int32_t fixedSize, int highestBit) {
    platform::ByteReader& bgl = state.Reading.Bgl;
    Tables& tables = state.Tables;
    const int32_t entryIndex = state.Reading.CurrentAddonEntry;
    if (entryIndex == 0) {
        // An airport without an entry of its own has nothing to note: the
        // record is passed over by its size.
        MoveInAirportWalk(state, length);
        return;
    }
    int32_t value = bgl.I16();
    bgl.Skip(fixedSize - 2);
    // Taken apart from the highest bit down; the highest digit holds every bit
    // above it too, and has to fit an unsigned byte.
    int digits[12] = {};
    for (int bit = highestBit; bit >= 0; --bit) {
        int32_t digit = value >> bit;  // value is not negative below the top
        if (value < 0 || digit > 255) throw RunError(kOverflow);
        digits[bit] = digit;
        value -= digit << bit;
    }
    AddonAirport& entry = At(tables.AddonAirports, entryIndex);
    if (digits[2] == 1) entry.DeletesAprons = true;
    if (digits[5] == 1) entry.DeletesRunways = true;
    if (digits[7] == 1) entry.DeletesTaxiways = true;
    bool replaced = entry.ReplacesOthers;
    entry.ReplacesOthers = entry.DeletesTaxiways && entry.DeletesRunways && entry.DeletesAprons;
    if (entry.ReplacesOthers && !replaced) {
        // The flags only add up: the entry now replaces others for good.
        AddonCode& code = tables.AddonIndex[CodeKey(entry.Icao)];
        ++code.Replacing;
        ++code.ByArea[entry.AreaNumber].Replacing;
    }
    if (length < 0)
        MoveInAirportWalk(state, int64_t{length} - fixedSize);
    else if (length != fixedSize)
        bgl.Skip(int64_t{length} - fixedSize);
}

void ReadAirportDelete04(RunState& state, int32_t length) {
    ReadAirportDelete(state, length, 4, 7);
}

}  // namespace skl
