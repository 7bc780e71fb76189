#include "cli/DumpCommand.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "skl/DumpFile.h"

namespace skl::cli {

namespace {

constexpr int kExitBadArguments = 2;

void Error(const std::string& text) {
    std::cerr << "skldbm: " << text << '\n';
}

}  // namespace

int RunDumpCommand(const std::string& file, const std::string& format) {
    std::optional<DumpFormat> dumpFormat = DumpFormatFromName(format);
    if (!dumpFormat) {
        Error("unknown format " + format + " (text, csv or json)");
        return kExitBadArguments;
    }
    // The kind is told before the file is touched, so a wrong name is reported as such.
    if (!KindFromFileName(file)) {
        Error("cannot tell the kind of " + file + " from its name");
        return kExitBadArguments;
    }
    std::error_code ec;
    if (std::filesystem::is_directory(file, ec)) {
        Error("cannot read " + file + ": " + std::strerror(EISDIR));
        return kExitBadArguments;
    }
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        Error("cannot read " + file + ": " + std::strerror(errno));
        return kExitBadArguments;
    }
    std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in),
                               std::istreambuf_iterator<char>()};
    if (in.bad()) {
        Error("cannot read " + file);
        return kExitBadArguments;
    }
    DumpOutcome outcome = DumpFile(bytes, file, *dumpFormat, std::cout);
    std::cout.flush();
    if (!outcome.Error.empty()) Error(outcome.Error);
    return outcome.ExitStatus;
}

}  // namespace skl::cli
