#include "frame/panels.h"

#include <QApplication>
#include <QFileDialog>
#include <QPrintDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QMutex>
#include <QPushButton>

namespace {

// The application's panels: Qt's standard dialogs.
class QtPanels : public PanelService {
public:
    void messageBox(const QString& title, const QString& text) override {
        QMessageBox box(QApplication::activeWindow());
        box.setWindowTitle(QStringLiteral("Kelvaro"));
        box.setText(title);
        box.setInformativeText(text);
        box.setStandardButtons(QMessageBox::Ok);
        box.exec();
    }
    std::optional<QString> inputPanel(const QString& title, const QString& message,
                                      const QString& defaultText) override {
        bool ok = false;
        QString text = QInputDialog::getText(QApplication::activeWindow(), title, message, QLineEdit::Normal,
                                             defaultText, &ok);
        if (!ok)
            return std::nullopt;
        return text;
    }
    int question(const QString& title, const QString& text, const QStringList& answers) override {
        QMessageBox box(QApplication::activeWindow());
        box.setWindowTitle(QStringLiteral("Kelvaro"));
        box.setIcon(QMessageBox::Question);
        box.setText(title);
        box.setInformativeText(text);
        QList<QAbstractButton*> buttons;
        for (const QString& answer : answers)
            buttons << box.addButton(answer, QMessageBox::AcceptRole);
        if (!buttons.isEmpty())
            box.setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
        box.exec();
        return int(buttons.indexOf(box.clickedButton()));
    }
    QStringList openPanel(const OpenPanelRequest& request) override {
        QFileDialog dialog(QApplication::activeWindow(), QString(), request.directory);
        if (request.canChooseDirectories && !request.canChooseFiles) {
            dialog.setFileMode(QFileDialog::Directory);
            dialog.setOption(QFileDialog::ShowDirsOnly);
        } else {
            dialog.setFileMode(request.allowsMultipleSelection ? QFileDialog::ExistingFiles
                                                               : QFileDialog::ExistingFile);
        }
        if (!request.types.isEmpty()) {
            QStringList patterns;
            for (const QString& t : request.types)
                patterns << QStringLiteral("*.") + t;
            dialog.setNameFilter(patterns.join(QLatin1Char(' ')));
        }
        if (dialog.exec() != QDialog::Accepted)
            return {};
        return dialog.selectedFiles();
    }
};

QMutex serviceMutex;
std::shared_ptr<PanelService>& current() {
    static std::shared_ptr<PanelService> service = std::make_shared<QtPanels>();
    return service;
}

} // namespace

QString PanelService::savePanel(const QString& title, const QString& suggestedPath, const QString& type) {
    QFileDialog dialog(QApplication::activeWindow(), title, suggestedPath);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(type);
    dialog.setNameFilter(QStringLiteral("*.") + type);
    dialog.selectFile(suggestedPath);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().first();
}

bool PanelService::printPanel(QPrinter& printer, QWidget* parent) {
    QPrintDialog dialog(&printer, parent);
    return dialog.exec() == QDialog::Accepted;
}

PanelService& panels() {
    QMutexLocker guard(&serviceMutex);
    return *current();
}

std::shared_ptr<PanelService> installPanelService(std::shared_ptr<PanelService> service) {
    QMutexLocker guard(&serviceMutex);
    std::shared_ptr<PanelService> previous = current();
    current() = std::move(service);
    return previous;
}

void KLVR_MSGBOX(const QString& message, const QString& informativeText) {
    panels().messageBox(message, informativeText);
}

int klvrAsk(const QString& title, const QString& text, const QStringList& answers) {
    return panels().question(title, text, answers);
}

std::optional<QString> KLVR_INPUTPANEL(const QString& title, const QString& message, const QString& defaultText) {
    return panels().inputPanel(title, message, defaultText);
}

QString chooseOneFolder(const QString& directory) {
    return panels().openPanel({false, true, false, {}, directory}).value(0);
}

QString chooseOneFile(const QStringList& types, const QString& directory) {
    return panels().openPanel({true, false, false, types, directory}).value(0);
}

QStringList chooseFiles() { return panels().openPanel({true, false, true, {}, QString()}); }
