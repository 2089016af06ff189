// Printouts: `kelvaro --pdf` as a real process, "Export as PDF…" and printing through
// a QPrinter, read back with poppler's tools.
#include "editing_fixture.h"
#include "pdf_support.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPrinter>
#include <QProcess>

namespace {
struct PdfRun {
    int exitCode = -1;
    QString err;
};

PdfRun kelvaroPdf(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(KELVARO_APP_DIR "/Contents/MacOS/kelvaro"), QStringList{"--pdf"} + arguments);
    process.waitForFinished(120000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardError())};
}

// Pixels of page 1 whose colour is near `colour` (glyph cores keep the exact colour).
int pixelsNear(const QString& pdf, QColor colour) {
    QProcess::execute("pdftoppm", {"-png", "-r", "100", "-f", "1", "-l", "1", "-singlefile", pdf, pdf});
    const QImage page(pdf + ".png");
    int count = 0;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x) {
            const QColor c = page.pixelColor(x, y);
            count += qAbs(c.red() - colour.red()) + qAbs(c.green() - colour.green()) +
                         qAbs(c.blue() - colour.blue()) < 60;
        }
    return count;
}
} // namespace

TEST_F(EditingFixture, PdfCommandPrintsEveryLineInOrder) {
    QStringList source;
    for (int i = 1; i <= 140; ++i)
        source << (i % 10 == 5 ? QString() : QStringLiteral("  Dim v%1 As Integer = %1 ' note %1").arg(i));
    source[20] = "Dim s As String = \"Gr\u00fc\u00dfe, \u65e5\u672c\u8a9e, \u03b5\u03bb\u03bb\u03b7\u03bd\u03b9\u03ba\u03ac\"";
    source[30] = "Dim wide As String = \"" + QString("0123456789").repeated(40) + "\" ' end";
    source[31] = "\tIf a Then";
    const QString folder = makeProject("Pr\u00fcfung", {{"Global.NSObject.klvr", source.join("\n").toUtf8()}});
    const QString pdf = QDir(folder).filePath("out put.pdf");

    const PdfRun run = kelvaroPdf({pdf, folder + "/Global.NSObject.klvr"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const PrintedText printed = readPrinted(pdf);
    ASSERT_EQ(printed.lines.size(), source.size());
    for (qsizetype i = 0; i < source.size(); ++i) {
        EXPECT_EQ(printed.numbers[i], i + 1);
        EXPECT_EQ(printed.lines[i], withoutBlanks(source[i])) << "line " << i + 1;
    }
    EXPECT_GE(printed.continuationRows, 2) << "the 420-character line wraps";
    EXPECT_GE(printed.pages, 3);
    ASSERT_EQ(printed.headers.size(), printed.pages);
    for (int p = 0; p < printed.pages; ++p)
        EXPECT_TRUE(printed.headers[p].endsWith(QString("page %1 of %2").arg(p + 1).arg(printed.pages)));
    EXPECT_TRUE(printed.headers[0].startsWith("Pr\u00fcfung")) << printed.headers[0].toStdString();
    EXPECT_TRUE(printed.headers[0].contains("Global") && !printed.headers[0].contains("NSObject"));
    // The editor's colours: keywords ("Dim") in blue, comments in green.
    EXPECT_GT(pixelsNear(pdf, QColor(0x00, 0x00, 0xcc)), 50);
    EXPECT_GT(pixelsNear(pdf, QColor(0x00, 0x80, 0x00)), 50);
}

TEST_F(EditingFixture, PdfCommandFailsClearly) {
    const QString folder = makeProject("P", {{"a.NSObject.klvr", "Dim a\n"}});
    const QString source = folder + "/a.NSObject.klvr";
    struct Case {
        QStringList arguments;
        int exitCode;
        const char* message;
    } cases[] = {
        {{folder + "/out.pdf", folder + "/missing.klvr"}, 1, "cannot read"},
        {{folder + "/out.pdf", folder}, 1, "cannot read"},
        {{folder + "/no folder/out.pdf", source}, 1, "cannot write"},
        {{source, source}, 1, "is the source file"},
        {{folder + "/out.pdf"}, 2, "usage"},
    };
    for (const Case& c : cases) {
        const PdfRun run = kelvaroPdf(c.arguments);
        EXPECT_EQ(run.exitCode, c.exitCode) << c.arguments.join(' ').toStdString();
        EXPECT_TRUE(run.err.contains(c.message)) << run.err.toStdString();
    }
    EXPECT_EQ(readFile(source), "Dim a\n");
    EXPECT_FALSE(QFile::exists(folder + "/out.pdf"));
}

// The two titles: the project folder's name, and the file's name or "Global".
struct TitleCase {
    const char* name;
    const char* file;
    const char* title;
    bool throughPrinter; // else "Export as PDF…" with its save panel
};

class PrintTitles : public EditingFixture, public ::testing::WithParamInterface<TitleCase> {};

TEST_P(PrintTitles, HeaderNamesProjectAndFile) {
    const TitleCase& c = GetParam();
    KLTextView* view = show("Sub Main()\n  Print(\"\u00e9\")\nEnd Sub\n", c.file);
    const QString pdf = projectsPath() + "/printed.pdf";
    if (c.throughPrinter) {
        QPrinter printer;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        ASSERT_TRUE(view->printTo(printer, global->printProjectTitle(view->fileName()),
                                  page_renderer::fileTitle(view->fileName())));
    } else {
        testPanels().queueOpen({pdf});
        global->ExportPdf();
        ASSERT_EQ(testPanels().shown().size(), 1u);
        EXPECT_EQ(testPanels().shown()[0].kind, "save");
        EXPECT_TRUE(testPanels().shown()[0].text.endsWith(QString(c.file).section('.', 0, 0) + ".pdf"));
    }
    const PrintedText printed = readPrinted(pdf);
    ASSERT_EQ(printed.headers.size(), 1);
    EXPECT_EQ(withoutBlanks(printed.headers[0]), withoutBlanks(QString("Edit %1 page 1 of 1").arg(c.title)));
    EXPECT_EQ(printed.lines, (QStringList{"SubMain()", "Print(\"\u00e9\")", "EndSub"}));
}

INSTANTIATE_TEST_SUITE_P(Editing, PrintTitles,
                         ::testing::Values(TitleCase{"GlobalOnPrinter", "Global.NSObject.klvr", "Global", true},
                                           TitleCase{"FileOnPrinter", "Other.NSObject.klvr", "Other.NSObject.klvr", true},
                                           TitleCase{"GlobalExported", "Global.NSObject.klvr", "Global", false},
                                           TitleCase{"FileExported", "Other.NSObject.klvr", "Other.NSObject.klvr", false}),
                         [](const auto& info) { return std::string(info.param.name); });
