#pragma once
// KLTextView: the runtime's source-editor view, a QScintilla editor for one Kelvaro
// source file. It colours the text (KelvaroLexer), draws separator rules in front of
// method declarations, breakpoint marks and line numbers in margins, indents new lines
// like the previous one, never wraps, and has its own find engine.
//
// Positions and lines. Scintilla works in UTF-8 byte positions; everything this view
// reports or accepts is a 0-based UTF-16 offset (the runtime's string positions, the
// scanner's positions) or a 1-based line, converted through Scintilla's UTF-16 line
// index, so both agree with the scanner also for text with non-ASCII characters.
//
// Bytes. The view holds the file's text as UTF-8 without its byte order mark; a save
// writes it back in the file's own encoding (UTF-8, with the mark when the file had
// one, or Windows-1252 for a file that is not UTF-8; see document_file.h), so every
// byte outside an edit is written as it was read. Line endings (LF or CRLF) stay as they
// were and new lines, typed or inserted, use the file's style. In a Windows-1252 file a
// character that encoding cannot hold is refused as it is inserted.
//
// Saves. Every write of the file, explicit or in the background, runs on the view's one
// writer thread in the order it was asked for, so the last save asked for is the last
// one written. Before writing, the writer checks that the file on disk is still the one
// the view last read or wrote; if another program changed or deleted it, nothing is
// written and saveFinished() says so. A file without write permission opens read-only.
//
// Owner callbacks. The owner given at construction receives the view's notifications
// by name through Qt's meta-object system; an owner without an invokable of that name
// is simply not called. The names and signatures are in KLTextViewOwnerCalls below.

#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <Qsci/qsciscintilla.h>

#include "editor/document_file.h"
#include "editor/page_renderer.h"
#include "insight/live_diagnostics.h"

#include <functional>
#include <future>
#include <memory>

class KelvaroLexer;
class QPrinter;
class QThreadPool;

// What the view calls on its owner (all on the main thread):
//   void KLVR_TextDidChange(QObject* view)                 as each change of the text is made
//                                                          (the text may not hold it yet)
//   void KLVR_TextViewDidChangeSelection(QObject* view)    after the cursor or selection moved
//   QStringList KLVR_TextView_GetCompletion(QObject* view, QString expression)
//       candidates for the expression before the word being completed; the expression
//       is KLTextView::NoContextMarker when there is none
//   QString KLVR_TextView_GetCompletion2(QObject* view, QString word)
//       the completion text of one whole word ("" for none); shown as a tip on "("
//   bool textView_shouldChangeTextInRange(QObject* view, qint64 location, qint64 length,
//       QString replacement)          for each change, in UTF-16: a deletion before it
//                                     happens, an insertion once it is in (before the
//                                     next change, at the latest at the end of the
//                                     event-loop turn); the answer is not used
// The view's own textChanged() and linesChanged() signals are not emitted (see
// KLTextView::configure).
namespace KLTextViewOwnerCalls {
inline constexpr const char* TextDidChange = "KLVR_TextDidChange";
inline constexpr const char* DidChangeSelection = "KLVR_TextViewDidChangeSelection";
inline constexpr const char* GetCompletion = "KLVR_TextView_GetCompletion";
inline constexpr const char* GetCompletion2 = "KLVR_TextView_GetCompletion2";
inline constexpr const char* ShouldChangeText = "textView_shouldChangeTextInRange";
} // namespace KLTextViewOwnerCalls

class KLTextView : public QsciScintilla {
    Q_OBJECT
public:
    // The expression passed to the owner when nothing stands before the word.
    static const QString NoContextMarker;
    // The comment mark that COMMENT puts in front of a line.
    static constexpr char CommentMark = '\'';

    explicit KLTextView(QObject* owner = nullptr, const QString& name = QString(), QWidget* parent = nullptr);
    ~KLTextView() override;

    QObject* owner() const { return owner_; }
    QString name() const { return name_; }

