// The json form of the dump: an array of records, one object a line; an airport
// holds the arrays "runways", "comms", "parkings" and "ils". A table file is an
// object of its header value and its "records".
#include <sstream>
#include <string>

#include "skl/DumpPrinters.h"

namespace skl::dump {

namespace {

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

void Airports(std::span<const uint8_t> bytes, const AirportWalk& walk, std::ostream& out) {
    out << '[';
    for (std::size_t i = 0; i < walk.Airports.size(); ++i) {
        const AirportEntry& airport = walk.Airports[i];
        out << (i > 0 ? ",\n  {" : "\n  {");
        PrintJsonMembers(out, kAirport, &bytes[airport.Offset]);
        for (std::size_t b = 0; b < kBlocks.size(); ++b) {
            const RecordLayout& layout = *kBlocks[b].Layout;
            out << ",\n   \"" << kBlocks[b].Title << "\": [";
            for (std::size_t j = 0; j < airport.BlockCount[b]; ++j) {
                out << (j > 0 ? ",\n    {" : "\n    {");
                PrintJsonMembers(out, layout, &bytes[airport.BlockOffset[b] + j * layout.Size]);
                out << '}';
            }
            out << (airport.BlockCount[b] > 0 ? "\n   ]" : "]");
        }
        out << '}';
    }
    out << (walk.Airports.empty() ? "]\n" : "\n]\n");
}

void Records(std::span<const uint8_t> bytes, const RecordLayout& layout, std::ostream& out) {
    std::size_t count = bytes.size() / layout.Size;
    out << '[';
    for (std::size_t i = 0; i < count; ++i) {
        out << (i > 0 ? ",\n  {" : "\n  {");
        PrintJsonMembers(out, layout, &bytes[i * layout.Size]);
        out << '}';
    }
    out << (count == 0 ? "]\n" : "\n]\n");
}

// The records' array inside the object, without the line end behind it.
void Table(const HeaderedLayout& table, int32_t header, std::span<const uint8_t> records,
           std::ostream& out) {
    out << "{\"" << table.HeaderName << "\": " << std::to_string(header) << ", \"records\": ";
    std::ostringstream body;
    Records(records, *table.Records, body);
    std::string text = body.str();
    if (!text.empty() && text.back() == '\n') text.pop_back();
    out << text << "}\n";
}

void EmptyTable(std::ostream& out) {
    out << "[]\n";
}

void UnknownLayout(std::size_t size, std::ostream& out) {
    if (size == 0) out << "[]\n";
    if (size > 0) out << "{\"size\": " << size << ", \"note\": \"record layout not known yet\"}\n";
}

}  // namespace

extern constexpr DumpPrinter kJsonPrinter{Airports, Records, Table, EmptyTable, UnknownLayout};

}  // namespace skl::dump
