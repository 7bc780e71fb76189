#pragma once

#include <string>
#include <string_view>

#include "model/RunState.h"

namespace skl {

// Reads scenery.cfg as a stream of delimited items: leading blanks are
// skipped; an item ends at a comma, at the end of a line (CR LF, LF or CR) or at
// the end of the bytes, and the delimiter is consumed; an item that starts with
// a double quote runs to the closing quote (or to the end of its line), the
// quotes are dropped and commas between them are kept; a quote inside an item is
// an ordinary character; an empty line is an empty item.
struct CfgItemReader {
    std::string_view Bytes;
    size_t Position = 0;

    bool AtEnd() const { return Position >= Bytes.size(); }
    std::string Next();
};

// Keeps the characters of codes 32-126, 145-146 and 160-255, upper-cased, and
// trims blanks at both ends.
std::string CleanCfgItem(std::string_view item);

// Resolves leading "..\" of a scenery path against a base folder; "" when the
// path climbs above the drive.
std::string ResolveRelativePath(std::string path, std::string base);

// Reads the scenery configuration twice: once to copy it into the log and size
// the area table, once to collect the areas into it.
void GetBGLFileDirectories(RunState& state);

}  // namespace skl
