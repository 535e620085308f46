// The language entries of the main window's menus.
#pragma once

namespace mv {

class App;

// Tools > Language: forgets the chosen language, so that the chooser comes back at the
// next start, and greys the entry out.
void MnuChgLang_Click(App& app);
// Help > Tip of the day: turns the tips at start-up back on and shows a tip.
void mnuReacTip_Click(App& app);

} // namespace mv
