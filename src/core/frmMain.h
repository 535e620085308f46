// The main window: toolbar, menus, the view of the current capture, and the routines of
// the command table, the capture list, the hotkeys, start-up and shutdown. The routines
// of the other subsystems that act on its controls live in their own folders (capture/,
// output/, language/, timed/) and reach it through the application.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

#include <fstream>

namespace mv {

class frmMain : public ui::Form {
public:
    explicit frmMain(App& app);

    App& app;

    // ---- controls
    ui::ControlArray<ui::PictureBox> bouton{this, L"bouton"};
    ui::ImageList ImageList1;
    ui::PictureBox Picture1{this, L"Picture1"};
    ui::PictureBox Picture2{this, L"Picture2"};
    ui::PictureBox Picture2S{this, L"Picture2S"};
    ui::PictureBox ImgTTscreen{this, L"ImgTTscreen"};
    ui::PictureBox PictSave{this, L"PictSave"};
    ui::PictureBox PictReserv{this, L"PictReserv"};
    ui::Label labdeb{this, L"labdeb"};
    ui::Label Labtaille{this, L"Labtaille"};
    ui::Label Labtaill2{this, L"Labtaill2"};
    ui::Label Labdeja{this, L"Labdeja"};
    ui::Label Labdeja2{this, L"Labdeja2"};
    ui::Label LabDoubleClick{this, L"LabDoubleClick"};
    ui::Line Line1{this, L"Line1"};
    // The rubber band of a drag on Picture1.
    ui::Shape rectsel{this, L"rectsel"};
    ui::CommonDialog CDlg1{this, L"CDlg1"};

    ui::Timer Timbouton{this, L"Timbouton", 200, false};
    ui::Timer TimCurs{this, L"TimCurs", 50, true};
    ui::Timer Timdeja{this, L"Timdeja", 1000, false};
    ui::Timer TimZoom{this, L"TimZoom", 2000, false};
    ui::Timer Timerclav{this, L"Timerclav", 100, false};
    ui::Timer Timderoul{this, L"Timderoul", 20, true};
    ui::Timer Timlabdeb{this, L"Timlabdeb", 1, false};
    ui::Timer TimerUnload{this, L"TimerUnload", 100, true};
    ui::Timer TimPeriod{this, L"TimPeriod", 10000, false};
    ui::Timer TimerLngPerio{this, L"TimerLngPerio", 100, false};
    ui::Timer TimPaint{this, L"TimPaint", 5000, false};

    // ---- menus: File
    ui::Menu mnufichier{this, L"mnufichier"};
    ui::Menu Mnuenregistrer{this, L"Mnuenregistrer", &mnufichier};
    ui::Menu Mnuenregistrertout{this, L"Mnuenregistrertout", &mnufichier};
    ui::Menu Mnuimprimer{this, L"Mnuimprimer", &mnufichier};
    ui::Menu mnusepF1{this, L"mnusepF1", &mnufichier};
    ui::Menu mnucourriel{this, L"mnucourriel", &mnufichier};
    ui::Menu mnujoindreune{this, L"mnujoindreune", &mnucourriel};
    ui::Menu mnujoindrecoch{this, L"mnujoindrecoch", &mnucourriel};
    ui::Menu mnujoindretout{this, L"mnujoindretout", &mnucourriel};
    ui::Menu mnuimgforum{this, L"mnuimgforum", &mnucourriel};
    ui::Menu mnusepF2{this, L"mnusepF2", &mnufichier};
    ui::Menu Mnuquitter{this, L"Mnuquitter", &mnufichier};
    // Edit
    ui::Menu mnuedition{this, L"mnuedition"};
    ui::Menu mnuttscreen{this, L"mnuttscreen", &mnuedition};
    ui::Menu mnuretour{this, L"mnuretour", &mnuedition};
    ui::Menu mnurafraichir{this, L"mnurafraichir", &mnuedition};
    ui::Menu mnusepE1{this, L"mnusepE1", &mnuedition};
    ui::Menu mnucopier{this, L"mnucopier", &mnuedition};
    ui::Menu MnuEditPaint{this, L"MnuEditPaint", &mnuedition};
    ui::Menu MnuRaff{this, L"MnuRaff", &mnuedition};
    ui::Menu mnusepE2{this, L"mnusepE2", &mnuedition};
    ui::Menu Mnudelcap{this, L"Mnudelcap", &mnuedition};
    ui::Menu Mnudeltout{this, L"Mnudeltout", &mnuedition};
    ui::Menu mnusepE3{this, L"mnusepE3", &mnuedition};
    ui::Menu mnuzoom{this, L"mnuzoom", &mnuedition};
    ui::ControlArray<ui::Menu> mnuzoomX{this, L"mnuzoomX"};
    // Tools
    ui::Menu mnuoutils{this, L"mnuoutils"};
    ui::Menu Mnumulti{this, L"Mnumulti", &mnuoutils};
    ui::Menu MnuEnAuto{this, L"MnuEnAuto", &mnuoutils};
    ui::Menu MnuCaptper{this, L"MnuCaptper", &mnuoutils};
    ui::Menu mnusepT1{this, L"mnusepT1", &mnuoutils};
    ui::Menu mnuFabGif{this, L"mnuFabGif", &mnuoutils};
    ui::Menu mnusepT2{this, L"mnusepT2", &mnuoutils};
    ui::Menu mnuoptions{this, L"mnuoptions", &mnuoutils};
    ui::Menu MnuChgLang{this, L"MnuChgLang", &mnuoutils};
    // Help
    ui::Menu mnuHelp{this, L"mnuHelp"};
    ui::Menu MnuAide{this, L"MnuAide", &mnuHelp};
    ui::Menu mnuReacTip{this, L"mnuReacTip", &mnuHelp};
    ui::Menu mnumail{this, L"mnumail", &mnuHelp};
    ui::Menu MnuNouversion{this, L"MnuNouversion", &mnuHelp};
    ui::Menu Tutosite{this, L"Tutosite", &mnuHelp};
    ui::Menu mnusepH1{this, L"mnusepH1", &mnuHelp};
    ui::Menu mnuapropos{this, L"mnuapropos", &mnuHelp};
    // Standby entry of the menu bar, shown once the opening animation is done.
    ui::Menu Mnured2{this, L"Mnured2"};
    // Tray menu and floating menu: hidden top-level entries used as pop-ups.
    ui::Menu mnucaptu{this, L"mnucaptu"};
    ui::Menu Mnuphotorapid{this, L"Mnuphotorapid", &mnucaptu};
    ui::Menu mnuveille{this, L"mnuveille", &mnucaptu};
    ui::Menu Mnuquitt{this, L"Mnuquitt", &mnucaptu};
    ui::Menu Mnuflott{this, L"Mnuflott"};
    ui::Menu mnuFenregistrer{this, L"mnuFenregistrer", &Mnuflott};
    ui::Menu MnuFenregistrertout{this, L"MnuFenregistrertout", &Mnuflott};
    ui::Menu MnuFdelcap{this, L"MnuFdelcap", &Mnuflott};
    ui::Menu Mnufdeltout{this, L"Mnufdeltout", &Mnuflott};
    ui::Menu mnufDelCaptCoch{this, L"mnufDelCaptCoch", &Mnuflott};
    ui::Menu mnuFeditpaint{this, L"mnuFeditpaint", &Mnuflott};

