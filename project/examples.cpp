// Examples: an example is never edited where it lies in the application folder (a
// rebuild or an update would overwrite what the user typed). The first opening copies it
// to "~/Kelvaro Examples/<name>" (<group>/<name> for an example in a group, so two
// examples of one name in different groups never share a copy); every opening opens that
// copy.
#include "frame/global.h"
#include "project/file_name_rules.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>

QString Global::examplesCopyFolder() { return KLVR_USER_HOMEDIRECTORY() + QStringLiteral("/Kelvaro Examples"); }

void Global::OpenExample(const Value& pathOrSender) {
    KLVR_TRACE("OpenExample");
    QString example = pathOrSender.isString() ? pathOrSender.toString() : QString();
    if (auto* action = qobject_cast<QAction*>(pathOrSender.object()))
        example = action->data().toString();
    example = QDir::cleanPath(example);
    if (example.isEmpty() || !QFileInfo(example).isDir())
        return;
    const QString bundled = QDir::cleanPath(KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/Examples"));
    const QString place = example.startsWith(bundled + QLatin1Char('/')) ? example.mid(bundled.size() + 1)
                                                                        : KLVR_FILENAME(example);
    const QString copy = examplesCopyFolder() + QLatin1Char('/') + place;
    const QString copyParent = QFileInfo(copy).path();
    if (!QFileInfo(copy).isDir()) {
        if (file_rules::occupied(copy)) {
            KLVR_MSGBOX(QStringLiteral("Could not copy the example."),
                        copy + QStringLiteral(" is a file, not a folder; it was left as it is."));
            return;
        }
        // Copied under a passing name and renamed when whole, so an interrupted copy is
        // never taken for the example.
        const QString partial = copyParent + QStringLiteral("/.") + KLVR_FILENAME(example) +
                                QStringLiteral(".copying");
        QDir(partial).removeRecursively(); // only ever our own unfinished copy
        if (!QDir().mkpath(copyParent) || !file_rules::copyTree(example, partial) ||
            !QDir().rename(partial, copy)) {
            QDir(partial).removeRecursively();
            KLVR_MSGBOX(QStringLiteral("Could not copy the example."),
                        QStringLiteral("The example could not be copied to ") + copy + QLatin1Char('.'));
            return;
        }
    }
    ProjectOpen(copy);
}
