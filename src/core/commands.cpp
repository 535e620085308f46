#include "core/commands.h"

namespace mv {

const std::array<Commande, kNbCommandes>& TableCommandes() {
    static const std::array<Commande, kNbCommandes> table = {{
        {0, L"Clicher", L"\\camera.bmp", L"\\camerac.bmp"},
        {1, L"Clichertout", L"\\toutecran.bmp", L"\\toutecranc.bmp"},
        {2, L"Clicherfen", L"\\camerafen.bmp", L"\\camerafenc.bmp"},
        {3, L"Copier", L"\\copy.bmp", L"\\copyc.bmp"},
        {4, L"Enregistrer", L"\\savex.bmp", L"\\savecx.bmp"},
        {5, L"Enregistrertout", L"\\saveallx.bmp", L"\\saveallcx.bmp"},
        {6, L"Imprimer", L"\\printerx.bmp", L"\\printercx.bmp"},
        {7, L"Editer", L"\\paintx.bmp", L"\\paintcx.bmp"},
        {8, L"Multiselection", L"\\multiselx.bmp", L"\\multiselcx.bmp"},
        {9, L"Supprimer", L"\\deletex.bmp", L"\\deletecx.bmp"},
        {10, L"Supprimertout", L"\\waste.bmp", L"\\wastec.bmp"},
        {11, L"Annuler", L"\\undox.bmp", L"\\undocx.bmp"},
        {12, L"Rafraichir", L"\\moverbox.bmp", L"\\moverboxc.bmp"},
        {13, L"RafraichirTim", L"\\moverboxtim.bmp", L"\\moverboxtimc.bmp"},
        {14, L"Quitter", L"\\closex.bmp", L"\\closecx.bmp"},
        {15, L"Options", L"\\wrench.bmp", L"\\wrenchc.bmp"},
        {16, L"Agrandir", L"\\agrandir.bmp", L"\\agrandirc.bmp"},
        {17, L"Agrlist", L"\\filmx.bmp", L"\\filmcx.bmp"},
        {18, L"A propos", L"\\report.bmp", L"\\reportc.bmp"},
        {19, L"agrandiss", L"\\camerag.bmp", L"\\cameragc.bmp"},
    }};
    return table;
}

const std::array<int, kNbCommandes>& OrdreBarre() {
    // Groups: capture; same capture and undo; copy and delete; output; modes and
    // windows; options, quit and about.
    static const std::array<int, kNbCommandes> ordre = {0, 19, 1, 2, 11, 12, 13, 3,  9,  10,
                                                        4, 5,  6, 7, 8,  16, 17, 15, 14, 18};
    return ordre;
}

const std::array<int, kNbCommandes>& EcartsBarre() {
    static const std::array<int, kNbCommandes> ecarts = {0,  20, 20, 20, 60, 20, 20, 70, 20, 20,
                                                         60, 20, 20, 20, 70, 20, 20, 60, 20, 20};
    return ecarts;
}

} // namespace mv
