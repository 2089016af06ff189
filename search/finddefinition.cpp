#include "search/finddefinition.h"

#include "frame/global.h"
#include "insight/parser.h"
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

QString finddefinition::matchText(const DeclarationEntry& e) {
    const QString& k = e.kind;
    const bool typed = k == QLatin1String("Dim") || k == QLatin1String("Const") || k == QLatin1String("IBOutlet");
    const bool both = k == QLatin1String("Function") || k == QLatin1String("Delegate");
    // One allocation per row: a search may list tens of thousands.
    QString text;
    text.reserve(e.visibility.size() + k.size() + e.name.size() + e.parameters.size() + e.type.size() + 8);
    text.append(e.visibility).append(QLatin1Char(' ')).append(k).append(QLatin1Char(' ')).append(e.name);
    if (!typed)
        text.append(QLatin1Char(' ')).append(e.parameters);
    if (typed || both)
        text.append(QLatin1String(" As ")).append(e.type);
    return text;
}

void finddefinition::pbFindAll(const Value&) {
    applyHistory(cbFind);
    search();
}

void finddefinition::search() {
    KLVR_TRACE("finddefinition::search");
    Global* global = Global::sharedGlobal();
    const QString needle = cbFind->currentText();
    const Qt::CaseSensitivity cs = cbIgnoreCase->isChecked() ? Qt::CaseInsensitive : Qt::CaseSensitive;
    const QString current = KLVR_FILENAME(global->ProjectCurrentFilename());
    const bool publicOnes = cbPublic->isChecked(), privateOnes = cbPrivate->isChecked();
    // The kinds left out, in the order of the boxes.
    QStringList excluded;
    for (QCheckBox* box : {cbSub, cbFunction, cbAction, cbDim, cbConst, cbEvent, cbDelegate, cbIBOutlet, cbIBAction})
        if (!box->isChecked())
            excluded << box->objectName().mid(2);
    QList<ResultRow> rows;
    rows.reserve(files.rows().size());
    parser* p = parser::sharedparser();
    for (const QString& name : global->projectFiles) {
        if (cbCurrentFileOnly->isChecked() && name != current)
            continue;
        const parser::List all = p->GetAll(global->ProjectPath + QLatin1Char('/') + name);
        if (!all)
            continue; // never scanned
        for (const DeclarationEntry& e : all->rows) {
            if (!e.isEntry())
                continue;
            const bool isPublic = e.visibility == QLatin1String("Public");
            if (!((publicOnes && isPublic) || (privateOnes && !isPublic)) || excluded.contains(e.kind))
                continue;
            if (e.name.contains(needle, cs))
                rows.append({name, e.line, matchText(e)});
        }
    }
    files.setRows(rows);
    lInfo->setText(rows.isEmpty() ? QStringLiteral("Not found") : QString::number(rows.size()) + QStringLiteral(" found"));
}

void finddefinition::DoubleAction(int row) {
    KLVR_TRACE("finddefinition::DoubleAction");
    if (row < 0 || row >= files.rows().size())
        return;
    Global::sharedGlobal()->openAtLine(files.rows()[row].file, files.rows()[row].line);
}
