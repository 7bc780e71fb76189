#pragma once

#include <bit>
#include <cstdint>
#include <string>

namespace skl::test {

// Little-endian bytes written out by hand in a test, independent of the
// writers under test.
struct Le {
    std::string B;
    Le& I32(int32_t v) {
        for (int i = 0; i < 4; ++i)
            B += static_cast<char>((static_cast<uint32_t>(v) >> (8 * i)) & 0xFF);
        return *this;
    }
    Le& I16(int16_t v) {
        B += static_cast<char>(v & 0xFF);
        B += static_cast<char>((static_cast<uint16_t>(v) >> 8) & 0xFF);
        return *this;
    }
    Le& U8(uint8_t v) {
        B += static_cast<char>(v);
        return *this;
    }
    Le& F32(float v) { return I32(std::bit_cast<int32_t>(v)); }
    Le& Text(std::string text, size_t width, char pad = ' ') {
        text.resize(width, pad);
        B += text;
        return *this;
    }
};

// The positions as the simulator packs them and the run decodes them.
inline float Latitude(int32_t packed) { return static_cast<float>(90.0 - packed * (180.0 / 536870912.0)); }
inline float Longitude(int32_t packed) {
    return static_cast<float>(packed * (360.0 / 805306368.0) - 180.0);
}

}  // namespace skl::test
