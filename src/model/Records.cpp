#include "model/Records.h"

#include "platform/Win1252.h"

namespace skl {

std::string CodeKey(std::string_view code) { return Upper1252(TrimBlanks(code)); }

}  // namespace skl
