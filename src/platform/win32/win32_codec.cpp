// The image codec on GDI+: start-up, loading, the frames of an animation, the encoders and
// saving.
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

    int LoadFrames(const std::wstring& path, std::vector<gdi::Surface>& frames,
                   std::vector<int>& delays, int& loops) override {
        frames.clear();
        delays.clear();
        loops = -1;
        Gdiplus::GpImage* img = nullptr;
        int status = Gdiplus::DllExports::GdipLoadImageFromFile(path.c_str(), &img);
        if (status != Gdiplus::Ok) return status;
        GdiplusImage owned(img);
        UINT w = 0, h = 0;
        Gdiplus::DllExports::GdipGetImageWidth(img, &w);
        Gdiplus::DllExports::GdipGetImageHeight(img, &h);
        // FrameDimensionTime: the frames of an animation.
        GUID temps{0x6aedbd6d, 0x3fb5, 0x418a, {0x83, 0xa6, 0x7f, 0x45, 0x22, 0x9d, 0xc8, 0x72}};
        UINT nombre = 0;
        if (Gdiplus::DllExports::GdipImageGetFrameCount(img, &temps, &nombre) != Gdiplus::Ok ||
            nombre == 0)
            nombre = 1;
        const std::vector<uint8_t> delai = Property(img, 0x5100);  // PropertyTagFrameDelay
        const std::vector<uint8_t> boucle = Property(img, 0x5101); // PropertyTagLoopCount
        if (boucle.size() >= 2) loops = boucle[0] | boucle[1] << 8;
        for (UINT i = 0; i < nombre; ++i) {
            if (nombre > 1) Gdiplus::DllExports::GdipImageSelectActiveFrame(img, &temps, i);
            gdi::Surface s(int(w), int(h), 0xFFFFFF);
            Gdiplus::GpBitmap* cible = nullptr;
            status = Gdiplus::DllExports::GdipCreateBitmapFromScan0(
                int(w), int(h), int(w) * 4, PixelFormat32bppRGB, reinterpret_cast<BYTE*>(s.Data()),
                &cible);
            if (status != Gdiplus::Ok) return status;
            GdiplusImage ownedCible(cible);
            Gdiplus::GpGraphics* g = nullptr;
            status = Gdiplus::DllExports::GdipGetImageGraphicsContext(cible, &g);
            if (status != Gdiplus::Ok) return status;
            Gdiplus::DllExports::GdipDrawImageRectI(g, img, 0, 0, int(w), int(h));
            Gdiplus::DllExports::GdipDeleteGraphics(g);
            ownedCible.reset();
            frames.push_back(std::move(s));
            const size_t k = size_t(i) * 4;
            delays.push_back(
                k + 4 <= delai.size() ? int(delai[k] | delai[k + 1] << 8 | delai[k + 2] << 16) : 0);
        }
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
    // The value bytes of a property of the image; empty when it has none.
    static std::vector<uint8_t> Property(Gdiplus::GpImage* img, PROPID id) {
        UINT taille = 0;
        if (Gdiplus::DllExports::GdipGetPropertyItemSize(img, id, &taille) != Gdiplus::Ok ||
            taille < sizeof(Gdiplus::PropertyItem))
            return {};
        std::vector<uint8_t> buffer(taille);
        auto* item = reinterpret_cast<Gdiplus::PropertyItem*>(buffer.data());
        if (Gdiplus::DllExports::GdipGetPropertyItem(img, id, taille, item) != Gdiplus::Ok)
            return {};
        const auto* v = static_cast<const uint8_t*>(item->value);
        return std::vector<uint8_t>(v, v + item->length);
    }

    ULONG_PTR token_ = 0;
};

} // namespace

std::unique_ptr<platform::ImageCodec> MakeCodec() {
    return std::make_unique<GdiplusCodec>();
}

} // namespace win32
