#include "search/result_table.h"

#include <QComboBox>
#include <QHeaderView>
#include <QTableView>

namespace {
enum Column { MatchColumn, FileColumn, LineColumn, ColumnCount };
// A line of megabytes is shown by its start; the row keeps all of it.
constexpr qsizetype kShownMatchLength = 2000;
} // namespace

void ResultTableModel::setRows(QList<ResultRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

int ResultTableModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(rows_.size()); }

int ResultTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant ResultTableModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= rows_.size())
        return {};
    const ResultRow& row = rows_[index.row()];
    switch (index.column()) {
    case MatchColumn:
        return row.match.size() > kShownMatchLength ? row.match.left(kShownMatchLength) + QChar(0x2026) : row.match;
    case FileColumn:
        return row.file;
    case LineColumn:
        return row.line;
    default:
        return {};
    }
}

QVariant ResultTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    static const char* const titles[ColumnCount] = {"Match", "File", "Line"};
    return section >= 0 && section < ColumnCount ? QString::fromLatin1(titles[section]) : QVariant();
}

void prepareResultTable(QTableView* table, ResultTableModel* model) {
    table->setModel(model);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    // Fixed row heights and column widths: nothing is measured row by row.
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 4);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    table->horizontalHeader()->setStretchLastSection(false);
    table->setColumnWidth(MatchColumn, 420);
    table->setColumnWidth(FileColumn, 180);
    table->setColumnWidth(LineColumn, 60);
}

void applyHistory(QComboBox* field) {
    const QString text = field->currentText();
    if (field->count() > 0 && field->itemText(0) == text)
        return;
    field->blockSignals(true);
    field->addItem(text);
    field->setCurrentText(text);
    field->blockSignals(false);
}
