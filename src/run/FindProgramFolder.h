#pragma once

#include <string>
#include <vector>

// The folder of the moving-map program for a front end that does not stand in
// it (an installed program): the program's own folder when it holds the
// installation files, else the folder the user chose before, else the first
// one found under the Program Files folders of the Wine prefixes and of
// Windows. Nothing of this reaches the log or the database files; the paths
// are native (UTF-8), for messages a person reads.
namespace skl {

// The files whose presence marks the folder.
inline constexpr const char* kInstallationFileNames[] = {"magvar09.swf", "magvar10.swf",
                                                         "SKL_Intro.bmp"};

// Where the search looks besides the program's own folder.
struct ProgramFolderPlaces {
    // Where the user's choice is remembered (empty: nowhere).
    std::string Memory;
    // Wine prefixes whose drive_c/Program Files*/ folders are searched.
    std::vector<std::string> WinePrefixes;
    // Further Program Files folders (Windows).
    std::vector<std::string> ProgramFiles;
};

// The places of this system and user.
ProgramFolderPlaces UsualProgramFolderPlaces();

// The installation files missing from a native folder, as the run's check sees
// them (names compared without regard to case); empty when the folder passes.
std::vector<std::string> MissingInstallationFiles(const std::string& folder);

struct ProgramFolderSearch {
    // The folder found; empty when none was.
    std::string Folder;
    // How it was found, for a note ("remembered in ..."); empty for the own folder.
    std::string FoundBy;
    // One line for each place that did not give it: what was looked at and why it
    // failed.
    std::vector<std::string> Tried;
};

// Looks for the folder: `ownFolder` (described as `ownName`) first, then the
// places. Reads only; a remembered folder that fails is passed over, not
// forgotten.
ProgramFolderSearch FindProgramFolder(const std::string& ownFolder, const std::string& ownName,
                                      const ProgramFolderPlaces& places);

// The files, joined for a message: "magvar10.swf and SKL_Intro.bmp".
std::string JoinNames(const std::vector<std::string>& names);

// Remembers a folder that passes the check. Empty on success, else why not.
std::string RememberProgramFolder(const ProgramFolderPlaces& places, const std::string& folder);

}  // namespace skl
