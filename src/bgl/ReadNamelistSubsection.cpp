// Name list record (id 39), offsets from its first byte:
//    0 i16 id (39)             2 i32 size (not used)
//    6 i16 RegionCount         8 i16 CountryCount      10 i16 StateCount
//   12 i16 CityCount          14 i16 AirportNameCount  16 i16 IcaoCount
//   18 i32 RegionListOffset   22 i32 CountryListOffset 26 i32 StateListOffset
//   30 i32 CityListOffset     34 i32 AirportNameListOffset 38 i32 IcaoListOffset
// A string list: n i32 string positions counted from the byte behind them, then
// the strings, each ended by a zero byte. The ICAO list: IcaoCount entries of 20
// bytes: u8 region, u8 country, i16 state, i16 city, i16 airport name index,
// i32 packed code (shifted), 8 bytes not used.
#include <cmath>

#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "platform/Checked.h"
#include "model/RunLog.h"

namespace skl {

namespace {

using StringList = std::vector<SharedText>;

struct NameLists {
    StringList Regions, Countries, States, Cities, AirportNames;
};

// A list of n strings; the table keeps one spare empty element at index n.
StringList NewList(int16_t count) {
    if (count < 0) throw RunError(kSubscriptOutOfRange);
    return StringList(static_cast<size_t>(count) + 1);
}

void ReadStringList(platform::ByteReader& bgl, int32_t recordStart, int16_t count, int32_t offset,
                    StringList& list, bool blankForEmpty) {
    bgl.Seek(To32(int64_t{recordStart} + offset));
    int32_t base = To32(bgl.Position() + To16(4 * int32_t{count}));
    const int64_t length = bgl.Length();
    for (int32_t i = 0; i < count; ++i) {
        int32_t stringOffset = bgl.I32();
        int64_t remembered = bgl.Position();
        bgl.Seek(To32(int64_t{base} + stringOffset));
        SharedText& stored = At(list, i);
        std::string text;
        // A string that runs into the end of the file ends there.
        while (bgl.Position() < length) {
            char c = static_cast<char>(bgl.U8());
            if (c == '\0') break;
            text += c;
        }
        if (blankForEmpty && text.empty()) text.assign(1, ' ');
        stored = SharedText(std::make_shared<const std::string>(std::move(text)));
        if (i != count - 1) bgl.Seek(remembered);
    }
}

// An index beyond its list is divided by 16, rounded half to even.
const SharedText& Pick(const StringList& list, int32_t value, int16_t count) {
    int64_t index = value;
    if (value > count - 1) index = static_cast<int64_t>(std::nearbyint(value / 16.0));
    return At(list, index);
}

}  // namespace

void ReadNamelistSubsection(RunState& state, int32_t position, int32_t, int32_t) {
    Tables& tables = state.Tables;
    platform::ByteReader& bgl = state.Reading.Bgl;
    NameLists lists;
    ReaderStatement(state, "ReadNamelistSubsection", [&] {
        tables.NameCount = 0;
        bgl.Seek(position);
        int16_t id = bgl.I16();
        bgl.Skip(4);
        int16_t regionCount = bgl.I16();
        int16_t countryCount = bgl.I16();
        int16_t stateCount = bgl.I16();
        int16_t cityCount = bgl.I16();
        int16_t airportNameCount = bgl.I16();
        int16_t icaoCount = bgl.I16();
        int32_t regionOffset = bgl.I32();
        int32_t countryOffset = bgl.I32();
        int32_t stateOffset = bgl.I32();
        int32_t cityOffset = bgl.I32();
        int32_t airportNameOffset = bgl.I32();
        int32_t icaoOffset = bgl.I32();
        if (id != 39) return;

        lists.Regions = NewList(regionCount);
        lists.Countries = NewList(countryCount);
        lists.States = NewList(stateCount);
        lists.Cities = NewList(cityCount);
        lists.AirportNames = NewList(airportNameCount);
        if (icaoCount < 0) throw RunError(kSubscriptOutOfRange);
        tables.NameTable.assign(static_cast<size_t>(icaoCount) + 1, NameEntry());

        ReadStringList(bgl, position, regionCount, regionOffset, lists.Regions, true);
        ReadStringList(bgl, position, countryCount, countryOffset, lists.Countries, false);
        ReadStringList(bgl, position, stateCount, stateOffset, lists.States, true);
        ReadStringList(bgl, position, cityCount, cityOffset, lists.Cities, false);
        ReadStringList(bgl, position, airportNameCount, airportNameOffset, lists.AirportNames,
                       false);

        bgl.Seek(To32(int64_t{position} + icaoOffset));
        tables.NameCount = icaoCount;
        for (int32_t i = 0; i < icaoCount; ++i) {
            uint8_t regionIndex = bgl.U8();
            uint8_t countryIndex = bgl.U8();
            int16_t stateIndex = bgl.I16();
            int16_t cityIndex = bgl.I16();
            int16_t airportNameIndex = bgl.I16();
            int32_t code = bgl.I32();
            bgl.Skip(8);
            NameEntry& entry = At(tables.NameTable, i);
            entry.Region = Pick(lists.Regions, regionIndex, regionCount);
            entry.Country = Pick(lists.Countries, countryIndex, countryCount);
            entry.State = Pick(lists.States, stateIndex, stateCount);
            entry.City = Pick(lists.Cities, cityIndex, cityCount);
            entry.AirportName = Pick(lists.AirportNames, airportNameIndex, airportNameCount);
            entry.Icao = GetIcaoCode04(state, code, true);
        }
    });
    // The lookup index gives the first entry of each code in table order, as a
    // scan from index 0 would find it; whatever the reader left in the table.
    tables.NameIndex.clear();
    for (size_t i = 0; i < tables.NameTable.size(); ++i)
        tables.NameIndex.emplace(CodeKey(tables.NameTable[i].Icao), static_cast<int32_t>(i));
}

}  // namespace skl
