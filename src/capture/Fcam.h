// The shutter: a small window with a camera picture and the shutter sound, shown for
// about 300 ms after each capture.
#pragma once

#include "app/app.h"
#include "platform/ui/form.h"

namespace mv {

// The part of a multimedia control that the shutter uses: a device type, a file and the
// commands "Open", "Play" and "Close" on the platform's wave audio. A command that fails
// (no file, no device) does nothing: only the sound is lost.
struct MMControl {
    explicit MMControl(platform::WaveAudio& a) : audio(a) {}
    platform::WaveAudio& audio;
    bool Notify = false;
    bool Wait = false;
    bool Shareable = false;
    std::wstring DeviceType;
    std::wstring FileName;
    void Command(const std::wstring& c);
};

class Fcam : public ui::Form {
public:
    explicit Fcam(App& app);
    App& app;
    ui::PictureBox Imagecam{this, L"Imagecam"};
    MMControl MMControl1{app.be.GetWaveAudio()};
    ui::Timer Timcam{this, L"Timcam", 300, false};

    // One shutter: the sound starts, the window shows without taking the keyboard, and
    // Timcam takes it away. A shutter during the previous one starts both again.
    void Declencher();
    void Timcam_Timer();

protected:
    void Design() override;

private:
    // The window at the picture's size in pixels.
    void Placer(int largeurPx, int hauteurPx);
};

} // namespace mv
