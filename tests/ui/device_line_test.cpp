// Lines on screens whose scale is a fraction: they are as thick wherever they lie.
#include <QImage>
#include <QPainter>
#include <set>

#include "meter/ui/play_meter.h"
#include "platform/qt/device_line.h"
#include "support/qt_test_application.h"
#include "support/ruler_pictures.h"

namespace sonavel {
namespace {

class DeviceLines : public ::testing::TestWithParam<double> {
  protected:
    DeviceLines() { TestApplication(); }

    // Of a line that is one pixel of the program thick.
    static int Thickness() { return static_cast<int>(GetParam()); }

    template <typename Paint>
    QImage Painted(QSize size, Paint paint) {
        QImage image((QSizeF(size) * GetParam()).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(GetParam());
        image.fill(Qt::white);
        paint(image);
        return image;
    }
};

bool IsInk(const QImage& image, QPoint place, QColor ink) {
    return image.valid(place) && image.pixelColor(place) == ink;
}

// The lengths of all runs of that colour along a way through the image.
std::multiset<int> Thicknesses(const QImage& image, QPoint start, QPoint step, QColor ink) {
    std::multiset<int> found;
    int run = 0;
    for (QPoint place = start; run > 0 || image.valid(place); place += step) {
        if (IsInk(image, place, ink)) {
            ++run;
        } else if (run > 0) {
            found.insert(run);
            run = 0;
        }
    }
    return found;
}

std::multiset<int> Times(std::size_t count, int thickness) {
    std::multiset<int> all;
    for (std::size_t i = 0; i < count; ++i) all.insert(thickness);
    return all;
}

TEST_P(DeviceLines, UprightAndLyingLinesHaveOneThicknessEverywhere) {
    const QImage image = Painted({60, 60}, [](QImage& target) {
        QPainter painter(&target);
        for (int i = 0; i < 10; ++i) {
            FillLine(painter, QRect(3 + i * 5, 0, 1, 5), Qt::black);
            FillLine(painter, QRect(0, 10 + i * 5, 5, 1), Qt::black);
        }
    });
    EXPECT_EQ(Thicknesses(image, {0, 1}, {1, 0}, Qt::black), Times(10, Thickness()));
    EXPECT_EQ(Thicknesses(image, {1, qRound(9 * GetParam())}, {0, 1}, Qt::black),
              Times(10, Thickness()));
}

TEST_P(DeviceLines, ALineStaysWithinWhatIsPaintedWithItsPlace) {
    for (int x = 0; x < 8; ++x) {
        const QImage image = Painted({20, 4}, [x](QImage& target) {
            QPainter painter(&target);
            painter.setClipRect(QRect(x, 0, 1, 4));
            FillLine(painter, QRect(x, 0, 1, 4), Qt::black);
        });
        EXPECT_EQ(Thicknesses(image, {0, 1}, {1, 0}, Qt::black), Times(1, Thickness())) << x;
    }
}

TEST_P(DeviceLines, AFrameReachesTheEdgesOfItsArea) {
    for (int x = 1; x < 5; ++x) {
        const QImage image = Painted({40, 20}, [x](QImage& target) {
            QPainter painter(&target);
            painter.fillRect(QRect(x, 2, 17 + x, 13), Qt::yellow);
            FillFrame(painter, QRect(x, 2, 17 + x, 13), Qt::black);
        });
        const QPoint across(0, qRound(8 * GetParam()));
        EXPECT_EQ(Thicknesses(image, across, {1, 0}, Qt::black), Times(2, Thickness())) << x;
        const QPoint down(qRound(10 * GetParam()), 0);
        EXPECT_EQ(Thicknesses(image, down, {0, 1}, Qt::black), Times(2, Thickness())) << x;
        // White, the frame and what it holds, and white again.
        EXPECT_EQ(Thicknesses(image, across, {1, 0}, Qt::yellow).size(), 1u) << x;
        EXPECT_EQ(Thicknesses(image, across, {1, 0}, Qt::white).size(), 2u) << x;
    }
}

TEST_P(DeviceLines, TicksOfTheRulers) {
    const QImage times = Painted({600, 20}, [](QImage& image) { PaintTimes(image); });
    const auto ticks = Thicknesses(times, {0, 1}, {1, 0}, Qt::black);
    EXPECT_EQ(ticks, Times(ticks.size(), Thickness()));
    EXPECT_GT(ticks.size(), 30u);

    const QImage levels = Painted({20, 211}, [](QImage& image) { PaintLevels(image, 211); });
    const auto steps = Thicknesses(levels, {qRound(2 * GetParam()), 0}, {0, 1}, Qt::black);
    EXPECT_EQ(steps, Times(steps.size(), Thickness()));
    EXPECT_GT(steps.size(), 15u);
}

TEST_P(DeviceLines, LinesOfTheMeter) {
    const MeterColours colours{Qt::black, Qt::yellow, Qt::white};
    PlayMeter meter(QStringLiteral("meter"));
    meter.resize(40, 437);
    meter.SetColours(colours);
    meter.SetScale(MeterScale::kSixtyDb);
    meter.SetDirection(MeterDirection::kUpwards);
    meter.SetShowLabels(true);
    const QImage image = Painted(meter.size(), [&](QImage& target) { meter.render(&target); });
    const auto lines = Thicknesses(image, {qRound(4 * GetParam()), 0}, {0, 1}, Qt::yellow);
    EXPECT_EQ(lines, Times(lines.size(), Thickness()));
    EXPECT_GT(lines.size(), 7u);
}

INSTANTIATE_TEST_SUITE_P(Scales, DeviceLines, ::testing::Values(1.0, 1.25, 1.5, 1.75, 2.0));

}  // namespace
}  // namespace sonavel
