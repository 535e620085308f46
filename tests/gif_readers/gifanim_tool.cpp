// Makes GIF files with the program's own code, for the readers of other programs to check:
//   gifanim_tool frames OUT_DIR IN.bmp...   one single-image GIF per picture (OUT_DIR/N.gif)
//   gifanim_tool build OUT.gif LOOP BACK DELAY IN.gif...   the animated GIF of those files
//     (LOOP and BACK 0 or 1, DELAY in tenths of a second)
#include "gifanim/assembleur.h"
#include "platform/gdi/bmp.h"
#include "platform/gdi/gif_encode.h"
#include "runtime/files.h"

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
    const std::string mode = argc > 1 ? argv[1] : "";
    try {
        if (mode == "frames" && argc >= 4) {
            for (int i = 3; i < argc; ++i) {
                const auto gif =
                    gdi::EncodeGif(gdi::QuantizeForGif(gdi::LoadBmp(rt::FromUtf8(argv[i]))));
                const std::string out = std::string(argv[2]) + "/" + std::to_string(i - 3) + ".gif";
                rt::WriteFileBytes(rt::FromUtf8(out), gif.data(), gif.size());
            }
            return 0;
        }
        if (mode == "build" && argc >= 6) {
            std::vector<std::vector<uint8_t>> fichiers;
            for (int i = 6; i < argc; ++i)
                fichiers.push_back(rt::ReadFileBytes(rt::FromUtf8(argv[i])));
            mv::AssembleurGif a;
            a.Commencer(std::atoi(argv[3]) != 0);
            for (int i : mv::AssembleurGif::Ordre(int(fichiers.size()), std::atoi(argv[4]) != 0))
                if (a.AjouterTrame(&fichiers[size_t(i)], uint16_t(std::atoi(argv[5]) * 10)) !=
                    mv::FinTrame::kAjoutee)
                    return 3;
            a.Terminer();
            rt::WriteFileBytes(rt::FromUtf8(argv[2]), a.Sortie().data(), a.Sortie().size());
            return 0;
        }
    } catch (...) {
        std::fprintf(stderr, "gifanim_tool: failed\n");
        return 1;
    }
    std::fprintf(
        stderr,
        "usage: gifanim_tool frames OUT_DIR IN.bmp... | build OUT LOOP BACK DELAY IN.gif...\n");
    return 2;
}
