#include "frame/typing_hook.h"

#include "editor/kltextview.h"
#include "frame/global.h"
#include "frame/panels.h"
#include "project/recovery_journal.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QKeyEvent>
#include <QTimer>

#include <cstdio>

namespace {

class AnsweringPanels : public PanelService {
public:
    void messageBox(const QString& title, const QString& text) override {
        std::fprintf(stderr, "kelvaro: %s\n%s\n", qPrintable(title), qPrintable(text));
    }
    std::optional<QString> inputPanel(const QString&, const QString&, const QString&) override { return std::nullopt; }
    QStringList openPanel(const OpenPanelRequest&) override { return {}; }
    int question(const QString& title, const QString& text, const QStringList& answers) override {
        messageBox(title, text);
        return int(answers.indexOf(QStringLiteral("Restore")));
    }
};

void report(const QByteArray& line) {
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fflush(stdout);
}

} // namespace

namespace typing_hook {

bool requested() { return !qEnvironmentVariableIsEmpty("KELVARO_TEST_TYPE"); }

void install() { installPanelService(std::make_shared<AnsweringPanels>()); }

void start(Global* global) {
    global->recoveryJournal()->onWritten = [](const QString&, qint64 size) {
        report("journaled " + QByteArray::number(size) + '\n');
    };
    KLTextView* view = global->mytextview();
    const std::optional<QByteArray> target = document_file::readAll(qEnvironmentVariable("KELVARO_TEST_TYPE"));
    const QByteArray shown = view ? view->documentBytes() : QByteArray();
    report("document " + QByteArray::number(shown.size()) + ' ' +
           QCryptographicHash::hash(shown, QCryptographicHash::Sha1).toHex() + '\n');
    if (!view || !target || !target->startsWith(shown)) {
        report("mismatch\n");
        return;
    }
    QList<int> timing{5, 30, 1100};
    const QStringList given = qEnvironmentVariable("KELVARO_TEST_TYPE_TIMING").split(QLatin1Char(','));
    for (int i = 0; i < given.size() && i < 3; ++i)
        if (bool ok = false; given[i].toInt(&ok) >= 0 && ok)
            timing[i] = given[i].toInt();

    view->SendScintilla(QsciScintilla::SCI_DOCUMENTEND);
    auto* timer = new QTimer(global);
    auto next = std::make_shared<qsizetype>(shown.size());
    auto inBurst = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, global, [=] {
        if (*next >= target->size()) {
            timer->stop();
            return;
        }
        const char c = target->at((*next)++);
        const int key = c == '\n' ? Qt::Key_Return : c == ' ' ? Qt::Key_Space : Qt::Key_A;
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, c == '\n' ? QString() : QString(QLatin1Char(c)));
        QCoreApplication::sendEvent(view, &press);
        const bool pause = ++*inBurst >= timing[1];
        if (pause)
            *inBurst = 0;
        timer->start(pause ? timing[2] : timing[0]);
    });
    timer->setSingleShot(true);
    timer->start(timing[0]);
}

} // namespace typing_hook
