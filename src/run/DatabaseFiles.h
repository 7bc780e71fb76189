#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "model/FrontEnd.h"
#include "model/RunState.h"

namespace skl {

// One file of a database set: its live name, its backup name and where the
// run keeps its file number.
struct DatabaseFile {
    const char* Live;
    const char* Backup;
    int16_t Files::*Handle;
};

// The nine files in the order of opening.
inline constexpr std::array<DatabaseFile, 9> kDatabaseFiles{{
    {"Taxi.skl", "Taxiskl.old", &Files::TaxiFile},
    {"Poly.skl", "Polyskl.old", &Files::PolyFile},
    {"Marker.skl", "Markerskl.old", &Files::MarkerFile},
    {"Ils.skl", "Ilsskl.old", &Files::IlsFile},
    {"Airport.skl", "Airportskl.old", &Files::AirportFile},
    {"Region.skl", "Regionskl.old", &Files::RegionFile},
    {"State.skl", "Stateskl.old", &Files::StateFile},
    {"Country.skl", "Countryskl.old", &Files::CountryFile},
    {"City.skl", "Cityskl.old", &Files::CityFile},
}};

inline constexpr const char* kRunningMarker = "update.running";

// The Windows path of the selection's database set: the program folder followed
// by the relative database folder, ending in a backslash.
std::string DatabaseSetFolder(const Selection& selection);

// Deletes the marker of the run and closes its descriptor, which releases the
// lock. Does nothing when the run holds no marker.
void RemoveRunningMarker(RunState& state);

// True when another run holds the database set of the selection (its marker is
// locked); checked before the log of a run is opened.
bool DatabaseSetBusy(const RunState& state);

// Deletes the leftovers of the older layout, checks the installation, creates
// the folders, heals an interrupted run, moves the live set aside to its
// backups and opens the nine new files. Errors are ignored statement by
// statement; a failed installation check throws RunStopped, a live file that
// cannot be moved aside throws RunAborted once the files moved so far are back.
// `afterMovingAside` is called with the index of each file moved aside.
void OpenDatabaseFiles(RunState& state, FrontEnd& frontEnd,
                       const std::function<void(int)>& afterMovingAside = {});

// The cancel's way back: closes and deletes the new set, renames the backups to
// their live names, removes the marker and sets RunActive to false.
void RestoreOldDatabases(RunState& state);

// Ends a finished run's hold on the set: removes the marker and its lock. Called
// after the files are closed.
void ReleaseDatabaseSet(RunState& state);

// Lets go of the lock but leaves the marker, as an abort does: the next run
// heals the set.
void DropDatabaseLock(RunState& state);

}  // namespace skl
