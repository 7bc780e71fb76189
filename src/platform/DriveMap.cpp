#include "platform/DriveMap.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/FileSystem.h"
#include "platform/Win1252.h"

namespace skl::platform {

namespace {

namespace fs = std::filesystem;

constexpr int kDriveZ = 25;

int LetterIndex(char letter) {
    if (letter >= 'a' && letter <= 'z') return letter - 'a';
    if (letter >= 'A' && letter <= 'Z') return letter - 'A';
    return -1;
}

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

// Splits a native path into its components, dropping empty ones and "." and
// going up one for "..", the way the kernel would if every component existed.
std::vector<std::string> NativeComponents(std::string_view path) {
    std::vector<std::string> components;
    size_t pos = 0;
    while (pos <= path.size()) {
        size_t end = path.find('/', pos);
        if (end == std::string_view::npos) end = path.size();
        std::string_view part = path.substr(pos, end - pos);
        if (part == "..") {
            if (!components.empty()) components.pop_back();
        } else if (!part.empty() && part != ".") {
            components.emplace_back(part);
        }
        pos = end + 1;
    }
    return components;
}

// An absolute, lexically normal native path without a trailing slash ("/" for
// the root). Relative paths are taken from the current folder.
std::string AbsoluteNative(std::string_view path) {
    std::string full(path);
    if (full.empty() || full.front() != '/') {
        std::error_code error;
        fs::path current = fs::current_path(error);
        full = (error ? std::string("/") : current.string()) + "/" + full;
    }
    std::string result;
    for (const std::string& component : NativeComponents(full)) result += "/" + component;
    return result.empty() ? "/" : result;
}

std::string StripTrailingSlash(std::string folder) {
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    return folder;
}

std::string JoinNative(const std::string& folder, const std::string& name) {
    return folder.back() == '/' ? folder + name : folder + "/" + name;
}

// The entry of a folder whose name matches a Windows-1252 name when both are
// upper-cased; of several, the first in the byte order of the native names.
std::optional<std::string> FindCaseInsensitive(const std::string& folder,
                                               std::string_view windowsName) {
    std::string wanted = Upper1252(windowsName);
    std::optional<std::string> best;
    for (FolderEntry& entry : ListFolder(folder)) {
        if (Upper1252(Utf8ToWin1252(entry.Name)) != wanted) continue;
        if (!best || entry.Name < *best) best = std::move(entry.Name);
    }
    return best;
}

// Which letter's folder is the longest prefix of the path, on a component
// boundary, and how many components it takes. Z: is only used when no other
// letter matches; of letters with equal folders the first in the alphabet wins.
struct LetterMatch {
    int Letter = -1;
    size_t Depth = 0;
};

LetterMatch MatchLetter(const DriveMap& map, const std::vector<std::string>& components) {
    auto matches = [&](int letter, size_t& depth) {
        const std::string& folder = map.Folders[letter];
        if (folder.empty()) return false;
        std::vector<std::string> prefix = NativeComponents(folder);
        if (prefix.size() > components.size()) return false;
        if (!std::equal(prefix.begin(), prefix.end(), components.begin())) return false;
        depth = prefix.size();
        return true;
    };
    LetterMatch best;
    for (int letter = 0; letter < kDriveZ; ++letter) {
        size_t depth = 0;
        if (matches(letter, depth) && (best.Letter < 0 || depth > best.Depth)) {
            best = {letter, depth};
        }
    }
    size_t depth = 0;
    if (best.Letter < 0 && matches(kDriveZ, depth)) best = {kDriveZ, depth};
    return best;
}

// The letters of a Wine prefix: each link dosdevices/x: names drive X.
void AddPrefixLetters(const std::string& prefix, DriveMap& map) {
    std::string devices = prefix + "/dosdevices";
    for (const FolderEntry& entry : ListFolder(devices)) {
        const std::string& name = entry.Name;
        int letter = name.size() == 2 && name[1] == ':' ? LetterIndex(name[0]) : -1;
        if (letter < 0) continue;
        std::string entryPath = devices + "/" + name;
        std::error_code error;
        fs::path target = fs::read_symlink(entryPath, error);
        if (error) {
            // Not a link: a folder standing in that place serves as the drive.
            if (!IsDirectory(entryPath)) continue;
            target = entryPath;
        } else if (target.is_relative()) {
            target = fs::path(devices) / target;
        }
        fs::path resolved = fs::weakly_canonical(target, error);
        if (error) resolved = target.lexically_normal();
        map.Folders[letter] = StripTrailingSlash(resolved.string());
    }
}

}  // namespace

DriveMap MakeDriveMap(const std::string& nativeSimulatorFolder,
                      const std::vector<DriveMapping>& userMappings) {
    DriveMap map;
    map.Folders[kDriveZ].assign(1, '/');  // not = "/": GCC 12 warns wrongly (-Wrestrict)
    if (std::optional<std::string> prefix = FindWinePrefix(nativeSimulatorFolder)) {
        AddPrefixLetters(*prefix, map);
    }
    for (const auto& [letter, folder] : userMappings) {
        int index = LetterIndex(letter);
        if (index < 0) continue;
        // An empty folder takes the letter away.
        map.Folders[index] = folder.empty() ? std::string() : AbsoluteNative(folder);
    }
    return map;
}

std::string ToNative(const DriveMap& map, std::string_view windowsPath) {
    if (map.Identity) return std::string(windowsPath);
    // Only the absolute drive-letter form "X:\..." names a place; "X:name" is
    // relative to a drive's current folder and "\\server\share" is UNC.
    if (windowsPath.size() < 3 || windowsPath[1] != ':' || !IsSeparator(windowsPath[2])) {
        return {};
    }
    int letter = LetterIndex(windowsPath[0]);
    if (letter < 0 || map.Folders[letter].empty()) return {};

    // "." and ".." are resolved on the text first, as Windows does, so ".." at
    // the root stays at the root.
    std::vector<std::string_view> components;
    size_t pos = 3;
    while (pos <= windowsPath.size()) {
        size_t end = pos;
        while (end < windowsPath.size() && !IsSeparator(windowsPath[end])) ++end;
        std::string_view part = windowsPath.substr(pos, end - pos);
        if (part == "..") {
            if (!components.empty()) components.pop_back();
        } else if (!part.empty() && part != ".") {
            components.push_back(part);
        }
        pos = end + 1;
    }

    std::string native = map.Folders[letter];
    bool found = true;  // false once a component exists in no case
    for (std::string_view component : components) {
        std::string name = Win1252ToUtf8(component);
        if (found && !PathExists(JoinNative(native, name))) {
            std::optional<std::string> match = FindCaseInsensitive(native, component);
            if (match) {
                name = *match;
            } else {
                found = false;
            }
        }
        native = JoinNative(native, name);
    }
    if (IsSeparator(windowsPath.back()) && native.back() != '/') native += '/';
    return native;
}

std::optional<std::string> ToWindows(const DriveMap& map, std::string_view nativePath) {
    if (map.Identity) return std::string(nativePath);
    if (nativePath.empty()) return std::nullopt;
    std::vector<std::string> components = NativeComponents(AbsoluteNative(nativePath));
    LetterMatch match = MatchLetter(map, components);
    if (match.Letter == kDriveZ) {
        // The path may reach a letter's folder through a link: Wine finds the
        // drive of such a path too, so try the resolved path before Z:.
        std::error_code error;
        fs::path resolved = fs::weakly_canonical(AbsoluteNative(nativePath), error);
        if (!error) {
            std::vector<std::string> resolvedComponents = NativeComponents(resolved.string());
            LetterMatch other = MatchLetter(map, resolvedComponents);
            if (other.Letter >= 0 && other.Letter != kDriveZ) {
                match = other;
                components = std::move(resolvedComponents);
            }
        }
    }
    if (match.Letter < 0) return std::nullopt;

    std::string windows = std::string(1, static_cast<char>('A' + match.Letter)) + ":\\";
    for (size_t i = match.Depth; i < components.size(); ++i) {
        if (i > match.Depth) windows += '\\';
        windows += Utf8ToWin1252(components[i]);
    }
    if (!nativePath.empty() && nativePath.back() == '/' && windows.back() != '\\') {
        windows += '\\';
    }
    return windows;
}

}  // namespace skl::platform
