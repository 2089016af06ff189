#pragma once
// `kelvaro --build PROJECT` and `kelvaro --run PROJECT`: the window's own build (and
// run) of the project that the start-up opened, without a display. Prints every
// status-line text as it is shown ("status: " + text), then the compiler log, a
// compiler error as "FILE:LINE: error: MESSAGE", and for a run the run log.

class Global;

// Returns the exit status: 0 when the build succeeded without a compiler error and,
// with `run`, the program ran and exited with 0; else 1.
int runBatchBuild(Global* global, bool run);
