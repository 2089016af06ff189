// The thin executable: hands the command line to the core library.
#include "frame/application_main.h"

int main(int argc, char** argv) { return kelvaroMain(argc, argv); }
