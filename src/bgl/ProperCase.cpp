#include "bgl/Decoders.h"
#include "platform/Win1252.h"

namespace skl {

std::string ProperCase(std::string_view text) {
    std::string result(text);
    for (size_t i = 0; i < result.size(); ++i) {
        bool afterLetter = i > 0 && static_cast<unsigned char>(text[i - 1]) >= 65;
        result[i] = afterLetter ? ToLower1252(text[i]) : ToUpper1252(text[i]);
    }
    return result;
}

}  // namespace skl
