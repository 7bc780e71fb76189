#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "skl/DumpFile.h"

// The record layouts of the nine database files as the dump reads them. Each
// record kind is described by a table of its fields (name, offset, type, width), so
// the text, csv and json printers are generic and the layout of a further file is
// one more table.
namespace skl::dump {

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

// The four table files start with one i32 of a meaning of their own.
struct HeaderedLayout {
    const char* HeaderName;
    const RecordLayout* Records;
};
std::optional<HeaderedLayout> TableLayout(DatabaseKind kind);

// The layout of each file that is a plain sequence of records; nullptr where
// the layout is not known yet. Airport.skl has its own walk.
const RecordLayout* FlatLayout(DatabaseKind kind);

// The fixed part of an airport in Airport.skl. Its first field numbers the airport.
extern const RecordLayout kAirport;

// The blocks behind an airport's fixed part, in the order they follow it (the
// counts stand in another order: runway, comm, ILS, parking).
struct Block {
    const char* Title;  // csv title and json key
    const RecordLayout* Layout;
    int CountOffset;  // of the count in the airport's fixed part
};
extern const std::array<Block, 4> kBlocks;

// Where the complete records of Airport.skl lie. An airport whose blocks are
// cut keeps the complete ones; a negative count counts as no records.
struct AirportEntry {
    std::size_t Offset = 0;
    std::array<std::size_t, 4> BlockOffset{};
    std::array<std::size_t, 4> BlockCount{};
};
struct AirportWalk {
    std::vector<AirportEntry> Airports;
    std::size_t Used = 0;  // bytes taken by complete records
    bool Cut = false;      // the file ends inside a record
};
AirportWalk WalkAirportFile(std::span<const uint8_t> bytes);

// A little-endian number of `width` bytes.
uint32_t Load(const uint8_t* bytes, int width);

struct Value {
    std::string Text;
    bool IsText = false;   // a text field: quoted in the text form
    bool IsNumber = true;  // a JSON number (a NaN or infinity is not)
};
// A field of a record as printed: numbers in decimal, floats as C's "%.7G" prints
// them; text without its trailing blanks and NULs, as UTF-8.
Value FieldValue(const uint8_t* record, const Field& field);

// A JSON string; the text form quotes its text values the same way.
std::string Quoted(std::string_view text);

}  // namespace skl::dump
