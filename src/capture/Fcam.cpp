#include "capture/Fcam.h"

#include "capture/capture.h"
#include "platform/gdi/bmp.h"
#include "runtime/errors.h"

namespace mv {

void MMControl::Command(const std::wstring& c) {
    if (DeviceType != L"WaveAudio") return;
    if (c == L"Open")
        audio.Open(FileName);
    else if (c == L"Play")
        audio.Play();
    else if (c == L"Close")
        audio.Close();
}

Fcam::Fcam(App& a) : ui::Form(a.be, L"Fcam"), app(a) {
    OnLoad = [this] {
        // The picture stands beside the program; without it the window is its back colour.
        try {
            Imagecam.SetPicture(gdi::LoadBmp(app.be.GetShell().ProgramFolder() + L"\\fcam.bmp"));
            Placer(Imagecam.Picture().Width(), Imagecam.Picture().Height());
        } catch (...) {
            rt::CaughtError();
        }
    };
    // The device closes with the window, whatever unloads it.
    OnUnload = [this](int&) {
        Timcam.SetEnabled(false);
        MMControl1.Command(L"Close");
    };
    Timcam.OnTimer = [this] { Timcam_Timer(); };
}

void Fcam::Design() {
    borderStyle = ui::kBorderNone;
    showInTaskbar = false;
    topMost = true;
    showNoActivate = true;
    SetBackColor(0x5E5045);
    Placer(112, 84);
}

void Fcam::Placer(int largeurPx, int hauteurPx) {
    // At the top right of the screen, a little inside its edges.
    const auto ecran = app.Screen();
    const float w = ecran.TwipsX(largeurPx), h = ecran.TwipsY(hauteurPx);
    Move(ecran.WidthTwips() - w - ecran.TwipsX(16), ecran.TwipsY(16), w, h);
    Imagecam.Move(0, 0, w, h);
}

void Fcam::Declencher() {
    Load();
    if (!IsLoaded()) return;
    MMControl1.Notify = false;
    // The sound plays on while the program goes on: the overlay must have its keys.
    MMControl1.Wait = false;
    MMControl1.Shareable = false;
    MMControl1.DeviceType = L"WaveAudio";
    MMControl1.FileName = app.be.GetShell().ProgramFolder() + L"\\camera.wav";
    MMControl1.Command(L"Open");
    if (app.params.Silence == 0) MMControl1.Command(L"Play");
    Show();
    app.DoEvents();
    app.DoEvents();
    // Restarted: the window stands its full time after the latest shutter.
    Timcam.SetEnabled(false);
    Timcam.SetEnabled(true);
}

void Fcam::Timcam_Timer() {
    Timcam.SetEnabled(false);
    Unload();
}

void RideauPhoto(App& app) {
    app.cam->Declencher();
}

} // namespace mv
