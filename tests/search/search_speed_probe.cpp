// Speed probe of the panels on a large project (bench/tools/generate_project.py), run by
// hand: SEARCH_PROBE_PROJECT=/tmp/bigproj tests/test_search --gtest_filter=SearchSpeed.*
// Prints the medians; skipped when no project is named.
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
    const QString project = qEnvironmentVariable("SEARCH_PROBE_PROJECT");
    if (project.isEmpty())
        GTEST_SKIP() << "SEARCH_PROBE_PROJECT names no project";
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
}

} // namespace
