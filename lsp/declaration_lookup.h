#pragma once
// Which declaration the name or dotted chain at a position names, by the resolution
// rules completion uses: a local variable or parameter of the method the position lies
// in, a member of the own class, a Public member of the Global file, a project class;
// after a chain, the member of the chain's type. For definition and hover.

#include "lsp/workspace.h"

#include <QString>
#include <optional>

namespace lsp {

struct Declaration {
    QString path;       // "" for a member of a vocabulary class (no file to go to)
    qsizetype line = 0; // 0-based
    QString name;       // "" for a class (the location is its file's start)
    QString text;       // visibility, kind and the declaration's line after its keyword
};

std::optional<Declaration> declarationAt(const Workspace& workspace, const QString& path,
                                         const TextDocument& document, TextPosition position);

// The 0-based line of the first line of `lines` (a method's lines) that declares the
// local `name` with Dim, or -1.
qsizetype localDimLine(const TextDocument& document, qsizetype firstLine, qsizetype endLine, const QString& name);

} // namespace lsp
