#include "search/finddefinition.h"

#include "frame/global.h"
#include "insight/parser.h"
#include "search/definition_search.h"
#include "ui_finddefinition.h"

#include <QLineEdit>

finddefinition::finddefinition(QObject* owner) : QObject(owner), ui_(std::make_unique<Ui::FindDefinition>()) {
    window = new QWidget(nullptr, Qt::Window);
    ui_->setupUi(window);
    cbFind = ui_->cbFind;
    cbIgnoreCase = ui_->cbIgnoreCase;
    cbCurrentFileOnly = ui_->cbCurrentFileOnly;
    cbPublic = ui_->cbPublic;
    cbPrivate = ui_->cbPrivate;
    cbSub = ui_->cbSub;
    cbFunction = ui_->cbFunction;
    cbAction = ui_->cbAction;
    cbDim = ui_->cbDim;
    cbConst = ui_->cbConst;
    cbEvent = ui_->cbEvent;
    cbDelegate = ui_->cbDelegate;
    cbIBOutlet = ui_->cbIBOutlet;
    cbIBAction = ui_->cbIBAction;
    lInfo = ui_->lInfo;
    tableview = ui_->tableview;
    prepareResultTable(tableview, &files);
    connect(ui_->pbFindAll, &QPushButton::clicked, this, [this] { pbFindAll(); });
    connect(cbFind->lineEdit(), &QLineEdit::returnPressed, this, [this] { pbFindAll(); });
    connect(cbFind, &QComboBox::editTextChanged, this, [this] { search(); });
    connect(tableview, &QTableView::doubleClicked, this, [this](const QModelIndex& index) { DoubleAction(index.row()); });
    awakeFromNib();
}

finddefinition::~finddefinition() {
    klvr_frame::forget<finddefinition>(this);
    delete window;
}

QString finddefinition::matchText(const DeclarationEntry& e) { return definitionMatchText(e); }

void finddefinition::pbFindAll(const Value&) {
    applyHistory(cbFind);
    search();
}

void finddefinition::search() {
    KLVR_TRACE("finddefinition::search");
    Global* global = Global::sharedGlobal();
    DefinitionQuery query;
    query.needle = cbFind->currentText();
    query.ignoreCase = cbIgnoreCase->isChecked();
    query.publicOnes = cbPublic->isChecked();
    query.privateOnes = cbPrivate->isChecked();
    if (cbCurrentFileOnly->isChecked())
        query.onlyFile = KLVR_FILENAME(global->ProjectCurrentFilename());
    // The kinds left out, in the order of the boxes.
    for (QCheckBox* box : {cbSub, cbFunction, cbAction, cbDim, cbConst, cbEvent, cbDelegate, cbIBOutlet, cbIBAction})
        if (!box->isChecked())
            query.excludedKinds << box->objectName().mid(2);
    const QList<DefinitionMatch> found =
        findDefinitions(*parser::sharedparser(), global->ProjectPath, global->projectFiles, query);
    QList<ResultRow> rows;
    rows.reserve(found.size());
    for (const DefinitionMatch& match : found)
        rows.append({match.file, match.entry.line, matchText(match.entry)});
    files.setRows(rows);
    lInfo->setText(rows.isEmpty() ? QStringLiteral("Not found") : QString::number(rows.size()) + QStringLiteral(" found"));
}

void finddefinition::DoubleAction(int row) {
    KLVR_TRACE("finddefinition::DoubleAction");
    if (row < 0 || row >= files.rows().size())
        return;
    Global::sharedGlobal()->openAtLine(files.rows()[row].file, files.rows()[row].line);
}
