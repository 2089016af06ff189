// Speed probe of the panels. By itself it searches a project it writes (200 files of 500
// lines, 10,000 hits) and checks the rows and a generous time bound; on a large project
// (bench/tools/generate_project.py) it measures the figures of the performance page:
// SEARCH_PROBE_PROJECT=/tmp/bigproj tests/test_search --gtest_filter=SearchSpeed.*
#include "search/finddefinition.h"
#include "search/findreplacefile.h"
#include "support/ide_fixture.h"

#include <QElapsedTimer>
#include <algorithm>

namespace {

template <class Step> double medianMs(int runs, Step step) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        step(i);
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

using SearchSpeed = IdeFixture;

TEST_F(SearchSpeed, PanelsOnALargeProject) {
    QString project = qEnvironmentVariable("SEARCH_PROBE_PROJECT");
    const bool own = project.isEmpty();
    if (own) {
        QList<std::pair<QString, QByteArray>> files{{"Global.NSObject.klvr", "\n"}};
        for (int f = 0; f < 200; ++f) {
            QByteArray text;
            for (int l = 0; l < 50; ++l)
                text += "Sub Compute" + QByteArray::number(l) + "()\n  If a Then\n    b = 1\n  Else\n    b = 2\n"
                        "  End If\n  c = b * 2\n  d = c + 1\n  ' done\nEnd Sub\n";
            files.append({QStringLiteral("c%1.NSObject.klvr").arg(f), text});
        }
        project = makeProject("Many", files);
    }
    Global& g = start();
    g.ProjectOpen(project);
    findreplacefile& search = *g.ibfindreplacefile();
    search.window->show();
    search.cbFind->setCurrentText("Else");
    const double find = medianMs(11, [&](int) {
        search.pbFindAll();
        search.tableview->viewport()->repaint(); // the rows the table shows are drawn
    });
    finddefinition& definitions = *g.ibfinddefinition();
    definitions.window->show();
    definitions.cbFind->setEditText("C"); // the parser's lists are made on this first search
    const double keystroke = medianMs(11, [&](int i) {
        definitions.cbFind->setEditText(i % 2 ? "Compute" : "Comput");
        definitions.tableview->viewport()->repaint();
    });
    std::printf("project search for \"Else\": %s, %.1f ms (search and table)\n",
                qPrintable(search.lInfo->text()), find);
    std::printf("find definition keystroke: %s, %.1f ms (search and table)\n",
                qPrintable(definitions.lInfo->text()), keystroke);
    EXPECT_GT(search.files.rowCount(), 0);
    if (own) {
        EXPECT_EQ(search.files.rowCount(), 10000);
        // Every Sub is named Compute…, but the scanner finds declarations after a line
        // break, so the one on each file's first line is not listed.
        EXPECT_EQ(definitions.lInfo->text(), "9800 found");
        EXPECT_LT(find, 1500.0) << "searching 100,000 lines and filling 10,000 rows";
        EXPECT_LT(keystroke, 1500.0);
    }
}

} // namespace
