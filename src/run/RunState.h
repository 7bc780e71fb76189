#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/ByteReader.h"
#include "platform/FileSystem.h"
#include "platform/DriveMap.h"
#include "platform/FileTable.h"
#include "run/FixedText.h"

namespace skl {

// The simulator selection: set by ValidatePaths before a run and only read by it.
// Folder strings are Windows paths ending in a backslash; the program folder has
// no trailing backslash (a drive root keeps its "X:\"); StockSceneryPath ends in
// "\Scenery"; DatabaseFolder is relative to the program folder.
struct Selection {
    bool IsFsx = false;
    std::string SimulatorFolder;
    std::string CfgFolder;
    std::string CfgFileName;
    std::string DatabaseFolder;
    std::string StockSceneryPath;
    bool NetworkDrive = false;
    std::string ProgramFolder;
    platform::DriveMap Drives;
};

// The state of the reading: the area table and what is being read now.
struct Reading {
    int16_t AreaCount = 0;
    std::vector<std::string> AreaDirectories;
    std::vector<std::string> AreaTitles;
    std::string CurrentBglFile;
    int32_t AreaNumber = 0;
    bool StockScenery = false;
    bool RunActive = false;
    int16_t AirportRecordId = 0;
    FixedText<5> CurrentIcao;
    bool AirportIsNew = false;
    // The BGL file being read: its number in the file table and its bytes.
    int16_t BglFile = 0;
    platform::ByteReader Bgl;
    // The running search for BGL files of one area: what it found and the next
    // one to hand out.
    std::vector<platform::FoundFile> Search;
    size_t SearchNext = 0;
    // How many BGL files the run has opened, for the summary of a run.
    int32_t BglFilesRead = 0;
};

// The tables that the readers fill and the passes change.
struct Tables {
    // ICAO codes met twice within one area, from index 1; index 0 is unused so
    // that the top index is size - 1.
    std::vector<std::string> DoubleAddonIcaos{std::string()};
    int32_t DoubleAddonTop() const { return static_cast<int32_t>(DoubleAddonIcaos.size()) - 1; }
};

// The open files of the run.
struct Files {
    platform::FileTable Table;
    std::string LogFilePath;
    int16_t LogFile = 0;
};

struct RunState {
    ::skl::Selection Selection;
    ::skl::Reading Reading;
    ::skl::Tables Tables;
    ::skl::Files Files;
};

}  // namespace skl
