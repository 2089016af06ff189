#include "search/findreplacefile.h"

#include "editor/document_file.h"
#include "editor/kltextview.h"
#include "frame/global.h"
#include "search/project_search.h"
#include "ui_findreplacefile.h"

#include <QLineEdit>

namespace {

QList<ResultRow> rowsOf(const QList<project_search::FileMatches>& found) {
    QList<ResultRow> rows;
    rows.reserve(project_search::matchCount(found));
    for (const project_search::FileMatches& file : found)
        for (const project_search::Match& match : file.matches)
            rows.append({file.name, match.line, match.lineText});
    return rows;
}

// What the count leaves unsaid: files that were not searched or not written, and why.
QString notesOn(const QStringList& binary, const QStringList& unreadable, const QStringList& notWritten) {
    QString notes;
    auto add = [&notes](const char* what, const QStringList& names) {
        if (!names.isEmpty())
            notes += QStringLiteral("; ") + QLatin1String(what) + names.join(QStringLiteral(", "));
    };
    add("binary, not listed: ", binary);
    add("cannot be read: ", unreadable);
    add("not replaced: ", notWritten);
    return notes;
}

} // namespace

findreplacefile::findreplacefile(QObject* owner) : QObject(owner), ui_(std::make_unique<Ui::FindReplaceFile>()) {
    window = new QWidget(nullptr, Qt::Window);
    ui_->setupUi(window);
    cbFind = ui_->cbFind;
    cbReplace = ui_->cbReplace;
    cbIgnoreCase = ui_->cbIgnoreCase;
    cbIgnoreCommentLines = ui_->cbIgnoreCommentLines;
    cbCurrentFileOnly = ui_->cbCurrentFileOnly;
    lInfo = ui_->lInfo;
    tableview = ui_->tableview;
    prepareResultTable(tableview, &files);
    connect(ui_->pbFindAll, &QPushButton::clicked, this, [this] { pbFindAll(); });
    connect(ui_->pbReplaceAll, &QPushButton::clicked, this, [this] { pbReplaceAll(); });
    connect(cbFind->lineEdit(), &QLineEdit::returnPressed, this, [this] { pbFindAll(); });
    connect(tableview, &QTableView::doubleClicked, this, [this](const QModelIndex& index) { DoubleAction(index.row()); });
    awakeFromNib();
}

findreplacefile::~findreplacefile() {
    klvr_frame::forget<findreplacefile>(this);
    delete window;
}

void findreplacefile::pbFindAll(const Value& sender) { perform_pbFindAll(sender); }

void findreplacefile::perform_pbFindAll(const Value&) {
    KLVR_TRACE("perform_pbFindAll");
    Global* global = Global::sharedGlobal();
    applyHistory(cbFind);
    const QString needle = cbFind->currentText();
    QStringList names = global->projectFiles;
    if (cbCurrentFileOnly->isChecked()) {
        const QString current = KLVR_FILENAME(global->ProjectCurrentFilename());
        names = names.contains(current) ? QStringList{current} : QStringList();
    }
    if (const QString problem = project_search::problemWith(needle); !problem.isEmpty()) {
        files.setRows({});
        lInfo->setText(problem);
        return;
    }
    // The files are read from disk: what was typed and not yet saved goes there first.
    global->saveModifiedDocuments(Global::SaveWait::Wait);
    const QList<project_search::FileMatches> found = project_search::search(
        global->ProjectPath, names, needle, {cbIgnoreCase->isChecked(), cbIgnoreCommentLines->isChecked()});
    QStringList binary, unreadable;
    for (const project_search::FileMatches& file : found) {
        if (file.state == project_search::FileState::Binary)
            binary << file.name;
        else if (file.state == project_search::FileState::Unreadable)
            unreadable << file.name;
    }
    files.setRows(rowsOf(found));
    const qsizetype n = files.rows().size();
    lInfo->setText((n > 0 ? QString::number(n) + QStringLiteral(" found") : QStringLiteral("Not found")) +
                   notesOn(binary, unreadable, {}));
}

void findreplacefile::pbReplaceAll(const Value&) {
    KLVR_TRACE("pbReplaceAll");
    Global* global = Global::sharedGlobal();
    applyHistory(cbFind);
    applyHistory(cbReplace);
    const QString needle = cbFind->currentText();
    const QString replacement = cbReplace->currentText();
    if (const QString problem = project_search::problemWith(needle); !problem.isEmpty()) {
        files.setRows({});
        lInfo->setText(problem);
        return;
    }
    const bool ignoreCase = cbIgnoreCase->isChecked();
    global->saveModifiedDocuments(Global::SaveWait::Wait);
    QList<ResultRow> rows;
    QStringList binary, unreadable, notWritten;
    for (const QString& name : global->projectFiles) {
        const QString path = global->ProjectPath + QLatin1Char('/') + name;
        // A document whose typing could not be saved keeps it: its file is left alone.
        const KLTextView* open = global->documentView(path);
        const DiskStamp stamp = DiskStamp::of(path);
        const std::optional<QByteArray> bytes = document_file::readAll(path);
        if (!bytes) {
            unreadable << name;
            continue;
        }
        const project_search::FileMatches found = project_search::searchBytes(*bytes, needle, {ignoreCase, false});
        if (found.state == project_search::FileState::Binary)
            binary << name;
        if (found.matches.isEmpty())
            continue;
        for (const project_search::Match& match : found.matches)
            rows.append({name, match.line, match.lineText});
        const std::optional<QByteArray> replaced = project_search::replacedBytes(*bytes, needle, replacement, ignoreCase);
        if ((open && open->needsSave()) || !replaced ||
            document_file::writeChecked(path, *replaced, stamp).status != document_file::WriteStatus::Written) {
            notWritten << name;
            continue;
        }
        global->ProjectReopenCode(name);
    }
    files.setRows(rows);
    const qsizetype n = rows.size();
    lInfo->setText((n > 0 ? QString::number(n) + QStringLiteral(" replaced") : QStringLiteral("Not found")) +
                   notesOn(binary, unreadable, notWritten));
}

void findreplacefile::DoubleAction(int row) {
    KLVR_TRACE("DoubleAction");
    if (row < 0 || row >= files.rows().size())
        return;
    Global::sharedGlobal()->openAtLine(files.rows()[row].file, files.rows()[row].line);
}
