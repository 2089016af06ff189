#pragma once
// The application controller: the hub that owns the open project's state, the
// vocabulary, the one child process and every command. Its operations are defined
// beside the code they drive: start-up and help in frame/, project opening and
// documents in project/, vocabulary in insight/, and so on. Everything reaches it
// through Global::sharedGlobal().

#include "editor/document_file.h"
#include "frame/runtime.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QSet>
#include <QWidget>
#include <atomic>
#include <memory>

class BuildOutput;
class code;
class finddefinition;
class findreplace;
class findreplacefile;
class QLineEdit;
class KLTextView;
class LiveCheck; // live diagnostics
class QFileSystemWatcher;
class RecoveryJournal;
class LogPanel;
class LogView;
class mainwindow;
class parser;
class QComboBox;
class QPushButton;

class Global : public QObject {
    Q_OBJECT
    KLVR_CLASS_FRAME(Global)
public:
    Global();
    ~Global() override;

    // ---- Fields given their initial values by Init, in this order ----
    qint64 CurrentFontSize = 10;
    KLTimerRef tTextDidChange;
    bool bLockTextDidChange = false;
    QStringList aRecentProjects;
    KLTask* go = nullptr; // at most one child process
    bool bIBDelayedShow = false;
    parser* myparser = nullptr;
    QPointer<QComboBox> pubProject; // file selector of the toolbar
    QPointer<QComboBox> pubEvent;   // event selector of the toolbar
    QPointer<QPushButton> bSwitchObjC;
    QPointer<QPushButton> bSwitchDebug;
    std::atomic<bool> bIgnoreStdErr = false; // also read on the task's reading thread
    bool xcodeprojUnderWay = false; // started by startXcodeprojIfMissing, not yet waited for
    bool bCompilerError = false;
    std::atomic<bool> bIsLaunchingApp = false; // also read on the task's reading thread
    bool bMakeOnly = false;
    bool bMake2Only = false;
    bool bBlockLastPosition = false;
    QString sLastPositionFile;
    qint64 nLastPositionLine = 0;
    QString sLastErrorText;
    QString sLastErrorFile;
    qint64 nLastErrorLine = 0;
    KLThreadRef thBuild;
    bool bAndRun = false;
    QStringList projectFiles;
    QString ProjectPath;
    Value codes = Value::dictionary(); // file name -> the document's editor view
    Value dClassCompletion = Value::dictionary();
    Value dObjectCompletion = Value::dictionary();
    QStringList KelvaroKeywords;
    QStringList KelvaroConsts;
    Value dCompletion2function = Value::dictionary();
    QStringList KelvaroCommands;
    QStringList ProjectTypes;
    QStringList KelvaroTypes;
    KLTimerRef tLastPosition;
    qint64 nLastPositionLine2 = -1;
    mainwindow* mymainwindow = nullptr;
    code* mycode = nullptr;          // the code pane (owned by the main window)
    QWidget* mycodeview = nullptr;   // the container the shown editor view sits in

    // ---- Interface-connected objects (the main interface description) ----
    QPointer<QWidget> Welcome;     // the welcome window
    QPointer<QLabel> BuildDate;    // shows the executable's date
    QPointer<QMenu> mRecentProjects; // submenu of the recent projects

    // ---- Start-up (frame/startup.cpp) ----
    void KLVR_AwakeFromNib();
    // A folder named on the command line: the start-up opens it instead of the last project.
    void setProjectFromCommandLine(const QString& folder) { projectFromCommandLine_ = folder; }
    // True while work that the screenshot should wait for is under way.
    bool isBusy() const;
    Q_INVOKABLE void WelcomeClose(const Value& sender = Value());
    // Where the start-up places the main window on a screen, before zooming it.
    static QRect mainWindowFrame(const QRect& screen);
    // Centres the welcome window and shows it.
    void showWelcome();

    // ---- Help documents (frame/help_actions.cpp) ----
    Q_INVOKABLE void QuickStart(const Value& sender = Value());
    Q_INVOKABLE void UsersGuide(const Value& sender = Value());
    Q_INVOKABLE void ReleaseNotes(const Value& sender = Value());
    Q_INVOKABLE void LanguageReference(const Value& sender = Value());

