#include "frontend/ProgramFolderPrompt.h"

#include <QAbstractButton>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <iterator>
#include <string>
#include <vector>

namespace skl::frontend {

namespace {

constexpr const char* kTitle = "Database Manager";

QString Text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

QString InstallationFiles() {
    return Text(JoinNames({std::begin(kInstallationFileNames), std::end(kInstallationFileNames)}));
}

}  // namespace

ProgramFolderDialogs StandardProgramFolderDialogs(QWidget* parent) {
    ProgramFolderDialogs dialogs;
    dialogs.OfferChoice = [parent](const QString& text) {
        QMessageBox box(QMessageBox::Question, QString::fromLatin1(kTitle), text,
                        QMessageBox::Open | QMessageBox::Cancel, parent);
        box.button(QMessageBox::Open)->setText(QStringLiteral("Choose folder..."));
        return box.exec() == QMessageBox::Open;
    };
    dialogs.ChooseFolder = [parent](const QString& start) {
        return QFileDialog::getExistingDirectory(parent, QStringLiteral("Skyloom program folder"),
                                                 start);
    };
    dialogs.Tell = [parent](const QString& text) {
        QMessageBox::information(parent, QString::fromLatin1(kTitle), text);
    };
    return dialogs;
}

QString ChooseProgramFolder(const QString& ownFolder, const ProgramFolderPlaces& places,
                            const ProgramFolderDialogs& dialogs) {
    const ProgramFolderSearch search =
        FindProgramFolder(ownFolder.toStdString(), "the folder of SKLDbManager", places);
    if (!search.Folder.empty()) return Text(search.Folder);

    QString text = QStringLiteral("The Skyloom program folder (the folder that holds ") +
                   InstallationFiles() + QStringLiteral(") was not found. Looked at:\n");
    for (const std::string& tried : search.Tried) text += QStringLiteral("\n") + Text(tried);
    text += QStringLiteral("\n\nChoose the folder?");
    if (!dialogs.OfferChoice(text)) return ownFolder;

    QString start = QDir::homePath();
    for (;;) {
        const QString chosen = dialogs.ChooseFolder(start);
        if (chosen.isEmpty()) return ownFolder;
        const QString folder = QDir::cleanPath(QDir(chosen).absolutePath());
        const std::vector<std::string> missing = MissingInstallationFiles(folder.toStdString());
        if (!missing.empty()) {
            dialogs.Tell(folder + QStringLiteral(" is not the Skyloom program folder: ") +
                         Text(JoinNames(missing)) +
                         (missing.size() == 1 ? QStringLiteral(" is missing.")
                                              : QStringLiteral(" are missing.")));
            start = folder;
            continue;
        }
        const std::string problem = RememberProgramFolder(places, folder.toStdString());
        if (!problem.empty())
            dialogs.Tell(QStringLiteral("The folder is used now but cannot be remembered: ") +
                         Text(problem));
        return folder;
    }
}

}  // namespace skl::frontend
