// Programs of several classes run from real folders: objects, inheritance, Arrays and
// Dictionaries, exceptions, the built-in functions, and what stops them.
#include "tools/lang/objects.h"
#include "tools/lang/project.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <pthread.h>

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace {

using Files = std::map<std::string, std::string>;

struct Ran {
    QStringList output;
    std::string error;
    int line = 0;
    std::string file;
};

// Runs `work` on a thread with a stack as large as klvrrun gives a program, so that the
// runner's own nesting limits are what stops deep recursion (also in sanitizer builds,
// whose frames are larger).
void onLargeStack(const std::function<void()>& work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, std::size_t{1} << 30);
    pthread_t thread;
    auto body = [](void* w) -> void* {
        (*static_cast<const std::function<void()>*>(w))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, body, const_cast<std::function<void()>*>(&work)), 0);
    pthread_attr_destroy(&attributes);
    pthread_join(thread, nullptr);
}

// The heap belongs to the thread that runs the program: a collection budget other than
// the default, and the heap's statistics after the run, are taken there.
void writeFolder(const QTemporaryDir& dir, const Files& files) {
    for (const auto& [name, text] : files) {
        QFile file(dir.filePath(QString::fromStdString(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.data(), static_cast<qint64>(text.size()));
    }
}

Ran runFiles(const Files& files, std::size_t budget = 0, klvr::HeapStats* statsAfter = nullptr) {
    QTemporaryDir dir;
    writeFolder(dir, files);
    Ran ran;
    std::optional<klvr::Diagnostic> error;
    onLargeStack([&] {
        if (budget)
            klvr::setCollectionBudget(budget);
        error = klvr::runFolder(dir.path().toStdString(), 10000000, [&](const QString& line) { ran.output << line; });
        if (statsAfter)
            *statsAfter = klvr::heapStats();
    });
    if (error) {
        ran.error = error->message;
        ran.line = error->line;
        ran.file = error->file;
    }
    return ran;
}

std::string global(const std::string& body, const std::string& more = "") {
    return "\nEvent AwakeFromNib()\n" + body + "End Event\n" + more;
}

const std::string kCounter =
    "\nPublic Dim count As Integer = 10\nDim secret As Integer\n"
    "Public Sub Add(n As Integer)\n  count = count + n\nEnd Sub\n"
    "Public Function Twice() As Integer\n  Return Me.count * 2\nEnd Function\n"
    "Public Function Describe() As String\n  Return \"Counter \" & Twice()\nEnd Function\n";

struct ProgramCase {
    const char* name;
    Files files;
    std::string output;  // lines joined with "|"
    std::string error = "";
    int line = 0;
    std::string file = "";
};

void PrintTo(const ProgramCase& c, std::ostream* out) { *out << c.name; }

class Programs : public ::testing::TestWithParam<ProgramCase> {};

TEST_P(Programs, PrintAndFailAsWritten) {
    const ProgramCase& c = GetParam();
    const Ran ran = runFiles(c.files);
    EXPECT_EQ(ran.output.join('|').toStdString(), c.output);
    EXPECT_EQ(ran.error, c.error);
    if (!c.error.empty()) {
        EXPECT_EQ(ran.line, c.line);
        EXPECT_EQ(ran.file, c.file.empty() ? std::string("Global.NSObject.klvr") : c.file);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, Programs,
    ::testing::Values(
        ProgramCase{"ObjectsAreSharedByReference",
                    {{"Global.NSObject.klvr", global("  Dim a As New Counter\n  Dim b As Counter\n  Print(b Is Nil)\n"
                                                     "  b = a\n  b.Add(5)\n  a.Add 1\n  Print(a.count & \" \" & a.Twice() & \" \" & (a Is b))\n"
                                                     "  b = New Counter\n  b.count = \"7\"\n  Print(a.count & \" \" & b.count & \" \" & b.Describe())\n")},
                     {"Counter.NSObject.klvr", kCounter}},
                    "True|16 32 True|16 7 Counter 14"},
        ProgramCase{"SubclassInheritsAndOverrides",
                    {{"Global.NSObject.klvr", global("  Dim shapes As New Array\n  shapes.Append(New Shape)\n  shapes.Append(New Square)\n"
                                                     "  For Each s In shapes\n    Print(s.Describe())\n  Next\n")},
                     {"Shape.NSObject.klvr", "\nDim side As Integer = 2\nPublic Function Area() As Integer\n  Return 0\nEnd Function\n"
                                             "Public Function Describe() As String\n  Return \"area \" & Area()\nEnd Function\n"},
                     {"Square.Shape.klvr", "\nEvent Init()\n  side = 3\nEnd Event\nPublic Function Area() As Integer\n  Return side * side\nEnd Function\n"
                                           "Public Function Describe() As String\n  Return \"square, \" & Super.Describe()\nEnd Function\n"}},
                    "area 0|square, area 9"},
        ProgramCase{"GlobalPublicsAreSeenFromEveryClass",
                    {{"Global.NSObject.klvr", "\nPublic Dim log As New Array\nEvent AwakeFromNib()\n  Dim w As New Worker\n  w.Go()\n"
                                              "  Print(Join(log, \",\") & \" \" & Shout(\"x\"))\nEnd Event\n"
                                              "Public Function Shout(t As String) As String\n  Return UCase(t)\nEnd Function\n"},
                     {"Worker.NSObject.klvr", "\nPublic Sub Go()\n  log.Append(Shout(\"a\"))\n  log = log\n  log.Append(\"b\")\nEnd Sub\n"}},
                    "A,b X"},
        ProgramCase{"ForLoopCountsWithAField",
                    {{"Global.NSObject.klvr", "\nDim i As Integer\nEvent AwakeFromNib()\n  For i = 1 To 3\n    Show()\n  Next\n  Print(i)\nEnd Event\n"
                                              "Sub Show()\n  Print(\"i=\" & i)\nEnd Sub\n"}},
                    "i=1|i=2|i=3|4"},
        ProgramCase{"ArraysDictionariesAndTheirLibraryNames",
                    {{"Global.NSObject.klvr",
                      global("  Dim a As New Array\n  a.Append(\"b\")\n  a.addObject(\"c\")\n  a.Insert(0, \"a\")\n  a.insertObject(\"z\", 3)\n"
                             "  a.Remove(3)\n  a(1) = \"B\"\n  Print(a.Count & a.count & a.IndexOf(\"c\") & a.indexOfObject(\"q\") & a(1) & a.objectAtIndex(0))\n"
                             "  Dim d As New NSMutableDictionary\n  d(\"x\") = 1\n  d.setObject(2, \"y\")\n  d(3) = New Array\n  d(3.0).Append(a)\n"
                             "  Print(d.Count & d.HasKey(\"y\") & d.HasKey(\"q\") & d.objectForKey(\"y\") & d(3)(0)(2) & Join(d.Keys, \"\"))\n"
                             "  d.Remove(\"x\")\n  d.removeObjectForKey(\"nothing\")\n  For Each k In d\n    Print(k)\n  Next\n"
                             "  For Each k In New Array\n    Print(\"never\")\n  Next\n")}},
                    "332-1Ba|3TrueFalse2cxy3|y|3"},
        ProgramCase{"TryCatchFinallyAndRaisedErrors",
                    {{"Global.NSObject.klvr",
                      global("  Dim i As Integer\n  For i = 1 To 4\n    Try\n      Risky(i)\n      Print(\"ok\")\n    Catch e\n"
                             "      Print(i & \": \" & e.Message)\n    Finally\n      Print(\"f\" & i)\n    End Try\n  Next\n"
                             "  Try\n    Try\n      Throw \"inner\"\n    Finally\n      Print(\"cleanup\")\n    End Try\n  Catch e\n"
                             "    Print(\"outer got \" & e)\n  End Try\n",
                             "Sub Risky(n As Integer)\n  Dim a As New Array\n  Dim z As Integer\n  Select Case n\n  Case 1\n    Print(1 \\ z)\n"
                             "  Case 2\n    Print(a(0))\n  Case 3\n    Throw \"bad \" & n\n  End Select\nEnd Sub\n")}},
                    "1: Division by zero|f1|2: Index 0 out of range (the Array is empty)|f2|3: bad 3|f3|ok|f4|cleanup|outer got inner"},
        ProgramCase{"ErrorInCatchStillRunsFinally",
                    {{"Global.NSObject.klvr", global("  Try\n    Throw \"first\"\n  Catch e\n    Print(1 - \"x\")\n  Finally\n"
                                                     "    Print(\"finally\")\n  End Try\n")}},
                    "finally", "Type mismatch", 6},
        ProgramCase{"ErrorInsideFinallyReplacesTheFirst",
                    {{"Global.NSObject.klvr", global("  Try\n    Throw \"first\"\n  Finally\n    Dim d As New Dictionary\n    Print(d(\"k\"))\n  End Try\n")}},
                    "", "Key \"k\" not found", 7},
        ProgramCase{"UncaughtErrorNamesTheClassFile",
                    {{"Global.NSObject.klvr", global("  Dim q As New Queue\n  Print(q.Take())\n")},
                     {"Queue.NSObject.klvr", "\nDim items As New Array\nPublic Function Take()\n  Dim first = items(0)\n  Return first\nEnd Function\n"}},
                    "", "Index 0 out of range (the Array is empty)", 4, "Queue.NSObject.klvr"},
        ProgramCase{"EndlessRecursionThroughTwoClasses",
                    {{"Global.NSObject.klvr", global("  Dim p As New Ping\n  p.Go(New Pong)\n")},
                     {"Ping.NSObject.klvr", "\nPublic Sub Go(other)\n  other.Go(Me)\nEnd Sub\n"},
                     {"Pong.NSObject.klvr", "\nPublic Sub Go(other)\n  other.Go(Me)\nEnd Sub\n"}},
                    "", "Too many nested calls", 3, "Ping.NSObject.klvr"},
        ProgramCase{"ObjectWhoseStartValueMakesAnotherOfItsClass",
                    {{"Global.NSObject.klvr", global("  Dim n As New Node\n")}, {"Node.NSObject.klvr", "\nDim child As New Node\n"}},
                    "", "Too many nested calls", 2, "Node.NSObject.klvr"},
        ProgramCase{"PrivateMemberThroughAnUntypedVariable",
                    {{"Global.NSObject.klvr", global("  Dim c\n  c = New Counter\n  Print(c.secret)\n")}, {"Counter.NSObject.klvr", kCounter}},
                    "", "secret is Private in Counter", 5},
        ProgramCase{"MemberOfNil", {{"Global.NSObject.klvr", global("  Dim c As Counter\n  c.Add(1)\n")}, {"Counter.NSObject.klvr", kCounter}},
                    "", "Object is Nil", 4},
        ProgramCase{"ClassDerivingFromItself",
                    {{"Global.NSObject.klvr", global("")}, {"A.B.klvr", "\n"}, {"B.A.klvr", "\n"}},
                    "", "Class A derives from itself", 1, "A.B.klvr"},
        ProgramCase{"IntegerOverflow", {{"Global.NSObject.klvr", global("  Dim n As Integer = kMaxInteger\n  Print(n - 1)\n  Print(n + 1)\n")}},
                    "9223372036854775806", "Overflow", 5},
        ProgramCase{"BuiltinFunctions",
                    {{"Global.NSObject.klvr",
                      global("  Print(LTrim(\"  a \") & \"|\" & RTrim(\" a  \") & \"|\" & InStrRev(\"abcabc\", \"b\") & StrReverse(\"abc\") & Space(2) & Chr(65) & Asc(\"a\"))\n"
                             "  Print(Hex(255) & Oct(8) & Abs(-2.5) & Sqr(16) & Int(-2.5) & Fix(-2.5) & Round(2.567, 2) & Round(2.5) & Sgn(-3))\n"
                             "  Print(Min(3, 2) & Max(\"a\", \"b\") & CInt(\"12\") + 1 & CDbl(\"1.5\") & CBool(1) & CStr(7) & IsNumeric(\"4.5\") & IsNumeric(\"x\"))\n"
                             "  Print(IsNil(Nil) & IsArray(New Array) & UBound(Split(\"a b c\", \" \")) & LBound(New Array) & StrComp(\"a\", \"B\") & StrComp(\"a\", \"A\", False))\n"
                             "  Dim d = DateAdd(\"d\", 40, 43200)\n  Print(Year(d) & \"-\" & Month(d) & \" \" & DateDiff(\"d\", 43200, d) & \" \" & (Now() > d) & \" \" & Weekday(43200))\n"
                             "  Randomize(7)\n  Dim r = Rnd()\n  Randomize(7)\n  Print((r = Rnd()) & (r >= 0 And r < 1) & Replace(\"aXbX\", \"X\", \"-\") & Round(Exp(0) + Log(1) + Sin(0) + Cos(0) + Tan(0) + Atn(0)))\n")}},
                    "a | a|4cba  A97|FF102.54-3-22.573-1|2b131.5True7TrueFalse|TrueTrue2010|1970-2 40 True 5|TrueTruea-b-2"}),
    [](const ::testing::TestParamInfo<ProgramCase>& info) { return std::string(info.param.name); });

TEST(Programs, DeadCyclesAreCollectedWhileTheProgramRuns) {
    // 200,000 pairs of objects that refer to each other; only two are alive at a time.
    klvr::HeapStats stats;
    const Ran ran = runFiles({{"Global.NSObject.klvr", global("  Dim i As Integer\n  For i = 1 To 200000\n    Dim a As New Node\n"
                                                              "    Dim b As New Node\n    a.other = b\n    b.other = a\n    a.items.Append(b)\n  Next\n"
                                                              "  Print(\"done\")\n")},
                              {"Node.NSObject.klvr", "\nPublic Dim other\nPublic Dim items As New Array\n"}},
                             0, &stats);
    EXPECT_EQ(ran.error, "");
    EXPECT_EQ(ran.output, QStringList{"done"});
    EXPECT_EQ(stats.containers, 0u) << "everything is freed when the program ends";
    EXPECT_GT(stats.collections, 10u) << "the collector ran during the loop";
    EXPECT_EQ(stats.collectionBytes, 0u);
}

TEST(Programs, CollectionsBeyondTheMemoryBudgetStopWithOutOfMemory) {
    const Ran ran = runFiles({{"Global.NSObject.klvr", global("  Dim a As New Array\n  Dim d As New Dictionary\n  Try\n"
                                                              "    While True\n      a.Append(1)\n    Wend\n  Catch e\n    Print(\"caught\")\n  End Try\n"
                                                              "  Print(a.Count > 1000)\n  Dim i As Integer\n  For i = 1 To 100000000\n    d(i) = i\n  Next\n")}},
                             std::size_t{1} << 20);
    EXPECT_EQ(ran.output, (QStringList{"caught", "True"}));
    EXPECT_EQ(ran.error, "Out of memory");
    EXPECT_EQ(ran.line, 15);
}

TEST(Programs, LiveCyclesSurviveTheCollectionsAroundThem) {
    // Cycles held by a field, a local variable and a caught error stay whole while
    // 20,000 dead cycles around them are collected.
    const Ran ran = runFiles(
        {{"Global.NSObject.klvr",
          "\nPublic Dim keep As New Array\nEvent AwakeFromNib()\n  keep.Append(Pair(1))\n  Dim local = Pair(2)\n"
          "  Try\n    Throw Pair(3)\n  Catch e\n    Churn()\n    Print(keep(0).other.other.value & local.other.other.value & e.other.other.value)\n"
          "  End Try\nEnd Event\n"
          "Function Pair(v As Integer)\n  Dim a As New Node\n  Dim b As New Node\n  a.other = b\n  b.other = a\n  a.value = v\n  Return a\nEnd Function\n"
          "Sub Churn()\n  Dim i As Integer\n  For i = 1 To 20000\n    Pair(0)\n  Next\nEnd Sub\n"},
         {"Node.NSObject.klvr", "\nPublic Dim other\nPublic Dim value As Integer\n"}});
    EXPECT_EQ(ran.error, "");
    EXPECT_EQ(ran.output, QStringList{"123"});
}

TEST(Dictionaries, KeepInsertionOrderThroughRemovalsAndGrowth) {
    klvr::DictObj* dict = new klvr::DictObj;
    const klvr::Value holder = klvr::Value::ofObject(dict);
    const auto key = [](int i) { return klvr::Value::ofString(QString("k%1").arg(i)); };
    for (int i = 0; i < 1000; ++i)
        dict->set(key(i), klvr::Value::ofInteger(i));
    for (int i = 0; i < 1000; i += 3)
        EXPECT_TRUE(dict->remove(key(i)));
    EXPECT_FALSE(dict->remove(key(0))) << "already gone";
    dict->set(key(0), klvr::Value::ofInteger(-1));  // comes back at the end
    dict->set(klvr::Value::ofInteger(3), klvr::Value::ofInteger(30));
    dict->set(klvr::Value::ofDouble(3.0), klvr::Value::ofInteger(31));  // the same key as 3
    dict->set(klvr::Value(), klvr::Value::ofBoolean(true));
    EXPECT_EQ(dict->count(), 666u + 3);
    ASSERT_NE(dict->find(klvr::Value::ofInteger(3)), nullptr);
    EXPECT_EQ(dict->find(klvr::Value::ofInteger(3))->i, 31);
    EXPECT_EQ(dict->find(key(3)), nullptr);
    EXPECT_EQ(dict->find(key(4))->i, 4);
    EXPECT_EQ(dict->find(klvr::Value::ofString("k4.0")), nullptr);
    QStringList order;
    for (const auto& entry : dict->entries)
        if (entry.alive)
            order << klvr::textOf(entry.key);
    EXPECT_EQ(order.mid(0, 3), (QStringList{"k1", "k2", "k4"}));
    EXPECT_EQ(order.mid(order.size() - 3), (QStringList{"k0", "3", ""}));
    dict->removeAll();
    EXPECT_EQ(dict->count(), 0u);
    EXPECT_EQ(dict->find(key(1)), nullptr);
}

struct VisibilityCase {
    const char* name;
    Files files;
    std::string error;  // "" when the project is accepted
    int line = 0;
    std::string file = "Global.NSObject.klvr";
};

void PrintTo(const VisibilityCase& c, std::ostream* out) { *out << c.name; }

class Visibility : public ::testing::TestWithParam<VisibilityCase> {};

TEST_P(Visibility, PrivateMembersAreCheckedAcrossFiles) {
    const VisibilityCase& c = GetParam();
    QTemporaryDir dir;
    writeFolder(dir, c.files);
    const std::string folder = dir.path().toStdString();
    const klvr::Vocabulary vocabulary;
    const klvr::CheckSummary check = klvr::checkProject(folder, klvr::listSourceFiles(folder), vocabulary);
    EXPECT_EQ(check.error ? check.error->message : std::string(), c.error);
    if (check.error) {
        EXPECT_EQ(check.error->line, c.line);
        EXPECT_EQ(check.error->file, c.file);
    }
}

const std::string kBase = "\nDim hidden As Integer\nPublic Dim shown As Integer\nSub Secret()\nEnd Sub\nPublic Sub Open()\n  Me.Secret()\nEnd Sub\n";

INSTANTIATE_TEST_SUITE_P(
    Table, Visibility,
    ::testing::Values(
        VisibilityCase{"PublicMembersOfATypedVariable",
                       {{"Global.NSObject.klvr", global("  Dim b As New Base\n  b.shown = 1\n  b.Open()\n")}, {"Base.NSObject.klvr", kBase}}, ""},
        VisibilityCase{"PrivateFieldOfATypedVariable",
                       {{"Global.NSObject.klvr", global("  Dim b As New Base\n  b.shown = b.hidden\n")}, {"Base.NSObject.klvr", kBase}},
                       "hidden is Private in Base", 4},
        VisibilityCase{"PrivateMethodOfATypedParameter",
                       {{"Global.NSObject.klvr", global("", "Sub Use(b As Base)\n  b.Secret()\nEnd Sub\n")}, {"Base.NSObject.klvr", kBase}},
                       "Secret is Private in Base", 5},
        VisibilityCase{"SubclassUsesWhatItInherits",
                       {{"Global.NSObject.klvr", global("")}, {"Base.NSObject.klvr", kBase},
                        {"Derived.Base.klvr", "\nSub Touch(other As Base)\n  hidden = 2\n  Secret()\n  other.hidden = 3\nEnd Sub\n"}},
                       ""},
        VisibilityCase{"PrivateMemberOfGlobalIsUnknownElsewhere",
                       {{"Global.NSObject.klvr", "\nDim mine As Integer\nPublic Dim ours As Integer\n" + global("")},
                        {"Other.NSObject.klvr", "\nSub Use()\n  ours = 1\n  mine = 2\nEnd Sub\n"}},
                       "Unknown identifier mine", 4, "Other.NSObject.klvr"},
        VisibilityCase{"InheritanceCycle",
                       {{"Global.NSObject.klvr", global("")}, {"A.B.klvr", "\n"}, {"B.C.klvr", "\n"}, {"C.A.klvr", "\n"}},
                       "Class A derives from itself", 1, "A.B.klvr"}),
    [](const ::testing::TestParamInfo<VisibilityCase>& info) { return std::string(info.param.name); });

}  // namespace
