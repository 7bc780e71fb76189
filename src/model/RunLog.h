#pragma once

#include <exception>
#include <functional>
#include <string>
#include <string_view>

#include "model/RunState.h"
#include "platform/RunError.h"

namespace skl {

inline constexpr const char* kVersionLine = "Vers.: 8.6 Net (Build: 021209)";

// Thrown by a block handler when error 75 or 52 ends the run. It is no
// std::exception, so that no reader's handler can swallow it.
struct RunAborted {};

// Thrown when a procedure has ended the run on its own terms (the failed
// installation check showed its message): the caller closes every file and
// ends the run without a further message. No handler swallows it either.
struct RunStopped {};

// Creates the run log in the program folder (deleting the log of the previous
// run of the same simulator) and writes its first line. Errors are ignored
// statement by statement: whether the log is open afterwards tells the caller.
void OpenLogFile(RunState& state, const std::string& fileName);

// Appends one line, ended by CR LF, to the log. No handler of its own.
void LogLine(RunState& state, std::string_view text);

// Appends one line to the log and passes over its failure, like any statement
// of a procedure that goes on after an error.
void TryLogLine(RunState& state, std::string_view text);

// The text form of a number with the leading blank of a non-negative value.
std::string NumberWithSign(long long value);

// Writes the error block of a top procedure. `extraLines` writes the lines that
// stand between the source line and the closing line (may be empty).
void LogErrorBlock(RunState& state, std::string_view procedure, int number,
                   const std::function<void()>& extraLines = {});

// Writes the one-line report of a reader.
void LogReaderError(RunState& state, std::string_view procedure, int number);

// The error number of the exception in flight (see CurrentErrorNumber);
// RunAborted and RunStopped pass on.
int ErrorOfCurrentException();

// Runs a body and gives the error number it raised, 0 when none. A template, so
// that the statements of the readers' hot loops cost no allocation.
template <typename Body>
int ErrorOf(Body&& body) {
    try {
        body();
        return 0;
    } catch (...) {
        return ErrorOfCurrentException();
    }
}

// After a statement of a top procedure failed: writes the error block; 75 and 52
// end the run (RunAborted).
void FailedBlockStatement(RunState& state, std::string_view procedure, int number,
                          const std::function<void()>& extraLines);

// Runs one statement under a top procedure's block handler: an error is written
// as the error block; 75 and 52 end the run (RunAborted), any other number is
// cleared and the caller goes on with its next statement. Returns false when the
// statement failed.
template <typename Body>
bool BlockStatement(RunState& state, std::string_view procedure, Body&& body,
                    const std::function<void()>& extraLines = {}) {
    int number = ErrorOf(body);
    if (number == 0) return true;
    FailedBlockStatement(state, procedure, number, extraLines);
    return false;
}

// Runs a reader's body (or one statement of a reader that goes on with the next
// statement) under its one-line handler. Returns false when it failed.
template <typename Body>
bool ReaderStatement(RunState& state, std::string_view procedure, Body&& body) {
    int number = ErrorOf(body);
    if (number == 0) return true;
    LogReaderError(state, procedure, number);
    return false;
}

}  // namespace skl
