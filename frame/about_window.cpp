#include "frame/about_window.h"

#include <QLabel>
#include <QVBoxLayout>

AboutBox::AboutBox(const QString& buildDate) : QWidget(nullptr, Qt::Dialog) {
    setObjectName(QStringLiteral("About"));
    setWindowTitle(QStringLiteral("About Kelvaro"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 18, 24, 18);
    auto* name = new QLabel(QStringLiteral("Kelvaro"), this);
    QFont big = name->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    name->setFont(big);
    version_ = new QLabel(QStringLiteral("Version ") + QStringLiteral(KELVARO_VERSION), this);
    version_->setObjectName(QStringLiteral("aboutVersion"));
    buildDate_ = new QLabel(QStringLiteral("Built ") + (buildDate.isEmpty() ? QStringLiteral("(unknown)") : buildDate), this);
    buildDate_->setObjectName(QStringLiteral("aboutBuildDate"));
    for (QLabel* label : {name, version_, buildDate_}) {
        label->setAlignment(Qt::AlignCenter);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        layout->addWidget(label);
    }
    setFixedSize(sizeHint().expandedTo(QSize(300, 0)));
}

QString AboutBox::versionText() const { return version_->text(); }

QString AboutBox::buildDateText() const { return buildDate_->text(); }
