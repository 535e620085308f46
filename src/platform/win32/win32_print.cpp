// The printer: the printer dialog's choice, and documents drawn on a printer DC with the
// positions of the printer object converted from twips to the page's pixels.
#include "platform/win32/win32_print.h"

#include "platform/ui/units.h"
#include "platform/win32/handles.h"

#include <commdlg.h>
#include <winspool.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace win32 {

namespace {

// The device name and a copy of the settings from a dialog's DEVNAMES and DEVMODE blocks.
void TakeChoice(HGLOBAL devNames, HGLOBAL devMode, std::wstring& device, std::vector<BYTE>& mode) {
    GlobalLocked names(devNames);
    if (auto* dn = static_cast<const DEVNAMES*>(names.get()))
        device = reinterpret_cast<const wchar_t*>(dn) + dn->wDeviceOffset;
    GlobalLocked settings(devMode);
    if (auto* dm = static_cast<const BYTE*>(settings.get())) {
        const auto* head = reinterpret_cast<const DEVMODEW*>(dm);
        mode.assign(dm, dm + head->dmSize + head->dmDriverExtra);
    }
}

class Win32Printer : public PrinterDevice {
public:
    ~Win32Printer() override { Close(); }

    bool Choose(HWND owner, int& copies) override {
        // No printer at all ends the print without a word, as a Cancel does (the dialog
        // would warn, whatever its flags say under some systems).
        if (!AnyPrinter()) return false;
        PRINTDLGW pd{};
        pd.lStructSize = sizeof pd;
        pd.hwndOwner = owner;
        pd.Flags = PD_NOSELECTION | PD_NOPAGENUMS | PD_HIDEPRINTTOFILE | PD_NOWARNING;
        pd.nCopies = WORD(std::clamp(copies, 1, 9999));
        pd.nMinPage = pd.nMaxPage = pd.nFromPage = pd.nToPage = 1;
        GlobalMemory mode(MakeMode());
        GlobalMemory names(MakeNames());
        pd.hDevMode = mode.release();
        pd.hDevNames = names.release();
        const BOOL ok = PrintDlgW(&pd);
        // The dialog may have replaced the blocks; either way they are ours to free.
        mode.reset(pd.hDevMode);
        names.reset(pd.hDevNames);
        if (!ok) return false;
        TakeChoice(pd.hDevNames, pd.hDevMode, device_, mode_);
        // A driver that makes copies itself keeps the count in its settings.
        int n = pd.nCopies;
        if (!mode_.empty()) {
            const auto* dm = reinterpret_cast<const DEVMODEW*>(mode_.data());
            if ((dm->dmFields & DM_COPIES) && dm->dmCopies > n) n = dm->dmCopies;
        }
        copies = std::max(n, 1);
        return true;
    }