    // ---- Vocabulary (insight/vocabulary.cpp) ----
    void addType(const QString& name);
    void addKeyword(const QString& word);
    void addConst(const QString& name);
    void addFunction(const QString& name, const QString& completionText);
    void addClass(const QString& name, const Value& memberMap);
    void addObject(const QString& name, const Value& memberMap);
    // Reads the six vocabulary lists of the resource folder into the tables.
    void loadVocabulary(const QString& resourceFolder);

    // ---- Recent projects and opening (project/) ----
    Q_INVOKABLE void UpdateRecentProjects(const QString& path);
    Q_INVOKABLE void ProjectOpen(const Value& pathOrSender);
    Q_INVOKABLE void RecentProjectChosen(const Value& sender);
    Q_INVOKABLE void OpenProject(const Value& sender = Value());
    // The opening itself; true when the project was opened.
    bool ProjectOpen2(const QString& path);
    bool ProjectIsLoaded() const { return !projectFiles.isEmpty(); }
    // Shows a text in the status line and lets it be drawn.
    void ProjectStatusBar(const QString& text);

    // ==== Build and run (buildrun/) ====
    // -- build pipeline (buildrun/build_pipeline.cpp) --
    QPointer<LogPanel> compilerLogPanel; // "Compiler Window", a dock of the main window
    QPointer<LogPanel> runLogPanel;      // the running application's output
    QPointer<QWidget> DebugPanel;
    QPointer<QWidget> ObjC;
    LogView* tvCompilerlog() const;
    LogView* tvRunlog() const;
    Q_INVOKABLE void Build(const Value& sender = Value());
    Q_INVOKABLE void Make(const Value& sender = Value());
    Q_INVOKABLE void Run(const Value& sender = Value());
    Q_INVOKABLE void Go(const Value& sender = Value());
    Q_INVOKABLE void Stop(const Value& sender = Value());
    Q_INVOKABLE void Clean(const Value& sender = Value());
    Q_INVOKABLE void ReleaseUniversal(const Value& sender = Value());
    Q_INVOKABLE void StartDebug(const Value& sender = Value());
    Q_INVOKABLE void Breakpoint(const Value& sender = Value());
    Q_INVOKABLE void global_build();
    Q_INVOKABLE void global_make();
    Q_INVOKABLE void global_make2();
    Q_INVOKABLE void global_run();
    Q_INVOKABLE void global_go();
    Q_INVOKABLE void global_debug();
    Q_INVOKABLE void global_breakpoint();
    Q_INVOKABLE void bSwitchDebugPressed();
    Q_INVOKABLE void bSwitchObjCPressed();
    // The build thread's body.
    Q_INVOKABLE void thBuildBody();
    // One build with the configuration ("Release", "Deploy"); false when none was made
    // or it was stopped. The compiler's exit status goes to `compilerExitStatus`.
    bool Build2(const QString& configuration, int* compilerExitStatus = nullptr);
    void Launching();
    KLTimerRef tLaunchStatus; // clears "Launching..." after Go
    Q_INVOKABLE void clearLaunchStatus();
    void ProjectCurrentCodeToggleBreakpoint();
    // The compiler in the application folder.
    static QString compilerPath();
    // Cancels the build, ends the child process and waits until both are gone (closing).
    void endBuildAndRun();
    // -- child process and output routing (buildrun/run_control.cpp) --
    // Ends a running child process and clears the status line.
    Q_INVOKABLE void stopRunningTask();
    Q_INVOKABLE void global_stop();
    // Output of the child process `go`, delivered on its reading thread.
    Q_INVOKABLE void go_stdout(const Value& chunk);
    Q_INVOKABLE void go_stderr(const Value& chunk);
    // The same output as text, on the main thread.
    Q_INVOKABLE void go_stdoutGUI(const QString& text);
    Q_INVOKABLE void go_stderrGUI(const QString& text);
    // Handles, on the main thread, all output that was read so far.
    Q_INVOKABLE void flushOutput();
    Q_INVOKABLE void flushOutputSlice();
    Q_INVOKABLE void clearLogs();
    // -- error navigation (buildrun/error_navigation.cpp) --
    void ShowError(const QString& text);
    void ShowInternalError(const Value& text);
    void ShowLastError(const QString& text, const QString& file, qint64 line);
    Q_INVOKABLE void LastError(const Value& sender = Value());
    Q_INVOKABLE void global_lasterror();
    Q_INVOKABLE void CompilerLogPanel(const Value& sender = Value());
    Q_INVOKABLE void global_compilerlogpanel();
    Q_INVOKABLE void RunLogPanel(const Value& sender = Value());
    Q_INVOKABLE void global_runlogpanel();
    // The exit status of the last application run (-1 when none ended normally).
    int lastRunExitStatus() const;
signals:
    // Every text shown in the status line, in order.
    void statusShown(const QString& text);
public:
    // ==== end of Build and run ====

