// The image codec on GDI+: start-up, loading, the indexed bitmaps of GIF files, the
// encoders and saving.
#include "platform/win32/win32_backend.h"

#include <objidl.h> // before gdiplus.h, which needs PROPID

#include <gdiplus.h>

#include <cstring>
#include <vector>

namespace win32 {

void GdiplusImageTraits::Close(Gdiplus::GpImage* image) {
    Gdiplus::DllExports::GdipDisposeImage(image);
}

namespace {

// The GDI+ flat interface, call for call.
class GdiplusCodec : public platform::ImageCodec {
public:
    bool Startup() override {
        if (token_) return true;
        // Version 1, everything else 0, no output record. The library stays up until the
        // process ends.
        Gdiplus::GdiplusStartupInput input;
        return Gdiplus::GdiplusStartup(&token_, &input, nullptr) == Gdiplus::Ok;
    }

    int LoadImageFromFile(const std::wstring& path, platform::ImageHandle& image) override {
        Gdiplus::GpImage* img = nullptr;
        const int status = Gdiplus::DllExports::GdipLoadImageFromFile(path.c_str(), &img);
        image = platform::ImageHandle(img);
        return status;
    }

    int CreateIndexedImage(int width, int height, const std::vector<gdi::Pixel>& palette,
                           const std::vector<uint8_t>& indices,
                           platform::ImageHandle& image) override {
        image = 0;
        Gdiplus::GpBitmap* bitmap = nullptr;
        int status = Gdiplus::DllExports::GdipCreateBitmapFromScan0(
            width, height, 0, PixelFormat8bppIndexed, nullptr, &bitmap);
        if (status != Gdiplus::Ok) return status;
        GdiplusImage owned(bitmap);
        // The palette: a count and ARGB entries after two 32-bit fields.
        std::vector<uint8_t> buffer(sizeof(Gdiplus::ColorPalette) + 256 * sizeof(Gdiplus::ARGB));
        auto* pal = reinterpret_cast<Gdiplus::ColorPalette*>(buffer.data());
        pal->Flags = 0;
        pal->Count = UINT(palette.size());
        for (size_t i = 0; i < palette.size() && i < 256; ++i)
            pal->Entries[i] = 0xFF000000u | palette[i];
        status = Gdiplus::DllExports::GdipSetImagePalette(bitmap, pal);
        Gdiplus::Rect rect(0, 0, width, height);
        Gdiplus::BitmapData data{};
        if (status == Gdiplus::Ok)
            status = Gdiplus::DllExports::GdipBitmapLockBits(
                bitmap, &rect, Gdiplus::ImageLockModeWrite, PixelFormat8bppIndexed, &data);
        if (status == Gdiplus::Ok) {
            for (int y = 0; y < height; ++y)
                std::memcpy(static_cast<uint8_t*>(data.Scan0) + ptrdiff_t(y) * data.Stride,
                            indices.data() + size_t(y) * size_t(width), size_t(width));
            status = Gdiplus::DllExports::GdipBitmapUnlockBits(bitmap, &data);
        }
        if (status != Gdiplus::Ok) return status;
        image = platform::ImageHandle(owned.release());
        return 0;
    }

    std::vector<platform::EncoderInfo> GetImageEncoders() override {
        UINT count = 0, size = 0;
        Gdiplus::DllExports::GdipGetImageEncodersSize(&count, &size);
        std::vector<platform::EncoderInfo> out;
        if (size == 0) return out;
        std::vector<uint8_t> buffer(size);
        auto* codecs = reinterpret_cast<Gdiplus::ImageCodecInfo*>(buffer.data());
        if (Gdiplus::DllExports::GdipGetImageEncoders(count, size, codecs) != Gdiplus::Ok)
            return out;
        for (UINT i = 0; i < count; ++i) {
            platform::EncoderInfo e;
            std::memcpy(e.clsid.data(), &codecs[i].Clsid, 16);
            if (codecs[i].MimeType) e.mimeType = codecs[i].MimeType;
            out.push_back(std::move(e));
        }
        return out;
    }

    int SaveImageToFile(platform::ImageHandle image, const std::wstring& path,
                        const std::array<uint8_t, 16>& clsid, const int* quality) override {
        CLSID encoder;
        std::memcpy(&encoder, clsid.data(), 16);
        auto* img = reinterpret_cast<Gdiplus::GpImage*>(image);
        if (!quality)
            return Gdiplus::DllExports::GdipSaveImageToFile(img, path.c_str(), &encoder, nullptr);
        // One parameter: the encoder quality, one 32-bit value.
        GUID qualityGuid;
        CLSIDFromString(L"{1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB}", &qualityGuid);
        ULONG value = ULONG(*quality);
        Gdiplus::EncoderParameters params;
        params.Count = 1;
        params.Parameter[0].Guid = qualityGuid;
        params.Parameter[0].NumberOfValues = 1;
        params.Parameter[0].Type = 4;
        params.Parameter[0].Value = &value;
        return Gdiplus::DllExports::GdipSaveImageToFile(img, path.c_str(), &encoder, &params);
    }

    void DisposeImage(platform::ImageHandle image) override {
        if (image)
            Gdiplus::DllExports::GdipDisposeImage(reinterpret_cast<Gdiplus::GpImage*>(image));
    }

private:
    ULONG_PTR token_ = 0;
};

} // namespace

std::unique_ptr<platform::ImageCodec> MakeCodec() {
    return std::make_unique<GdiplusCodec>();
}

} // namespace win32
