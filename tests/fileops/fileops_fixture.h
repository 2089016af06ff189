#pragma once
// An IDE whose application folder holds the templates, the empty interface file and a
// klvrmake that records each call's arguments, one argument a line.

#include "support/ide_fixture.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>

class FileOpsFixture : public IdeFixture {
protected:
    void SetUp() override {
        IdeFixture::SetUp();
        const QString source = QStringLiteral(KELVARO_SOURCE_DIR "/resources");
        QDir().mkpath(bundlePath() + "/Contents/MacOS/TEMPLATE");
        for (const char* name : {"AppDelegate.NSObject.klvr", "Preferences.KLPreferences.klvr", "Preferences.xib"})
            QFile::copy(source + "/TEMPLATE/" + name, bundlePath() + "/Contents/MacOS/TEMPLATE/" + name);
        QFile::copy(source + "/Empty.xib", bundlePath() + "/Contents/Resources/Empty.xib");
        const QString maker = bundlePath() + "/Contents/MacOS/klvrmake";
        writeFile(maker, "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\"; done >> \"$(dirname \"$0\")/make.log\"\n"
                         "echo ---- >> \"$(dirname \"$0\")/make.log\"\n");
        QFile::setPermissions(maker, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    // Each klvrmake call's arguments, with the project folder written as {P}.
    QList<QStringList> makerCalls(const QString& project) const {
        QList<QStringList> calls;
        const QString log = QString::fromUtf8(readFile(bundlePath() + "/Contents/MacOS/make.log"));
        for (const QString& call : log.split("----\n", Qt::SkipEmptyParts)) {
            QStringList arguments = call.split('\n', Qt::SkipEmptyParts);
            for (QString& a : arguments)
                a.replace(project, "{P}");
            calls << arguments;
        }
        return calls;
    }
};

// Every file and folder below `root` with its bytes (folders end in "/"): two listings
// are equal only when nothing was created, removed or changed.
inline QMap<QString, QByteArray> treeOf(const QString& root) {
    QMap<QString, QByteArray> tree;
    QDirIterator it(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString relative = QDir(root).relativeFilePath(path);
        if (it.fileInfo().isDir())
            tree.insert(relative + "/", QByteArray());
        else
            tree.insert(relative, readFile(path));
    }
    return tree;
}
