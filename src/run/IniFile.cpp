// SKLDbManager.ini: one section [FS] with FSPATH09, FSPATH10 and FSLAST, in the
// text form of the Windows private-profile functions. The file is read once when
// the window loads and written anew when it unloads; the name is matched in any
// case, since on the simulators' platform all spellings are one file.
#include "run/IniFile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/Win1252.h"

namespace skl {

namespace {

constexpr size_t kMaxValue = 255;  // the read buffer holds 256 characters with its NUL
constexpr const char* kSection = "FS";

std::string Join(const std::string& folder, const std::string& name) {
    if (folder.empty()) return name;
    return folder.back() == '/' ? folder + name : folder + "/" + name;
}

// The entries of a folder whose names equal `name` in any case (Windows-1252
// case rules), the exact spelling first, the others in byte order.
std::vector<std::string> EntriesNamed(const std::string& folder, std::string_view name) {
    std::vector<std::string> found;
    std::string wanted = Upper1252(name);
    for (platform::FolderEntry& entry : platform::ListFolder(folder.empty() ? "." : folder)) {
        if (Upper1252(Utf8ToWin1252(entry.Name)) == wanted) found.push_back(std::move(entry.Name));
    }
    std::sort(found.begin(), found.end(), [&](const std::string& a, const std::string& b) {
        if ((a == name) != (b == name)) return a == name;
        return a < b;
    });
    return found;
}

std::optional<std::string> FindFile(const std::string& folder, std::string_view name) {
    for (const std::string& entry : EntriesNamed(folder, name)) {
        std::string path = Join(folder, entry);
        if (platform::IsRegularFile(path)) return path;
    }
    return std::nullopt;
}

void RemoveAll(const std::string& folder, std::string_view name) {
    for (const std::string& entry : EntriesNamed(folder, name))
        platform::RemoveFile(Join(folder, entry));
}

std::string_view TrimSpace(std::string_view text) {
    auto isSpace = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

// The value of a key of a section as the private-profile read gives it: the
// first section and the first key of that name count (both in any case), the
// value is trimmed, one pair of enclosing quotes is dropped, and it is cut at
// the size of the buffer.
std::optional<std::string> ProfileValue(const std::string& text, std::string_view section,
                                        std::string_view key) {
    bool inSection = false;
    bool sectionSeen = false;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find_first_of("\r\n", start);
        if (end == std::string::npos) end = text.size();
        std::string_view line = TrimSpace(std::string_view(text).substr(start, end - start));
        start = end + 1;
        if (end < text.size() && text[end] == '\r' && start < text.size() && text[start] == '\n')
            ++start;
        if (!line.empty() && line.front() == '[') {
            if (inSection) return std::nullopt;
            size_t close = line.find(']');
            std::string_view name = line.substr(
                1, close == std::string_view::npos ? std::string_view::npos : close - 1);
            inSection = !sectionSeen && Upper1252(TrimSpace(name)) == Upper1252(section);
            sectionSeen = sectionSeen || inSection;
            continue;
        }
        if (!inSection) continue;
        size_t equals = line.find('=');
        if (equals == std::string_view::npos) continue;
        if (Upper1252(TrimSpace(line.substr(0, equals))) != Upper1252(key)) continue;
        std::string_view value = TrimSpace(line.substr(equals + 1));
        if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
            value.back() == value.front()) {
            value = value.substr(1, value.size() - 2);
        }
        return std::string(value.substr(0, kMaxValue));
    }
    return std::nullopt;
}

// True when the stored folder followed by "scenery.cfg" names an existing file.
// The two are joined as they stand: a path without its trailing backslash fails.
bool HoldsSceneryCfg(const platform::DriveMap& drives, const std::string& windowsFolder) {
    std::string native = platform::ToNative(drives, windowsFolder + "scenery.cfg");
    return !native.empty() && platform::IsRegularFile(native);
}

}  // namespace

