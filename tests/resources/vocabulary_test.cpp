// The six vocabulary lists: they must parse, have the shape the start-up reads,
// and hold what completion, type resolution and the bundled runner rely on.
#include "resource_files.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <gtest/gtest.h>

using namespace resources_test;

namespace {

const QStringList kVocabularyFiles = {"type.plist",     "keyword.plist", "const.plist",
                                      "function.plist", "class.plist",   "object.plist"};

QStringList wordsOf(const QString& fileName) {
    QStringList words;
    for (const QVariant& value : vocabularyDictionary(fileName))
        words << value.toString();
    return words;
}

QSet<QString> lowerCased(const QStringList& words) {
    QSet<QString> set;
    for (const QString& w : words)
        set.insert(w.toLower());
    return set;
}

// Follows a dotted chain through class.plist the way completion does: the first
// segment is a class name, every further one a member whose record's element 2
// is the next type. Returns "" when a member is missing.
QString resolveChain(const QVariantMap& classes, const QString& startClass, const QString& chain) {
    QString type = startClass;
    for (const QString& member : chain.split(QLatin1Char('.'))) {
        const QVariantMap members = classes.value(type).toMap();
        if (!members.contains(member))
            return {};
        type = members.value(member).toList().value(2).toString();
    }
    return type;
}

} // namespace

TEST(Vocabulary, EveryListParsesWithADictionaryRootInSourceAndBuild) {
    for (const QString& folder : {sourceResources(), builtResources()}) {
        for (const QString& name : kVocabularyFiles) {
            const PropertyList list = readPropertyList(folder + "/" + name);
            EXPECT_TRUE(list.parsed) << qPrintable(folder + "/" + name);
            EXPECT_TRUE(list.dictionaryRoot) << qPrintable(folder + "/" + name);
            EXPECT_GT(list.root.toMap().size(), 5) << qPrintable(name);
        }
    }
}

