// Timed capture: the slow engine and the plain periodic timer of the main window, the
// schedule's menu entry. The schedule dialog and the burst engine are in FrmChrono.h.
#pragma once

#include <string>

namespace mv {

class App;

// NbImgMax of a plan with no number of images: the run ends on its end time.
inline constexpr double kSansLimite = 999999999;

// Tools > Periodic capture, and command 13: the schedule of a zone capture. During a run
// it brings the schedule back.
void MnuCaptper_Click(App& app);
// The slow engine, each tick of frmMain.TimerLngPerio.
void TimerLngPerio_Timer(App& app);
// The end of a slow run: with Sauver, the captures not yet saved are saved first; then the
// timers stop and the indicators clear.
void FinLente(App& app, bool Sauver);
// The plain periodic capture, each tick of frmMain.TimPeriod.
void TimPeriod_Timer(App& app);

// Seconds on the clock of the runs: the date counts, so that it runs across midnight.
double SecondesRun(App& app);
// The time now as "hh:mm:ss" on 24 hours, the text that plans are compared with.
std::wstring HeureTexte(App& app);
// A run has just begun: the start test stops, and the end time becomes seconds on the
// run's clock (already past when the end time is earlier in the day).
void CommencerPlan(App& app);
// The stop test of both engines, given the images taken.
bool PlanFini(App& app, double images);

} // namespace mv
