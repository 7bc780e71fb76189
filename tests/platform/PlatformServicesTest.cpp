#include <gtest/gtest.h>

#include <algorithm>

#include "platform/FileLock.h"
#include "platform/FileSystem.h"
#include "platform/FileTable.h"
#include "support/RunHelpers.h"

namespace skl::platform {
namespace {

using test::TempDir;

TEST(FileSystem, ChangesOfEntriesTellMissingFromFailed) {
    TempDir dir;
    std::string a = (dir.Path / "a").string();
    std::string b = (dir.Path / "b").string();
    test::WriteFile(a, "new");
    test::WriteFile(b, "old");
    EXPECT_EQ(RenameReplacing(a, b), FileResult::Done);  // replaces what had the name
    EXPECT_EQ(test::ReadBytes(b), "new");
    EXPECT_EQ(RenameReplacing(a, b), FileResult::Missing);
    EXPECT_EQ(RemoveFile(b), FileResult::Done);
    EXPECT_EQ(RemoveFile(b), FileResult::Missing);
    EXPECT_EQ(RemoveFile((dir.Path / "none" / "x").string()), FileResult::Missing);
    std::string folder = (dir.Path / "f").string();
    EXPECT_TRUE(MakeFolder(folder));
    EXPECT_FALSE(MakeFolder(folder));
    EXPECT_EQ(RemoveFile(folder), FileResult::Failed);  // a folder is never deleted
    EXPECT_TRUE(IsDirectory(folder));

    std::string bytes("[FS]\r\nA=\0x\r\n", 12);
    EXPECT_TRUE(WriteWholeFile(a, bytes));
    EXPECT_EQ(ReadWholeFile(a), bytes);
    EXPECT_TRUE(WriteWholeFile(a, "y"));  // truncates
    EXPECT_EQ(ReadWholeFile(a), "y");
    EXPECT_EQ(ReadWholeFile(b), "");
    EXPECT_FALSE(WriteWholeFile(folder, "z"));
}

TEST(FileSystem, ListFolderGivesEveryEntryWithItsPathAndHiddenMark) {
    TempDir dir;
    test::WriteFile(dir.Path / "One.bgl", "");
    test::WriteFile(dir.Path / ".two", "");
    MakeFolder((dir.Path / "three").string());
    std::vector<FolderEntry> entries = ListFolder(dir.Path.string() + "/");
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& x, const FolderEntry& y) { return x.Name < y.Name; });
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].Name, ".two");
    EXPECT_TRUE(entries[0].Hidden);
    EXPECT_EQ(entries[1].NativePath, (dir.Path / "One.bgl").string());
    EXPECT_FALSE(entries[1].Hidden);
    EXPECT_EQ(entries[2].Name, "three");
    EXPECT_TRUE(ListFolder((dir.Path / "none").string()).empty());
    EXPECT_TRUE(ListFolder("").empty());
}

TEST(FileLock, OneHolderAtATimeAndTheFileKeepsWhatWasAppended) {
    TempDir dir;
    std::string path = (dir.Path / "update.running").string();
    FileLock lock;
    bool existed = true;
    ASSERT_EQ(CreateAndLock(path, lock, existed), LockResult::Locked);
    EXPECT_FALSE(existed);
    EXPECT_TRUE(lock.IsHeld());
    EXPECT_TRUE(IsLockedElsewhere(path));
    FileLock second;
    EXPECT_EQ(CreateAndLock(path, second, existed), LockResult::Busy);
    EXPECT_FALSE(second.IsHeld());

    EXPECT_TRUE(AppendDurably(lock, "Taxi.skl\r\n"));
    EXPECT_TRUE(AppendDurably(lock, "Poly.skl\r\n"));
    EXPECT_EQ(ReadAll(lock.File), "Taxi.skl\r\nPoly.skl\r\n");
    EXPECT_TRUE(Truncate(lock));
    EXPECT_TRUE(AppendDurably(lock, "Ils.skl\r\n"));  // appends behind the cut
    EXPECT_EQ(test::ReadBytes(path), "Ils.skl\r\n");

    ReleaseLock(lock);
    EXPECT_FALSE(lock.IsHeld());
    EXPECT_FALSE(IsLockedElsewhere(path));
    ASSERT_EQ(CreateAndLock(path, lock, existed), LockResult::Locked);
    EXPECT_TRUE(existed);
    ReleaseLock(lock);
    ReleaseLock(lock);  // nothing held: no error
    EXPECT_FALSE(IsLockedElsewhere((dir.Path / "none").string()));
    EXPECT_EQ(CreateAndLock((dir.Path / "no" / "marker").string(), lock, existed),
              LockResult::NoFile);
}

TEST(FileTable, ReadInputGivesTheWholeFileAndRefusesClosedNumbers) {
    TempDir dir;
    std::string bytes(200000, 'c');
    bytes[123456] = '\0';
    test::WriteFile(dir.Path / "scenery.cfg", bytes);
    FileTable table;
    table.OpenInput(2, (dir.Path / "scenery.cfg").string());
    EXPECT_EQ(table.ReadInput(2), bytes);
    EXPECT_EQ(table.ReadInput(2), bytes);  // from the start again
    table.Close(2);
    try {
        table.ReadInput(2);
        ADD_FAILURE() << "a closed number was read";
    } catch (const RunError& e) {
        EXPECT_EQ(e.Number, kBadFileNumber);
    }
}

}  // namespace
}  // namespace skl::platform
