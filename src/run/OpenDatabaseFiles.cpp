// The database set of a run: the nine live files in the set's folder and their
// backups (the set of the previous run). Opening the set moves each live file
// aside to its backup and opens a new live file; the marker of the run
// (RunningMarker.cpp) lists each file before it is moved, so that neither a
// crash nor a kill costs the last complete set.
#include <array>
#include <exception>
#include <string>
#include <string_view>

#include "model/RunLog.h"
#include "platform/FileSystem.h"
#include "platform/Win1252.h"
#include "run/DatabaseFiles.h"
#include "run/RunningMarker.h"

namespace skl {

namespace {

constexpr const char* kInstallationFiles[] = {"magvar09.swf", "magvar10.swf", "SKL_Intro.bmp"};
constexpr const char* kSetFolders[] = {"\\database\\FS09\\", "\\database\\FS10\\"};
constexpr const char* kInstallationText =
    "Database Manager is not in Skyloom main folder or installation failed! ";
constexpr const char* kCannotMoveText = "Cannot move aside ";

// A path under the program folder; `relative` starts with a backslash. A drive
// root keeps a single backslash.
std::string ProgramPath(const Selection& selection, std::string_view relative) {
    std::string path = selection.ProgramFolder;
    if (!path.empty() && path.back() == '\\') path.pop_back();
    return path.append(relative);
}

std::string Native(const RunState& state, const std::string& windowsPath) {
    return platform::ToNative(state.Selection.Drives, windowsPath);
}

// The leftovers of the older layout, which kept one set directly in \database\.
void DeleteOldLayout(RunState& state) {
    std::string folder = ProgramPath(state.Selection, "\\database\\");
    for (const DatabaseFile& file : kDatabaseFiles)
        platform::RemoveFile(Native(state, folder + file.Live));
    for (const DatabaseFile& file : kDatabaseFiles)
        platform::RemoveFile(Native(state, folder + file.Backup));
}

// Shows the failed installation check and ends the run before any set is touched.
void CheckInstallation(RunState& state, FrontEnd& frontEnd) {
    for (const char* name : kInstallationFiles) {
        std::string path = ProgramPath(state.Selection, std::string("\\") + name);
        if (platform::IsRegularFile(Native(state, path))) continue;
        std::string text = kInstallationText + Upper1252(state.Selection.ProgramFolder);
        TryLogLine(state, text);
        try {
            frontEnd.MessageBox(text + "! Program will now abort!", MessageButtons::Ok,
                                "Database Manager");
        } catch (const std::exception&) {
        }
        try {
            frontEnd.Unload();
        } catch (const std::exception&) {
        }
        throw RunStopped{};
    }
}

// Both simulators' set folders exist after this, whichever simulator is selected.
void CreateSetFolders(RunState& state) {
    std::string database = Native(state, ProgramPath(state.Selection, "\\database"));
    for (const char* setFolder : kSetFolders) {
        std::string folder = Native(state, ProgramPath(state.Selection, setFolder));
        if (platform::IsDirectory(database) && platform::IsDirectory(folder)) continue;
        platform::MakeFolder(database);
        // The folder's native name may only be known once \database exists.
        platform::MakeFolder(Native(state, ProgramPath(state.Selection, setFolder)));
    }
}

// Undoes the moving aside of the files before `count`: their new files are
// closed and deleted, and what was moved aside gets its live name back.
void PutBackMovedFiles(RunState& state, const std::string& setFolder, size_t count,
                       const std::array<bool, kDatabaseFiles.size()>& movedAside) {
    Files& files = state.Files;
    for (size_t i = count; i-- > 0;) {
        const DatabaseFile& file = kDatabaseFiles[i];
        files.Table.Close(files.*file.Handle);
        files.*file.Handle = 0;
        platform::RemoveFile(Native(state, setFolder + file.Live));
        if (movedAside[i])
            platform::RenameReplacing(Native(state, setFolder + file.Backup),
                                      Native(state, setFolder + file.Live));
    }
}

}  // namespace

std::string DatabaseSetFolder(const Selection& selection) {
    return ProgramPath(selection, selection.DatabaseFolder);
}

void OpenDatabaseFiles(RunState& state, FrontEnd& frontEnd,
                       const std::function<void(int)>& afterMovingAside) {
    DeleteOldLayout(state);
    CheckInstallation(state, frontEnd);
    CreateSetFolders(state);
    state.Tables.AirportTop = -1;
    state.Tables.IlsTable.clear();
    state.Tables.PolygonCounter = 0;

    std::string setFolder = DatabaseSetFolder(state.Selection);
    TakeRunningMarker(state, setFolder);

    // Each live file becomes the backup, and a new live file is opened. The name
    // goes into the marker before the rename: a kill before the rename leaves a
    // listed file without backup, which a later run leaves alone, a kill after it
    // a listed file with its backup, which a later run puts back.
    Files& files = state.Files;
    std::array<bool, kDatabaseFiles.size()> movedAside{};
    for (size_t i = 0; i < kDatabaseFiles.size(); ++i) {
        const DatabaseFile& file = kDatabaseFiles[i];
        std::string backup = Native(state, setFolder + file.Backup);
        // A backup that stays would be replaced by the rename while the marker
        // lists the file, and a live file that stays would be written over.
        bool stuck = platform::RemoveFile(backup) == platform::FileResult::Failed;
        if (!stuck) {
            ListInMarker(files, file.Live);
            std::string live = Native(state, setFolder + file.Live);
            platform::FileResult renamed = platform::RenameReplacing(live, backup);
            movedAside[i] = renamed == platform::FileResult::Done;
            stuck = renamed == platform::FileResult::Failed;
        }
        if (stuck) {
            PutBackMovedFiles(state, setFolder, i, movedAside);
            TryLogLine(state, kCannotMoveText + setFolder + file.Live);
            throw RunAborted{};
        }
        if (afterMovingAside) afterMovingAside(static_cast<int>(i));
        files.*file.Handle = static_cast<int16_t>(files.Table.FreeFile());
        try {
            files.Table.OpenOutput(files.*file.Handle, Native(state, setFolder + file.Live));
        } catch (const std::exception&) {
        }
    }
}

}  // namespace skl
