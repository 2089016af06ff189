#pragma once
// Finding declarations by name: every declaration of the project's stored scans whose
// name contains a text, filtered by visibility and kind, in the order of the project's
// files and then of each file's "All" list. It reads no file. The find-definition panel
// and the language server's symbol search both ask it. Qt Core only.

#include "insight/declarations.h"
#include "insight/type_resolution.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

struct DefinitionQuery {
    QString needle;                // "" finds every declaration
    bool ignoreCase = false;
    bool publicOnes = true;
    bool privateOnes = true;
    QStringList excludedKinds;     // "Sub", "Dim", ...
    std::optional<QString> onlyFile; // one file name of the project; all when unset
};

struct DefinitionMatch {
    QString file; // relative to the project folder
    DeclarationEntry entry;
};

QList<DefinitionMatch> findDefinitions(const ScanStore& scans, const QString& projectPath,
                                       const QStringList& projectFiles, const DefinitionQuery& query);

// The Match text of a declaration as the result table shows it: visibility, kind,
// name, then the parameters and/or "As" type the kind has.
QString definitionMatchText(const DeclarationEntry& entry);
