#include <gtest/gtest.h>

#include "bgl/BglReaders.h"
#include "support/BglBuilder.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

using test::BglFile;
using test::BglRecord;
using test::Section;
using Lines = std::vector<std::string>;

// Walks BGL bytes with readers that note what they were handed, read the first
// record's id at the position given, and leave the file position somewhere else.
// A record id of 666 makes the reader fail.
struct Walk : test::LoggedState {
    std::vector<std::string> Calls;

    int Run(const std::string& bytes) {
        State.Reading.CurrentBglFile = " Walk.bgl ";
        State.Reading.Bgl =
            platform::ByteReader::FromBytes(std::vector<uint8_t>(bytes.begin(), bytes.end()));
        auto reader = [this](std::string kind) {
            return [this, kind](RunState& state, int32_t position, int32_t count, int32_t size) {
                platform::ByteReader& bgl = state.Reading.Bgl;
                bgl.Seek(position);
                uint16_t id = bgl.U16();
                Calls.push_back(kind + " " + std::to_string(id) + " n" + std::to_string(count) +
                                " s" + std::to_string(size));
                bgl.Seek(position + 3);
                if (id == 666) throw RunError(kSubscriptOutOfRange);
            };
        };
        SectionReaders readers{reader("names"), reader("airports"), reader("navaids"),
                               reader("markers")};
        return ReadBglFile(State, readers);
    }
};

BglRecord Rec(uint16_t id, size_t bodySize = 4) { return BglRecord{id, std::string(bodySize, 'x')}; }

TEST(ReadBglFile, NameListsFirstThenTheOtherKindsInDirectoryOrder) {
    BglFile file;
    file.Sections = {
        Section(test::kSectionAirport, {{Rec(31), Rec(32)}, {Rec(666)}, {Rec(33, 10)}}),
        Section(test::kSectionTerrain, {{Rec(99)}}),
        Section(test::kSectionMarker, {{Rec(24)}}),
        Section(test::kSectionNameList, {{Rec(391)}, {Rec(392)}}),
        Section(test::kSectionNavaid, {{Rec(19)}}),
        Section(test::kSectionAirport, {{}}),
    };
    Walk walk;
    EXPECT_EQ(walk.Run(test::BuildBgl(file)), 0);
    EXPECT_EQ(walk.Calls, (Lines{"names 391 n1 s10", "names 392 n1 s10", "airports 31 n2 s20",
                                 "airports 666 n1 s10", "airports 33 n1 s16", "markers 24 n1 s10",
                                 "navaids 19 n1 s10", "airports 0 n0 s0"}));
    // A failing reader costs one line and the walk goes on from the directory.
    EXPECT_EQ(walk.Lines(), (Lines{"Error detection and correction in ReadBglFile: WALK.BGL (#9)"}));
}

TEST(ReadBglFile, RefusesWhatIsNoBglFile) {
    BglFile good;
    good.Sections = {Section(test::kSectionAirport, {{Rec(1)}})};
    for (auto change : std::vector<std::function<void(BglFile&)>>{
             [](BglFile& f) { f.Magic = 0x0001; },
             [](BglFile& f) { f.Magic = 0x0102; },
             [](BglFile& f) { f.SectionCountOverride = 0; },
             [](BglFile& f) { f.SectionCountOverride = -5; },
         }) {
        BglFile file = good;
        change(file);
        Walk walk;
        EXPECT_EQ(walk.Run(test::BuildBgl(file)), -1);
        EXPECT_TRUE(walk.Calls.empty());
        EXPECT_TRUE(walk.Lines().empty());
    }
    for (std::string bytes : {std::string(), std::string("\x01\x02", 2), std::string(55, '\0')}) {
        Walk walk;
        EXPECT_EQ(walk.Run(bytes), -1);
    }
}

TEST(ReadBglFile, DamagedDirectoriesNeitherCrashNorHang) {
    BglFile file;
    file.Sections = {Section(test::kSectionAirport, {{Rec(7)}}),
                     Section(test::kSectionAirport, {{Rec(8)}}),
                     Section(test::kSectionAirport, {{Rec(9)}})};
    file.Sections[0].OffsetOverride = 0x7FFFFFFF;  // offset + 1 overflows
    file.Sections[1].OffsetOverride = -20;         // a seek before the start
    file.Sections[2].SubsectionCountOverride = 0x7FFFFFFF;
    file.SectionCountOverride = 0x7FFFFFFF;
    Walk walk;
    EXPECT_EQ(walk.Run(test::BuildBgl(file)), 0);
    // The failed seeks leave the directory read where the walk stood; the huge
    // counts end at the end of the file.
    EXPECT_EQ(walk.Lines(),
              (Lines{"Error detection and correction in ReadBglFile: WALK.BGL (#6)",
                     "Error detection and correction in ReadBglFile: WALK.BGL (#63)"}));
    EXPECT_FALSE(walk.Calls.empty());
    EXPECT_EQ(std::count(walk.Calls.begin(), walk.Calls.end(), "airports 9 n1 s10"), 1);
}

TEST(ReadBglFile, EveryPrefixOfAFileIsWalkedQuietly) {
    BglFile file;
    file.Sections = {Section(test::kSectionNameList, {{Rec(391)}}),
                     Section(test::kSectionAirport, {{Rec(31), Rec(32)}, {Rec(33)}}),
                     Section(test::kSectionTerrain, {{Rec(99, 200)}}),
                     Section(test::kSectionNavaid, {{Rec(19)}})};
    std::string bytes = test::BuildBgl(file);
    // A directory that points behind the end of the file yields nothing.
    file.Sections[3].OffsetOverride = static_cast<int32_t>(bytes.size()) + 1000;
    Walk behind;
    EXPECT_EQ(behind.Run(test::BuildBgl(file)), 0);
    EXPECT_EQ(behind.Calls.size(), 3u);
    for (size_t length = 0; length <= bytes.size(); ++length) {
        Walk walk;
        int result = walk.Run(bytes.substr(0, length));
        EXPECT_EQ(result, length <= 20 ? -1 : 0) << length;  // the count starts at byte 20
        EXPECT_TRUE(walk.Lines().empty()) << length;
    }
}

TEST(OpenBGLFile, LogsAcceptedFilesAndReportsOpenErrors) {
    test::LoggedState run;
    BglFile file;
    file.Sections = {Section(test::kSectionTerrain, {{Rec(1)}})};
    test::WriteFile(run.Dir.Path / "good.bgl", test::BuildBgl(file));
    test::WriteFile(run.Dir.Path / "old.bgl", std::string("\x01\x00\x00\x00", 4));
    std::string folder = test::WindowsFolder(run.State.Selection.Drives, run.Dir.Path);
    for (std::string name : {"good.bgl", "old.bgl", "gone.bgl"}) {
        run.State.Reading.CurrentBglFile = name;
        OpenBGLFile(run.State, folder + name, (run.Dir.Path / name).string());
    }
    EXPECT_FALSE(run.State.Files.Table.IsOpen(2));
    EXPECT_EQ(run.Lines(),
              (Lines{folder + "good.bgl", "", "===== Error Error Error =====",
                     "Source: OpenBGLFile  =  53 = File not found", "=============================",
                     "Error detection and correction in ReadBglFile: GONE.BGL (#52)"}));
}

}  // namespace
}  // namespace skl
