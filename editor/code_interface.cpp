// The pane's widgets: the navigator row above the editor, the editor container, and
// the status row below it.
#include "editor/code.h"

#include "editor/flow_layout.h"
#include "editor/kltextview.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QStackedLayout>
#include <QTabWidget>
#include <QVBoxLayout>

static QComboBox* makePopUp(QWidget* parent, const QString& name, int minimumWidth) {
    auto* popUp = new QComboBox(parent);
    popUp->setObjectName(name);
    popUp->setMinimumWidth(minimumWidth);
    popUp->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    popUp->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    popUp->setFocusPolicy(Qt::NoFocus);
    return popUp;
}

void code::buildInterface() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);

    // The navigators wrap onto a second row when the window is too narrow for one, so
    // each shows its whole title ("Function (12)").
    auto* navigatorBox = new QWidget(this);
    navigatorBox->setObjectName(QStringLiteral("navigators"));
    auto* navigatorRow = new FlowLayout(navigatorBox);
    navigatorRow->setContentsMargins(4, 2, 4, 0);
    QSizePolicy wrapping(QSizePolicy::Preferred, QSizePolicy::Preferred);
    wrapping.setHeightForWidth(true);
    navigatorBox->setSizePolicy(wrapping);
    alllist = makePopUp(this, QStringLiteral("alllist"), 90);
    sublist = makePopUp(this, QStringLiteral("sublist"), 70);
    functionlist = makePopUp(this, QStringLiteral("functionlist"), 90);
    actionlist = makePopUp(this, QStringLiteral("actionlist"), 80);
    eventlist = makePopUp(this, QStringLiteral("eventlist"), 80);
    Dimlist = makePopUp(this, QStringLiteral("Dimlist"), 70);
    constlist = makePopUp(this, QStringLiteral("constlist"), 80);
    propertylist = makePopUp(this, QStringLiteral("propertylist"), 90);
    iboutletlist = makePopUp(this, QStringLiteral("iboutletlist"), 90);
    ibactionlist = makePopUp(this, QStringLiteral("ibactionlist"), 90);
    for (QComboBox* navigator : navigators()) {
        navigatorRow->addWidget(navigator);
        connect(navigator, &QComboBox::activated, this,
                [this, navigator](int index) { navigatorChosen(navigator, index); });
    }
    delegates = makePopUp(this, QStringLiteral("delegates"), 80);
    syntax = makePopUp(this, QStringLiteral("syntax"), 90);
    syntax2 = makePopUp(this, QStringLiteral("syntax2"), 90);
    syntax3 = makePopUp(this, QStringLiteral("syntax3"), 70);
    connect(delegates, &QComboBox::activated, this, &code::delegatesChosen);
    layout->addWidget(navigatorBox);

    tabView = new QTabWidget(this);
    tabView->setObjectName(QStringLiteral("tabView"));
    tabView->setDocumentMode(true);
    container_ = new QWidget();
    container_->setObjectName(QStringLiteral("mycodeview"));
    stack_ = new QStackedLayout(container_);
    stack_->setContentsMargins(0, 0, 0, 0);
    tabView->addTab(container_, QStringLiteral("Code"));
    tabView->tabBar()->hide(); // one tab until more tabs exist
    layout->addWidget(tabView, 1);

    auto* statusRow = statusRow_ = new QHBoxLayout();
    statusRow->setContentsMargins(6, 0, 6, 2);
    statusbar = new QLabel(this);
    statusbar->setObjectName(QStringLiteral("statusbar"));
    progress = new QProgressBar(this);
    progress->setObjectName(QStringLiteral("progress"));
    progress->setRange(0, 0);
    progress->setMaximumWidth(80);
    progress->setMaximumHeight(12);
    progress->hide();
    line = new QLineEdit(this);
    line->setObjectName(QStringLiteral("line"));
    line->setReadOnly(true);
    line->setFrame(false);
    line->setMaximumWidth(90);
    line->setFocusPolicy(Qt::NoFocus);
    // The status text gives way first when the window is narrow; the fields keep their size.
    statusbar->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusbar->setMinimumWidth(120);
    line->setMinimumWidth(64);
    documentInfo = new QLabel(this);
    documentInfo->setObjectName(QStringLiteral("documentInfo"));
    documentInfo->setFrameShape(QFrame::StyledPanel);
    documentInfo->setContentsMargins(6, 0, 6, 0);
    statusRow->addWidget(statusbar, 1);
    statusRow->addWidget(documentInfo);
    statusRow->addSpacing(8);
    // The snippet choosers sit with the status line, leaving the top row to the navigators.
    for (QComboBox* popUp : {delegates.data(), syntax.data(), syntax2.data(), syntax3.data()})
        statusRow->addWidget(popUp);
    statusRow->addWidget(progress);
    statusRow->addWidget(line);
    layout->addLayout(statusRow);
    buildSnippetControls();
}

void code::insertBesideLine(QWidget* widget) { statusRow_->insertWidget(statusRow_->indexOf(line), widget); }

QList<QComboBox*> code::navigators() const {
    return {alllist, sublist, functionlist, actionlist, eventlist, Dimlist, constlist, propertylist, iboutletlist,
            ibactionlist};
}
