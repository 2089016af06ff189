// The example projects of the Examples menu: each must be a valid project
// folder, keep to what the bundled runner carries out, and (when the toolchain
// is built) build and print what its code computes.
#include "resource_files.h"
#include "support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace resources_test;

namespace {

const QString kNewProjectGlobal = QStringLiteral("\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n");

QStringList exampleProjects(const QString& resources) {
    return QDir(resources + "/Examples").entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

QStringList sourceFiles(const QString& project) {
    return QDir(project).entryList({"*.klvr"}, QDir::Files, QDir::Name);
}

bool wellFormedXml(const QByteArray& bytes, QString* rootName) {
    QXmlStreamReader xml(bytes);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && rootName->isEmpty())
            *rootName = xml.name().toString();
    }
    return !xml.hasError();
}

// A source line without its comment and with every string literal emptied, so
// that words inside texts are not taken for code.
QString codeOf(const QString& line) {
    QString code;
    bool inString = false;
    for (const QChar c : line) {
        if (c == QLatin1Char('"')) {
            inString = !inString;
            code += c;
        } else if (inString) {
            continue;
        } else if (c == QLatin1Char('\'')) {
            break;
        } else {
            code += c;
        }
    }
    return code.trimmed();
}

// What one example source uses, found line by line.
struct SourceReport {
    QStringList problems;
    QSet<QString> words; // lower-case identifiers used in code
    QSet<QString> declared; // lower-case names the file declares
};

const QRegularExpression kMethodStart(
    QStringLiteral("^(?:(?:Public|Private) )?(Sub|Function|Event|Action|Delegate|IBAction) (\\w+)\\(([^)]*)\\)"),
    QRegularExpression::CaseInsensitiveOption);
const QRegularExpression kDimOrConst(QStringLiteral("^(?:(?:Public|Private) )?(Dim|Const|IBOutlet) (\\w+)(?: As (?:New )?(\\w+))?"),
                                     QRegularExpression::CaseInsensitiveOption);
// Variables a loop or a Catch part declares.
const QRegularExpression kLoopOrCatch(QStringLiteral("^(?:For Each|Catch) (\\w+)"), QRegularExpression::CaseInsensitiveOption);

// Checks that every block is closed by its own line, that declarations do not
// nest, and that only declarations stand outside methods. `classes` are the
// project's classes, which are types besides the runner's own.
SourceReport examineSource(const QString& text, const QStringList& classes = {}) {
    SourceReport report;
    QStringList open; // the block kinds entered, innermost last
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QString where = QStringLiteral("line %1: ").arg(i + 1);
        const QString code = codeOf(lines[i]);
        if (code.isEmpty())
            continue;
        static const QRegularExpression identifier(QStringLiteral("[A-Za-z_]\\w*"));
        for (auto it = identifier.globalMatch(QString(code).remove(QRegularExpression("\"\""))); it.hasNext();)
            report.words.insert(it.next().captured().toLower());

        if (const auto m = kMethodStart.match(code); m.hasMatch()) {
            if (!open.isEmpty())
                report.problems << where + "declaration inside " + open.last();
            open << m.captured(1).toLower();
            report.declared.insert(m.captured(2).toLower());
            for (const QString& parameter : m.captured(3).split(',', Qt::SkipEmptyParts))
                report.declared.insert(parameter.trimmed().section(' ', 0, 0).toLower());
            continue;
        }
        if (const auto m = kDimOrConst.match(code); m.hasMatch()) {
            report.declared.insert(m.captured(2).toLower());
            const QString type = m.captured(3);
            if (!type.isEmpty() && !QStringList{"Integer", "Double", "String", "Boolean", "Array", "Dictionary"}.contains(type) &&
                !classes.contains(type))
                report.problems << where + "type " + type + " is not one the runner knows";
            continue;
        }
        if (const auto m = kLoopOrCatch.match(code); m.hasMatch())
            report.declared.insert(m.captured(1).toLower());
        if (open.isEmpty()) {
            report.problems << where + "statement outside a method: " + code;
            continue;
        }
        const QString lower = code.toLower();
        const auto close = [&](const QString& kind) {
            if (open.isEmpty() || open.last() != kind)
                report.problems << where + "\"" + code + "\" closes " + (open.isEmpty() ? "nothing" : open.last());
            else
                open.removeLast();
        };
        if (lower.startsWith("end ")) {
            close(lower.mid(4).trimmed());
        } else if (lower == "next" || lower.startsWith("next ")) {
            close("for");
        } else if (lower == "wend") {
            close("while");
        } else if (lower.startsWith("for ")) {
            open << "for";
        } else if (lower.startsWith("while ")) {
            open << "while";
        } else if (lower == "try") {
            open << "try";
        } else if (lower.startsWith("if ") && lower.endsWith(" then")) {
            open << "if";
        } else if (lower == "else" || lower.startsWith("else if ") || lower.startsWith("elseif ")) {
            if (open.isEmpty() || open.last() != "if")
                report.problems << where + "Else outside an If";
        }
    }
    if (!open.isEmpty())
        report.problems << "blocks left open at the end: " + open.join(", ");
    return report;
}

