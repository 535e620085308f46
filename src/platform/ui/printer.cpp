#include "platform/ui/printer.h"

#include "runtime/errors.h"

namespace ui {

Printer::~Printer() {
    KillDoc();
}

void Printer::SetCopies(int n) {
    if (n < 1) rt::Raise(rt::kInvalidPropertyValue);
    copies_ = n;
}

void Printer::Begin() {
    if (open_) return;
    if (!device_.BeginDocument(copies_)) rt::Raise(rt::kPrinterError);
    open_ = true;
}

void Printer::Print(const std::wstring& text) {
    Begin();
    CurrentY += device_.Text(CurrentX, CurrentY, text);
    CurrentX = 0;
}

void Printer::PaintPicture(const gdi::Surface& s, float x, float y, float w, float h) {
    if (s.Width() == 0 || s.Height() == 0) rt::Raise(rt::kInvalidPicture);
    Begin();
    device_.Picture(s, x, y, w, h);
}

void Printer::EndDoc() {
    if (!open_) return;
    open_ = false;
    CurrentX = 0;
    CurrentY = 0;
    if (!device_.EndDocument()) rt::Raise(rt::kPrinterError);
}

void Printer::KillDoc() {
    if (!open_) return;
    open_ = false;
    CurrentX = 0;
    CurrentY = 0;
    device_.AbortDocument();
}

} // namespace ui
