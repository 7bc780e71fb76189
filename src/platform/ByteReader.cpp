#include "platform/ByteReader.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/RunError.h"

namespace skl::platform {

namespace {
constexpr int64_t kBlockSize = 16 * 1024;
constexpr size_t kCachedBlocks = 4;
}  // namespace

// Either a byte vector, or a file read in blocks at offsets with a few
// cached blocks (the walks jump between a directory and its records, so one
// block would be read again and again). Bytes the source does not have (behind
// its end, or cut off since the open) read as zero.
struct ByteReader::Source {
    struct Block {
        int64_t Start = -1;
        int64_t Fill = 0;
        uint64_t LastUse = 0;
        std::vector<uint8_t> Bytes;
    };

    std::vector<uint8_t> Bytes;
    NativeFile File;
    int64_t FileLength = 0;
    std::array<Block, kCachedBlocks> Blocks;
    const Block* Last = nullptr;
    uint64_t Clock = 0;

    void ReadAt(int64_t offset, uint8_t* out, int64_t count) {
        // Most reads are a few bytes inside the block read last.
        if (File.IsOpen() && Last != nullptr && offset >= Last->Start &&
            offset + count <= Last->Start + Last->Fill) {
            std::memcpy(out, Last->Bytes.data() + (offset - Last->Start),
                        static_cast<size_t>(count));
            return;
        }
        if (!File.IsOpen() && offset >= 0 && offset + count <= static_cast<int64_t>(Bytes.size())) {
            std::memcpy(out, Bytes.data() + offset, static_cast<size_t>(count));
            return;
        }
        std::memset(out, 0, static_cast<size_t>(count));
        if (!File.IsOpen()) {
            int64_t size = static_cast<int64_t>(Bytes.size());
            if (offset >= size) return;
            int64_t n = std::min(count, size - offset);
            std::memcpy(out, Bytes.data() + offset, static_cast<size_t>(n));
            return;
        }
        while (count > 0 && offset < FileLength) {
            const Block& block = BlockAt(offset - offset % kBlockSize);
            int64_t inBlock = offset - block.Start;
            if (inBlock >= block.Fill) return;  // the file ends earlier than it did
            int64_t n = std::min(count, block.Fill - inBlock);
            std::memcpy(out, block.Bytes.data() + inBlock, static_cast<size_t>(n));
            out += n;
            offset += n;
            count -= n;
        }
    }

    // The cached block that starts at `start`, read in place of the one used
    // least recently when it is not cached.
    const Block& BlockAt(int64_t start) {
        Block* victim = &Blocks[0];
        for (Block& block : Blocks) {
            if (block.Start == start) {
                block.LastUse = ++Clock;
                Last = &block;
                return block;
            }
            if (block.LastUse < victim->LastUse) victim = &block;
        }
        victim->Bytes.resize(kBlockSize);
        victim->Start = start;
        victim->Fill = 0;
        victim->LastUse = ++Clock;
        victim->Fill = platform::ReadAt(File, start, victim->Bytes.data(), kBlockSize);
        Last = victim;
        return *victim;
    }
};

ByteReader ByteReader::FromBytes(std::vector<uint8_t> bytes) {
    ByteReader reader;
    reader.source_ = std::make_shared<Source>();
    reader.source_->Bytes = std::move(bytes);
    return reader;
}

ByteReader ByteReader::FromDescriptor(NativeFile file) {
    ByteReader reader;
    reader.source_ = std::make_shared<Source>();
    reader.source_->File = file;
    reader.source_->FileLength = FileLength(file);
    return reader;
}

int64_t ByteReader::Length() const {
    if (!source_) throw RunError(kBadFileNumber);
    return source_->File.IsOpen() ? source_->FileLength
                                  : static_cast<int64_t>(source_->Bytes.size());
}

void ByteReader::Seek(int64_t position) {
    if (!source_) throw RunError(kBadFileNumber);
    if (position < 0) throw RunError(kBadRecordNumber);
    position_ = position;
}

void ByteReader::Read(void* destination, int64_t count) {
    if (!source_) throw RunError(kBadFileNumber);
    if (count <= 0) return;
    source_->ReadAt(position_, static_cast<uint8_t*>(destination), count);
    position_ += count;
    if (!source_->File.IsOpen()) {
        window_ = source_->Bytes.data();
        windowStart_ = 0;
        windowEnd_ = static_cast<int64_t>(source_->Bytes.size());
    } else if (source_->Last != nullptr) {
        window_ = source_->Last->Bytes.data();
        windowStart_ = source_->Last->Start;
        windowEnd_ = source_->Last->Start + source_->Last->Fill;
    }
}

float ByteReader::F32() {
    uint32_t bits = U32();
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

double ByteReader::F64() {
    uint64_t low = U32();
    uint64_t high = U32();
    uint64_t bits = low | (high << 32);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

}  // namespace skl::platform