// Runs a program to its end and gives its exit code and output.
struct Finished {
    int exitCode = -1;
    QString out;
    QString err;
};

Finished run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    Finished result;
    if (!process.waitForStarted(10000) || !process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        result.err = "did not run to its end: " + program;
        return result;
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

bool copyFolder(const QString& from, const QString& to) {
    if (!QDir().mkpath(to))
        return false;
    const QDir source(from);
    for (const QFileInfo& entry : source.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden)) {
        const QString target = to + "/" + entry.fileName();
        if (entry.isDir() ? !copyFolder(entry.filePath(), target) : !QFile::copy(entry.filePath(), target))
            return false;
    }
    return true;
}

} // namespace

TEST(ExampleProjects, EveryExampleIsAValidProjectFolderInSourceAndBuild) {
    const QStringList examples = exampleProjects(sourceResources());
    for (const char* required : {"Hello", "Fibonacci", "TextTools", "Inventory", "Stacks"})
        EXPECT_TRUE(examples.contains(QString::fromLatin1(required))) << required;
    EXPECT_EQ(exampleProjects(builtResources()), examples) << "the build copies every example";

    const QByteArray emptyXib = readFile(sourceResources() + "/Empty.xib");
    QString root;
    EXPECT_TRUE(wellFormedXml(emptyXib, &root));
    EXPECT_EQ(root, "document");

    const QRegularExpression naming(QStringLiteral("^[A-Za-z_]\\w*\\.[A-Za-z_]\\w*\\.klvr$"));
    for (const QString& folder : {sourceResources(), builtResources()}) {
        for (const QString& name : examples) {
            const QString project = folder + "/Examples/" + name;
            SCOPED_TRACE(project.toStdString());
            // What makes a folder a project, and what a new project holds besides.
            EXPECT_TRUE(QFileInfo(project + "/Global.NSObject.klvr").isFile());
            EXPECT_EQ(readFile(project + "/en.lproj/MainMenu.xib"), emptyXib);
            EXPECT_TRUE(QFileInfo(project + "/" + name + "/Resources").isDir());
            for (const QString& file : sourceFiles(project))
                EXPECT_TRUE(naming.match(file).hasMatch()) << file.toStdString();
            // Build output in the sources would be shipped with every copy; the
            // application's copy may hold some once a user has run an example.
            if (folder == sourceResources()) {
                EXPECT_FALSE(QFileInfo(project + "/build").exists()) << "build output in the sources";
            }
        }
    }
    EXPECT_EQ(QString::fromUtf8(readFile(sourceResources() + "/Examples/Hello/Global.NSObject.klvr")),
              kNewProjectGlobal);
    EXPECT_GE(sourceFiles(sourceResources() + "/Examples/TextTools").size(), 2)
        << "TextTools shows a project of several classes";
}

