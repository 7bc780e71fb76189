// The database set of a run: the nine live files in the set's folder, their
// backups (the set of the previous run) and the marker "update.running" that
// lists the files this run has started to move aside. While the marker exists
// the set on disk may be half moved; a later run puts the listed files back
// before it starts, so that neither a crash nor a kill costs the last complete
// set. The marker is locked while its run lasts, which keeps a second run off
// the same set.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <exception>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"
#include "platform/Win1252.h"
#include "run/DatabaseFiles.h"
#include "model/RunLog.h"

namespace skl {

namespace {

constexpr const char* kInstallationFiles[] = {"magvar09.swf", "magvar10.swf", "SKL_Intro.bmp"};
constexpr const char* kSetFolders[] = {"\\database\\FS09\\", "\\database\\FS10\\"};
constexpr const char* kInstallationText =
    "Database Manager is not in Skyloom main folder or installation failed! ";
constexpr const char* kHealedText = "Previous update was interrupted: database files restored";
constexpr const char* kCannotMoveText = "Cannot move aside ";
// How often a marker that its last holder deleted under our hands is taken anew.
constexpr int kMarkerAttempts = 8;

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

// True for the errno of an operation on a file or folder that does not exist:
// the one failure of a delete or rename that a first run meets and ignores.
bool IsMissing(int err) {
    return err == ENOENT || err == ENOTDIR;
}

// A log line whose failure is ignored like that of any statement here.
void TryLogLine(RunState& state, std::string_view text) {
    try {
        LogLine(state, text);
    } catch (const std::exception&) {
    }
}

bool WriteAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

std::string ReadAll(int fd) {
    std::string text;
    char buffer[4096];
    for (off_t offset = 0;;) {
        ssize_t got = ::pread(fd, buffer, sizeof buffer, offset);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return text;
        text.append(buffer, static_cast<size_t>(got));
        offset += got;
    }
}

// True when the descriptor still is the file at the path: the holder before us
// deletes the marker before it lets go of the lock, so a lock can be won on a
// file that no longer has a name.
bool StillNamed(int fd, const std::string& nativePath) {
    struct stat open {};
    struct stat named {};
    return ::fstat(fd, &open) == 0 && ::stat(nativePath.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// The leftovers of the older layout, which kept one set directly in \database\.
void DeleteOldLayout(RunState& state) {
    std::string folder = ProgramPath(state.Selection, "\\database\\");
    for (const DatabaseFile& file : kDatabaseFiles)
        ::unlink(Native(state, folder + file.Live).c_str());
    for (const DatabaseFile& file : kDatabaseFiles)
        ::unlink(Native(state, folder + file.Backup).c_str());
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
        ::mkdir(database.c_str(), 0777);
        // The folder's native name may only be known once \database exists.
        ::mkdir(Native(state, ProgramPath(state.Selection, setFolder)).c_str(), 0777);
    }
}

// Puts back the files that the marker of an interrupted run lists: a listed file
// whose backup exists gets the backup under its live name; a listed file without
// a backup was never moved aside and stays, as does every file not listed.
void HealInterruptedRun(RunState& state, const std::string& setFolder, int markerFd) {
    std::string listed = ReadAll(markerFd);
    size_t start = 0;
    while (start < listed.size()) {
        size_t end = listed.find('\n', start);
        if (end == std::string::npos) end = listed.size();
        std::string_view name(listed.data() + start, end - start);
        if (!name.empty() && name.back() == '\r') name.remove_suffix(1);
        start = end + 1;
        // Only names of the set are acted on: a damaged marker deletes nothing else.
        for (const DatabaseFile& file : kDatabaseFiles) {
            if (name != file.Live) continue;
            std::string backup = Native(state, setFolder + file.Backup);
            // The rename replaces the live file in one step, so that a kill here
            // still leaves the backup under one of the two names.
            if (platform::IsRegularFile(backup))
                ::rename(backup.c_str(), Native(state, setFolder + file.Live).c_str());
        }
    }
    // The restored names must be on the disk before the list that led to them goes.
    SyncFolder(Native(state, setFolder));
    if (::ftruncate(markerFd, 0) != 0) {
        // The old list stays in front of this run's: the files it names get the
        // backups of this run, which are what they hold now, so it does no harm.
    }
}

// Takes the marker of the set, locked for the whole run. A marker that exists
// already and is not locked was left by a run that did not end: its files are
// put back first and the marker starts empty again. Without a marker (it cannot
// be created) the run goes on unguarded; a marker that another run holds aborts.
void TakeRunningMarker(RunState& state, const std::string& setFolder) {
    Files& files = state.Files;
    if (files.MarkerDescriptor >= 0) ::close(files.MarkerDescriptor);
    files.MarkerDescriptor = -1;
    files.MarkerPath = setFolder + kRunningMarker;
    std::string path = Native(state, files.MarkerPath);
    for (int attempt = 0; attempt < kMarkerAttempts; ++attempt) {
        constexpr int kFlags = O_RDWR | O_APPEND | O_NONBLOCK | O_CLOEXEC;
        bool leftOver = false;
        int fd = ::open(path.c_str(), kFlags | O_CREAT | O_EXCL, 0666);
        if (fd < 0 && errno == EEXIST) {
            leftOver = true;
            fd = ::open(path.c_str(), kFlags);
        }
        if (fd < 0) return;
        if (::flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            ::close(fd);
            throw RunAborted{};
        }
        if (!StillNamed(fd, path)) {
            ::close(fd);
            continue;
        }
        files.MarkerDescriptor = fd;
        if (leftOver) {
            HealInterruptedRun(state, setFolder, fd);
            TryLogLine(state, kHealedText);
        }
        SyncFolder(Native(state, setFolder));
        return;
    }
    throw RunAborted{};
}

// Notes a file in the marker before it is moved aside, on the disk at once.
void ListInMarker(const Files& files, const char* liveName) {
    if (files.MarkerDescriptor < 0) return;
    if (WriteAll(files.MarkerDescriptor, std::string(liveName) + "\r\n"))
        ::fsync(files.MarkerDescriptor);
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
        std::string live = Native(state, setFolder + file.Live);
        ::unlink(live.c_str());
        if (movedAside[i])
            ::rename(Native(state, setFolder + file.Backup).c_str(),
                     Native(state, setFolder + file.Live).c_str());
    }
}

}  // namespace

std::string DatabaseSetFolder(const Selection& selection) {
    return ProgramPath(selection, selection.DatabaseFolder);
}

void SyncFolder(const std::string& nativeFolder) {
    int fd = ::open(nativeFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

void RemoveRunningMarker(RunState& state) {
    Files& files = state.Files;
    if (files.MarkerDescriptor < 0) return;
    // Deleted before the lock goes, so that nobody locks a marker about to vanish
    // unnoticed (a run that does checks that its lock is on the named file).
    ::unlink(Native(state, files.MarkerPath).c_str());
    ::close(files.MarkerDescriptor);
    files.MarkerDescriptor = -1;
    files.MarkerPath.clear();
}

bool DatabaseSetBusy(const RunState& state) {
    std::string path = Native(state, DatabaseSetFolder(state.Selection) + kRunningMarker);
    // A fresh descriptor: its lock conflicts with a lock held through any other
    // open of the marker, in this process too.
    int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return false;
    bool busy = ::flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(fd);  // lets go of a lock won here
    return busy;
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
        bool stuck = ::unlink(backup.c_str()) != 0 && !IsMissing(errno);
        if (!stuck) {
            ListInMarker(files, file.Live);
            std::string live = Native(state, setFolder + file.Live);
            movedAside[i] = ::rename(live.c_str(), backup.c_str()) == 0;
            stuck = !movedAside[i] && !IsMissing(errno);
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

void ReleaseDatabaseSet(RunState& state) {
    if (state.Files.MarkerDescriptor < 0) return;
    // The new set reaches the disk before the marker goes: once the marker is
    // gone no later run would put the old set back.
    std::string setFolder = DatabaseSetFolder(state.Selection);
    for (const DatabaseFile& file : kDatabaseFiles) {
        int fd = ::open(Native(state, setFolder + file.Live).c_str(), O_RDONLY | O_CLOEXEC);
        if (fd < 0) continue;
        ::fsync(fd);
        ::close(fd);
    }
    SyncFolder(Native(state, setFolder));
    RemoveRunningMarker(state);
}

void DropDatabaseLock(RunState& state) {
    Files& files = state.Files;
    if (files.MarkerDescriptor >= 0) ::close(files.MarkerDescriptor);
    files.MarkerDescriptor = -1;
}

}  // namespace skl