    // ---- start-up and shutdown
    void Form_Load();
    void chargtconstMain();
    void chargtparam();
    void Form_Activate();
    void Form_QueryUnload(int& cancel, int unloadMode);
    void Form_Terminate();
    void Form_MouseMove(const ui::MouseEvent& e);
    void TimerUnload_Timer();
    void quitprog();
    // Called at the end of the load: captures of an earlier run that did not quit are
    // offered back with one question, then filed as new captures or left marked.
    void ReprendreCaptures();

    // ---- command dispatch
    void GestCommande(int Index, bool ParClavier);
    void bouton_Click(int Index);
    void bouton_DblClick(int Index);
    void bouton_MouseMove(int Index, const ui::MouseEvent& e);
    void Form_KeyDown(int16_t KeyCode, int16_t Shift);
    void Timbouton_Timer();
    void Attente(float Secondes);
    void mnufichier_Click();
    void mnuedition_Click();
    void Mnumulti_Click();
    void MnuEnAuto_Click();
    void mnuoptions_Click();
    void MnuRaff_Click();

    // ---- capture list
    void GestVignettes(ui::PictureBox& Image);
    void SuppVignette(int16_t Numero);
    void Supprimertout(bool Demande);
    void Rafraichir();
    void mnufDelCaptCoch_Click();
    void Voirtabprov();

    // ---- view, zoom and window size
    void MefImageF(int16_t Mode);
    void mnuzoomX_Click(int16_t Index);
    void TimZoom_Timer();
    void PosDimRedMain();
    void Agrandred();
    void Timderoul_Timer();
    void Timlabdeb_Timer();
    // The window shows its view: in the normal state and not reduced to the toolbar.
    bool EtatNormal() const { return WindowState() == ui::kNormal && !app.ModeReduit; }
    void Picture2_MouseMove(float X, float Y);
    void Picture1_MouseDown(int Button, float X, float Y);
    void Picture1_MouseMove(float X, float Y);
    void Picture1_MouseUp();
    bool EnSelection = false;

    // ---- tray and standby
    void mnuveille_Click();
    void Mnured2_Click();
    // The windows are shown again: the standby entry gets its usual caption back.
    void FinVeille();

    // ---- hotkeys
    void Timerclav_Timer();
    // The hotkey down at the previous poll (a blank for none).
    wchar_t ToucheTenue = L' ';

    // The narrowest the window gets: the width of 24 toolbar buttons.
    float LargeurMin() const { return 24 * bouton[0].Width(); }
    // Against the right edge of the screen, MARGE twips from it; never past the left edge,
    // so that the menus stay in reach when a scaled toolbar is wider than the screen.
    void CollerADroite(float marge = 0);

    // Both thumbnails of a row, by halftone stretch of the capture's picture.
    void DessinerVignettes(const gdi::Surface& src, ui::PictureBox& img, ui::PictureBox& gimg);

    // Temporary file name of capture number n ("Captprov_" + TagHeure + "00").
    std::wstring NomFichierProv(int32_t n) const;

    // The file beside the temporary folder (its name plus this) that marks it as the live
    // run's: held open from start to quit, so that another copy of the program never takes
    // that folder for a lost run's.
    static constexpr wchar_t kVerrouSession[] = L".lock";

protected:
    void Design() override;

private:
    std::ofstream verrouSession_;
    void WireEvents();
    // Slider and count of the thumbnail window, and the caption that counts the captures.
    void MajDefilement();
    void MajTitreListe();
    void PlaceToolbar();
    // Files one old capture file through GestVignettes; true once its copy is written.
    bool ReprendreFichier(const std::wstring& chemin);
    // The press flash: buttons that show a state keep their look, the others are let go.
    static bool GardeEnfonce(int Index);
    void RelacherBoutons();
    int16_t BoutonSurvole = 0;
    bool SurvolActif = false;
    double PosLabDeb = 0;
    float selDebutX_ = 0, selDebutY_ = 0, selDroitX_ = 0, selDroitY_ = 0;
};

} // namespace mv
