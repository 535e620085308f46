// params.txt: two lines of text in the system code page with CR LF ends. Line 1 holds every setting
// in fixed columns of a 300-character line; line 2 is the save folder.
//
// This header is pure (bytes and text in, Params out, no files, no windows) so that it can
// be tested and fuzzed alone; settings_app.h does the file work on the running program.
#pragma once

#include "settings/params.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace mv {

// Width of the fixed-length fields LigneParams, DossierEnreg and the written line 2.
inline constexpr int kLargeurLigne = 300;

// Line 1 as a first run writes it, and as the repair road writes it: they differ in
// column 105 (ToucheDoubleH: Y / 2) and column 120 (PreAffZone: 1 / 0) only.
std::wstring LignePremierLancement();
std::wstring LigneReparation();

// Assignment to a fixed-length text field: padded with blanks or cut to n characters.
std::wstring Cadrer(std::wstring_view s, size_t n = kLargeurLigne);

// The two lines as Line Input reads them from the file's bytes, each left-justified into
// 300 characters. Raises 62 (input past end of file) when line 1 or line 2 is missing.
struct LignesParams {
    std::wstring ligne1;
    std::wstring ligne2;
};
LignesParams LireLignes(std::string_view octets);

// DossierEnregCourt: the text before the first pair of blanks when DossierEnreg ends in two
// blanks, else the whole of DossierEnreg (so a folder with two blanks in a row is cut).
std::wstring DossierCourt(std::wstring_view dossierEnreg);

// EditeurNom: from after the last backslash of Editeur, p-1 characters long, where p is the
// first run of five blanks. Raises 5 when Editeur holds no five blanks in a row.
std::wstring NomEditeur(std::wstring_view editeur);

// Unpacks p.LigneParams (300 characters) into the fields of p, in the order of the original
// reader, and returns IntervalleAuto, the interval for TimPeriod. Raises 6 when the JPEG
// quality or the interval overflows, 380 when the interval is outside 0..65535 (the
// timer's own check, made here at its place in the order), 5 from NomEditeur.
int32_t DecoderLigne(Params& p);

// After the options dialog rebuilt p.LigneParams: the fields that take effect at once, in
// the order of the dialog, decoded as the reader decodes them; Tempo is given. GrilleDix,
// EnregBmp, ToucheDoubleH, the interval and the editor wait for the next start or are
// set by the dialog itself. Raises 6 when the JPEG quality overflows.
void RafraichirParams(Params& p, double tempo);

// Everything the reader does once the lines are in memory: DossierEnreg and
// DossierEnregCourt from line 2, the fields from line 1, DossierTemp. Returns
// IntervalleAuto. Raises as DecoderLigne.
int32_t RemplirParams(Params& p, std::wstring_view ligne1, std::wstring_view ligne2,
                      const std::wstring& dossierParams);

// A save folder that params.txt cannot carry: its name holds a character that the system
// code page lacks (the file would get '?' in its place), or it came back from the file with
// a '?', which no Windows path holds, where such a character was lost. Returns false for a
// folder that the file carries; else true, with the Personal folder in place of a lost one.
bool DossierNonTranscrit(Params& p);

// Stores the rectangle size remembered at exit into columns 93-96 and 97-100 of ligne: the
// text of each value with its leading blank, written as the Mid statement writes, so at
// most four characters replace the field (1280 becomes " 128") and a shorter text leaves
// the rest of the field as it was (50 over "0420" gives " 500").
void MemoriserTaille(std::wstring& ligne, double largeurPixels, double hauteurPixels);

// The file's bytes: line 1 and line 2 each followed by CR LF, in the system code page. A
// character that the page lacks is written as '?', as the ANSI conversion of the original
// did, so a save folder with such a character comes back with '?' in its place.
std::string ContenuFichier(std::wstring_view ligne1, std::wstring_view ligne2);

// The file of the settings in the program's per-user folder.
std::wstring CheminParams(const std::wstring& dossierParams);

} // namespace mv
