#include "editor/kltextview.h"

#include "editor/editor_keys.h"

#include "frame/runtime.h"

#include "editor/kelvaro_lexer.h"
#include "editor/line_commands.h"
#include "insight/completion.h"

#include <QAccessibleWidget>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QThreadPool>
#include <QtAlgorithms>

#include <cstring>

namespace {

// Marker numbers: breakpoints are shown in the symbol margin; separators are an
// underline across the text of the line before a method declaration.
constexpr int BreakpointMarker = 1;
constexpr int SeparatorMarker = 2;
// (Named apart from QsciScintilla's MarginType values, which a member would see first.)
constexpr int LineNumberMarginIndex = 0;
constexpr int BreakpointMarginIndex = 1;
constexpr int FoldMarginIndex = 2;

// The view's accessible object. QScintilla's own one measures the caret's character
// offset from the start of the document after every edit and every caret move, a pass
// over everything before the caret: at the end of a 100,000-line file each keystroke
// then costs more than a frame. The view answers with a plain accessible widget, which
// QScintilla's notifications do not look for, so they cost nothing.
QAccessibleInterface* plainAccessible(const QString& className, QObject* object) {
    if (className == QLatin1String("KLTextView") && object && object->isWidgetType())
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::EditableText);
    return nullptr;
}

void installPlainAccessible() {
    static const bool installed = [] {
        QAccessible::installFactory(&plainAccessible);
        return true;
    }();
    Q_UNUSED(installed);
}

// Scintilla counts UTF-16 code units character by character; on a line of a million
// characters that is milliseconds per position. The view's text is valid UTF-8, where
// every byte but a continuation byte starts a character and a four-byte character is two
// units, so a plain pass over the bytes gives the same count.
constexpr long CountItselfFrom = 4096; // bytes; shorter spans are left to Scintilla

// How many bytes of w have their top bit set, when no other bit is: the bits moved to
// the bottom of each byte and summed into the top byte by one multiplication (a
// population count is a library call where the processor's instruction is not assumed).
constexpr int highBitsSet(quint64 w) {
    return int(((w >> 7) * 0x0101010101010101ULL) >> 56);
}

qint64 utf16Units(const unsigned char* s, long length) {
    qint64 units = 0;
    long i = 0;
    // Eight bytes at a time: a continuation byte has its top bits 10, the lead byte of a
    // four-byte character 1111.
    constexpr quint64 high = 0x8080808080808080ULL;
    for (; i + 8 <= length; i += 8) {
        quint64 w;
        std::memcpy(&w, s + i, 8);
        const int continuation = highBitsSet((w & ~(w << 1)) & high);
        const int fourByteLeads = highBitsSet(w & (w << 1) & (w << 2) & (w << 3) & high);
        units += 8 - continuation + fourByteLeads;
    }
    for (; i < length; ++i)
        units += ((s[i] & 0xc0) != 0x80) + (s[i] >= 0xf0);
    return units;
}

// The number of bytes from s that hold `units` UTF-16 code units (never splitting a
// character), at most `length`.
long bytesForUnits(const unsigned char* s, long length, qint64 units) {
    long i = 0;
    while (i < length && units > 0) {
        units -= 1 + (s[i] >= 0xf0);
        ++i;
        while (i < length && (s[i] & 0xc0) == 0x80)
            ++i;
    }
    return i;
}

// The number of bytes before `end` that hold `units` UTF-16 code units, at most `length`.
// A count that ends between the two units of one character stays after that character,
// where counting forward lands too.
long bytesBeforeForUnits(const unsigned char* end, long length, qint64 units) {
    long i = 0;
    while (i < length && units > 0) {
        long step = i + 1;
        while (step < length && (end[-step] & 0xc0) == 0x80)
            ++step;
        units -= 1 + (end[-step] >= 0xf0);
        if (units < 0)
            break;
        i = step;
    }
    return i;
}

} // namespace

const QString KLTextView::NoContextMarker = QString::fromUtf16(completionNoContextMarker);

KLTextView::KLTextView(QObject* owner, const QString& name, QWidget* parent)
    : QsciScintilla(parent), owner_(owner), name_(name) {
    installPlainAccessible();
    setObjectName(name);
    setDiskState(DiskStamp(), 0);
    configure();
}

