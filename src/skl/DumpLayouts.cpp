// The record layouts of the nine database files, how a field is read, and the walk
// over Airport.skl.
#include "skl/DumpLayouts.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>

#include "platform/Win1252.h"
#include "skl/AirportFile.h"

namespace skl::dump {

namespace {

// True when the fields follow one another without gap or overlap, each number
// has the width of its type and together they fill the record.
constexpr bool FillsRecord(std::span<const Field> fields, std::size_t size) {
    int next = 0;
    for (const Field& field : fields) {
        int typeWidth = field.Type == FieldType::U8     ? 1
                        : field.Type == FieldType::I16  ? 2
                        : field.Type == FieldType::Text ? field.Width
                                                        : 4;
        if (field.Offset != next || field.Width != typeWidth || field.Width <= 0) return false;
        next += field.Width;
    }
    return static_cast<std::size_t>(next) == size;
}

using enum FieldType;

constexpr Field kAirportFields[] = {
    {"AirportNumber", 0, I32, 4},    {"Icao", 4, Text, 5},           {"AirportName", 9, Text, 40},
    {"Country", 49, Text, 40},       {"State", 89, Text, 40},        {"City", 129, Text, 40},
    {"Latitude", 169, F32, 4},       {"Longitude", 173, F32, 4},     {"TowerLatitude", 177, F32, 4},
    {"TowerLongitude", 181, F32, 4}, {"AtisFrequency", 185, F32, 4}, {"AltitudeFeet", 189, I32, 4},
    {"BglFileName", 193, Text, 15},  {"RunwayCount", 208, I32, 4},   {"CommCount", 212, I32, 4},
    {"IlsCount", 216, I32, 4},       {"ParkingCount", 220, I32, 4},
};
constexpr Field kRunwayFields[] = {
    {"Icao", 0, Text, 5},
    {"PrimaryDesignator", 5, Text, 5},
    {"SecondaryDesignator", 10, Text, 5},
    {"Latitude", 15, F32, 4},
    {"Longitude", 19, F32, 4},
    {"Heading", 23, F32, 4},
    {"AltitudeFeet", 27, I32, 4},
    {"LengthFeet", 31, I16, 2},
    {"WidthFeet", 33, I16, 2},
    {"Surface", 35, I16, 2},
    {"PrimaryIlsIdent", 37, Text, 5},
    {"SecondaryIlsIdent", 42, Text, 5},
    {"RecordKind", 47, Text, 1},
};
constexpr Field kCommFields[] = {
    {"Icao", 0, Text, 5},      {"CommName", 5, Text, 40},    {"Latitude", 45, F32, 4},
    {"Longitude", 49, F32, 4}, {"FrequencyMhz", 53, F32, 4}, {"CommType", 57, U8, 1},
};
constexpr Field kParkingFields[] = {
    {"Icao", 0, Text, 5},          {"Latitude", 5, F32, 4},     {"Longitude", 9, F32, 4},
    {"ParkingNumber", 13, I32, 4}, {"ParkingType", 17, I32, 4}, {"ParkingName", 21, I32, 4},
    {"Heading", 25, F32, 4},
};
constexpr Field kIlsFields[] = {
    {"AirportIndex", 0, I32, 4},   {"Ident", 4, Text, 5},         {"Name", 9, Text, 40},
    {"Reserved", 49, Text, 5},     {"Latitude", 54, F32, 4},      {"Longitude", 58, F32, 4},
    {"GsLatitude", 62, F32, 4},    {"GsLongitude", 66, F32, 4},   {"GsPitch", 70, F32, 4},
    {"FrequencyMhz", 74, F32, 4},  {"Heading", 78, F32, 4},       {"AltitudeFeet", 82, I32, 4},
    {"BglFileName", 86, Text, 15}, {"RunwayIdent", 101, Text, 5}, {"Kind", 106, Text, 1},
};
static_assert(FillsRecord(kAirportFields, kAirportFixedSize));
static_assert(FillsRecord(kRunwayFields, kRunwaySize));
static_assert(FillsRecord(kCommFields, kCommSize));
static_assert(FillsRecord(kParkingFields, kParkingSize));
static_assert(FillsRecord(kIlsFields, kIlsSize));

}  // namespace

extern constexpr RecordLayout kAirport{"Airport", kAirportFields, kAirportFixedSize};

namespace {

constexpr RecordLayout kRunway{"Runway", kRunwayFields, kRunwaySize};
constexpr RecordLayout kComm{"Comm", kCommFields, kCommSize};
constexpr RecordLayout kParking{"Parking", kParkingFields, kParkingSize};
constexpr RecordLayout kIls{"Ils", kIlsFields, kIlsSize};

constexpr Field kTaxiFields[] = {
    {"StartLatitude", 0, F32, 4}, {"StartLongitude", 4, F32, 4}, {"EndLatitude", 8, F32, 4},
    {"EndLongitude", 12, F32, 4}, {"TaxiName", 16, Text, 8},     {"NameIndex", 24, U8, 1},
    {"PathType", 25, U8, 1},      {"Icao", 26, Text, 5},
};
constexpr Field kPolyFields[] = {
    {"VertexKind", 0, Text, 1}, {"PolygonNumber", 1, I32, 4}, {"Latitude", 5, F32, 4},
    {"Longitude", 9, F32, 4},   {"Zero", 13, I16, 2},         {"PolyTag", 15, Text, 1},
};
constexpr Field kMarkerFields[] = {
    {"MarkerKind", 0, Text, 2},
    {"Latitude", 2, F32, 4},
    {"Longitude", 6, F32, 4},
    {"AltitudeFeet", 10, I32, 4},
};
constexpr Field kRegionFields[] = {{"Region", 0, Text, 30}};
constexpr Field kCountryFields[] = {{"Country", 0, Text, 40}, {"Region", 40, Text, 30}};
constexpr Field kStateFields[] = {{"State", 0, Text, 40}, {"Country", 40, Text, 40}};
constexpr Field kCityFields[] = {
    {"City", 0, Text, 40}, {"State", 40, Text, 40}, {"Country", 80, Text, 40}};
static_assert(FillsRecord(kTaxiFields, 31));
static_assert(FillsRecord(kPolyFields, 16));
static_assert(FillsRecord(kMarkerFields, 14));
static_assert(FillsRecord(kCountryFields, 70));
static_assert(FillsRecord(kStateFields, 80));
static_assert(FillsRecord(kCityFields, 120));
constexpr RecordLayout kTaxi{"Taxi", kTaxiFields, 31};
constexpr RecordLayout kPoly{"Poly", kPolyFields, 16};
constexpr RecordLayout kMarker{"Marker", kMarkerFields, 14};
constexpr RecordLayout kRegion{"Region", kRegionFields, 30};
constexpr RecordLayout kCountry{"Country", kCountryFields, 70};
constexpr RecordLayout kState{"State", kStateFields, 80};
constexpr RecordLayout kCity{"City", kCityFields, 120};

}  // namespace

std::optional<HeaderedLayout> TableLayout(DatabaseKind kind) {
    switch (kind) {
        case DatabaseKind::Region:
            return HeaderedLayout{"RecordCount", &kRegion};
        case DatabaseKind::Country:
            return HeaderedLayout{"LastIndex", &kCountry};
        case DatabaseKind::State:
            return HeaderedLayout{"LastPairIndex", &kState};
        case DatabaseKind::City:
            return HeaderedLayout{"LastAirportIndex", &kCity};
        default:
            return std::nullopt;
    }
}

extern constexpr std::array<Block, 4> kBlocks{{
    {"runways", &kRunway, 208},
    {"comms", &kComm, 212},
    {"parkings", &kParking, 220},
    {"ils", &kIls, 216},
}};

const RecordLayout* FlatLayout(DatabaseKind kind) {
    switch (kind) {
        case DatabaseKind::Ils:
            return &kIls;
        case DatabaseKind::Taxi:
            return &kTaxi;
        case DatabaseKind::Poly:
            return &kPoly;
        case DatabaseKind::Marker:
            return &kMarker;
        default:
            return nullptr;
    }
}

uint32_t Load(const uint8_t* bytes, int width) {
    uint32_t value = 0;
    for (int i = 0; i < width; ++i) value |= static_cast<uint32_t>(bytes[i]) << (8 * i);
    return value;
}

Value FieldValue(const uint8_t* record, const Field& field) {
    const uint8_t* at = record + field.Offset;
    switch (field.Type) {
        case U8:
            return {std::to_string(at[0])};
        case I16:
            return {std::to_string(static_cast<int16_t>(Load(at, 2)))};
        case I32:
            return {std::to_string(static_cast<int32_t>(Load(at, 4)))};
        case F32: {
            float value = std::bit_cast<float>(Load(at, 4));
            char text[32];
            std::snprintf(text, sizeof text, "%.7G", static_cast<double>(value));
            return {text, false, std::isfinite(value)};
        }
        case Text: {
            std::string_view text(reinterpret_cast<const char*>(at), field.Width);
            while (!text.empty() && (text.back() == ' ' || text.back() == '\0'))
                text.remove_suffix(1);
            return {Win1252ToUtf8(text), true, false};
        }
    }
    return {};
}

std::string Quoted(std::string_view text) {
    std::string result = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (static_cast<uint8_t>(c) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04X", static_cast<unsigned>(c));
            result += escape;
        } else {
            result += c;
        }
    }
    return result + '"';
}

