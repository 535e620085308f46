// GIF writer: LZW with variable code sizes, a dictionary in an open-addressing table that is
// emptied by a generation count rather than cleared.
#include "platform/gdi/gif_encode.h"

#include "platform/gdi/little_endian.h"
#include "runtime/errors.h"

#include <array>

namespace gdi {

namespace {

constexpr int kMaxCodes = 4096;

// Codes packed least significant bit first, cut into sub-blocks as they fill.
class Writer {
public:
    explicit Writer(std::vector<uint8_t>& out) : out_(out) {}
    void Code(uint32_t code, int bits) {
        acc_ |= uint64_t(code) << n_;
        n_ += bits;
        while (n_ >= 8) {
            Byte(uint8_t(acc_ & 255));
            acc_ >>= 8;
            n_ -= 8;
        }
    }
    void Finish() {
        if (n_ > 0) Byte(uint8_t(acc_ & 255));
        if (!block_.empty()) Flush();
        out_.push_back(0);
    }

private:
    void Byte(uint8_t b) {
        block_.push_back(b);
        if (block_.size() == 255) Flush();
    }
    void Flush() {
        out_.push_back(uint8_t(block_.size()));
        out_.insert(out_.end(), block_.begin(), block_.end());
        block_.clear();
    }
    std::vector<uint8_t>& out_;
    std::vector<uint8_t> block_;
    uint64_t acc_ = 0;
    int n_ = 0;
};

// The dictionary: (prefix code, next index) -> code.
class Dictionary {
public:
    Dictionary() : slots_(kSlots) {}
    void Clear() { ++generation_; }
    int Find(uint32_t key) const {
        for (uint32_t i = Hash(key);; i = (i + 1) & (kSlots - 1)) {
            const Slot& s = slots_[i];
            if (s.generation != generation_) return -1;
            if (s.key == key) return s.code;
        }
    }
    void Add(uint32_t key, int code) {
        uint32_t i = Hash(key);
        while (slots_[i].generation == generation_) i = (i + 1) & (kSlots - 1);
        slots_[i] = {key, code, generation_};
    }

private:
    static constexpr uint32_t kSlots = 1 << 13; // twice the most codes there can be
    struct Slot {
        uint32_t key = 0;
        int code = 0;
        uint32_t generation = 0;
    };
    static uint32_t Hash(uint32_t key) { return (key * 2654435761u) >> (32 - 13); }
    std::vector<Slot> slots_;
    uint32_t generation_ = 1;
};

} // namespace

std::vector<uint8_t> EncodeGif(const IndexedImage& im) {
    const size_t couleurs = im.palette.size();
    if (im.width <= 0 || im.height <= 0 || im.width > 65535 || im.height > 65535 || couleurs == 0 ||
        couleurs > 256 || im.indices.size() != size_t(im.width) * size_t(im.height))
        rt::Raise(rt::kInvalidCall);
    int bits = 1;
    while ((size_t(1) << bits) < couleurs) ++bits;
    std::vector<uint8_t> out;
    out.reserve(im.indices.size() / 2 + 1024);
    const char entete[] = "GIF89a";
    out.insert(out.end(), entete, entete + 6);
    Put16(out, im.width);
    Put16(out, im.height);
    out.push_back(uint8_t(0x80 | 0x70 | (bits - 1))); // global table, 8-bit resolution
    out.push_back(0);                                 // background
    out.push_back(0);                                 // aspect
    for (int i = 0; i < (1 << bits); ++i) {
        const Pixel p = size_t(i) < couleurs ? im.palette[size_t(i)] : 0;
        out.push_back(uint8_t(RedOf(p)));
        out.push_back(uint8_t(GreenOf(p)));
        out.push_back(uint8_t(BlueOf(p)));
    }
    out.push_back(0x2C);
    Put16(out, 0);
    Put16(out, 0);
    Put16(out, im.width);
    Put16(out, im.height);
    out.push_back(0); // no local table, not interlaced

    const int minimum = bits < 2 ? 2 : bits;
    out.push_back(uint8_t(minimum));
    const uint32_t effacer = 1u << minimum, fin = effacer + 1;
    Writer w(out);
    Dictionary dico;
    int taille = minimum + 1;
    uint32_t suivant = fin + 1;
    w.Code(effacer, taille);
    uint32_t prefixe = im.indices[0];
    for (size_t k = 1; k < im.indices.size(); ++k) {
        const uint32_t c = im.indices[k];
        const uint32_t cle = (prefixe << 8) | c;
        const int trouve = dico.Find(cle);
        if (trouve >= 0) {
            prefixe = uint32_t(trouve);
            continue;
        }
        w.Code(prefixe, taille);
        if (suivant < kMaxCodes) {
            dico.Add(cle, int(suivant));
            // The decoder widens its codes one code later than it fills the table.
            if (suivant == (1u << taille) && taille < 12) ++taille;
            ++suivant;
        } else {
            w.Code(effacer, taille);
            dico.Clear();
            taille = minimum + 1;
            suivant = fin + 1;
        }
        prefixe = c;
    }
    w.Code(prefixe, taille);
    w.Code(fin, taille);
    w.Finish();
    out.push_back(0x3B);
    return out;
}

IndexedImage QuantizeForGif(const Surface& s) {
    IndexedImage im = Quantize(s, 255);
    im.palette.insert(im.palette.begin(), 0);
    for (uint8_t& i : im.indices) ++i;
    return im;
}

} // namespace gdi
