// Numbered run-time errors, as the original language runtime raised them.
#pragma once

#include <stdexcept>
#include <string>

namespace rt {

// Error numbers the program raises or traps by number.
enum ErrorNumber : int {
    kInvalidCall = 5,
    kOverflow = 6,
    kOutOfMemory = 7,
    kSubscriptOutOfRange = 9,
    kDivisionByZero = 11,
    kTypeMismatch = 13,
    kBadFileNameOrNumber = 52,
    kFileNotFound = 53,
    kFileAlreadyOpen = 55,
    kDeviceIO = 57,
    kFileAlreadyExists = 58,
    kDiskFull = 61,
    kInputPastEnd = 62,
    kPermissionDenied = 70,
    kPathFileAccess = 75,
    kPathNotFound = 76,
    kObjectVariableNotSet = 91,
    kInvalidPropertyValue = 380,
    kInvalidPropertyArrayIndex = 381,
    kInvalidPicture = 481,
    kPrinterError = 482,
    kCancelError = 32755,
};

// The standard text of an error number ("Overflow", "File not found", ...).
std::wstring ErrorText(int number);

struct RuntimeError : std::runtime_error {
    RuntimeError(int n, std::wstring t);
    explicit RuntimeError(int n) : RuntimeError(n, ErrorText(n)) {}
    int number;
    std::wstring text;
};

[[noreturn]] inline void Raise(int number) {
    throw RuntimeError(number);
}
[[noreturn]] inline void Raise(int number, std::wstring text) {
    throw RuntimeError(number, std::move(text));
}

// For a routine's own error trap, written `catch (...) { const rt::RuntimeError e =
// rt::CaughtError(); ... }`: the run-time error being handled, with memory that ran out
// (std::bad_alloc) as error 7 like any other. Anything else (the end of the program) is
// thrown on untouched.
RuntimeError CaughtError();

} // namespace rt
