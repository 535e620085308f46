// The scripted driver of the test flavour of the program (never in the shipped one): it
// reads a script named by the environment variable MIROVANTA_DRIVER and runs it after the
// start, with pending events running between steps. A script with a word not listed
// here is refused whole, and so is a wait that outlasts its deadline: the run then ends
// with exit code 3 and a line "driver: ..." on the standard error.
//
//   wait MS           run pending events for MS milliseconds (10 minutes at most)
//   click N           toolbar button N
//   key CODE SHIFT    a key reaching the main window
//   zonekey CODE SHIFT a key reaching the frozen screen, when it is up
//   keepwindows       the windows stay on screen during grabs (GardeFenetres 1)
//   quality N         the JPEG quality setting, as the settings file gives it (0 to 100)
//   saveall EXT       saves every capture again in the save folder as EXT (jpg gif png bmp)
//   savefolder PATH   the save folder setting
//   marks FILE        append the saved mark of each capture (0 or 1, in order) to FILE
//   ticks FILE        append "X Y VALUE" for each capture's mail tick box to FILE: the
//                     screen pixel at its middle and its value (0 or 1)
//   waitfile PATH     run pending events until PATH (a Windows path) exists, 120 s at most
//   repeat N ... end  the lines between, N times (no nesting)
//   gui FILE          append the process's GDI and USER object counts, its handles and
//                     its working set in KB to FILE
//   helptext FILE     append the illustrated help's explanation, as it reads now, to FILE
//   mark FILE TEXT    append TEXT to FILE (a sign for the check that drives the run)
//   time FILE LABEL   append LABEL and the clock's seconds since midnight to FILE
#pragma once

namespace mv {

class App;
void RunTestDriver(App& app);

} // namespace mv
