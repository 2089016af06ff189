#include "editor/pdf_command.h"

#include "editor/kltextview.h"
#include "editor/page_renderer.h"
#include "frame/global.h"
#include "frame/klvr_application.h"

#include <QFileInfo>
#include <cstdio>

namespace {
int fail(const QString& message, int status = 1) {
    std::fprintf(stderr, "kelvaro: %s\n", message.toLocal8Bit().constData());
    return status;
}
} // namespace

bool isPdfCommand(const QStringList& arguments) {
    return arguments.size() >= 2 && arguments.at(1) == QLatin1String("--pdf");
}

int runPdfCommand(int& argc, char** argv, const QStringList& arguments) {
    if (arguments.size() != 4)
        return fail(QStringLiteral("usage: kelvaro --pdf OUT.pdf FILE.klvr"), 2);
    const QString output = arguments.at(2);
    const QFileInfo source(arguments.at(3));
    if (!source.exists())
        return fail(QStringLiteral("cannot read %1: no such file").arg(source.filePath()));
    if (!source.isFile() || !source.isReadable())
        return fail(QStringLiteral("cannot read %1: not a readable file").arg(source.filePath()));
    // The source is never overwritten by its own printout.
    if (QFileInfo(output).canonicalFilePath() == source.canonicalFilePath())
        return fail(QStringLiteral("%1 is the source file; name another output").arg(output));

    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    KLVR_Application app(argc, argv);
    // The word lists colour the text as in the editor.
    Global vocabulary;
    vocabulary.loadVocabulary(KLVR_NSBUNDLE_RESOURCEPATH());
    KLTextView view;
    view.setKeywords(vocabulary.KelvaroKeywords);
    view.setCommands(vocabulary.KelvaroCommands);
    view.setTypes(vocabulary.KelvaroTypes);
    if (!view.load(source.absoluteFilePath()))
        return fail(QStringLiteral("cannot read %1").arg(source.filePath()));
    QString error;
    if (!view.exportPdf(output, KLVR_FILENAME(source.absolutePath()), page_renderer::fileTitle(source.filePath()),
                        &error))
        return fail(QStringLiteral("cannot write %1: %2").arg(output, error));
    return 0;
}
