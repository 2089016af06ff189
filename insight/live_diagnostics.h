#pragma once
// The checker of the toolchain run over one document's text while it is being edited:
// the text as typed, the project's other files as saved on disk. Plain code over Qt
// Core, no widgets, safe on any thread; the editor's live marks and a language server
// both ask it.

#include <QList>
#include <QString>

#include <memory>

namespace klvr {
class Vocabulary;
}

struct LiveDiagnostic {
    int line = 0;    // 1-based line of the document
    QString message; // the checker's message, e.g. "Next without For"
    bool operator==(const LiveDiagnostic& other) const { return line == other.line && message == other.message; }
};

class LiveDiagnostics {
public:
    // Words the checker knows: the keywords and the runner's functions, plus the names of
    // the vocabulary lists in `resourcesFolder` (none when it is empty or has no lists).
    explicit LiveDiagnostics(const QString& resourcesFolder = QString());
    ~LiveDiagnostics();

    // The errors of `text` as the file `fileName` (e.g. "b.NSView.klvr") of the project
    // in `projectFolder`. The checker stops at a file's first error, so the list holds
    // at most one entry; a file of the project that cannot be read counts as empty.
    QList<LiveDiagnostic> check(const QString& projectFolder, const QString& fileName, const QString& text) const;
    // The same for the text as UTF-8 bytes (an editor's own form of it).
    QList<LiveDiagnostic> check(const QString& projectFolder, const QString& fileName, const QByteArray& utf8) const;

private:
    std::unique_ptr<klvr::Vocabulary> vocabulary_;
};
