#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// Builds simulator installations on disk for tests: folders, scenery.cfg, Wine prefixes.
namespace skl::test {

// A new empty folder under TMPDIR (or /tmp), made with mkdtemp.
std::filesystem::path MakeTempDir();

// A temporary folder that is removed with all its content when it goes out of scope.
struct TempDir {
    std::filesystem::path Path = MakeTempDir();

    TempDir() = default;
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    ~TempDir();
};

// Writes the bytes as they are, creating the parent folders. Throws std::runtime_error.
void WriteFile(const std::filesystem::path& path, std::string_view bytes);

// One [Area.NNN] section. Values are written as given; an empty value omits its line.
struct CfgArea {
    std::string Title{};
    std::string Local{};
    std::string Remote{};
    std::string Layer{};
    std::string Active{};
};

// A scenery.cfg text: [General] with Title and Description, then the areas in the
// order given, numbered from [Area.001] on, each section followed by an empty line.
std::string SceneryCfg(const std::vector<CfgArea>& areas, std::string_view lineEnd = "\r\n",
                       std::string_view generalTitle = "World Scenery");

// An FS2004 folder: an empty fs9.exe and the scenery.cfg.
void MakeFs9Folder(const std::filesystem::path& simFolder, std::string_view cfgText);
// An FSX folder: an empty fsx.exe.
void MakeFsxFolder(const std::filesystem::path& simFolder);
// The FSX scenery library folder: scenery.cfg, and scenerystatus.bin beside it.
void MakeFsxLibrary(const std::filesystem::path& libraryFolder, std::string_view cfgText,
                    bool withStatusBin = true);

// A Wine prefix: system.reg with the Shell Folders key (with "Common AppData" when
// commonAppData is not empty, e.g. "C:\\ProgramData"), drive_c, and dosdevices with
// c: -> ../drive_c and z: -> /.
void MakeWinePrefix(const std::filesystem::path& prefix, std::string_view commonAppData);

// The program folder with the files its installation check looks for.
void MakeProgramFolder(const std::filesystem::path& programFolder);

}  // namespace skl::test
