// Installs a PostScript printer in the current Wine prefix, for the printing checks.
//
// Usage: addprinter.exe NAME UNIXFILE [PPD]
//   NAME      printer name; the printer also becomes the default printer
//   UNIXFILE  Unix path that receives each printed document (overwritten per job)
//   PPD       Unix path of the PPD (default: Ghostscript's ghostpdf.ppd)
//
// The printer uses Wine's PostScript driver (wineps.drv) on a port of its own. Wine's
// spooler sends a finished job for a port named under HKCU\Software\Wine\Printing\Spooler
// to the Unix file given there, as soon as EndDoc returns and without any dialog.
//
// Build: x86_64-w64-mingw32-g++-posix -std=c++20 -O2 -static -municode addprinter.cpp
//        -o addprinter.exe -lwinspool
#include <windows.h>
#include <winspool.h>

#include <cstdio>
#include <string>

namespace {

const wchar_t* const kDriverName = L"Wine PostScript Driver";
const wchar_t* const kEnvironment = L"Windows x64";
const wchar_t* const kDefaultPpd = L"/usr/share/ghostscript/10.00.0/lib/ghostpdf.ppd";

int fail(const wchar_t* what, DWORD err) {
    std::fwprintf(stderr, L"addprinter: %ls failed (error %lu)\n", what, err);
    return 1;
}

// Windows path of a Unix path: Wine's own converter when there, else the Z: drive.
std::wstring dos_path(const std::wstring& unix_path) {
    using Convert = wchar_t*(CDECL*)(const char*);
    auto convert = reinterpret_cast<Convert>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_dos_file_name")));
    if (convert) {
        int n =
            WideCharToMultiByte(CP_UTF8, 0, unix_path.c_str(), -1, nullptr, 0, nullptr, nullptr);
        std::string utf8(static_cast<size_t>(n), '\0');
        WideCharToMultiByte(CP_UTF8, 0, unix_path.c_str(), -1, utf8.data(), n, nullptr, nullptr);
        if (wchar_t* p = convert(utf8.c_str())) {
            std::wstring out = p;
            HeapFree(GetProcessHeap(), 0, p);
            return out;
        }
    }
    std::wstring out = L"Z:" + unix_path;
    for (auto& c : out)
        if (c == L'/') c = L'\\';
    return out;
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 3 || argc > 4) {
        std::fwprintf(stderr, L"usage: addprinter.exe NAME UNIXFILE [PPD]\n");
        return 2;
    }
    std::wstring name = argv[1];
    std::wstring output = argv[2];
    std::wstring ppd_unix = argc > 3 ? argv[3] : kDefaultPpd;
    std::wstring port = name + L":";

    // The PPD goes next to the driver files, where the driver reads it from.
    wchar_t dir[MAX_PATH];
    DWORD needed = 0;
    if (!GetPrinterDriverDirectoryW(nullptr, const_cast<wchar_t*>(kEnvironment), 1,
                                    reinterpret_cast<BYTE*>(dir), sizeof dir, &needed))
        return fail(L"GetPrinterDriverDirectoryW", GetLastError());
    std::wstring ver_dir = std::wstring(dir) + L"\\3";
    CreateDirectoryW(ver_dir.c_str(), nullptr);
    std::wstring ppd_src = dos_path(ppd_unix);
    std::wstring ppd = ver_dir + L"\\" + ppd_src.substr(ppd_src.find_last_of(L'\\') + 1);
    if (!CopyFileW(ppd_src.c_str(), ppd.c_str(), FALSE)) {
        std::fwprintf(stderr, L"addprinter: cannot copy %ls to %ls\n", ppd_src.c_str(),
                      ppd.c_str());
        return fail(L"CopyFileW", GetLastError());
    }

    DRIVER_INFO_3W di{};
    di.cVersion = 3;
    di.pName = const_cast<wchar_t*>(kDriverName);
    di.pEnvironment = const_cast<wchar_t*>(kEnvironment);
    di.pDriverPath = const_cast<wchar_t*>(L"wineps.drv");
    di.pDataFile = ppd.data();
    di.pConfigFile = const_cast<wchar_t*>(L"wineps.drv");
    di.pDefaultDataType = const_cast<wchar_t*>(L"RAW");
    if (!AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&di), APD_COPY_NEW_FILES))
        return fail(L"AddPrinterDriverExW", GetLastError());

    // The spooler maps the port to the Unix file when it schedules a job.
    HKEY key;
    LONG rc = RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Wine\\Printing\\Spooler", 0, nullptr,
                              0, KEY_SET_VALUE, nullptr, &key, nullptr);
    if (rc != ERROR_SUCCESS) return fail(L"RegCreateKeyExW", static_cast<DWORD>(rc));
    rc = RegSetValueExW(key, port.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(output.c_str()),
                        static_cast<DWORD>((output.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
    if (rc != ERROR_SUCCESS) return fail(L"RegSetValueExW", static_cast<DWORD>(rc));

    PRINTER_INFO_2W pi{};
    pi.pPrinterName = name.data();
    pi.pPortName = port.data();
    pi.pDriverName = const_cast<wchar_t*>(kDriverName);
    pi.pPrintProcessor = const_cast<wchar_t*>(L"WinPrint");
    pi.pDatatype = const_cast<wchar_t*>(L"RAW");
    pi.Attributes = PRINTER_ATTRIBUTE_LOCAL;
    HANDLE printer = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&pi));
    if (!printer && GetLastError() == ERROR_PRINTER_ALREADY_EXISTS) {
        // Installed before: point it at this port and driver again.
        if (!OpenPrinterW(name.data(), &printer, nullptr))
            return fail(L"OpenPrinterW", GetLastError());
        if (!SetPrinterW(printer, 2, reinterpret_cast<BYTE*>(&pi), 0)) {
            DWORD err = GetLastError();
            ClosePrinter(printer);
            return fail(L"SetPrinterW", err);
        }
    }
    if (!printer) return fail(L"AddPrinterW", GetLastError());
    ClosePrinter(printer);

    if (!SetDefaultPrinterW(name.c_str())) return fail(L"SetDefaultPrinterW", GetLastError());
    std::fwprintf(stdout, L"printer \"%ls\" on port %ls -> %ls\n", name.c_str(), port.c_str(),
                  output.c_str());
    return 0;
}
