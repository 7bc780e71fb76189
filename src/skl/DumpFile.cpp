// Prints the records of the database files. Each record kind is described by a
// table of its fields (name, offset, type, width), so the text, csv and json
// printers are generic and the layout of a further file is one more table.
#include "skl/DumpFile.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <optional>
#include <sstream>
#include <vector>

#include "platform/Win1252.h"
#include "skl/AirportFile.h"

namespace skl {
namespace {

enum class FieldType { U8, I16, I32, F32, Text };

struct Field {
    const char* Name;
    int Offset;
    FieldType Type;
    int Width;  // bytes; the number of characters of a text field
};

struct RecordLayout {
    const char* Label;  // names the record in the text form
    std::span<const Field> Fields;
    std::size_t Size;
};

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

constexpr RecordLayout kAirport{"Airport", kAirportFields, kAirportFixedSize};
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

// The four table files start with one i32 of a meaning of their own.
struct HeaderedLayout {
    const char* HeaderName;
    const RecordLayout* Records;
};
std::optional<HeaderedLayout> TableLayout(DatabaseKind kind) {
    switch (kind) {
        case DatabaseKind::Region: return HeaderedLayout{"RecordCount", &kRegion};
        case DatabaseKind::Country: return HeaderedLayout{"LastIndex", &kCountry};
        case DatabaseKind::State: return HeaderedLayout{"LastPairIndex", &kState};
        case DatabaseKind::City: return HeaderedLayout{"LastAirportIndex", &kCity};
        default: return std::nullopt;
    }
}

// The blocks behind an airport's fixed part, in the order they follow it (the
// counts stand in another order: runway, comm, ILS, parking).
struct Block {
    const char* Title;  // csv title and json key
    const RecordLayout* Layout;
    int CountOffset;  // of the count in the airport's fixed part
};
constexpr std::array<Block, 4> kBlocks{{
    {"runways", &kRunway, 208},
    {"comms", &kComm, 212},
    {"parkings", &kParking, 220},
    {"ils", &kIls, 216},
}};

// The layout of each file that is a plain sequence of records; nullptr where
// the layout is not known yet. Airport.skl has its own walk.
const RecordLayout* FlatLayout(DatabaseKind kind) {
    switch (kind) {
        case DatabaseKind::Ils: return &kIls;
        case DatabaseKind::Taxi: return &kTaxi;
        case DatabaseKind::Poly: return &kPoly;
        case DatabaseKind::Marker: return &kMarker;
        default: return nullptr;
    }
}

constexpr std::array<std::pair<const char*, DatabaseKind>, 9> kStems{{
    {"airport", DatabaseKind::Airport},
    {"ils", DatabaseKind::Ils},
    {"taxi", DatabaseKind::Taxi},
    {"poly", DatabaseKind::Poly},
    {"marker", DatabaseKind::Marker},
    {"region", DatabaseKind::Region},
    {"state", DatabaseKind::State},
    {"country", DatabaseKind::Country},
    {"city", DatabaseKind::City},
}};

uint32_t Load(const uint8_t* bytes, int width) {
    uint32_t value = 0;
    for (int i = 0; i < width; ++i) value |= static_cast<uint32_t>(bytes[i]) << (8 * i);
    return value;
}

struct Value {
    std::string Text;
    bool IsText = false;   // a text field: quoted in the text form
    bool IsNumber = true;  // a JSON number (a NaN or infinity is not)
};

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

// A JSON string; the text form quotes its text values the same way.
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

std::string CsvCell(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string result = "\"";
    for (char c : text) result += c == '"' ? std::string("\"\"") : std::string(1, c);
    return result + '"';
}

void PrintText(std::ostream& out, const RecordLayout& layout, const uint8_t* record,
               std::string_view indent) {
    out << indent << layout.Label;
    for (const Field& field : layout.Fields) {
        Value value = FieldValue(record, field);
        out << ' ' << field.Name << '=' << (value.IsText ? Quoted(value.Text) : value.Text);
    }
    out << '\n';
}

// A header row; `firstColumn`, when not empty, names a column in front of the fields.
void PrintCsvHeader(std::ostream& out, const RecordLayout& layout, std::string_view firstColumn) {
    out << firstColumn;
    for (std::size_t i = 0; i < layout.Fields.size(); ++i)
        out << (i > 0 || !firstColumn.empty() ? "," : "") << layout.Fields[i].Name;
    out << '\n';
}

void PrintCsvRow(std::ostream& out, const RecordLayout& layout, const uint8_t* record,
                 std::string_view firstCell) {
    out << firstCell;
    for (std::size_t i = 0; i < layout.Fields.size(); ++i)
        out << (i > 0 || !firstCell.empty() ? "," : "")
            << CsvCell(FieldValue(record, layout.Fields[i]).Text);
    out << '\n';
}

// The members of a JSON object, without its braces.
void PrintJsonMembers(std::ostream& out, const RecordLayout& layout, const uint8_t* record) {
    const char* separator = "";
    for (const Field& field : layout.Fields) {
        Value value = FieldValue(record, field);
        out << separator << '"' << field.Name
            << "\": " << (value.IsNumber ? value.Text : Quoted(value.Text));
        separator = ", ";
    }
}

// Where the complete records of Airport.skl lie. An airport whose blocks are
// cut keeps the complete ones; a negative count counts as no records.
struct AirportEntry {
    std::size_t Offset = 0;
    std::array<std::size_t, 4> BlockOffset{};
    std::array<std::size_t, 4> BlockCount{};
};
struct Walk {
    std::vector<AirportEntry> Airports;
    std::size_t Used = 0;  // bytes taken by complete records
    bool Cut = false;      // the file ends inside a record
};

Walk WalkAirportFile(std::span<const uint8_t> bytes) {
    Walk walk;
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

void DumpAirports(std::span<const uint8_t> bytes, const Walk& walk, DumpFormat format,
                  std::ostream& out) {
    auto block = [&](const AirportEntry& airport, std::size_t b, std::size_t j) {
        return &bytes[airport.BlockOffset[b] + j * kBlocks[b].Layout->Size];
    };
    if (format == DumpFormat::Text) {
        for (const AirportEntry& airport : walk.Airports) {
            PrintText(out, kAirport, &bytes[airport.Offset], "");
            for (std::size_t b = 0; b < kBlocks.size(); ++b)
                for (std::size_t j = 0; j < airport.BlockCount[b]; ++j)
                    PrintText(out, *kBlocks[b].Layout, block(airport, b, j), "    ");
        }
    } else if (format == DumpFormat::Csv) {
        PrintCsvHeader(out, kAirport, "");
        for (const AirportEntry& airport : walk.Airports)
            PrintCsvRow(out, kAirport, &bytes[airport.Offset], "");
        for (std::size_t b = 0; b < kBlocks.size(); ++b) {
            out << "\n# " << kBlocks[b].Title << '\n';
            PrintCsvHeader(out, *kBlocks[b].Layout, kAirportFields[0].Name);
            for (const AirportEntry& airport : walk.Airports) {
                std::string number = FieldValue(&bytes[airport.Offset], kAirportFields[0]).Text;
                for (std::size_t j = 0; j < airport.BlockCount[b]; ++j)
                    PrintCsvRow(out, *kBlocks[b].Layout, block(airport, b, j), number);
            }
        }
    } else {
        out << '[';
        for (std::size_t i = 0; i < walk.Airports.size(); ++i) {
            const AirportEntry& airport = walk.Airports[i];
            out << (i > 0 ? ",\n  {" : "\n  {");
            PrintJsonMembers(out, kAirport, &bytes[airport.Offset]);
            for (std::size_t b = 0; b < kBlocks.size(); ++b) {
                out << ",\n   \"" << kBlocks[b].Title << "\": [";
                for (std::size_t j = 0; j < airport.BlockCount[b]; ++j) {
                    out << (j > 0 ? ",\n    {" : "\n    {");
                    PrintJsonMembers(out, *kBlocks[b].Layout, block(airport, b, j));
                    out << '}';
                }
                out << (airport.BlockCount[b] > 0 ? "\n   ]" : "]");
            }
            out << '}';
        }
        out << (walk.Airports.empty() ? "]\n" : "\n]\n");
    }
}

void DumpRecords(std::span<const uint8_t> bytes, const RecordLayout& layout, DumpFormat format,
                 std::ostream& out) {
    std::size_t count = bytes.size() / layout.Size;
    if (format == DumpFormat::Csv) PrintCsvHeader(out, layout, "");
    if (format == DumpFormat::Json) out << '[';
    for (std::size_t i = 0; i < count; ++i) {
        const uint8_t* record = &bytes[i * layout.Size];
        if (format == DumpFormat::Text) PrintText(out, layout, record, "");
        if (format == DumpFormat::Csv) PrintCsvRow(out, layout, record, "");
        if (format == DumpFormat::Json) {
            out << (i > 0 ? ",\n  {" : "\n  {");
            PrintJsonMembers(out, layout, record);
            out << '}';
        }
    }
    if (format == DumpFormat::Json) out << (count == 0 ? "]\n" : "\n]\n");
}

// A file whose layout is not known yet: nothing when it is empty (json: an
// empty array; csv: no header, there being no columns to name), else its size.
void DumpUnknownLayout(std::size_t size, DumpFormat format, std::ostream& out) {
    const char* note = " bytes, record layout not known yet";
    if (format == DumpFormat::Json && size == 0) out << "[]\n";
    if (format == DumpFormat::Json && size > 0)
        out << "{\"size\": " << size << ", \"note\": \"record layout not known yet\"}\n";
    if (format == DumpFormat::Text && size > 0) out << size << note << '\n';
    if (format == DumpFormat::Csv && size > 0) out << "# " << size << note << '\n';
}

}  // namespace

std::optional<DatabaseKind> KindFromFileName(std::string_view name) {
    name = name.substr(name.find_last_of("/\\") + 1);
    std::string lower = Lower1252(name);
    for (const auto& [stem, kind] : kStems) {
        std::string_view rest(lower);
        if (!rest.starts_with(stem)) continue;
        rest.remove_prefix(std::string_view(stem).size());
        if (rest == ".skl" || rest == "skl.old") return kind;
    }
    return std::nullopt;
}

std::optional<DumpFormat> DumpFormatFromName(std::string_view name) {
    if (name == "text") return DumpFormat::Text;
    if (name == "csv") return DumpFormat::Csv;
    if (name == "json") return DumpFormat::Json;
    return std::nullopt;
}

DumpOutcome DumpFile(std::span<const uint8_t> bytes, std::string_view fileName, DumpFormat format,
                     std::ostream& out) {
    std::optional<DatabaseKind> kind = KindFromFileName(fileName);
    if (!kind) return {2, "cannot tell the kind of " + std::string(fileName) + " from its name"};
    std::size_t used = bytes.size();
    bool cut = false;
    if (*kind == DatabaseKind::Airport) {
        Walk walk = WalkAirportFile(bytes);
        DumpAirports(bytes, walk, format, out);
        used = walk.Used;
        cut = walk.Cut;
    } else if (const RecordLayout* layout = FlatLayout(*kind)) {
        DumpRecords(bytes, *layout, format, out);
        cut = bytes.size() % layout->Size != 0;
    } else if (auto table = TableLayout(*kind)) {
        // An empty table file (its pass failed) has no header either.
        if (bytes.empty()) {
            if (format == DumpFormat::Json) out << "[]\n";
        } else if (bytes.size() < 4) {
            cut = true;
        } else {
            std::string header = std::to_string(static_cast<int32_t>(Load(bytes.data(), 4)));
            if (format == DumpFormat::Text) out << table->HeaderName << '=' << header << '\n';
            if (format == DumpFormat::Csv) out << "# " << table->HeaderName << '=' << header << '\n';
            if (format == DumpFormat::Json) out << "{\"" << table->HeaderName << "\": " << header << ", \"records\": ";
            std::span<const uint8_t> records = bytes.subspan(4);
            std::ostringstream body;
            DumpRecords(records, *table->Records, format, format == DumpFormat::Json ? body : out);
            if (format == DumpFormat::Json) {
                std::string text = body.str();
                if (!text.empty() && text.back() == '\n') text.pop_back();
                out << text << "}\n";
            }
            cut = records.size() % table->Records->Size != 0;
        }
    } else {
        DumpUnknownLayout(bytes.size(), format, out);
    }
    if (cut)
        return {1, std::string(fileName) + " ends inside a record at byte " +
                       std::to_string(bytes.size())};
    if (used < bytes.size())
        return {1, std::string(fileName) + " holds " + std::to_string(bytes.size() - used) +
                       " bytes behind its last record"};
    return {};
}

}  // namespace skl