    // ---- Project opening (project/project_open.cpp) ----
    void makeSureXcodeprojIsThere();
    // Starts creating the platform project when it is missing, without waiting, so it
    // is made while the opening scans; makeSureXcodeprojIsThere then waits for it.
    void startXcodeprojIfMissing();
    void OpenXcodeProject(const QString& folder, bool flag);
    Q_INVOKABLE void OpenXcodeProjectGUI(const Value& sender = Value());
    void SetProjectIcon();
    Q_INVOKABLE void SelectAppIcon(const Value& sender = Value());
    Q_INVOKABLE void InfoPlist(const Value& sender = Value());
    Q_INVOKABLE void InfoPlist2(const Value& sender = Value());

    // ---- Documents (project/documents.cpp) ----
    // Shows a file (a name in the project or a full path) as the current document.
    Q_INVOKABLE void ProjectOpenCode(const QString& nameOrPath);
    void ProjectReopenCode(const QString& name);
    void ProjectCloseCode(const QString& path);
    QString ProjectCurrentFilename() const;
    QString ProjectCurrentLine() const;
    KLTextView* mytextview() const;
    Q_INVOKABLE void performUserSave(const Value& sender = Value());
    // The view of a document in `codes`, or nullptr.
    KLTextView* documentView(const QString& path) const;
    // Moves the current document's cursor to a 1-based line.
    void ProjectCurrentCodeGotoLine(qint64 line);

    // ---- Keeping the user's text (project/document_safety.cpp) ----
    // The views of the open documents, in `codes` order.
    QList<KLTextView*> documentViews() const;
    // Sets a new document view up: its save reports, disk watch and refusals.
    void adoptDocument(KLTextView* view);
    // Forgets a document view that is let go (its journal copy stays unless removed).
    void forgetDocument(KLTextView* view);
    enum class SaveWait { Background, Wait };
    // Saves every document whose text is not yet on its way to its file, except
    // `except`; with Wait, true when every one was written.
    bool saveModifiedDocuments(SaveWait wait, KLTextView* except = nullptr);
    // Before views are let go (closing a document, another project, quitting): saves
    // them; when one cannot be saved, the user decides. False: keep them.
    bool saveBeforeLettingGo(const QList<KLTextView*>& views);
    // Compares the open documents with their files on disk and settles each difference:
    // an unmodified document reloads, a modified one asks, a deleted file is told.
    Q_INVOKABLE void checkDocumentsOnDisk();
    void checkDocumentOnDisk(KLTextView* view);
    // Writes the shown document as UTF-8 from now on (and saves it).
    Q_INVOKABLE void ConvertToUtf8(const Value& sender = Value());
    // The journal of unsaved text; offers back, at start-up, what a stopped run left.
    RecoveryJournal* recoveryJournal();
    void offerRecovery();
    // Saves every document before the application ends; false when the user keeps one
    // that could not be saved. The journal is left holding exactly what is unsaved.
    bool prepareToQuit();
    // Closes a document without saving it (after the user chose so, or after it was
    // saved) and shows another one.
    void discardDocument(const QString& path);

    // ---- File and event selectors (project/file_selector.cpp) ----
    void UpdateToolbarSelector(const QString& path);
    void pubProjectChosen(const QString& title);
    void pubEventChosen(const QString& title);

