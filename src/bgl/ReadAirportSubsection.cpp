// Airport record, offsets from its first byte (id 3: FS2004 form, id 60: FSX):
//    0 i16 id                  2 i32 size with all subrecords
//    6 6   not used           12 i32 longitude, packed   16 i32 latitude, packed
//   20 i32 altitude, mm       24 i32 tower longitude     28 i32 tower latitude
//   32 8   not used           40 i32 ICAO code, packed (shifted)
//   44 8 (id 3) or 12 (id 60) not used
// Subrecords follow, each with a 6-byte header (i16 id, i32 size with header).
// The walk dispatches them by id; one without a reader is passed over by its
// size. An error logs one line and gives up the rest of the subsection.
#include <cstdio>

#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "platform/Checked.h"
#include "platform/Win1252.h"
#include "model/RunLog.h"

namespace skl {

namespace {

constexpr const char* kProcedure = "ReadAirportSubsection";
constexpr int16_t kFs2004Airport = 3;
constexpr int16_t kFsxAirport = 60;

std::string Formatted(const char* format, long value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// The override rule: an earlier add-on entry of the code from another area with
// all three delete flags hides the airport; an entry from the same area notes
// the code as met twice. Counted per code and area, this is what a visit of
// every entry of the code in list order would find.
bool HiddenByAddon(Tables& tables, const FixedText<5>& icao, int32_t areaNumber) {
    auto found = tables.AddonIndex.find(CodeKey(icao.Str()));
    if (found == tables.AddonIndex.end()) return false;
    const AddonCode& code = found->second;
    auto area = code.ByArea.find(areaNumber);
    int32_t sameArea = area == code.ByArea.end() ? 0 : area->second.Entries;
    int32_t replacingHere = area == code.ByArea.end() ? 0 : area->second.Replacing;
    if (sameArea > 0 && tables.DoubleAddonKeys.insert(CodeKey(icao.Str())).second)
        tables.DoubleAddonIcaos.push_back(icao.Str());
    return code.Replacing - replacingHere > 0;
}

void CreateRecord(RunState& state, const NameEntry& names, int32_t latitude, int32_t longitude,
                  int32_t altitude, int32_t towerLatitude, int32_t towerLongitude) {
    Tables& tables = state.Tables;
    const Reading& reading = state.Reading;
    tables.AirportTable.resize(static_cast<size_t>(tables.AirportTop) + 1);
    AirportRecord& airport = tables.AirportTable[static_cast<size_t>(tables.AirportTop)];
    airport = AirportRecord();
    airport.AirportNumber = tables.AirportTop;
    airport.Icao = Upper1252(TrimBlanks(reading.CurrentIcao.Str()));
    airport.AirportName = ProperCase(TrimBlanks(names.AirportName.Str()));
    airport.City = ProperCase(TrimBlanks(names.City.Str()));
    airport.State = names.State.Str().size() >= 2 ? ProperCase(TrimBlanks(names.State.Str())) : "0";
    airport.Country = TrimBlanks(ProperCase(names.Country.Str()));
    airport.Latitude = static_cast<float>(DecodeLatitude(latitude));
    airport.Longitude = static_cast<float>(DecodeLongitude(longitude));
    airport.AltitudeFeet = AltitudeFeetRounded(altitude);
    airport.TowerLatitude = static_cast<float>(DecodeLatitude(towerLatitude));
    airport.TowerLongitude = static_cast<float>(DecodeLongitude(towerLongitude));
    airport.BglFileName = reading.CurrentBglFile;
    LogLine(state, Formatted("%05ld", tables.AirportTop) + " , " +
                       Formatted("%04ld", reading.AreaNumber) + " , " + reading.CurrentIcao.Str() +
                       " - " + TrimBlanks(airport.AirportName.Str()));
}

// The walk over the subrecords of the airport that starts at `start`.
void WalkSubrecords(RunState& state, int64_t start, int32_t size) {
    platform::ByteReader& bgl = state.Reading.Bgl;
    auto walkEnd = [&] { return To32(start + size - 1); };
    do {
        // A header at or behind the end of the file, of a record that claims to
        // go on behind it, would be read as zeros for ever.
        if (bgl.Position() >= bgl.Length() && start + size > bgl.Length())
            throw RunError(kInputPastEnd);
        int16_t id = bgl.I16();
        int32_t subSize = bgl.I32();
        int32_t length = To32(int64_t{subSize} - 6);
        state.Reading.WalkEnd = walkEnd();
        const bool fsx = state.Reading.AirportRecordId == kFsxAirport;
        switch (id) {
            case 0x04: ReadRunway04(state, length); break;
            case 0x12: ReadComm04(state, length); break;
            case 0x19: ReadAirportName04(state, length); break;
            case 0x1A: ReadTaxiPoints04(state, length); break;
            case 0x1C: ReadTaxiPath04(state, length); break;
            case 0x33:
                fsx ? ReadAirportDelete10(state, length) : ReadAirportDelete04(state, length);
                break;
            case 0x37: ReadApron104(state, length); break;
            case 0x1B:
            case 0x3D:
                // Parking spots: 0x1B in the FS2004 form, 0x3D in the FSX form.
                if ((id == 0x3D) == fsx) {
                    ReadParking04(state, length);
                    break;
                }
                [[fallthrough]];
            default: {
                // Passed over by its size. A size below 6 would stand still or
                // go back, unless the move ends the walk.
                int64_t next = To32(bgl.Position() + length);
                if (subSize < 6 && next < walkEnd()) throw RunError(kInvalidArgument);
                bgl.Seek(next);
                break;
            }
        }
    } while (bgl.Position() < walkEnd());
}

}  // namespace

void ReadAirportSubsection(RunState& state, int32_t position, int32_t recordCount, int32_t) {
    Reading& reading = state.Reading;
    Tables& tables = state.Tables;
    platform::ByteReader& bgl = reading.Bgl;
    // The airport in hand took an index but has no record (no name was found).
    bool blind = false;
    bool completed = ReaderStatement(state, kProcedure, [&] {
        bgl.Seek(position);
        for (int32_t record = 0; record < recordCount; ++record) {
            int64_t start = bgl.Position();
            reading.AirportRecordId = bgl.I16();
            if (reading.AirportRecordId != kFs2004Airport && reading.AirportRecordId != kFsxAirport)
                return;
            int32_t size = bgl.I32();
            bgl.Skip(6);
            int32_t longitude = bgl.I32();
            int32_t latitude = bgl.I32();
            int32_t altitude = bgl.I32();
            int32_t towerLongitude = bgl.I32();
            int32_t towerLatitude = bgl.I32();
            bgl.Skip(8);
            int32_t code = bgl.I32();
            bgl.Skip(reading.AirportRecordId == kFs2004Airport ? 8 : 12);
            reading.CurrentIcao = GetIcaoCode04(state, code, true);
            reading.AirportLatitude = static_cast<float>(DecodeLatitude(latitude));
            reading.AirportLongitude = static_cast<float>(DecodeLongitude(longitude));
            reading.AirportIsNew = true;
            reading.CurrentAddonEntry = 0;

            if (tables.AddonTop() > 0 &&
                HiddenByAddon(tables, reading.CurrentIcao, reading.AreaNumber))
                reading.AirportIsNew = false;
            if (!reading.StockScenery && reading.AirportIsNew) {
                AddonAirport entry;
                entry.Icao = reading.CurrentIcao.Str();
                entry.AreaNumber = reading.AreaNumber;
                tables.AddonAirports.push_back(entry);
                reading.CurrentAddonEntry = tables.AddonTop();
                ++tables.AddonIndex[CodeKey(reading.CurrentIcao.Str())]
                      .ByArea[reading.AreaNumber]
                      .Entries;
            }
            if (reading.AirportIsNew) tables.AirportTop = To32(int64_t{tables.AirportTop} + 1);

            auto name = tables.NameIndex.find(CodeKey(reading.CurrentIcao.Str()));
            bool named = name != tables.NameIndex.end() && name->second < tables.NameCount;
            blind = !named && reading.AirportIsNew;
            if (named && reading.AirportIsNew)
                CreateRecord(state, tables.NameTable[static_cast<size_t>(name->second)],
                             latitude, longitude, altitude, towerLatitude, towerLongitude);

            WalkSubrecords(state, start, size);

            if (blind) {
                LogLine(state, "Blind Airport found at: " + std::to_string(tables.AirportTop));
                --tables.AirportTop;
                ++tables.BlindAirports;
                blind = false;
            }
        }
    });
    // A blind airport whose subsection was given up gives its index back too.
    if (!completed && blind) --tables.AirportTop;
}

}  // namespace skl
