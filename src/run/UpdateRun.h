#pragma once

#include "model/FrontEnd.h"
#include "model/RunState.h"

namespace skl {

enum class RunEnd {
    Finished,
    Cancelled,
    // Error 75 or 52 in a top procedure: the abort message was shown and every
    // file is closed.
    Aborted,
    // The log could not be created: nothing was touched.
    LogNotCreated,
    // Another run holds the database set: nothing was touched.
    Busy,
    // The installation check failed: its message was shown.
    Stopped,
};

inline constexpr const char* kAbortText =
    "File not found or no access! Please check the SKLDBM_FS*.LOG File!\r"
    "                                   Program will now abort!";
inline constexpr const char* kMessageTitle = "Database Manager";

// One complete update of the selected simulator's database set, from the log to
// the closed files. The selection must come from ValidatePaths; every table
// starts empty.
RunEnd cmdWorld_Click(RunState& state, FrontEnd& frontEnd);

// True when an area folder lies under the simulator's own Scenery folder: the
// stock scenery path occurs anywhere in the folder, case-insensitively.
bool IsStockScenery(const std::string& stockSceneryPath, const std::string& directory);

// The confirmed cancel, taken at the one cancel point of the area loop: puts
// the previous database set back, closes the log with its last line.
void CancelRun(RunState& state);

}  // namespace skl
