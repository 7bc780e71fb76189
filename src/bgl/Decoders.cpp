#include "bgl/Decoders.h"

#include <cmath>

#include "platform/Checked.h"
#include "platform/Win1252.h"
#include "model/LeadingNumber.h"

namespace skl {

double DecodeLatitude(int32_t value) {
    const double ratio = 180.0 / 536870912.0;
    return 90.0 - value * ratio;
}

double DecodeLongitude(int32_t value) {
    const double ratio = 360.0 / 805306368.0;
    return value * ratio - 180.0;
}

int32_t FloorFeet(double metres) {
    double feet = std::floor(metres * 3.2809);
    if (!std::isfinite(feet) || feet < -2147483648.0 || feet > 2147483647.0)
        throw RunError(kOverflow);
    return static_cast<int32_t>(feet);
}

float FrequencyMhz(int32_t hertz) {
    std::string digits = std::to_string(hertz).substr(0, 6);
    return static_cast<float>(LeadingNumber(digits) / 1000.0);
}

std::string StripNulls(std::string_view text) {
    std::string kept;
    for (char c : text)
        if (c != '\0') kept += c;
    return TrimBlanks(kept);
}

int32_t AltitudeFeetRounded(int32_t millimetres) {
    double metres = std::floor(millimetres / 1000.0);
    return Round32(metres * 3.2809);
}

}  // namespace skl
