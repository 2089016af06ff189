#pragma once
// The runtime contract: every operation the system's logic calls, under the names the
// system uses. Strings are QString (a character is a UTF-16 code unit), positions are
// 0-based, "not found" is -1, and a trailing `matchCase` selects case-sensitive
// comparison. Dynamic data is a boxed Value (frame/value.h).
//
// The file family takes no file-manager argument: the manager holds no state.

#include "frame/classframe.h"
#include "frame/klexception.h"
#include "frame/kltask.h"
#include "frame/klthread.h"
#include "frame/kltimer.h"
#include "frame/launcher.h"
#include "frame/mainthread.h"
#include "frame/panels.h"
#include "frame/trace.h"
#include "frame/value.h"

#include <QString>
#include <QStringList>
#include <optional>

// ---- Boxing and conversion ----
inline Value KLVR_IDNIL() { return Value(); }
inline bool KLVR_CBOOL(const Value& v) { return v.toBool(); }
inline qint64 KLVR_CNSINTEGER(const Value& v) { return v.toInteger(); }
inline double KLVR_CDOUBLE(const Value& v) { return v.toDouble(); }
// Text that is not a number gives 0; the flag is unused.
qint64 KLVR_INTEGER(const Value& v, bool flag = false);
bool KLVR_BOOLEAN(const Value& v, bool flag = false);
inline QString KLVR_STRING(const Value& v) { return v.toString(); }
inline QString KLVR_INFO(const Value& v) { return v.description(); }
QString KLVR_CLASSNAME(const QObject* object);

// Checked casts to the runtime's own kinds: nil passes, a wrong kind raises
// "KLCastException" with the reason "'<Kind>' expected".
Value KLVR__STRING(const Value& v);
Value KLVR__INTEGER(const Value& v);
Value KLVR__BOOLEAN(const Value& v);
Value KLVR__ARRAY(const Value& v);
Value KLVR__DICTIONARY(const Value& v);

// ---- Operators ----
Value KLVR_ADD(const Value& a, const Value& b);
Value KLVR_CONCAT(const Value& a, const Value& b);
Value KLVR_SUB(const Value& a, const Value& b);
Value KLVR_MUL(const Value& a, const Value& b);
// Two Integers give an Integer (truncated); an Integer division by zero raises
// "KLArithmeticException".
Value KLVR_DIV(const Value& a, const Value& b);
Value KLVR_MINUS(const Value& a);
bool KLVR_EQUAL(const Value& a, const Value& b);
bool KLVR_UNEQUAL(const Value& a, const Value& b);
bool KLVR_SMALLER(const Value& a, const Value& b);
bool KLVR_GREATER(const Value& a, const Value& b);
bool KLVR_SMALLEREQUAL(const Value& a, const Value& b);
Value KLVR_NOT(const Value& a);
Value KLVR_AND(const Value& a, const Value& b);
Value KLVR_OR(const Value& a, const Value& b);
bool KLVR_ANDALSO(const Value& a, const Value& b);

// ---- Strings ----
qint64 KLVR_LEN(const QString& s);
// A negative count gives the whole text (the scanner passes -1 for "no delimiter").
QString KLVR_LEFT(const QString& s, qint64 n);
QString KLVR_RIGHT(const QString& s, qint64 n);
// A negative length means "up to the end"; a start past the end gives "".
QString KLVR_MID(const QString& s, qint64 start, qint64 length = -1);
// A negative start searches from 0.
qint64 KLVR_INSTR(const QString& s, const QString& find, qint64 start, bool matchCase);
// Start -1 searches from the end; otherwise the last occurrence starting at or before start.
qint64 KLVR_INSTRREV(const QString& s, const QString& find, qint64 start, bool matchCase);
qint64 KLVR_COUNT(const QString& s, const QString& find, bool matchCase);
bool KLVR_CONTAINS(const QString& s, const QString& part, bool matchCase);
bool KLVR_STARTSWITH(const QString& s, const QString& part, bool matchCase);
bool KLVR_ENDSWITH(const QString& s, const QString& part, bool matchCase);
QString KLVR_REPLACE(const QString& s, const QString& find, const QString& replacement, bool matchCase);
// Removes blanks and tabs at both ends; line breaks are kept.
QString KLVR_TRIM(const QString& s);
QString KLVR_LCASE(const QString& s);
QString KLVR_UCASE(const QString& s);
QString KLVR_SPACE(qint64 n, const QString& fill);
QStringList KLVR_SPLIT(const QString& s, const QString& separator);
QString KLVR_FILENAME(const QString& path);
QString KLVR_FILEEXTENSION(const QString& path);

