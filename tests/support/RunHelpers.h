#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "platform/DriveMap.h"
#include "model/RunLog.h"
#include "model/RunState.h"
#include "support/SimFolder.h"

namespace skl::test {

// The lines of a CR LF text file; a line that is not ended by CR LF is kept too.
inline std::vector<std::string> ReadLines(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::stringstream buffer;
    buffer << in.rdbuf();
    std::string text = buffer.str();
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", start)) {
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    if (start < text.size()) lines.push_back(text.substr(start));
    return lines;
}

inline std::string ReadBytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::stringstream buffer;
    buffer << in.rdbuf();
    return buffer.str();
}

// The Windows form of a native folder under the default map (Z: is "/").
inline std::string WindowsFolder(const platform::DriveMap& drives,
                                 const std::filesystem::path& native) {
    std::string folder = platform::ToWindows(drives, native.string()).value_or("");
    if (!folder.empty() && folder.back() != '\\') folder += '\\';
    return folder;
}

// A run state whose log is open in a temporary program folder, for tests of a
// single procedure. Lines() closes the log and gives its lines but the first
// (which holds the date and time).
struct LoggedState {
    TempDir Dir;
    RunState State;

    LoggedState() {
        State.Selection.Drives = platform::MakeDriveMap(Dir.Path.string(), {});
        std::string program = WindowsFolder(State.Selection.Drives, Dir.Path);
        State.Selection.ProgramFolder = program.substr(0, program.size() - 1);
        OpenLogFile(State, "TEST.LOG");
    }

    std::vector<std::string> Lines() {
        State.Files.Table.Close(State.Files.LogFile);
        std::vector<std::string> lines = ReadLines(Dir.Path / "TEST.LOG");
        if (!lines.empty()) lines.erase(lines.begin());
        return lines;
    }
};

}  // namespace skl::test
