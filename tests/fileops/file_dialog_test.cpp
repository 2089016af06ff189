// The file dialog in every mode, with the refusals that keep existing files whole.
#include "fileops_fixture.h"

#include <QComboBox>
#include <QLineEdit>
#include <optional>

namespace {
const QByteArray kGlobal = "\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n";
const QByteArray kB = "\nSub B()\nEnd Sub\n";
const QByteArray kTyped = "' typed, not yet saved\n";
using Files = QList<std::pair<QString, std::optional<QByteArray>>>; // nullopt: must not exist

struct FileCase {
    const char* label;
    const char* command;     // the command that opens the dialog
    const char* shown;       // the document shown when OK is pressed (typed into when it is b)
    const char* typed;       // what is typed into NewFileName ("" keeps what the dialog put there)
    const char* superClass;  // NewFileType2, for the free mode
    Files before;            // more files in the project folder
    const char* message;     // the message box shown, "" for none
    Files after;             // files checked afterwards (P/App holds the companions)
    QStringList projectFiles;
    QStringList projectTypes;
    QList<QStringList> maker;
    const char* shownAfter;
};

const QStringList kTail{"-o", "{P}/My Äpp.xcodeproj", "-p", "{P}"};
QStringList append(QStringList files) { return QStringList{"-append"} + files + kTail; }
QStringList removal(QStringList files) { return files + kTail; }
const QString kTaken = "A file named %1 already exists.";
const char* kInvalid = "File name contains invalid characters.";
const QStringList kBoth{"Global.NSObject.klvr", "b.NSView.klvr"};

const FileCase kCases[] = {
    {"NewViewCreatesFileCompanionsAndShowsIt", "NewFileView", "Global.NSObject.klvr", "c", "", {}, "",
     {{"c.NSView.klvr", ""}, {"My Äpp/c.mm", ""}, {"My Äpp/c.h", ""}},
     kBoth + QStringList{"c.NSView.klvr"}, {"b", "c"}, {append({"c.mm", "c.h"})}, "c.NSView.klvr"},
    {"TypedKlvrNameIsKept", "NewFileWindow", "Global.NSObject.klvr", "d.NSObject.klvr", "", {}, "",
     {{"d.NSObject.klvr", ""}, {"d.NSObject.klvr.NSWindow.klvr", std::nullopt}},
     kBoth + QStringList{"d.NSObject.klvr"}, {"b", "d"}, {append({"d.mm", "d.h"})}, "d.NSObject.klvr"},
    {"FreeModeUsesTypedSuperClass", "NewFileXYZ", "Global.NSObject.klvr", "  e  ", "NSTableView", {}, "",
     {{"e.NSTableView.klvr", ""}}, kBoth + QStringList{"e.NSTableView.klvr"}, {"b", "e"},
     {append({"e.mm", "e.h"})}, "e.NSTableView.klvr"},
    {"ExistingCompanionKeepsItsCode", "NewFileObject", "Global.NSObject.klvr", "f", "",
     {{"My Äpp/f.mm", "// mine"}}, "", {{"f.NSObject.klvr", ""}, {"My Äpp/f.mm", "// mine"}},
     kBoth + QStringList{"f.NSObject.klvr"}, {"b", "f"}, {append({"f.mm", "f.h"})}, "f.NSObject.klvr"},
    {"GlobalTypedIsRefused", "NewFileObject", "Global.NSObject.klvr", "x.Global.NSObject.klvr", "", {},
     "Global already there.", {{"Global.NSObject.klvr", kGlobal}}, kBoth, {"b"}, {}, "Global.NSObject.klvr"},
    {"NameCompletingToGlobalIsRefused", "NewFileObject", "Global.NSObject.klvr", "Global", "", {},
     "A file named Global.NSObject.klvr already exists.", {{"Global.NSObject.klvr", kGlobal}}, kBoth, {"b"}, {},
     "Global.NSObject.klvr"},
    {"ExistingNameIsRefused", "NewFileView", "b.NSView.klvr", "b", "", {},
     "A file named b.NSView.klvr already exists.", {{"b.NSView.klvr", kB}}, kBoth, {"b"}, {}, "b.NSView.klvr"},
    {"SlashIsRefused", "NewFileObject", "Global.NSObject.klvr", "../x", "", {}, kInvalid,
     {{"../x.NSObject.klvr", std::nullopt}}, kBoth, {"b"}, {}, "Global.NSObject.klvr"},
    {"ControlCharacterIsRefused", "NewFileObject", "Global.NSObject.klvr", "a\tb", "", {}, kInvalid, {}, kBoth,
     {"b"}, {}, "Global.NSObject.klvr"},
    {"BlankAndNonAsciiAreRefused", "NewFileXYZ", "Global.NSObject.klvr", "Äpfel", "NS View", {}, kInvalid, {},
     kBoth, {"b"}, {}, "Global.NSObject.klvr"},
    {"DeleteSavesThenTrashes", "NewFileDelete", "b.NSView.klvr", "", "", {}, "",
     {{"b.NSView.klvr", std::nullopt}, {"b.NSView.klvr.trash", kTyped + kB}, {"My Äpp/b.mm", ""}},
     {"Global.NSObject.klvr"}, {}, {removal({"b.mm", "b.h"})}, "Global.NSObject.klvr"},
    {"DeleteKeepsAnEarlierTrash", "NewFileDelete", "b.NSView.klvr", "", "", {{"b.NSView.klvr.trash", "older"}}, "",
     {{"b.NSView.klvr.trash", "older"}, {"b.NSView.klvr.2.trash", kTyped + kB}}, {"Global.NSObject.klvr"}, {},
     {removal({"b.mm", "b.h"})}, "Global.NSObject.klvr"},
    {"GlobalIsNotDeleted", "NewFileDelete", "Global.NSObject.klvr", "", "", {}, "Global must not be deleted.",
     {{"Global.NSObject.klvr", kGlobal}}, kBoth, {"b"}, {}, "Global.NSObject.klvr"},
    {"RenameMovesSavedTextAndDoesNotOpen", "NewFileRename", "b.NSView.klvr", "c", "", {}, "",
     {{"b.NSView.klvr", std::nullopt}, {"c.NSView.klvr", kTyped + kB}},
     {"Global.NSObject.klvr", "c.NSView.klvr"}, {"c"},
     {removal({"b.mm", "b.h"}), append({"c.mm", "c.h"})}, "Global.NSObject.klvr"},
    {"RenameAlwaysCompletes", "NewFileRename", "b.NSView.klvr", "c.NSView.klvr", "", {}, "",
     {{"c.NSView.klvr.NSView.klvr", kTyped + kB}}, {"Global.NSObject.klvr", "c.NSView.klvr.NSView.klvr"}, {"c"},
     {removal({"b.mm", "b.h"}), append({"c.mm", "c.h"})}, "Global.NSObject.klvr"},
    {"RenameOntoExistingNameIsRefused", "NewFileRename", "b.NSView.klvr", "c", "", {{"c.NSView.klvr", "theirs"}},
     "A file named c.NSView.klvr already exists.", {{"c.NSView.klvr", "theirs"}, {"b.NSView.klvr", kB}},
     kBoth + QStringList{"c.NSView.klvr"}, {"b", "c"}, {}, "b.NSView.klvr"},
    {"RenameLeavesTrashOfTheNewName", "NewFileRename", "b.NSView.klvr", "c", "",
     {{"c.NSView.klvr.trash", "older"}}, "", {{"c.NSView.klvr.trash", "older"}, {"c.NSView.klvr", kTyped + kB}},
     {"Global.NSObject.klvr", "c.NSView.klvr"}, {"c"}, {removal({"b.mm", "b.h"}), append({"c.mm", "c.h"})},
     "Global.NSObject.klvr"},
    {"GlobalIsNotRenamed", "NewFileRename", "Global.NSObject.klvr", "G2", "", {}, "Global must not be renamed.",
     {{"G2.NSObject.klvr", std::nullopt}}, kBoth, {"b"}, {}, "Global.NSObject.klvr"},
    {"DuplicateCopiesSavedTextAndIsNotOpened", "NewFileDuplicate", "b.NSView.klvr", "c", "", {}, "",
     {{"b.NSView.klvr", kTyped + kB}, {"c.NSView.klvr", kTyped + kB}}, kBoth + QStringList{"c.NSView.klvr"}, {"b"},
     {append({"c.mm", "c.h"})}, "b.NSView.klvr"},
    {"DuplicateOntoExistingNameIsRefused", "NewFileDuplicate", "b.NSView.klvr", "c", "",
     {{"c.NSView.klvr", "theirs"}}, "A file named c.NSView.klvr already exists.", {{"c.NSView.klvr", "theirs"}},
     kBoth + QStringList{"c.NSView.klvr"}, {"b", "c"}, {}, "b.NSView.klvr"},
};

// Test names and failures show the case by its label.
void PrintTo(const FileCase& c, std::ostream* os) { *os << c.label; }

class FileDialog : public FileOpsFixture, public ::testing::WithParamInterface<FileCase> {};
} // namespace

