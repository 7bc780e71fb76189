// Airport.skl, little-endian and packed:
//   0    i32  number of the last airport written (count - 1; -1 when empty)
//   4    the airports, each a 224-byte fixed part and four blocks:
//        0 i32 AirportNumber      4 text5 Icao         9 text40 AirportName
//       49 text40 Country        89 text40 State     129 text40 City
//      169 f32 Latitude         173 f32 Longitude    177 f32 TowerLatitude
//      181 f32 TowerLongitude   185 f32 AtisFrequency 189 i32 AltitudeFeet
//      193 text15 BglFileName   208 i32 RunwayCount  212 i32 CommCount
//      216 i32 IlsCount         220 i32 ParkingCount
//      then runways (48 each), comms (58), parking spots (29), ILS records (107):
//      the counts go runway, comm, ILS, parking; the blocks runway, comm, parking, ILS.
#include <stdexcept>

#include "skl/AirportFile.h"

namespace skl {

namespace {

constexpr size_t kAirportFileIndex = 4;  // the fifth file of the set

template <std::size_t N>
void PutText(ByteWriter& out, const FixedText<N>& text) {
    out.Raw(std::string_view(text.Bytes.data(), N));
}

// Every packed form is checked against its size, so that a field added or
// dropped by mistake cannot go out unnoticed.
void CheckSize(const ByteWriter& out, std::size_t start, std::size_t size) {
    if (out.Size() - start != size) throw std::logic_error("packed record of a wrong size");
}

}  // namespace

void PutRunway(ByteWriter& out, const RunwayRecord& r) {
    std::size_t start = out.Size();
    PutText(out, r.Icao);
    PutText(out, r.PrimaryDesignator);
    PutText(out, r.SecondaryDesignator);
    out.F32(r.Latitude);
    out.F32(r.Longitude);
    out.F32(r.Heading);
    out.I32(r.AltitudeFeet);
    out.I16(r.LengthFeet);
    out.I16(r.WidthFeet);
    out.I16(r.Surface);
    PutText(out, r.PrimaryIlsIdent);
    PutText(out, r.SecondaryIlsIdent);
    PutText(out, r.RecordKind);
    CheckSize(out, start, kRunwaySize);
}

void PutComm(ByteWriter& out, const CommRecord& c) {
    std::size_t start = out.Size();
    PutText(out, c.Icao);
    PutText(out, c.CommName);
    out.F32(c.Latitude);
    out.F32(c.Longitude);
    out.F32(c.FrequencyMhz);
    out.U8(c.CommType);
    CheckSize(out, start, kCommSize);
}

void PutParking(ByteWriter& out, const ParkingRecord& p) {
    std::size_t start = out.Size();
    PutText(out, p.Icao);
    out.F32(p.Latitude);
    out.F32(p.Longitude);
    out.I32(p.ParkingNumber);
    out.I32(p.ParkingType);
    out.I32(p.ParkingName);
    out.F32(p.Heading);
    CheckSize(out, start, kParkingSize);
}

void PutIls(ByteWriter& out, const IlsRecord& i) {
    std::size_t start = out.Size();
    out.I32(i.AirportIndex);
    PutText(out, i.Ident);
    PutText(out, i.Name);
    PutText(out, i.Reserved);
    out.F32(i.Latitude);
    out.F32(i.Longitude);
    out.F32(i.GsLatitude);
    out.F32(i.GsLongitude);
    out.F32(i.GsPitch);
    out.F32(i.FrequencyMhz);
    out.F32(i.Heading);
    out.I32(i.AltitudeFeet);
    PutText(out, i.BglFileName);
    PutText(out, i.RunwayIdent);
    PutText(out, i.Kind);
    CheckSize(out, start, kIlsSize);
}

void PutAirport(ByteWriter& out, const AirportRecord& a) {
    std::size_t start = out.Size();
    out.I32(a.AirportNumber);
    PutText(out, a.Icao);
    PutText(out, a.AirportName);
    PutText(out, a.Country);
    PutText(out, a.State);
    PutText(out, a.City);
    out.F32(a.Latitude);
    out.F32(a.Longitude);
    out.F32(a.TowerLatitude);
    out.F32(a.TowerLongitude);
    out.F32(a.AtisFrequency);
    out.I32(a.AltitudeFeet);
    PutText(out, a.BglFileName);
    out.I32(a.RunwayCount);
    out.I32(a.CommCount);
    out.I32(a.IlsCount);
    out.I32(a.ParkingCount);
    CheckSize(out, start, kAirportFixedSize);
    for (int32_t i = 0; i < a.RunwayCount; ++i) PutRunway(out, a.Runways.at(static_cast<size_t>(i)));
    for (int32_t i = 0; i < a.CommCount; ++i) PutComm(out, a.Comms.at(static_cast<size_t>(i)));
    for (int32_t i = 0; i < a.ParkingCount; ++i)
        PutParking(out, a.Parkings.at(static_cast<size_t>(i)));
    for (int32_t i = 0; i < a.IlsCount; ++i) PutIls(out, a.Ils.at(static_cast<size_t>(i)));
}

void WriteAirports2File(RunState& state) {
    Tables& tables = state.Tables;
    auto withdrawn = [](const AirportRecord& a) { return a.Icao.Bytes[0] == '#'; };
    int32_t last = -1;
    for (int32_t i = 0; i <= tables.AirportTop; ++i)
        if (!withdrawn(tables.AirportTable.at(static_cast<size_t>(i)))) ++last;
    ByteWriter out;
    out.I32(last);
    state.Files.Table.Write(state.Files.AirportFile, out.Bytes);
    int32_t number = 0;
    for (int32_t i = 0; i <= tables.AirportTop; ++i) {
        AirportRecord& airport = tables.AirportTable.at(static_cast<size_t>(i));
        if (withdrawn(airport)) continue;
        airport.AirportNumber = number++;
        out.Bytes.clear();
        PutAirport(out, airport);
        state.Files.Table.Write(state.Files.AirportFile, out.Bytes);
    }
    state.Files.RecordsWritten[kAirportFileIndex] = number;
}

}  // namespace skl
