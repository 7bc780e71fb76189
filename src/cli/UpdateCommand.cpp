#include "cli/UpdateCommand.h"

#include <cstdio>
#include <filesystem>

#include "cli/TerminalFrontEnd.h"
#include "platform/DriveMap.h"
#include "platform/FileSystem.h"
#include "platform/ProgramPath.h"
#include "run/DatabaseFiles.h"
#include "run/FindProgramFolder.h"
#include "run/UpdateRun.h"
#include "run/ValidatePaths.h"

namespace skl::cli {

namespace fs = std::filesystem;

namespace {

constexpr int kExitFinished = 0;
constexpr int kExitAborted = 1;
constexpr int kExitBadArguments = 2;
constexpr int kExitCancelled = 130;

void Error(const std::string& text) {
    std::fprintf(stderr, "skldbm: %s\n", text.c_str());
}

std::string AbsoluteFolder(const std::string& folder) {
    std::error_code ec;
    fs::path absolute = fs::weakly_canonical(fs::absolute(folder, ec), ec);
    return absolute.string();
}

// A native folder as the picker of the window would hold it: a Windows path
// without a trailing backslash (a drive root keeps its "X:\").
std::optional<std::string> PickerFolder(const platform::DriveMap& drives,
                                        const std::string& nativeFolder) {
    auto windows = platform::ToWindows(drives, AbsoluteFolder(nativeFolder));
    if (!windows) return std::nullopt;
    std::string folder = *windows;
    if (folder.size() > 3 && folder.back() == '\\') folder.pop_back();
    return folder;
}

// What a finished run read and wrote, on standard output.
void PrintSummary(const RunState& state) {
    const Tables& tables = state.Tables;
    std::printf("Log: %s\n", DisplayText(state.Files.LogFilePath, "").c_str());
    std::printf("BGL files read: %d\n", state.Reading.BglFilesRead);
    std::printf("Airports stored: %d\n", tables.AirportTop + 1);
    std::printf("Blind airports: %d\n", tables.BlindAirports);
    std::printf("VOR/ILS stations read: %d (ILS: %zu)\n", tables.StationsRead,
                tables.IlsTable.size());
    std::printf(
        "Database files in %s:\n",
        DisplayText(state.Selection.ProgramFolder + state.Selection.DatabaseFolder, "").c_str());
    for (size_t i = 0; i < kDatabaseFiles.size(); ++i)
        std::printf("  %-12s %lld records\n", kDatabaseFiles[i].Live,
                    static_cast<long long>(state.Files.RecordsWritten[i]));
}

// The program folder when none is given: this program's own folder, or, for an
// installed program, the one the search finds. Says what it tried when it finds
// none.
std::optional<std::string> DefaultProgramFolder(bool quiet) {
    ProgramFolderSearch search =
        FindProgramFolder(platform::ExecutableFolder(), "the folder of skldbm", UsualProgramFolderPlaces());
    if (search.Folder.empty()) {
        std::string text =
            "no Skyloom program folder found (the folder that holds " +
            JoinNames({std::begin(kInstallationFileNames), std::end(kInstallationFileNames)}) +
            "). Looked at:\n";
        for (const std::string& tried : search.Tried) text += "  " + tried + "\n";
        text += "Give the folder with --program-folder DIR.";
        Error(text);
        return std::nullopt;
    }
    if (!quiet && !search.FoundBy.empty())
        std::fprintf(stderr, "Program folder: %s (%s)\n", search.Folder.c_str(),
                     search.FoundBy.c_str());
    return search.Folder;
}

}  // namespace

int RunUpdateCommand(const UpdateOptions& options) {
    std::vector<platform::DriveMapping> mappings;
    for (const std::string& mapping : options.DriveMappings) {
        if (mapping.size() < 3 || mapping[1] != '=' ||
            !std::isalpha(static_cast<unsigned char>(mapping[0]))) {
            Error("--map-drive wants LETTER=FOLDER, not \"" + mapping + "\"");
            return kExitBadArguments;
        }
        mappings.emplace_back(mapping[0], AbsoluteFolder(mapping.substr(2)));
    }
    if (!platform::IsDirectory(options.SimulatorFolder)) {
        Error("simulator folder not found: " + options.SimulatorFolder);
        return kExitBadArguments;
    }
    std::string nativeSimulator = AbsoluteFolder(options.SimulatorFolder);

    RunState state;
    Selection& selection = state.Selection;
    selection.Drives = platform::MakeDriveMap(nativeSimulator, mappings);

    PathPickers pickers;
    auto simulator = PickerFolder(selection.Drives, nativeSimulator);
    std::string programNative = options.ProgramFolder;
    if (programNative.empty()) {
        std::optional<std::string> found = DefaultProgramFolder(options.Quiet);
        if (!found) return kExitBadArguments;
        programNative = *found;
    }
    auto program = PickerFolder(selection.Drives, programNative);
    if (!simulator || !program) {
        Error("no drive letter reaches " + (simulator ? programNative : nativeSimulator) +
              ": give one with --map-drive");
        return kExitBadArguments;
    }
    pickers.SimulatorFolder = *simulator;
    pickers.NetworkDrive = platform::IsNetworkFolder(nativeSimulator);
    if (!options.SceneryLibrary.empty()) {
        auto library = PickerFolder(selection.Drives, options.SceneryLibrary);
        if (!library) {
            Error("no drive letter reaches " + options.SceneryLibrary +
                  ": give one with --map-drive");
            return kExitBadArguments;
        }
        pickers.LibraryFolder = *library;
        pickers.LibraryPreset = true;
    }
    selection.ProgramFolder = *program;

    Validation validation = ValidatePaths(selection, pickers);
    if (!validation.UpdateEnabled) {
        std::fprintf(stderr, "%s\n", DisplayText(validation.MessageText, "\n").c_str());
        return kExitBadArguments;
    }

    TerminalFrontEnd frontEnd(options.Quiet);
    RunEnd end = cmdWorld_Click(state, frontEnd);
    frontEnd.Finish();
    switch (end) {
        case RunEnd::LogNotCreated:
            Error("Cannot create the log file " + DisplayText(state.Files.LogFilePath, ""));
            return kExitAborted;
        case RunEnd::Busy:
            Error("Another update of this database is running");
            return kExitAborted;
        case RunEnd::Aborted:
        case RunEnd::Stopped:
            return kExitAborted;
        case RunEnd::Cancelled:
            std::fprintf(stderr, "Terminated via User!!! The previous database files are back.\n");
            return kExitCancelled;
        case RunEnd::Finished:
            break;
    }
    if (frontEnd.CancelPending())
        std::fprintf(stderr,
                     "Ctrl-C came after the last BGL file was read: the run was finished.\n");
    PrintSummary(state);
    return kExitFinished;
}

}  // namespace skl::cli
