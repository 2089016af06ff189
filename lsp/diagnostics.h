#pragma once
// The toolchain's check of one open document as typed, against the rest of its
// project (open documents as typed, the others as stored): the checker's first error
// in that document, as the compiler would report it, or none.

#include "lsp/workspace.h"
#include "tools/lang/vocabulary.h"

#include <QJsonArray>

namespace lsp {

class DocumentChecker {
public:
    explicit DocumentChecker(const std::string& resourcesDir);
    // The diagnostics of the document at `path` (an empty array when it checks).
    QJsonArray check(Workspace& workspace, const QString& path) const;

private:
    klvr::Vocabulary vocabulary_;
};

} // namespace lsp
