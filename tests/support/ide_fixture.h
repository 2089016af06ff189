#pragma once
// A started IDE for GUI tests: a fresh Global with its main window, code pane and
// toolbar, in a temporary application folder whose tools the test provides, with
// project folders made in a temporary place.

#include "editor/code.h"
#include "editor/kltextview.h"
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "support/test_environment.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

class IdeFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Starts the IDE (the start-up ends with the welcome window).
    Global& start();
    // Makes a project folder `name` holding the files (name -> text); returns its path.
    QString makeProject(const QString& name, const QList<std::pair<QString, QByteArray>>& files);
    // Installs a stand-in compiler that appends its arguments, one a line, to a log.
    void installRecordingCompiler();
    QStringList compilerCalls() const;
    QString bundlePath() const { return bundle_.path(); }
    QString projectsPath() const { return projects_.path(); }

    std::unique_ptr<Global> global;

private:
    QTemporaryDir bundle_;
    QTemporaryDir projects_;
};
