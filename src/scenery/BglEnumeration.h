#pragma once

#include <string>

#include "model/RunState.h"

namespace skl {

// Starts the search for the BGL files of an area folder (a Windows path ending
// in a backslash) and returns the name of the first one, or "" when there is
// none. Only one search runs at a time.
std::string FirstMatch(RunState& state, const std::string& directory);

// The name of the next file of the running search, or "" when it is exhausted.
std::string NextMatch(RunState& state);

// The native path of the file that the search handed out last.
std::string MatchNativePath(const RunState& state);

// Tries every network drive from Z: down to D: with the drive letter of the
// directory replaced, and returns the first BGL file found (or ""). The changed
// letter stays in the caller's directory; the search keeps running.
std::string FindBglOnNetworkDrives(RunState& state, std::string& directory);

}  // namespace skl
