// The full-screen selection overlay: a frozen, dimmed copy of the desktop on which a zone
// is placed or drawn with the mouse; the clean pixels show through inside the rectangle.
// All geometry is in twips of Picture1 (32-bit floats); pixels come from the screen's
// twips per pixel.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

#include <array>

namespace mv {

class FrmFull : public ui::Form {
public:
    explicit FrmFull(App& app);
    App& app;

    // ---- surfaces
    // The displayed dimmed picture, two screens high; parent of the items below.
    ui::PictureBox Picture1{this, L"Picture1"};
    // The clean copy with Picture1's geometry: the clear spot's and the capture's source.
    ui::PictureBox PictPourSel{this, L"PictPourSel"};
    // Dimmed and clean upper and lower grabs of a double-height session.
    ui::PictureBox PictHaut{this, L"PictHaut"};
    ui::PictureBox PictBas{this, L"PictBas"};
    ui::PictureBox PictHautSel{this, L"PictHautSel"};
    ui::PictureBox PictBasSel{this, L"PictBasSel"};
    // The tint, and the validated rectangle's pixels, and the picture kept at the end.
    ui::PictureBox PictMask{this, L"PictMask"};
    ui::PictureBox PictInvis{this, L"PictInvis"};
    ui::PictureBox PictSave{this, L"PictSave"};

    // ---- items of Picture1, in picture coordinates
    ui::PictureBox PictClaire{this, L"PictClaire"};
    ui::Shape rectsel{this, L"rectsel"};
    ui::Shape rectlibre{this, L"rectlibre"};
    ui::ControlArray<ui::Shape> coinrect{this, L"coinrect"};
    ui::Label Labtaille{this, L"Labtaille"};
    ui::Label LabPosition{this, L"LabPosition"};
    ui::Label LabPos2{this, L"LabPos2"};
    ui::Label LabCarre{this, L"LabCarre"};
    ui::Label LabPrecis{this, L"LabPrecis"};
    ui::Label LabDblScreen{this, L"LabDblScreen"};
    ui::Label LabPreAff{this, L"LabPreAff"};
    ui::Label Labconsignes{this, L"Labconsignes"};
    ui::Label LabGuide{this, L"LabGuide"};
    ui::PictureBox PictValid{this, L"PictValid"};
    ui::PictureBox PictHelpDbH{this, L"PictHelpDbH"};
    ui::Label LabAideDbH{this, L"LabAideDbH"}; // the text inside PictHelpDbH
    ui::PictureBox pictcoccin{this, L"pictcoccin"};

    // ---- timers
    ui::Timer TimMvtDeb{this, L"TimMvtDeb", 10, true};
    ui::Timer TimForgrnd{this, L"TimForgrnd", 500, false};
    ui::Timer Timreinit{this, L"Timreinit", 20, true};
    ui::ControlArray<ui::Timer> Timboug{this, L"Timboug"};
    ui::Timer Timtaille{this, L"Timtaille", 50, false};
    ui::Timer Timsel{this, L"Timsel", 260, false};
    ui::Timer Timtransp{this, L"Timtransp", 400, false};
    ui::Timer TimLabPos{this, L"TimLabPos", 500, true};
    ui::Timer TimLabPreAff{this, L"TimLabPreAff", 2000, false};
    ui::Timer TimLabDbhV{this, L"TimLabDbhV", 12000, false};
    ui::Timer TimConsignes{this, L"TimConsignes", 3000, false};
    ui::Timer Timdefil{this, L"Timdefil", 6000, true};

    // ---- session
    // Freezes the desktop for a new zone (Mode 0), grabs the lower half of a double-height
    // zone (19), or reopens the last frozen screen (1, with RetourZone).
    void InitFull(int16_t Mode);
    // Brings the overlay to the front from whatever application has it.
    void ForceForeGroundWindow(ui::WindowHandle Hwnd);
    // The overlay takes the foreground, and with it the keys, at once: whenever it shows
    // and after anything that took them (a notice box, the list in multi-selection).
    void PrendreClavier();
    // Turns a rectangle into a capture (rectsel: Enter, right click; rectlibre: the
    // release of a freehand drawing).
    void ValidSel(ui::Shape& Rect);
    // Ends the session without a capture (Escape).
    void Annuler();
    // True while a session is open: from InitFull to its end.
    bool EnSession() const { return enSession_; }

    // ---- mouse
    void PlacDesCoins(ui::Shape& Rect);
    void SelClaire(ui::Shape& Rect);
    void PlaceGuide();
    void BougCoin(int Index, int Button);
    void RedimRect(int Index);
    void Picture1_MouseDown(int Button, int Shift, float X, float Y);
    void Picture1_MouseMove(int Button, int Shift, float X, float Y);
    void Picture1_MouseUp(int Button, int Shift, float X, float Y);
    void FinClignEtRouge();

    // ---- keys
    void Picture1_KeyDown(int16_t KeyCode, int16_t Shift);

    // State shared with the keys of the overlay.
    bool TraceLibre = false;
    float AncreX = 0, AncreY = 0;
    float DecalX = 0, DecalY = 0;
    float LargDeb = 0, HautDeb = 0;
    // Start of a handle drag; the remembered zone is written by ValidSel only.
    float DragGauche = 0, DragHaut = 0;
    float SourisX = 0, SourisY = 0;
    std::array<float, 13> CoinG{}, CoinD{}, CoinH{}, CoinB{};
    int32_t DemiHautPx = 0, LargPx = 0;
    float LimBas = 0, PosBas = 0, LimHaut = 0, PosHaut = 0;
    int32_t RognBas = 0, RognHaut = 0;
    int16_t ClignEtat = 0;

protected:
    void Design() override;

private:
    void WireEvents();
    void Form_Load();
    void Form_Activate();
    void TimMvtDeb_Timer();
    void Timreinit_Timer();
    void Timboug_Timer(int Index);
    void Timtaille_Timer();
    void Timsel_Timer();
    void Timtransp_Timer();
    void TimLabPos_Timer();
    void PictClaire_MouseMove(float X, float Y);
    // Labels beside the rectangle (InitFull step 14) and the two texts.
    void PlacerEtiquettes();
    void TexteTaille(const ui::Shape& Rect);
    void TextePosition(ui::Label& Lab, float X, float Y);
    // Labtaille beside a rectangle, kept on the screen.
    void PlacerTaille(const ui::Shape& Rect);
    // A length in twips reduced to a multiple of 10 pixels (the grid).
    static float Grille(float twips, float tpp);
    void MontrerPoignees(bool v);
    // The end of a session: its timers stop, the overlay hides for good.
    void FinSession();
    // The eight handles around a rectangle, and their hit zones.
    void PlacerPoignees(const ui::Shape& Rect);
    // The key rows of Picture1_KeyDown. ToucheDefilement is false when the row ends
    // without the tail.
    void ToucheFleche(int16_t KeyCode, int16_t Shift);
    bool ToucheDefilement(int16_t KeyCode);
    void ToucheRognage(int16_t KeyCode, bool modifiee);
    void QueueClavier();
    // The check mark beside the guide.
    static void DessinerCoche(gdi::Surface& s);
    static void DessinerAideDbH(gdi::Surface& s, int largeur);
    // Stamps the cursor taken at the opening key press on Picture1 and PictPourSel.
    void TamponCurseur();

    bool enSession_ = false;
    bool enValidation_ = false;
    bool sessionDouble_ = false; // the session of command 19: the seam can be trimmed
};

} // namespace mv