// ---- Collections (on boxed arrays and dictionaries) ----
qint64 KLVR_NSARRAY_COUNT(const Value& array);
Value KLVR_NSARRAY_OBJECT(const Value& array, qint64 i);
void KLVR_NSMUTABLEARRAY_APPEND(const Value& array, const Value& x);
void KLVR_NSMUTABLEARRAY_INSERT(const Value& array, const Value& x, qint64 i);
void KLVR_NSMUTABLEARRAY_REMOVE(const Value& array, qint64 i);
void KLVR_NSMUTABLEARRAY_REMOVEOBJECT(const Value& array, const Value& x);
void KLVR_NSMUTABLEARRAY_REMOVEALL(const Value& array);
qint64 KLVR_NSDICTIONARY_COUNT(const Value& dictionary);
Value KLVR_NSDICTIONARY_OBJECT(const Value& dictionary, const Value& key);
// APPEND keeps an existing entry's value; REPLACE overwrites it.
void KLVR_NSMUTABLEDICTIONARY_APPEND(const Value& dictionary, const Value& key, const Value& value);
void KLVR_NSMUTABLEDICTIONARY_REPLACE(const Value& dictionary, const Value& key, const Value& value);
bool KLVR_NSMUTABLEDICTIONARY_CONTAINS(const Value& dictionary, const Value& key);
// A String key looks up by key; an Integer is a 0-based enumeration position.
Value KLVR_NSMUTABLEDICTIONARY_OBJECT(const Value& dictionary, const Value& keyOrPosition);
Value KLVR_NSMUTABLEDICTIONARY_KEY(const Value& dictionary, qint64 i);
Value KLVR_NSMUTABLEDICTIONARY_VALUE(const Value& dictionary, qint64 i);
void KLVR_NSMUTABLEDICTIONARY_REMOVE(const Value& dictionary, const Value& key);
void KLVR_NSMUTABLEDICTIONARY_REMOVEALL(const Value& dictionary);
// The content of a property-list file (XML or binary). A missing or unparsable file
// gives an empty dictionary; a root of another kind is returned as that kind.
Value KLVR_PLIST(const QString& path);

// ---- Files ----
// The whole file as UTF-8 text; a null QString when it does not exist or cannot be read.
QString KLVR_READSTRING(const QString& path);
// Writes atomically; false when the file could not be written.
bool KLVR_WRITESTRING(const QString& text, const QString& path);
// A list of strings kept as a JSON array of strings; an empty list when missing or bad.
QStringList KLVR_READARRAY(const QString& path);
bool KLVR_WRITEARRAY(const QStringList& array, const QString& path);
bool KLVR_FILE_COPY(const QString& source, const QString& destination);
bool KLVR_FILE_MOVE(const QString& source, const QString& destination);
bool KLVR_FILE_CREATEFILE(const QString& path);
bool KLVR_FILE_REMOVEFILE(const QString& path);
QStringList KLVR_FILE_LIST(const QString& folder);
bool KLVR_NSFILEMANAGER_EXISTSFILE(const QString& path);      // a file or a folder
bool KLVR_NSFILEMANAGER_EXISTSDIRECTORY(const QString& path); // a folder
bool KLVR_NSFILEMANAGER_CREATEDIRECTORY(const QString& path);
bool KLVR_NSFILEMANAGER_DELETE(const QString& path);
bool KLVR_NSFILEMANAGER_COPY(const QString& source, const QString& destination);
// The entry names, sorted; nullopt when the folder cannot be listed.
std::optional<QStringList> KLVR_NSFILEMANAGER_LIST(const QString& folder);
QString KLVR_USER_HOMEDIRECTORY();
QString KLVR_NSBUNDLE_BUNDLEPATH();
QString KLVR_NSBUNDLE_RESOURCEPATH();
QString KLVR_NSBUNDLE_EXECUTABLEPATH();
// Points the bundle queries at another application folder (tests, tools).
void klvrSetBundlePath(const QString& bundlePath);

// Runs a program to its end. The command line is the path followed by the arguments,
// split at blanks that are not preceded by a backslash; no shell is involved.
// Returns the exit status, or -1 when the program could not be started.
int KLVR_RUN(const QString& path, const QStringList& arguments);
// Splits a backslash-escaped command line into arguments ("a\ b c" -> "a b", "c").
QStringList klvrSplitCommandLine(const QString& commandLine);
