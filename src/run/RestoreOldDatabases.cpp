#include "run/DatabaseFiles.h"

namespace skl {

void RestoreOldDatabases(RunState& state) { state.Reading.RunActive = false; }

}  // namespace skl
