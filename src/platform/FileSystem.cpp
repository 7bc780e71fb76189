#include "platform/FileSystem.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>

#include "platform/Win1252.h"

namespace skl::platform {

namespace {

bool StatMode(const std::string& nativePath, mode_t& mode) {
    struct stat info {};
    if (nativePath.empty() || stat(nativePath.c_str(), &info) != 0) return false;
    mode = info.st_mode;
    return true;
}

bool HasBglExtension(const std::string& name) {
    constexpr std::string_view kExtension = ".BGL";
    if (name.size() < kExtension.size()) return false;
    return Upper1252(std::string_view(name).substr(name.size() - kExtension.size())) == kExtension;
}

}  // namespace

bool IsRegularFile(const std::string& nativePath) {
    mode_t mode = 0;
    return StatMode(nativePath, mode) && S_ISREG(mode);
}

bool IsDirectory(const std::string& nativePath) {
    mode_t mode = 0;
    return StatMode(nativePath, mode) && S_ISDIR(mode);
}

std::vector<FoundFile> ListBglFiles(const std::string& nativeFolder) {
    struct Entry {
        std::string SortKey;
        std::string NativeName;
        FoundFile File;
    };
    std::vector<Entry> entries;
    DIR* dir = nativeFolder.empty() ? nullptr : opendir(nativeFolder.c_str());
    if (dir == nullptr) return {};
    std::string base = nativeFolder.back() == '/' ? nativeFolder : nativeFolder + "/";
    while (dirent* found = readdir(dir)) {
        std::string name = found->d_name;
        if (name.front() == '.' || !HasBglExtension(name)) continue;
        // stat, never open: a pipe or device named like a BGL file must not block
        // or be read, and a link counts as what it points to.
        std::string path = base + name;
        if (!IsRegularFile(path)) continue;
        std::string windowsName = Utf8ToWin1252(name);
        entries.push_back({Upper1252(windowsName), name, {windowsName, path}});
    }
    closedir(dir);

    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        if (a.SortKey != b.SortKey) return a.SortKey < b.SortKey;
        return a.NativeName < b.NativeName;
    });
    std::vector<FoundFile> files;
    files.reserve(entries.size());
    for (Entry& entry : entries) files.push_back(std::move(entry.File));
    return files;
}

}  // namespace skl::platform