TEST(ExampleProjects, SourcesKeepToTheLanguageCoreTheRunnerCarriesOut) {
    // The runner's words: statements, types, objects, collections and their members,
    // exceptions, and the built-in functions the examples use.
    const QSet<QString> runnerWords = {
        "sub", "function", "event", "end", "public", "private", "dim", "const", "as", "if", "then",
        "else", "elseif", "for", "to", "step", "next", "while", "wend", "return", "and", "or", "not",
        "mod", "true", "false", "integer", "double", "string", "boolean", "len", "left", "right",
        "mid", "instr", "ucase", "lcase", "trim", "str", "val", "alert", "msgbox", "print", "new",
        "nil", "me", "is", "each", "in", "try", "catch", "finally", "throw", "array", "dictionary",
        "append", "remove", "count", "haskey", "keys", "message", "round", "join", "init"};
    for (const QString& name : exampleProjects(sourceResources())) {
        const QString project = sourceResources() + "/Examples/" + name;
        // A member of one class is used through objects in the others.
        QStringList classes;
        QSet<QString> declared;
        for (const QString& file : sourceFiles(project)) {
            classes << file.section('.', 0, 0);
            declared.insert(file.section('.', 0, 0).toLower());
            declared.unite(examineSource(QString::fromUtf8(readFile(project + "/" + file)), classes).declared);
        }
        for (const QString& file : sourceFiles(project)) {
            SCOPED_TRACE((name + "/" + file).toStdString());
            const QString text = QString::fromUtf8(readFile(project + "/" + file));
            // A declaration on the first line would be missing from the navigators.
            EXPECT_TRUE(text.startsWith('\n'));
            EXPECT_TRUE(text.endsWith('\n'));
            EXPECT_FALSE(text.contains('\r'));
            const SourceReport report = examineSource(text, classes);
            EXPECT_TRUE(report.problems.isEmpty()) << report.problems.join("\n").toStdString();
            for (const QString& word : report.words)
                EXPECT_TRUE(runnerWords.contains(word) || declared.contains(word))
                    << word.toStdString() << " is neither declared nor known to the runner";
            if (file == "Global.NSObject.klvr") {
                EXPECT_TRUE(text.contains("\nEvent AwakeFromNib()\n"));
            }
        }
    }
}

TEST(ExampleProjects, TheStructureCheckItselfSeesBrokenSources) {
    // The examination above is only worth something if it rejects bad code.
    for (const char* broken : {"\nSub A()\n  For i = 1 To 3\nEnd Sub\n", "\nSub A()\nSub B()\nEnd Sub\nEnd Sub\n",
                               "\nPrint(\"x\")\n", "\nDim w As NSWindow\n", "\nEvent E()\n  Next\nEnd Event\n",
                               "\nEvent E()\n  Else\nEnd Event\n"})
        EXPECT_FALSE(examineSource(QString::fromUtf8(broken)).problems.isEmpty()) << broken;
    const SourceReport fine = examineSource(
        "\nFunction F(n As Integer) As Integer ' If x Then\n  If n > 1 Then Return 1\n"
        "  If n = 0 Then\n    Return 2\n  Else If n = 1 Then\n    Return \"End Sub\"\n  End If\n"
        "  While n > 0\n    n = n - 1\n  Wend\n  Return n\nEnd Function\n");
    EXPECT_TRUE(fine.problems.isEmpty()) << fine.problems.join("\n").toStdString();
    EXPECT_TRUE(fine.declared.contains("n"));
    EXPECT_FALSE(fine.words.contains("sub")) << "words inside strings and comments are not code";
}

