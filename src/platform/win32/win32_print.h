// The printer service of the Win32 backend, with the printer dialog that picks its device.
#pragma once

#include "platform/services.h"

#include <windows.h>

#include <memory>

namespace win32 {

class PrinterDevice : public platform::Printer {
public:
    // Shows the printer dialog opened on the previous choice and the copy count; on OK
    // the chosen printer serves the next documents and `copies` holds the count.
    virtual bool Choose(HWND owner, int& copies) = 0;
};

std::unique_ptr<PrinterDevice> MakePrinter();

} // namespace win32
