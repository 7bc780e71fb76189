#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "model/FixedText.h"
#include "model/Records.h"
#include "platform/ByteReader.h"
#include "platform/DriveMap.h"
#include "platform/FileLock.h"
#include "platform/FileSystem.h"
#include "platform/FileTable.h"

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
    // The AddonAirports entry that the current airport made, 0 when it made none.
    int32_t CurrentAddonEntry = 0;
    // Where the current airport's subrecord walk ends: a reader that moves the
    // position back by a damaged size is no error when it lands there.
    int64_t WalkEnd = 0;
    // The reference point of the current airport, which its comms copy.
    float AirportLatitude = 0;
    float AirportLongitude = 0;
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

// What the override rule needs to know of the add-on entries of one code: how
// many there are of each area, and how many of them replace others. The rule
// visits every entry of the code; these counts give the same answer at once.
struct AddonCode {
    struct Area {
        int32_t Entries = 0;
        int32_t Replacing = 0;
    };
    std::unordered_map<int32_t, Area> ByArea;
    int32_t Replacing = 0;
};

// The tables that the readers fill and the passes change. Lookups that would
// be linear scans in table order go through hash indexes keyed by CodeKey that
// yield the same entries in the same order.
struct Tables {
    // AirportTop is the highest used index, -1 when empty. While a blind airport
    // is read it stands one above the table's last index.
    std::vector<AirportRecord> AirportTable;
    int32_t AirportTop = -1;
    std::vector<IlsRecord> IlsTable;
    IlsWorkingValues IlsWorking;
    // The name list read last; a lookup searches entries 0 to NameCount - 1.
    std::vector<NameEntry> NameTable;
    int32_t NameCount = 0;
    std::unordered_map<std::string, int32_t> NameIndex;  // key -> first entry
    // Add-on airports from index 1 (index 0 unused); the index gives every
    // entry of a code in list order.
    std::vector<AddonAirport> AddonAirports{AddonAirport()};
    std::unordered_map<std::string, AddonCode> AddonIndex;
    // ICAO codes met twice within one area, from index 1; index 0 is unused so
    // that the top index is size - 1.
    std::vector<std::string> DoubleAddonIcaos{std::string()};
    std::unordered_set<std::string> DoubleAddonKeys;
    int32_t PolygonCounter = 0;
    // The taxi points of the last taxi point subrecord (one spare element at the
    // end) and the names of the last taxi name subrecord.
    std::vector<TaxiPoint> TaxiPoints;
    std::vector<std::string> TaxiNames;
    // The keys of the City file, sorted, as the last run left them.
    std::vector<std::string> CityKeys;
    // Counts for the summary of a run.
    int32_t BlindAirports = 0;
    int32_t StationsRead = 0;

    int32_t DoubleAddonTop() const { return static_cast<int32_t>(DoubleAddonIcaos.size()) - 1; }
    int32_t AddonTop() const { return static_cast<int32_t>(AddonAirports.size()) - 1; }
};

// The open files of the run: the log and the nine files of the database set,
// by their numbers in the file table (0 while not open).
struct Files {
    platform::FileTable Table;
    std::string LogFilePath;
    int16_t LogFile = 0;
    int16_t TaxiFile = 0;
    int16_t PolyFile = 0;
    int16_t MarkerFile = 0;
    int16_t IlsFile = 0;
    int16_t AirportFile = 0;
    int16_t RegionFile = 0;
    int16_t StateFile = 0;
    int16_t CountryFile = 0;
    int16_t CityFile = 0;
    // The marker of a run under way in the set's folder, held locked while the
    // run lasts (not held when none).
    platform::FileLock MarkerLock;
    std::string MarkerPath;
    // Records written to each of the nine files, in the order of opening
    // (Taxi, Poly, Marker, Ils, Airport, Region, State, Country, City).
    std::array<int64_t, 9> RecordsWritten{};
};

struct RunState {
    ::skl::Selection Selection;
    ::skl::Reading Reading;
    ::skl::Tables Tables;
    ::skl::Files Files;
};

}  // namespace skl
