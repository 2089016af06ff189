// The main of every test executable: a real KLVR_Application on the offscreen
// platform, a temporary HOME, and the scripted panels installed, so that no test
// depends on the user's settings or blocks on a dialog.
#include "support/test_environment.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    KelvaroTestEnvironment environment(argc, argv);
    return RUN_ALL_TESTS();
}
