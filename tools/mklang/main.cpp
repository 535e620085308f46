// mklang SOURCE.txt OUTPUT_codN.txt: turns a readable language source (UTF-8, one line each)
// into the language file installed beside the program: Windows-1252, each line scrambled
// under its own key, CR LF line ends. The result is read back as the program reads it, and
// the tool fails (non-zero, with a message) on a character with no Windows-1252 byte, an
// entry out of sequence, fewer entries than the program reads or more than its table holds,
// an entry or tip line longer than the 500 characters the program keeps, or a tip line
// without a value.
#include "language/charge.h"
#include "language/decode.h"
#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/line_input.h"

#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr size_t kLineBuffer = 500;

// Checks the layout on the readable text, where the line numbers mean something to the
// author; the load of the result below checks the rest.
void CheckLayout(const std::string& scrambled) {
    rt::LineInput in(scrambled);
    enum { kEntryLines, kTips, kRest } section = kEntryLines;
    for (int n = 1; !in.Eof(); ++n) {
        const std::string line = mv::DecodeLigne(in.Next());
        const std::string where = "line " + std::to_string(n) + ": ";
        if (section == kRest) break;
        if (line.rfind("///--- TOOLTYP", 0) == 0) {
            section = kTips;
            continue;
        }
        if (line.rfind("///--- HELP --", 0) == 0) {
            section = kRest;
            continue;
        }
        if (line.size() > kLineBuffer)
            throw std::runtime_error(where + "longer than 500 characters, which are all kept");
        if (section == kTips) {
            const size_t q = line.find('"');
            if (q == std::string::npos || line.find('"', q + 1) == std::string::npos)
                throw std::runtime_error(where + "a tip without a value between double quotes");
        }
    }
}

void CheckLoad(const std::string& scrambled) {
    mv::Language lang;
    mv::LoadResult r;
    try {
        r = mv::ChargerLangue(lang, std::vector<uint8_t>(scrambled.begin(), scrambled.end()));
    } catch (const rt::RuntimeError& e) {
        throw std::runtime_error("the program cannot read the file: run-time error " +
                                 std::to_string(e.number) + " " + rt::ToUtf8(e.text));
    }
    if (r.permanentError)
        throw std::runtime_error("entry line " + std::to_string(r.entries + 1) +
                                 " does not start with " + std::to_string(r.entries) +
                                 " in three digits (Permanent Error)");
    if (r.entries < mv::kEntriesRead || r.entries > int(lang.TabConst.size()))
        throw std::runtime_error(std::to_string(r.entries) + " entries; the program reads " +
                                 std::to_string(mv::kEntriesRead) + " and holds " +
                                 std::to_string(lang.TabConst.size()));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: mklang SOURCE.txt OUTPUT_codN.txt\n");
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "mklang: cannot read %s\n", argv[1]);
        return 1;
    }
    std::ostringstream source;
    source << in.rdbuf();
    std::string scrambled;
    try {
        scrambled = mv::ScrambleSource(source.str());
        CheckLayout(scrambled);
        CheckLoad(scrambled);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "mklang: %s: %s\n", argv[1], e.what());
        return 1;
    }
    std::ofstream out(argv[2], std::ios::binary | std::ios::trunc);
    out.write(scrambled.data(), std::streamsize(scrambled.size()));
    out.close();
    if (out.fail()) {
        std::fprintf(stderr, "mklang: cannot write %s\n", argv[2]);
        std::remove(argv[2]);
        return 1;
    }
    return 0;
}
