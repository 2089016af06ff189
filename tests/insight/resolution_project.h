#pragma once
// A small project for the resolution and completion tests: three classes that reach
// each other through Public members, one with only Private members, and a Global file.

#include <QByteArray>
#include <QList>
#include <QString>
#include <utility>

namespace resolution_project {

// Basket's lines, 1-based: Run is declared on line 4, Add on line 11.
inline const QByteArray basket = "' basket\n"                            // 1
                                 "Private Dim x As Foo\n"                // 2
                                 "Dim total As String\n"                 // 3
                                 "Sub Run(n As Integer)\n"               // 4
                                 "  Dim total As Integer\n"              // 5
                                 "  Print(total)\n"                      // 6
                                 "End Sub\n"                             // 7
                                 "Public Dim items As Shelf\n"           // 8
                                 "Public Dim vault As Vault\n"           // 9
                                 "Dim größe As NSString\n"               // 10
                                 "Public Function Add(k As Integer) As Integer\n" // 11
                                 "End Function\n";                       // 12

inline const QList<std::pair<QString, QByteArray>> files = {
    {"Global.NSObject.klvr", "\nPublic Dim text As NSString\nDim secret As Foo\n"},
    {"Basket.NSObject.klvr", basket},
    {"Shelf.NSObject.klvr", "\nPublic Dim first As Basket\nPublic Dim crate As Crate\n"
                            "Private Dim hidden As Integer\nPublic Sub Put(item As Basket)\nEnd Sub\n"},
    {"Crate.NSObject.klvr", "\nPublic Dim tag As NSString\nPublic Function Weight() As Integer\nEnd Function\n"},
    {"Vault.NSObject.klvr", "\nDim gold As Integer\nPrivate Sub Open()\nEnd Sub\n"},
};

// The 0-based position of the start of a 1-based line of Basket, plus `column`.
inline qint64 basketPosition(int line, int column = 0) {
    const QString text = QString::fromUtf8(basket);
    qint64 position = 0;
    for (int l = 1; l < line; ++l)
        position = text.indexOf(QLatin1Char('\n'), position) + 1;
    return position + column;
}

} // namespace resolution_project
