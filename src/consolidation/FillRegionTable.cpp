// Region.skl: the value 1 and the one region, "World".
#include "consolidation/Consolidation.h"
#include "skl/TableFiles.h"

namespace skl {

void FillRegionTable(RunState& state) {
    ByteWriter out;
    out.I32(1);
    PutRegion(out);
    state.Files.Table.Write(state.Files.RegionFile, out.Bytes);
    state.Files.RecordsWritten[5] = 1;
}

}  // namespace skl
