#include "bgl/BglReaders.h"
#include "model/RunLog.h"

namespace skl {

void OpenBGLFile(RunState& state, const std::string& path, const std::string& nativePath) {
    Reading& reading = state.Reading;
    platform::FileTable& table = state.Files.Table;
    auto statement = [&](const std::function<void()>& body) {
        return BlockStatement(state, "OpenBGLFile", body);
    };
    // Until the open succeeds the reader is not open, and every read of the walk
    // fails with "bad file number".
    reading.Bgl = platform::ByteReader();
    int result = -1;
    statement([&] { reading.BglFile = static_cast<int16_t>(table.FreeFile()); });
    statement([&] {
        table.OpenInput(reading.BglFile, nativePath);
        reading.Bgl = platform::ByteReader::FromDescriptor(table.InputDescriptor(reading.BglFile));
    });
    statement([&] { result = ReadBglFile(state); });
    if (result == 0) {
        statement([&] { LogLine(state, path); });
        statement([&] { LogLine(state, ""); });
    }
    statement([&] { table.Close(reading.BglFile); });
    reading.Bgl = platform::ByteReader();
}

}  // namespace skl