TEST_P(FileDialog, CarriesOutItsModeOrRefuses) {
    const FileCase& c = GetParam();
    Global& g = start();
    QList<std::pair<QString, QByteArray>> files{{"Global.NSObject.klvr", kGlobal}, {"b.NSView.klvr", kB}};
    for (const auto& [name, text] : c.before)
        files.append({name, *text});
    const QString p = makeProject("My Äpp", files);
    g.ProjectOpen(p);
    g.ProjectOpenCode(c.shown);
    if (QString(c.shown) == "b.NSView.klvr")
        g.mytextview()->insertAt(QString::fromUtf8(kTyped), 0, 0);
    const QStringList filesBefore = g.projectFiles;
    const auto treeBefore = treeOf(p);
    testPanels().clear();

    ASSERT_TRUE(klvrInvoke(&g, c.command, Value()));
    ASSERT_TRUE(g.NewFile && g.NewFile->isVisible());
    if (*c.typed)
        g.NewFileName->setText(QString::fromUtf8(c.typed));
    if (*c.superClass)
        g.NewFileType2->setText(QString::fromUtf8(c.superClass));
    g.NewFileOK();

    EXPECT_FALSE(g.NewFile->isVisible());
    const auto messages = testPanels().messages();
    if (*c.message) {
        ASSERT_EQ(messages.size(), 1u);
        EXPECT_EQ(messages[0].title, QString::fromUtf8(c.message));
        // A refusal changes nothing: not the lists, not the disk, not the typed text.
        EXPECT_EQ(g.projectFiles, filesBefore);
        EXPECT_EQ(treeOf(p), treeBefore);
    } else {
        EXPECT_TRUE(messages.empty()) << messages[0].title.toStdString();
    }
    for (const auto& [name, text] : c.after) {
        if (!text)
            EXPECT_FALSE(QFileInfo::exists(p + "/" + name)) << name.toStdString();
        else
            EXPECT_EQ(readFile(p + "/" + name), *text) << name.toStdString();
    }
    EXPECT_EQ(g.projectFiles, c.projectFiles);
    EXPECT_EQ(g.ProjectTypes, c.projectTypes);
    EXPECT_EQ(makerCalls(p), c.maker);
    EXPECT_EQ(g.ProjectCurrentFilename(), p + "/" + c.shownAfter);
    EXPECT_FALSE(g.documentView(p + "/b.NSView.klvr") && !QFileInfo::exists(p + "/b.NSView.klvr"))
        << "a document whose file was moved is still open";
    // The file selector lists what projectFiles lists.
    for (const QString& name : g.projectFiles.mid(1))
        EXPECT_GE(g.pubProject->findText(name), 0) << name.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Modes, FileDialog, ::testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.label); });

