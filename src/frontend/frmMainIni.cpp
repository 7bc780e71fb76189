// Loading and unloading the window: the labels, the ini file read at load and
// written at unload, and the simulator picker preset from it.
#include <QLabel>

#include "frontend/WindowText.h"
#include "frontend/frmMain.h"
#include "model/RunLog.h"
#include "platform/DriveMap.h"

namespace skl::frontend {

void frmMain::Form_Load() {
    label1_->setText(QString::fromLatin1(kTitleText));
    build_->setText(QString::fromLatin1(kVersionLine));
    lblExplain_->setText(QString::fromLatin1(kExplanationText));
    libraryPreset_ = false;
    Selection& selection = state_->Selection;
    selection.SimulatorFolder.clear();
    selection.CfgFolder.clear();
    selection.ProgramFolder = WindowsFolder(startDrives_, options_.ProgramFolder);
    ini_ = ReadIniFile(options_.ProgramFolder.toStdString(), startDrives_);
    // A stored folder on a drive that is gone leaves the picker where it is.
    const std::string preset = PresetPath(ini_);
    if (!preset.empty()) {
        const std::string native = platform::ToNative(startDrives_, preset);
        if (!native.empty()) simulatorPicker_->SetFolder(Native(native), false, preset.front());
    }
}

void frmMain::Form_Unload() {
    if (unloaded_) return;
    unloaded_ = true;
    try {
        WriteIniFile(options_.ProgramFolder.toStdString(), ini_);
    } catch (...) {
        // Unloading goes on whatever the ini file does.
    }
}

}  // namespace skl::frontend