    // ---- file (editor/kltextview_file.cpp) ----
    // Loads the file and remembers the path; false (text unchanged) when the file is
    // missing or unreadable. The undo history starts empty and the text is unmodified;
    // the insertion point is at the start of the text.
    bool load(const QString& path);
    // Writes the text atomically after the writes asked for before; false when it was
    // not written (the text and its modified state stay). saveFinished() has been
    // emitted when it returns. The caller tells the user.
    bool save(const QString& path);
    // The same write, queued on the view's writer thread: the text is taken now and
    // written off the interface thread. The future says whether it was written (wait
    // for it off the interface thread only); saveFinished() follows on the interface
    // thread.
    std::shared_future<bool> saveInBackground(const QString& path);
    QString fileName() const { return path_; }
    // True when the file used CRLF line endings (new lines are then written so too).
    bool usesCrlf() const;
    // "LF", "CRLF" or "CR": the line endings new lines get.
    QString lineEndName() const;
    TextEncoding encoding() const { return encoding_; }
    // The encoding's name for the user ("UTF-8", "UTF-8 with BOM", "Windows-1252").
    QString encodingName() const;
    // The document's bytes exactly as a save writes them.
    QByteArray documentBytes() const;
    // The text as the view holds it: UTF-8 without the byte order mark.
    QByteArray editorBytes() const;
    // True when the file could not be written when it was loaded: the view is then
    // read-only, and an attempt to type emits readOnlyEditAttempted().
    bool isFileReadOnly() const { return fileReadOnly_; }
    // Modified, and this text not yet handed to a save.
    bool needsSave() const;
    // Advances with every change of the text.
    qint64 changeCount() const { return changeCount_; }
    // The file as the view last read or wrote it; the next save checks the disk
    // against it. Set by an owner that settled a difference with the disk.
    DiskStamp diskStamp() const;
    quint64 diskFingerprint() const;
    void setDiskState(const DiskStamp& stamp, quint64 fingerprint);
    // Replaces the whole text by the text of a file's bytes as one undo step, taking
    // that file's encoding, byte order mark and line endings (also when read-only).
    void replaceAllAsOneStep(const QByteArray& fileBytes);
    // Inserts text at a UTF-16 position as one undo step, its line breaks written in
    // the document's style; the earlier undo history stays.
    void insertAsOneStep(qint64 utf16Position, const QString& text);
    // The text with every line break in the document's style.
    QString toDocumentLineEnds(const QString& text) const;
    // Writes the file as UTF-8 from now on (the next save writes it so).
    void convertToUtf8();
    // Runs a job on the view's writer thread, after the writes asked for before.
    void queueOnWriter(std::function<void()> job);
    // Blocks until every job queued on the writer so far is done.
    void waitForWriter();
    // Called on the writer thread with the bytes of each save of the view's own file,
    // just before they are written (the recovery journal keeps its copy so).
    void setBeforeWrite(std::function<void(const QByteArray& bytes)> beforeWrite);

    // ---- positions ----
    qint64 line() const;     // 1-based line of the insertion point
    qint64 position() const; // 0-based UTF-16 offset of the insertion point
    void gotoLine(qint64 line);
    qint64 utf16FromBytes(qint64 bytePosition) const;
    qint64 bytesFromUtf16(qint64 utf16Position) const;
    // The file starts with a byte order mark (which the view keeps apart from the
    // text, so no position and no insertion can come before it).
    bool startsWithByteOrderMark() const { return byteOrderMark_; }
    // Selection as UTF-16 offsets (start <= end).
    qint64 selectionStartUtf16() const;
    qint64 selectionEndUtf16() const;
    void selectUtf16(qint64 start, qint64 end);
    // The whole text as UTF-16.
    QString documentText() const;

    // ---- colouring and layout ----
    void setKeywords(const QStringList& words);
    void setTypes(const QStringList& words);
    void setCommands(const QStringList& words);
    // Separator rules above the lines whose preceding line break is at one of these
    // 0-based UTF-16 positions (positions outside the text are ignored).
    void setLineSeparators(const QList<qint64>& positions);
    // 0-based lines that carry a separator rule (the rule is drawn under them).
    QList<qint64> separatorLines() const;
    // Re-colours the text after the word lists changed: visible lines at once, other
    // lines when they come into view (cheap also for very large files).
    void performSyntaxHighlighting();
    void turnOffWrapping();
    void turnOnAutoIndent();
    // "Monaco" at `points` when installed, else the desktop's fixed-width font.
    void setEditorFont(int points);
    static QFont editorFont(int points);
    KelvaroLexer* lexer() const { return lexer_; }

