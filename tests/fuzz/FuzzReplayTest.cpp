// Replays inputs through the fuzz entry points: the real files, the builder's seeds
// cut short and with bytes flipped, and every input that once crashed or hung a
// reader under the fuzzer. An input passes when the entry point returns without
// an exception; a crash or a hang fails the test program.
#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <string>
#include <vector>

#include "fuzz/FuzzTargets.h"
#include "skl/ByteWriter.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

namespace fs = std::filesystem;

void Replay(const std::string& bytes, const std::string& what) {
    const auto* data = reinterpret_cast<const uint8_t*>(bytes.data());
    EXPECT_NO_THROW(fuzz::FuzzBglWalk(data, bytes.size())) << what;
    EXPECT_NO_THROW(fuzz::FuzzSceneryCfg(data, bytes.size())) << what;
}

// The input whole, cut at a few lengths around the container's fixed parts and
// inside it, and with a few bytes flipped at positions from a fixed generator.
std::vector<std::string> Damaged(const std::string& bytes, uint32_t seed) {
    std::vector<std::string> inputs = {bytes};
    for (size_t cut : {size_t{1}, size_t{24}, size_t{56}, size_t{76}, bytes.size() / 3,
                       bytes.size() / 2, bytes.size() - 1})
        if (cut < bytes.size()) inputs.push_back(bytes.substr(0, cut));
    uint32_t state = seed * 2654435761u + 1;
    auto next = [&] { return state = state * 1664525u + 1013904223u; };
    for (int variant = 0; variant < 6 && !bytes.empty(); ++variant) {
        std::string flipped = bytes;
        for (int flip = 0; flip < 3; ++flip) {
            size_t at = next() % flipped.size();
            flipped[at] = static_cast<char>(flipped[at] ^ static_cast<char>(1 + next() % 255));
        }
        inputs.push_back(flipped);
    }
    return inputs;
}

TEST(FuzzReplay, RealFiles) {
    const fs::path folder = SKL_REALDATA_DIR;
    if (!fs::is_directory(folder)) GTEST_SKIP() << "no real data at " << folder;
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        Replay(test::ReadBytes(entry.path()), entry.path().string());
        ++files;
    }
    EXPECT_GT(files, 0);
}

TEST(FuzzReplay, BuilderSeedsWholeCutAndFlipped) {
    std::vector<std::string> bgl = fuzz::BglSeeds();
    std::vector<std::string> cfg = fuzz::SceneryCfgSeeds();
    ASSERT_GE(bgl.size(), 4u);
    ASSERT_GE(cfg.size(), 4u);
    uint32_t seed = 0;
    for (const auto* seeds : {&bgl, &cfg})
        for (const std::string& bytes : *seeds)
            for (const std::string& input : Damaged(bytes, ++seed))
                Replay(input, "seed " + std::to_string(seed));
}

// Inputs that made a reader hang or run out of memory, rebuilt in code at a size
// that keeps this test fast; at the sizes noted they exceed the fuzzer's limits.

// The 56-byte header of a file with `sections` section entries.
void Header(ByteWriter& out, int32_t sections) {
    out.U16(0x0201);
    out.Text("", 18);
    out.I32(sections);
    out.Text("", 32);
}

// fuzz_bgl timeout (a 162 KB input): many airport section entries share one
// subsection directory whose entries all name the same airport record. The walk
// reads that record sections x entries times, and each read of the add-on airport
// visits every earlier add-on entry of its code: work grows with the fourth power
// of the file size. At 60 x 300 (6 KB) one file took 1.5 s (GCC -O2) and more than
// 5 s under the sanitizers.
std::string SharedAirportDirectory(int32_t sections, int32_t entries) {
    ByteWriter out;
    Header(out, sections);
    const int32_t record = 56 + 20 * sections;
    const int32_t recordSize = 58;
    for (int32_t i = 0; i < sections; ++i) {
        out.I32(3);  // airports
        out.I32(0);
        out.I32(INT32_MAX);  // subsections: up to the end of the file
        out.I32(record + recordSize);
        out.I32(0);
    }
    // An FS2004 airport (code 0) with one unknown subrecord of 6 bytes.
    out.U16(3);
    out.I32(recordSize);
    out.Text("", 46);
    out.U16(0x99);
    out.I32(6);
    for (int32_t i = 0; i < entries; ++i) {
        out.I32(0);
        out.I32(1);
        out.I32(record);
        out.I32(recordSize);
    }
    return out.Bytes;
}

// fuzz_bgl timeouts (inputs of 146 KB and 162 KB): dozens of airport section entries
// whose directory starts at offset 0 with 500000 subsections, so that each walks
// the rest of the file as subsection entries, and every entry's reader fails with
// one log line. Calls and log lines grow with the square of the file size: 500
// sections over 625 entries (20 KB) gave 312,500 lines in 1 s (GCC -O2), 40 KB gave
// 1.25 million lines in 4.3 s.
std::string SharedFailingDirectory(int32_t sections, int32_t entries) {
    ByteWriter out;
    Header(out, sections);
    const int32_t directory = 56 + 20 * sections;
    for (int32_t i = 0; i < sections; ++i) {
        out.I32(3);
        out.I32(0);
        out.I32(INT32_MAX);
        out.I32(directory);
        out.I32(0);
    }
    for (int32_t i = 0; i < entries; ++i) {
        out.I32(0);
        out.I32(1);
        out.I32(-1);  // the record lies before the start of the file: error 63
        out.I32(0);
    }
    return out.Bytes;
}

// Found while analysing the timeouts: a name list whose five string lists hold one
// string each that runs to the end of the file, and 32767 ICAO entries (read as
// zeros behind the end) that each take all five. While each entry held copies, a
// 4 KB file took 650 MB and a 16 KB one would have taken 2.6 GB.
std::string LongNameListStrings(int32_t length) {
    ByteWriter out;
    Header(out, 1);
    const int32_t directory = 56 + 20;
    const int32_t record = directory + 16;
    const int32_t listOffset = 6 + 12 + 24;  // the lists follow the fixed part
    const int32_t recordSize = listOffset + 4 + length;
    out.I32(39);
    out.I32(0);
    out.I32(1);
    out.I32(directory);
    out.I32(16);
    out.I32(0);
    out.I32(1);
    out.I32(record);
    out.I32(recordSize);
    out.U16(39);
    out.I32(0);
    for (int16_t count : {1, 1, 1, 1, 1, 32767}) out.I16(count);
    for (int i = 0; i < 5; ++i) out.I32(listOffset);  // all five lists share one string
    out.I32(recordSize);                              // the ICAO list: behind the end
    out.I32(0);
    out.Raw(std::string(static_cast<size_t>(length), 'A'));
    return out.Bytes;
}

TEST(FuzzReplay, FoundInputs) {
    Replay(SharedAirportDirectory(30, 150), "airport sections sharing one directory");
    Replay(SharedFailingDirectory(50, 60), "sections sharing a directory of failing entries");
    Replay(LongNameListStrings(256), "name list strings that run to the end of the file");
}

}  // namespace
}  // namespace skl
