// The IDE as a shared library: the executable loads it for everything that shows a
// window, so the commands that only print start with Qt Core alone.
#include "frame/application_main.h"

extern "C" __attribute__((visibility("default"))) int kelvaroIdeMain(int argc, char** argv) {
    return kelvaroMain(argc, argv);
}