    // ---- edit commands (on the lines of the selection, one undo step each) ----
    void commentLines();
    void uncommentLines();
    void shiftLeftLines();
    void shiftRightLines();
    void lowerCaseSelection();
    void upperCaseSelection();
    void autoFormat();
    void toggleBreakpoint();
    QList<qint64> breakpointLines() const; // 1-based

    // ---- find ----
    void findSetOptionIgnoreCase(bool on) { findIgnoreCase_ = on; }
    void findSetOptionSelectedTextOnly(bool on) { findSelectedOnly_ = on; }
    bool findNext(const QString& text);
    bool findPrevious(const QString& text);
    bool findReplace(const QString& replacement);
    bool findReplaceFind(const QString& find, const QString& replacement);
    qint64 findReplaceAll(const QString& find, const QString& replacement);

    // ---- printing (editor/kltextview_print.cpp, pages by editor/page_renderer.*) ----
    // The lines with the lexer's styles and colours, under the two titles.
    page_renderer::Document printDocument(const QString& projectTitle, const QString& fileTitle);
    bool printTo(QPrinter& printer, const QString& projectTitle, const QString& fileTitle);
    // Writes the same pages as a PDF file; false with the reason.
    bool exportPdf(const QString& path, const QString& projectTitle, const QString& fileTitle, QString* error);
    bool printShowingPrintPanel(const QString& projectName, const QString& className, bool showPanel);

    // ---- insertions of the editing commands (editor/kltextview_insert.cpp) ----
    // Puts text in place of the selection (at the cursor when none) as one undo step,
    // its line breaks in the document's style and only what the file's encoding can
    // hold; the cursor ends after it. A read-only view changes nothing and says so
    // (readOnlyEditAttempted); false then.
    bool replaceSelectionAsOneStep(const QString& text);

    // ---- completion ----
    // Asks the owner for candidates for the word before the cursor and shows them: on
    // ".", on Ctrl+Space and when a word reaches its third letter. While the list is
    // shown, each typed or erased character narrows it without asking again.
    void showCompletion();
    // The expression before the word that ends at `utf16Position`, and that word.
    struct CompletionContext {
        QString expression; // NoContextMarker when there is none
        QString partialWord;
        qint64 wordStart = 0; // UTF-16
        bool inTextOrComment = false; // the word stands in a quoted text or a comment
    };
    CompletionContext completionContext(qint64 utf16Position) const;
    // Candidates of `all` that begin with `partialWord`, ignoring case, in their order,
    // those that begin with it in its exact letter case first.
    static QStringList filterCandidates(const QStringList& all, const QString& partialWord);
    // The list last shown (empty when none).
    QStringList shownCompletions() const { return shownCompletions_; }

    // Handed back by an owner that schedules it after a change: [location, replacement].
    Q_INVOKABLE void _ShouldChangeText(const QVariantList& change);
    // The view's answers to the two questions an owner may hand back to it: the
    // completions for the partial word at [start, start + length) (the owner's
    // candidates that fit, or `words` when the owner offers none), and the selection to
    // take when it changes (the new one, unchanged). Positions are UTF-16.
    Q_INVOKABLE QStringList delegate_textView_completions(const QStringList& words, qint64 start,
                                                          qint64 length);
    Q_INVOKABLE QList<qint64> delegate_textView_willChangeSelection(qint64 oldStart, qint64 oldLength,
                                                                    qint64 newStart, qint64 newLength);

