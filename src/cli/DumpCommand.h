#pragma once

#include <string>

namespace skl::cli {

// Runs `skldbm dump`: prints the records of the database file at the native
// path `file` to standard output in the format "text", "csv" or "json". Returns
// the exit status: 0 done; 1 the file ends inside a record or holds bytes
// behind its last record (what is complete is printed first); 2 an unknown
// format, a name that tells no kind of database file, or a file that cannot be
// read. Errors go to standard error as "skldbm: " lines.
int RunDumpCommand(const std::string& file, const std::string& format);

}  // namespace skl::cli
