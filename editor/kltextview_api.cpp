// The runtime's operations on the editor view, as the system's code calls them.
#include "editor/kltextview.h"

KLTextView* KLVR_KLTEXTVIEW_INIT(QObject* owner, const QString& name) { return new KLTextView(owner, name); }
bool KLVR_KLTEXTVIEW_LOAD(KLTextView* view, const QString& path) { return view->load(path); }
bool KLVR_KLTEXTVIEW_SAVE(KLTextView* view, const QString& path) { return view->save(path); }
QString KLVR_KLTEXTVIEW_FILENAME(KLTextView* view) { return view->fileName(); }
qint64 KLVR_KLTEXTVIEW_LINE(KLTextView* view) { return view->line(); }
qint64 KLVR_KLTEXTVIEW_POSITION(KLTextView* view) { return view->position(); }
void KLVR_KLTEXTVIEW_GOTOLINE(KLTextView* view, qint64 line) { view->gotoLine(line); }
void KLVR_KLTEXTVIEW_KEYWORDS(KLTextView* view, const QStringList& words) { view->setKeywords(words); }
void KLVR_KLTEXTVIEW_TYPES(KLTextView* view, const QStringList& words) { view->setTypes(words); }
void KLVR_KLTEXTVIEW_COMMANDS(KLTextView* view, const QStringList& words) { view->setCommands(words); }
void KLVR_KLTEXTVIEW_LINESEPARATORS(KLTextView* view, const QList<qint64>& positions) {
    view->setLineSeparators(positions);
}
void KLVR_KLTEXTVIEW_PERFORMSYNTAXHIGHLIGHTING(KLTextView* view) { view->performSyntaxHighlighting(); }
void KLVR_KLTEXTVIEW_TURNOFFWRAPPING(KLTextView* view) { view->turnOffWrapping(); }
void KLVR_KLTEXTVIEW_TURNONAUTOINDENT(KLTextView* view) { view->turnOnAutoIndent(); }
void KLVR_KLTEXTVIEW_COMMENT(KLTextView* view) { view->commentLines(); }
void KLVR_KLTEXTVIEW_UNCOMMENT(KLTextView* view) { view->uncommentLines(); }
void KLVR_KLTEXTVIEW_SHIFTLEFT(KLTextView* view) { view->shiftLeftLines(); }
void KLVR_KLTEXTVIEW_SHIFTRIGHT(KLTextView* view) { view->shiftRightLines(); }
void KLVR_KLTEXTVIEW_LOWERCASE(KLTextView* view) { view->lowerCaseSelection(); }
void KLVR_KLTEXTVIEW_UPPERCASE(KLTextView* view) { view->upperCaseSelection(); }
void KLVR_KLTEXTVIEW_AUTOFORMAT(KLTextView* view) { view->autoFormat(); }
void KLVR_KLTEXTVIEW_TOGGLEBREAKPOINT(KLTextView* view) { view->toggleBreakpoint(); }
void KLVR_KLTEXTVIEW_FINDSETOPTIONIGNORECASE(KLTextView* view, bool on) { view->findSetOptionIgnoreCase(on); }
void KLVR_KLTEXTVIEW_FINDSETOPTIONSELECTEDTEXTONLY(KLTextView* view, bool on) {
    view->findSetOptionSelectedTextOnly(on);
}
bool KLVR_KLTEXTVIEW_FINDNEXT(KLTextView* view, const QString& text) { return view->findNext(text); }
bool KLVR_KLTEXTVIEW_FINDPREVIOUS(KLTextView* view, const QString& text) { return view->findPrevious(text); }
bool KLVR_KLTEXTVIEW_FINDREPLACE(KLTextView* view, const QString& replacement) {
    return view->findReplace(replacement);
}
bool KLVR_KLTEXTVIEW_FINDREPLACEFIND(KLTextView* view, const QString& find, const QString& replacement) {
    return view->findReplaceFind(find, replacement);
}
qint64 KLVR_KLTEXTVIEW_FINDREPLACEALL(KLTextView* view, const QString& find, const QString& replacement) {
    return view->findReplaceAll(find, replacement);
}
bool KLVR_KLTEXTVIEW_PRINTSHOWINGPRINTPANEL(KLTextView* view, const QString& projectName,
                                            const QString& className, bool showPanel) {
    return view->printShowingPrintPanel(projectName, className, showPanel);
}
