// The two folder pickers: the drives they list, and the check of the chosen folders
// after every change, whose outcome the window shows.
#include <QLabel>
#include <QPushButton>

#include "frontend/WindowText.h"
#include "frontend/frmMain.h"
#include "platform/DriveMap.h"
#include "run/ValidatePaths.h"

namespace skl::frontend {

void frmMain::AddDrives(const platform::DriveMap& drives) {
    std::vector<PickerDrive> listed;
    for (size_t i = 0; i < drives.Folders.size(); ++i) {
        if (drives.Folders[i].empty()) continue;
        listed.push_back({static_cast<char>('A' + i), Native(drives.Folders[i])});
    }
    simulatorPicker_->AddDrives(listed);
    libraryPicker_->AddDrives(listed);
}

std::string frmMain::WindowsFolder(const platform::DriveMap& drives,
                                   const QString& nativeFolder) const {
    if (nativeFolder.isEmpty()) return {};
    std::optional<std::string> windows = platform::ToWindows(drives, nativeFolder.toStdString());
    if (!windows) return {};
    std::string folder = *windows;
    if (folder.size() > 3 && folder.back() == '\\') folder.pop_back();
    return folder;
}

void frmMain::dirFS_Change() {
    ValidateSelection();
}

void frmMain::dirScenLib_Change() {
    ValidateSelection();
}

void frmMain::ValidateSelection() {
    if (running_) return;
    Selection& selection = state_->Selection;
    const QString simulator = simulatorPicker_->Folder();
    selection.Drives = platform::MakeDriveMap(simulator.toStdString(), options_.Mappings);
    AddDrives(selection.Drives);
    selection.ProgramFolder = WindowsFolder(selection.Drives, options_.ProgramFolder);

    PathPickers pickers;
    pickers.SimulatorFolder = WindowsFolder(selection.Drives, simulator);
    pickers.LibraryFolder = WindowsFolder(selection.Drives, libraryPicker_->Folder());
    pickers.NetworkDrive = platform::IsNetworkFolder(simulator.toStdString());
    pickers.LibraryPreset = libraryPreset_;
    const std::string library = pickers.LibraryFolder;
    Validation validation = ValidatePaths(selection, pickers);
    libraryPreset_ = pickers.LibraryPreset;
    // The right picker follows where validation moved it; validation has
    // already judged that folder, so it does not run again.
    if (pickers.LibraryFolder != library) {
        const std::string native = platform::ToNative(selection.Drives, pickers.LibraryFolder);
        if (!native.empty())
            libraryPicker_->SetFolder(Native(native), true, pickers.LibraryFolder.front());
    }
    StoreSelection(ini_, validation);
    ApplyOutcome(ViewOfOutcome(validation));
}

void frmMain::ApplyOutcome(const OutcomeView& view) {
    lblInvalidPath_->setText(Shown(view.InvalidPathText));
    lblMessage_->setText(Shown(view.MessageText));
    if (view.MessageColour) SetColour(lblMessage_, *view.MessageColour);
    cmdWorld_->setText(Shown(view.UpdateCaption));
    SetColour(lblDirScenLib_, view.LibraryLabelColour);
    controls_.Update = view.UpdateEnabled;
    controls_.LibraryPicker = view.LibraryPickerEnabled;
    ApplyControls();
}

}  // namespace skl::frontend
