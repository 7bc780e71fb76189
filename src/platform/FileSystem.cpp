// The search for BGL files in one folder, built on the platform's folder listing.
#include "platform/FileSystem.h"

#include <algorithm>

#include "platform/Win1252.h"

namespace skl::platform {

namespace {

bool HasBglExtension(const std::string& name) {
    constexpr std::string_view kExtension = ".BGL";
    if (name.size() < kExtension.size()) return false;
    return Upper1252(std::string_view(name).substr(name.size() - kExtension.size())) == kExtension;
}

}  // namespace

std::vector<FoundFile> ListBglFiles(const std::string& nativeFolder) {
    struct Entry {
        std::string SortKey;
        std::string NativeName;
        FoundFile File;
    };
    if (nativeFolder.empty()) return {};
    std::vector<Entry> entries;
    for (FolderEntry& found : ListFolder(nativeFolder)) {
        if (found.Hidden || !HasBglExtension(found.Name)) continue;
        // A pipe or device named like a BGL file must not be read, and a link
        // counts as what it points to.
        if (!IsRegularFile(found.NativePath)) continue;
        std::string windowsName = Utf8ToWin1252(found.Name);
        entries.push_back(
            {Upper1252(windowsName), found.Name, {windowsName, std::move(found.NativePath)}});
    }

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