    // ---- Source file naming (project/naming.cpp) ----
    static QString filebasename(const QString& name);
    static QString getClassName(const QString& path);
    static QString getSuperClassName(const QString& nameOrPath);

    // ---- Editor view notifications (insight/text_change.cpp) ----
    Q_INVOKABLE void KLVR_TextDidChange(QObject* view);
    Q_INVOKABLE void KLVR_TextViewDidChangeSelection(QObject* view);
    // The one-second pause after typing: re-colour, save, and schedule the re-scan.
    Q_INVOKABLE void tTextDidChangeFired();
    // Every open editor view's type list becomes the built-in types and the project's classes.
    void RefreshCompletionAsList();

    // ---- Completion (insight/completion_actions.cpp) ----
    // The editor views' two completion questions: candidates for the expression before
    // the cursor (or the no-context marker), and the completion text of a whole word.
    Q_INVOKABLE QStringList KLVR_TextView_GetCompletion(QObject* view, const QString& expression);
    Q_INVOKABLE QString KLVR_TextView_GetCompletion2(QObject* view, const QString& word);
    Q_INVOKABLE QStringList __TextView_GetCompletion(QObject* view, const QString& expression);
    Q_INVOKABLE QString __TextView_GetCompletion2(QObject* view, const QString& word);
    // Delegate questions handed back to the view's own answers.
    Q_INVOKABLE QStringList textView_completions_forPartialWordRange_indexOfSelectedItem(
        QObject* view, const QStringList& words, qint64 start, qint64 length);
    Q_INVOKABLE QList<qint64> textView_willChangeSelectionFromCharacterRange_toCharacterRange(
        QObject* view, qint64 oldStart, qint64 oldLength, qint64 newStart, qint64 newLength);
    // Allows every change and hands it back to the view on the next turn of the loop.
    Q_INVOKABLE bool textView_shouldChangeTextInRange(QObject* view, qint64 location, qint64 length,
                                                      const QString& replacement);
    Q_INVOKABLE void ShouldChangeText(const Value& location, const Value& replacement);

    // ---- Position line (search/position.cpp) ----
    void UpdateLine(KLTextView* view);
    Q_INVOKABLE void dotLastPosition();
    Q_INVOKABLE void global_back();

    // ==== Search and navigation (search/) ====
    // The go-to-line dialog (made on first use) and its number field.
    QPointer<QWidget> GoToLineWindow;
    QPointer<QLineEdit> GoToLineNumber;
    Q_INVOKABLE void LastPosition(const Value& sender = Value());
    Q_INVOKABLE void GoToLine(const Value& sender = Value());
    Q_INVOKABLE void GoToLineOK(const Value& sender = Value());
    Q_INVOKABLE void GoToLineCancel(const Value& sender = Value());
    // The search field of the main window (beside the line field) and its label, which
    // shows "Search" when there is nothing to report.
    QPointer<QLineEdit> boxedSearch;
    QPointer<QLabel> boxedSearchInfo;
    // Makes the search field (the menu bar owns the search keys).
    void installSearchControls();
    // The find-and-replace panel's controller, made on first use; a child of Global.
    findreplace* ibfindreplace();
    Q_INVOKABLE void FindReplace(const Value& sender = Value());
    Q_INVOKABLE void global_findreplace();
    Q_INVOKABLE void FindNext(const Value& sender = Value());
    Q_INVOKABLE void global_findnext();
    Q_INVOKABLE void boxedSearchPerform(const Value& sender = Value());
    Q_INVOKABLE void boxedSearchNext(const Value& sender = Value());
    Q_INVOKABLE void boxedSearchPrevious(const Value& sender = Value());
    // Copies the field into the panel; finds (bFind) or only re-counts.
    void Perform_boxedSearchPerform(const Value& sender, bool bFind);
    // The project search panel's controller, made on first use; a child of Global.
    findreplacefile* ibfindreplacefile();
    // Shows the project search panel when a project is loaded.
    Q_INVOKABLE void FindReplaceFile(const Value& sender = Value());
    Q_INVOKABLE void global_findreplacefile();
    // Shows the project search panel, also without a project.
    Q_INVOKABLE void FindReplaceFileShow();
    // The toolbar's project search field: fills the panel, shows it and finds at once.
    Q_INVOKABLE void boxedSearchFile(const Value& sender = Value());
    // Opens a project file (a name relative to the project folder) at a 1-based line.
    void openAtLine(const QString& name, qint64 line);
    // The find-definition panel's controller, made on first use; a child of Global.
    finddefinition* ibfinddefinition();
    // Shows the find-definition panel when a project is loaded.
    Q_INVOKABLE void FindDefinition(const Value& sender = Value());
    Q_INVOKABLE void global_finddefinition();
    // Says that the command is not there yet.
    Q_INVOKABLE void Definition(const Value& sender = Value());

