// A window whose colour counts, for the timed-capture checks: every 50 ms the count n goes
// up and the window is filled with red n mod 256, green n / 256 mod 256, blue 200, with the
// count written in its corner. It never takes the focus.
//
// Usage: counter.exe X Y WIDTH HEIGHT
#include <windows.h>

#include <cstdlib>
#include <cwchar>

namespace {

unsigned compte = 0;

LRESULT CALLBACK Proc(HWND w, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_TIMER:
        ++compte;
        InvalidateRect(w, nullptr, FALSE);
        return 0;
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(w, &ps);
        RECT r;
        GetClientRect(w, &r);
        HBRUSH b = CreateSolidBrush(RGB(compte & 255, (compte >> 8) & 255, 200));
        FillRect(dc, &r, b);
        DeleteObject(b);
        wchar_t texte[16];
        std::swprintf(texte, 16, L"%u", compte);
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, RGB(255, 255, 255));
        TextOutW(dc, 4, 4, texte, int(std::wcslen(texte)));
        EndPaint(w, &ps);
        return 0;
    }
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(w, msg, wp, lp);
    }
}

} // namespace

int WINAPI wWinMain(HINSTANCE inst, HINSTANCE, PWSTR, int) {
    int argc = 0;
    wchar_t** argv = CommandLineToArgvW(GetCommandLineW(), &argc);
    if (argv == nullptr || argc != 5) return 2;
    const int x = _wtoi(argv[1]), y = _wtoi(argv[2]), w = _wtoi(argv[3]), h = _wtoi(argv[4]);
    WNDCLASSW wc{};
    wc.lpfnWndProc = Proc;
    wc.hInstance = inst;
    wc.lpszClassName = L"MirovantaCounter";
    wc.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    RegisterClassW(&wc);
    HWND win = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, wc.lpszClassName, L"counter",
                               WS_POPUP | WS_VISIBLE, x, y, w, h, nullptr, nullptr, inst, nullptr);
    if (win == nullptr) return 1;
    SetTimer(win, 1, 50, nullptr);
    MSG m;
    while (GetMessageW(&m, nullptr, 0, 0) > 0) {
        TranslateMessage(&m);
        DispatchMessageW(&m);
    }
    return 0;
}
