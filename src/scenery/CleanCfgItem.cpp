#include "platform/Win1252.h"
#include "scenery/SceneryCfg.h"

namespace skl {

std::string CleanCfgItem(std::string_view item) {
    std::string kept;
    for (char c : item) {
        auto code = static_cast<unsigned char>(c);
        if ((code >= 32 && code <= 126) || code == 145 || code == 146 || code >= 160)
            kept += ToUpper1252(c);
    }
    return TrimBlanks(kept);
}

}  // namespace skl
