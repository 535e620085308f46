// Timed capture: the periodic capture and the burst.
#pragma once

namespace mv {

class App;

// Tools > Periodic capture, and command 13. Empty until timed capture is built.
void MnuCaptper_Click(App& app);

} // namespace mv
