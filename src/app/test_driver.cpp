#include "app/test_driver.h"

#include "app/app.h"
#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "language/FrmAideStd.h"
#include "output/output.h"
#include "overlay/FrmFull.h"
#include "runtime/files.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace mv {

namespace {

void Append(const std::string& file, const std::string& text) {
    std::ofstream out(rt::ToFsPath(rt::FromUtf8(file)), std::ios::app);
    out << text << "\n";
}

using Clock = std::chrono::steady_clock;

// Every wait of a script ends: a file that never comes ends the run instead of hanging it.
constexpr auto kDeadline = std::chrono::seconds(120);

// Ends the run at once with a word on the standard error, for the check that reads it.
[[noreturn]] void Refuse(const std::string& why) {
    std::fprintf(stderr, "driver: %s\n", why.c_str());
    std::fflush(stderr);
    std::_Exit(3);
}

void Wait(App& app, int ms) {
    const auto end = Clock::now() + std::chrono::milliseconds(std::min(ms, 600000));
    while (Clock::now() < end) app.DoEvents();
}

const std::set<std::string>& Verbs() {
    static const std::set<std::string> verbs = {
        "wait",       "click", "key",     "gui",         "saveall", "waitfile",
        "savefolder", "marks", "quality", "keepwindows", "time",    "mark",
        "repeat",     "end",   "ticks",   "helptext",    "zonekey"};
    return verbs;
}

void RunLine(App& app, const std::string& line) {
    std::istringstream in(line);
    std::string verb;
    in >> verb;
    if (verb == "wait") {
        int ms = 0;
        in >> ms;
        Wait(app, ms);
    } else if (verb == "click") {
        int n = 0;
        in >> n;
        app.main->bouton_Click(n);
    } else if (verb == "key") {
        int code = 0, shift = 0;
        in >> code >> shift;
        app.main->Form_KeyDown(int16_t(code), int16_t(shift));
    } else if (verb == "zonekey") {
        int code = 0, shift = 0;
        in >> code >> shift;
        if (app.full->Visible()) app.full->Picture1_KeyDown(int16_t(code), int16_t(shift));
    } else if (verb == "helptext") {
        std::string file;
        in >> file;
        Append(file, rt::ToUtf8(app.aide->LabExplic.Caption()));
    } else if (verb == "gui") {
        std::string file;
        in >> file;
        auto g = app.be.GuiResourceCounts();
        Append(file, std::to_string(g.gdiObjects) + " " + std::to_string(g.userObjects) + " " +
                         std::to_string(g.handles) + " " + std::to_string(g.workingSetKb));
    } else if (verb == "saveall") {
        std::string ext;
        in >> ext;
        // Every capture again: the marks of the previous save are taken off first.
        for (int i = 1; i <= app.NbVignettes; ++i) app.list->PictSave[i].SetVisible(false);
        int16_t ok = -1;
        EnregistrerTout(app, ok, 1, rt::FromUtf8(ext));
    } else if (verb == "waitfile") {
        // Pumps events until another process has made the file.
        std::string file;
        std::getline(in >> std::ws, file);
        const auto end = Clock::now() + kDeadline;
        while (!rt::FileExists(rt::FromUtf8(file))) {
            if (Clock::now() > end) Refuse("no file " + file + " after 120 s");
            Wait(app, 50);
        }
    } else if (verb == "savefolder") {
        std::string folder;
        std::getline(in >> std::ws, folder);
        app.params.DossierEnreg = rt::FromUtf8(folder) + std::wstring(200, L' ');
    } else if (verb == "marks") {
        // The saved mark of each capture, 0 or 1, in list order.
        std::string file, flags;
        in >> file;
        for (int i = 1; i <= app.NbVignettes; ++i)
            flags += app.list->PictSave[i].Visible() ? "1" : "0";
        Append(file, flags);
    } else if (verb == "ticks") {
        // Each capture's mail tick box: the screen pixel at its middle and its value.
        std::string file;
        in >> file;
        for (int i = 1; i <= app.NbVignettes; ++i) {
            const ui::CheckBox& box = app.list->Chkmail[i];
            ui::Rect r;
            app.be.GetDesktop().GetWindowRect(box.Handle(), r);
            Append(file, std::to_string((r.left + r.right) / 2) + " " +
                             std::to_string((r.top + r.bottom) / 2) + " " +
                             std::to_string(box.Value()));
        }
    } else if (verb == "quality") {
        int q = 0;
        in >> q;
        app.params.QualiteJpeg = int16_t(q);
    } else if (verb == "keepwindows") {
        app.params.GardeFenetres = 1;
    } else if (verb == "time") {
        std::string file, label;
        in >> file >> label;
        char buf[64];
        std::snprintf(buf, sizeof buf, "%.3f", app.be.Timer());
        Append(file, label + " " + buf);
    } else if (verb == "mark") {
        std::string file, text;
        in >> file;
        std::getline(in >> std::ws, text);
        Append(file, text);
    }
}

} // namespace

void RunTestDriver(App& app) {
    const char* script = std::getenv("MIROVANTA_DRIVER");
    if (!script || !*script) return;
    std::ifstream in(rt::ToFsPath(rt::FromUtf8(script)));
    std::vector<std::string> lines;
    if (!in) Refuse("cannot read the script " + std::string(script));
    for (std::string l; std::getline(in, l);) {
        if (!l.empty() && l.back() == '\r') l.pop_back();
        // The whole script is read before the first step: a word it does not know ends
        // the run before anything happens.
        std::istringstream head(l);
        std::string verb;
        head >> verb;
        if (!verb.empty() && Verbs().count(verb) == 0)
            Refuse("unknown command '" + verb + "' on line " + std::to_string(lines.size() + 1));
        lines.push_back(l);
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        std::istringstream head(lines[i]);
        std::string verb;
        head >> verb;
        if (verb != "repeat") {
            RunLine(app, lines[i]);
            continue;
        }
        int n = 0;
        head >> n;
        size_t end = i + 1;
        while (end < lines.size() && lines[end] != "end") ++end;
        for (int k = 0; k < n; ++k)
            for (size_t j = i + 1; j < end; ++j) RunLine(app, lines[j]);
        i = end;
    }
}

} // namespace mv
