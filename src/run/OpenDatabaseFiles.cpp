#include "run/DatabaseFiles.h"

namespace skl {

bool DatabaseSetBusy(const RunState&) { return false; }

void OpenDatabaseFiles(RunState&, FrontEnd&, const std::function<void(int)>&) {}

void ReleaseDatabaseSet(RunState&) {}

void DropDatabaseLock(RunState&) {}

}  // namespace skl
