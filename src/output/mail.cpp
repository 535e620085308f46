// Mail and the uploader: captures leave as JPEG files of the temporary folder, attached to
// a message of the system's mail client or handed to prjForum.exe beside the program.
#include "app/app.h"
#include "browser/Flistimages.h"
#include "core/frmMain.h"
#include "output/conversion.h"
#include "output/output.h"
#include "runtime/clock.h"
#include "runtime/errors.h"
#include "runtime/files.h"
#include "runtime/strings.h"

#include <map>

namespace mv {

namespace {

constexpr int kAnnulation = 32001;   // the user cancelled the client's dialog
constexpr int kErreurTaisee = 48389; // passed over before the send
constexpr int kMaxPieces = 50;       // captures one message takes
constexpr int kStyleNormalFocus = 1; // SW_SHOWNORMAL

// The texts of the mail client's numbers, as its controls gave them.
std::wstring TexteMail(App& app, int numero) {
    static const std::map<int, const wchar_t*> textes = {
        {32001, L"User cancelled process"},
        {32002, L"Unspecified failure has occurred"},
        {32003, L"Login has failed"},
        {32004, L"Disk is full"},
        {32005, L"Insufficient memory"},
        {32006, L"Access denied"},
        {32008, L"Too many sessions"},
        {32009, L"Too many files were specified"},
        {32010, L"Too many recipients were specified"},
        {32011, L"A specified attachment was not found"},
        {32012, L"Attachment open failure"},
        {32013, L"Attachment write failure"},
        {32014, L"Unknown recipient"},
        {32017, L"Invalid message"},
        {32018, L"Text too large"},
        {32019, L"Invalid session"},
        {32023, L"Network failure"},
    };
    if (numero == platform::Mailer::kNoClient) return app.Lang(278);
    const auto it = textes.find(numero);
    return it != textes.end() ? it->second : rt::ErrorText(numero);
}

// prefix, date without "/", time without ":", "-", the capture's number, ".jpg".
std::wstring CheminJpeg(App& app, int32_t numero) {
    auto& shell = app.be.GetShell();
    const rt::SystemTime now = app.be.Now();
    return app.DossierTemp + L"\\" + app.params.PrefixeNom +
           rt::Replace(rt::DateText(now, shell.ShortDatePattern()), L"/", L"") +
           rt::Replace(rt::TimeText(now, shell.TimePattern()), L":", L"") + L"-" +
           std::to_wstring(numero) + L".jpg";
}

// The capture as a JPEG file; false when the conversion failed (its own box said so).
bool EcrireJpeg(App& app, int32_t numero, const std::wstring& jpeg) {
    app.conversion->ConvertirImage(app.DossierTemp + L"\\" + app.tab.FichierV[numero], jpeg,
                                   kFormatJpeg, app.params.QualiteJpeg);
    return app.conversion->status == 0 && rt::FileExists(jpeg);
}

void Effacer(const std::map<int, std::wstring>& fichiers) {
    for (const auto& [n, f] : fichiers) rt::KillQuietly(f);
}

struct DejaSignale {}; // an error whose box was shown where it happened

} // namespace

void envoimail(App& app) {
    // A user who cancels the client's dialog is not bothered; only a missing client is told.
    auto& mailer = app.be.GetMailer();
    const ui::WindowHandle fenetre = app.main->Handle();
    const int ouverture = mailer.SignOn(fenetre);
    const int envoi = mailer.Send(fenetre, {kAdresseSupport, app.Lang(128), L"", {}});
    if (ouverture == platform::Mailer::kNoClient || envoi == platform::Mailer::kNoClient)
        app.MsgBox(app.Lang(278) + L"\r\n\r\n" + kAdresseSupport, ui::kExclamation);
}

void EnvoiMailCoch(App& app) {
    Flistimages& L = *app.list;
    auto coche = [&](int n) { return L.Chkmail[n].Value() == 1; };
    int nbCoches = 0;
    for (int n = 1; n <= app.NbVignettes; ++n) nbCoches += coche(n) ? 1 : 0;
    if (nbCoches > kMaxPieces) {
        app.MsgBox(app.Lang(279), ui::kExclamation);
        return;
    }
    auto& mailer = app.be.GetMailer();
    const ui::WindowHandle fenetre = app.main->Handle();
    // The JPEG of each ticked capture, by its number.
    std::map<int, std::wstring> pieces;
    platform::MailMessage message;
    // One box, and the mail ends: the marks of this send go, the ticks stay.
    auto abandonner = [&] {
        for (int n = 1; n <= app.NbVignettes; ++n)
            if (coche(n)) L.pictmail[n].SetVisible(false);
        Effacer(pieces);
    };
    try {
        const int ouverture = mailer.SignOn(fenetre);
        if (ouverture != 0 && ouverture != kErreurTaisee)
            rt::Raise(ouverture, TexteMail(app, ouverture));
        message.subject = app.Lang(243);
        message.note = app.Lang(244);
        for (int n = 1; n <= app.NbVignettes; ++n) {
            if (!coche(n)) continue;
            const std::wstring jpeg = CheminJpeg(app, n);
            if (!EcrireJpeg(app, n, jpeg)) throw DejaSignale{};
            pieces[n] = jpeg;
            L.pictmail[n].SetVisible(true);
            message.attachments.push_back(jpeg);
        }
    } catch (const DejaSignale&) {
        abandonner();
        return;
    } catch (...) {
        const rt::RuntimeError e = rt::CaughtError();
        app.MsgBox(std::to_wstring(e.number) + L" " + e.text, ui::kCritical);
        abandonner();
        return;
    }

    const int envoi = mailer.Send(fenetre, message);
    if (envoi != 0) {
        if (envoi == kAnnulation)
            app.MsgBox(app.Lang(139), ui::kInformation);
        else
            app.MsgBox(app.Lang(162) + std::to_wstring(envoi) + L" " + TexteMail(app, envoi),
                       ui::kCritical);
        for (int n = 1; n <= app.NbVignettes; ++n) {
            if (!coche(n)) continue;
            L.pictmail[n].SetVisible(false);
            L.Chkmail[n].SetValue(0);
        }
        Effacer(pieces);
        return;
    }
    for (int n = 1; n <= app.NbVignettes; ++n) {
        if (!coche(n)) continue;
        L.pictmail[n].SetVisible(true);
        L.Chkmail[n].SetValue(2);
    }
    // A client with its own compose window reads them later: they go at the end of the run.
    for (const auto& [n, f] : pieces) app.FichiersSortie.push_back(f);
}

void mnujoindreune_Click(App& app) {
    if (app.VignetteCourante >= 1 && app.VignetteCourante <= app.NbVignettes)
        app.list->Chkmail[app.VignetteCourante].SetValue(1);
    EnvoiMailCoch(app);
}

void mnujoindretout_Click(App& app) {
    for (int n = 1; n <= app.NbVignettes; ++n) app.list->Chkmail[n].SetValue(1);
    EnvoiMailCoch(app);
}

void mnujoindrecoch_Click(App& app) {
    EnvoiMailCoch(app);
}

void mnucourriel_Click(App& app) {
    frmMain& M = *app.main;
    const bool captures = app.NbVignettes > 0;
    for (ui::Menu* m : {&M.mnujoindreune, &M.mnujoindrecoch, &M.mnujoindretout, &M.mnuimgforum})
        m->SetEnabled(captures);
}

void LancerUploader(App& app, const std::wstring& Chemin) {
    // The uploader takes the rest of its command line, blanks and all, as the path.
    const std::wstring programme = app.be.GetShell().ProgramFolder() + L"\\prjForum.exe";
    if (app.be.GetProcesses().Start(L"\"" + programme + L"\" " + Chemin, kStyleNormalFocus) == 0)
        app.MsgBox(app.Lang(151), ui::kExclamation);
}

void mnuimgforum_Click(App& app) {
    if (app.VignetteCourante < 1 || app.VignetteCourante > app.NbVignettes) {
        app.MsgBox(app.Lang(151), ui::kExclamation);
        return;
    }
    try {
        const std::wstring jpeg = CheminJpeg(app, app.VignetteCourante);
        if (!EcrireJpeg(app, app.VignetteCourante, jpeg)) return;
        app.FichiersSortie.push_back(jpeg);
        LancerUploader(app, jpeg);
    } catch (...) {
        const rt::RuntimeError e = rt::CaughtError();
        if (e.number == rt::kInvalidPropertyValue)
            app.MsgBox(app.Lang(151), ui::kExclamation);
        else
            app.MsgBox(std::to_wstring(e.number) + L" " + e.text);
    }
}

} // namespace mv