KLTextView::~KLTextView() {
    // Background writes hold a copy of the bytes, not the view; they finish first so
    // that no write outlives the object that reports on it.
    if (writer_)
        writer_->waitForDone();
}

void KLTextView::configure() {
    setUtf8(true);
    lexer_ = new KelvaroLexer(this);
    setLexer(lexer_);
    SendScintilla(SCI_STYLESETVISIBLE, kelvaro_style::Hidden, 0L);
    // UTF-16 offsets of every line start, kept up to date by Scintilla: converting a
    // position costs a line lookup, not a pass over the text.
    SendScintilla(SCI_ALLOCATELINECHARACTERINDEX, SC_LINECHARACTERINDEX_UTF16);

    setWrapMode(WrapNone);
    setAutoIndent(true);
    setIndentationsUseTabs(false);
    setIndentationWidth(line_commands::IndentStep);
    setTabWidth(4);
    setEolMode(EolUnix);
    setAutoCompletionSource(AcsNone);
    setCallTipsStyle(CallTipsNone);
    setFolding(NoFoldStyle);
    setBraceMatching(NoBraceMatch);
    // The menu bar's keys reach the menu bar; no key silently cuts or swaps lines.
    leaveKeysToMenus(this);

    setMarginType(LineNumberMarginIndex, NumberMargin);
    setMarginLineNumbers(LineNumberMarginIndex, true);
    setMarginMarkerMask(LineNumberMarginIndex, 0);
    setMarginType(BreakpointMarginIndex, SymbolMargin);
    setMarginWidth(BreakpointMarginIndex, 14);
    setMarginMarkerMask(BreakpointMarginIndex, 1 << BreakpointMarker);
    setMarginSensitivity(BreakpointMarginIndex, true);
    setMarginWidth(FoldMarginIndex, 0);
    setMarginMarkerMask(FoldMarginIndex, 0);

    markerDefine(Circle, BreakpointMarker);
    setMarkerBackgroundColor(QColor(0xd0, 0x20, 0x20), BreakpointMarker);
    setMarkerForegroundColor(QColor(0x90, 0x10, 0x10), BreakpointMarker);
    SendScintilla(SCI_MARKERDEFINE, SeparatorMarker, SC_MARK_UNDERLINE);
    SendScintilla(SCI_MARKERSETBACK, SeparatorMarker, QColor(0xb0, 0xb0, 0xb0));

    // Completion lists keep the owner's order and may hold blanks and parentheses.
    SendScintilla(SCI_AUTOCSETIGNORECASE, 1);
    SendScintilla(SCI_AUTOCSETORDER, SC_ORDER_CUSTOM);

    setEditorFont(10);
    updateLineNumberWidth();

    // QScintilla answers every insertion and deletion it is told of with an
    // accessibility event whose offset it counts from the start of the document: a
    // pass over the text before the change on every keystroke. The view is therefore
    // told only of what is about to change, which QScintilla passes on untouched.
    // (So QsciScintilla::textChanged() and linesChanged() are not emitted; the owner
    // calls are.)
    SendScintilla(SCI_SETMODEVENTMASK, SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE);
    connect(this, &QsciScintillaBase::SCN_MODIFIED, this, &KLTextView::onModified);
    connect(this, &QsciScintillaBase::SCN_MODIFYATTEMPTRO, this, &KLTextView::readOnlyEditAttempted);
    connect(this, &QsciScintillaBase::SCN_UPDATEUI, this, &KLTextView::onUpdateUi);
    // QScintilla answers every cursor move with the cursor's column, counted from the
    // start of the line: milliseconds on a very long line. Nothing here uses that signal
    // (cursorPositionChanged) nor QScintilla's brace matching, which the same slot drives.
    disconnect(this, SIGNAL(SCN_UPDATEUI(int)), this, SLOT(handleUpdateUI(int)));
    connect(this, &QsciScintillaBase::SCN_CHARADDED, this, &KLTextView::onCharAdded);
    connect(this, &QsciScintilla::marginClicked, this, &KLTextView::onMarginClicked);
    connect(this, &QsciScintilla::userListActivated, this,
            [this](int, const QString& chosen) { insertCompletion(chosen); });
}


// ---------------------------------------------------------------- positions

