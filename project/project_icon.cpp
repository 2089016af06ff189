// The project's application icon and its information property list.
#include "frame/global.h"
#include "frame/mainwindow.h"

#include <QLabel>

void Global::SetProjectIcon() {
    KLVR_TRACE("SetProjectIcon");
    const QString icon = ProjectPath + QStringLiteral("/icon.icns");
    if (!KLVR_NSFILEMANAGER_EXISTSFILE(icon))
        return;
    if (mymainwindow && mymainwindow->projectIconView())
        mymainwindow->projectIconView()->setPixmap(QPixmap(icon));
    const QString name = KLVR_FILENAME(ProjectPath);
    const QString builtIcon =
        ProjectPath + QStringLiteral("/build/Release/") + name + QStringLiteral(".app/Contents/Resources/icon.icns");
    KLVR_NSFILEMANAGER_DELETE(builtIcon);
    KLVR_NSFILEMANAGER_COPY(icon, builtIcon);
}

void Global::SelectAppIcon(const Value&) {
    KLVR_TRACE("SelectAppIcon");
    if (!ProjectIsLoaded())
        return;
    const QString chosen = chooseOneFile({QStringLiteral("icns")});
    if (chosen.isEmpty())
        return;
    const QString icon = ProjectPath + QStringLiteral("/icon.icns");
    // The chosen file's bytes replace the icon in one atomic write, so choosing the
    // project's own icon, or a copy that fails half-way, never loses it.
    const std::optional<QByteArray> bytes = document_file::readAll(chosen);
    const document_file::WriteResult written =
        bytes ? document_file::writeChecked(icon, *bytes, std::nullopt) : document_file::WriteResult{};
    if (written.status != document_file::WriteStatus::Written) {
        KLVR_MSGBOX(QStringLiteral("Could not set the project icon"),
                    QStringLiteral("Tried ") + chosen + (written.error.isEmpty() ? QString() : QStringLiteral(": ") + written.error));
        return;
    }
    SetProjectIcon();
}

static QString infoPlistPath(const QString& project) {
    const QString name = KLVR_FILENAME(project);
    return project + QLatin1Char('/') + name + QLatin1Char('/') + name + QStringLiteral("-Info.plist");
}

void Global::InfoPlist(const Value&) {
    KLVR_TRACE("InfoPlist");
    if (ProjectIsLoaded())
        KLVR_TEXTEDIT(infoPlistPath(ProjectPath));
}

void Global::InfoPlist2(const Value&) {
    KLVR_TRACE("InfoPlist2");
    if (ProjectIsLoaded())
        KLVR_LAUNCH(QStringLiteral("Xcode"), infoPlistPath(ProjectPath), true);
}
