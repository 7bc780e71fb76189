#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "platform/RunError.h"

namespace skl {

// Checked conversions: a value outside the target width raises overflow (6).
// NaN and infinity count as out of range.
inline int16_t To16(int64_t v) {
    if (v < std::numeric_limits<int16_t>::min() || v > std::numeric_limits<int16_t>::max())
        throw RunError(kOverflow);
    return static_cast<int16_t>(v);
}

inline int32_t To32(int64_t v) {
    if (v < std::numeric_limits<int32_t>::min() || v > std::numeric_limits<int32_t>::max())
        throw RunError(kOverflow);
    return static_cast<int32_t>(v);
}

// Rounds a double to the nearest integer, halves to the even neighbour, and
// checks it against 16 bits.
inline int16_t Round16(double v) {
    if (!std::isfinite(v)) throw RunError(kOverflow);
    double r = std::nearbyint(v);  // the default rounding mode rounds halves to even
    if (r < -32768.0 || r > 32767.0) throw RunError(kOverflow);
    return static_cast<int16_t>(r);
}

inline int32_t Round32(double v) {
    if (!std::isfinite(v)) throw RunError(kOverflow);
    double r = std::nearbyint(v);
    if (r < -2147483648.0 || r > 2147483647.0) throw RunError(kOverflow);
    return static_cast<int32_t>(r);
}

// Checked indexing: an index outside the array raises 9.
template <typename T>
T& At(std::vector<T>& v, int64_t i) {
    if (i < 0 || static_cast<uint64_t>(i) >= v.size()) throw RunError(kSubscriptOutOfRange);
    return v[static_cast<size_t>(i)];
}

template <typename T>
const T& At(const std::vector<T>& v, int64_t i) {
    if (i < 0 || static_cast<uint64_t>(i) >= v.size()) throw RunError(kSubscriptOutOfRange);
    return v[static_cast<size_t>(i)];
}

}  // namespace skl
