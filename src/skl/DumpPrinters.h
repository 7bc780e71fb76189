#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <span>

#include "skl/DumpLayouts.h"

// The three forms of the dump, one printer each in a file of its own (text, csv,
// json). DumpFile picks the records out of the file; a printer only prints them.
namespace skl::dump {

struct DumpPrinter {
    // Airport.skl: the complete airports of the walk, each with its blocks.
    void (*Airports)(std::span<const uint8_t> bytes, const AirportWalk& walk, std::ostream& out);
    // The complete records of a file that is a plain sequence of them.
    void (*Records)(std::span<const uint8_t> bytes, const RecordLayout& layout, std::ostream& out);
    // A table file: its header value, then the complete records behind it.
    void (*Table)(const HeaderedLayout& table, int32_t header, std::span<const uint8_t> records,
                  std::ostream& out);
    // A table file without a byte (its pass failed), so without a header either.
    void (*EmptyTable)(std::ostream& out);
    // A file whose layout is not known yet: its size, when it has any bytes.
    void (*UnknownLayout)(std::size_t size, std::ostream& out);
};

extern const DumpPrinter kTextPrinter;  // DumpTextPrinter.cpp
extern const DumpPrinter kCsvPrinter;   // DumpCsvPrinter.cpp
extern const DumpPrinter kJsonPrinter;  // DumpJsonPrinter.cpp

}  // namespace skl::dump
