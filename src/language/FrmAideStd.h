// The illustrated help: a picture of one of the program's windows, and under the mouse
// the explanation of the part it is over. The pictures are JPEG files beside the
// program, named by the language file, so each language has its own.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

#include <array>
#include <vector>

namespace mv {

class FrmAideStd : public ui::Form {
public:
    explicit FrmAideStd(App& app);
    App& app;

    ui::Label LabChoix{this, L"LabChoix"};
    ui::ControlArray<ui::CommandButton> CdeFen{this, L"CdeFen"};
    ui::Label LabVue{this, L"LabVue"};
    ui::PictureBox PictForm{this, L"PictForm"};
    ui::Label LabExplic{this, L"LabExplic"};
    ui::PictureBox Pictmenu{this, L"Pictmenu"};
    ui::Shape rectmenu{this, L"rectmenu"};

    int16_t VueAide = 0;
    int16_t MenuAide = 0;

    // A rectangle of a help picture, in its pixels, edges included.
    struct Zone {
        int16_t gauche, droite, haut, bas;
        bool Contient(int x, int y) const {
            return x >= gauche && x <= droite && y >= haut && y <= bas;
        }
    };
    // The hot zones of each view, in the order they are tested.
    static const std::array<std::vector<Zone>, 3>& Zones();
    // The menu titles of view 0, each opening its menu's picture at PictForm's left plus
    // its offset.
    struct TitreMenu {
        Zone zone;
        int image;    // the help entry naming its picture
        int texte;    // the help entry explaining it
        int decalage; // Pictmenu's left, in pixels from PictForm's
    };
    static const std::array<TitreMenu, 5>& TitresMenus();
    // Rows of an opened menu's picture.
    static constexpr int kHauteurLigne = 17;
    static constexpr int kLignes = 7;
    // The text of zone i of a view.
    static int TexteZone(int vue, int i);

    void Form_Load();
    void CdeFen_Click(int16_t Index);
    void PictForm_MouseMove(int Button, int Shift, float X, float Y);
    void Pictmenu_MouseMove(int Button, int Shift, float X, float Y);

protected:
    void Design() override;

private:
    // Loads a help picture named by entry n; false, after a box naming the file, when it
    // cannot be read.
    bool ChargerImage(ui::PictureBox& cible, int n);
};

// Help > Illustrated help: the window on its first view.
void MnuAide_Click(App& app);

} // namespace mv
