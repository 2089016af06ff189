#pragma once
// The rows a result table shows, as "File|Line|Match".

#include <QAbstractItemModel>
#include <QStringList>
#include <QTableView>

inline QStringList shownRows(const QTableView* table) {
    QStringList rows;
    const QAbstractItemModel* model = table->model();
    for (int r = 0; r < model->rowCount(); ++r)
        rows << QStringLiteral("%1|%2|%3")
                    .arg(model->index(r, 1).data().toString(), model->index(r, 2).data().toString(),
                         model->index(r, 0).data().toString());
    return rows;
}
