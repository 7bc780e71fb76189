#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/DriveMap.h"
#include "run/ValidatePaths.h"

namespace skl {

// The one persistent setting of the window: where each simulator lives and which
// one was handled last. Paths are Windows paths, upper-cased, ending in a
// backslash, Windows-1252.
struct IniSettings {
    std::string Fs09Path;
    std::string Fs10Path;
    // 0: FS2004, anything else: FSX.
    uint8_t FsLast = 0;
};

inline constexpr const char* kIniFileName = "SKLDbManager.ini";
inline constexpr const char* kIniBackupName = "SKLDbManagerini.old";

// Reads SKLDbManager.ini (found in any case) in the native program folder and
// creates it empty when there is none. A stored path whose folder holds no
// scenery.cfg is forgotten; `drives` turns the stored Windows paths into native
// ones for that test. Never throws: what cannot be read counts as absent.
IniSettings ReadIniFile(const std::string& nativeProgramFolder, const platform::DriveMap& drives);

// Copies the present file to SKLDbManagerini.old, deletes it and writes it anew:
// "[FS]", then FSPATH10 before FSPATH09 when FSX was last (else the other way
// round), then FSLAST; lines end in CR LF, values stand without quotes. A step
// that fails is passed over.
void WriteIniFile(const std::string& nativeProgramFolder, const IniSettings& settings);

// The FSLAST value of the file's text: its leading number, rounded with halves
// to the even neighbour; no number, or one outside 0 to 255, gives 0.
uint8_t FsLastValue(std::string_view text);

// The stored path that presets the simulator picker at start: FSPATH09 when
// FS2004 was last, FSPATH10 when FSX was; empty when that one is empty.
std::string PresetPath(const IniSettings& settings);

// Notes a valid selection: that simulator's path and FSLAST. A selection that
// stores nothing (not valid) leaves the settings alone.
void StoreSelection(IniSettings& settings, const Validation& validation);

}  // namespace skl
