// The pictures of the navigators, the toolbar and the application: drawn at
// build time into the application's resources under the names the code uses.
#include "resource_files.h"

#include <QFile>
#include <QImage>
#include <QSet>

#include <gtest/gtest.h>

using namespace resources_test;

namespace {

const QStringList kNavigatorImages = {"Sub.png",      "Function.png", "Action.png",
                                      "Dim.png",      "Const.png",    "Event.png",
                                      "Delegate.png", "IBOutlet.png", "IBAction.png"};
const QStringList kToolbarImages = {"ti_back.png", "ti_global.png", "ti_lasterror.png", "ti_run.png",
                                    "ti_build.png", "ti_stop.png",  "ti_ib.png",        "ti_log.png",
                                    "ti_projecticon.png", "ti_project.png", "ti_event.png",
                                    "ti_filesearch.png"};

// How much of a picture is drawn, and with how many colours: a blank or
// one-colour square is no pictogram.
struct Coverage {
    int opaquePixels = 0;
    int colours = 0;
};

Coverage coverageOf(const QImage& image) {
    Coverage coverage;
    QSet<QRgb> colours;
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < argb.height(); ++y) {
        for (int x = 0; x < argb.width(); ++x) {
            const QRgb pixel = argb.pixel(x, y);
            if (qAlpha(pixel) > 128) {
                ++coverage.opaquePixels;
                colours.insert(pixel | 0xff000000u);
            }
        }
    }
    coverage.colours = int(colours.size());
    return coverage;
}

void expectPictograms(const QStringList& names, int size) {
    QList<QImage> seen;
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const QString path = builtResources() + "/" + name;
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << "missing " << path.toStdString();
        EXPECT_TRUE(file.read(8) == QByteArray("\x89PNG\r\n\x1a\n", 8)) << "not a PNG file";
        const QImage image(path, "PNG");
        ASSERT_FALSE(image.isNull());
        EXPECT_EQ(image.size(), QSize(size, size));
        const Coverage coverage = coverageOf(image);
        EXPECT_GT(coverage.opaquePixels, size * size / 5) << "mostly empty";
        EXPECT_GE(coverage.colours, 3) << "a single flat colour";
        for (const QImage& other : seen)
            EXPECT_NE(image, other) << "looks exactly like another picture";
        seen << image;
    }
}

} // namespace

TEST(Images, NavigatorToolbarAndApplicationPicturesAreDistinctSquaresOfTheirSize) {
    expectPictograms(kNavigatorImages, 16);
    expectPictograms(kToolbarImages, 32);
    expectPictograms({"Kelvaro.png"}, 256);
}

TEST(Images, CoverageSeesEmptyAndFlatPictures) {
    QImage empty(16, 16, QImage::Format_ARGB32);
    empty.fill(Qt::transparent);
    EXPECT_EQ(coverageOf(empty).opaquePixels, 0);
    QImage flat(16, 16, QImage::Format_ARGB32);
    flat.fill(Qt::red);
    EXPECT_EQ(coverageOf(flat).colours, 1);
    EXPECT_EQ(coverageOf(flat).opaquePixels, 256);
}
