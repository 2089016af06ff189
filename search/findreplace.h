#pragma once
// The find-and-replace panel of the shown document. The matching, the selection and
// wrapping around are the editor view's; this class hands the panel's options to the
// view before every action, counts the occurrences and keeps the histories. The main
// window's search field (Global's boxedSearch) drives the same panel.

#include "frame/classframe.h"
#include "frame/value.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QWidget>
#include <memory>

namespace Ui {
class FindReplace;
}

class findreplace : public QObject {
    Q_OBJECT
    KLVR_CLASS_FRAME(findreplace)
public:
    explicit findreplace(QObject* owner = nullptr);
    ~findreplace() override;

    QPointer<QWidget> window;
    QPointer<QComboBox> cbFind, cbReplace;
    QPointer<QCheckBox> cbIgnoreCase, cbSelectedTextOnly;
    QPointer<QLabel> lInfo;

    void SetOptions();
    // Finds the next occurrence (bFind) or only counts; `sender` is the search field
    // when it asks.
    void do_pbNext(QObject* sender, bool bFind);
    void do_pbPrevious(QObject* sender);
    Q_INVOKABLE void pbNext(const Value& sender = Value());
    Q_INVOKABLE void pbPrevious(const Value& sender = Value());
    Q_INVOKABLE void pbReplace(const Value& sender = Value());
    Q_INVOKABLE void pbReplaceFind(const Value& sender = Value());
    Q_INVOKABLE void pbReplaceAll(const Value& sender = Value());
    Q_INVOKABLE void FindNext();

private:
    std::unique_ptr<Ui::FindReplace> ui_;
};

KLVR_DEFINE_CLASS_HELPERS(findreplace, FINDREPLACE)
