// Filling the navigators from the parser and acting on a choice.
#include "editor/code.h"

#include "editor/kltextview.h"
#include "frame/global.h"
#include "insight/parser.h"

#include <QComboBox>
#include <QIcon>

// Icons are loaded once per image name; the parser only names them.
static QIcon kindIcon(const QString& image) {
    static QHash<QString, QIcon> cache;
    auto it = cache.find(image);
    if (it == cache.end())
        it = cache.insert(image, QIcon(KLVR_NSBUNDLE_RESOURCEPATH() + QLatin1Char('/') + image));
    return *it;
}

void code::fillNavigator(QComboBox* navigator, const std::shared_ptr<const DeclarationList>& list) {
    navigator->clear();
    if (!list)
        return;
    for (const DeclarationEntry& row : list->rows) {
        switch (row.row) {
        case DeclarationEntry::Row::Heading:
            navigator->addItem(row.title, QVariant());
            break;
        case DeclarationEntry::Row::Separator:
            navigator->insertSeparator(navigator->count());
            break;
        case DeclarationEntry::Row::Entry:
            navigator->addItem(kindIcon(row.image), row.title, QVariant::fromValue(row.line));
            break;
        }
    }
    navigator->setCurrentIndex(list->selectedRow);
}

void code::reloadMatrix() {
    KLVR_TRACE("reloadMatrix");
    KLTextView* view = currentView();
    const QString path = view ? KLVR_KLTEXTVIEW_FILENAME(view) : QString();
    parser* scanner = parser::sharedparser();
    const DeclarationKind kinds[] = {DeclarationKind::Sub,      DeclarationKind::Function, DeclarationKind::Action,
                                     DeclarationKind::Event,    DeclarationKind::Dim,      DeclarationKind::Const,
                                     DeclarationKind::Delegate, DeclarationKind::IBOutlet, DeclarationKind::IBAction};
    QComboBox* lists[] = {sublist, functionlist, actionlist, eventlist, Dimlist, constlist, propertylist,
                          iboutletlist, ibactionlist};
    fillNavigator(alllist, scanner->GetAll(path));
    for (int i = 0; i < 9; ++i)
        fillNavigator(lists[i], scanner->GetList(kinds[i], path));
    if (view) {
        auto separators = scanner->GetLineSeparators(path);
        KLVR_KLTEXTVIEW_LINESEPARATORS(view, separators ? *separators : QList<qint64>());
    }
}

void code::navigatorChosen(QComboBox* navigator, int index) {
    KLVR_TRACE("navigator");
    QVariant line = navigator->itemData(index);
    // Only entries carry a line (tag 1); the heading and the separator move nothing.
    if (line.isValid() && SomeDocumentOpened())
        KLVR_KLTEXTVIEW_GOTOLINE(currentView(), line.toLongLong());
    navigator->setCurrentIndex(0);
}

void code::delegatesChosen(int index) {
    KLVR_TRACE("delegates");
    if (delegates->itemText(index) == QLatin1String("TableView") && SomeDocumentOpened())
        currentView()->replaceSelectionAsOneStep(QStringLiteral("TableView delegates todo2"));
    delegates->setCurrentIndex(0);
}
