// Boxed values, operators and collections.
#include "frame/runtime.h"

#include "support/test_environment.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(RuntimeOperators, AddConcatenatesWhenEitherSideIsText) {
    EXPECT_EQ(KLVR_ADD("", 3).toString(), QStringLiteral("3"));
    EXPECT_TRUE(KLVR_ADD("", 3).isString());
    EXPECT_EQ(KLVR_ADD(2, "x").toString(), QStringLiteral("2x"));
    EXPECT_EQ(KLVR_ADD(2, 3).toInteger(), 5);
    EXPECT_TRUE(KLVR_ADD(2, 3).isInteger());
    EXPECT_DOUBLE_EQ(KLVR_ADD(2, 0.5).toDouble(), 2.5);
    Value both = KLVR_ADD(Value(QStringList{"a"}), Value(QStringList{"b", "c"}));
    EXPECT_EQ(both.toStringList(), (QStringList{"a", "b", "c"}));
    EXPECT_EQ(KLVR_CONCAT(1, 2).toString(), QStringLiteral("12"));
}

TEST(RuntimeOperators, LogicIsBitwiseOnIntegersAndLogicalOnBooleans) {
    EXPECT_EQ(KLVR_OR(2, 16).toInteger(), 18);
    EXPECT_EQ(KLVR_AND(6, 3).toInteger(), 2);
    EXPECT_TRUE(KLVR_OR(false, true).toBool());
    EXPECT_TRUE(KLVR_OR(false, true).isBoolean());
    EXPECT_FALSE(KLVR_AND(true, false).toBool());
    EXPECT_TRUE(KLVR_NOT(0).toBool());
    EXPECT_FALSE(KLVR_NOT(7).toBool());
    EXPECT_TRUE(KLVR_NOT(KLVR_LEN("")).toBool());
    EXPECT_FALSE(KLVR_CBOOL(KLVR_LEN("")));
    EXPECT_TRUE(KLVR_CBOOL(-1));
    EXPECT_TRUE(KLVR_ANDALSO(true, 1));
}

TEST(RuntimeOperators, ArithmeticAndComparisons) {
    EXPECT_EQ(KLVR_MINUS(1).toInteger(), -1);
    EXPECT_EQ(KLVR_SUB(10, 4).toInteger(), 6);
    EXPECT_EQ(KLVR_MUL(6, 7).toInteger(), 42);
    EXPECT_EQ(KLVR_DIV(15, 2).toInteger(), 7);
    EXPECT_DOUBLE_EQ(KLVR_DIV(15.0, 2).toDouble(), 7.5);
    try {
        KLVR_DIV(1, 0);
        ADD_FAILURE() << "division by zero did not raise";
    } catch (const KLException& e) {
        EXPECT_EQ(e.name(), QStringLiteral("KLArithmeticException"));
    }
    EXPECT_TRUE(KLVR_EQUAL("abc", "abc"));
    EXPECT_FALSE(KLVR_EQUAL("abc", "ABC"));
    EXPECT_TRUE(KLVR_EQUAL(2, 2.0));
    EXPECT_TRUE(KLVR_UNEQUAL("x", KLVR_IDNIL()));
    EXPECT_FALSE(KLVR_UNEQUAL(KLVR_IDNIL(), KLVR_IDNIL()));
    EXPECT_TRUE(KLVR_SMALLER(2, 10));
    EXPECT_TRUE(KLVR_SMALLER("B", "a")); // exact comparison: capitals first
    EXPECT_TRUE(KLVR_GREATER(3.5, 3));
    EXPECT_TRUE(KLVR_SMALLEREQUAL(3, 3));
    QObject a, b;
    EXPECT_TRUE(KLVR_EQUAL(&a, &a));
    EXPECT_FALSE(KLVR_EQUAL(&a, &b));
}

TEST(RuntimeConversions, IntegersBooleansAndTextForms) {
    EXPECT_EQ(KLVR_INTEGER("42"), 42);
    EXPECT_EQ(KLVR_INTEGER(" 17 "), 17);
    EXPECT_EQ(KLVR_INTEGER("forty"), 0);
    EXPECT_EQ(KLVR_INTEGER(3.9), 3);
    EXPECT_TRUE(KLVR_BOOLEAN(1));
    EXPECT_FALSE(KLVR_BOOLEAN(0));
    EXPECT_EQ(KLVR_STRING(Value::bytes("h\xc3\xa9")), QStringLiteral("hé"));
    EXPECT_EQ(KLVR_STRING(Value(true)), QStringLiteral("true"));
    EXPECT_EQ(KLVR_STRING(Value(2.5)), QStringLiteral("2.5"));
    EXPECT_EQ(KLVR_STRING(Value()), QString());
    QObject named;
    named.setObjectName("thing");
    EXPECT_TRUE(KLVR_INFO(Value(&named)).contains("QObject"));
    EXPECT_EQ(KLVR_CLASSNAME(&named), QStringLiteral("QObject"));
}

