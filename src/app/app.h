// The application: one instance of each form and the state the forms share.
#pragma once

#include "language/language.h"
#include "platform/ui/backend.h"
#include "platform/ui/printer.h"
#include "runtime/errors.h"
#include "runtime/random.h"
#include "settings/params.h"
#include "version.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace mv {

// The version shown by the splash and the about box.
inline constexpr wchar_t kVersion[] = L"" MIROVANTA_VERSION_TEXT;
// Where "Write to us" addresses its mail.
inline constexpr wchar_t kAdresseSupport[] = L"support@mirovanta.app";

class frmMain;
class Flistimages;
class FrmFull;
class Options;
class frmTip;
class FrmAideStd;
class FrmAidfn;
class Frmaidfv;
class FrmAidOpt;
class FrmActua;
class frmAbout;
class frmSplash;
class FrmSortie;
class Fcam;
class FrmChoixLng;
class Conversion;
class FrmGifAnim;
class FrmChrono;
class FrmBrows;
class FrmDialTemp;

// A table of the capture list: bounds 0 to 100, checked like the runtime's arrays.
template <class T> struct Table {
    T& operator[](int i) {
        if (i < 0 || i > 100) rt::Raise(rt::kSubscriptOutOfRange);
        return a[size_t(i)];
    }
    std::array<T, 101> a{};
};

// The parallel tables of the captures; row 0 is never a capture.
struct TabVignettes {
    Table<int32_t> HautV, LargV, HautFenV, LargFenV; // twips: 32-bit for big screens
    Table<std::wstring> DimV, TypeV, FichierV, Horodatage;
};

class App {
public:
    explicit App(ui::Backend& backend);
    ~App();
    App(const App&) = delete;
    App& operator=(const App&) = delete;

    ui::Backend& be;

    // Starts the program: the language chooser, which hands over to the splash and then
    // to the main window.
    void Start();
    // Language entry n.
    const std::wstring& Lang(int n) const { return lang.Entry(n); }
    int MsgBox(const std::wstring& prompt, int style = 0, const std::wstring& title = L"");
    // The box of a trapped run-time error: an optional lead, the number and its text.
    void MsgErreur(const rt::RuntimeError& e, const std::wstring& avant = L"", int style = 0);
    // Asks for a line of text, proposing `text`; false on Cancel.
    bool InputBox(const std::wstring& prompt, const std::wstring& title, std::wstring& text) {
        return be.InputBox(prompt, title, text);
    }
    // Runs pending events.
    void DoEvents() { be.DoEvents(); }
    ui::ScreenMetrics Screen() const { return be.Screen(); }

    // Forms, created with the application, loaded on first use.
    std::unique_ptr<frmMain> main;
    std::unique_ptr<Flistimages> list;
    std::unique_ptr<FrmFull> full;
    std::unique_ptr<Options> options;
    std::unique_ptr<frmTip> tip;
    std::unique_ptr<FrmAideStd> aide;
    std::unique_ptr<FrmAidfn> aidfn;
    std::unique_ptr<Frmaidfv> aidfv;
    std::unique_ptr<FrmAidOpt> aidopt;
    std::unique_ptr<FrmActua> actua;
    std::unique_ptr<frmAbout> about;
    std::unique_ptr<FrmChoixLng> choix;
    std::unique_ptr<frmSplash> splash;
    std::unique_ptr<FrmSortie> sortie;
    std::unique_ptr<Fcam> cam;
    std::unique_ptr<Conversion> conversion;
    // The animated-GIF builder, made anew for each use.
    std::unique_ptr<FrmGifAnim> gif;
    std::unique_ptr<FrmChrono> chrono;
    std::unique_ptr<FrmBrows> brows;
    std::unique_ptr<FrmDialTemp> dialtemp;

    ui::Printer Printer{be.GetPrinter()};
    rt::Random rnd;
    Language lang;
    Params params;
    std::wstring DossierParams;
    std::wstring TagDate;
    std::wstring TagHeure;

    // Commands and captures.
    bool ParClavier = false;
    std::wstring TypeCapt;
    bool RetourZone = false;
    bool RetourPossible = false;
    int16_t ZoneAmorcee = 0;
    bool EchecFen = false;
    TabVignettes tab;
    int16_t NbVignettes = 0;
    int16_t VignetteCourante = 0;
    int32_t NumCapt = 0;
    float LargCapt = 0;
    float HautCapt = 0;
    std::wstring DossierTemp;
    bool ModeReduit = false;
    std::wstring CheminTemp;

    // The opening key press of an overlay session: whether there was one, and the cursor's
    // position then, for the stamp on the frozen screen.
    bool ParClavierSession = false;
    // A capture command is running (its waits let other events in).
    bool CaptureEnCours = false;
    int32_t CurseurXClavier = 0;
    int32_t CurseurYClavier = 0;
    // Cursor stamped into grabs.
    ui::CursorHandle CurseurCapt = 0;
    int32_t CurseurX = 0; // pixels; 32-bit so that big screens never overflow
    int32_t CurseurY = 0;

    // Latest validated zone (twips) and the remembered size of Picture1. Geometry is
    // 32-bit throughout, so that screens up to 7680x4320 never overflow.
    float ZoneGauche = 0;
    float ZoneHaut = 0;
    float ZoneLargeur = 0;
    float ZoneHauteur = 0;
    bool SortieZone = false;
    // Height of the overlay's picture before its doubling: the row of a second grab.
    float HautEcranTw = 0;
    int32_t HautPic1 = 0;
    int32_t LargPic1 = 0;
    bool ZoneValidee = false;

    // Main window geometry to come back to from reduced mode.
    int32_t HautNormal = 0;
    int32_t LargNormal = 0;
    int32_t GaucheNormal = 0;
    std::wstring VueCourante;

    // External editor hand-off: the capture file out for editing (empty when none), the
    // editor started last and the file name watched for it, the caption before the edit,
    // and the file's stamp when it was last read.
    std::wstring FichierEdite;
    uint32_t PidEditeur = 0;
    std::wstring NomEditeurLance;
    std::wstring TitreAvantEdition;
    int64_t EditeDate = 0;
    int64_t EditeTaille = -1;
    bool RechargeEnCours = false;

    // JPEG files that mail and the uploader wrote into the temporary folder: a mail
    // client or the uploader may read them after the call returns, so they go at the end
    // of the run.
    std::vector<std::wstring> FichiersSortie;

    // Timed capture: the plan of the schedule. NbImgMax 999999999 is no limit.
    std::wstring HeureDebut;
    std::wstring HeureFin;
    double NbImgMax = 0;
    double PeriodeMs = 0;
    double NbImgFaites = 0;
    bool PremierTop = false;
    // Once a run has begun the start test no longer applies, and the end and the due
    // times are seconds on the run's own clock (SecondesRun), which runs across midnight.
    bool PlanCommence = false;
    double FinPlan = 0;
    double ProchainTop = 0;
    double BaseRun = 0;

    // Saving. Counters of long timed runs are 32-bit.
    int32_t NbSavAppel = 0;
    int32_t CompteurSav = 0;
    bool PremierSav = true;
    std::wstring DossierDernierSav;
    std::wstring NomDernierSav;
    bool SortieDemandee = false;
};

} // namespace mv
