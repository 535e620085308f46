// Files and text encodings at the edge of the program.
//
// Paths are the program's own strings: a backslash separates folders on every platform.
// Every failure raises rt::RuntimeError with the number the original runtime gave.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace rt {

// UTF-16 (Windows) or UTF-32 (elsewhere) wide text to UTF-8 and back. Invalid sequences and
// lone surrogates become U+FFFD; nothing raises.
std::string ToUtf8(std::wstring_view s);
std::wstring FromUtf8(std::string_view s);

// A single-byte code page: bytes below 0x80 are ASCII, high[b - 0x80] is the character of
// byte b. Bytes a page leaves unassigned map to the C1 code point of the same value (both
// ways, as Windows does), so any byte string survives a round trip.
struct AnsiCodePage {
    unsigned id = 0;
    std::array<char16_t, 128> high{};
};

// Windows-1252, in which the language files are installed.
const AnsiCodePage& Cp1252Page();
std::string ToCp1252(std::wstring_view s);
std::wstring FromCp1252(std::string_view s);

// The system's single-byte code page ("ANSI"), in which params.txt, spoken.txt and the
// language files are read and written, and in which Asc and Chr count. Windows-1252 until
// the platform installs the system's own page at start-up.
void SetAnsiCodePage(const AnsiCodePage& page);
const AnsiCodePage& AnsiPage();
// Characters with no byte become '?'.
std::string ToAnsi(std::wstring_view s);
std::wstring FromAnsi(std::string_view s);
// True when every character of s has a byte in the system's page (ToAnsi loses nothing).
bool AnsiHolds(std::wstring_view s);

// The program's path as a filesystem path: on Windows the UTF-16 text unchanged; elsewhere
// backslashes become '/' and the text is encoded as UTF-8.
std::filesystem::path ToFsPath(const std::wstring& path);

// Whole-file read. Raises 53 when there is no such file, 52 for a malformed name, 75 when it
// cannot be read (a folder, no access, read error).
std::vector<uint8_t> ReadFileBytes(const std::wstring& path);

// Creates or replaces the file with n bytes. Raises 76 when the folder is missing, 70 when
// access is denied, 61 when the disk is full, 52 for a malformed name, 75 otherwise
// (including when path names a folder).
void WriteFileBytes(const std::wstring& path, const void* data, size_t n);

// True for an existing regular file (not a folder).
// Writes the file whole or not at all: the bytes go to a temporary file beside it, which
// then takes its name. A failure leaves the old file as it was; raises as WriteFileBytes.
void ReplaceFileBytes(const std::wstring& path, const void* data, size_t n);
bool FileExists(const std::wstring& path);
// True for an existing folder.
bool DirExists(const std::wstring& path);

// Creates one folder. Raises 75 when the name exists already or creation fails, 76 when the
// parent folder is missing.
void MkDir(const std::wstring& path);
// Removes an empty folder. Raises 76 when there is no such folder, 75 when it is not empty
// or cannot be removed.
void RmDir(const std::wstring& path);
// Deletes a file (no wildcards). Raises 53 when there is no such file, 75 when it cannot be
// deleted (read-only, in use).
void Kill(const std::wstring& path);
// Deletes a file the program wrote, if it is still there; one held open elsewhere is left.
// Raises nothing.
void KillQuietly(const std::wstring& path);
// Copies src over dst. Raises 53 when src is missing, then as ReadFileBytes/WriteFileBytes.
void FileCopy(const std::wstring& src, const std::wstring& dst);

// Names of a folder's regular files (subfolders false) or of its subfolders, in no set
// order. A folder that is missing or cannot be read has none; nothing raises.
std::vector<std::wstring> FolderNames(const std::wstring& folder, bool subfolders);
// The time a file was last written, in the file system's own ticks: only for ordering
// files against each other. 0 when it cannot be read.
int64_t FileWriteTicks(const std::wstring& path);
// The size of a file in bytes; -1 when it cannot be read.
int64_t FileSize(const std::wstring& path);

} // namespace rt
