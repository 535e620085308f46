// BMP files: the writer makes the plain form every reader takes; the reader takes the forms
// other programs write and treats every field of the file as hostile.
#include "platform/gdi/bmp.h"

#include "platform/gdi/little_endian.h"
#include "runtime/errors.h"
#include "runtime/files.h"

#include <algorithm>
#include <array>

namespace gdi {

namespace {

constexpr uint32_t kFileHeaderSize = 14;
constexpr uint32_t kInfoHeaderSize = 40;
constexpr uint32_t kBiRgb = 0;
constexpr uint32_t kBiBitfields = 3;
constexpr int64_t kMaxSide = 65536;
// The most pixels a picture may hold in memory, four bytes each: 1 GiB in a 64-bit
// process, 256 MiB in a 32-bit one, whose address space is 2 GiB. Both hold a
// double-height capture of a 7680x4320 screen.
constexpr int64_t kMaxPixels = sizeof(void*) >= 8 ? int64_t(1) << 28 : int64_t(1) << 26;
constexpr int32_t kPixelsPerMeter = 3780; // 96 dots per inch

[[noreturn]] void Invalid() {
    rt::Raise(rt::kInvalidPicture);
}

// Little-endian fields of a file in memory; any read past the end is an invalid picture.
class Bytes {
public:
    Bytes(const uint8_t* data, size_t size) : data_(data), size_(data ? size : 0) {}

