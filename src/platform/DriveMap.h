#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace skl::platform {

// Turns the Windows paths the run thinks in into native paths, the way Wine
// does it: each drive letter stands for a native folder. On Windows the map is
// the identity.
struct DriveMap {
    // Native folder of each letter A..Z, without a trailing slash ("/" for the
    // root); empty where the letter is not mapped.
    std::array<std::string, 26> Folders;
    bool Identity = false;
};

// A user's mapping such as D=/mnt/fs, given as the letter and the folder.
using DriveMapping = std::pair<char, std::string>;

// Z: is "/". When the native simulator folder lies inside a Wine prefix, the
// letters of the prefix's dosdevices/ links are added; the user's mappings are
// added last and win over both.
DriveMap MakeDriveMap(const std::string& nativeSimulatorFolder,
                      const std::vector<DriveMapping>& userMappings);

// Windows path (drive letter form) to a native path. Each component is looked up
// case-insensitively where the exact name does not exist; components that exist
// in no case are kept as they are, so that an open fails with "not found".
// A path on an unmapped letter, a UNC path or a relative path gives an empty
// string.
std::string ToNative(const DriveMap& map, std::string_view windowsPath);

// Native path to a Windows path through the letter whose folder is its longest
// prefix, Z: last. The result is Windows-1252 text; a folder keeps a trailing
// backslash when the native path had a trailing slash.
std::optional<std::string> ToWindows(const DriveMap& map, std::string_view nativePath);

// True when the native folder lies on a network file system (NFS, SMB/CIFS).
bool IsNetworkFolder(const std::string& nativeFolder);

// The drive type of a letter as the platform reports it: 4 for a network drive,
// 3 for a local one, 1 when the letter has no folder.
int DriveType(const DriveMap& map, char letter);

// The Wine prefix (a folder holding system.reg and dosdevices/) that holds the
// native folder, searched from the folder upwards; nothing when there is none.
std::optional<std::string> FindWinePrefix(const std::string& nativeFolder);

// The value "Common AppData" of the key
// Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders in the
// prefix's system.reg, unescaped, as Windows-1252 text; empty when absent.
std::string ReadCommonAppData(const std::string& prefixFolder);

}  // namespace skl::platform
