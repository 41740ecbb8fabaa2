// The rulers' texts on desktops with large fonts.
#include <QApplication>
#include <QFontMetrics>
#include <QImage>
#include <algorithm>

#include "support/qt_test_application.h"
#include "support/ruler_pictures.h"

namespace sonavel {
namespace {

class RulerFonts : public ::testing::Test {
  protected:
    RulerFonts() { TestApplication(); }
    ~RulerFonts() override { QApplication::setFont(usual_); }

    void UseDesktopFont(int pixels) {
        QFont font = usual_;
        font.setPixelSize(pixels);
        QApplication::setFont(font);
    }

    static QImage TimeRuler() {
        QImage image(600, 20, QImage::Format_RGB32);
        PaintTimes(image);
        return image;
    }
    static QImage LevelRuler() {
        QImage image(20, 200, QImage::Format_RGB32);
        PaintLevels(image, 200);
        return image;
    }

    QFont usual_ = QApplication::font();
};

int InkIn(const QImage& image, const QRect& area) {
    int ink = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x) ink += qGray(image.pixel(x, y)) < 128;
    return ink;
}

// Rows with ink right of the ticks at the left edge.
int InkedRows(const QImage& image, int fromX) {
    int rows = 0;
    for (int y = 0; y < image.height(); ++y)
        rows += InkIn(image, {fromX, y, image.width() - fromX, 1}) > 0;
    return rows;
}

TEST_F(RulerFonts, GrowWithTheDesktopUntilTheirRoomIsFull) {
    const struct { int desktop, row; } cases[] = {{8, 11}, {12, 11}, {15, 13}};
    int last = 0;
    for (const auto& c : cases) {
        UseDesktopFont(c.desktop);
        EXPECT_EQ(RulerFont(RulerRoom::kRow).pixelSize(), c.row);
        EXPECT_GE(RulerFont(RulerRoom::kColumn).pixelSize(), last);
        last = RulerFont(RulerRoom::kColumn).pixelSize();
    }
    UseDesktopFont(24);
    const QFont row = RulerFont(RulerRoom::kRow);
    const QFont column = RulerFont(RulerRoom::kColumn);
    UseDesktopFont(48);
    EXPECT_EQ(RulerFont(RulerRoom::kRow), row);
    EXPECT_EQ(RulerFont(RulerRoom::kColumn), column);
    EXPECT_GT(row.pixelSize(), 13);
}

TEST_F(RulerFonts, ATimeIsNeverCutNorRunsIntoTheMarks) {
    UseDesktopFont(12);
    const int usual = InkedRows(TimeRuler(), 0);
    for (const int pixels : {15, 18, 24, 48}) {
        UseDesktopFont(pixels);
        const QImage ruler = TimeRuler();
        EXPECT_EQ(InkIn(ruler, {0, 19, 600, 1}), 0) << pixels;
        // Of the ticks alone, a column each.
        EXPECT_LT(InkIn(ruler, {0, 5, 600, 1}), 40) << pixels;
        EXPECT_GT(InkedRows(ruler, 0), usual) << pixels;
    }
}

TEST_F(RulerFonts, ALevelStandsBesideItsTick) {
    for (const int pixels : {12, 15, 18, 24, 48}) {
        UseDesktopFont(pixels);
        const QImage ruler = LevelRuler();
        // The zero, at the centre; ink above and below its tick in equal shares.
        int top = 100;
        int bottom = 100;
        while (InkIn(ruler, {5, top - 1, 15, 1}) > 0) --top;
        while (InkIn(ruler, {5, bottom + 1, 15, 1}) > 0) ++bottom;
        EXPECT_GE(bottom - top, 5) << pixels;
        EXPECT_LE(std::abs((100 - top) - (bottom - 100)), 4) << pixels;
    }
}

}  // namespace
}  // namespace sonavel
