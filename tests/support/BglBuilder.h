#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Builds BGL files in code, so that a test says in a few lines what a file holds.
// Every size, count and offset is filled in from the content; the overrides put a
// chosen (wrong) value into the file instead, for tests of damaged input. Every member
// has a default, so designated initializers may name only what matters.
namespace skl::test {

constexpr int32_t kSectionAirport = 3;
constexpr int32_t kSectionNavaid = 19;  // VOR and ILS stations
constexpr int32_t kSectionMarker = 24;
constexpr int32_t kSectionNameList = 39;
constexpr int32_t kSectionTerrain = 0x65;  // a kind the run passes over

// A record or subrecord: 6-byte header (id, size), Body, then the children.
// The size counts the header, the body and all children.
struct BglRecord {
    uint16_t Id = 0;
    std::string Body{};
    std::vector<BglRecord> Children{};
    std::optional<int32_t> SizeOverride{};
};
std::string Serialize(const BglRecord& record);
std::string Serialize(const std::vector<BglRecord>& records);  // one after the other

struct BglSubsection {
    int32_t RecordCount = 0;
    std::string Records{};  // the record bytes, one after the other
    std::optional<int32_t> SizeOverride{};
    std::optional<int32_t> OffsetOverride{};  // file offset of the first record
};

struct BglSection {
    int32_t Type = 0;
    std::vector<BglSubsection> Subsections{};
    std::optional<int32_t> OffsetOverride{};  // file offset of the subsection directory
    std::optional<int32_t> SubsectionCountOverride{};
};

struct BglFile {
    uint16_t Magic = 0x0201;
    std::optional<int32_t> SectionCountOverride{};
    std::vector<BglSection> Sections{};
};

// The 56-byte header, the section directory, every subsection directory in section
// order, then the records of every subsection in the same order.
std::string BuildBgl(const BglFile& file);

BglSubsection Subsection(const std::vector<BglRecord>& records);
// A section with one subsection per element of subsections.
BglSection Section(int32_t type, const std::vector<std::vector<BglRecord>>& subsections);

// Packed values as the records keep them. Latitude: 0 at the North Pole, 2^29 per
// 180 degrees southwards. Longitude: 0 at 180 west, 3 * 2^28 per 360 degrees eastwards.
// A code: up to five base-38 digits (0-9 as 2-11, A-Z as 12-37), the last character
// in the lowest digit; shifted puts the digits above 5 low bits.
int32_t PackLatitude(double degrees);
int32_t PackLongitude(double degrees);
int32_t PackCode(std::string_view code, bool shifted);

// One airport of a name list; the strings of each list are shared between entries.
struct NameListEntry {
    std::string Icao{};
    std::string AirportName{};
    std::string City{};
    std::string State{};
    std::string Country{};
    std::string Region{};
};
BglRecord NameList(const std::vector<NameListEntry>& entries);

// An airport record: id 3 is the FS2004 form, 0x3C the FSX form (4 bytes longer).
// The tower stands at the reference point. Altitudes here are in millimetres.
BglRecord Airport(uint16_t id, std::string_view icao, double latitude, double longitude,
                  int32_t altitudeMm, std::vector<BglRecord> subrecords = {});
BglRecord AirportName(std::string_view name);                               // subrecord 0x19
BglRecord Comm(uint16_t type, int32_t frequencyHz, std::string_view name);  // 0x12

// Designator codes: 0 none, 1 L, 2 R, 3 C. ILS idents are packed unshifted.
struct RunwayEnd {
    uint8_t Number = 0;
    uint8_t Designator = 0;
    std::string IlsIdent{};
};
BglRecord Runway(RunwayEnd primary, RunwayEnd secondary, double latitude, double longitude,
                 int32_t altitudeMm, float lengthM, float widthM, float heading,
                 uint16_t surface = 4);  // subrecord 4

// A VOR or ILS station (navType 4 is an ILS) with its subrecords.
BglRecord Navaid(uint8_t navType, std::string_view ident, double latitude, double longitude,
                 int32_t elevationMm, int32_t frequencyHz, std::vector<BglRecord> subrecords);
BglRecord Localizer(float heading);                                    // 0x14
BglRecord Glideslope(double latitude, double longitude, float pitch);  // 0x15
BglRecord Dme(double latitude, double longitude);                      // 0x16
BglRecord NavName(std::string_view name);                              // 0x19

// Marker type 0 inner, 1 middle, 2 outer.
BglRecord Marker(uint8_t type, double latitude, double longitude, int32_t elevationMm);

}  // namespace skl::test
