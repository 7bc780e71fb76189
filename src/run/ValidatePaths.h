#pragma once

#include <string>

#include "model/RunState.h"

namespace skl {

// The two folder pickers as ValidatePaths sees them: Windows paths without a
// trailing backslash (a drive root keeps its "X:\").
struct PathPickers {
    std::string SimulatorFolder;
    std::string LibraryFolder;
    // The simulator folder lies on a network drive.
    bool NetworkDrive = false;
    // The library picker was moved to the FSX data folder once already (or the
    // user chose it), so it is not moved again.
    bool LibraryPreset = false;
};

enum class Outcome { NoSimulator, Fs2004, FsxReady, FsxLibraryMissing, FsxNetworkReady, FsxNetworkCopyMissing };

// What a validation shows and stores besides the run state it sets.
struct Validation {
    Outcome Result = Outcome::NoSimulator;
    std::string InvalidPathText;
    std::string MessageText;
    std::string UpdateCaption;
    bool UpdateEnabled = false;
    // Stored for the next start: the simulator's folder (upper-cased, with a
    // backslash) and which simulator was chosen last; empty and -1 when nothing
    // is stored.
    std::string StoredPath;
    int FsLast = -1;
};

// The FSX data folder: the "Common AppData" folder of the Wine prefix that holds
// the simulator folder, followed by "\Microsoft\FSX\".
std::string GetFsxDataFolder(const Selection& selection, const std::string& simulatorFolder);

// Recognises the simulator in the pickers' folders and sets the selection of
// the run state: the kind of simulator, where its scenery configuration lies and
// which database set it writes. May move the library picker (once).
Validation ValidatePaths(Selection& selection, PathPickers& pickers);

}  // namespace skl
