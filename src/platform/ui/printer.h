// The printer object: a page that starts with the first thing printed on it, a current
// position in twips, copies, and the end of the document.
#pragma once

#include "platform/services.h"

#include <string>

namespace ui {

class Printer {
public:
    explicit Printer(platform::Printer& device) : device_(device) {}
    ~Printer();
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    int Copies() const { return copies_; }
    void SetCopies(int n); // 380 below 1
    float CurrentX = 0;
    float CurrentY = 0;

    // Prints a line at the current position; the position moves to the next line's start.
    void Print(const std::wstring& text);
    // Draws a picture stretched into the rectangle (twips).
    void PaintPicture(const gdi::Surface& s, float x, float y, float w, float h);
    // Sends the document; nothing happens when nothing was printed.
    void EndDoc();
    // Drops the document being built.
    void KillDoc();

private:
    void Begin(); // 482 when there is no printer
    platform::Printer& device_;
    int copies_ = 1;
    bool open_ = false;
};

} // namespace ui
