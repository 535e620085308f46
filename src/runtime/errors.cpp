#include "runtime/errors.h"

#include <new>

namespace rt {

std::wstring ErrorText(int number) {
    switch (number) {
    case kInvalidCall:
        return L"Invalid procedure call or argument";
    case kOverflow:
        return L"Overflow";
    case kOutOfMemory:
        return L"Out of memory";
    case kSubscriptOutOfRange:
        return L"Subscript out of range";
    case kDivisionByZero:
        return L"Division by zero";
    case kTypeMismatch:
        return L"Type mismatch";
    case kBadFileNameOrNumber:
        return L"Bad file name or number";
    case kFileNotFound:
        return L"File not found";
    case kFileAlreadyOpen:
        return L"File already open";
    case kDeviceIO:
        return L"Device I/O error";
    case kFileAlreadyExists:
        return L"File already exists";
    case kDiskFull:
        return L"Disk full";
    case kInputPastEnd:
        return L"Input past end of file";
    case kPermissionDenied:
        return L"Permission denied";
    case kPathFileAccess:
        return L"Path/File access error";
    case kPathNotFound:
        return L"Path not found";
    case kObjectVariableNotSet:
        return L"Object variable or With block variable not set";
    case kInvalidPropertyValue:
        return L"Invalid property value";
    case kInvalidPropertyArrayIndex:
        return L"Invalid property array index";
    case kInvalidPicture:
        return L"Invalid picture";
    case kPrinterError:
        return L"Printer error";
    case kCancelError:
        return L"Cancel was selected.";
    default:
        return L"Application-defined or object-defined error";
    }
}

RuntimeError::RuntimeError(int n, std::wstring t)
    : std::runtime_error("Run-time error " + std::to_string(n)), number(n), text(std::move(t)) {}

RuntimeError CaughtError() {
    try {
        throw;
    } catch (const RuntimeError& e) {
        return e;
    } catch (const std::bad_alloc&) {
        return RuntimeError(kOutOfMemory);
    }
}

} // namespace rt