qint64 KLTextView::utf16FromBytes(qint64 bytePosition) const {
    const long length = SendScintilla(SCI_GETLENGTH);
    const long pos = long(qBound<qint64>(0, bytePosition, qint64(length)));
    const long lineNo = SendScintilla(SCI_LINEFROMPOSITION, pos);
    const long lineStart = SendScintilla(SCI_POSITIONFROMLINE, lineNo);
    const UnitAnchor anchor = unitAnchor_;
    qint64 units;
    if (anchor.byte >= 0 && qAbs(pos - anchor.byte) < pos - lineStart)
        units = pos >= anchor.byte ? anchor.units + unitsBetween(anchor.byte, pos)
                                   : anchor.units - unitsBetween(pos, anchor.byte);
    else
        units = SendScintilla(SCI_INDEXPOSITIONFROMLINE, lineNo, SC_LINECHARACTERINDEX_UTF16) +
                unitsBetween(lineStart, pos);
    unitAnchor_ = {pos, units};
    return units;
}

qint64 KLTextView::unitsBetween(long start, long end) const {
    if (end - start < CountItselfFrom)
        return SendScintilla(SCI_COUNTCODEUNITS, start, end);
    return utf16Units(
        reinterpret_cast<const unsigned char*>(SendScintilla(SCI_GETRANGEPOINTER, start, end - start)), end - start);
}

qint64 KLTextView::bytesFromUtf16(qint64 utf16Position) const {
    const qint64 units = utf16Position;
    if (units <= 0)
        return 0;
    const long length = SendScintilla(SCI_GETLENGTH);
    const long lastLine = SendScintilla(SCI_LINEFROMPOSITION, length);
    const qint64 total =
        SendScintilla(SCI_INDEXPOSITIONFROMLINE, lastLine, SC_LINECHARACTERINDEX_UTF16) +
        unitsBetween(long(SendScintilla(SCI_POSITIONFROMLINE, lastLine)), length);
    if (units >= total)
        return length;
    const long lineNo = SendScintilla(SCI_LINEFROMINDEXPOSITION, long(units), SC_LINECHARACTERINDEX_UTF16);
    const long lineStart = SendScintilla(SCI_POSITIONFROMLINE, lineNo);
    const long lineIndex = SendScintilla(SCI_INDEXPOSITIONFROMLINE, lineNo, SC_LINECHARACTERINDEX_UTF16);
    const UnitAnchor anchor = unitAnchor_;
    if (anchor.byte >= 0 && qAbs(units - anchor.units) < units - lineIndex) {
        // A UTF-16 unit takes at most three bytes, so the span to read is bounded.
        const long span = long(3 * qAbs(units - anchor.units) + 4);
        if (units >= anchor.units) {
            const long available = qMin(span, length - anchor.byte);
            const auto* bytes =
                reinterpret_cast<const unsigned char*>(SendScintilla(SCI_GETRANGEPOINTER, anchor.byte, available));
            return anchor.byte + bytesForUnits(bytes, available, units - anchor.units);
        }
        const long available = qMin(span, anchor.byte);
        const auto* bytes = reinterpret_cast<const unsigned char*>(
            SendScintilla(SCI_GETRANGEPOINTER, anchor.byte - available, available));
        return anchor.byte - bytesBeforeForUnits(bytes + available, available, anchor.units - units);
    }
    if (units - lineIndex < CountItselfFrom)
        return SendScintilla(SCI_POSITIONRELATIVECODEUNITS, lineStart, long(units - lineIndex));
    const long lineEnd = SendScintilla(SCI_GETLINEENDPOSITION, lineNo);
    const auto* bytes =
        reinterpret_cast<const unsigned char*>(SendScintilla(SCI_GETRANGEPOINTER, lineStart, lineEnd - lineStart));
    return lineStart + bytesForUnits(bytes, lineEnd - lineStart, units - lineIndex);
}

qint64 KLTextView::line() const {
    return SendScintilla(SCI_LINEFROMPOSITION, SendScintilla(SCI_GETCURRENTPOS)) + 1;
}

qint64 KLTextView::position() const {
    return utf16FromBytes(SendScintilla(SCI_GETCURRENTPOS));
}

qint64 KLTextView::selectionStartUtf16() const {
    return utf16FromBytes(SendScintilla(SCI_GETSELECTIONSTART));
}

qint64 KLTextView::selectionEndUtf16() const {
    return utf16FromBytes(SendScintilla(SCI_GETSELECTIONEND));
}

