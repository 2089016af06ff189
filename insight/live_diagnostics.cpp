#include "insight/live_diagnostics.h"

#include "tools/lang/project.h"
#include "tools/lang/vocabulary.h"

#include <QFile>

LiveDiagnostics::LiveDiagnostics(const QString& resourcesFolder) : vocabulary_(std::make_unique<klvr::Vocabulary>()) {
    if (!resourcesFolder.isEmpty())
        vocabulary_->loadPropertyLists(QFile::encodeName(resourcesFolder).toStdString());
}

LiveDiagnostics::~LiveDiagnostics() = default;

QList<LiveDiagnostic> LiveDiagnostics::check(const QString& projectFolder, const QString& fileName,
                                             const QString& text) const {
    return check(projectFolder, fileName, text.toUtf8());
}

QList<LiveDiagnostic> LiveDiagnostics::check(const QString& projectFolder, const QString& fileName,
                                             const QByteArray& utf8) const {
    const std::optional<klvr::Diagnostic> error =
        klvr::checkSourceText(QFile::encodeName(projectFolder).toStdString(), QFile::encodeName(fileName).toStdString(),
                              utf8.toStdString(), *vocabulary_);
    // An error the checker blames on another file (a class deriving from itself through
    // this one) has no line in this text.
    if (!error || error->file != QFile::encodeName(fileName).toStdString())
        return {};
    return {LiveDiagnostic{error->line, QString::fromStdString(error->message)}};
}
