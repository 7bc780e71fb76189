#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace skl::platform {

// Reads little-endian values from a byte source: an open file or a byte vector.
// A read behind the end of the bytes is no error: the missing bytes read as 0
// and the position moves on by the size asked for. A seek to a negative
// position raises 63. A reader that is not open raises 52 on every read.
//
// A file is read through pread in blocks with a one-block cache, so that a file
// that another program shortens while it is read gives zeros, never a fault.
class ByteReader {
public:
    ByteReader() = default;  // not open
    static ByteReader FromBytes(std::vector<uint8_t> bytes);
    // The descriptor stays owned by the caller.
    static ByteReader FromDescriptor(int fd);

    bool IsOpen() const { return source_ != nullptr; }
    int64_t Position() const { return position_; }
    int64_t Length() const;

    void Seek(int64_t position);
    void Skip(int64_t count) { Seek(position_ + count); }

    uint8_t U8();
    int16_t I16();
    uint16_t U16();
    int32_t I32();
    uint32_t U32();
    float F32();
    double F64();
    void Read(void* destination, int64_t count);

private:
    struct Source;
    std::shared_ptr<Source> source_;
    int64_t position_ = 0;
};

}  // namespace skl::platform
