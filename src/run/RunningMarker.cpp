// The marker "update.running" in the set's folder: it lists the files a run has
// started to move aside, and its lock keeps a second run off the set while the
// run lasts. A finished or cancelled run removes it; an aborted one lets go of
// the lock but leaves it for the next run to heal.
#include "run/RunningMarker.h"

#include <string>

#include "model/RunLog.h"
#include "platform/FileSystem.h"
#include "run/DatabaseFiles.h"

namespace skl {

namespace {

constexpr const char* kHealedText = "Previous update was interrupted: database files restored";
// How often a marker that its last holder deleted under our hands is taken anew.
constexpr int kMarkerAttempts = 8;

std::string Native(const RunState& state, const std::string& windowsPath) {
    return platform::ToNative(state.Selection.Drives, windowsPath);
}

}  // namespace

void TakeRunningMarker(RunState& state, const std::string& setFolder) {
    Files& files = state.Files;
    platform::ReleaseLock(files.MarkerLock);
    files.MarkerPath = setFolder + kRunningMarker;
    std::string path = Native(state, files.MarkerPath);
    for (int attempt = 0; attempt < kMarkerAttempts; ++attempt) {
        bool leftOver = false;
        switch (platform::CreateAndLock(path, files.MarkerLock, leftOver)) {
            case platform::LockResult::NoFile:
                return;
            case platform::LockResult::Busy:
                throw RunAborted{};
            case platform::LockResult::Unnamed:
                continue;
            case platform::LockResult::Locked:
                break;
        }
        if (leftOver) {
            HealInterruptedRun(state, setFolder, files.MarkerLock);
            TryLogLine(state, kHealedText);
        }
        platform::SyncFolder(Native(state, setFolder));
        return;
    }
    throw RunAborted{};
}

void ListInMarker(const Files& files, const char* liveName) {
    if (!files.MarkerLock.IsHeld()) return;
    platform::AppendDurably(files.MarkerLock, std::string(liveName) + "\r\n");
}

void RemoveRunningMarker(RunState& state) {
    Files& files = state.Files;
    if (!files.MarkerLock.IsHeld()) return;
    // Deleted before the lock goes, so that nobody locks a marker about to vanish
    // unnoticed (a run that does checks that its lock is on the named file).
    platform::RemoveFile(Native(state, files.MarkerPath));
    platform::ReleaseLock(files.MarkerLock);
    files.MarkerPath.clear();
}

bool DatabaseSetBusy(const RunState& state) {
    return platform::IsLockedElsewhere(
        Native(state, DatabaseSetFolder(state.Selection) + kRunningMarker));
}

void ReleaseDatabaseSet(RunState& state) {
    if (!state.Files.MarkerLock.IsHeld()) return;
    // The new set reaches the disk before the marker goes: once the marker is
    // gone no later run would put the old set back.
    std::string setFolder = DatabaseSetFolder(state.Selection);
    for (const DatabaseFile& file : kDatabaseFiles)
        platform::SyncFile(Native(state, setFolder + file.Live));
    platform::SyncFolder(Native(state, setFolder));
    RemoveRunningMarker(state);
}

void DropDatabaseLock(RunState& state) {
    platform::ReleaseLock(state.Files.MarkerLock);
}

}  // namespace skl