void KLTextView::selectUtf16(qint64 start, qint64 end) {
    SendScintilla(SCI_SETSEL, bytesFromUtf16(start), bytesFromUtf16(end));
}

QString KLTextView::documentText() const {
    return QString::fromUtf8(editorBytes());
}

void KLTextView::gotoLine(qint64 lineNumber) {
    const qint64 count = SendScintilla(SCI_GETLINECOUNT);
    const long target = long(qBound<qint64>(1, lineNumber, count) - 1);
    SendScintilla(SCI_GOTOPOS, SendScintilla(SCI_POSITIONFROMLINE, target));
    SendScintilla(SCI_ENSUREVISIBLEENFORCEPOLICY, target);
}

// ---------------------------------------------------------------- colouring and layout

void KLTextView::setKeywords(const QStringList& words) {
    lexer_->setKeywords(words);
    restyleStaleVisibleLines();
}

void KLTextView::setTypes(const QStringList& words) {
    lexer_->setTypes(words);
    restyleStaleVisibleLines();
}

void KLTextView::setCommands(const QStringList& words) {
    lexer_->setCommands(words);
    restyleStaleVisibleLines();
}

void KLTextView::performSyntaxHighlighting() {
    // Lines keep their colours while the word lists stay the same (every edit has
    // Scintilla re-colour from the changed line on), so only lines coloured with older
    // lists need work, and only those in view now; the rest follow as they appear.
    restyleStaleVisibleLines();
    viewport()->update();
}

void KLTextView::restyleStaleVisibleLines() {
    // Lines at or after Scintilla's end of styling are coloured by Scintilla's own
    // request when drawn; the ones before it that are in view and carry an older
    // generation are coloured here.
    const long endStyled = SendScintilla(SCI_GETENDSTYLED);
    const long endStyledLine = SendScintilla(SCI_LINEFROMPOSITION, endStyled);
    const long first = SendScintilla(SCI_DOCLINEFROMVISIBLE, SendScintilla(SCI_GETFIRSTVISIBLELINE));
    const long last = qMin(first + SendScintilla(SCI_LINESONSCREEN) + 1, endStyledLine - 1);
    const int generation = lexer_->generation();
    bool restyled = false;
    long lineNo = first;
    while (lineNo <= last) {
        if (SendScintilla(SCI_GETLINESTATE, lineNo) == generation) {
            ++lineNo;
            continue;
        }
        long runEnd = lineNo;
        while (runEnd + 1 <= last && SendScintilla(SCI_GETLINESTATE, runEnd + 1) != generation)
            ++runEnd;
        lexer_->styleText(int(SendScintilla(SCI_POSITIONFROMLINE, lineNo)),
                          int(SendScintilla(SCI_GETLINEENDPOSITION, runEnd)));
        restyled = true;
        lineNo = runEnd + 1;
    }
    if (restyled)
        viewport()->update();
}

void KLTextView::noteLongLines(long position, const char* text, long length) {
    // Whether an insertion makes a line longer than the lexer colours in full: the longest
    // run of the inserted text without a line break, with the line it goes into.
    long longest = length;
    if (text) {
        longest = 0;
        for (const char* at = text; at < text + length;) {
            const auto* lineBreak = static_cast<const char*>(std::memchr(at, '\n', size_t(text + length - at)));
            const char* runEnd = lineBreak ? lineBreak : text + length;
            longest = qMax(longest, long(runEnd - at));
            at = runEnd + 1;
        }
    }
    const long lineNo = SendScintilla(SCI_LINEFROMPOSITION, position);
    longLines_ = longest + long(SendScintilla(SCI_LINELENGTH, lineNo)) > KelvaroLexer::LongLineBytes;
}

