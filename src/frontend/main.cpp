// SKLDbManager: the one window of the Database Manager.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <cstdio>

#include "frontend/ProgramFolderPrompt.h"
#include "frontend/frmMain.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("SKLDbManager"));
    QGuiApplication::setDesktopFileName(QStringLiteral("skldbm"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Rebuilds the Skyloom airport and navigation databases from simulator scenery."));
    parser.addHelpOption();
    QCommandLineOption programFolder(
        QStringLiteral("program-folder"),
        QStringLiteral("Skyloom program folder (default: the folder of this program, else "
                       "the one remembered or found in the Wine prefix, else asked for)."),
        QStringLiteral("DIR"));
    QCommandLineOption mapDrive(QStringLiteral("map-drive"),
                                QStringLiteral("Map a drive letter to a folder (repeatable)."),
                                QStringLiteral("X=DIR"));
    parser.addOption(programFolder);
    parser.addOption(mapDrive);
    parser.process(app);

    skl::frontend::WindowOptions options;
    for (const QString& mapping : parser.values(mapDrive)) {
        if (mapping.size() < 3 || mapping[1] != QLatin1Char('=') || !mapping[0].isLetter() ||
            mapping[0].unicode() > 127) {
            std::fprintf(stderr, "SKLDbManager: --map-drive wants LETTER=FOLDER, not \"%s\"\n",
                         mapping.toLocal8Bit().constData());
            return 2;
        }
        const QString folder = QDir::cleanPath(QDir(mapping.mid(2)).absolutePath());
        options.Mappings.emplace_back(static_cast<char>(mapping[0].toLatin1()),
                                      folder.toStdString());
    }
    options.WinePrefix = skl::frontend::DefaultWinePrefix();
    options.ProgramFolder =
        parser.isSet(programFolder)
            ? parser.value(programFolder)
            : skl::frontend::ChooseProgramFolder(QCoreApplication::applicationDirPath(),
                                                 skl::UsualProgramFolderPlaces(),
                                                 skl::frontend::StandardProgramFolderDialogs());

    skl::frontend::frmMain window(options);
    window.Form_Load();
    window.show();
    return QApplication::exec();
}