AirportWalk WalkAirportFile(std::span<const uint8_t> bytes) {
    AirportWalk walk;
    if (bytes.size() < 4) return {{}, 0, true};  // not even the header
    int64_t count = static_cast<int64_t>(static_cast<int32_t>(Load(bytes.data(), 4))) + 1;
    std::size_t at = 4;
    for (int64_t i = 0; i < count && !walk.Cut; ++i) {
        if (bytes.size() - at < kAirportFixedSize) {
            walk.Cut = true;
            break;
        }
        AirportEntry entry{at};
        at += kAirportFixedSize;
        for (std::size_t b = 0; b < kBlocks.size() && !walk.Cut; ++b) {
            const uint8_t* countField = &bytes[entry.Offset + kBlocks[b].CountOffset];
            auto wanted =
                static_cast<std::size_t>(std::max(static_cast<int32_t>(Load(countField, 4)), 0));
            std::size_t complete = std::min(wanted, (bytes.size() - at) / kBlocks[b].Layout->Size);
            entry.BlockOffset[b] = at;
            entry.BlockCount[b] = complete;
            at += complete * kBlocks[b].Layout->Size;
            walk.Cut = complete < wanted;
        }
        walk.Airports.push_back(entry);
    }
    walk.Used = at;
    return walk;
}

}  // namespace skl::dump
