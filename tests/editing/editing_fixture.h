#pragma once
// A started IDE showing one document of a small project.

#include "support/ide_fixture.h"

class EditingFixture : public IdeFixture {
protected:
    // Opens a project holding `name` with `bytes` and shows that document.
    KLTextView* show(const QByteArray& bytes, const QString& name = "a.NSObject.klvr") {
        Global& g = global ? *global : start();
        project = makeProject("Edit", {{"Global.NSObject.klvr", "\nSub Main()\nEnd Sub\n"}, {name, bytes}});
        g.ProjectOpen(project);
        g.ProjectOpenCode(name);
        return g.mytextview();
    }
    QString project;
};