TEST(RuntimeCollections, ArraysAreSharedAndIndexedFromZero) {
    Value list = Value::array();
    Value alias = list;
    KLVR_NSMUTABLEARRAY_APPEND(list, "b");
    KLVR_NSMUTABLEARRAY_INSERT(list, "a", 0);
    KLVR_NSMUTABLEARRAY_APPEND(list, "c");
    KLVR_NSMUTABLEARRAY_APPEND(list, "a");
    EXPECT_EQ(KLVR_NSARRAY_COUNT(alias), 4); // the same array through both values
    EXPECT_EQ(KLVR_NSARRAY_OBJECT(alias, 0).toString(), QStringLiteral("a"));
    KLVR_NSMUTABLEARRAY_REMOVEOBJECT(list, "a");
    EXPECT_EQ(list.toStringList(), (QStringList{"b", "c"}));
    KLVR_NSMUTABLEARRAY_REMOVE(list, 0);
    KLVR_NSMUTABLEARRAY_REMOVE(list, 7); // out of range: nothing happens
    EXPECT_EQ(list.toStringList(), (QStringList{"c"}));
    EXPECT_THROW(KLVR_NSARRAY_OBJECT(list, 1), KLException);
    KLVR_NSMUTABLEARRAY_REMOVEALL(list);
    EXPECT_EQ(KLVR_NSARRAY_COUNT(alias), 0);
}

TEST(RuntimeCollections, DictionariesKeepInsertionOrderAndAppendKeepsTheFirstValue) {
    Value d = Value::dictionary();
    KLVR_NSMUTABLEDICTIONARY_REPLACE(d, "b", 1);
    KLVR_NSMUTABLEDICTIONARY_REPLACE(d, "a", 2);
    KLVR_NSMUTABLEDICTIONARY_APPEND(d, "b", 99);
    EXPECT_EQ(KLVR_NSDICTIONARY_OBJECT(d, "b").toInteger(), 1);
    KLVR_NSMUTABLEDICTIONARY_REPLACE(d, "b", 3);
    EXPECT_EQ(KLVR_NSDICTIONARY_OBJECT(d, "b").toInteger(), 3);
    EXPECT_EQ(KLVR_NSMUTABLEDICTIONARY_KEY(d, 0).toString(), QStringLiteral("b"));
    EXPECT_EQ(KLVR_NSMUTABLEDICTIONARY_VALUE(d, 1).toInteger(), 2);
    EXPECT_EQ(KLVR_NSMUTABLEDICTIONARY_OBJECT(d, 1).toInteger(), 2); // by position
    EXPECT_EQ(KLVR_NSMUTABLEDICTIONARY_OBJECT(d, "a").toInteger(), 2); // by key
    EXPECT_TRUE(KLVR_NSMUTABLEDICTIONARY_OBJECT(d, "zz").isNil());
    EXPECT_TRUE(KLVR_NSMUTABLEDICTIONARY_KEY(d, 5).isNil());
    KLVR_NSMUTABLEDICTIONARY_REMOVE(d, "b");
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(d), 1);
    EXPECT_EQ(KLVR_NSMUTABLEDICTIONARY_KEY(d, 0).toString(), QStringLiteral("a"));
    EXPECT_TRUE(KLVR_NSMUTABLEDICTIONARY_CONTAINS(d, "a"));
    KLVR_NSMUTABLEDICTIONARY_REMOVEALL(d);
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(d), 0);
}