    bool BeginDocument(int copies) override {
        Close();
        if (device_.empty()) {
            // No choice made yet: the default printer, asked of the dialog without showing it.
            PRINTDLGW pd{};
            pd.lStructSize = sizeof pd;
            pd.Flags = PD_RETURNDEFAULT;
            if (!PrintDlgW(&pd)) return false;
            GlobalMemory mode(pd.hDevMode), names(pd.hDevNames);
            TakeChoice(pd.hDevNames, pd.hDevMode, device_, mode_);
            if (device_.empty()) return false;
        }
        std::vector<BYTE> mode = mode_;
        DEVMODEW* dm = mode.empty() ? nullptr : reinterpret_cast<DEVMODEW*>(mode.data());
        if (dm) {
            dm->dmCopies = short(std::clamp(copies, 1, 9999));
            dm->dmFields |= DM_COPIES;
        }
        dc_.reset(CreateDCW(L"WINSPOOL", device_.c_str(), nullptr, dm));
        if (!dc_) return false;
        DOCINFOW di{};
        di.cbSize = sizeof di;
        di.lpszDocName = L"Mirovanta";
        if (::StartDocW(dc_.get(), &di) <= 0) {
            Close();
            return false;
        }
        started_ = true;
        if (::StartPage(dc_.get()) <= 0) {
            AbortDocument();
            return false;
        }
        dpiX_ = std::max(GetDeviceCaps(dc_.get(), LOGPIXELSX), 1);
        dpiY_ = std::max(GetDeviceCaps(dc_.get(), LOGPIXELSY), 1);
        font_.reset(CreateFontW(-MulDiv(10, dpiY_, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                                DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Arial"));
        failed_ = false;
        return true;
    }

    float Text(float x, float y, const std::wstring& text) override {
        if (!dc_) return 0;
        HDC dc = dc_.get();
        Selected font(dc, font_.get());
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, RGB(0, 0, 0));
        SetTextAlign(dc, TA_LEFT | TA_TOP | TA_NOUPDATECP);
        if (!TextOutW(dc, PxX(x), PxY(y), text.c_str(), int(text.size()))) failed_ = true;
        TEXTMETRICW tm{};
        GetTextMetricsW(dc, &tm);
        return ui::ToTwips(tm.tmHeight + tm.tmExternalLeading, ui::TwipsPerPixel(dpiY_));
    }

    void Picture(const gdi::Surface& s, float x, float y, float w, float h) override {
        if (!dc_) return;
        BITMAPINFO bi = TopDownBitmapInfo(s.Width(), s.Height());
        SetStretchBltMode(dc_.get(), HALFTONE);
        SetBrushOrgEx(dc_.get(), 0, 0, nullptr);
        if (StretchDIBits(dc_.get(), PxX(x), PxY(y), PxX(w), PxY(h), 0, 0, s.Width(), s.Height(),
                          s.Data(), &bi, DIB_RGB_COLORS, SRCCOPY) == int(GDI_ERROR))
            failed_ = true;
    }

    bool EndDocument() override {
        if (!dc_) return false;
        if (failed_) {
            AbortDocument();
            return false;
        }
        const bool ok = ::EndPage(dc_.get()) > 0 && ::EndDoc(dc_.get()) > 0;
        started_ = false;
        Close();
        return ok;
    }

    void AbortDocument() override {
        if (dc_ && started_) ::AbortDoc(dc_.get());
        started_ = false;
        Close();
    }

private:
    static bool AnyPrinter() {
        DWORD needed = 0, count = 0;
        EnumPrintersW(PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS, nullptr, 4, nullptr, 0,
                      &needed, &count);
        if (needed == 0) return false;
        std::vector<BYTE> buffer(needed);
        return EnumPrintersW(PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS, nullptr, 4,
                             buffer.data(), needed, &needed, &count) &&
               count > 0;
    }

    // The page's own resolution, not the screen's.
    int PxX(float twips) const { return ui::ToPixels(twips, ui::TwipsPerPixel(dpiX_)); }
    int PxY(float twips) const { return ui::ToPixels(twips, ui::TwipsPerPixel(dpiY_)); }

    // The blocks that open the dialog on the previous choice.
    HGLOBAL MakeMode() const {
        if (mode_.empty()) return nullptr;
        GlobalMemory g(GlobalAlloc(GMEM_MOVEABLE, mode_.size()));
        GlobalLocked p(g.get());
        if (!p.get()) return nullptr;
        std::memcpy(p.get(), mode_.data(), mode_.size());
        return g.release();
    }
    HGLOBAL MakeNames() const {
        if (device_.empty()) return nullptr;
        const size_t chars = device_.size() + 1;
        const size_t offset = sizeof(DEVNAMES) / sizeof(wchar_t) + 1;
        GlobalMemory g(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, (offset + chars + 2) * 2));
        GlobalLocked p(g.get());
        auto* dn = static_cast<DEVNAMES*>(p.get());
        if (!dn) return nullptr;
        auto* base = reinterpret_cast<wchar_t*>(dn);
        dn->wDeviceOffset = WORD(offset);
        dn->wDriverOffset = WORD(offset + chars);     // empty text
        dn->wOutputOffset = WORD(offset + chars + 1); // empty text
        std::memcpy(base + offset, device_.c_str(), chars * sizeof(wchar_t));
        return g.release();
    }

    // The font goes before the DC it was made for.
    void Close() {
        font_.reset();
        dc_.reset();
    }

    std::wstring device_;
    std::vector<BYTE> mode_;
    DCHandle dc_;
    FontHandle font_;
    bool started_ = false;
    bool failed_ = false;
    int dpiX_ = 600, dpiY_ = 600;
};

} // namespace

std::unique_ptr<PrinterDevice> MakePrinter() {
    return std::make_unique<Win32Printer>();
}

} // namespace win32
