// benchfloor: the cost of the bytes an update needs, without the work on them.
//
//   benchfloor SIMULATOR_FOLDER OUTPUT_FOLDER BYTES
//
// Finds every *.bgl file (any case) below the simulator folder; of each it reads the
// 56-byte header and the section directory, and of the sections of the four kinds the
// update reads (name lists, airports, VOR/ILS stations, markers) the subsection
// directory and every byte of every subsection, summing the bytes so that none is
// skipped. Then it writes BYTES bytes spread over the nine database file names in
// OUTPUT_FOLDER, and prints what it read and the checksum. Plain POSIX reads and
// writes, no buffering of our own beyond one buffer reused for every subsection.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int64_t kHeaderSize = 56;
constexpr int64_t kSectionEntrySize = 20;
constexpr int64_t kSubsectionEntrySize = 16;
constexpr uint16_t kMagic = 0x0201;
constexpr int32_t kReadKinds[] = {39, 3, 19, 24};
constexpr size_t kWriteChunk = 64 * 1024;
constexpr const char* kOutputNames[] = {"Taxi.skl",  "Poly.skl",    "Marker.skl",
                                        "Ils.skl",   "Airport.skl", "Region.skl",
                                        "State.skl", "Country.skl", "City.skl"};

struct Counts {
    int64_t Files = 0;
    int64_t Subsections = 0;
    int64_t BytesRead = 0;
    uint64_t Checksum = 0;
};

int32_t I32At(const std::vector<unsigned char>& bytes, size_t offset) {
    const uint32_t value = uint32_t{bytes[offset]} | uint32_t{bytes[offset + 1]} << 8 |
                           uint32_t{bytes[offset + 2]} << 16 | uint32_t{bytes[offset + 3]} << 24;
    return static_cast<int32_t>(value);
}

// Reads up to size bytes at offset into buffer; fewer at the end of the file.
size_t ReadAt(int fd, std::vector<unsigned char>& buffer, int64_t offset, int64_t size,
              Counts& counts) {
    if (offset < 0 || size <= 0) return 0;
    if (buffer.size() < static_cast<size_t>(size)) buffer.resize(static_cast<size_t>(size));
    size_t got = 0;
    while (got < static_cast<size_t>(size)) {
        const ssize_t n = ::pread(fd, buffer.data() + got, static_cast<size_t>(size) - got,
                                  static_cast<off_t>(offset + static_cast<int64_t>(got)));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        got += static_cast<size_t>(n);
    }
    counts.BytesRead += static_cast<int64_t>(got);
    return got;
}

uint64_t Sum(const std::vector<unsigned char>& buffer, size_t size) {
    uint64_t sum = 0;
    for (size_t i = 0; i < size; ++i) sum += buffer[i];
    return sum;
}

void ReadBgl(const fs::path& path, Counts& counts, std::vector<unsigned char>& buffer) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return;
    ++counts.Files;
    std::vector<unsigned char> header;
    std::vector<unsigned char> sections;
    std::vector<unsigned char> subsections;
    if (ReadAt(fd, header, 0, kHeaderSize, counts) == kHeaderSize &&
        (header[0] | header[1] << 8) == kMagic) {
        const int32_t sectionCount = std::max(0, I32At(header, 20));
        const size_t sectionBytes =
            ReadAt(fd, sections, kHeaderSize, int64_t{sectionCount} * kSectionEntrySize, counts);
        for (size_t s = 0; s + kSectionEntrySize <= sectionBytes; s += kSectionEntrySize) {
            const int32_t type = I32At(sections, s);
            if (std::find(std::begin(kReadKinds), std::end(kReadKinds), type) ==
                std::end(kReadKinds))
                continue;
            const int32_t count = std::max(0, I32At(sections, s + 8));
            const size_t directoryBytes = ReadAt(fd, subsections, I32At(sections, s + 12),
                                                 int64_t{count} * kSubsectionEntrySize, counts);
            for (size_t e = 0; e + kSubsectionEntrySize <= directoryBytes;
                 e += kSubsectionEntrySize) {
                const size_t got = ReadAt(fd, buffer, I32At(subsections, e + 8),
                                          I32At(subsections, e + 12), counts);
                counts.Checksum += Sum(buffer, got);
                ++counts.Subsections;
            }
        }
    }
    ::close(fd);
}

bool IsBgl(const fs::path& path) {
    std::string extension = path.extension().string();
    for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return extension == ".bgl";
}

void WriteAll(int fd, const std::vector<unsigned char>& chunk, int64_t bytes,
              const std::string& name) {
    while (bytes > 0) {
        const size_t size = static_cast<size_t>(std::min<int64_t>(bytes, chunk.size()));
        const ssize_t n = ::write(fd, chunk.data(), size);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) throw std::system_error(errno, std::generic_category(), "write " + name);
        bytes -= n;
    }
}

void WriteOutputs(const fs::path& folder, int64_t bytes, uint64_t checksum) {
    fs::create_directories(folder);
    std::vector<unsigned char> chunk(kWriteChunk);
    for (size_t i = 0; i < chunk.size(); ++i) chunk[i] = static_cast<unsigned char>(checksum + i);
    const int64_t fileCount = static_cast<int64_t>(std::size(kOutputNames));
    for (int64_t i = 0; i < fileCount; ++i) {
        const std::string name = (folder / kOutputNames[i]).string();
        const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        if (fd < 0) throw std::system_error(errno, std::generic_category(), "create " + name);
        // BYTES/9 each; the last file takes the remainder too.
        WriteAll(fd, chunk, bytes / fileCount + (i == fileCount - 1 ? bytes % fileCount : 0), name);
        if (::close(fd) != 0) throw std::system_error(errno, std::generic_category(), name);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: benchfloor SIMULATOR_FOLDER OUTPUT_FOLDER BYTES\n");
        return 2;
    }
    char* end = nullptr;
    const long long bytes = std::strtoll(argv[3], &end, 10);
    if (end == argv[3] || *end != '\0' || bytes < 0) {
        std::fprintf(stderr, "benchfloor: BYTES must be a number of bytes\n");
        return 2;
    }
    try {
        Counts counts;
        std::vector<unsigned char> buffer;
        const auto options = fs::directory_options::follow_directory_symlink |
                             fs::directory_options::skip_permission_denied;
        for (const auto& entry : fs::recursive_directory_iterator(argv[1], options)) {
            std::error_code ec;
            if (entry.is_regular_file(ec) && IsBgl(entry.path()))
                ReadBgl(entry.path(), counts, buffer);
        }
        WriteOutputs(argv[2], bytes, counts.Checksum);
        std::printf(
            "benchfloor: %lld BGL files, %lld subsections, %lld bytes read, %lld bytes "
            "written, checksum %llu\n",
            static_cast<long long>(counts.Files), static_cast<long long>(counts.Subsections),
            static_cast<long long>(counts.BytesRead), bytes,
            static_cast<unsigned long long>(counts.Checksum));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "benchfloor: %s\n", error.what());
        return 1;
    }
    return 0;
}
