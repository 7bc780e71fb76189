// The leading number of a text, as the configuration values and the frequency
// digits of the readers are converted: blanks are ignored, "&H" and "&O" give
// hexadecimal and octal numbers, and a text without digits is 0.
#include "model/LeadingNumber.h"

#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/RunError.h"

namespace skl {

double LeadingNumber(std::string_view text) {
    std::string compact;
    for (char c : text)
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r') compact += c;
    if (compact.size() > 2 && compact[0] == '&' && (compact[1] == 'H' || compact[1] == 'h'))
        return static_cast<double>(static_cast<int32_t>(std::strtoul(compact.c_str() + 2, nullptr, 16)));
    if (compact.size() > 2 && compact[0] == '&' && (compact[1] == 'O' || compact[1] == 'o'))
        return static_cast<double>(static_cast<int32_t>(std::strtoul(compact.c_str() + 2, nullptr, 8)));
    // Sign, digits, a point, digits, an exponent: the longest such prefix.
    size_t i = 0;
    if (i < compact.size() && (compact[i] == '+' || compact[i] == '-')) ++i;
    size_t digits = 0;
    while (i < compact.size() && std::isdigit(static_cast<unsigned char>(compact[i]))) ++i, ++digits;
    if (i < compact.size() && compact[i] == '.') {
        ++i;
        while (i < compact.size() && std::isdigit(static_cast<unsigned char>(compact[i]))) ++i, ++digits;
    }
    if (digits == 0) return 0.0;
    size_t mantissaEnd = i;
    if (i < compact.size() && (compact[i] == 'E' || compact[i] == 'e' || compact[i] == 'D' || compact[i] == 'd')) {
        size_t j = i + 1;
        if (j < compact.size() && (compact[j] == '+' || compact[j] == '-')) ++j;
        size_t expDigits = j;
        while (j < compact.size() && std::isdigit(static_cast<unsigned char>(compact[j]))) ++j;
        if (j > expDigits) i = j;
    }
    std::string number = compact.substr(0, i);
    if (i > mantissaEnd) number[mantissaEnd] = 'E';
    double value = std::strtod(number.c_str(), nullptr);
    if (!std::isfinite(value)) throw RunError(kOverflow);
    return value;
}

}  // namespace skl
