#include "search/find_command.h"

#include "search/project_search.h"

#include <QFileInfo>
#include <QStringEncoder>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
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

// FILE:LINE:COLUMN:TEXT lines of one file's matches, encoded straight into the output.
QByteArray formatted(const project_search::FileMatches& file) {
    QByteArray out;
    if (file.matches.isEmpty())
        return out;
    const QByteArray prefix = file.name.toUtf8() + ':';
    QStringEncoder utf8(QStringEncoder::Utf8);
    for (const project_search::Match& match : file.matches) {
        const qsizetype start = out.size();
        out.resize(start + prefix.size() + 44 + 3 * match.lineText.size()); // UTF-8 takes at most 3 bytes a unit
        char* at = out.data() + start;
        std::memcpy(at, prefix.constData(), size_t(prefix.size()));
        at += prefix.size();
        at = std::to_chars(at, at + 20, match.line).ptr;
        *at++ = ':';
        at = std::to_chars(at, at + 20, match.column + 1).ptr;
        *at++ = ':';
        at = utf8.appendToBuffer(at, match.lineText);
        *at++ = '\n';
        out.truncate(at - out.constData());
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
            printError(QStringLiteral("binary file, not listed: ") + files[qsizetype(i)].name);
        written = written && writeAll(outputs[i]);
        outputs[i] = QByteArray();
    }
    if (!written) {
        printError(QStringLiteral("cannot write the output"));
        return 2;
    }
    return found > 0 ? 0 : 1;
}