TEST(ExampleProjects, ExamplesBuildAndPrintWhatTheyCompute) {
    const QString compiler = QStringLiteral(KELVARO_APP_DIR "/Contents/MacOS/klvrcompiler");
    if (!QFileInfo(compiler).isExecutable())
        GTEST_SKIP() << "klvrcompiler is not built";
    const QMap<QString, QStringList> expected = {
        {"Hello", {"Hello"}},
        {"Fibonacci",
         {"The first 20 Fibonacci numbers:", "  Fib(1) = 1", "  Fib(2) = 1", "  Fib(12) = 144",
          "  Fib(20) = 6765", "Counting down in steps of 5:", "  Fib(5) = 5",
          "Loop and recursion agree: Fib(12) = 144", "Sum of the first 20 numbers: 17710"}},
        {"TextTools",
         {"Trimmed:     [the quick brown fox jumps over the lazy dog]",
          "Length:      47 characters, 43 without the blanks around it",
          "Upper case:  THE QUICK BROWN FOX JUMPS OVER THE LAZY DOG",
          "Title case:  The Quick Brown Fox Jumps Over The Lazy Dog",
          "Reversed:    god yzal eht revo spmuj xof nworb kciuq eht", "Words:       9",
          "Letter o:    4 times", "First word:  the", "Last word:   dog",
          "'fox' starts at position 18: fox", "'cat' does not occur",
          "'Never odd or even' reads the same backwards", "'Kelvaro' backwards is 'oravleK'",
          "Val('12') + Val('30') = 42", "| Done |"}},
        {"Inventory",
         {"  apple: 60 at 0.4", "Sold 5 pear for 2.75", "Cannot sell 70 apple: only 60 left",
          "Cannot sell 1 kiwi: no such item", "  pear: 15 at 0.55", "Sold out: plum", "Value of the stock: 32.25"}},
        {"Stacks",
         {"(a[b]{c}): balanced", "(a[b)]: ) at 4 closes the wrong bracket", "((: 2 left open", "Waiting: 3",
          "Serving Ada", "Serving Alan", "Error: the queue is empty", "Pushed 4", "Error: the stack is full (2)",
          "The stack holds 2 numbers, 4 on top"}}};
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        SCOPED_TRACE(it.key().toStdString());
        QTemporaryDir temp;
        ASSERT_TRUE(temp.isValid());
        // Build a copy: the shipped examples stay free of build output.
        const QString project = temp.path() + "/" + it.key();
        ASSERT_TRUE(copyFolder(sourceResources() + "/Examples/" + it.key(), project));
        const Finished build = run(compiler, {project, "-Release"});
        ASSERT_EQ(build.exitCode, 0) << build.err.toStdString();
        EXPECT_EQ(build.err, "");
        const QString program = project + "/build/Release/" + it.key() + ".app/Contents/MacOS/" + it.key();
        const Finished program_run = run(program, {});
        EXPECT_EQ(program_run.exitCode, 0) << program_run.err.toStdString();
        const QStringList lines = program_run.out.split('\n');
        for (const QString& line : it.value())
            EXPECT_TRUE(lines.contains(line)) << "missing line: " << line.toStdString() << "\noutput:\n"
                                              << program_run.out.toStdString();
        if (it.key() == "Hello") {
            EXPECT_EQ(program_run.out, "Hello\n");
        }
    }
}

TEST(ExampleProjects, FileTemplatesLieBesideTheExecutables) {
    for (const char* name : {"AppDelegate.NSObject.klvr", "Preferences.KLPreferences.klvr", "Preferences.xib"}) {
        SCOPED_TRACE(name);
        const QByteArray source = readFile(sourceResources() + "/TEMPLATE/" + QString::fromLatin1(name));
        ASSERT_FALSE(source.isEmpty());
        EXPECT_EQ(readFile(QStringLiteral(KELVARO_APP_DIR "/Contents/MacOS/TEMPLATE/") + QString::fromLatin1(name)),
                  source);
        if (QByteArray(name).endsWith(".xib")) {
            QString root;
            EXPECT_TRUE(wellFormedXml(source, &root));
        } else {
            // Their declarations must show in the navigators, and their blocks close.
            EXPECT_TRUE(source.startsWith('\n'));
            const SourceReport report = examineSource(QString::fromUtf8(source));
            for (const QString& problem : report.problems)
                EXPECT_TRUE(problem.contains("not one the runner knows")) << problem.toStdString();
        }
    }
}
