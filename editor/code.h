#pragma once
// The code pane: the single editing area of the main window. It shows one document's
// editor view at a time in its container, keeps ten declaration navigators filled from
// the parser, re-scans the shown file on a background thread a few seconds after typing
// stops, and saves the file. One instance, reached through code::sharedcode().

#include "editor/kltextview.h"
#include "frame/runtime.h"
#include "insight/declarations.h"

#include <QMutex>
#include <QPointer>
#include <QWidget>
#include <atomic>
#include <future>

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QStackedLayout;
class QTabWidget;

class code : public QWidget {
    Q_OBJECT
    KLVR_CLASS_FRAME(code)
public:
    code();
    ~code() override;

    // ---- Widgets of the pane (the interface description's outlets) ----
    QPointer<KLTextView> scrollview; // the editor view shown; a QScintilla view scrolls itself
    QPointer<KLTextView> dummy;      // placeholder: showing it means "no document"
    QPointer<QLineEdit> line;        // the line field
    QPointer<QComboBox> alllist, sublist, functionlist, eventlist, Dimlist, constlist, actionlist, propertylist,
        iboutletlist, ibactionlist;
    QPointer<QComboBox> delegates, syntax, syntax2, syntax3;
    QPointer<QTabWidget> tabView;
    QPointer<QLabel> statusbar;
    QPointer<QLabel> documentInfo; // the shown file's encoding, line ends, read-only mark
    QPointer<QProgressBar> progress;

    // ---- Re-entrancy guards ----
    bool bAlreadyRunning = false;
    bool bTextDidChange = false;
    std::atomic<bool> btUpdateTimer{false};
    KLTimerRef tUpdateTimer;
    KLThreadRef thUpdateCodeInsight;

    // The container in which the shown editor view sits (Global's `mycodeview`).
    QWidget* codeView() const { return container_; }

    void KLVR_AwakeFromNib();
    // Shows the document whose editor view is `view`; ignored while a swap runs.
    void SetScrollView(KLTextView* view);
    // Shows a new empty document and resets the pane.
    void SetEmpty();
    // Saves the shown editor view to `path` with status messages; false on failure.
    bool Save(const QString& path);
    bool SomeDocumentOpened() const;
    // Shows the shown document's encoding, line endings and read-only state.
    void showDocumentInfo();
    // The text-change pass, after the user paused typing for one second.
    void PerformTextDidChange();
    void UpdateCodeInsight();
    Q_INVOKABLE void tUpdateTimerFired();
    void tUpdateTimer99();
    Q_INVOKABLE void thUpdateCodeInsightBody();
    Q_INVOKABLE void reloadMatrix();
    // Places a widget in the status row, just before the line field.
    void insertBesideLine(QWidget* widget);
    // Moves the cursor to line n - 1 (callers pass the wanted 1-based line plus one).
    void gotoline(qint64 n);
    void navigatorChosen(QComboBox* navigator, int index);
    void delegatesChosen(int index);
    bool AcceptsFirstResponder() const { return true; }

    // The current editor view: the shown one (possibly `dummy`).
    KLTextView* currentView() const { return scrollview; }
    // Number of re-scans started (for the status of background work).
    bool isScanning() const { return btUpdateTimer; }

    // ---- Snippets, shortcut words and line buttons (editor/code_snippets.cpp) ----
    void buildSnippetControls();
    // Inserts the template of the chosen item of `syntax`, `syntax2` or `syntax3`, then
    // shows the pop-up's title again.
    void snippetChosen(QComboBox* popUp, int index);
    // The sender is a button; its title decides what is inserted.
    Q_INVOKABLE void performShortcut(const Value& sender);
    Q_INVOKABLE void b_comment(const Value& sender = Value());
    Q_INVOKABLE void b_uncomment(const Value& sender = Value());
    Q_INVOKABLE void b_shiftleft(const Value& sender = Value());
    Q_INVOKABLE void b_shiftright(const Value& sender = Value());

signals:
    // A background re-scan finished and the navigators were refilled.
    void codeInsightUpdated();

private:
    void Init();
    void buildInterface();
    void fillNavigator(QComboBox* navigator, const std::shared_ptr<const DeclarationList>& list);
    QList<QComboBox*> navigators() const;
    QWidget* container_ = nullptr;
    QStackedLayout* stack_ = nullptr;
    class QHBoxLayout* statusRow_ = nullptr;
    // The file the re-scan thread scans and the save it waits for; both are set on the
    // main thread before the thread starts.
    QMutex scanMutex_; // guards scanPath_ and pendingSave_
    QString scanPath_;
    std::shared_future<bool> pendingSave_;
};

KLVR_DEFINE_CLASS_HELPERS(code, CODE)
