#include "editor/find_engine.h"

#include <QStringView>

namespace {

Qt::CaseSensitivity sensitivity(bool ignoreCase) {
    return ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
}

// The scope clipped to the text.
FindScope clipped(const QString& text, FindScope scope) {
    const qint64 size = text.size();
    FindScope s;
    s.start = qBound<qint64>(0, scope.start, size);
    s.end = scope.end < 0 ? size : qBound<qint64>(s.start, scope.end, size);
    return s;
}

} // namespace

namespace find_engine {

FindMatch findForward(const QString& text, const QString& needle, qint64 from, FindScope scope,
                      bool ignoreCase) {
    const FindScope s = clipped(text, scope);
    if (needle.isEmpty() || needle.size() > s.end - s.start)
        return {};
    // Only the scope is searched, so a match can never run past its end.
    const QStringView inScope = QStringView(text).mid(s.start, s.end - s.start);
    const qint64 start = qBound<qint64>(0, from - s.start, inScope.size());
    qint64 at = inScope.indexOf(needle, start, sensitivity(ignoreCase));
    if (at < 0 && start > 0)
        at = inScope.indexOf(needle, 0, sensitivity(ignoreCase));
    if (at < 0)
        return {};
    return {s.start + at, needle.size()};
}

FindMatch findBackward(const QString& text, const QString& needle, qint64 before, FindScope scope,
                       bool ignoreCase) {
    const FindScope s = clipped(text, scope);
    if (needle.isEmpty() || needle.size() > s.end - s.start)
        return {};
    const qint64 limit = qBound<qint64>(s.start, before, s.end);
    const QStringView head = QStringView(text).mid(s.start, limit - s.start);
    qint64 at = head.size() >= needle.size() ? head.lastIndexOf(needle, -1, sensitivity(ignoreCase)) : -1;
    if (at < 0) {
        const QStringView inScope = QStringView(text).mid(s.start, s.end - s.start);
        at = inScope.lastIndexOf(needle, -1, sensitivity(ignoreCase));
    }
    if (at < 0)
        return {};
    return {s.start + at, needle.size()};
}

bool isMatch(const QString& text, const QString& needle, qint64 start, qint64 length, bool ignoreCase) {
    if (needle.isEmpty() || start < 0 || length != needle.size() || start + length > text.size())
        return false;
    return QStringView(text).mid(start, length).compare(needle, sensitivity(ignoreCase)) == 0;
}

QList<qint64> allMatches(const QString& text, const QString& needle, FindScope scope, bool ignoreCase) {
    QList<qint64> starts;
    const FindScope s = clipped(text, scope);
    if (needle.isEmpty())
        return starts;
    const QStringView inScope = QStringView(text).mid(s.start, s.end - s.start);
    qint64 at = inScope.indexOf(needle, 0, sensitivity(ignoreCase));
    while (at >= 0) {
        starts.append(s.start + at);
        at = inScope.indexOf(needle, at + needle.size(), sensitivity(ignoreCase));
    }
    return starts;
}

} // namespace find_engine
