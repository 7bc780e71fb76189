// Prints the records of a database file: tells the kind from the name, finds the
// complete records by the layouts of DumpLayouts.cpp and hands them to the printer
// of the form asked for.
#include "skl/DumpFile.h"

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "platform/Win1252.h"
#include "skl/DumpLayouts.h"
#include "skl/DumpPrinters.h"

namespace skl {

namespace {

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

const dump::DumpPrinter& PrinterFor(DumpFormat format) {
    switch (format) {
        case DumpFormat::Csv:
            return dump::kCsvPrinter;
        case DumpFormat::Json:
            return dump::kJsonPrinter;
        case DumpFormat::Text:
            break;
    }
    return dump::kTextPrinter;
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
    const dump::DumpPrinter& printer = PrinterFor(format);
    std::size_t used = bytes.size();
    bool cut = false;
    if (*kind == DatabaseKind::Airport) {
        dump::AirportWalk walk = dump::WalkAirportFile(bytes);
        printer.Airports(bytes, walk, out);
        used = walk.Used;
        cut = walk.Cut;
    } else if (const dump::RecordLayout* layout = dump::FlatLayout(*kind)) {
        printer.Records(bytes, *layout, out);
        cut = bytes.size() % layout->Size != 0;
    } else if (auto table = dump::TableLayout(*kind)) {
        // An empty table file (its pass failed) has no header either.
        if (bytes.empty()) {
            printer.EmptyTable(out);
        } else if (bytes.size() < 4) {
            cut = true;
        } else {
            std::span<const uint8_t> records = bytes.subspan(4);
            printer.Table(*table, static_cast<int32_t>(dump::Load(bytes.data(), 4)), records, out);
            cut = records.size() % table->Records->Size != 0;
        }
    } else {
        printer.UnknownLayout(bytes.size(), out);
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
