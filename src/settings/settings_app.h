// params.txt read at start-up and written back, on the running application, with the
// repair road both share.
#pragma once

namespace mv {

class App;

// Reads params.txt into app.params and sets the interval of frmMain.TimPeriod; writes the
// first-run file when there is none. On any run-time error asks entry 125 (Yes/No); No ends
// the program leaving the file as it is, Yes writes the repair file, shows entry 126 and
// ends the program. Never returns in that case.
void chargtparam(App& app);

// Writes LigneParams as line 1 and DossierPerso, padded to 300, as line 2. A failure takes
// the repair road of chargtparam (the file is deleted whatever the error).
void SavOptions(App& app);

} // namespace mv
