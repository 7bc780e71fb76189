#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace skl {

// The nine database files of a set.
enum class DatabaseKind { Airport, Ils, Taxi, Poly, Marker, Region, State, Country, City };

enum class DumpFormat { Text, Csv, Json };

// The kind of a database file from its name, live ("Airport.skl") or backup
// ("Airportskl.old"), compared case-insensitively. Folders in front of the name
// (either slash) are passed over.
std::optional<DatabaseKind> KindFromFileName(std::string_view name);

// "text", "csv" or "json".
std::optional<DumpFormat> DumpFormatFromName(std::string_view name);

// How a dump ended: ExitStatus 0 with an empty Error; 1 when the file ends
// inside a record or holds bytes behind its last record (what is complete has
// been printed); 2 when the kind cannot be told from the name (nothing printed).
// Error is one line without the program's name and without a line end.
struct DumpOutcome {
    int ExitStatus = 0;
    std::string Error;
};

// Prints the records of a database file. `fileName` gives the kind and is the
// name used in the error line.
//
// Text: one line per record, `Field=value` pairs, text values in quotes; the
// runways, comms, parking spots and ILS records of an airport are indented
// under it. Csv: one table per record kind with a header row; in Airport.skl
// the block tables follow the airports, each after a blank line and a
// "# runways" style title, with the airport's number as first column. Json: an
// array of records; an airport holds the arrays "runways", "comms", "parkings"
// and "ils". Text fields lose their trailing blanks and NULs and are shown as
// UTF-8; floats are printed as C's "%.7G" prints them.
DumpOutcome DumpFile(std::span<const uint8_t> bytes, std::string_view fileName, DumpFormat format,
                     std::ostream& out);

}  // namespace skl
