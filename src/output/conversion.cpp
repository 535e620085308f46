#include "output/conversion.h"

#include "app/app.h"
#include "platform/gdi/bmp.h"
#include "platform/gdi/gif_encode.h"
#include "runtime/files.h"
#include "runtime/strings.h"

namespace mv {

namespace {
const wchar_t* const kMime[] = {L"image/bmp", L"image/jpeg", L"image/gif", L"image/png"};
const wchar_t* const kExtensions[] = {L"bmp", L"jpg", L"gif", L"png"};
} // namespace

std::wstring ExtensionFormat(int format) {
    return format >= 1 && format <= 4 ? kExtensions[format - 1] : L"";
}

int FormatExtension(const std::wstring& extension) {
    for (int f = 1; f <= 4; ++f)
        if (extension == kExtensions[f - 1]) return f;
    return 0;
}

int Conversion::ChercherEncodeur(const std::wstring& Mime, std::array<uint8_t, 16>& Clsid) {
    const auto encodeurs = app_.be.GetCodec().GetImageEncoders();
    if (encodeurs.empty()) return -1;
    for (size_t i = 0; i < encodeurs.size(); ++i) {
        if (rt::LCase(encodeurs[i].mimeType) == rt::LCase(Mime)) {
            Clsid = encodeurs[i].clsid;
            return int(i) + 1;
        }
    }
    return 0;
}

void Conversion::ConvertirImage(const std::wstring& Source, const std::wstring& Cible, int Format,
                                int Qualite) {
    if (Format == kFormatGif) {
        // The program's own writer: the image library's takes about a second for a screen
        // under Wine, and the animated builder converts every capture. Colour 0, which the
        // builder marks transparent, stays out of the picture.
        try {
            const std::vector<uint8_t> gif =
                gdi::EncodeGif(gdi::QuantizeForGif(gdi::LoadBmp(Source)));
            rt::WriteFileBytes(Cible, gif.data(), gif.size());
            status = 0;
        } catch (...) {
            status = rt::CaughtError().number;
        }
    } else {
        auto& codec = app_.be.GetCodec();
        platform::ScopedImage image(codec);
        // The load's status is not examined: a failed load shows up as a failed save.
        codec.LoadImageFromFile(Source, image.out());
        ChercherEncodeur(Format >= 1 && Format <= 4 ? kMime[Format - 1] : L"", clsid);
        if (Format == kFormatJpeg) {
            const int qualite = Qualite < 0 || Qualite > 100 ? 75 : Qualite;
            status = codec.SaveImageToFile(image.get(), Cible, clsid, &qualite);
        } else {
            status = codec.SaveImageToFile(image.get(), Cible, clsid, nullptr);
        }
    }
    if (status != 0) {
        app_.MsgBox(app_.Lang(190) + L"\r" + Source + L" !\r" + L"Status Code= " +
                        std::to_wstring(status),
                    ui::kCritical);
    }
}

} // namespace mv
