// Output: the temporary BMP of each capture, saving, the clipboard copy, printing, mail,
// the uploader and the external editor. These routines work on the main window's and the browser's
// controls (frmMain.CDlg1, PictSave, Picture2, Flistimages.PictSave ...), reached through
// the application.
#pragma once

#include <cstdint>
#include <string>

namespace ui {
class PictureBox;
}

namespace mv {

class App;
struct Params;

// The extension of the saves made without a dialog: "jpg", or "bmp" when EnregBmp is set.
std::wstring ExtensionAuto(const Params& p);

// Writes the picture of Image as the temporary file of capture number Numero. A missing
// temporary folder is made first; a failure to make it raises to the caller, a failure
// to write shows the "Save/Sauver" box.
void EnregVign(App& app, int32_t Numero, ui::PictureBox& Image);
// Saves the current capture through the save dialog, in the format of the filter
// chosen. Cancel and any file error end it silently.
void Enregistrer2(App& app);
// Saves every capture from Premier on that is not marked saved, under generated names in
// the save folder, as Extension. On an error shows entry 117, opens the options and sets
// Ok to 0; a failed conversion keeps the BMP, sets Ok to 0 and stops there. Ok 3 keeps
// the BMP beside a converted file.
void EnregistrerTout(App& app, int16_t& Ok, int16_t Premier, const std::wstring& Extension);
// Puts the current capture's file on the clipboard.
void Buttcopier(App& app);
// Prints the current capture under a title the user confirms. Cancel, no printer and
// any error end it without a word.
void Imprimer(App& app);

// Mail. A message to the support address, through the client's dialog; only a missing
// client is told.
void envoimail(App& app);
// Mails the captures whose box is ticked (1) as JPEG attachments; after the send their
// boxes go to 2 with the mailed mark. A cancelled or failed send clears the ticks.
void EnvoiMailCoch(App& app);
void mnujoindreune_Click(App& app);
void mnujoindretout_Click(App& app);
void mnujoindrecoch_Click(App& app);
// The mail menu opens: its entries need a capture.
void mnucourriel_Click(App& app);
// The uploader beside the program, started with Chemin behind one blank, unquoted.
void LancerUploader(App& app, const std::wstring& Chemin);
// The current capture as a JPEG, handed to the uploader.
void mnuimgforum_Click(App& app);

// The external editor. Opens the current capture's temporary file in the editor of the
// settings (the system's paint program when it begins with a blank or cannot start).
void MnuEditPaint_Click(App& app);
// True while a process of that executable name runs (names compared bare, trimmed and
// without regard to case).
bool ProcessusActif(App& app, const std::wstring& Nom);
// True while the external editor's process runs.
bool PaintActif(App& app);
// F5: the edited file comes back into its capture, and into the view when it is current.
// A file the editor is still writing leaves the picture as it is.
void RafraichirEditeur(App& app);
// Every 5 seconds while editing: reloads when the file changed, ends the edit when the
// editor is gone.
void TimPaint_Timer(App& app);
// The user chose capture Index: an editor the program started on another capture ends.
void ChoixPendantEdition(App& app, int16_t Index);
// The capture whose temporary file is Fichier leaves the list: its edit ends.
void EditionQuitteListe(App& app, const std::wstring& Fichier);

} // namespace mv