    // ---- live diagnostics (kltextview_diagnostics.cpp) ----
    // Marks the lines of the checker's errors: a wavy line under the line's text, a mark
    // in the symbol margin, and the message as the line's tooltip. The marks move with
    // their lines as the text is edited; an empty list clears them. Neither the text nor
    // the undo history changes.
    void setLineDiagnostics(const QList<LiveDiagnostic>& diagnostics);
    // The message marked on a 1-based line ("" for none), and the marked lines.
    QString diagnosticAt(qint64 line) const;
    QList<qint64> diagnosticLines() const;

private:
    struct DiagnosticMark {
        int handle = -1; // Scintilla's marker handle, which follows its line
        QString message;
    };
    QList<DiagnosticMark> diagnosticMarks_;
    bool diagnosticsConfigured_ = false;
    void configureDiagnostics();

public:
signals:
    // After every save, on the interface thread: a document_file::WriteStatus and,
    // for a failed write, why.
    void saveFinished(int status, const QString& error);
    // Characters that were not inserted because the file's encoding cannot hold them.
    void charactersRefused(const QString& characters);
    // The user tried to change a read-only file.
    void readOnlyEditAttempted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    // Typed, composed, pasted and dropped text reaches the document through these
    // three; a Windows-1252 file refuses there what it cannot hold.
    void inputMethodEvent(QInputMethodEvent* event) override;
    QByteArray fromMimeData(const QMimeData* source, bool& rectangular) const override;

private:
    void configure();
    // What of `text` the file's encoding can hold; tells about the rest.
    QString keepEncodable(const QString& text);
    void onModified(int position, int modificationType, const char* text, int length, int linesAdded,
                    int line, int foldNow, int foldPrev, int token, int annotationLinesAdded);
    void reportPendingInsertion();
    void askOwnerShouldChange(qint64 location, qint64 removed, const QString& inserted);
    void onUpdateUi(int updated);
    void onMarginClicked(int margin, int line, Qt::KeyboardModifiers modifiers);
    void onCharAdded(int character);
    // Shows the candidates of the last request that fit the word before the cursor;
    // closes the list when none does.
    void refilterCompletion();
    // Puts a chosen candidate in place of the word; a member with parameters comes with
    // empty parentheses and the cursor between them.
    void insertCompletion(const QString& chosen);
    void updateLineNumberWidth();
    void restyleStaleVisibleLines();
    void followCursorOnLongLine();
    void noteLongLines(long position, const char* text, long length);
    bool longLines_ = false; // a line of the text was ever longer than the lexer colours in full
    qint64 unitsBetween(long start, long end) const; // UTF-16 units of a span of bytes
    // The last byte position turned into UTF-16 units. On a long line a conversion would
    // count from the line's start; typing converts positions next to the previous one,
    // so counting from here is shorter. A change before it forgets it.
    struct UnitAnchor {
        long byte = -1;
        qint64 units = 0;
    };
    mutable UnitAnchor unitAnchor_;
    bool ownerHas(const char* method) const;
    void notifyOwner(const char* method);
    // The selected lines as [first, last] (0-based); a selection ending at the start of
    // a line leaves that line out.
    std::pair<qint64, qint64> selectedLines() const;
    // Applies a line command to the selected lines and selects them.
    void transformSelectedLines(QStringList (*transform)(const QStringList&));
    void changeCase(bool upper);
    void replaceLines(qint64 first, const QStringList& before, const QStringList& after);
    QString lineText(qint64 line) const; // without its line break
    // The find scope (UTF-16): the whole text, or with selected-text-only the range
    // that was selected when the search began.
    struct Utf16Range {
        qint64 start = 0;
        qint64 end = -1;
    };
    Utf16Range findScope(const QString& text);
    void selectMatch(qint64 start, qint64 length);
    void replaceUtf16(const QString& text, qint64 start, qint64 length, const QString& replacement);

