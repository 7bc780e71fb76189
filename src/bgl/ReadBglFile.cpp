// The BGL container. All numbers little-endian, offsets from the file start.
//
//   header, 56 bytes:   0  u16  magic, must be 0x0201 (bytes 01 02)
//                       2  18   not examined
//                      20  i32  number of sections
//                      24  32   not examined
//   section entry, 20 bytes each, from offset 56:
//                       0  i32  section type (39 names, 3 airports, 19 VOR/ILS, 24 markers)
//                       4  4    not examined
//                       8  i32  number of subsections
//                      12  i32  file offset of the subsection directory
//                      16  4    not examined
//   subsection entry, 16 bytes each, at that offset:
//                       0  4    not examined
//                       4  i32  number of records
//                       8  i32  file offset of the first record
//                      12  i32  size of the subsection in bytes
//
// Name lists are read first, then airports, VOR/ILS stations and markers in the
// order of the directory. An error is logged as one line and the walk goes on
// with the next statement.
#include <algorithm>
#include <vector>

#include "bgl/BglReaders.h"
#include "platform/Checked.h"
#include "model/RunLog.h"

namespace skl {

namespace {

constexpr int32_t kNameListSection = 39;
constexpr int32_t kAirportSection = 3;
constexpr int32_t kVorIlsSection = 19;
constexpr int32_t kMarkerSection = 24;
constexpr int64_t kHeaderSize = 56;
constexpr int64_t kSectionEntrySize = 20;

struct SectionEntry {
    int32_t Type = 0;
    int32_t SubsectionCount = 0;
    int32_t Offset = 0;
};

}  // namespace

int ReadBglFile(RunState& state, const SectionReaders& readers) {
    platform::ByteReader& bgl = state.Reading.Bgl;
    auto statement = [&](auto&& body) {
        return ReaderStatement(state, "ReadBglFile", body);
    };

    uint16_t magic = 0;
    int32_t sectionCount = 0;
    statement([&] {
        magic = bgl.U16();
        bgl.Skip(18);
        sectionCount = bgl.I32();
        bgl.Skip(32);
    });
    if (magic != 0x0201) return -1;
    if (sectionCount < 1) return -1;

    // Entries that lie wholly behind the end of the file read as zeros: type 0,
    // which no pass looks at. They are left out rather than allocated.
    std::vector<SectionEntry> sections;
    statement([&] {
        int64_t inFile = (bgl.Length() - kHeaderSize + kSectionEntrySize - 1) / kSectionEntrySize;
        sections.resize(static_cast<size_t>(std::clamp<int64_t>(inFile, 0, sectionCount)));
    });
    for (SectionEntry& entry : sections) {
        statement([&] {
            entry.Type = bgl.I32();
            bgl.Skip(4);
            entry.SubsectionCount = bgl.I32();
            entry.Offset = bgl.I32();
            bgl.Skip(4);
        });
    }

    auto walkSection = [&](const SectionEntry& section, const SubsectionReader& reader) {
        statement([&] { bgl.Seek(To32(int64_t{section.Offset} + 1) - 1); });
        int64_t remembered = 0;
        for (int32_t i = 0; i < section.SubsectionCount; ++i) {
            // Entries behind the end of the file read as zeros: no records, and a
            // reader returns at once for those.
            if (bgl.Position() >= bgl.Length()) break;
            int32_t recordCount = 0;
            int32_t position = 0;
            int32_t size = 0;
            statement([&] {
                bgl.Skip(4);
                recordCount = bgl.I32();
                position = bgl.I32();
                size = bgl.I32();
            });
            statement([&] { remembered = bgl.Position(); });
            statement([&] { reader(state, position, recordCount, size); });
            statement([&] { bgl.Seek(remembered); });
        }
    };

    for (const SectionEntry& section : sections)
        if (section.Type == kNameListSection) walkSection(section, readers.NameList);
    for (const SectionEntry& section : sections) {
        switch (section.Type) {
            case kAirportSection: walkSection(section, readers.Airports); break;
            case kVorIlsSection: walkSection(section, readers.VorIls); break;
            case kMarkerSection: walkSection(section, readers.Markers); break;
            default: break;
        }
    }
    return 0;
}

}  // namespace skl
