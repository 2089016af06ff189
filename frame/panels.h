#pragma once
// Every modal panel the system shows goes through one service, so that the
// application shows Qt dialogs and tests install a scripted responder that records
// what was shown and answers what the test queued. No engine shows a panel itself.

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

struct OpenPanelRequest {
    bool canChooseFiles = true;
    bool canChooseDirectories = false;
    bool allowsMultipleSelection = false;
    QStringList types;  // allowed extensions without the point; empty: any
    QString directory;  // folder shown first
};

class QPrinter;
class QWidget;

class PanelService {
public:
    virtual ~PanelService() = default;
    // A modal alert with one confirming button.
    virtual void messageBox(const QString& title, const QString& text) = 0;
    // A text field preset to `defaultText`; nullopt when cancelled.
    virtual std::optional<QString> inputPanel(const QString& title, const QString& message,
                                              const QString& defaultText) = 0;
    // The chosen paths; empty when the user cancelled.
    virtual QStringList openPanel(const OpenPanelRequest& request) = 0;
    // A question with its answers as buttons (the first is the default); the index of
    // the answer chosen, or -1 when the panel was dismissed without one.
    virtual int question(const QString& title, const QString& text, const QStringList& answers) = 0;
    // A save panel starting at `suggestedPath`, for a file of the extension `type`;
    // the chosen path, "" when cancelled. It asks before an existing file is replaced.
    virtual QString savePanel(const QString& title, const QString& suggestedPath, const QString& type);
    // The print panel for `printer`; true when the user chose to print.
    virtual bool printPanel(QPrinter& printer, QWidget* parent);
};

// The service in use; Qt dialogs unless another one was installed.
PanelService& panels();
// Installs a service (tests); returns the previous one.
std::shared_ptr<PanelService> installPanelService(std::shared_ptr<PanelService> service);

// The runtime's panel operations.
void KLVR_MSGBOX(const QString& message, const QString& informativeText = QString());
// The index of the answer chosen, or -1.
int klvrAsk(const QString& title, const QString& text, const QStringList& answers);
std::optional<QString> KLVR_INPUTPANEL(const QString& title, const QString& message, const QString& defaultText);
// The open panel for one folder, or one file of `types` (any when empty), starting in
// `directory`; the chosen path, or empty when cancelled. Each call asks afresh, so one
// command's starting folder never carries over to another's.
QString chooseOneFolder(const QString& directory = QString());
QString chooseOneFile(const QStringList& types = {}, const QString& directory = QString());
QStringList chooseFiles(); // any number of files of any type; empty when cancelled
