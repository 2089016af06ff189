#pragma once
// A hook for the crash-recovery test, which starts the real IDE, lets it type and kills
// it at random moments. With the environment variable KELVARO_TEST_TYPE naming a file,
// the IDE answers questions with "Restore" (messages go to standard error), and after
// the start-up types that file's text into the shown document the way a person does
// (key presses), from where the document's text stops being a beginning of it. On
// standard output it reports
//   document SIZE SHA1     the shown document's bytes once the start-up is done
//   journaled SIZE         each copy the recovery journal has written
//   mismatch               the document is not a beginning of the text (nothing typed)
// KELVARO_TEST_TYPE_TIMING="INTERVAL,BURST,PAUSE" (milliseconds, characters,
// milliseconds; default 5,30,1100) types BURST characters INTERVAL apart, then pauses.

class Global;

namespace typing_hook {
bool requested();
// Before the start-up: the answering panels.
void install();
// After the start-up: the reports and the typing.
void start(Global* global);
} // namespace typing_hook
