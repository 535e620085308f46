// Assembling 50 single-image GIF frames of 1920x1080 into one animation (read, stitch,
// write), against `cat` of the same files and `gifsicle --merge` of them, in one run; and
// the conversion of one 1920x1080 picture to GIF (palette and encoding) by the program's own
// writer against ImageMagick's `convert`.
#include "bench_util.h"
#include "gifanim/assembleur.h"
#include "platform/gdi/bmp.h"
#include "platform/gdi/gif_encode.h"
#include "runtime/files.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

int main() {
    namespace fs = std::filesystem;
    const fs::path dir = fs::temp_directory_path() / ("mirovanta-gif-" + std::to_string(getpid()));
    fs::create_directories(dir);
    const int w = 1920, h = 1080, n = 50;
    // A screen-like picture: bands of flat colour, a gradient, some text-like noise.
    gdi::Surface image(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            image.At(x, y) = y < 300   ? gdi::Rgb(240, 240, 240)
                             : y < 700 ? gdi::Rgb(x * 255 / w, y * 255 / h, 128)
                                       : gdi::Rgb((x * 7 ^ y * 3) & 255, 60, 60);
    gdi::SaveBmp(image, rt::FromUtf8((dir / "source.bmp").string()));

    std::vector<uint8_t> gif;
    const double conversion = BestMs([&] { gif = gdi::EncodeGif(gdi::QuantizeForGif(image)); }, 3);
    const double psnr = gdi::Psnr(image, gdi::Expand(gdi::QuantizeForGif(image)));
    const std::string src = (dir / "source.bmp").string(), im = (dir / "im.gif").string();
    const double convert = BestMs([&] { std::system(("convert " + src + " " + im).c_str()); }, 3);
    const std::string psnrIm = "compare -metric PSNR " + src + " " + im + " null: 2>&1";
    std::printf("GIF of a 1920x1080 picture: program %.0f ms (PSNR %.1f dB), convert %.0f ms "
                "(PSNR: ",
                conversion, psnr, convert);
    std::fflush(stdout);
    std::system(psnrIm.c_str());
    std::printf(" dB)\n");

    std::string liste;
    for (int i = 0; i < n; ++i) {
        const std::string f = (dir / (std::to_string(i) + ".gif")).string();
        rt::WriteFileBytes(rt::FromUtf8(f), gif.data(), gif.size());
        liste += " " + f;
    }
    const std::string sortie = (dir / "anim.gif").string();
    const double assemblage = BestMs([&] {
        mv::AssembleurGif a;
        a.Commencer(true, size_t(n) * gif.size() + 64);
        for (int i = 0; i < n; ++i) {
            const auto f =
                rt::ReadFileBytes(rt::FromUtf8((dir / (std::to_string(i) + ".gif")).string()));
            a.AjouterTrame(&f, 50);
        }
        a.Terminer();
        rt::WriteFileBytes(rt::FromUtf8(sortie), a.Sortie().data(), a.Sortie().size());
    });
    const double cat =
        BestMs([&] { std::system(("cat" + liste + " > " + sortie + ".cat").c_str()); });
    const double gifsicle = BestMs(
        [&] {
            std::system(("gifsicle --merge" + liste + " > " + sortie + ".gs 2>/dev/null").c_str());
        },
        3);
    std::printf("50 frames of 1920x1080 (%.1f MB): assembler %.0f ms, cat %.0f ms (%.2fx), "
                "gifsicle --merge %.0f ms\n",
                double(gif.size()) * n / 1e6, assemblage, cat, assemblage / cat, gifsicle);
    fs::remove_all(dir);
    return 0;
}
