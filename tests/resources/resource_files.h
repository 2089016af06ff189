#pragma once
// Shared helpers of the resource tests: where the sources and the built
// application folder are, and a property-list reader that turns a list into
// Qt values so that the tests can look at its shape.

#include <QString>
#include <QVariant>

namespace resources_test {

// The resources folder of the source tree ("<source>/resources").
QString sourceResources();
// The resource folder of the built application ("<build>/Kelvaro.app/Contents/Resources").
QString builtResources();

// Result of reading one property list.
struct PropertyList {
    bool parsed = false;      // libplist accepted the text
    bool dictionaryRoot = false;
    QVariant root;            // dictionary -> QVariantMap, array -> QVariantList,
                              // string -> QString, integer -> qint64, real -> double,
                              // boolean -> bool; anything else -> an invalid QVariant
};

// Reads an XML property list with libplist; a missing file gives parsed == false.
PropertyList readPropertyList(const QString& path);

// Reads a property list from the source resources and returns its root
// dictionary (empty when it cannot be read).
QVariantMap vocabularyDictionary(const QString& fileName);

} // namespace resources_test