TEST(RuntimeCollections, PropertyListsReadXmlAndSurviveGarbage) {
    QTemporaryDir dir;
    const QString good = writeFile(dir.filePath("good.plist"), R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0"><dict>
<key>z</key><string>last letter</string>
<key>NSString</key><dict><key>length</key><array><string>x</string><string>length</string><string>Integer</string></array></dict>
<key>n</key><integer>7</integer><key>t</key><true/>
</dict></plist>)");
    Value root = KLVR_PLIST(good);
    ASSERT_TRUE(root.isDictionary());
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(root), 4);
    EXPECT_EQ(KLVR_NSMUTABLEDICTIONARY_KEY(root, 0).toString(), QStringLiteral("z")); // file order
    Value member = KLVR_NSDICTIONARY_OBJECT(KLVR_NSDICTIONARY_OBJECT(root, "NSString"), "length");
    EXPECT_EQ(member.toStringList(), (QStringList{"x", "length", "Integer"}));
    EXPECT_EQ(KLVR_STRING(KLVR_NSDICTIONARY_OBJECT(root, "n")), QStringLiteral("7"));
    EXPECT_EQ(KLVR_STRING(KLVR_NSDICTIONARY_OBJECT(root, "t")), QStringLiteral("true"));

    const QString garbage = writeFile(dir.filePath("bad.plist"), "\x00\x01<plist><dict><key>a</key>");
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(KLVR_PLIST(garbage)), 0);
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(KLVR_PLIST(dir.filePath("missing.plist"))), 0);

    const QString array = writeFile(dir.filePath("array.plist"),
                                    "<?xml version=\"1.0\"?><plist version=\"1.0\"><array><string>a</string></array></plist>");
    Value notADictionary = KLVR_PLIST(array);
    EXPECT_TRUE(notADictionary.isArray());
    try {
        KLVR__DICTIONARY(notADictionary);
        ADD_FAILURE() << "the cast did not raise";
    } catch (const KLException& e) {
        EXPECT_EQ(e.name(), QStringLiteral("KLCastException"));
        EXPECT_EQ(e.reason(), QStringLiteral("'Dictionary' expected"));
    }
}

TEST(RuntimeFiles, StringAndArrayFilesRoundTripAndMissingFilesAreNull) {
    QTemporaryDir dir;
    const QString text = dir.filePath("a b/'q\"uote'.txt");
    EXPECT_FALSE(KLVR_WRITESTRING("x", text)); // the folder does not exist
    ASSERT_TRUE(KLVR_NSFILEMANAGER_CREATEDIRECTORY(dir.filePath("a b")));
    EXPECT_TRUE(KLVR_WRITESTRING(QStringLiteral("/Users/me/Hello ä"), text));
    EXPECT_EQ(KLVR_READSTRING(text), QStringLiteral("/Users/me/Hello ä"));
    EXPECT_TRUE(KLVR_READSTRING(dir.filePath("none")).isNull());
    writeFile(dir.filePath("empty"), "");
    EXPECT_FALSE(KLVR_READSTRING(dir.filePath("empty")).isNull());
    EXPECT_EQ(KLVR_LEN(KLVR_READSTRING(dir.filePath("empty"))), 0);

    const QStringList projects{"/p/one", "/p/with\nnewline", "/p/ä"};
    EXPECT_TRUE(KLVR_WRITEARRAY(projects, dir.filePath("list")));
    EXPECT_EQ(KLVR_READARRAY(dir.filePath("list")), projects);
    writeFile(dir.filePath("junk"), "not json at all");
    EXPECT_TRUE(KLVR_READARRAY(dir.filePath("junk")).isEmpty());
}

TEST(RuntimeFiles, CopiesAndMovesNeverOverwrite) {
    QTemporaryDir dir;
    writeFile(dir.filePath("a.klvr"), "A");
    writeFile(dir.filePath("b.klvr"), "B");
    EXPECT_FALSE(KLVR_FILE_MOVE(dir.filePath("a.klvr"), dir.filePath("b.klvr")));
    EXPECT_EQ(readFile(dir.filePath("b.klvr")), QByteArray("B"));
    EXPECT_TRUE(KLVR_FILE_MOVE(dir.filePath("a.klvr"), dir.filePath("a.klvr.trash")));
    EXPECT_FALSE(KLVR_FILE_CREATEFILE(dir.filePath("b.klvr")));
    EXPECT_EQ(readFile(dir.filePath("b.klvr")), QByteArray("B"));
    writeFile(dir.filePath("tree/sub/x"), "X");
    EXPECT_TRUE(KLVR_NSFILEMANAGER_COPY(dir.filePath("tree"), dir.filePath("copy")));
    EXPECT_EQ(readFile(dir.filePath("copy/sub/x")), QByteArray("X"));
    EXPECT_FALSE(KLVR_NSFILEMANAGER_COPY(dir.filePath("tree"), dir.filePath("copy")));
    EXPECT_TRUE(KLVR_NSFILEMANAGER_DELETE(dir.filePath("copy")));
    EXPECT_FALSE(KLVR_NSFILEMANAGER_EXISTSFILE(dir.filePath("copy")));
    EXPECT_FALSE(KLVR_NSFILEMANAGER_LIST(dir.filePath("nowhere")).has_value());
    EXPECT_EQ(*KLVR_NSFILEMANAGER_LIST(dir.path()), (QStringList{"a.klvr.trash", "b.klvr", "tree"}));
}
