#include "search/find_command.h"

#include "search/project_search.h"

#include <QFileInfo>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <unistd.h>
#include <vector>

namespace {

void printError(const QString& message) {
    const QByteArray bytes = QStringLiteral("kelvaro --find: ").toLocal8Bit() + message.toLocal8Bit() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

int usage(const QString& why) {
    printError(why);
    printError(QStringLiteral("usage: kelvaro --find TEXT PROJECT [--ignore-case] [--skip-comments]"));
    return 2;
}

bool writeAll(const QByteArray& bytes) {
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(STDOUT_FILENO, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += n;
    }
    return true;
}

// FILE:LINE:COLUMN:TEXT lines of one file's matches.
QByteArray formatted(const project_search::FileMatches& file) {
    QByteArray out;
    if (file.matches.isEmpty())
        return out;
    const QByteArray prefix = file.name.toUtf8() + ':';
    QByteArray lineBytes;
    const QString* lastLine = nullptr;
    char number[48];
    for (const project_search::Match& match : file.matches) {
        if (!lastLine || !lastLine->isSharedWith(match.lineText)) { // matches on one line share its text
            lineBytes = match.lineText.toUtf8();
            lastLine = &match.lineText;
        }
        char* end = std::to_chars(number, number + 20, match.line).ptr;
        *end++ = ':';
        end = std::to_chars(end, end + 20, match.column + 1).ptr;
        *end++ = ':';
        out.append(prefix).append(number, end - number).append(lineBytes).append('\n');
    }
    return out;
}

} // namespace

bool isFindCommand(const QStringList& args) { return args.value(1) == QLatin1String("--find"); }

int runFindCommand(const QStringList& args) {
    project_search::Options options;
    QStringList positional;
    for (const QString& arg : args.mid(2)) {
        if (arg == QLatin1String("--ignore-case"))
            options.ignoreCase = true;
        else if (arg == QLatin1String("--skip-comments"))
            options.skipCommentLines = true;
        else if (arg.startsWith(QLatin1String("--")) && positional.size() != 0)
            return usage(QStringLiteral("unknown option ") + arg);
        else
            positional << arg;
    }
    if (positional.size() != 2)
        return usage(QStringLiteral("a text to find and a project folder are needed"));
    const QString& needle = positional[0];
    const QString& folder = positional[1];
    if (const QString problem = project_search::problemWith(needle); !problem.isEmpty())
        return usage(problem);
    if (!QFileInfo(folder).isDir())
        return usage(QStringLiteral("not a folder: ") + folder);

    const QStringList sourceFiles = project_search::sourceFilesOf(folder);
    // Each file's lines are written out on the thread that searched it; the output
    // then goes out in the files' order.
    std::vector<QByteArray> outputs(size_t(sourceFiles.size()));
    std::atomic<qsizetype> found{0};
    const QList<project_search::FileMatches> files = project_search::search(
        folder, sourceFiles, needle, options, [&](qsizetype i, project_search::FileMatches& file) {
            found += file.matches.size();
            outputs[size_t(i)] = formatted(file);
            file.matches.clear();
        });
    bool written = true;
    for (size_t i = 0; i < outputs.size(); ++i) {
        if (files[qsizetype(i)].state == project_search::FileState::Unreadable)
            printError(QStringLiteral("cannot read ") + files[qsizetype(i)].name);
        else if (files[qsizetype(i)].state == project_search::FileState::Binary)
            printError(QStringLiteral("binary file not searched: ") + files[qsizetype(i)].name);
        written = written && writeAll(outputs[i]);
        outputs[i] = QByteArray();
    }
    if (!written) {
        printError(QStringLiteral("cannot write the output"));
        return 2;
    }
    return found > 0 ? 0 : 1;
}