void KLTextView::followCursorOnLongLine() {
    // On a very long line only a window around the cursor is coloured and measured (see
    // KelvaroLexer); when the cursor nears the window's edge or leaves it, the window is
    // moved to the cursor, and the cursor keeps its place on the screen.
    if (!longLines_)
        return;
    const long caret = SendScintilla(SCI_GETCURRENTPOS);
    const long lineNo = SendScintilla(SCI_LINEFROMPOSITION, caret);
    const long begin = SendScintilla(SCI_POSITIONFROMLINE, lineNo);
    const long end = lineNo + 1 < SendScintilla(SCI_GETLINECOUNT) ? long(SendScintilla(SCI_POSITIONFROMLINE, lineNo + 1))
                                                                   : long(SendScintilla(SCI_GETLENGTH));
    if (end - begin <= KelvaroLexer::LongLineBytes)
        return;
    const auto [first, last] = lexer_->anchorWindow();
    const long margin = KelvaroLexer::WindowBytes / 8;
    const bool inside = caret >= first && caret <= last && first >= begin && last <= end;
    if (inside && (caret - first >= margin || first == begin) && (last - caret >= margin || last == end))
        return;
    const long x = inside ? long(SendScintilla(SCI_POINTXFROMPOSITION, 0UL, caret)) : 0;
    lexer_->setLongLineAnchor(caret);
    lexer_->styleText(int(begin), int(end));
    if (inside)
        SendScintilla(SCI_SETXOFFSET, SendScintilla(SCI_GETXOFFSET) + SendScintilla(SCI_POINTXFROMPOSITION, 0UL, caret) - x);
    else
        SendScintilla(SCI_SCROLLCARET);
    viewport()->update();
}

void KLTextView::setLineSeparators(const QList<qint64>& positions) {
    SendScintilla(SCI_MARKERDELETEALL, SeparatorMarker);
    const long length = SendScintilla(SCI_GETLENGTH);
    const qint64 utf16Length = utf16FromBytes(length);
    for (qint64 p : positions) {
        if (p < 0 || p >= utf16Length)
            continue;
        // p is the line break that ends the line above the declaration: that line
        // gets the rule drawn under it.
        const long lineNo = SendScintilla(SCI_LINEFROMPOSITION, long(bytesFromUtf16(p)));
        SendScintilla(SCI_MARKERADD, lineNo, SeparatorMarker);
    }
}

QList<qint64> KLTextView::separatorLines() const {
    QList<qint64> lines;
    long lineNo = SendScintilla(SCI_MARKERNEXT, 0, 1 << SeparatorMarker);
    while (lineNo >= 0) {
        lines << lineNo;
        lineNo = SendScintilla(SCI_MARKERNEXT, lineNo + 1, 1 << SeparatorMarker);
    }
    return lines;
}

void KLTextView::turnOffWrapping() {
    setWrapMode(WrapNone);
}

void KLTextView::turnOnAutoIndent() {
    setAutoIndent(true);
}

QFont KLTextView::editorFont(int points) {
    const int size = qMax(1, points);
    if (QFontDatabase::families().contains(QStringLiteral("Monaco")))
        return QFont(QStringLiteral("Monaco"), size);
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(size);
    // The desktop's "monospace" can be a font whose glyphs are not all one width (some
    // installations name one with dual widths): then the first fixed-pitch family is taken.
    if (!QFontInfo(font).fixedPitch()) {
        const QStringList families = QFontDatabase::families();
        const auto fixed = std::find_if(families.begin(), families.end(),
                                        [](const QString& family) { return QFontDatabase::isFixedPitch(family); });
        if (fixed != families.end())
            font.setFamily(*fixed);
    }
    return font;
}

void KLTextView::setEditorFont(int points) {
    const QFont font = editorFont(points);
    lexer_->setEditorFont(font);
    setMarginsFont(font);
    SendScintilla(SCI_STYLESETVISIBLE, kelvaro_style::Hidden, 0L); // kept through the style reset
    lineNumberDigits_ = 0; // the digits' width changed with the font
    updateLineNumberWidth();
}

void KLTextView::updateLineNumberWidth() {
    int digits = 1;
    for (long n = SendScintilla(SCI_GETLINECOUNT); n >= 10; n /= 10)
        ++digits;
    if (digits == lineNumberDigits_)
        return;
    lineNumberDigits_ = digits;
    setMarginWidth(LineNumberMarginIndex, QString(digits + 1, QLatin1Char('9')));
}

// ---------------------------------------------------------------- breakpoints

void KLTextView::toggleBreakpoint() {
    const long lineNo = SendScintilla(SCI_LINEFROMPOSITION, SendScintilla(SCI_GETCURRENTPOS));
    if (SendScintilla(SCI_MARKERGET, lineNo) & (1 << BreakpointMarker))
        SendScintilla(SCI_MARKERDELETE, lineNo, BreakpointMarker);
    else
        SendScintilla(SCI_MARKERADD, lineNo, BreakpointMarker);
}

