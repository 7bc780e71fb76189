#pragma once

#include <stdexcept>
#include <string>

namespace skl {

// An error of the run, carrying the error number that the log shows and that
// decides whether a run goes on or aborts.
enum ErrorNumber : int {
    kInvalidArgument = 5,
    kOverflow = 6,
    kOutOfMemory = 7,
    kSubscriptOutOfRange = 9,
    kDivisionByZero = 11,
    kTypeMismatch = 13,
    kBadFileNumber = 52,
    kFileNotFound = 53,
    kInputPastEnd = 62,
    kBadRecordNumber = 63,
    kPathFileAccess = 75,
};

struct RunError : std::runtime_error {
    int Number;
    explicit RunError(int number);
};

// The description text of an error number, as the error block shows it.
std::string ErrorDescription(int number);

// Maps an errno value of a failed open, create, rename or delete to an error
// number: a missing file or folder is 53, every other failure 75.
int ErrorFromErrno(int err);

// Throws the RunError that belongs to errno after a failed file operation.
[[noreturn]] void ThrowFromErrno(int err);

// Turns any exception that can leave a procedure into its error number:
// RunError keeps its number, std::out_of_range is 9, std::bad_alloc is 7,
// anything else counts as 5.
int CurrentErrorNumber(const std::exception_ptr& error);

}  // namespace skl
