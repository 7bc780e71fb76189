// The csv form of the dump: one table per record kind with a header row. In
// Airport.skl the block tables follow the airports, each after a blank line and a
// "# runways" style title, with the airport's number as first column.
#include <string>
#include <string_view>

#include "skl/DumpPrinters.h"

namespace skl::dump {

namespace {

std::string CsvCell(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string result = "\"";
    for (char c : text) result += c == '"' ? std::string("\"\"") : std::string(1, c);
    return result + '"';
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

void Airports(std::span<const uint8_t> bytes, const AirportWalk& walk, std::ostream& out) {
    const Field& numberField = kAirport.Fields[0];
    PrintCsvHeader(out, kAirport, "");
    for (const AirportEntry& airport : walk.Airports)
        PrintCsvRow(out, kAirport, &bytes[airport.Offset], "");
    for (std::size_t b = 0; b < kBlocks.size(); ++b) {
        const RecordLayout& layout = *kBlocks[b].Layout;
        out << "\n# " << kBlocks[b].Title << '\n';
        PrintCsvHeader(out, layout, numberField.Name);
        for (const AirportEntry& airport : walk.Airports) {
            std::string number = FieldValue(&bytes[airport.Offset], numberField).Text;
            for (std::size_t j = 0; j < airport.BlockCount[b]; ++j)
                PrintCsvRow(out, layout, &bytes[airport.BlockOffset[b] + j * layout.Size], number);
        }
    }
}

void Records(std::span<const uint8_t> bytes, const RecordLayout& layout, std::ostream& out) {
    std::size_t count = bytes.size() / layout.Size;
    PrintCsvHeader(out, layout, "");
    for (std::size_t i = 0; i < count; ++i) PrintCsvRow(out, layout, &bytes[i * layout.Size], "");
}

void Table(const HeaderedLayout& table, int32_t header, std::span<const uint8_t> records,
           std::ostream& out) {
    out << "# " << table.HeaderName << '=' << std::to_string(header) << '\n';
    Records(records, *table.Records, out);
}

void EmptyTable(std::ostream&) {}

// No header row: there are no columns to name.
void UnknownLayout(std::size_t size, std::ostream& out) {
    if (size > 0) out << "# " << size << " bytes, record layout not known yet" << '\n';
}

}  // namespace

extern constexpr DumpPrinter kCsvPrinter{Airports, Records, Table, EmptyTable, UnknownLayout};

}  // namespace skl::dump
