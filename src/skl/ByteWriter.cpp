#include "skl/ByteWriter.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

namespace skl {

void ByteWriter::U8(uint8_t value) {
    Bytes.push_back(static_cast<char>(value));
}

void ByteWriter::I16(int16_t value) {
    U16(static_cast<uint16_t>(value));
}

void ByteWriter::U16(uint16_t value) {
    const char bytes[2] = {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
    Bytes.append(bytes, 2);
}

void ByteWriter::I32(int32_t value) {
    U32(static_cast<uint32_t>(value));
}

void ByteWriter::U32(uint32_t value) {
    const char bytes[4] = {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF),
                           static_cast<char>((value >> 16) & 0xFF),
                           static_cast<char>((value >> 24) & 0xFF)};
    Bytes.append(bytes, 4);
}

void ByteWriter::U64(uint64_t value) {
    for (int shift = 0; shift < 64; shift += 8) U8(static_cast<uint8_t>((value >> shift) & 0xFF));
}

void ByteWriter::F32(float value) {
    U32(std::bit_cast<uint32_t>(value));
}

void ByteWriter::F64(double value) {
    U64(std::bit_cast<uint64_t>(value));
}

void ByteWriter::Text(std::string_view text, size_t width) {
    size_t kept = std::min(width, text.size());
    Bytes.append(text.data(), kept);
    Bytes.append(width - kept, '\0');
}

void ByteWriter::Raw(std::string_view bytes) {
    Bytes.append(bytes);
}

void ByteWriter::PatchI32(size_t offset, int32_t value) {
    if (offset > Bytes.size() || Bytes.size() - offset < 4) {
        throw std::out_of_range("ByteWriter::PatchI32 behind the written bytes");
    }
    auto bits = static_cast<uint32_t>(value);
    for (size_t i = 0; i < 4; ++i) {
        Bytes[offset + i] = static_cast<char>((bits >> (8 * i)) & 0xFF);
    }
}

}  // namespace skl
