// The text form of the dump: one line per record, `Field=value` pairs, text values
// in quotes; the blocks of an airport are indented under it.
#include <string>
#include <string_view>

#include "skl/DumpPrinters.h"

namespace skl::dump {

namespace {

void PrintText(std::ostream& out, const RecordLayout& layout, const uint8_t* record,
               std::string_view indent) {
    out << indent << layout.Label;
    for (const Field& field : layout.Fields) {
        Value value = FieldValue(record, field);
        out << ' ' << field.Name << '=' << (value.IsText ? Quoted(value.Text) : value.Text);
    }
    out << '\n';
}

void Airports(std::span<const uint8_t> bytes, const AirportWalk& walk, std::ostream& out) {
    for (const AirportEntry& airport : walk.Airports) {
        PrintText(out, kAirport, &bytes[airport.Offset], "");
        for (std::size_t b = 0; b < kBlocks.size(); ++b) {
            const RecordLayout& layout = *kBlocks[b].Layout;
            for (std::size_t j = 0; j < airport.BlockCount[b]; ++j)
                PrintText(out, layout, &bytes[airport.BlockOffset[b] + j * layout.Size], "    ");
        }
    }
}

void Records(std::span<const uint8_t> bytes, const RecordLayout& layout, std::ostream& out) {
    std::size_t count = bytes.size() / layout.Size;
    for (std::size_t i = 0; i < count; ++i) PrintText(out, layout, &bytes[i * layout.Size], "");
}

void Table(const HeaderedLayout& table, int32_t header, std::span<const uint8_t> records,
           std::ostream& out) {
    out << table.HeaderName << '=' << std::to_string(header) << '\n';
    Records(records, *table.Records, out);
}

void EmptyTable(std::ostream&) {}

void UnknownLayout(std::size_t size, std::ostream& out) {
    if (size > 0) out << size << " bytes, record layout not known yet" << '\n';
}

}  // namespace

extern constexpr DumpPrinter kTextPrinter{Airports, Records, Table, EmptyTable, UnknownLayout};

}  // namespace skl::dump
