#include "lsp/text_document.h"

#include <algorithm>

namespace lsp {

TextDocument::TextDocument(QString text) { setText(std::move(text)); }

void TextDocument::setText(QString text) {
    text_ = std::move(text);
    // Room to grow, so that typing into a large text does not move all of it to a
    // larger allocation now and then.
    text_.reserve(text_.size() + text_.size() / 16 + 4096);
    lineStarts_.clear();
    lineStarts_.append(0);
    for (qsizetype i = 1; i <= text_.size(); ++i)
        if (startsLine(i))
            lineStarts_.append(i);
}

bool TextDocument::startsLine(qsizetype offset) const {
    if (offset <= 0 || offset > text_.size())
        return offset == 0;
    const QChar before = text_.at(offset - 1);
    if (before == u'\n')
        return true;
    return before == u'\r' && (offset == text_.size() || text_.at(offset) != u'\n');
}

qsizetype TextDocument::lineEnd(qsizetype line) const {
    qsizetype end = line + 1 < lineStarts_.size() ? lineStarts_.at(line + 1) : text_.size();
    if (end > lineStarts_.at(line) && line + 1 < lineStarts_.size()) {
        --end; // "\n" or a lone "\r"
        if (text_.at(end) == u'\n' && end > lineStarts_.at(line) && text_.at(end - 1) == u'\r')
            --end;
    }
    return end;
}

qsizetype TextDocument::offsetAt(TextPosition position) const {
    if (position.line < 0)
        return 0;
    if (position.line >= lineStarts_.size())
        return text_.size();
    const qsizetype start = lineStarts_.at(position.line);
    return start + std::clamp<qsizetype>(position.character, 0, lineEnd(position.line) - start);
}

TextPosition TextDocument::positionAt(qsizetype offset) const {
    offset = std::clamp<qsizetype>(offset, 0, text_.size());
    const auto after = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
    const qsizetype line = qsizetype(after - lineStarts_.begin()) - 1;
    return {line, qMin(offset, lineEnd(line)) - lineStarts_.at(line)};
}

QStringView TextDocument::lineText(qsizetype line) const {
    if (line < 0 || line >= lineStarts_.size())
        return {};
    const qsizetype start = lineStarts_.at(line);
    return QStringView(text_).mid(start, lineEnd(line) - start);
}

void TextDocument::replace(TextPosition startPosition, TextPosition endPosition, const QString& newText) {
    qsizetype start = offsetAt(startPosition);
    qsizetype end = offsetAt(endPosition);
    if (end < start)
        std::swap(start, end);
    text_.replace(start, end - start, newText);
    const qsizetype delta = newText.size() - (end - start);
    // Line starts up to `start` stay, except one at `start` itself, which depends on the
    // character there; those after the old end move by `delta`; those in between are
    // found again in the new text (one further, where "\r" and "\n" may have met).
    const auto first = std::lower_bound(lineStarts_.begin() + 1, lineStarts_.end(), start);
    const auto last = std::upper_bound(first, lineStarts_.end(), end + 1);
    QList<qsizetype> found;
    const qsizetype foundEnd = qMin(text_.size(), start + newText.size() + 1);
    for (qsizetype i = qMax<qsizetype>(start, 1); i <= foundEnd; ++i)
        if (startsLine(i))
            found.append(i);
    const qsizetype firstIndex = first - lineStarts_.begin();
    const qsizetype removed = last - first;
    for (qsizetype i = firstIndex + removed; i < lineStarts_.size(); ++i)
        lineStarts_[i] += delta;
    lineStarts_.remove(firstIndex, removed);
    // Shifted starts at or before foundEnd were found again.
    qsizetype keep = firstIndex;
    while (keep < lineStarts_.size() && lineStarts_.at(keep) <= foundEnd)
        lineStarts_.remove(keep);
    lineStarts_.insert(firstIndex, found.size(), 0);
    std::copy(found.begin(), found.end(), lineStarts_.begin() + firstIndex);
}

} // namespace lsp
