#include "run/ValidatePaths.h"

#include "platform/DriveMap.h"
#include "platform/FileSystem.h"
#include "platform/Win1252.h"

namespace skl {

namespace {

std::string WithBackslash(const std::string& folder) {
    return !folder.empty() && folder.back() == '\\' ? folder : folder + "\\";
}

std::string WithoutBackslash(const std::string& folder) {
    if (folder.size() > 3 && folder.back() == '\\') return folder.substr(0, folder.size() - 1);
    return folder;
}

bool FileIn(const Selection& selection, const std::string& folder, const char* name) {
    std::string native = platform::ToNative(selection.Drives, WithBackslash(folder) + name);
    return !native.empty() && platform::IsRegularFile(native);
}

bool FolderExists(const Selection& selection, const std::string& folder) {
    std::string native = platform::ToNative(selection.Drives, folder);
    return !native.empty() && platform::IsDirectory(native);
}

}  // namespace

Validation ValidatePaths(Selection& selection, PathPickers& pickers) {
    Validation v;
    const std::string kFsx = "FS X directory";
    const std::string kReady = "\rPress Update button now!";
    const std::string kFsxCaption = "Update Airports\rfrom FS X";

    selection.CfgFileName.clear();
    selection.NetworkDrive = pickers.NetworkDrive;
    bool isFsx = FileIn(selection, pickers.SimulatorFolder, "fsx.exe");
    bool isFs9 = !isFsx && FileIn(selection, pickers.SimulatorFolder, "fs9.exe");

    if (!isFsx && !isFs9) {
        v.Result = Outcome::NoSimulator;
        v.InvalidPathText = "Invalid path!!\rChoose different path!!!";
        v.MessageText = "Please select FS path in left drive and directory box!";
        v.UpdateCaption = "Update Airports";
        selection.DatabaseFolder.clear();
        return v;
    }

    std::string simulator = WithBackslash(pickers.SimulatorFolder);
    selection.SimulatorFolder = simulator;
    selection.DatabaseFolder.clear();
    if (isFs9) {
        v.Result = Outcome::Fs2004;
        v.InvalidPathText = "FS2004 directory";
        v.MessageText = "You have correctly chosen the FS2004 path" + kReady;
        v.UpdateCaption = "Update Airports\rfrom FS 2004";
        v.UpdateEnabled = true;
        selection.IsFsx = false;
        selection.DatabaseFolder = "\\database\\FS09\\";
        selection.CfgFileName = "scenery.cfg";
        selection.CfgFolder = simulator;
        pickers.LibraryFolder = pickers.SimulatorFolder;
        v.StoredPath = Upper1252(simulator);
        v.FsLast = 0;
    } else if (!selection.NetworkDrive) {
        selection.CfgFolder = GetFsxDataFolder(selection, simulator);
        if (!selection.CfgFolder.empty() && FolderExists(selection, selection.CfgFolder) &&
            !pickers.LibraryPreset) {
            pickers.LibraryFolder = WithoutBackslash(selection.CfgFolder);
            pickers.LibraryPreset = true;
        }
        v.InvalidPathText = kFsx;
        v.UpdateCaption = kFsxCaption;
        if (FileIn(selection, pickers.LibraryFolder, "scenerystatus.bin") &&
            FileIn(selection, pickers.LibraryFolder, "scenery.cfg")) {
            v.Result = Outcome::FsxReady;
            v.MessageText = "You have correctly chosen the paths for FSX" + kReady;
            v.UpdateEnabled = true;
            selection.IsFsx = true;
            selection.DatabaseFolder = "\\database\\FS10\\";
            selection.CfgFileName = "scenery.cfg";
            selection.CfgFolder = WithBackslash(pickers.LibraryFolder);
            v.StoredPath = Upper1252(simulator);
            v.FsLast = 1;
        } else {
            v.Result = Outcome::FsxLibraryMissing;
            v.MessageText =
                "Please select path for scenery library in right drive and directory box!";
            selection.IsFsx = false;
        }
    } else {
        pickers.LibraryFolder = pickers.SimulatorFolder;
        v.InvalidPathText = kFsx;
        v.UpdateCaption = kFsxCaption;
        if (FileIn(selection, pickers.LibraryFolder, "scenerycfg.skl")) {
            v.Result = Outcome::FsxNetworkReady;
            v.MessageText = "You have correctly chosen the paths for FSX" + kReady;
            v.UpdateEnabled = true;
            selection.IsFsx = true;
            selection.DatabaseFolder = "\\database\\FS10\\";
            selection.CfgFileName = "scenerycfg.skl";
            selection.CfgFolder = WithBackslash(pickers.LibraryFolder);
            v.StoredPath = Upper1252(simulator);
            v.FsLast = 1;
        } else {
            v.Result = Outcome::FsxNetworkCopyMissing;
            v.MessageText =
                "Please copy scenery.cfg from your Windows system drive as scenerycfg.skl to "
                "your FSX path";
            selection.IsFsx = false;
        }
    }
    selection.StockSceneryPath = Upper1252(WithoutBackslash(pickers.SimulatorFolder)) + "\\Scenery";
    return v;
}

}  // namespace skl
