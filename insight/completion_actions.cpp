// Global as the editor views' delegate for completion: the two completion questions,
// answered from the vocabulary and the parser's stored scans, and the delegate calls
// handed back to the views themselves.
#include "editor/kltextview.h"
#include "frame/global.h"
#include "insight/completion.h"
#include "insight/parser.h"

#include <QTimer>

namespace {

struct Request {
    QString path;
    qint64 position = 0;
};

Request requestOf(QObject* view) {
    auto* textView = qobject_cast<KLTextView*>(view);
    if (!textView)
        return {};
    return {KLVR_KLTEXTVIEW_FILENAME(textView), KLVR_KLTEXTVIEW_POSITION(textView)};
}

// Asks `question` with a resolver over the open project and its vocabulary.
template <typename Result, typename Question>
Result ask(const Global& g, QObject* view, Question question) {
    if (!g.myparser)
        return {};
    const Request request = requestOf(view);
    const TypeResolver resolver(*g.myparser, {g.ProjectPath, g.projectFiles, g.dClassCompletion});
    return question(resolver,
                    CompletionVocabulary{g.dCompletion2function, g.KelvaroConsts, g.dObjectCompletion,
                                         g.dClassCompletion},
                    request);
}

} // namespace

QStringList Global::KLVR_TextView_GetCompletion(QObject* view, const QString& expression) {
    KLVR_TRACE("TextView_GetCompletion");
    return ask<QStringList>(*this, view, [&](const TypeResolver& r, const CompletionVocabulary& v, const Request& at) {
        return completionCandidates(r, v, at.path, at.position, expression);
    });
}

QString Global::KLVR_TextView_GetCompletion2(QObject* view, const QString& word) {
    KLVR_TRACE("TextView_GetCompletion2");
    return ask<QString>(*this, view, [&](const TypeResolver& r, const CompletionVocabulary& v, const Request& at) {
        return completionText(r, v, at.path, at.position, word);
    });
}

QStringList Global::__TextView_GetCompletion(QObject* view, const QString& expression) {
    return KLVR_TextView_GetCompletion(view, expression);
}

QString Global::__TextView_GetCompletion2(QObject* view, const QString& word) {
    return KLVR_TextView_GetCompletion2(view, word);
}

QStringList Global::textView_completions_forPartialWordRange_indexOfSelectedItem(QObject* view,
                                                                                const QStringList& words,
                                                                                qint64 start, qint64 length) {
    auto* textView = qobject_cast<KLTextView*>(view);
    return textView ? textView->delegate_textView_completions(words, start, length) : words;
}

QList<qint64> Global::textView_willChangeSelectionFromCharacterRange_toCharacterRange(
    QObject* view, qint64 oldStart, qint64 oldLength, qint64 newStart, qint64 newLength) {
    auto* textView = qobject_cast<KLTextView*>(view);
    return textView ? textView->delegate_textView_willChangeSelection(oldStart, oldLength, newStart, newLength)
                    : QList<qint64>{newStart, newLength};
}

bool Global::textView_shouldChangeTextInRange(QObject* view, qint64 location, qint64, const QString& replacement) {
    QPointer<KLTextView> textView = qobject_cast<KLTextView*>(view);
    if (textView)
        QTimer::singleShot(0, textView, [textView, location, replacement] {
            if (textView)
                textView->_ShouldChangeText({location, replacement});
        });
    return true;
}

void Global::ShouldChangeText(const Value&, const Value&) {}
