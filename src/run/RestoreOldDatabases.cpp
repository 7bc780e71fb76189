// The cancel's way back: the new set is thrown away and the backups get their
// live names again, so that the folder holds the set it held before the run.
#include "platform/FileSystem.h"
#include "run/DatabaseFiles.h"

namespace skl {

namespace {

// Indexes into kDatabaseFiles.
enum : size_t { kTaxi, kPoly, kMarker, kIls, kAirport, kRegion, kState, kCountry, kCity };

}  // namespace

void RestoreOldDatabases(RunState& state) {
    Files& files = state.Files;
    const auto& drives = state.Selection.Drives;
    std::string setFolder = DatabaseSetFolder(state.Selection);
    auto native = [&](const char* name) { return platform::ToNative(drives, setFolder + name); };

    constexpr size_t kCloseOrder[] = {kTaxi,    kPoly, kMarker,  kRegion, kState,
                                      kCountry, kCity, kAirport, kIls};
    constexpr size_t kRenameOrder[] = {kPoly,    kTaxi, kMarker,  kRegion, kState,
                                       kCountry, kCity, kAirport, kIls};
    for (size_t i : kCloseOrder) {
        files.Table.Close(files.*kDatabaseFiles[i].Handle);
        files.*kDatabaseFiles[i].Handle = 0;
    }
    for (size_t i : kCloseOrder) platform::RemoveFile(native(kDatabaseFiles[i].Live));
    // A file that had no live file before the run has no backup either and stays
    // away.
    for (size_t i : kRenameOrder)
        platform::RenameReplacing(native(kDatabaseFiles[i].Backup), native(kDatabaseFiles[i].Live));
    // The restored names reach the disk before the marker that would restore them
    // again goes.
    platform::SyncFolder(platform::ToNative(drives, setFolder));
    RemoveRunningMarker(state);
    state.Reading.RunActive = false;
}

}  // namespace skl
