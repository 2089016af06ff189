#pragma once
// The find-definition panel: lists the project's declarations whose names contain a
// text, filtered by visibility and kind, from the parser's lists (it reads no file);
// a double click opens the file at the declaration's line. The table follows every
// keystroke in the name field.

#include "frame/classframe.h"
#include "frame/value.h"
#include "insight/declarations.h"
#include "search/result_table.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QTableView>
#include <QWidget>
#include <memory>

namespace Ui {
class FindDefinition;
}

class finddefinition : public QObject {
    Q_OBJECT
    KLVR_CLASS_FRAME(finddefinition)
public:
    explicit finddefinition(QObject* owner = nullptr);
    ~finddefinition() override;

    QPointer<QWidget> window;
    QPointer<QComboBox> cbFind;
    QPointer<QCheckBox> cbIgnoreCase, cbCurrentFileOnly, cbPublic, cbPrivate;
    QPointer<QCheckBox> cbSub, cbFunction, cbAction, cbDim, cbConst, cbEvent, cbDelegate, cbIBOutlet, cbIBAction;
    QPointer<QLabel> lInfo;
    QPointer<QTableView> tableview;
    ResultTableModel files;

    // The search with the history rule (the Find button, Return).
    Q_INVOKABLE void pbFindAll(const Value& sender = Value());
    // The search alone (every keystroke).
    void search();
    void DoubleAction(int row);

    // The Match text of a declaration, as the table shows it.
    static QString matchText(const DeclarationEntry& entry);

private:
    std::unique_ptr<Ui::FindDefinition> ui_;
};

KLVR_DEFINE_CLASS_HELPERS(finddefinition, FINDDEFINITION)
