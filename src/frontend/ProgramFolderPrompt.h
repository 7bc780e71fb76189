#pragma once

#include <QString>
#include <functional>

#include "run/FindProgramFolder.h"

class QWidget;

namespace skl::frontend {

// The dialogs of the question for the program folder, replaceable in tests.
struct ProgramFolderDialogs {
    // Says that no folder was found and where the search looked; true when the
    // user wants to choose one.
    std::function<bool(const QString& text)> OfferChoice;
    // A folder picked by the user, starting at `start`; empty when cancelled.
    std::function<QString(const QString& start)> ChooseFolder;
    // A note with one OK button.
    std::function<void(const QString& text)> Tell;
};

// The standard message boxes and the folder dialog of the desktop.
ProgramFolderDialogs StandardProgramFolderDialogs(QWidget* parent = nullptr);

// The program folder of a window started without --program-folder: its own
// folder when that holds the installation files; else the one remembered or found
// in the usual places; else the user is asked to pick one, which must hold the
// files and is then remembered. A user who declines gets the own folder, where
// the update then fails its installation check as always.
QString ChooseProgramFolder(const QString& ownFolder, const ProgramFolderPlaces& places,
                            const ProgramFolderDialogs& dialogs);

}  // namespace skl::frontend
