#pragma once
// Searching the project's source files for a literal text: plain code over files that
// returns every occurrence with its line, for the project search panel and for
// `kelvaro --find`. Qt Core only; no widgets.
//
// Rules. A file's text is what the editor shows of it (UTF-8, or Windows-1252 when its
// bytes are not valid UTF-8; a byte order mark is not part of the text). Every
// occurrence gives one match, also several on one line and overlapping ones (the search
// goes on one character after each occurrence's start). Lines end at "\n"; a line's
// text leaves out its "\n" and a "\r" before it. Letter case is compared as
// QString::indexOf does (case folding per character). A comment line is one whose text,
// without leading blanks and tabs, starts with "'". A file holding a zero byte is a
// binary file: its occurrences are not listed, and it is named as binary when the text
// may occur in it.
//
// Speed. Files are read on every core; the text is searched as bytes and only the lines
// that hold an occurrence are decoded. Only a search ignoring case for a text beyond
// ASCII, or in a file holding one of the two letters that fold to ASCII ones, decodes
// the whole file first.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace project_search {

struct Options {
    bool ignoreCase = false;
    bool skipCommentLines = false;
};

struct Match {
    qint64 line = 0;   // 1-based
    qint64 column = 0; // 0-based, in UTF-16 units from the start of the line
    QString lineText;  // the whole line; matches on one line share it
};

enum class FileState { Searched, Unreadable, Binary };

struct FileMatches {
    QString name; // as given (relative to the project folder)
    FileState state = FileState::Searched;
    QList<Match> matches;
};

// Why a text cannot be searched for ("" when it can): empty, or holding a line break.
QString problemWith(const QString& needle);

// The project's source files in the order the IDE lists them, from the names of the
// folder's entries sorted by name: every "*.klvr", the Global file first.
QStringList sourceFiles(const QStringList& folderEntries);
// The same for a folder read now; empty when it cannot be listed.
QStringList sourceFilesOf(const QString& folder);

// Every occurrence of `needle` in the text of one file's bytes (as read from disk).
FileMatches searchBytes(const QByteArray& fileBytes, const QString& needle, Options options);

// Every occurrence in the files `names` of `folder`, in the order of `names`. `done`,
// when given, is called with each file's index and matches on the thread that searched
// it, right after, and may take the matches away.
using FileDone = std::function<void(qsizetype index, FileMatches& file)>;
QList<FileMatches> search(const QString& folder, const QStringList& names, const QString& needle,
                          Options options, const FileDone& done = {});

// A file's bytes with every occurrence of `needle` replaced (left to right, each
// replacement's text never searched again), written in the file's own encoding and byte
// order mark, line breaks of the replacement in the file's style; nullopt when the
// file's encoding cannot hold the result.
std::optional<QByteArray> replacedBytes(const QByteArray& fileBytes, const QString& needle,
                                        const QString& replacement, bool ignoreCase);

// The number of matches of all files.
qsizetype matchCount(const QList<FileMatches>& files);

} // namespace project_search
