// The shipped vocabulary read by the application controller itself, the way the
// start-up reads it: the tables that colouring, completion and type resolution use.
#include "resource_files.h"

#include "frame/global.h"
#include "support/test_environment.h"

#include <gtest/gtest.h>

#include <memory>

using namespace resources_test;

TEST(VocabularyLoading, TheShippedListsFillEveryTableWithoutAFailure) {
    KelvaroTestEnvironment::instance().reset();
    auto global = std::make_unique<Global>();
    global->loadVocabulary(builtResources());
    EXPECT_TRUE(testPanels().messages().empty()) << "a list failed to load";

    EXPECT_TRUE(global->KelvaroKeywords.contains("Sub"));
    EXPECT_TRUE(global->KelvaroKeywords.contains("Wend"));
    EXPECT_TRUE(global->KelvaroTypes.contains("Integer"));
    EXPECT_TRUE(global->KelvaroConsts.contains("NSOKButton"));
    EXPECT_TRUE(global->KelvaroCommands.contains("MsgBox"));
    EXPECT_EQ(KLVR_STRING(KLVR_NSDICTIONARY_OBJECT(global->dCompletion2function, Value(QStringLiteral("msgbox")))),
              QStringLiteral("MsgBox(text)"));
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(global->dCompletion2function), global->KelvaroCommands.size())
        << "two functions share a lower-case name";

    // NSString's length: completion text "length", type Integer.
    const Value string = KLVR_NSDICTIONARY_OBJECT(global->dClassCompletion, Value(QStringLiteral("NSString")));
    const Value length = KLVR_NSDICTIONARY_OBJECT(string, Value(QStringLiteral("length")));
    ASSERT_GE(KLVR_NSARRAY_COUNT(length), 3);
    EXPECT_EQ(KLVR_STRING(KLVR_NSARRAY_OBJECT(length, 1)), QStringLiteral("length"));
    EXPECT_EQ(KLVR_STRING(KLVR_NSARRAY_OBJECT(length, 2)), QStringLiteral("Integer"));
    // A predefined object offers its members.
    const Value app = KLVR_NSDICTIONARY_OBJECT(global->dObjectCompletion, Value(QStringLiteral("App")));
    EXPECT_GT(KLVR_NSDICTIONARY_COUNT(app), 5);
}
