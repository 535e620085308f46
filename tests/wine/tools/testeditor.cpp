// An image editor for the editor checks: writes its command line to <its path>.log, paints
// a red square 40 pixels wide at (10, 10) of the BMP it is given, saves it in place as a
// 32-bit picture, then stays for the seconds written in <its path>.secs (8 when there is
// no such file) and exits.
#include "platform/gdi/bmp.h"

#include <windows.h>

#include <cstdio>
#include <exception>
#include <string>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    const std::wstring base(self);
    if (FILE* log = _wfopen((base + L".log").c_str(), L"w")) {
        std::fwprintf(log, L"%ls\n", GetCommandLineW());
        std::fclose(log);
    }
    int secondes = 8;
    if (FILE* f = _wfopen((base + L".secs").c_str(), L"r")) {
        if (std::fwscanf(f, L"%d", &secondes) != 1) secondes = 8;
        std::fclose(f);
    }
    int argc = 0;
    wchar_t** argv = CommandLineToArgvW(GetCommandLineW(), &argc);
    if (argv == nullptr || argc < 2) return 2;
    try {
        gdi::Surface image = gdi::LoadBmp(argv[1]);
        for (int y = 10; y < 50 && y < image.Height(); ++y)
            for (int x = 10; x < 50 && x < image.Width(); ++x) image.At(x, y) = gdi::Rgb(255, 0, 0);
        gdi::SaveBmp(image, argv[1], 32);
    } catch (const std::exception&) {
        return 1;
    }
    Sleep(DWORD(secondes) * 1000);
    return 0;
}
