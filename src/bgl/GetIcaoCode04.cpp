// Decodes a packed ICAO code: five base-38 digits, most significant first, where
// 2 to 11 are the digits 0 to 9 and 12 to 37 the letters A to Z; other digits
// give no character. The shifted form carries five flag bits below the code.
#include "bgl/Decoders.h"
#include "model/RunLog.h"

namespace skl {

std::string GetIcaoCode04(RunState& state, int32_t value, bool shifted) {
    std::string code;
    ReaderStatement(state, "GetIcaoCode04", [&] {
        int64_t v = value;
        if (shifted) v = v >= 0 ? v / 32 : -((-v + 31) / 32);  // rounded down
        // A negative value has only digits of 0 and below: no character at all.
        if (v < 0) return;
        int digits[5];
        for (int& digit : digits) {
            digit = static_cast<int>(v % 38);
            v /= 38;
        }
        for (int i = 4; i >= 0; --i) {
            if (digits[i] >= 2 && digits[i] <= 11) code += static_cast<char>(digits[i] + 46);
            if (digits[i] >= 12) code += static_cast<char>(digits[i] + 53);
        }
    });
    return code;
}

}  // namespace skl
