#pragma once
// The whole of main(): command-line commands that need no window, then the IDE.
int kelvaroMain(int argc, char** argv);
