// The input box: a prompt, OK and Cancel at the right, and a line of text below, built as
// an in-memory dialog template.
#include "platform/win32/win32_backend.h"

#include <string>
#include <vector>

namespace win32 {

namespace {

constexpr WORD kPromptId = 100;
constexpr WORD kEditId = 101;

// Appends the words of a dialog template; items start on a 4-byte boundary.
class Template {
public:
    void Word(WORD w) { words_.push_back(w); }
    void Dword(DWORD d) {
        Word(LOWORD(d));
        Word(HIWORD(d));
    }
    void Text(const wchar_t* s) {
        for (; *s; ++s) Word(WORD(*s));
        Word(0);
    }
    void Align() {
        if (words_.size() % 2) Word(0);
    }
    void Item(DWORD style, short x, short y, short cx, short cy, WORD id, WORD cls,
              const wchar_t* text) {
        Align();
        Dword(style | WS_CHILD | WS_VISIBLE);
        Dword(0);
        for (short v : {x, y, cx, cy}) Word(WORD(v));
        Word(id);
        Word(0xFFFF);
        Word(cls);
        Text(text);
        Word(0);     // no creation data
        ++words_[4]; // the template's item count
    }
    const DLGTEMPLATE* Get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

private:
    std::vector<WORD> words_;
};

struct State {
    const std::wstring* prompt;
    const std::wstring* title;
    std::wstring* text;
};

INT_PTR CALLBACK InputProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_INITDIALOG: {
        SetWindowLongPtrW(h, DWLP_USER, lp);
        auto* st = reinterpret_cast<State*>(lp);
        SetWindowTextW(h, st->title->c_str());
        SetDlgItemTextW(h, kPromptId, st->prompt->c_str());
        HWND edit = GetDlgItem(h, kEditId);
        SetWindowTextW(edit, st->text->c_str());
        SendMessageW(edit, EM_SETSEL, 0, -1);
        SetFocus(edit);
        SetForegroundWindow(h);
        return FALSE; // the focus is set
    }
    case WM_COMMAND:
        if (LOWORD(wp) == IDOK) {
            auto* st = reinterpret_cast<State*>(GetWindowLongPtrW(h, DWLP_USER));
            HWND edit = GetDlgItem(h, kEditId);
            std::wstring t(size_t(GetWindowTextLengthW(edit)) + 1, L'\0');
            t.resize(size_t(GetWindowTextW(edit, t.data(), int(t.size()))));
            *st->text = t;
            EndDialog(h, IDOK);
            return TRUE;
        }
        if (LOWORD(wp) == IDCANCEL) {
            EndDialog(h, IDCANCEL);
            return TRUE;
        }
        break;
    }
    return FALSE;
}

} // namespace

bool RunInputBox(HWND owner, const std::wstring& prompt, const std::wstring& title,
                 std::wstring& text) {
    Template t;
    // DLGTEMPLATE, then menu, class, title, and the font of DS_SETFONT.
    t.Dword(DS_MODALFRAME | DS_SETFONT | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU);
    t.Dword(0);
    t.Word(0); // item count, raised by each item
    for (short v : {0, 0, 262, 84}) t.Word(WORD(v));
    t.Word(0);
    t.Word(0);
    t.Text(L"");
    t.Word(8);
    t.Text(L"MS Shell Dlg");
    t.Item(SS_LEFT | SS_NOPREFIX, 7, 7, 190, 48, kPromptId, 0x0082, L"");
    t.Item(BS_DEFPUSHBUTTON | WS_TABSTOP, 205, 7, 50, 14, IDOK, 0x0080, L"OK");
    t.Item(BS_PUSHBUTTON | WS_TABSTOP, 205, 25, 50, 14, IDCANCEL, 0x0080, L"Cancel");
    t.Item(ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, 7, 62, 248, 13, kEditId, 0x0081, L"");
    std::wstring typed = text;
    State st{&prompt, &title, &typed};
    const INT_PTR r = DialogBoxIndirectParamW(GetModuleHandleW(nullptr), t.Get(), owner, InputProc,
                                              reinterpret_cast<LPARAM>(&st));
    if (r != IDOK) return false;
    text = typed;
    return true;
}

} // namespace win32
