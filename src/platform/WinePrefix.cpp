#include <cctype>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/DriveMap.h"
#include "platform/FileSystem.h"
#include "platform/Win1252.h"

namespace skl::platform {

namespace {

constexpr std::string_view kShellFoldersKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
constexpr std::string_view kCommonAppData = "Common AppData";

bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i]))) {
            return false;
        }
    }
    return true;
}

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Reads registry text from line[pos] up to an unescaped closing character and
// undoes Wine's escapes: "\\" and "\<close>", the C escapes, "\ooo" octal and
// "\xhhhh" UTF-16 units (a surrogate pair joins into one character). Other
// bytes are kept as they are. The result is UTF-8; pos ends behind the closing
// character. Nothing when the closing character is missing.
std::optional<std::string> ReadEscaped(std::string_view line, size_t& pos, char close) {
    std::string text;
    char32_t highSurrogate = 0;
    auto flushSurrogate = [&] {
        if (highSurrogate != 0) AppendUtf8(text, highSurrogate);  // a lone half: U+FFFD
        highSurrogate = 0;
    };
    auto appendUnit = [&](char32_t unit) {
        if (highSurrogate != 0 && unit >= 0xDC00 && unit <= 0xDFFF) {
            AppendUtf8(text, 0x10000 + ((highSurrogate - 0xD800) << 10) + (unit - 0xDC00));
            highSurrogate = 0;
            return;
        }
        flushSurrogate();
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            highSurrogate = unit;
        } else {
            AppendUtf8(text, unit);
        }
    };
    while (pos < line.size()) {
        char c = line[pos++];
        if (c == close) {
            flushSurrogate();
            return text;
        }
        if (c != '\\' || pos >= line.size()) {
            flushSurrogate();
            text += c;
            continue;
        }
        char e = line[pos++];
        switch (e) {
            case 'a':
                appendUnit('\a');
                break;
            case 'b':
                appendUnit('\b');
                break;
            case 'e':
                appendUnit(0x1B);
                break;
            case 'f':
                appendUnit('\f');
                break;
            case 'n':
                appendUnit('\n');
                break;
            case 'r':
                appendUnit('\r');
                break;
            case 't':
                appendUnit('\t');
                break;
            case 'v':
                appendUnit('\v');
                break;
            case 'x': {
                char32_t unit = 0;
                int digits = 0;
                while (digits < 4 && pos < line.size() && HexValue(line[pos]) >= 0) {
                    unit = unit * 16 + static_cast<char32_t>(HexValue(line[pos++]));
                    ++digits;
                }
                appendUnit(digits == 0 ? U'x' : unit);
                break;
            }
            default:
                if (e >= '0' && e <= '7') {
                    char32_t unit = static_cast<char32_t>(e - '0');
                    for (int digits = 1;
                         digits < 3 && pos < line.size() && line[pos] >= '0' && line[pos] <= '7';
                         ++digits) {
                        unit = unit * 8 + static_cast<char32_t>(line[pos++] - '0');
                    }
                    appendUnit(unit);
                } else {
                    appendUnit(static_cast<unsigned char>(e));  // "\\", "\"", "\]" ...
                }
        }
    }
    return std::nullopt;
}

// The string of a value line `"Name"="text"` or `"Name"=str(2):"text"` when its
// name is the one asked for.
std::optional<std::string> StringValue(std::string_view line, std::string_view wantedName) {
    size_t pos = 1;
    std::optional<std::string> name = ReadEscaped(line, pos, '"');
    if (!name || !EqualsIgnoringAsciiCase(*name, wantedName)) return std::nullopt;
    while (pos < line.size() && line[pos] == ' ') ++pos;
    if (pos >= line.size() || line[pos++] != '=') return std::nullopt;
    while (pos < line.size() && line[pos] == ' ') ++pos;
    std::string_view rest = line.substr(pos);
    if (rest.starts_with("str(2):")) pos += 7;
    if (pos >= line.size() || line[pos++] != '"') return std::nullopt;
    return ReadEscaped(line, pos, '"');
}

}  // namespace

std::optional<std::string> FindWinePrefix(const std::string& nativeFolder) {
    if (nativeFolder.empty()) return std::nullopt;
    std::error_code error;
    std::filesystem::path folder = std::filesystem::absolute(nativeFolder, error);
    if (error) return std::nullopt;
    folder = folder.lexically_normal();
    std::string current = folder.string();
    while (current.size() > 1 && current.back() == '/') current.pop_back();
    while (true) {
        std::string base = current == "/" ? std::string() : current;
        if (IsRegularFile(base + "/system.reg") && IsDirectory(base + "/dosdevices")) {
            return current;
        }
        if (current == "/") return std::nullopt;
        size_t slash = current.rfind('/');
        current = slash == 0 ? "/" : current.substr(0, slash);
    }
}

std::string ReadCommonAppData(const std::string& prefixFolder) {
    std::ifstream file(prefixFolder + "/system.reg", std::ios::binary);
    if (!file) return {};
    bool inShellFolders = false;
    std::string line;
    while (std::getline(file, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        size_t start = line.find_first_not_of(" \t");
        if (start == std::string::npos) continue;
        std::string_view text = std::string_view(line).substr(start);
        if (text.front() == '[') {
            size_t pos = 1;
            std::optional<std::string> key = ReadEscaped(text, pos, ']');
            inShellFolders = key && EqualsIgnoringAsciiCase(*key, kShellFoldersKey);
            continue;
        }
        if (!inShellFolders || text.front() != '"') continue;
        if (std::optional<std::string> value = StringValue(text, kCommonAppData)) {
            return Utf8ToWin1252(*value);
        }
    }
    return {};
}

}  // namespace skl::platform
