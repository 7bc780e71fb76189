#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <limits>

#include "platform/ByteReader.h"
#include "platform/Checked.h"
#include "platform/FileTable.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

int ErrorNumberOf(const std::function<void()>& body) {
    try {
        body();
    } catch (const RunError& e) {
        return e.Number;
    }
    return 0;
}

TEST(FileTable, HandsOutTheLowestFreeNumberAndRefusesClosedOnes) {
    test::TempDir dir;
    platform::FileTable table;
    EXPECT_EQ(table.FreeFile(), 1);
    table.OpenOutput(1, (dir.Path / "a").string());
    table.OpenOutput(table.FreeFile(), (dir.Path / "b").string());
    table.OpenOutput(table.FreeFile(), (dir.Path / "c").string());
    table.Close(2);
    EXPECT_EQ(table.FreeFile(), 2);
    table.WriteLine(3, "line");
    table.Close(3);
    EXPECT_EQ(test::ReadBytes(dir.Path / "c"), "line\r\n");
    EXPECT_EQ(ErrorNumberOf([&] { table.Write(3, "x"); }), kBadFileNumber);
    EXPECT_EQ(ErrorNumberOf([&] { table.InputDescriptor(1); }), kBadFileNumber);
    table.Close(7);  // closing what is not open is no error
    // A missing folder is "not found"; a folder opened as a file is an access error.
    EXPECT_EQ(ErrorNumberOf([&] { table.OpenOutput(5, (dir.Path / "no/x").string()); }),
              kFileNotFound);
    EXPECT_EQ(ErrorNumberOf([&] { table.OpenInput(5, (dir.Path / "none").string()); }),
              kFileNotFound);
    EXPECT_EQ(ErrorNumberOf([&] { table.OpenInput(5, dir.Path.string()); }), kPathFileAccess);
    std::string fifo = (dir.Path / "pipe.bgl").string();
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(ErrorNumberOf([&] { table.OpenInput(5, fifo); }), kPathFileAccess);
    EXPECT_FALSE(table.IsOpen(5));
}

TEST(ByteReader, ReadsLittleEndianAndZerosBehindTheEnd) {
    auto reader = platform::ByteReader::FromBytes({0x01, 0x02, 0xFE, 0xFF, 0x00, 0x00, 0x80, 0x3F});
    EXPECT_EQ(reader.U16(), 0x0201);
    EXPECT_EQ(reader.I16(), -2);
    EXPECT_EQ(reader.F32(), 1.0f);
    EXPECT_EQ(reader.Position(), 8);
    EXPECT_EQ(reader.I32(), 0);  // behind the end: zeros, and the position moves on
    EXPECT_EQ(reader.Position(), 12);
    reader.Seek(6);
    EXPECT_EQ(reader.U32(), 0x3F80u);  // part inside, part behind
    EXPECT_EQ(ErrorNumberOf([&] { reader.Seek(-1); }), kBadRecordNumber);
    EXPECT_EQ(ErrorNumberOf([&] { reader.Skip(-100); }), kBadRecordNumber);
    platform::ByteReader closed;
    EXPECT_EQ(ErrorNumberOf([&] { closed.U8(); }), kBadFileNumber);
}

TEST(ByteReader, AFileShortenedWhileReadGivesZeros) {
    test::TempDir dir;
    std::string path = (dir.Path / "f.bgl").string();
    std::string bytes(100000, '\x07');
    test::WriteFile(path, bytes);
    platform::FileTable table;
    table.OpenInput(1, path);
    auto reader = platform::ByteReader::FromDescriptor(table.InputDescriptor(1));
    EXPECT_EQ(reader.Length(), 100000);
    EXPECT_EQ(reader.U8(), 7);
    ASSERT_EQ(::truncate(path.c_str(), 10), 0);
    reader.Seek(50000);  // a block not cached yet
    EXPECT_EQ(reader.U32(), 0u);
    reader.Seek(99998);
    EXPECT_EQ(reader.U32(), 0u);
}

TEST(Checked, ConversionsAndIndexingRaiseOverflowAndSubscript) {
    EXPECT_EQ(To16(-32768), -32768);
    EXPECT_EQ(ErrorNumberOf([] { To16(32768); }), kOverflow);
    EXPECT_EQ(ErrorNumberOf([] { To32(int64_t{1} << 31); }), kOverflow);
    EXPECT_EQ(Round16(-2.5), -2);
    EXPECT_EQ(Round32(7.5), 8);
    EXPECT_EQ(ErrorNumberOf([] { Round32(std::nan("")); }), kOverflow);
    EXPECT_EQ(ErrorNumberOf([] { Round16(std::numeric_limits<double>::infinity()); }), kOverflow);
    std::vector<int> v{1, 2};
    EXPECT_EQ(At(v, 1), 2);
    EXPECT_EQ(ErrorNumberOf([&] { At(v, 2); }), kSubscriptOutOfRange);
    EXPECT_EQ(ErrorNumberOf([&] { At(v, -1); }), kSubscriptOutOfRange);
}

}  // namespace
}  // namespace skl