uint8_t FsLastValue(std::string_view text) {
    // The leading number as a numeric conversion of text takes it: blanks, tabs
    // and line feeds anywhere are passed over, then an optional sign, digits with
    // an optional fraction and an optional exponent.
    std::string compact;
    for (char c : text) {
        if (c != ' ' && c != '\t' && c != '\n') compact += c;
    }
    size_t pos = 0;
    bool negative = false;
    if (pos < compact.size() && (compact[pos] == '+' || compact[pos] == '-')) {
        negative = compact[pos] == '-';
        ++pos;
    }
    auto isDigit = [&](size_t at) {
        return at < compact.size() && compact[at] >= '0' && compact[at] <= '9';
    };
    std::string number;
    while (isDigit(pos)) number += compact[pos++];
    if (pos < compact.size() && compact[pos] == '.') {
        number += compact[pos++];
        while (isDigit(pos)) number += compact[pos++];
    }
    if (number.empty() || number == ".") return 0;
    if (pos < compact.size() && (compact[pos] == 'E' || compact[pos] == 'e' ||
                                 compact[pos] == 'D' || compact[pos] == 'd')) {
        size_t exponentStart = pos + 1;
        std::string exponent = "e";
        if (exponentStart < compact.size() &&
            (compact[exponentStart] == '+' || compact[exponentStart] == '-')) {
            exponent += compact[exponentStart++];
        }
        if (isDigit(exponentStart)) {
            pos = exponentStart;
            while (isDigit(pos)) exponent += compact[pos++];
            number += exponent;
        }
    }
    if (number.front() == '.') number.insert(number.begin(), '0');
    double value = 0;
    auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc() || end != number.data() + number.size()) return 0;
    if (negative) value = -value;
    double rounded = std::nearbyint(value);  // the default rounding: halves to even
    if (!(rounded >= 0 && rounded <= 255)) return 0;
    return static_cast<uint8_t>(rounded);
}

IniSettings ReadIniFile(const std::string& nativeProgramFolder, const platform::DriveMap& drives) {
    IniSettings settings;
    std::optional<std::string> path = FindFile(nativeProgramFolder, kIniFileName);
    if (!path) {
        platform::WriteWholeFile(Join(nativeProgramFolder, kIniFileName), "");
        return settings;
    }
    std::string text = platform::ReadWholeFile(*path);
    settings.Fs09Path = ProfileValue(text, kSection, "FSPATH09").value_or("");
    settings.Fs10Path = ProfileValue(text, kSection, "FSPATH10").value_or("");
    settings.FsLast = FsLastValue(ProfileValue(text, kSection, "FSLAST").value_or("0"));
    if (!HoldsSceneryCfg(drives, settings.Fs09Path)) settings.Fs09Path.clear();
    if (!HoldsSceneryCfg(drives, settings.Fs10Path)) settings.Fs10Path.clear();
    return settings;
}

void WriteIniFile(const std::string& nativeProgramFolder, const IniSettings& settings) {
    std::optional<std::string> present = FindFile(nativeProgramFolder, kIniFileName);
    if (present) {
        std::string bytes = platform::ReadWholeFile(*present);
        RemoveAll(nativeProgramFolder, kIniBackupName);
        platform::WriteWholeFile(Join(nativeProgramFolder, kIniBackupName), bytes);
    }
    RemoveAll(nativeProgramFolder, kIniFileName);

    std::string text = std::string("[") + kSection + "]\r\n";
    std::string fs09 = "FSPATH09=" + settings.Fs09Path + "\r\n";
    std::string fs10 = "FSPATH10=" + settings.Fs10Path + "\r\n";
    text += settings.FsLast != 0 ? fs10 + fs09 : fs09 + fs10;
    text += "FSLAST=" + std::to_string(settings.FsLast) + "\r\n";
    platform::WriteWholeFile(Join(nativeProgramFolder, kIniFileName), text);
}

std::string PresetPath(const IniSettings& settings) {
    if (settings.FsLast == 0) return settings.Fs09Path;
    return settings.Fs10Path;
}

void StoreSelection(IniSettings& settings, const Validation& validation) {
    if (validation.FsLast < 0) return;
    if (validation.FsLast == 0)
        settings.Fs09Path = validation.StoredPath;
    else
        settings.Fs10Path = validation.StoredPath;
    settings.FsLast = static_cast<uint8_t>(validation.FsLast);
}

}  // namespace skl
