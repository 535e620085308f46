// The schedule of a repeated capture of the latest zone, and the burst engine that runs on
// its own timer. The slow engine runs on the main window (timed.h).
#pragma once

#include "app/app.h"
#include "platform/ui/controls.h"
#include "platform/ui/form.h"

#include <string>
#include <vector>

namespace mv {

// Marks an engine's tick as running for its lifetime; a tick that comes again during the
// capture's own waits finds it set and returns at once.
class TickEnCours {
public:
    explicit TickEnCours(bool& drapeau) : drapeau_(drapeau), libre_(!drapeau) { drapeau_ = true; }
    ~TickEnCours() {
        if (libre_) drapeau_ = false;
    }
    TickEnCours(const TickEnCours&) = delete;
    TickEnCours& operator=(const TickEnCours&) = delete;
    // False inside a tick that is already running.
    bool Libre() const { return libre_; }

private:
    bool& drapeau_;
    bool libre_;
};

class FrmChrono : public ui::Form {
public:
    explicit FrmChrono(App& app);
    App& app;

    // Fields 1-3 start, 4-6 end, 7-9 period (h, min, s), 10 the period's milliseconds;
    // element 0 is the unseen design-time field that a carry out of field 1 reaches.
    ui::ControlArray<ui::TextBox> Txtchrono{this, L"Txtchrono"};
    ui::ControlArray<ui::Label> LabInterm{this, L"LabInterm"};
    ui::ControlArray<ui::CommandButton> CdeChronoM{this, L"CdeChronoM"};
    ui::ControlArray<ui::CommandButton> CdeChronoP{this, L"CdeChronoP"};
    ui::Label LabHdebChrono{this, L"LabHdebChrono"};
    ui::Label LabHfinChrono{this, L"LabHfinChrono"};
    ui::Label LabPerioChrono{this, L"LabPerioChrono"};
    ui::TextBox TxtNbImg{this, L"TxtNbImg"};
    ui::Label LabNbImg{this, L"LabNbImg"};
    ui::ControlArray<ui::OptionButton> OptSav{this, L"OptSav"};
    // The files of the save folder.
    ui::ListBox Ficdescapt{this, L"Ficdescapt"};
    ui::PictureBox imgcache{this, L"imgcache"};
    ui::Label Labcpt{this, L"Labcpt"};
    ui::Label LabChangt{this, L"LabChangt"};
    ui::CommandButton CdeOk{this, L"CdeOk"};
    ui::CommandButton CdeStopper{this, L"CdeStopper"};
    ui::CommandButton CdeAnnul{this, L"CdeAnnul"};
    ui::CommandButton Command1{this, L"Command1"};
    ui::Timer Timer1{this, L"Timer1", 1000, true};
    ui::Timer Timrapid{this, L"Timrapid", 0, false};

    // Images of the burst, and the loop counter of the load (32-bit: a burst runs long).
    int32_t NbRapid = 0;
    int32_t IndexFic = 0;
    // The burst's format, fixed at its start (1 bmp .. 4 png).
    int FormatRafale = 1;
    // A tick of an engine is running (its waits let the timers in again).
    bool TickLentEnCours = false;
    bool TickRapideEnCours = false;

    void Form_Load();
    void Form_Activate();
    void Txtchrono_Change(int Index);
    void CdeChronoM_Click(int Index);
    void CdeChronoP_Click(int Index);
    void TxtNbImg_Change();
    void CdeOk_Click();
    void CdeStopper_Click();
    void Timer1_Timer();
    void Timrapid_Timer();
    // The end of a burst: the count and the folder in a box, then its own bitmaps go
    // when each has its converted file. Also the end that Stop asks for.
    void FinRafale();
    // The save folder's files into Ficdescapt.
    void RafraichirFichiers();
    // The number of a field (its leading number, 0 for none).
    int Valeur(int Index) const;
    // The extension of the selected format: "bmp", "jpg", "gif" or "png".
    std::wstring ExtensionChoisie() const;
    // A run of either engine is going.
    bool EnCours() const;

protected:
    void Design() override;

private:
    // Bitmaps this burst wrote, deleted at its end once converted.
    std::vector<std::wstring> ecritsRafale_;
    void ArreterRafale(bool message);
    bool PretAPartir();
};

// The side window that lists the save folder, opened from the schedule.
class FrmBrows : public ui::Form {
public:
    explicit FrmBrows(App& app);
    App& app;
    ui::ListBox ListFichiers{this, L"ListFichiers"};
    ui::Label LabDossier{this, L"LabDossier"};
    ui::CommandButton CdeFermer{this, L"CdeFermer"};
    void Form_Load();

protected:
    void Design() override;
};

// A two-second notice that closes itself; nothing opens it at present.
class FrmDialTemp : public ui::Form {
public:
    explicit FrmDialTemp(App& app);
    App& app;
    ui::Label LabAffich{this, L"LabAffich"};
    ui::Timer Timer1{this, L"Timer1", 2000, true};
    void Form_Load();

protected:
    void Design() override;
};

} // namespace mv