    // ==== Project file operations, new project, examples (project/file_*.cpp,
    // project/objc_companions.cpp, project/interface_files.cpp, project/new_project.cpp,
    // project/examples.cpp) ====
    // The file dialog (made on first use; its mode is its title) and its fields.
    QPointer<QWidget> NewFile;
    QPointer<QLineEdit> NewFileName;
    QPointer<QLineEdit> NewFileType;
    QPointer<QLineEdit> NewFileType2;
    QPointer<QLabel> NewFileSuperClass2;
    Q_INVOKABLE void NewFileObject(const Value& sender = Value());
    Q_INVOKABLE void NewFileView(const Value& sender = Value());
    Q_INVOKABLE void NewFileWindow(const Value& sender = Value());
    Q_INVOKABLE void NewFileXYZ(const Value& sender = Value());
    Q_INVOKABLE void NewFileDelete(const Value& sender = Value());
    Q_INVOKABLE void NewFileRename(const Value& sender = Value());
    Q_INVOKABLE void NewFileDuplicate(const Value& sender = Value());
    Q_INVOKABLE void NewFileOK(const Value& sender = Value());
    Q_INVOKABLE void NewFileCancel(const Value& sender = Value());
    // The application and preferences delegates from the templates.
    Q_INVOKABLE void AddAppDelegate(const Value& sender = Value());
    Q_INVOKABLE void AddPreferencesDelegate(const Value& sender = Value());
    void PerformAddAppDelegate();
    void PerformAddPreferencesDelegate();
    // Objective-C companion files, resources and frameworks through klvrmake.
    Q_INVOKABLE void NewObjCClass(const Value& sender = Value());
    Q_INVOKABLE void AddResourceFile(const Value& sender = Value());
    Q_INVOKABLE void AddFramework(const Value& sender = Value());
    void CreateObjCFilesForXcode(const QString& classFile, const QString& extraFile);
    void RemoveObjCFilesForXcode(const QString& classFileOrPath);
    // Runs klvrmake with the arguments, each passed as one argument, and waits for it.
    void runProjectMaker(const QStringList& arguments);
    // The interface-file dialog and the removal of interface files.
    QPointer<QWidget> NewNibWindow;
    QPointer<QLineEdit> NewNibName;
    Q_INVOKABLE void NewNib(const Value& sender = Value());
    Q_INVOKABLE void subNewNib(const Value& sender = Value());
    Q_INVOKABLE void NewNibOK(const Value& sender = Value());
    Q_INVOKABLE void NewNibCancel(const Value& sender = Value());
    Q_INVOKABLE void RemoveNib(const Value& sender = Value());
    Q_INVOKABLE void theInterfaceBuilder(const Value& sender = Value());
    // The new-project dialog and its fields.
    QPointer<QWidget> NewProjectWindow;
    QPointer<QLineEdit> NewProjectName;
    QPointer<QLineEdit> NewProjectLocation;
    Q_INVOKABLE void NewProject(const Value& sender = Value());
    Q_INVOKABLE void NewProjectChoose(const Value& sender = Value());
    Q_INVOKABLE void NewProjectOK(const Value& sender = Value());
    Q_INVOKABLE void NewProjectCancel(const Value& sender = Value());
    // Opens an example (a path, or a menu item carrying one) through its copy under
    // "~/Kelvaro Examples/<name>", made the first time.
    Q_INVOKABLE void OpenExample(const Value& pathOrSender = Value());
    static QString examplesCopyFolder();
    // ==== end of project file operations ====
    // ==== Menus (frame/menu_bar.cpp, frame/rebuilt_menus.cpp, frame/menu_commands.cpp) ====
    QPointer<QWidget> AboutWindow; // the About window, made on first use
    QMenuBar* menuBar() const { return menuBar_; }
    // Makes the menu bar from the one menu table (frame/menu_table.cpp).
    QMenuBar* buildMenuBar();
    // Enables the commands that need an open project only while one is open, and the
    // commands whose operation exists.
    void updateMenuCommands();
    // Before a menu opens: rebuilds it when its title is one of the rebuilt menus.
    Q_INVOKABLE void menuNeedsUpdate(QMenu* menu);
    void KLVR_MenuNeedsUpdate(QMenu* menu);
    // Fills `menu` with the example projects of `folder`, groups as submenus.
    void BuildExampleMenu(QMenu* menu, const QString& folder);
    // A new item of the Tools menu for an application path (the caller adds it).
    QAction* ToolMenuItem(const QString& path);
    // A new item whose choice sends `action` to Global with the item as sender; it is
    // disabled when Global has no such operation.
    QAction* commandItem(const QString& title, const QString& action, QObject* parent);
    Q_INVOKABLE void Examples(const Value& sender = Value());
    Q_INVOKABLE void Tools(const Value& sender = Value());
    Q_INVOKABLE void Windows(const Value& sender = Value());
    Q_INVOKABLE void About(const Value& sender = Value());
    Q_INVOKABLE void Plugins(const Value& sender = Value());
    Q_INVOKABLE void OpenPreferences(const Value& sender = Value());
    // Edit commands: on the focused line field, or else on the shown editor view.
    Q_INVOKABLE void Undo(const Value& sender = Value());
    Q_INVOKABLE void Redo(const Value& sender = Value());
    Q_INVOKABLE void Cut(const Value& sender = Value());
    Q_INVOKABLE void Copy(const Value& sender = Value());
    Q_INVOKABLE void Paste(const Value& sender = Value());
    Q_INVOKABLE void SelectAll(const Value& sender = Value());
    // Closes the shown document (saved first) and quits through the main window.
    Q_INVOKABLE void CloseDocument(const Value& sender = Value());
    Q_INVOKABLE void Quit(const Value& sender = Value());
    // ==== end of Menus ====
    // ---- Editing commands, zoom and printing (editor/editing_actions.cpp) ----
    // Each acts on the shown document's editor view and is one undo step; without a
    // shown document it does nothing, and a read-only one says so as typing does.
    Q_INVOKABLE void Comment(const Value& sender = Value());
    Q_INVOKABLE void Uncomment(const Value& sender = Value());
    Q_INVOKABLE void ShiftLeft(const Value& sender = Value());
    Q_INVOKABLE void ShiftRight(const Value& sender = Value());
    Q_INVOKABLE void global_comment();
    Q_INVOKABLE void global_uncomment();
    Q_INVOKABLE void global_shiftleft();
    Q_INVOKABLE void global_shiftright();
    Q_INVOKABLE void ToLowerCase(const Value& sender = Value());
    Q_INVOKABLE void ToUpperCase(const Value& sender = Value());
    Q_INVOKABLE void AutoFormat(const Value& sender = Value());
    // CurrentFontSize one up, back to 10, one down (not below 4); the shown view takes
    // it and the size file keeps it for the next start.
    Q_INVOKABLE void ZoomBigger(const Value& sender = Value());
    Q_INVOKABLE void ZoomNormal(const Value& sender = Value());
    Q_INVOKABLE void ZoomSmaller(const Value& sender = Value());
    // Prints the shown document after the print panel; "Export as PDF…" writes the same
    // pages to a file chosen in a save panel.
    Q_INVOKABLE void PrintIt(const Value& sender = Value());
    Q_INVOKABLE void ExportPdf(const Value& sender = Value());
    // The shown document's editor view, or nullptr when no document is shown. With
    // `toChange`, also nullptr for a read-only document, which then says so.
    KLTextView* editableView(bool toChange = true);
    // The project's title in a printout: the project folder's name.
    QString printProjectTitle(const QString& documentPath) const;

