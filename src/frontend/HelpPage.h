#pragma once

#include <QString>

namespace skl::frontend {

// The help page to open: Help/dbmanager.htm of the program folder, which is the
// program's own folder in a build tree, where the build puts the page beside the
// program; else, for an installed program whose program folder has none, the
// copy the package installs (found relative to the program's own folder). When
// neither exists, the program folder's path, so that the desktop says what is
// missing.
QString HelpPage(const QString& programFolder, const QString& executableFolder);

}  // namespace skl::frontend
