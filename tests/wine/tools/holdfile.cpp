// Holds a file open without sharing, as another program that locks it would, until a
// second file appears.
//
// Usage: holdfile.exe FILE RELEASE   (both Windows paths; FILE is created if missing)
#include <windows.h>

#include <cstdio>
#include <cwchar>

int wmain(int argc, wchar_t** argv) {
    if (argc != 3) {
        std::fwprintf(stderr, L"usage: holdfile FILE RELEASE\n");
        return 2;
    }
    HANDLE h = CreateFileW(argv[1], GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) {
        std::fwprintf(stderr, L"holdfile: cannot open %ls (error %lu)\n", argv[1], GetLastError());
        return 1;
    }
    std::fwprintf(stdout, L"holding %ls\n", argv[1]);
    std::fflush(stdout);
    while (GetFileAttributesW(argv[2]) == INVALID_FILE_ATTRIBUTES) Sleep(50);
    CloseHandle(h);
    return 0;
}