QList<qint64> KLTextView::breakpointLines() const {
    QList<qint64> lines;
    long lineNo = SendScintilla(SCI_MARKERNEXT, 0, 1 << BreakpointMarker);
    while (lineNo >= 0) {
        lines << lineNo + 1;
        lineNo = SendScintilla(SCI_MARKERNEXT, lineNo + 1, 1 << BreakpointMarker);
    }
    return lines;
}

void KLTextView::onMarginClicked(int margin, int lineNo, Qt::KeyboardModifiers) {
    if (margin != BreakpointMarginIndex)
        return;
    if (SendScintilla(SCI_MARKERGET, lineNo) & (1 << BreakpointMarker))
        SendScintilla(SCI_MARKERDELETE, lineNo, BreakpointMarker);
    else
        SendScintilla(SCI_MARKERADD, lineNo, BreakpointMarker);
}

// ---------------------------------------------------------------- owner calls

bool KLTextView::ownerHas(const char* method) const {
    if (!owner_)
        return false;
    const QMetaObject* meta = owner_->metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        if (meta->method(i).name() == method)
            return true;
    }
    return false;
}

void KLTextView::notifyOwner(const char* method) {
    if (ownerHas(method))
        QMetaObject::invokeMethod(owner_, method, Qt::DirectConnection, Q_ARG(QObject*, this));
}

void KLTextView::onModified(int position, int modificationType, const char* text, int length, int, int, int,
                            int, int, int) {
    // Only notifications of what is about to change arrive (see configure()).
    if (!(modificationType & (SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE)))
        return;
    if (position < unitAnchor_.byte)
        unitAnchor_ = {};
    if ((modificationType & SC_MOD_BEFOREINSERT) && !longLines_)
        noteLongLines(position, text, length);
    // An insertion announced earlier is complete now, and still where it was put.
    reportPendingInsertion();
    ++changeCount_;
    if (!loading_ && ownerHas(KLTextViewOwnerCalls::ShouldChangeText)) {
        if (modificationType & SC_MOD_BEFOREDELETE) {
            const qint64 location = utf16FromBytes(position);
            askOwnerShouldChange(location, utf16FromBytes(position + length) - location, QString());
        } else {
            // The text to be inserted is not handed over here; it is read once it is in,
            // before the next change or at the end of this turn of the event loop.
            pendingInsertAt_ = position;
            pendingInsertLength_ = length;
        }
    }
    notifyOwner(KLTextViewOwnerCalls::TextDidChange);
    if (!afterChangeQueued_) {
        afterChangeQueued_ = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                afterChangeQueued_ = false;
                reportPendingInsertion();
                updateLineNumberWidth(); // the margin follows the line count
            },
            Qt::QueuedConnection);
    }
}

void KLTextView::reportPendingInsertion() {
    if (pendingInsertLength_ <= 0)
        return;
    const long start = pendingInsertAt_;
    const long end = qMin(start + pendingInsertLength_, long(SendScintilla(SCI_GETLENGTH)));
    pendingInsertLength_ = 0;
    if (!ownerHas(KLTextViewOwnerCalls::ShouldChangeText) || end <= start)
        return;
    QByteArray bytes(end - start + 1, '\0');
    SendScintilla(SCI_GETTEXTRANGE, start, end, bytes.data());
    bytes.chop(1);
    askOwnerShouldChange(utf16FromBytes(start), 0, QString::fromUtf8(bytes));
}

void KLTextView::askOwnerShouldChange(qint64 location, qint64 removed, const QString& inserted) {
    bool allowed = true;
    QMetaObject::invokeMethod(owner_, KLTextViewOwnerCalls::ShouldChangeText, Qt::DirectConnection,
                              Q_RETURN_ARG(bool, allowed), Q_ARG(QObject*, this), Q_ARG(qint64, location),
                              Q_ARG(qint64, removed), Q_ARG(QString, inserted));
}

void KLTextView::onUpdateUi(int updated) {
    if (updated & SC_UPDATE_SELECTION) {
        followCursorOnLongLine();
        notifyOwner(KLTextViewOwnerCalls::DidChangeSelection);
    }
    if (updated & (SC_UPDATE_V_SCROLL | SC_UPDATE_CONTENT))
        restyleStaleVisibleLines();
}

void KLTextView::_ShouldChangeText(const QVariantList&) {
    // The view keeps its colouring, markers and positions up to date itself as the
    // text changes; an owner handing a change back after the event needs nothing more.
}
