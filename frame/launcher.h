#pragma once
// The launch service: opening a document with a named application. The names the
// system uses (Xcode, TextEdit, Preview, Safari, Finder, Terminal, ...) map to commands
// of this desktop through the launcher table "launchers.txt" in the resources. Tests
// install a recording launcher.

#include <QString>
#include <memory>

class LaunchService {
public:
    virtual ~LaunchService() = default;
    // Opens `document` with `application` (a name of the table or a full path to an
    // executable); "" as document only starts the application. False when the
    // application cannot be found. `waitForUser` is the caller's hint that the user
    // works in the other application next; it does not block.
    virtual bool launch(const QString& application, const QString& document, bool waitForUser) = 0;
};

LaunchService& launcher();
// The launcher of this desktop, driven by the table "launchers.txt" of the resources.
std::shared_ptr<LaunchService> makeDesktopLauncher();
std::shared_ptr<LaunchService> installLaunchService(std::shared_ptr<LaunchService> service);

// The text after "=" on the table's line named `key` ("" when there is none). Besides
// the applications, the table holds the configured web addresses ("address NAME") and
// the Debian package that provides an application's commands ("install NAME").
QString launcherTableValue(const QString& key);
// KLVR_LAUNCH, and when the application is not found a message box that says so and
// names what to install.
bool launchOrTell(const QString& application, const QString& document, bool flag);

bool KLVR_LAUNCH(const QString& application, const QString& document, bool flag);
void KLVR_FINDER(const QString& path);
void KLVR_SAFARI(const QString& addressOrPath);
void KLVR_TEXTEDIT(const QString& path);
void KLVR_PREVIEW(const QString& path);
