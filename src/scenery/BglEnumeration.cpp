#include "scenery/BglEnumeration.h"

#include "platform/DriveMap.h"

namespace skl {

std::string FirstMatch(RunState& state, const std::string& directory) {
    Reading& reading = state.Reading;
    std::string native = platform::ToNative(state.Selection.Drives, directory);
    reading.Search = native.empty() ? std::vector<platform::FoundFile>{}
                                    : platform::ListBglFiles(native);
    reading.SearchNext = 0;
    return NextMatch(state);
}

std::string NextMatch(RunState& state) {
    Reading& reading = state.Reading;
    if (reading.SearchNext >= reading.Search.size()) return "";
    return reading.Search[reading.SearchNext++].Name;
}

std::string MatchNativePath(const RunState& state) {
    const Reading& reading = state.Reading;
    if (reading.SearchNext == 0 || reading.SearchNext > reading.Search.size()) return "";
    return reading.Search[reading.SearchNext - 1].NativePath;
}

std::string FindBglOnNetworkDrives(RunState& state, std::string& directory) {
    std::string found;
    state.Reading.Search.clear();
    state.Reading.SearchNext = 0;
    for (char letter = 'Z'; letter >= 'D'; --letter) {
        if (platform::DriveType(state.Selection.Drives, letter) != 4) continue;
        if (!directory.empty()) directory[0] = letter;
        found = FirstMatch(state, directory);
        if (!found.empty()) break;
    }
    return found;
}

}  // namespace skl
