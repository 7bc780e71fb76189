#include "support/BglBuilder.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "skl/ByteWriter.h"

namespace skl::test {

namespace {

constexpr size_t kHeaderSize = 56;
constexpr size_t kSectionEntrySize = 20;
constexpr size_t kSubsectionEntrySize = 16;
constexpr size_t kRecordHeaderSize = 6;

int32_t ToI32(size_t value) {
    if (value > static_cast<size_t>(INT32_MAX)) throw std::length_error("BGL test file too big");
    return static_cast<int32_t>(value);
}

BglRecord MakeRecord(uint16_t id, const ByteWriter& body, std::vector<BglRecord> children = {}) {
    return BglRecord{id, body.Bytes, std::move(children), std::nullopt};
}

// Index of text in the list, appending it when it is not there yet.
size_t IndexIn(std::vector<std::string>& list, const std::string& text) {
    auto found = std::find(list.begin(), list.end(), text);
    if (found != list.end()) return static_cast<size_t>(found - list.begin());
    list.push_back(text);
    return list.size() - 1;
}

// A string list: one offset per string, counted from the first byte behind the
// offsets, then the strings, each ended by a NUL byte.
std::string StringList(const std::vector<std::string>& strings) {
    ByteWriter out;
    size_t position = 0;
    for (const auto& text : strings) {
        out.I32(ToI32(position));
        position += text.size() + 1;
    }
    for (const auto& text : strings) out.Text(text, text.size() + 1);
    return out.Bytes;
}

}  // namespace

std::string Serialize(const BglRecord& record) {
    std::string children = Serialize(record.Children);
    ByteWriter out;
    out.U16(record.Id);
    out.I32(record.SizeOverride.value_or(
        ToI32(kRecordHeaderSize + record.Body.size() + children.size())));
    out.Raw(record.Body);
    out.Raw(children);
    return out.Bytes;
}

std::string Serialize(const std::vector<BglRecord>& records) {
    std::string bytes;
    for (const auto& record : records) bytes += Serialize(record);
    return bytes;
}

std::string BuildBgl(const BglFile& file) {
    size_t subsectionCount = 0;
    for (const auto& section : file.Sections) subsectionCount += section.Subsections.size();
    const size_t sectionDirectoryEnd = kHeaderSize + kSectionEntrySize * file.Sections.size();
    size_t directoryOffset = sectionDirectoryEnd;
    size_t recordOffset = sectionDirectoryEnd + kSubsectionEntrySize * subsectionCount;

    ByteWriter out;
    out.U16(file.Magic);
    out.U16(0x1992);
    out.U32(0x08051803);
    out.Text("", 12);
    out.I32(file.SectionCountOverride.value_or(ToI32(file.Sections.size())));
    out.Text("", 32);

    for (const auto& section : file.Sections) {
        const size_t directorySize = kSubsectionEntrySize * section.Subsections.size();
        out.I32(section.Type);
        out.I32(0);
        out.I32(section.SubsectionCountOverride.value_or(ToI32(section.Subsections.size())));
        out.I32(section.OffsetOverride.value_or(ToI32(directoryOffset)));
        out.I32(ToI32(directorySize));
        directoryOffset += directorySize;
    }
    for (const auto& section : file.Sections) {
        for (const auto& subsection : section.Subsections) {
            out.I32(0);
            out.I32(subsection.RecordCount);
            out.I32(subsection.OffsetOverride.value_or(ToI32(recordOffset)));
            out.I32(subsection.SizeOverride.value_or(ToI32(subsection.Records.size())));
            recordOffset += subsection.Records.size();
        }
    }
    for (const auto& section : file.Sections) {
        for (const auto& subsection : section.Subsections) out.Raw(subsection.Records);
    }
    return out.Bytes;
}

BglSubsection Subsection(const std::vector<BglRecord>& records) {
    return BglSubsection{ToI32(records.size()), Serialize(records), std::nullopt, std::nullopt};
}

BglSection Section(int32_t type, const std::vector<std::vector<BglRecord>>& subsections) {
    BglSection section{type, {}, std::nullopt, std::nullopt};
    for (const auto& records : subsections) section.Subsections.push_back(Subsection(records));
    return section;
}

int32_t PackLatitude(double degrees) {
    return static_cast<int32_t>(std::llround((90.0 - degrees) * (536870912.0 / 180.0)));
}

int32_t PackLongitude(double degrees) {
    return static_cast<int32_t>(std::llround((degrees + 180.0) * (805306368.0 / 360.0)));
}

int32_t PackCode(std::string_view code, bool shifted) {
    if (code.size() > 5) throw std::invalid_argument("a packed code holds at most 5 characters");
    uint64_t value = 0;
    for (char c : code) {
        uint64_t digit = 0;
        if (c >= '0' && c <= '9') {
            digit = static_cast<uint64_t>(c - '0') + 2;
        } else if (c >= 'A' && c <= 'Z') {
            digit = static_cast<uint64_t>(c - 'A') + 12;
        } else if (c >= 'a' && c <= 'z') {
            digit = static_cast<uint64_t>(c - 'a') + 12;
        } else if (c != ' ') {
            throw std::invalid_argument("a packed code holds only digits, letters and blanks");
        }
        value = value * 38 + digit;
    }
    if (shifted) value <<= 5;
    // The file keeps 32 bits; a long code shifted may set the top bit.
    return static_cast<int32_t>(static_cast<uint32_t>(value));
}

BglRecord NameList(const std::vector<NameListEntry>& entries) {
    std::vector<std::string> regions, countries, states, cities, names;
    ByteWriter icaoList;
    for (const auto& entry : entries) {
        icaoList.U8(static_cast<uint8_t>(IndexIn(regions, entry.Region)));
        icaoList.U8(static_cast<uint8_t>(IndexIn(countries, entry.Country)));
        icaoList.I16(static_cast<int16_t>(IndexIn(states, entry.State)));
        icaoList.I16(static_cast<int16_t>(IndexIn(cities, entry.City)));
        icaoList.I16(static_cast<int16_t>(IndexIn(names, entry.AirportName)));
        icaoList.I32(PackCode(entry.Icao, true));
        icaoList.Text("", 8);
    }
    const std::vector<std::string> lists = {StringList(regions), StringList(countries),
                                            StringList(states),  StringList(cities),
                                            StringList(names),   icaoList.Bytes};
    ByteWriter body;
    for (const auto* list : {&regions, &countries, &states, &cities, &names}) {
        body.I16(static_cast<int16_t>(list->size()));
    }
    body.I16(static_cast<int16_t>(entries.size()));
    // List offsets count from the record's first byte: header plus this fixed part.
    size_t offset = kRecordHeaderSize + 12 + 4 * lists.size();
    for (const auto& list : lists) {
        body.I32(ToI32(offset));
        offset += list.size();
    }
    for (const auto& list : lists) body.Raw(list);
    return MakeRecord(0x27, body);
}

BglRecord Airport(uint16_t id, std::string_view icao, double latitude, double longitude,
                  int32_t altitudeMm, std::vector<BglRecord> subrecords) {
    auto count = [&](uint16_t kind) {
        return static_cast<uint8_t>(
            std::count_if(subrecords.begin(), subrecords.end(),
                          [&](const BglRecord& r) { return r.Id == kind; }));
    };
    ByteWriter body;
    body.U8(count(0x04));  // runways
    body.U8(count(0x12));  // comms
    body.Text("", 4);
    body.I32(PackLongitude(longitude));
    body.I32(PackLatitude(latitude));
    body.I32(altitudeMm);
    body.I32(PackLongitude(longitude));  // tower
    body.I32(PackLatitude(latitude));
    body.I32(altitudeMm);
    body.F32(0.0f);  // magnetic variation
    body.I32(PackCode(icao, true));
    body.Text("", id == 0x3C ? 12 : 8);
    return MakeRecord(id, body, std::move(subrecords));
}

BglRecord AirportName(std::string_view name) {
    ByteWriter body;
    body.Raw(name);
    return MakeRecord(0x19, body);
}

BglRecord Comm(uint16_t type, int32_t frequencyHz, std::string_view name) {
    ByteWriter body;
    body.U16(type);
    body.I32(frequencyHz);
    body.Raw(name);
    return MakeRecord(0x12, body);
}

BglRecord Runway(RunwayEnd primary, RunwayEnd secondary, double latitude, double longitude,
                 int32_t altitudeMm, float lengthM, float widthM, float heading, uint16_t surface) {
    ByteWriter body;
    body.U16(surface);
    body.U8(primary.Number);
    body.U8(primary.Designator);
    body.U8(secondary.Number);
    body.U8(secondary.Designator);
    body.I32(PackCode(primary.IlsIdent, false));
    body.I32(PackCode(secondary.IlsIdent, false));
    body.I32(PackLongitude(longitude));
    body.I32(PackLatitude(latitude));
    body.I32(altitudeMm);
    body.F32(lengthM);
    body.F32(widthM);
    body.F32(heading);
    body.Text("", 8);
    return MakeRecord(0x04, body);
}

BglRecord Navaid(uint8_t navType, std::string_view ident, double latitude, double longitude,
                 int32_t elevationMm, int32_t frequencyHz, std::vector<BglRecord> subrecords) {
    ByteWriter body;
    body.U8(navType);
    body.U8(0);
    body.I32(PackLongitude(longitude));
    body.I32(PackLatitude(latitude));
    body.I32(elevationMm);
    body.I32(frequencyHz);
    body.F32(navType == 4 ? 50000.0f : 240000.0f);  // range in metres
    body.F32(0.0f);                                 // magnetic variation
    body.I32(PackCode(ident, true));
    body.Text("", 4);
    return MakeRecord(0x13, body, std::move(subrecords));
}

BglRecord Localizer(float heading) {
    ByteWriter body;
    body.Text("", 2);
    body.F32(heading);
    body.F32(5.0f);  // beam width
    return MakeRecord(0x14, body);
}

BglRecord Glideslope(double latitude, double longitude, float pitch) {
    ByteWriter body;
    body.Text("", 2);
    body.I32(PackLongitude(longitude));
    body.I32(PackLatitude(latitude));
    body.I32(0);
    body.F32(50000.0f);
    body.F32(pitch);
    return MakeRecord(0x15, body);
}

BglRecord Dme(double latitude, double longitude) {
    ByteWriter body;
    body.Text("", 2);
    body.I32(PackLongitude(longitude));
    body.I32(PackLatitude(latitude));
    body.I32(0);
    body.F32(50000.0f);
    return MakeRecord(0x16, body);
}

BglRecord NavName(std::string_view name) {
    ByteWriter body;
    body.Raw(name);
    return MakeRecord(0x19, body);
}

BglRecord Marker(uint8_t type, double latitude, double longitude, int32_t elevationMm) {
    ByteWriter body;
    body.U8(0);
    body.U8(type);
    body.I32(PackLongitude(longitude));
    body.I32(PackLatitude(latitude));
    body.I32(elevationMm);
    body.Text("", 8);
    return MakeRecord(0x18, body);
}

BglRecord Parking(bool fsx, const std::vector<ParkingSpot>& spots) {
    ByteWriter body;
    body.I16(static_cast<int16_t>(spots.size()));
    for (const auto& spot : spots) {
        uint32_t word =
            spot.Word.value_or((uint32_t{spot.Name} & 0x3F) | (uint32_t{spot.Type} & 0x0F) << 8 |
                               (uint32_t{spot.Number} & 0x0FFF) << 12 |
                               static_cast<uint32_t>(spot.AirlineCodes.size() & 0xFF) << 24);
        body.U32(word);
        body.F32(spot.Radius);
        body.F32(spot.Heading);
        if (fsx) body.Text("", 16);
        body.I32(PackLongitude(spot.Longitude));
        body.I32(PackLatitude(spot.Latitude));
        for (const auto& code : spot.AirlineCodes) body.Text(code, 4);
    }
    return MakeRecord(fsx ? 0x3D : 0x1B, body);
}

BglRecord TaxiPoints(const std::vector<Position>& points, const std::vector<uint8_t>& kinds) {
    ByteWriter body;
    body.I16(static_cast<int16_t>(points.size()));
    for (size_t i = 0; i < points.size(); ++i) {
        const Position& point = points[i];
        body.U8(i < kinds.size() ? kinds[i] : 0x01);
        body.U8(0x00);
        body.U16(0);
        body.I32(PackLongitude(point.Longitude));
        body.I32(PackLatitude(point.Latitude));
    }
    return MakeRecord(0x1A, body);
}

BglRecord TaxiPaths(const std::vector<TaxiPathEntry>& paths) {
    ByteWriter body;
    body.I16(static_cast<int16_t>(paths.size()));
    for (const auto& path : paths) {
        body.I16(path.Start);
        body.U8(static_cast<uint8_t>(path.End & 0xFF));
        body.U8(static_cast<uint8_t>(((path.End >> 8) & 0x0F) | (path.EndHighNibble << 4)));
        body.U8(path.Type);
        body.U8(path.NameIndex);
        if (path.Rest) {
            body.Text(*path.Rest, 14);
        } else {
            body.F32(22.5f);  // width: not read
            body.Text("", 10);
        }
    }
    return MakeRecord(0x1C, body);
}

BglRecord TaxiNames(const std::vector<std::string>& names) {
    ByteWriter body;
    body.I16(static_cast<int16_t>(names.size()));
    for (const auto& name : names) body.Text(name, 8);
    return MakeRecord(0x1D, body);
}

BglRecord Apron(const std::vector<Position>& vertices, std::string_view trailing, uint8_t surface) {
    ByteWriter body;
    body.U8(surface);
    body.I16(static_cast<int16_t>(vertices.size()));
    for (const auto& vertex : vertices) {
        body.I32(PackLongitude(vertex.Longitude));
        body.I32(PackLatitude(vertex.Latitude));
    }
    body.Raw(trailing);
    return MakeRecord(0x37, body);
}

BglRecord AirportDelete(uint16_t word, bool fsx, size_t extraBytes) {
    ByteWriter body;
    body.U16(word);
    body.Text("", fsx ? 4 : 2);
    body.Raw(std::string(extraBytes, '\xEE'));
    return MakeRecord(0x33, body);
}

}  // namespace skl::test
