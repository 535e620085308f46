// The one route from a BMP file to JPEG, GIF or PNG, on the image library.
#pragma once

#include "platform/services.h"

#include <array>
#include <string>

namespace mv {

class App;

// Format numbers of the conversion and of the save dialog's filter, in this order.
enum FormatImage { kFormatBmp = 1, kFormatJpeg = 2, kFormatGif = 3, kFormatPng = 4 };

// The extension of a format ("bmp", "jpg", "gif", "png"); empty outside 1 to 4.
std::wstring ExtensionFormat(int format);
// The format of an extension, 0 when it is none of the four.
int FormatExtension(const std::wstring& extension);

class Conversion {
public:
    explicit Conversion(App& app) : app_(app) {}
    // Converts Source to Cible. A failure is shown to the user (entry 190, the source path,
    // the status) and not returned: the caller goes on.
    void ConvertirImage(const std::wstring& Source, const std::wstring& Cible, int Format,
                        int Qualite);
    // The encoder of a MIME type, ignoring case: its index from 1, 0 with no match (Clsid
    // then keeps what it held), -1 when the library lists none.
    int ChercherEncodeur(const std::wstring& Mime, std::array<uint8_t, 16>& Clsid);

    // The module-wide state of the original, on one thread.
    std::array<uint8_t, 16> clsid{};
    int status = 0;

private:
    App& app_;
};

} // namespace mv
