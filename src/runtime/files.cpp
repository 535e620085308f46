// File operations with the original runtime's error numbers.
#include "runtime/files.h"

#include "runtime/errors.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

namespace rt {

namespace fs = std::filesystem;

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// Opens a file in binary mode; on failure returns null with errno set.
std::FILE* OpenFile(const fs::path& p, bool write) {
#ifdef _WIN32
    return _wfopen(p.c_str(), write ? L"wb" : L"rb");
#else
    return std::fopen(p.c_str(), write ? "wb" : "rb");
#endif
}

bool IsDir(const fs::path& p) {
    std::error_code ec;
    return fs::is_directory(p, ec);
}

int OpenForWriteError(int err) {
    switch (err) {
    case ENOENT:
    case ENOTDIR:
        return kPathNotFound;
    case EACCES:
    case EPERM:
#ifdef EROFS
    case EROFS:
#endif
        return kPermissionDenied;
    case ENOSPC:
        return kDiskFull;
    case EINVAL:
        return kBadFileNameOrNumber;
    default:
        return kPathFileAccess;
    }
}

// A folder name without its trailing separators ("a\b\" names the folder "a\b"), keeping
// a root such as "\" or "C:\" whole.
fs::path FolderPath(std::wstring path) {
    while (path.size() > 1 && (path.back() == L'\\' || path.back() == L'/') &&
           path[path.size() - 2] != L':')
        path.pop_back();
    return ToFsPath(path);
}

// Windows refuses control characters and < > : " | ? * in a name (a colon only after a
// drive letter); other systems accept them, so the check is made here to behave alike.
void CheckName(const std::wstring& path) {
#ifndef _WIN32
    for (size_t i = 0; i < path.size(); ++i) {
        const wchar_t c = path[i];
        const bool driveColon = c == L':' && i == 1;
        if (c < 0x20 || (c == L':' && !driveColon) ||
            std::wstring_view(L"<>\"|?*").find(c) != std::wstring_view::npos)
            Raise(kBadFileNameOrNumber);
    }
#else
    (void)path;
#endif
}

} // namespace

fs::path ToFsPath(const std::wstring& path) {
#ifdef _WIN32
    return fs::path(path);
#else
    std::wstring s = path;
    std::replace(s.begin(), s.end(), L'\\', L'/');
    return fs::path(ToUtf8(s));
#endif
}

std::vector<uint8_t> ReadFileBytes(const std::wstring& path) {
    CheckName(path);
    fs::path p = ToFsPath(path);
    if (IsDir(p)) Raise(kPathFileAccess);
    errno = 0;
    FilePtr f(OpenFile(p, false));
    if (!f) {
        int err = errno;
        Raise(err == ENOENT || err == ENOTDIR ? kFileNotFound
              : err == EINVAL                 ? kBadFileNameOrNumber
                                              : kPathFileAccess);
    }
    std::vector<uint8_t> out;
    std::error_code ec;
    if (auto size = fs::file_size(p, ec); !ec) out.reserve(static_cast<size_t>(size));
    uint8_t buffer[1 << 14];
    for (;;) {
        size_t got = std::fread(buffer, 1, sizeof buffer, f.get());
        out.insert(out.end(), buffer, buffer + got);
        if (got < sizeof buffer) break;
    }
    if (std::ferror(f.get())) Raise(kPathFileAccess);
    return out;
}

void WriteFileBytes(const std::wstring& path, const void* data, size_t n) {
    CheckName(path);
    fs::path p = ToFsPath(path);
    if (IsDir(p)) Raise(kPathFileAccess);
    errno = 0;
    std::FILE* f = OpenFile(p, true);
    if (!f) Raise(OpenForWriteError(errno));
    int err = 0;
    if (n > 0 && std::fwrite(data, 1, n, f) != n) err = errno ? errno : EIO;
    // Buffered data meets a full disk only here.
    if (std::fflush(f) != 0 && !err) err = errno ? errno : EIO;
    if (std::fclose(f) != 0 && !err) err = errno ? errno : EIO;
    if (err) Raise(err == ENOSPC ? kDiskFull : kPathFileAccess);
}

void ReplaceFileBytes(const std::wstring& path, const void* data, size_t n) {
    const std::wstring provisoire = path + L".new";
    WriteFileBytes(provisoire, data, n);
    std::error_code ec;
    fs::rename(ToFsPath(provisoire), ToFsPath(path), ec);
    if (ec) {
        fs::remove(ToFsPath(provisoire), ec);
        Raise(kPathFileAccess);
    }
}

bool FileExists(const std::wstring& path) {
    std::error_code ec;
    return fs::is_regular_file(ToFsPath(path), ec);
}

bool DirExists(const std::wstring& path) {
    return IsDir(FolderPath(path));
}

void MkDir(const std::wstring& path) {
    CheckName(path);
    fs::path p = FolderPath(path);
    std::error_code ec;
    if (fs::exists(p, ec)) Raise(kPathFileAccess);
    fs::path parent = p.parent_path();
    if (!parent.empty() && !IsDir(parent)) Raise(kPathNotFound);
    if (!fs::create_directory(p, ec) || ec) Raise(kPathFileAccess);
}

void RmDir(const std::wstring& path) {
    fs::path p = FolderPath(path);
    if (!IsDir(p)) Raise(kPathNotFound);
    std::error_code ec;
    if (!fs::remove(p, ec) || ec) Raise(kPathFileAccess);
}

void Kill(const std::wstring& path) {
    CheckName(path);
    fs::path p = ToFsPath(path);
    std::error_code ec;
    auto st = fs::symlink_status(p, ec);
    if (ec || !fs::exists(st) || fs::is_directory(st)) Raise(kFileNotFound);
    if (!fs::remove(p, ec) || ec) Raise(kPathFileAccess);
}

void KillQuietly(const std::wstring& path) {
    try {
        if (FileExists(path)) Kill(path);
    } catch (...) {
        CaughtError();
    }
}

void FileCopy(const std::wstring& src, const std::wstring& dst) {
    std::vector<uint8_t> bytes = ReadFileBytes(src);
    WriteFileBytes(dst, bytes.data(), bytes.size());
}

std::vector<std::wstring> FolderNames(const std::wstring& folder, bool subfolders) {
    std::vector<std::wstring> names;
    std::error_code ec;
    for (fs::directory_iterator it(FolderPath(folder), ec), end; !ec && it != end;
         it.increment(ec)) {
        // An entry whose kind cannot be read is neither.
        std::error_code sorte;
        const bool voulu = subfolders ? it->is_directory(sorte) : it->is_regular_file(sorte);
        if (!voulu || sorte) continue;
#ifdef _WIN32
        names.push_back(it->path().filename().wstring());
#else
        names.push_back(FromUtf8(it->path().filename().string()));
#endif
    }
    return names;
}

int64_t FileWriteTicks(const std::wstring& path) {
    std::error_code ec;
    const auto t = fs::last_write_time(ToFsPath(path), ec);
    return ec ? 0 : int64_t(t.time_since_epoch().count());
}

int64_t FileSize(const std::wstring& path) {
    std::error_code ec;
    const auto n = fs::file_size(ToFsPath(path), ec);
    return ec ? -1 : int64_t(n);
}

} // namespace rt
