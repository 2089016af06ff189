#pragma once
// Tags files in the Exuberant/Universal ctags format, so that vim, emacs and other
// editors can jump to Kelvaro declarations. One tag per declaration:
//   name<TAB>file<TAB>line;"<TAB>kind:x<TAB>line:N<TAB>class:Class
// Kind letters: s Sub, f Function, a Action, v Dim, c Const, e Event, d Delegate,
// o IBOutlet, i IBAction. The class is the file name before its first ".".

#include "insight/declarations.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

// The letter of a kind word ("Sub" -> 's'); '?' for a word the scanner does not make.
char tagKindLetter(const QString& kindWord);

// The tag lines (without line breaks, unsorted) for one scanned file. Declarations
// whose name is empty or holds a tab or line break cannot be written as a tag and are
// left out.
QList<QByteArray> tagLines(const QString& fileName, const DeclarationLists& lists);

// The header lines and the tag lines sorted in byte order, each ending with "\n".
QByteArray tagsFileContent(QList<QByteArray> lines);

struct TagsResult {
    bool written = false;
    int tagCount = 0;
    QString tagsPath;
    QStringList errors; // folder missing, a file unreadable, the tags file not writable
};

// Scans every ".klvr" file at the top of `folder` and writes folder/tags atomically.
TagsResult writeTagsFile(const QString& folder);
