#include "scenery/SceneryCfg.h"

namespace skl {

namespace {
bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }
}  // namespace

std::string CfgItemReader::Next() {
    auto consumeLineEnd = [this] {
        if (AtEnd()) return;
        if (Bytes[Position] == '\r' && Position + 1 < Bytes.size() && Bytes[Position + 1] == '\n')
            Position += 2;
        else
            Position += 1;
    };
    while (!AtEnd() && Bytes[Position] == ' ') ++Position;
    std::string item;
    if (!AtEnd() && Bytes[Position] == '"') {
        ++Position;
        while (!AtEnd() && Bytes[Position] != '"' && !IsLineEnd(Bytes[Position]))
            item += Bytes[Position++];
        if (!AtEnd() && Bytes[Position] == '"') {
            ++Position;
            // Whatever stands between the closing quote and the delimiter is dropped.
            while (!AtEnd() && Bytes[Position] != ',' && !IsLineEnd(Bytes[Position])) ++Position;
        }
    } else {
        while (!AtEnd() && Bytes[Position] != ',' && !IsLineEnd(Bytes[Position]))
            item += Bytes[Position++];
    }
    if (!AtEnd()) {
        if (Bytes[Position] == ',')
            ++Position;
        else
            consumeLineEnd();
    }
    return item;
}

}  // namespace skl
