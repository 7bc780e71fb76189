#include "frontend/HelpPage.h"

#include <QDir>
#include <QFileInfo>

#include "frontend/WindowState.h"

// SKL_INSTALLED_HELP_PAGE, set by the build: the installed help page relative to
// the folder the programs are installed in.
namespace skl::frontend {

QString HelpPage(const QString& programFolder, const QString& executableFolder) {
    const QString own = programFolder + QString::fromLatin1(kHelpPage);
    if (QFileInfo(own).isFile()) return own;
    const QString installed = QDir::cleanPath(executableFolder + QLatin1Char('/') +
                                              QString::fromLatin1(SKL_INSTALLED_HELP_PAGE));
    return QFileInfo(installed).isFile() ? installed : own;
}

}  // namespace skl::frontend
