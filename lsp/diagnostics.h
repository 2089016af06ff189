#pragma once
// The toolchain's check of one open document as typed, against the rest of its
// project (open documents as typed, the others as stored): the checker's first error
// in that document, as the compiler would report it, or none. The project's files are
// read and their members taken once; afterwards only what was typed is read again.

#include "lsp/workspace.h"
#include "tools/lang/project.h"
#include "tools/lang/vocabulary.h"

#include <QHash>
#include <QJsonArray>
#include <QString>

#include <memory>
#include <thread>

namespace lsp {

class DocumentChecker {
public:
    // Reads the vocabulary and the workspace's project (as stored) on a thread of its
    // own, so that neither initialize nor the first check waits for it.
    DocumentChecker(const std::string& resourcesDir, const Workspace& workspace);
    ~DocumentChecker();
    // The diagnostics of the document at `path` (an empty array when it checks).
    QJsonArray check(const Workspace& workspace, const QString& path);
    // The document at `path` was closed: the checker takes the file as stored again.
    void closed(const QString& path);

private:
    void prepare(const std::string& resourcesDir, const ProjectScope& project);
    void waitUntilPrepared();
    std::optional<klvr::Diagnostic> checkInProject(const Workspace& workspace, const QString& path);

    std::thread preparing_;
    klvr::Vocabulary vocabulary_;
    std::unique_ptr<klvr::ProjectChecker> project_;
    QHash<QString, qsizetype> indexOf_;   // path -> index in project_
    QHash<QString, quint64> generations_; // path -> generation of the text project_ has
};

} // namespace lsp
