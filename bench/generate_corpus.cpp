// Writes Kelvaro sources for measurements:
//   generate_corpus --file PATH [--lines N]                 one class of N lines (200000)
//   generate_corpus --project FOLDER [--files N] [--lines M] N classes of M lines
//                                                           (1000 x 1000)
#include "corpus_writer.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <cstdio>

namespace {

bool writeBytes(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "generate_corpus: cannot write %s\n", qPrintable(path));
        return false;
    }
    return true;
}

int usage() {
    std::fprintf(stderr, "usage: generate_corpus --file PATH [--lines N]\n"
                         "       generate_corpus --project FOLDER [--files N] [--lines M]\n");
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    auto option = [&](const QString& name, int fallback) {
        const qsizetype at = args.indexOf(name);
        return at >= 0 ? args.value(at + 1).toInt() : fallback;
    };
    if (args.value(0) == "--file" && args.size() >= 2) {
        const QString path = args.value(1);
        const int lines = option("--lines", 200000);
        const QString className = QFileInfo(path).fileName().section('.', 0, 0);
        if (lines <= 0 || !writeBytes(path, kelvaroClassSource(className, lines, 1)))
            return 1;
        std::printf("%s: %d lines\n", qPrintable(path), lines);
        return 0;
    }
    if (args.value(0) == "--project" && args.size() >= 2) {
        const QString folder = args.value(1);
        const int files = option("--files", 1000);
        const int lines = option("--lines", 1000);
        if (files <= 0 || lines <= 0 || !QDir().mkpath(folder))
            return 1;
        for (int i = 0; i < files; ++i) {
            const QString className = QString("Class%1").arg(i, 4, 10, QChar('0'));
            if (!writeBytes(folder + "/" + className + ".NSObject.klvr",
                            kelvaroClassSource(className, lines, quint32(i + 1))))
                return 1;
        }
        std::printf("%s: %d files of %d lines\n", qPrintable(folder), files, lines);
        return 0;
    }
    return usage();
}
