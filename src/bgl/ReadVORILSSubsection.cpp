#include "bgl/BglReaders.h"

namespace skl {

// Its records are not read yet: the subsection is passed over.
void ReadVORILSSubsection(RunState& /*state*/, int32_t /*position*/, int32_t /*recordCount*/, int32_t /*size*/) {}

}  // namespace skl
