// What is built on the platform's reads of an open file alone.
#include "platform/NativeFile.h"

namespace skl::platform {

std::string ReadAll(NativeFile file) {
    std::string text;
    char buffer[65536];
    for (int64_t offset = 0;;) {
        int64_t got = ReadAt(file, offset, buffer, sizeof buffer);
        if (got <= 0) return text;
        text.append(buffer, static_cast<size_t>(got));
        offset += got;
    }
}

}  // namespace skl::platform
