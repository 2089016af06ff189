#pragma once
// What the search panels share: the result table's model (rows of file, line and
// match text, shown in the columns "Match", "File" and "Line") and the history rule of
// their combo boxes.

#include <QAbstractTableModel>
#include <QList>
#include <QString>

class QComboBox;
class QTableView;

struct ResultRow {
    QString file; // relative to the project folder
    qint64 line = 0; // 1-based
    QString match;
};

// The rows live here; the view asks only for the cells it shows, so a hundred thousand
// rows cost no more to show than ten.
class ResultTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;
    // Replaces every row (the view is reset once).
    void setRows(QList<ResultRow> rows);
    const QList<ResultRow>& rows() const { return rows_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QList<ResultRow> rows_;
};

// Sets a table view up for many rows of one text line each.
void prepareResultTable(QTableView* table, ResultTableModel* model);

// The history rule: the field's text joins its history list unless the list's first
// entry equals it.
void applyHistory(QComboBox* field);