    QPointer<QObject> owner_;
    QString name_;
    QString path_;
    KelvaroLexer* lexer_ = nullptr;
    int lineNumberDigits_ = 0;
    bool findIgnoreCase_ = false;
    bool findSelectedOnly_ = false;
    // With selected-text-only: the scope found at the start of a search, kept while the
    // selection is the match the view selected last.
    Utf16Range scope_;
    Utf16Range lastMatch_{-1, -1};
    QStringList shownCompletions_;
    QStringList requestedCompletions_; // the owner's answer to the last request
    qint64 changeCount_ = 0;       // advances with every change of the text
    long pendingInsertAt_ = 0;     // an insertion not yet reported to the owner
    long pendingInsertLength_ = 0; // (bytes; 0: none)
    bool afterChangeQueued_ = false;
    bool loading_ = false; // load() replaces the text: no change reports with text
    // ---- the file (kltextview_file.cpp) ----
    struct FileState; // what the writer thread and the view share, guarded by its mutex
    std::shared_ptr<FileState> fileState_;
    TextEncoding encoding_ = TextEncoding::Utf8;
    bool byteOrderMark_ = false;
    bool fileReadOnly_ = false;
    qint64 queuedChangeCount_ = -1; // changeCount_ when the text was last handed to a save
    std::unique_ptr<QThreadPool> writer_;
    std::shared_future<bool> queueWrite(const QString& path);
    void adoptFile(const document_file::Decoded& decoded);
};

// The runtime's operations on the view.
KLTextView* KLVR_KLTEXTVIEW_INIT(QObject* owner, const QString& name);
bool KLVR_KLTEXTVIEW_LOAD(KLTextView* view, const QString& path);
bool KLVR_KLTEXTVIEW_SAVE(KLTextView* view, const QString& path);
QString KLVR_KLTEXTVIEW_FILENAME(KLTextView* view);
qint64 KLVR_KLTEXTVIEW_LINE(KLTextView* view);
qint64 KLVR_KLTEXTVIEW_POSITION(KLTextView* view);
void KLVR_KLTEXTVIEW_GOTOLINE(KLTextView* view, qint64 line);
void KLVR_KLTEXTVIEW_KEYWORDS(KLTextView* view, const QStringList& words);
void KLVR_KLTEXTVIEW_TYPES(KLTextView* view, const QStringList& words);
void KLVR_KLTEXTVIEW_COMMANDS(KLTextView* view, const QStringList& words);
void KLVR_KLTEXTVIEW_LINESEPARATORS(KLTextView* view, const QList<qint64>& positions);
// As the parser hands them out: none (a file never scanned) clears the rules.
void KLVR_KLTEXTVIEW_LINESEPARATORS(KLTextView* view, const std::shared_ptr<const QList<qint64>>& positions);
void KLVR_KLTEXTVIEW_PERFORMSYNTAXHIGHLIGHTING(KLTextView* view);
void KLVR_KLTEXTVIEW_TURNOFFWRAPPING(KLTextView* view);
void KLVR_KLTEXTVIEW_TURNONAUTOINDENT(KLTextView* view);
void KLVR_KLTEXTVIEW_COMMENT(KLTextView* view);
void KLVR_KLTEXTVIEW_UNCOMMENT(KLTextView* view);
void KLVR_KLTEXTVIEW_SHIFTLEFT(KLTextView* view);
void KLVR_KLTEXTVIEW_SHIFTRIGHT(KLTextView* view);
void KLVR_KLTEXTVIEW_LOWERCASE(KLTextView* view);
void KLVR_KLTEXTVIEW_UPPERCASE(KLTextView* view);
void KLVR_KLTEXTVIEW_AUTOFORMAT(KLTextView* view);
void KLVR_KLTEXTVIEW_TOGGLEBREAKPOINT(KLTextView* view);
void KLVR_KLTEXTVIEW_FINDSETOPTIONIGNORECASE(KLTextView* view, bool on);
void KLVR_KLTEXTVIEW_FINDSETOPTIONSELECTEDTEXTONLY(KLTextView* view, bool on);
bool KLVR_KLTEXTVIEW_FINDNEXT(KLTextView* view, const QString& text);
bool KLVR_KLTEXTVIEW_FINDPREVIOUS(KLTextView* view, const QString& text);
bool KLVR_KLTEXTVIEW_FINDREPLACE(KLTextView* view, const QString& replacement);
bool KLVR_KLTEXTVIEW_FINDREPLACEFIND(KLTextView* view, const QString& find, const QString& replacement);
qint64 KLVR_KLTEXTVIEW_FINDREPLACEALL(KLTextView* view, const QString& find, const QString& replacement);
bool KLVR_KLTEXTVIEW_PRINTSHOWINGPRINTPANEL(KLTextView* view, const QString& projectName,
                                            const QString& className, bool showPanel);
