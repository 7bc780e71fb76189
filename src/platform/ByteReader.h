#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "platform/NativeFile.h"

namespace skl::platform {

// Reads little-endian values from a byte source: an open file or a byte vector.
// A read behind the end of the bytes is no error: the missing bytes read as 0
// and the position moves on by the size asked for. A seek to a negative
// position raises 63. A reader that is not open raises 52 on every read.
//
// A file is read at offsets in blocks with a small cache, so that a file
// that another program shortens while it is read gives zeros, never a fault.
class ByteReader {
  public:
    ByteReader() = default;  // not open
    static ByteReader FromBytes(std::vector<uint8_t> bytes);
    // The file stays owned by the caller.
    static ByteReader FromDescriptor(NativeFile file);

    bool IsOpen() const { return source_ != nullptr; }
    int64_t Position() const { return position_; }
    int64_t Length() const;

    void Seek(int64_t position);
    void Skip(int64_t count) { Seek(position_ + count); }

    uint8_t U8() { return Fixed<uint8_t, 1>(); }
    uint16_t U16() { return Fixed<uint16_t, 2>(); }
    int16_t I16() { return static_cast<int16_t>(U16()); }
    uint32_t U32() { return Fixed<uint32_t, 4>(); }
    int32_t I32() { return static_cast<int32_t>(U32()); }
    float F32();
    double F64();
    void Read(void* destination, int64_t count);

  private:
    struct Source;

    // A little-endian value of N bytes; read straight from the window of bytes
    // at hand when it holds them, else through the source.
    template <typename T, int N>
    T Fixed() {
        uint8_t bytes[N];
        if (position_ >= windowStart_ && position_ + N <= windowEnd_) {
            std::memcpy(bytes, window_ + (position_ - windowStart_), N);
            position_ += N;
        } else {
            Read(bytes, N);
        }
        T value = 0;
        for (int i = N - 1; i >= 0; --i) value = static_cast<T>((value << 8) | bytes[i]);
        return value;
    }

    std::shared_ptr<Source> source_;
    int64_t position_ = 0;
    // The bytes of the source that lie in memory now (a cached block of a file,
    // or all of a byte vector), valid until the next read through the source.
    const uint8_t* window_ = nullptr;
    int64_t windowStart_ = 0;
    int64_t windowEnd_ = 0;
};

}  // namespace skl::platform