    // The support folder "/Library/Kelvaro" under the home folder, and a file in it.
    static QString supportFolder();
    static QString supportFile(const QString& name);
    // The folder LastProject.txt names, when it is an existing folder; "" otherwise.
    static QString lastProjectFolder();

    // ---- External tools (buildrun/external_tools.cpp) ----
    // The interface designer, the database tools, the file manager, web pages and the
    // project's Global source. Those that need a project do nothing without one.
    Q_INVOKABLE void IB(const Value& sender = Value());
    Q_INVOKABLE void global_ib();
    Q_INVOKABLE void Preferences(const Value& sender = Value());
    Q_INVOKABLE void Xcode(const Value& item = Value());
    Q_INVOKABLE void CD(const Value& sender = Value());
    Q_INVOKABLE void global_cd();
    Q_INVOKABLE void MySQL(const Value& sender = Value());
    Q_INVOKABLE void global_mysql();
    Q_INVOKABLE void MySQLAdmin(const Value& sender = Value());
    Q_INVOKABLE void Finder(const Value& sender = Value());
    Q_INVOKABLE void FinderProject(const Value& sender = Value());
    Q_INVOKABLE void CocoaFrameworks(const Value& sender = Value());
    Q_INVOKABLE void Forum(const Value& sender = Value());
    Q_INVOKABLE void AboutXcodeIntegration(const Value& sender = Value());
    Q_INVOKABLE void NSApplication_ActivateIgnoringOtherApps(const Value& sender = Value());
    Q_INVOKABLE void goGlobal(const Value& sender = Value());
    Q_INVOKABLE void global_global();
    // ==== end of External tools ====
    // ---- Live diagnostics (insight/live_check_actions.cpp) ----
    // After the typing pause the checker runs over the shown document on its own thread
    // (the project's other files as saved); its errors are marked in the view, and the
    // status line shows the message while the cursor is on a marked line.
    LiveCheck* liveCheck();
    void requestLiveCheck();
    void showDiagnosticOfLine(KLTextView* view);
    LiveCheck* liveCheck_ = nullptr;
    QString shownDiagnostic_; // the message the status line shows, "" for none

private:
    void Init();
    void createMainInterface();
    void documentSaveFinished(KLTextView* view, int status, const QString& error);
    void settleChangedOnDisk(KLTextView* view, const QByteArray& disk, const DiskStamp& stamp);
    void settleDeletedOnDisk(KLTextView* view);
    void reloadFromDisk(KLTextView* view, const QByteArray& disk, const DiskStamp& stamp);
    void restoreFromJournal(const QString& path, const QByteArray& bytes);
    QPointer<QMenuBar> menuBar_;
    QString projectFromCommandLine_;
    // Documents whose difference with the disk is being settled or was left open by
    // the user (the stamp asked about): they are not saved until it is settled.
    struct DiskQuestion {
        bool open = false;
        std::optional<DiskStamp> asked;
    };
    QHash<const KLTextView*, DiskQuestion> diskQuestions_;
    QSet<const KLTextView*> saveFailureShown_; // a failed save was told in a message box
    QSet<const KLTextView*> readOnlyShown_;    // typing into a read-only file was told
    bool userSaveUnderWay_ = false;            // an explicit save reports its own failure
    QFileSystemWatcher* documentWatcher_ = nullptr;
    QSet<QString> pendingDiskChecks_;
    RecoveryJournal* journal_ = nullptr;
    // Build and run: output read but not yet handled on the main thread.
    std::unique_ptr<BuildOutput> output_;
    void createBuildAndRunInterface();
    void destroyBuildAndRunInterface();
    void saveBeforeBuild();
    void startBuildThread();
    void startApplication(const QString& executable);
    std::vector<KLThreadRef> earlierBuilds_; // replaced build threads that may still run
    findreplacefile* projectSearch_ = nullptr; // search/search_actions.cpp
    finddefinition* findDefinition_ = nullptr;
    findreplace* findReplace_ = nullptr;
};

KLVR_DEFINE_CLASS_HELPERS(Global, GLOBAL)
