// Every example program of the language reference's runner section: the checker
// accepts it with the shipped vocabulary, and the runner prints what the reference
// shows under it.
#include "tools/lang/diagnostic.h"
#include "tools/lang/project.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <string>
#include <vector>

namespace {

struct ReferenceExample {
    std::string id;
    std::vector<std::pair<QString, QString>> files;  // name, source
    QString output, error;
};

void PrintTo(const ReferenceExample& example, std::ostream* out) { *out << example.id; }

QString unescape(QString text) {
    text.replace("&lt;", "<").replace("&gt;", ">").replace("&quot;", "\"").replace("&#x27;", "'");
    return text.replace("&amp;", "&");
}

std::vector<ReferenceExample> referenceExamples() {
    QFile file(QStringLiteral(KLVR_RESOURCES_DIR "/Language Reference.html"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString html = QString::fromUtf8(file.readAll());
    std::vector<ReferenceExample> examples;
    static const QRegularExpression heading(QStringLiteral("<h3 id=\"(example-[\\w-]+)\">"));
    static const QRegularExpression source(QStringLiteral("<pre class=\"source\" title=\"([^\"]+)\">(.*?)</pre>"),
                                           QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression result(QStringLiteral("<pre class=\"(output|error)\">(.*?)</pre>"),
                                           QRegularExpression::DotMatchesEverythingOption);
    auto it = heading.globalMatch(html);
    QList<QRegularExpressionMatch> headings;
    while (it.hasNext())
        headings << it.next();
    for (qsizetype i = 0; i < headings.size(); ++i) {
        const qsizetype end = i + 1 < headings.size() ? headings[i + 1].capturedStart() : html.indexOf("<h2 id=\"errors\">");
        const QString part = html.mid(headings[i].capturedEnd(), end - headings[i].capturedEnd());
        ReferenceExample example;
        example.id = headings[i].captured(1).toStdString();
        for (auto s = source.globalMatch(part); s.hasNext();) {
            const auto m = s.next();
            example.files.emplace_back(m.captured(1), unescape(m.captured(2)));
        }
        for (auto r = result.globalMatch(part); r.hasNext();) {
            const auto m = r.next();
            (m.captured(1) == "output" ? example.output : example.error) = unescape(m.captured(2));
        }
        examples.push_back(std::move(example));
    }
    return examples;
}

class ReferenceExamples : public ::testing::TestWithParam<ReferenceExample> {};

TEST_P(ReferenceExamples, AreAcceptedAndPrintWhatTheReferenceShows) {
    const ReferenceExample& example = GetParam();
    ASSERT_FALSE(example.files.empty());
    QTemporaryDir dir;
    for (const auto& [name, text] : example.files) {
        QFile file(dir.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("\n" + text.toUtf8());  // declarations start after a line break
    }
    klvr::Vocabulary vocabulary;
    ASSERT_GT(vocabulary.loadPropertyLists(KLVR_RESOURCES_DIR), 100);
    const std::string folder = dir.path().toStdString();
    const klvr::CheckSummary check = klvr::checkProject(folder, klvr::listSourceFiles(folder), vocabulary);
    ASSERT_FALSE(check.error) << check.error->message << " in line " << check.error->line << " of " << check.error->file;

    QStringList printed;
    const auto error = klvr::runFolder(folder, -1, [&](const QString& line) { printed << line; });
    EXPECT_EQ(printed.join('\n').toStdString(), example.output.toStdString());
    EXPECT_EQ(error ? QString::fromStdString(klvr::formatDiagnostic(*error)).trimmed().toStdString() : std::string(),
              example.error.toStdString());
}

INSTANTIATE_TEST_SUITE_P(LanguageReference, ReferenceExamples, ::testing::ValuesIn(referenceExamples()),
                         [](const ::testing::TestParamInfo<ReferenceExample>& info) {
                             std::string name = info.param.id.substr(8);  // after "example-"
                             for (char& c : name)
                                 if (c == '-')
                                     c = '_';
                             return name;
                         });

TEST(ReferenceExamples, CoverEveryFeatureOfTheRunner) {
    std::vector<std::string> ids;
    for (const ReferenceExample& example : referenceExamples())
        ids.push_back(example.id);
    for (const char* feature : {"example-objects", "example-inheritance", "example-arrays", "example-dictionaries",
                                "example-foreach", "example-exceptions", "example-uncaught", "example-functions"})
        EXPECT_NE(std::find(ids.begin(), ids.end(), feature), ids.end()) << feature;
}

}  // namespace
