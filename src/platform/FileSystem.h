#pragma once

#include <string>
#include <vector>

namespace skl::platform {

// Native file-system tests. Links are followed.
bool IsRegularFile(const std::string& nativePath);
bool IsDirectory(const std::string& nativePath);

// One file found by a directory search: its name as the run sees it
// (Windows-1252, '?' for characters it cannot hold) and the native path to open.
struct FoundFile {
    std::string Name;
    std::string NativePath;
};

// The regular files directly in a native folder whose name ends in ".bgl" in any
// case, hidden files (names starting with a dot) left out, in the order of their
// names compared case-insensitively (byte order of the upper-cased Windows-1252
// names). A folder that does not exist or cannot be read gives no file.
std::vector<FoundFile> ListBglFiles(const std::string& nativeFolder);

}  // namespace skl::platform
