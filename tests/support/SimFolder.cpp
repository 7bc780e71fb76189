#include "support/SimFolder.h"

#include <stdlib.h>  // mkdtemp

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace skl::test {

namespace fs = std::filesystem;

namespace {

// A value of a Wine registry file: backslashes and quotes escaped by a backslash.
std::string RegEscape(std::string_view text) {
    std::string out;
    for (char c : text) {
        if (c == '\\' || c == '"') out += '\\';
        out += c;
    }
    return out;
}

}  // namespace

fs::path MakeTempDir() {
    const char* base = std::getenv("TMPDIR");
    std::string pattern = (base != nullptr && *base != '\0') ? base : "/tmp";
    pattern += "/skl-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot create a temporary folder from " + pattern);
    }
    return fs::path(pattern);
}

TempDir::~TempDir() {
    std::error_code ignored;
    fs::remove_all(Path, ignored);
}

void WriteFile(const fs::path& path, std::string_view bytes) {
    if (path.has_parent_path()) fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) throw std::runtime_error("cannot write " + path.string());
}

std::string SceneryCfg(const std::vector<CfgArea>& areas, std::string_view lineEnd,
                       std::string_view generalTitle) {
    std::string text;
    auto line = [&](std::string_view key, std::string_view value) {
        if (value.empty()) return;
        text.append(key).append(value).append(lineEnd);
    };
    text.append("[General]").append(lineEnd);
    line("Title=", generalTitle);
    line("Description=", "Scenery Data");
    text.append(lineEnd);
    for (size_t i = 0; i < areas.size(); ++i) {
        char header[32];
        std::snprintf(header, sizeof header, "[Area.%03zu]", i + 1);
        text.append(header).append(lineEnd);
        line("Title=", areas[i].Title);
        line("Local=", areas[i].Local);
        line("Remote=", areas[i].Remote);
        line("Layer=", areas[i].Layer);
        line("Active=", areas[i].Active);
        line("Required=", "FALSE");
        text.append(lineEnd);
    }
    return text;
}

void MakeFs9Folder(const fs::path& simFolder, std::string_view cfgText) {
    WriteFile(simFolder / "fs9.exe", "");
    WriteFile(simFolder / "scenery.cfg", cfgText);
}

void MakeFsxFolder(const fs::path& simFolder) {
    WriteFile(simFolder / "fsx.exe", "");
}

void MakeFsxLibrary(const fs::path& libraryFolder, std::string_view cfgText, bool withStatusBin) {
    WriteFile(libraryFolder / "scenery.cfg", cfgText);
    if (withStatusBin) WriteFile(libraryFolder / "scenerystatus.bin", "");
}

void MakeWinePrefix(const fs::path& prefix, std::string_view commonAppData) {
    // Keys and values keep their backslashes doubled in the file; the file's lines
    // end in LF as Wine writes them.
    std::string reg =
        "WINE REGISTRY Version 2\n"
        ";; All keys relative to \\\\Machine\n"
        "\n"
        "#arch=win64\n"
        "\n"
        "[Software\\\\Microsoft\\\\Windows NT\\\\CurrentVersion] 1700000000\n"
        "#time=1da0f3c2b4e5a60\n"
        "\"CurrentVersion\"=\"6.3\"\n"
        "\"ProductName\"=\"Microsoft Windows 10\"\n"
        "\n"
        "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Explorer\\\\Shell Folders] "
        "1700000000\n"
        "#time=1da0f3c2b4e5a60\n";
    if (!commonAppData.empty()) {
        reg += "\"Common AppData\"=\"" + RegEscape(commonAppData) + "\"\n";
    }
    reg += "\"Common Desktop\"=\"C:\\\\users\\\\Public\\\\Desktop\"\n\n";
    WriteFile(prefix / "system.reg", reg);
    fs::create_directories(prefix / "drive_c");
    fs::create_directories(prefix / "dosdevices");
    fs::create_directory_symlink("../drive_c", prefix / "dosdevices" / "c:");
    fs::create_directory_symlink("/", prefix / "dosdevices" / "z:");
}

void MakeProgramFolder(const fs::path& programFolder) {
    for (const char* name : {"magvar09.swf", "magvar10.swf", "SKL_Intro.bmp"}) {
        WriteFile(programFolder / name, "");
    }
}

}  // namespace skl::test
