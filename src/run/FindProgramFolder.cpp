#include "run/FindProgramFolder.h"

#include <algorithm>
#include <iterator>

#include "platform/FileSystem.h"
#include "platform/ProgramFolderPlaces.h"
#include "platform/Win1252.h"

namespace skl {

namespace {

// A Program Files folder is searched this many levels deep: its programs and the
// programs of a maker's folder ("Program Files/Maker/Program").
constexpr int kSearchDepth = 2;

bool StartsWithIgnoringCase(const std::string& text, std::string_view start) {
    return text.size() >= start.size() &&
           Upper1252(std::string_view(text).substr(0, start.size())) == Upper1252(start);
}

// Names in the order the folder tree shows them: case-insensitive, then by bytes.
std::vector<std::string> Sorted(std::vector<std::string> names) {
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        std::string upperA = Upper1252(a);
        std::string upperB = Upper1252(b);
        return upperA != upperB ? upperA < upperB : a < b;
    });
    return names;
}

// The first folder at most `depth` levels below `root` that passes the check.
std::string FirstPassing(const std::string& root, int depth) {
    for (const std::string& name : Sorted(platform::ListSubfolderNames(root))) {
        std::string folder = platform::JoinPath(root, name);
        if (MissingInstallationFiles(folder).empty()) return folder;
        if (depth > 1) {
            std::string below = FirstPassing(folder, depth - 1);
            if (!below.empty()) return below;
        }
    }
    return {};
}

std::string NotHere(const std::vector<std::string>& missing) {
    return JoinNames(missing) + (missing.size() == 1 ? " is missing" : " are missing");
}

}  // namespace

ProgramFolderPlaces UsualProgramFolderPlaces() {
    return {platform::ProgramFolderMemory(), platform::UsualWinePrefixes(),
            platform::ProgramFilesFolders()};
}

std::vector<std::string> MissingInstallationFiles(const std::string& folder) {
    std::vector<std::string> missing;
    std::vector<std::string> present;
    bool listed = false;
    for (const char* name : kInstallationFileNames) {
        if (platform::IsRegularFile(platform::JoinPath(folder, name))) continue;
        if (!listed) {
            for (const std::string& file : platform::ListFileNames(folder))
                present.push_back(Upper1252(file));
            listed = true;
        }
        if (std::find(present.begin(), present.end(), Upper1252(name)) == present.end())
            missing.push_back(name);
    }
    return missing;
}

std::string JoinNames(const std::vector<std::string>& names) {
    std::string text;
    for (size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
        text += names[i];
    }
    return text;
}

ProgramFolderSearch FindProgramFolder(const std::string& ownFolder, const std::string& ownName,
                                      const ProgramFolderPlaces& places) {
    ProgramFolderSearch search;
    std::vector<std::string> missing = MissingInstallationFiles(ownFolder);
    if (missing.empty()) {
        search.Folder = ownFolder;
        return search;
    }
    search.Tried.push_back(ownFolder + " (" + ownName + "): " + NotHere(missing));

    if (places.Memory.empty()) {
        search.Tried.push_back("no folder remembered: this system gives no place to keep one");
    } else if (std::optional<std::string> remembered =
                   platform::ReadProgramFolderMemory(places.Memory)) {
        const std::string where = *remembered + " (remembered in " + places.Memory + "): ";
        if (!platform::IsDirectory(*remembered)) {
            search.Tried.push_back(where + "no longer exists");
        } else if (missing = MissingInstallationFiles(*remembered); !missing.empty()) {
            search.Tried.push_back(where + NotHere(missing));
        } else {
            search.Folder = *remembered;
            search.FoundBy = "remembered in " + places.Memory;
            return search;
        }
    } else {
        search.Tried.push_back("no folder remembered in " + places.Memory);
    }

    auto searchRoot = [&](const std::string& root, const std::string& foundBy) {
        std::string found = FirstPassing(root, kSearchDepth);
        if (found.empty()) {
            search.Tried.push_back(
                root + ": no folder in it holds " +
                JoinNames({std::begin(kInstallationFileNames), std::end(kInstallationFileNames)}));
            return false;
        }
        search.Folder = found;
        search.FoundBy = foundBy;
        return true;
    };
    for (const std::string& prefix : places.WinePrefixes) {
        const std::string driveC = platform::JoinPath(prefix, "drive_c");
        if (!platform::IsDirectory(driveC)) {
            search.Tried.push_back(prefix + ": no Wine prefix (no drive_c folder)");
            continue;
        }
        std::vector<std::string> roots;
        for (const std::string& name : Sorted(platform::ListSubfolderNames(driveC)))
            if (StartsWithIgnoringCase(name, "Program Files"))
                roots.push_back(platform::JoinPath(driveC, name));
        if (roots.empty()) search.Tried.push_back(driveC + ": no Program Files folder");
        for (const std::string& root : roots)
            if (searchRoot(root, "found in the Wine prefix " + prefix)) return search;
    }
    for (const std::string& root : places.ProgramFiles) {
        if (!platform::IsDirectory(root)) {
            search.Tried.push_back(root + ": does not exist");
            continue;
        }
        if (searchRoot(root, "found in " + root)) return search;
    }
    return search;
}

std::string RememberProgramFolder(const ProgramFolderPlaces& places, const std::string& folder) {
    std::vector<std::string> missing = MissingInstallationFiles(folder);
    if (!missing.empty()) return folder + ": " + NotHere(missing);
    return platform::WriteProgramFolderMemory(places.Memory, folder);
}

}  // namespace skl
