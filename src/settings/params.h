// The in-memory settings record.
#pragma once

#include <cstdint>
#include <string>

namespace mv {

struct Params {
    std::wstring LigneParams;  // line 1 of params.txt, 300 characters
    std::wstring DossierPerso; // the Personal folder, written as line 2
    std::wstring DossierEnreg; // line 2 as read, blank-padded to 300
    std::wstring DossierEnregCourt;
    std::wstring LargSel = L"0420";
    std::wstring HautSel = L"0260";
    wchar_t ToucheZone = L'Z';
    wchar_t ToucheMemeZone = L'M';
    wchar_t ToucheEcran = L'E';
    wchar_t ToucheFenetre = L'F';
    wchar_t ToucheDoubleH = L'Y';
    int16_t GrilleDix = 0;
    int16_t EnregBmp = 0;
    int16_t GardeFenetres = 0;
    int16_t QualiteJpeg = 70;
    std::wstring PrefixeNom = L"Capt";
    int16_t MemoZone = 1;
    double Tempo = 0.1;
    std::wstring SansCopieAuto = L"0";
    int16_t NomParCapture = 0;
    int16_t PreAffZone = 1;
    int16_t Silence = 0;
    std::wstring Editeur;
    std::wstring EditeurNom = L"mspaint.exe";
    std::wstring DossierTemp;
};

// The record as a first run leaves it: every field at its default, the save folder the
// Personal folder, the temporary folder under the program's per-user folder.
Params FirstRunParams(const std::wstring& dossierParams, const std::wstring& personal);

} // namespace mv
