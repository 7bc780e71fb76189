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

// Marker type 0 inner, 1 middle, 2 outer. A record of 28 bytes: header, one unused
// byte, the type, longitude, latitude, elevation and 8 unused bytes.
BglRecord Marker(uint8_t type, double latitude, double longitude, int32_t elevationMm);

struct Position {
    double Latitude = 0;
    double Longitude = 0;
};

// A parking spot. The packed word holds Name (bits 0-5), Type (8-11), Number (12-23)
// and the number of airline codes (24-31); Word, when given, is put in as it stands
// instead. Each airline code takes 4 bytes, cut or filled with NULs.
struct ParkingSpot {
    uint8_t Name = 0;
    uint8_t Type = 0;
    uint16_t Number = 0;
    float Radius = 0;
    float Heading = 0;
    double Latitude = 0;
    double Longitude = 0;
    std::vector<std::string> AirlineCodes{};
    std::optional<uint32_t> Word{};
};
// Subrecord 0x1B (FS2004 form, 20 bytes a spot) or 0x3D (FSX form, 36 bytes a spot:
// 16 unused bytes behind the heading): an i16 count, then the spots, each followed by
// its airline codes.
BglRecord Parking(bool fsx, const std::vector<ParkingSpot>& spots);

// Subrecord 0x1A: an i16 count, then 12 bytes a point: its kind, 3 unused bytes,
// longitude, latitude. The kind is 1 unless kinds gives one, point by point; the
// readers pass over it.
BglRecord TaxiPoints(const std::vector<Position>& points, const std::vector<uint8_t>& kinds = {});

// A taxi path between two points; End has 12 bits. EndHighNibble fills the high 4 bits
// of the byte that holds the top of End, which the readers ignore.
struct TaxiPathEntry {
    int16_t Start = 0;
    uint16_t End = 0;
    uint8_t Type = 1;
    uint8_t NameIndex = 0;
    uint8_t EndHighNibble = 0;
    // The 14 bytes behind the name index, which the readers pass over: when given,
    // put in (cut or filled with NULs) instead of a width of 22.5 and NULs.
    std::optional<std::string> Rest{};
};
// Subrecord 0x1C: an i16 count, then 20 bytes a path (i16 start, u8 low 8 bits of the
// end, u8 with the high 4 bits of the end in its low nibble, u8 type, u8 name index,
// 14 unused).
BglRecord TaxiPaths(const std::vector<TaxiPathEntry>& paths);

// Subrecord 0x1D: an i16 count, then 8 characters a name, cut or filled with NULs.
BglRecord TaxiNames(const std::vector<std::string>& names);

// Subrecord 0x37: the surface byte (which the readers pass over), an i16 count, 8 bytes
// a vertex (longitude, latitude), then the trailing bytes as given.
BglRecord Apron(const std::vector<Position>& vertices, std::string_view trailing = {},
                uint8_t surface = 0);

// Subrecord 0x33: the i16 flag word (bit 2 aprons, 5 runways, 7 taxiways), 2 unused
// bytes, 2 more in the FSX form, then extraBytes bytes of 0xEE.
BglRecord AirportDelete(uint16_t word, bool fsx, size_t extraBytes = 0);

}  // namespace skl::test
