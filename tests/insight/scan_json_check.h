#pragma once
// Reading a --scan JSON object back and comparing it with scanned lists.

#include "insight/declarations.h"

#include <QJsonObject>
#include <QString>

// "" when the object holds exactly `lists` (entries field for field, scope starts,
// locals), else which part differs.
QString jsonDifference(const QJsonObject& object, const DeclarationLists& lists);