    // The n bytes at offset, which must all lie inside the file.
    const uint8_t* Need(uint64_t offset, uint64_t n) const {
        if (offset > size_ || n > size_ - offset) Invalid();
        return data_ + offset;
    }
    uint32_t U16(uint64_t offset) const {
        const uint8_t* p = Need(offset, 2);
        return uint32_t(p[0]) | uint32_t(p[1]) << 8;
    }
    uint32_t U32(uint64_t offset) const {
        const uint8_t* p = Need(offset, 4);
        return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
    }
    int32_t I32(uint64_t offset) const { return int32_t(U32(offset)); }

private:
    const uint8_t* data_;
    size_t size_;
};

// One colour channel of a 16 or 32-bit pixel, by its mask, scaled to 0..255.
class Channel {
public:
    // A mask must be one run of bits inside the pixel; an empty mask gives 0.
    Channel(uint32_t mask, int bitsPerPixel) : mask_(mask) {
        if (mask == 0) return;
        if (bitsPerPixel < 32 && mask >> bitsPerPixel != 0) Invalid();
        while (!(mask >> shift_ & 1)) ++shift_;
        uint32_t run = mask >> shift_;
        if (run & (run + 1)) Invalid();
        for (; run != 0; run >>= 1) ++bits_;
        for (uint32_t v = 0; bits_ < 8 && v < (1u << bits_); ++v)
            scale_[v] = uint8_t((v * 255 + ((1u << bits_) - 1) / 2) / ((1u << bits_) - 1));
    }
    uint32_t operator()(uint32_t v) const {
        if (mask_ == 0) return 0;
        uint32_t x = (v & mask_) >> shift_;
        return bits_ >= 8 ? x >> (bits_ - 8) : scale_[x];
    }

private:
    uint32_t mask_;
    int shift_ = 0;
    int bits_ = 0;
    std::array<uint8_t, 128> scale_{};
};

} // namespace

std::vector<uint8_t> EncodeBmp(const Surface& s, int bitsPerPixel) {
    if ((bitsPerPixel != 24 && bitsPerPixel != 32) || s.Empty()) rt::Raise(rt::kInvalidCall);
    uint64_t rowBytes = (uint64_t(s.Width()) * uint64_t(bitsPerPixel) + 31) / 32 * 4;
    uint64_t imageBytes = rowBytes * uint64_t(s.Height());
    uint64_t fileBytes = kFileHeaderSize + kInfoHeaderSize + imageBytes;
    if (fileBytes > 0xFFFFFFFFu) rt::Raise(rt::kInvalidCall);

    std::vector<uint8_t> out;
    out.reserve(size_t(fileBytes));
    out.push_back('B');
    out.push_back('M');
    Put32(out, uint32_t(fileBytes));
    Put32(out, 0);
    Put32(out, kFileHeaderSize + kInfoHeaderSize);
    Put32(out, kInfoHeaderSize);
    Put32(out, uint32_t(s.Width()));
    Put32(out, uint32_t(s.Height())); // positive: bottom-up rows
    Put16(out, 1);                    // planes
    Put16(out, uint32_t(bitsPerPixel));
    Put32(out, kBiRgb);
    Put32(out, uint32_t(imageBytes));
    Put32(out, kPixelsPerMeter);
    Put32(out, kPixelsPerMeter);
    Put32(out, 0); // colours used
    Put32(out, 0); // colours important
    size_t pixelBytes = size_t(bitsPerPixel / 8);
    size_t padding = size_t(rowBytes) - size_t(s.Width()) * pixelBytes;
    for (int y = s.Height() - 1; y >= 0; --y) {
        const Pixel* row = s.Row(y);
        for (int x = 0; x < s.Width(); ++x) {
            out.push_back(uint8_t(BlueOf(row[x])));
            out.push_back(uint8_t(GreenOf(row[x])));
            out.push_back(uint8_t(RedOf(row[x])));
            if (pixelBytes == 4) out.push_back(0);
        }
        out.insert(out.end(), padding, 0);
    }
    return out;
}

Surface DecodeBmp(const uint8_t* data, size_t size) {
    Bytes in(data, size);
    if (in.Need(0, 2)[0] != 'B' || in.Need(0, 2)[1] != 'M') Invalid();
    uint32_t offBits = in.U32(10);
    uint32_t headerSize = in.U32(kFileHeaderSize);
    in.Need(kFileHeaderSize, headerSize);

    int64_t width = 0, height = 0;
    uint32_t planes = 0, bpp = 0, compression = kBiRgb, colorsUsed = 0, entrySize = 4;
    if (headerSize == 12) { // BITMAPCOREHEADER: 16-bit unsigned sizes, 3-byte palette entries
        width = in.U16(18);
        height = in.U16(20);
        planes = in.U16(22);
        bpp = in.U16(24);
        entrySize = 3;
    } else if (headerSize == 40 || headerSize == 52 || headerSize == 56 || headerSize == 108 ||
               headerSize == 124) { // BITMAPINFOHEADER and its extensions up to V5
        width = in.I32(18);
        height = in.I32(22);
        planes = in.U16(26);
        bpp = in.U16(28);
        compression = in.U32(30);
        colorsUsed = in.U32(46);
    } else {
        Invalid();
    }
    const uint64_t paletteAt = uint64_t(kFileHeaderSize) + headerSize;

    // Negative height: rows stored top-down.
    bool topDown = height < 0;
    height = topDown ? -height : height;
    // Checked before anything is read or allocated: a small file of few bits per pixel
    // can describe a picture far larger in memory than on disk.
    if (planes != 1 || width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide ||
        width * height > kMaxPixels)
        Invalid();

    uint32_t masks[3] = {0, 0, 0}; // red, green, blue
    if (compression == kBiBitfields && (bpp == 16 || bpp == 32)) {
        // In a 40-byte header the masks follow it (these pictures have no palette); the
        // longer headers hold them at the same place.
        for (int i = 0; i < 3; ++i) masks[i] = in.U32(54 + 4 * i);
    } else if (compression != kBiRgb) {
        Invalid(); // run-length and embedded JPEG/PNG pictures are not read
    } else if (bpp == 16) {
        masks[0] = 0x7C00, masks[1] = 0x03E0, masks[2] = 0x001F;
    } else if (bpp == 32) {
        masks[0] = 0xFF0000, masks[1] = 0xFF00, masks[2] = 0xFF;
    }
    bool paletted = bpp == 1 || bpp == 4 || bpp == 8;
    if (!paletted && bpp != 16 && bpp != 24 && bpp != 32) Invalid();
    if (entrySize == 3 && (bpp == 16 || bpp == 32)) Invalid();

    std::vector<Pixel> palette;
    if (paletted) {
        uint64_t count = uint64_t(1) << bpp;
        if (colorsUsed != 0) count = std::min<uint64_t>(count, colorsUsed);
        // A core file's palette runs up to the pixels.
        if (entrySize == 3 && offBits >= paletteAt)
            count = std::min<uint64_t>(count, (offBits - paletteAt) / 3);
        const uint8_t* p = in.Need(paletteAt, count * entrySize);
        for (uint64_t i = 0; i < count; ++i, p += entrySize)
            palette.push_back(Rgb(p[2], p[1], p[0]));
    }

    uint64_t rowBytes = (uint64_t(width) * bpp + 31) / 32 * 4;
    if (offBits < uint64_t(kFileHeaderSize) + headerSize) Invalid();
    const uint8_t* pixels = in.Need(offBits, rowBytes * uint64_t(height));

    Channel red(masks[0], int(bpp)), green(masks[1], int(bpp)), blue(masks[2], int(bpp));
    auto decodeRow = [&](const uint8_t* p, Pixel* row) {
        if (bpp == 24) {
            for (int64_t x = 0; x < width; ++x, p += 3) row[x] = Rgb(p[2], p[1], p[0]);
        } else if (bpp == 32) {
            for (int64_t x = 0; x < width; ++x, p += 4) {
                uint32_t v = uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 |
                             uint32_t(p[3]) << 24;
                row[x] = Rgb(int(red(v)), int(green(v)), int(blue(v)));
            }
        } else if (bpp == 16) {
            for (int64_t x = 0; x < width; ++x, p += 2) {
                uint32_t v = uint32_t(p[0]) | uint32_t(p[1]) << 8;
                row[x] = Rgb(int(red(v)), int(green(v)), int(blue(v)));
            }
        } else { // palette indices, the leftmost pixel in the high bits
            for (int64_t x = 0; x < width; ++x) {
                uint64_t bit = uint64_t(x) * bpp;
                uint32_t index = (p[bit / 8] >> (8 - bpp - bit % 8)) & ((1u << bpp) - 1);
                // An index past the palette draws black.
                row[x] = index < palette.size() ? palette[index] : 0;
            }
        }
    };
    Surface out{int(width), int(height)};
    for (int64_t y = 0; y < height; ++y)
        decodeRow(pixels + size_t(topDown ? y : height - 1 - y) * size_t(rowBytes),
                  out.Row(int(y)));
    return out;
}

void SaveBmp(const Surface& s, const std::wstring& path, int bitsPerPixel) {
    std::vector<uint8_t> bytes = EncodeBmp(s, bitsPerPixel);
    rt::WriteFileBytes(path, bytes.data(), bytes.size());
}

Surface LoadBmp(const std::wstring& path) {
    std::vector<uint8_t> bytes = rt::ReadFileBytes(path);
    return DecodeBmp(bytes.data(), bytes.size());
}

} // namespace gdi
