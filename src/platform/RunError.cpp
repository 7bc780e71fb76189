#include "platform/RunError.h"

#include <cerrno>
#include <new>

namespace skl {

RunError::RunError(int number) : std::runtime_error(ErrorDescription(number)), Number(number) {}

std::string ErrorDescription(int number) {
    switch (number) {
        case kInvalidArgument: return "Invalid procedure call or argument";
        case kOverflow: return "Overflow";
        case kOutOfMemory: return "Out of memory";
        case kSubscriptOutOfRange: return "Subscript out of range";
        case kDivisionByZero: return "Division by zero";
        case kTypeMismatch: return "Type mismatch";
        case kBadFileNumber: return "Bad file name or number";
        case kFileNotFound: return "File not found";
        case kInputPastEnd: return "Input past end of file";
        case kBadRecordNumber: return "Bad record number";
        case kPathFileAccess: return "Path/File access error";
        default: return "Application-defined or object-defined error";
    }
}

int ErrorFromErrno(int err) {
    return (err == ENOENT || err == ENOTDIR) ? kFileNotFound : kPathFileAccess;
}

void ThrowFromErrno(int err) { throw RunError(ErrorFromErrno(err)); }

int CurrentErrorNumber(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const RunError& e) {
        return e.Number;
    } catch (const std::out_of_range&) {
        return kSubscriptOutOfRange;
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    } catch (const std::length_error&) {
        return kOutOfMemory;
    } catch (...) {
        return kInvalidArgument;
    }
}

}  // namespace skl