TEST_F(FileOpsFixture, RealProjectMakerAddsAndRemovesTheCompanions) {
    ASSERT_TRUE(QFile::remove(bundlePath() + "/Contents/MacOS/klvrmake"));
    ASSERT_TRUE(QFile::copy(KELVARO_APP_DIR "/Contents/MacOS/klvrmake", bundlePath() + "/Contents/MacOS/klvrmake"));
    Global& g = start();
    const QString p = makeProject("Real Äpp", {{"Global.NSObject.klvr", kGlobal}});
    g.ProjectOpen(p);
    const QString projectFile = p + "/Real Äpp.xcodeproj/project.pbxproj";
    g.NewFileView();
    g.NewFileName->setText("Gauge_2");
    g.NewFileOK();
    EXPECT_TRUE(readFile(projectFile).contains("Gauge_2.mm")) << readFile(projectFile).constData();
    g.NewFileDelete();
    g.NewFileOK();
    EXPECT_FALSE(readFile(projectFile).contains("Gauge_2.mm"));
    EXPECT_TRUE(QFileInfo::exists(p + "/Real Äpp/Gauge_2.mm")); // the companion stays on disk
}

TEST_F(FileOpsFixture, EachModeHasItsTitleAndFields) {
    struct Opening {
        const char* command;
        const char* title;
        const char* name;
        const char* type;     // nullptr: the field is hidden
        bool freeSuperClass;
    };
    const Opening openings[] = {
        {"NewFileObject", "New File (Super Class NSObject)", "", "NSObject", false},
        {"NewFileView", "New File (Super Class NSView)", "", "NSView", false},
        {"NewFileWindow", "New File (Super Class NSWindow)", "", "NSWindow", false},
        {"NewFileXYZ", "New File...", "", nullptr, true},
        {"NewFileDelete", "Delete File", "b.NSView.klvr", nullptr, false},
        {"NewFileRename", "Rename File b.NSView.klvr", "", nullptr, false},
        {"NewFileDuplicate", "Duplicate File b.NSView.klvr", "", nullptr, false},
    };
    Global& g = start();
    EXPECT_TRUE(klvrInvoke(&g, "NewFileObject", Value()));
    EXPECT_FALSE(g.NewFile) << "no dialog without a project";
    g.ProjectOpen(makeProject("App", {{"Global.NSObject.klvr", kGlobal}, {"b.NSView.klvr", kB}}));
    g.ProjectOpenCode("b.NSView.klvr");
    for (const Opening& o : openings) {
        SCOPED_TRACE(o.command);
        g.NewFileCancel();
        ASSERT_TRUE(klvrInvoke(&g, o.command, Value()));
        EXPECT_EQ(g.NewFile->windowTitle(), o.title);
        EXPECT_EQ(g.NewFileName->text(), o.name);
        EXPECT_EQ(g.NewFileType->isVisible(), o.type != nullptr);
        EXPECT_EQ(g.NewFileType->text(), o.type ? o.type : "") << "the field keeps or clears its text";
        EXPECT_EQ(g.NewFileType2->isVisible(), o.freeSuperClass);
        EXPECT_EQ(g.NewFileSuperClass2->isVisible(), o.freeSuperClass);
    }
    g.NewFileCancel();
    EXPECT_FALSE(g.NewFile->isVisible());
}