TEST(Vocabulary, WordListsHoldDistinctSingleWordsInOneListEachWithTheCoreOfTheLanguage) {
    const QRegularExpression word(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    for (const QString& name : {QStringLiteral("type.plist"), QStringLiteral("keyword.plist"),
                                QStringLiteral("const.plist")}) {
        const QVariantMap dict = vocabularyDictionary(name);
        for (auto it = dict.cbegin(); it != dict.cend(); ++it) {
            // The start-up takes the values; they must be texts, not numbers or lists.
            EXPECT_EQ(it.value().typeId(), QMetaType::QString) << qPrintable(name + " " + it.key());
            EXPECT_TRUE(word.match(it.value().toString()).hasMatch()) << qPrintable(it.value().toString());
        }
        const QStringList words = wordsOf(name);
        EXPECT_EQ(lowerCased(words).size(), words.size()) << qPrintable(name) << " has a duplicate";
    }
    const QSet<QString> keywords = lowerCased(wordsOf("keyword.plist"));
    for (const char* k : {"Sub", "Function", "Action", "Event", "Dim", "Const", "Delegate", "IBOutlet",
                          "IBAction", "End", "Public", "Private", "If", "Then", "Else", "ElseIf", "For",
                          "To", "Step", "Next", "While", "Wend", "Do", "Loop", "Until", "Select", "Case",
                          "Return", "Exit", "And", "Or", "Not", "Xor", "Mod", "As", "New", "Nil", "True",
                          "False", "Me", "Super"})
        EXPECT_TRUE(keywords.contains(QString::fromLatin1(k).toLower())) << k;
    const QStringList types = wordsOf("type.plist");
    for (const char* t : {"Integer", "Double", "String", "Boolean", "Object", "NSObject", "Variant",
                          "Single", "Long", "Short", "Byte", "Date", "id"})
        EXPECT_TRUE(types.contains(QString::fromLatin1(t))) << t;
    const QStringList consts = wordsOf("const.plist");
    EXPECT_TRUE(consts.contains("NSOKButton"));
    EXPECT_TRUE(consts.contains("NSCancelButton"));

    // No word belongs to two lists, so colouring is unambiguous.
    const QSet<QString> lowerTypes = lowerCased(types);
    const QSet<QString> functions = lowerCased(vocabularyDictionary("function.plist").keys());
    EXPECT_TRUE(QSet<QString>(keywords).intersect(lowerTypes).isEmpty());
    EXPECT_TRUE(QSet<QString>(keywords).intersect(functions).isEmpty());
    EXPECT_TRUE(QSet<QString>(lowerTypes).intersect(functions).isEmpty());
    EXPECT_TRUE(lowerCased(consts).intersect(keywords + lowerTypes + functions).isEmpty());
}

TEST(Vocabulary, FunctionsCarryTheRunnersCompletionTextsExactly) {
    const QVariantMap functions = vocabularyDictionary("function.plist");
    const QList<QPair<QString, QString>> runner = {
        {"Len", "Len(text)"},         {"Left", "Left(text, count)"}, {"Right", "Right(text, count)"},
        {"Mid", "Mid(text, start, length)"}, {"InStr", "InStr(text, find)"}, {"UCase", "UCase(text)"},
        {"LCase", "LCase(text)"},     {"Trim", "Trim(text)"},        {"Str", "Str(number)"},
        {"Val", "Val(text)"},         {"Alert", "Alert(text)"},      {"MsgBox", "MsgBox(text)"},
        {"Print", "Print(text)"}};
    for (const auto& [name, completion] : runner)
        EXPECT_EQ(functions.value(name).toString(), completion) << qPrintable(name);
    for (const char* more : {"Abs", "Sqr", "Int", "Chr", "Asc", "Replace", "Split", "Now"})
        EXPECT_TRUE(functions.contains(QString::fromLatin1(more))) << more;

    // Completion keys the table by the lower-case name: two spellings of one
    // name would hide each other. Every text starts with the name as written.
    EXPECT_EQ(lowerCased(functions.keys()).size(), functions.size());
    const QRegularExpression call(QStringLiteral("^([A-Za-z][A-Za-z0-9]*)\\(([A-Za-z0-9]+(, [A-Za-z0-9]+)*)?\\)$"));
    for (auto it = functions.cbegin(); it != functions.cend(); ++it) {
        const auto match = call.match(it.value().toString());
        ASSERT_TRUE(match.hasMatch()) << qPrintable(it.key() + " -> " + it.value().toString());
        EXPECT_EQ(match.captured(1), it.key());
    }
}

TEST(Vocabulary, ClassMembersAreRecordsWhoseTypesAreKnownAndWhoseChainsResolve) {
    const QVariantMap classes = vocabularyDictionary("class.plist");
    const QVariantMap objects = vocabularyDictionary("object.plist");
    const QStringList types = wordsOf("type.plist");
    for (const char* c : {"NSString", "NSMutableString", "NSArray", "NSMutableArray", "NSDictionary",
                          "NSMutableDictionary", "NSNumber", "NSButton", "NSTextField", "NSWindow",
                          "NSView", "NSApplication", "NSTableView", "NSTimer", "NSColor", "NSImage",
                          "NSFileManager"})
        EXPECT_FALSE(classes.value(QString::fromLatin1(c)).toMap().isEmpty()) << c;
    for (const char* o : {"App", "Screen", "FileManager"})
        EXPECT_FALSE(objects.value(QString::fromLatin1(o)).toMap().isEmpty()) << o;

    int records = 0;
    for (const QVariantMap* table : {&classes, &objects}) {
        for (auto c = table->cbegin(); c != table->cend(); ++c) {
            ASSERT_EQ(c.value().typeId(), QMetaType::QVariantMap) << qPrintable(c.key());
            const QVariantMap members = c.value().toMap();
            for (auto m = members.cbegin(); m != members.cend(); ++m) {
                const QString where = c.key() + "." + m.key();
                ASSERT_EQ(m.value().typeId(), QMetaType::QVariantList) << qPrintable(where);
                const QVariantList record = m.value().toList();
                ASSERT_GE(record.size(), 3) << qPrintable(where);
                for (const QVariant& element : record)
                    EXPECT_EQ(element.typeId(), QMetaType::QString) << qPrintable(where);
                // Element 1 is what completion inserts: the member's name, maybe with parameters.
                const QString completion = record[1].toString();
                EXPECT_TRUE(completion == m.key() || completion.startsWith(m.key() + "("))
                    << qPrintable(where + " -> " + completion);
                // Element 2 is where a following "." continues.
                const QString type = record[2].toString();
                EXPECT_TRUE(classes.contains(type) || types.contains(type))
                    << qPrintable(where + " has the unknown type " + type);
                ++records;
            }
        }
    }
    EXPECT_GT(records, 500);

    // Member chains resolve through the library.
    EXPECT_EQ(resolveChain(classes, "NSWindow", "contentView.frame"), "NSRect");
    EXPECT_EQ(resolveChain(classes, "NSWindow", "contentView.frame.size.width"), "Double");
    EXPECT_EQ(resolveChain(classes, "NSApplication", "mainWindow.title.length"), "Integer");
    EXPECT_EQ(resolveChain(classes, "NSTableView", "window.screen.visibleFrame.origin.x"), "Double");
    EXPECT_EQ(resolveChain(classes, "NSMutableArray", "firstObject"), "id");
    EXPECT_EQ(resolveChain(classes, "NSString", "length"), "Integer");
    // A member that does not exist ends the chain.
    EXPECT_EQ(resolveChain(classes, "NSWindow", "contentView.nothing"), "");
    // Subclasses offer what their superclasses offer.
    for (const char* member : {"frame", "setHidden", "superview", "description"})
        EXPECT_TRUE(classes.value("NSButton").toMap().contains(member)) << member;
}
