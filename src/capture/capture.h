// Screen acquisition: the whole-screen and window grab into frmMain.Picture1, the cursor
// stamp, the copy to the clipboard, and the shutter that marks a capture. These routines
// work on the main window's controls, reached through the application.
#pragma once

#include <cstdint>
#include <string>

namespace mv {

class App;

// Grabs the whole desktop (Mode 0) or the window in front (Mode 1) into
// frmMain.Picture1, with the cursor drawn in; hides and shows the windows around the
// grab unless GardeFenetres is set. Sets EchecFen when the window has no rectangle.
void CapturTTbis(App& app, int16_t Mode);
// Puts the capture on the clipboard: frmMain.Picture2 for a zone or a window ("z", "f"),
// Picture1 for the whole screen. Type is left as it is.
void CopiePP(App& app, std::wstring& Type);
// frmMain's timers: the cursor sampled every 50 ms, and the copy notice taken down.
void TimCurs_Timer(App& app);
void Timdeja_Timer(App& app);
// The shutter window and sound after a capture (Fcam).
void RideauPhoto(App& app);

} // namespace mv
