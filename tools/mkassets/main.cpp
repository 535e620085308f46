// mkassets OUTPUT_DIR: draws the toolbar bitmaps, the thumbnails' marks, the language
// chooser's flags and the shutter sound and picture installed beside the program, and the
// program's icon. Exits non-zero with a message when a file cannot be written.
#include "appicon.h"
#include "flags.h"
#include "icons.h"
#include "platform/gdi/bmp.h"
#include "sound.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

bool WriteFile(const std::filesystem::path& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    out.close();
    return !out.fail();
}

std::vector<uint8_t> DrawButton(void (*draw)(mk::Canvas&), bool highlight) {
    mk::Canvas canvas(mk::kButtonSize);
    mk::DrawButtonBackground(canvas, highlight);
    if (draw) draw(canvas);
    return gdi::EncodeBmp(canvas.Downsample(), 24);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: mkassets OUTPUT_DIR\n");
        return 2;
    }
    const std::filesystem::path dir = argv[1];
    int failures = 0;
    auto write = [&](const char* name, const std::vector<uint8_t>& bytes) {
        if (WriteFile(dir / name, bytes)) return;
        std::fprintf(stderr, "mkassets: cannot write %s\n", (dir / name).string().c_str());
        ++failures;
    };

    for (const mk::ButtonPicture& b : mk::ToolbarButtons()) {
        write(b.normalFile, DrawButton(b.draw, false));
        write(b.highlightFile, DrawButton(b.draw, true));
    }
    // The strip after the last button is the bare bar.
    write("toutbleuc.bmp", DrawButton(nullptr, false));
    write("camera.wav", mk::ShutterWav());
    write("fcam.bmp", gdi::EncodeBmp(mk::ShutterPicture(), 24));
    // The marks of saved and mailed captures.
    write("marksave.bmp", gdi::EncodeBmp(mk::SavedMark(), 24));
    write("markmail.bmp", gdi::EncodeBmp(mk::MailedMark(), 24));
    write("bulb.bmp", gdi::EncodeBmp(mk::Bulb(), 24));
    // The language chooser's flags.
    write("flagfr.bmp", gdi::EncodeBmp(mk::FlagFrench(), 24));
    write("flagen.bmp", gdi::EncodeBmp(mk::FlagBritish(), 24));
    // The program's icon, for the executable, its windows and the notification area.
    write("mirovanta.ico", mk::ProgramIcon());
    return failures == 0 ? 0 : 1;
}
