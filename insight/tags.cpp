#include "insight/tags.h"

#include "insight/declaration_scanner.h"
#include "insight/source_text.h"

#include <QDir>
#include <QSaveFile>
#include <algorithm>

char tagKindLetter(const QString& kindWord) {
    static const QHash<QString, char> letters = {
        {QStringLiteral("Sub"), 's'},   {QStringLiteral("Function"), 'f'}, {QStringLiteral("Action"), 'a'},
        {QStringLiteral("Dim"), 'v'},   {QStringLiteral("Const"), 'c'},    {QStringLiteral("Event"), 'e'},
        {QStringLiteral("Delegate"), 'd'}, {QStringLiteral("IBOutlet"), 'o'}, {QStringLiteral("IBAction"), 'i'}};
    return letters.value(kindWord, '?');
}

namespace {

bool fitsInTag(const QString& text) {
    return !text.isEmpty() && !text.contains(QLatin1Char('\t')) && !text.contains(QLatin1Char('\n')) &&
           !text.contains(QLatin1Char('\r'));
}

} // namespace

QList<QByteArray> tagLines(const QString& fileName, const DeclarationLists& lists) {
    QList<QByteArray> lines;
    if (!fitsInTag(fileName))
        return lines;
    const qsizetype dot = fileName.indexOf(QLatin1Char('.'));
    const QByteArray className = (dot >= 0 ? fileName.left(dot) : fileName).toUtf8();
    const QByteArray file = fileName.toUtf8();
    for (qsizetype i = 0; i < lists.all.entryCount(); ++i) {
        const DeclarationEntry& e = lists.all.entry(i);
        if (!fitsInTag(e.name))
            continue;
        const QByteArray number = QByteArray::number(e.line);
        QByteArray line = e.name.toUtf8() + '\t' + file + '\t' + number + ";\"\tkind:" + tagKindLetter(e.kind) +
                          "\tline:" + number;
        if (!className.isEmpty())
            line += "\tclass:" + className;
        lines.append(line);
    }
    return lines;
}

QByteArray tagsFileContent(QList<QByteArray> lines) {
    std::sort(lines.begin(), lines.end()); // byte order, as LC_ALL=C sort
    QByteArray out = "!_TAG_FILE_FORMAT\t2\t/extended format; --format=1 will not append ;\" to lines/\n"
                     "!_TAG_FILE_SORTED\t1\t/0=unsorted, 1=sorted, 2=foldcase/\n"
                     "!_TAG_KIND_DESCRIPTION!Kelvaro\ta,action\t/actions/\n"
                     "!_TAG_KIND_DESCRIPTION!Kelvaro\tc,const\t/constants/\n"
                     "!_TAG_KIND_DESCRIPTION!Kelvaro\td,delegate\t/delegates/\n"
                     "!_TAG_KIND_DESCRIPTION!Kelvaro\te,event\t/events/\n"
                     "!_TAG_KIND_DESCRIPTION!Kelvaro\tf,function\t/functions/\n"
                     "!_TAG_KIND_DESCRIPTION!Kelvaro\ti,ibaction\t/interface actions/\n"
                     "!_TAG_KIND_DESCRIPTION!Kelvaro\to,iboutlet\t/interface outlets/\n"
                     "!_TAG_KIND_DESCRIPTION!Kelvaro\ts,sub\t/subs/\n"
                     "!_TAG_KIND_DESCRIPTION!Kelvaro\tv,variable\t/dim variables/\n"
                     "!_TAG_PROGRAM_NAME\tkelvaro\t/Kelvaro IDE declaration scanner/\n";
    for (const QByteArray& line : lines)
        out += line + '\n';
    return out;
}

TagsResult writeTagsFile(const QString& folder) {
    TagsResult result;
    const QDir dir(folder);
    if (folder.isEmpty() || !dir.exists()) {
        result.errors << QStringLiteral("no such folder: %1").arg(folder);
        return result;
    }
    QList<QByteArray> lines;
    const QStringList files =
        dir.entryList({QStringLiteral("*.klvr")}, QDir::Files | QDir::Hidden | QDir::CaseSensitive, QDir::Name);
    for (const QString& name : files) {
        const std::optional<QByteArray> bytes = readSourceBytes(dir.filePath(name));
        if (!bytes) {
            result.errors << QStringLiteral("cannot read %1").arg(dir.filePath(name));
            continue;
        }
        lines.append(tagLines(name, withSourceText(*bytes, [](auto text) {
                                  return declarationListsOf(recordDeclarations(text));
                              })));
    }
    result.tagCount = int(lines.size());
    result.tagsPath = dir.filePath(QStringLiteral("tags"));
    QSaveFile out(result.tagsPath);
    if (!out.open(QIODevice::WriteOnly) || out.write(tagsFileContent(std::move(lines))) < 0 || !out.commit()) {
        result.errors << QStringLiteral("cannot write %1").arg(result.tagsPath);
        return result;
    }
    result.written = true;
    return result;
}
