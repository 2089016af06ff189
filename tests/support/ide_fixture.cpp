#include "support/ide_fixture.h"

#include <QDir>
#include <QFile>

void IdeFixture::SetUp() {
    KelvaroTestEnvironment::instance().reset();
    QDir().mkpath(bundle_.path() + "/Contents/MacOS");
    QDir().mkpath(bundle_.path() + "/Contents/Resources");
    klvrSetBundlePath(bundle_.path());
}

void IdeFixture::TearDown() {
    global.reset();
    klvrSetBundlePath(KELVARO_APP_DIR);
}

Global& IdeFixture::start() {
    global = std::make_unique<Global>();
    global->awakeFromNib();
    return *global;
}

QString IdeFixture::makeProject(const QString& name, const QList<std::pair<QString, QByteArray>>& files) {
    const QString folder = projects_.path() + "/" + name;
    QDir().mkpath(folder);
    for (const auto& [file, text] : files)
        writeFile(folder + "/" + file, text);
    return folder;
}

void IdeFixture::installRecordingCompiler() {
    const QString script = bundle_.path() + "/Contents/MacOS/klvrcompiler";
    writeFile(script, "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\" >> \"$(dirname \"$0\")/calls.log\"; done\n"
                      "echo ---- >> \"$(dirname \"$0\")/calls.log\"\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QStringList IdeFixture::compilerCalls() const {
    QString log = QString::fromUtf8(readFile(bundle_.path() + "/Contents/MacOS/calls.log"));
    QStringList calls;
    for (const QString& call : log.split("----\n", Qt::SkipEmptyParts))
        calls << call.trimmed().replace('\n', ' ');
    return calls;
}
