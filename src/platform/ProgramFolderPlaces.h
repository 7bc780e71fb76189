#pragma once

#include <optional>
#include <string>
#include <vector>

// Where the folder of the moving-map program is remembered and where an
// installed copy of it usually lies, for a program that does not stand in that
// folder itself. Paths are native (UTF-8).
namespace skl::platform {

// Where this user's choice of the folder is kept. POSIX: the file
// "program-folder" in $XDG_CONFIG_HOME/skldbm/, else in ~/.config/skldbm/.
// Windows: the value "ProgramFolder" of the key
// HKEY_CURRENT_USER\Software\Skyloom\Database Manager. Empty when the system
// offers no such place (no home folder).
std::string ProgramFolderMemory();

// The folder remembered there; nothing when none is (or it cannot be read).
std::optional<std::string> ReadProgramFolderMemory(const std::string& memory);

// Remembers the folder, creating the place where needed. Empty on success,
// else why it failed, for a person to read.
std::string WriteProgramFolderMemory(const std::string& memory, const std::string& folder);

// The Wine prefixes where the programs of Windows are installed: $WINEPREFIX,
// else ~/.wine, whether it exists or not. None on Windows.
std::vector<std::string> UsualWinePrefixes();

// Windows' Program Files folders (64-bit and 32-bit ones, each once). None
// elsewhere.
std::vector<std::string> ProgramFilesFolders();

// A name in a native folder, joined with the platform's separator.
std::string JoinPath(const std::string& folder, const std::string& name);

// The names of the folders directly in a native folder, links followed; none when
// it cannot be read.
std::vector<std::string> ListSubfolderNames(const std::string& folder);

// The names of the regular files directly in a native folder, links followed;
// none when it cannot be read.
std::vector<std::string> ListFileNames(const std::string& folder);

}  // namespace skl::platform
