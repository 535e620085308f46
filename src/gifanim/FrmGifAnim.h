// The animated-GIF builder dialog: the frames from the captures of the list or from a folder
// of GIF files, the delay and play options, the build, and a preview that plays the result.
#pragma once

#include "app/app.h"
#include "gifanim/assembleur.h"
#include "platform/gdi/surface.h"
#include "platform/ui/controls.h"
#include "platform/ui/form.h"

#include <string>
#include <vector>

namespace mv {

class FrmGifAnim : public ui::Form {
public:
    explicit FrmGifAnim(App& app);
    App& app;

    ui::ListBox ListUtiles{this, L"ListUtiles"};
    ui::CommandButton CdeH{this, L"CdeH"};
    ui::CommandButton CdeB{this, L"CdeB"};
    ui::Slider Slider1{this, L"Slider1"};
    ui::Label Labslide{this, L"Labslide"};
    ui::CheckBox Chkloop{this, L"Chkloop"};
    ui::CheckBox ChkAR{this, L"ChkAR"};
    ui::CommandButton CdeCreGif{this, L"CdeCreGif"};
    ui::CommandButton CdeUplGif{this, L"CdeUplGif"};
    ui::CommandButton Cdestop{this, L"Cdestop"};
    ui::CommandButton CdeAideGif{this, L"CdeAideGif"};
    ui::PictureBox Pictevaldim{this, L"Pictevaldim"};
    // The preview: the frames of a GIF file played at their delays.
    ui::PictureBox WebBrowsGif{this, L"WebBrowsGif"};
    ui::Timer TimApercu{this, L"TimApercu", 100, false};
    ui::Label StatusBar1{this, L"StatusBar1"};

    // Captures of the list (true) or GIF files of a folder (false).
    bool ModeCaptures = true;
    // The folder whose GIF files make the frames in file mode.
    std::wstring DossierFichiers;
    static constexpr int kMaxFichiers = 50;
    std::vector<std::wstring> TabFichiers;
    int16_t NbFichiers = 0;
    std::wstring CheminGif;
    AssembleurGif assembleur;

    void Form_Load();
    void CdeCreGif_Click();
    void CdeH_Click();
    void CdeB_Click();
    void ListUtiles_MouseDown();
    void ListUtiles_KeyDown(int16_t KeyCode);
    void Chkloop_Click();
    void CdeUplGif_Click();
    void CdeAideGif_Click();
    void Form_Unload();

    // Shows a GIF file in the preview from its first frame.
    void Naviguer(const std::wstring& chemin);
    void TimApercu_Timer();
    // The GIF files of the folder, in name order.
    std::vector<std::wstring> FichiersDossier() const;

protected:
    void Design() override;

private:
    std::vector<gdi::Surface> images_;
    std::vector<int> delais_;
    int boucles_ = -1;
    size_t image_ = 0;
    // The frame GIFs a capture-mode load wrote in the temporary folder.
    std::vector<std::wstring> ecrits_;
    float echelle_ = 1; // of the preview's frames
    void EffacerEcrits();
    // Sizes the preview for a picture of that size, within half the screen.
    void Apercu(float largeur, float hauteur);
    void Afficher();
    // The window's height from the preview's bottom plus marge, the status line below it.
    void PlacerStatut(float marge);
};

// Opens the builder anew, on the captures or on the GIF files of a folder; an open one
// closes first.
void OuvrirGifAnim(App& app, bool modeCaptures, const std::wstring& dossier = L"");
// Command of the Tools menu: the builder on a folder of GIF files.
void mnuFabGif_Click(App& app);

} // namespace mv
