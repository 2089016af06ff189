#pragma once
// The project search panel: finds a text in every source file of the project (or the
// shown one), lists each occurrence as a row (Match, File, Line), opens a row's file at
// its line on a double click, and replaces a text in every file on disk. The searching
// is project_search's; this class reads the panel's fields and shows the results.

#include "frame/classframe.h"
#include "frame/value.h"
#include "search/result_table.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QTableView>
#include <QWidget>
#include <memory>

namespace Ui {
class FindReplaceFile;
}

class findreplacefile : public QObject {
    Q_OBJECT
    KLVR_CLASS_FRAME(findreplacefile)
public:
    explicit findreplacefile(QObject* owner = nullptr);
    ~findreplacefile() override;

    // The panel window and its controls (owned by the window).
    QPointer<QWidget> window;
    QPointer<QComboBox> cbFind, cbReplace;
    QPointer<QCheckBox> cbIgnoreCase, cbIgnoreCommentLines, cbCurrentFileOnly;
    QPointer<QLabel> lInfo;
    QPointer<QTableView> tableview;
    ResultTableModel files; // the result rows

    Q_INVOKABLE void pbFindAll(const Value& sender = Value());
    void perform_pbFindAll(const Value& sender = Value());
    Q_INVOKABLE void pbReplaceAll(const Value& sender = Value());
    // Opens the file of a row at its line; a row outside the table does nothing.
    void DoubleAction(int row);

private:
    std::unique_ptr<Ui::FindReplaceFile> ui_;
};

KLVR_DEFINE_CLASS_HELPERS(findreplacefile, FINDREPLACEFILE)
