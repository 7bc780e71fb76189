// Heals the set after a run that did not end: the marker it left lists the
// files it started to move aside, and each of them gets its backup back.
#include <string>
#include <string_view>

#include "platform/FileSystem.h"
#include "run/DatabaseFiles.h"
#include "run/RunningMarker.h"

namespace skl {

// A listed file whose backup exists gets the backup under its live name; a
// listed file without a backup was never moved aside and stays, as does every
// file not listed.
void HealInterruptedRun(RunState& state, const std::string& setFolder,
                        const platform::FileLock& marker) {
    auto native = [&](const std::string& path) {
        return platform::ToNative(state.Selection.Drives, path);
    };
    std::string listed = platform::ReadAll(marker.File);
    size_t start = 0;
    while (start < listed.size()) {
        size_t end = listed.find('\n', start);
        if (end == std::string::npos) end = listed.size();
        std::string_view name(listed.data() + start, end - start);
        if (!name.empty() && name.back() == '\r') name.remove_suffix(1);
        start = end + 1;
        // Only names of the set are acted on: a damaged marker deletes nothing else.
        for (const DatabaseFile& file : kDatabaseFiles) {
            if (name != file.Live) continue;
            std::string backup = native(setFolder + file.Backup);
            // The rename replaces the live file in one step, so that a kill here
            // still leaves the backup under one of the two names.
            if (platform::IsRegularFile(backup))
                platform::RenameReplacing(backup, native(setFolder + file.Live));
        }
    }
    // The restored names must be on the disk before the list that led to them goes.
    platform::SyncFolder(native(setFolder));
    if (!platform::Truncate(marker)) {
        // The old list stays in front of this run's: the files it names get the
        // backups of this run, which are what they hold now, so it does no harm.
    }
}

}  // namespace skl
