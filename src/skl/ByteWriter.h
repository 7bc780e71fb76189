#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace skl {

// Collects bytes for a file: numbers little-endian, put out byte by byte, so the
// output is the same on every machine whatever its byte order or struct padding.
struct ByteWriter {
    std::string Bytes;

    void U8(uint8_t value);
    void I16(int16_t value);
    void U16(uint16_t value);
    void I32(int32_t value);
    void U32(uint32_t value);
    void U64(uint64_t value);
    void F32(float value);   // the IEEE bits of the value, NaN payloads included
    void F64(double value);  // the same, 8 bytes
    // A fixed-width text field: the text cut at width, or padded with NUL bytes.
    void Text(std::string_view text, size_t width);
    void Raw(std::string_view bytes);
    // Overwrites 4 bytes already written, for sizes and offsets known only later.
    // Throws std::out_of_range when the 4 bytes are not all written yet.
    void PatchI32(size_t offset, int32_t value);
    size_t Size() const { return Bytes.size(); }
};

}  // namespace skl
