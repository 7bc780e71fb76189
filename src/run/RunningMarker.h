#pragma once

#include <string>

#include "model/RunState.h"
#include "platform/FileLock.h"

namespace skl {

// Takes the marker of the set, locked for the whole run. A marker that exists
// already and is not locked was left by a run that did not end: its files are
// put back first and the marker starts empty again. Without a marker (it cannot
// be created) the run goes on unguarded; a marker that another run holds aborts
// (RunAborted).
void TakeRunningMarker(RunState& state, const std::string& setFolder);

// Notes a file in the marker before it is moved aside, on the disk at once.
void ListInMarker(const Files& files, const char* liveName);

// Puts back the files that the marker of an interrupted run lists and empties
// the marker.
void HealInterruptedRun(RunState& state, const std::string& setFolder,
                        const platform::FileLock& marker);

}  // namespace skl
