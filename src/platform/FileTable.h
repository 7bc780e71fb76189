#pragma once

#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/NativeFile.h"

namespace skl::platform {

// The open files of a run by number. Numbers are handed out like a free-file
// call does: the lowest number from 1 that is not open. The run opens the log
// first, so the log is number 1.
class FileTable {
  public:
    FileTable() = default;
    FileTable(const FileTable&) = delete;
    FileTable& operator=(const FileTable&) = delete;
    ~FileTable();

    int FreeFile() const;
    bool IsOpen(int number) const;

    // Creates or truncates a file for writing. A missing folder is 53, any other
    // failure 75. Opening a number that is open already is 55-like misuse and
    // counts as 75.
    void OpenOutput(int number, const std::string& nativePath);
    // Opens an existing regular file for reading; what is no regular file is 75.
    void OpenInput(int number, const std::string& nativePath);

    // Writes bytes to an open output file; a number that is not open is 52.
    void Write(int number, std::string_view bytes);
    // Writes a text line ended by CR LF.
    void WriteLine(int number, std::string_view text);
    // The native file of an open input file; a number that is not open is 52.
    NativeFile InputDescriptor(int number) const;
    // All bytes of an open input file; a number that is not open is 52.
    std::string ReadInput(int number) const;

    // Closing a number that is not open is no error.
    void Close(int number);
    void CloseAll();

  private:
    struct Entry {
        std::FILE* Output = nullptr;
        NativeFile Input;
        std::unique_ptr<char[]> Buffer;  // the output's stdio buffer
    };
    std::map<int, Entry> open_;
};

}  // namespace skl::platform
