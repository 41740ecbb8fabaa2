// The off-screen picture: strips drawn for a change must give the picture that drawing all would
// give.
#include "ui/view_fixture.h"
#include "view/ui/column_raster.h"

namespace sonavel {
namespace {

QImage FreshPicture(const CSoundView& view, double ratio) {
    WaveformCanvas canvas;
    QImage nowhere(1, 1, QImage::Format_RGB32);
    QPainter painter(&nowhere);
    canvas.Follow(view, ratio);
    canvas.Draw(painter, QRect(0, 0, 1, 1), view);
    return canvas.Image().copy();
}

class WaveformCanvasTest : public ViewFixture {
  protected:
    // What Follow() asked for, and the picture brought up to date.
    WaveformCanvas::Update Follow(const CSoundView& view, double ratio) {
        const WaveformCanvas::Update update = canvas_.Follow(view, ratio);
        QImage nowhere(1, 1, QImage::Format_RGB32);
        QPainter painter(&nowhere);
        canvas_.Draw(painter, QRect(0, 0, 1, 1), view);
        return update;
    }

    WaveformCanvas canvas_;
};

using Kind = WaveformCanvas::Update::Kind;

TEST_F(WaveformCanvasTest, StripsGiveThePictureOfAWholeDrawing) {
    CSoundView& view = Open({2, 300000, BeatingTone, {}});
    struct Step {
        const char* name;
        std::function<void()> change;
        Kind kind;
    };
    const Step steps[] = {
        {"zoom",
         [&] {
             view.Zoom().Time(TimeZoomIn), view.Zoom().Time(TimeZoomIn),
                 view.Zoom().Time(TimeZoomIn);
         },
         Kind::kAll},
        {"scroll forward", [&] { view.Zoom().ScrollHorizontallyTo(200); }, Kind::kScrolled},
        {"far", [&] { view.Zoom().ScrollHorizontallyTo(2600); }, Kind::kAll},
        {"back a pixel", [&] { view.Zoom().ScrollHorizontally(ScrollStep::kLineBack); },
         Kind::kScrolled},
        {"select", [&] { view.State().SetSelection(140000, 150001); }, Kind::kParts},
        {"grow", [&] { view.State().SetSelection(139000, 155000); }, Kind::kParts},
        {"scroll back", [&] { view.Zoom().ScrollHorizontallyTo(2540); }, Kind::kScrolled},
        {"selection past the left edge",
         [&] { view.State().SetSelection(1, static_cast<std::uint32_t>(FrameAt(50))); },
         Kind::kParts},
        {"scroll with it", [&] { view.Zoom().ScrollHorizontallyTo(2500); }, Kind::kScrolled},
        {"drop", [&] { view.State().SetSelection(0, 0); }, Kind::kParts},
        {"nothing", [] {}, Kind::kNothing},
        {"level", [&] { view.Zoom().Level(LevelZoomIn); }, Kind::kAll},
        {"content", [&] { view.OnSoundChanged(299000); }, Kind::kAll},
        {"one frame a pixel", [&] { view.Zoom().Time(TimeZoomFull); }, Kind::kAll},
        {"scroll there",
         [&] { view.Zoom().ScrollHorizontallyTo(view.Zoom().Horizontal().position + 12); },
         Kind::kScrolled},
    };
    for (const double ratio : {1.0, 1.5, 2.0}) {
        ZoomDefault(view);
        view.State().SetSelection(0, 0);
        Follow(view, ratio);
        for (const Step& step : steps) {
            step.change();
            const WaveformCanvas::Update update = Follow(view, ratio);
            // Half a device pixel cannot be scrolled.
            const bool whole = ratio != 1.5 || step.kind != Kind::kScrolled;
            if (whole) {
                EXPECT_EQ(update.kind, step.kind) << step.name << " at " << ratio;
            }
            ASSERT_EQ(canvas_.Image(), FreshPicture(view, ratio)) << step.name << " at " << ratio;
        }
    }
}

TEST_F(WaveformCanvasTest, AScreenOfTwiceThePixelsShowsMoreOfTheEnvelope) {
    // A spike every 100 frames: two columns of three have one at 40 frames a pixel, none at the
    // rest.
    CSoundView& view = Open(
        {1, 24000, [](unsigned, std::uint32_t frame) { return frame % 100 == 0 ? 30000 : 0; }, {}});
    Follow(view, 2.0);
    const QImage fine = canvas_.Image().copy();
    EXPECT_EQ(fine.width(), 2 * view.State().WaveformWidth());
    EXPECT_EQ(fine.height(), 2 * view.State().WaveformHeight());
    const QRgb pen = qRgb(0, 255, 128);
    int spikes = 0;
    for (int x = 1; x < fine.width(); ++x) spikes += fine.pixel(x, fine.height() / 4) == pen;
    EXPECT_GE(spikes, 235);
    EXPECT_LE(spikes, 250);
}

TEST_F(WaveformCanvasTest, AShortSoundEndsWhereItsFramesEnd) {
    CSoundView& view = Open({1, 200, [](unsigned, std::uint32_t) { return 10000; }, {}});
    for (const double ratio : {1.0, 2.0}) {
        Follow(view, ratio);
        const QImage& image = canvas_.Image();
        const auto at = [&](double x, double y) {
            return image.pixel(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
        };
        EXPECT_EQ(at(200, 10), qRgb(255, 255, 255)) << ratio;
        EXPECT_EQ(at(202, 10), qRgb(0, 0, 0)) << ratio;
        int inside = 0;
        int outside = 0;
        for (int y = 0; y < view.State().WaveformHeight(); ++y) {
            inside += at(150, y) == qRgb(0, 255, 128);
            outside += at(260, y) == qRgb(0, 255, 128);
        }
        EXPECT_EQ(inside, 1) << ratio;
        EXPECT_EQ(outside, 0) << ratio;
    }
}

TEST_F(WaveformCanvasTest, AShortSoundIsDrawnWholeAtEveryPlace) {
    // Six pixels a frame, which no zoom shows at the first one.
    CSoundView& view = Open({2, 100, BeatingTone, {}});
    const std::function<void()> steps[] = {
        [&] { view.Zoom().Time(TimeZoomOut); },
        [&] { view.Zoom().ScrollHorizontallyTo(40); },
        [&] { view.Zoom().ScrollHorizontallyTo(33); },
        [&] { view.State().SetSelection(8, 15); },
        [&] { view.State().SetSelection(9, 13); },
        [&] { view.Zoom().ScrollHorizontally(ScrollStep::kLineForward); },
        [&] { view.State().SetSelection(0, 0); },
    };
    for (const double ratio : {1.0, 2.0}) {
        ZoomDefault(view);
        Follow(view, ratio);
        for (std::size_t i = 0; i < std::size(steps); ++i) {
            steps[i]();
            Follow(view, ratio);
            ASSERT_EQ(canvas_.Image(), FreshPicture(view, ratio))
                << "step " << i << " at " << ratio;
        }
    }
}

TEST_F(WaveformCanvasTest, TheFirstStrokeRunsFromTheEdgeToTheFirstColumn) {
    CSoundView& view = Open({1, 100, [](unsigned, std::uint32_t) { return 24000; }, {}});
    const QRgb pen = qRgb(0, 255, 128);
    const auto rowsOf = [&](int x) {
        int rows = 0;
        for (int y = 0; y < canvas_.Image().height(); ++y)
            rows += canvas_.Image().pixel(x, y) == pen;
        return rows;
    };
    for (const double ratio : {1.0, 2.0}) {
        ZoomDefault(view);
        Follow(view, ratio);
        EXPECT_GT(rowsOf(0), 50) << "a single stroke at " << ratio;
        view.Zoom().Time(TimeZoomOut);
        Follow(view, ratio);
        const int first = static_cast<int>(view.Zoom().Pixels().X(1) * ratio);
        ASSERT_GT(first, 5);
        for (int x = 0; x < first - 1; ++x) EXPECT_GT(rowsOf(x), 5) << x << " at " << ratio;
        EXPECT_EQ(rowsOf(first + 1), 1);
    }
}

TEST_F(WaveformCanvasTest, OfAnEmptySoundNothingIsDrawn) {
    for (const char* grid : {"WIDTH GRID", "HEIGHT GRID", "PRESENT LOCATION"})
        SetOption("__SOUND_GRID_DISPLAY_ITEMS", grid, 1);
    SetOption("__SOUND_GRID_OPTIONS", "GRID WIDTH SPACING", 1);
    SetOption("__SOUND_GRID_OPTIONS", "GRID HEIGHT SPACING", 10);
    CSoundView& view = Open({2, 0, BeatingTone, {}});
    Follow(view, 1.0);
    QImage background(canvas_.Image().size(), QImage::Format_RGB32);
    background.fill(Qt::black);
    EXPECT_EQ(canvas_.Image(), background);
}

TEST_F(WaveformCanvasTest, TheLaneSeparatorHasAColourOfItsOwn) {
    CSoundView& view = Open({2, 5000, BeatingTone, {}});
    const auto pictureWith = [&](std::size_t slot) {
        EXPECT_TRUE(folder_.Display().Change([slot](ProfileText& display) {
            for (std::size_t i = 0; i < ColourTable::kSlots; ++i)
                display.SetString(kColourSection, "K" + std::to_string(i),
                                  i == slot ? "200,0,200," : "1,2,3,");
            return true;
        }));
        view.ReloadSettings();
        Follow(view, 1.0);
        return canvas_.Image().copy();
    };
    const QImage plain = pictureWith(ColourTable::kSlots);
    EXPECT_EQ(pictureWith(6), plain) << "a slot that is only kept";
    const QImage separated = pictureWith(15);
    for (int y = 0; y < separated.height(); ++y) {
        const bool between = y >= view.State().Geometry().Lane(0, 2).bottom &&
                             y < view.State().Geometry().Lane(1, 2).top;
        EXPECT_EQ(separated.pixel(300, y) == qRgb(200, 0, 200), between) << y;
    }
}

// --- The raster

constexpr QRgb kFirst = qRgb(255, 0, 0);
constexpr QRgb kSecond = qRgb(0, 255, 0);

QImage BlackImage(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::black);
    return image;
}

int RowsOf(const QImage& image, int x, QRgb colour) {
    int rows = 0;
    for (int y = 0; y < image.height(); ++y) rows += image.pixel(x, y) == colour;
    return rows;
}

TEST(ColumnRasterTest, JoinsColumnsWithoutGapsAndStaysInItsClip) {
    // Steep, flat and long lines over more columns than one block, on both sides of the clip.
    const int ys[] = {-50, 90, 10, 10, 200, 30, 31, 32, 60, 5};
    QImage image = BlackImage(70, 100);
    ColumnRaster raster({3, 20, 67, 80});
    for (int i = 0; i < 10; ++i) raster.LineTo(i * 8 - 2, ys[i], kFirst);
    raster.Fill(image);
    for (int x = 0; x < image.width(); ++x) {
        if (x < 3 || x >= 67) {
            EXPECT_EQ(RowsOf(image, x, kFirst), 0) << x;
        }
        for (int y : {0, 19, 80, 99}) EXPECT_NE(image.pixel(x, y), kFirst) << x << "," << y;
    }
    // From (-2, -50) to (6, 90) and on to (14, 10): one run a column, next to its neighbour's.
    for (int x = 4; x < 13; ++x) {
        bool touches = false;
        for (int y = 20; y < 80; ++y)
            for (int next = y - 1; next <= y + 1; ++next)
                touches |= image.pixel(x, y) == kFirst && image.pixel(x + 1, next) == kFirst;
        const bool inside = RowsOf(image, x, kFirst) > 0 && RowsOf(image, x + 1, kFirst) > 0;
        EXPECT_EQ(touches, inside) << x;
    }
    EXPECT_EQ(RowsOf(image, 58, kFirst), 4);  // 32 to 60 over eight columns
}

TEST(ColumnRasterTest, AJoinKeepsThePenOfTheColumnItComesFrom) {
    QImage image = BlackImage(20, 100);
    ColumnRaster raster({0, 0, 20, 100});
    raster.LineTo(5, 10, kFirst);
    raster.LineTo(5, 20, kFirst);
    raster.LineTo(6, 60, kFirst);
    raster.LineTo(6, 70, kSecond);
    raster.Fill(image);
    EXPECT_EQ(RowsOf(image, 6, kSecond), 11);
    EXPECT_EQ(image.pixel(6, 50), kFirst);
    EXPECT_EQ(RowsOf(image, 5, kSecond), 0);
}

}  // namespace
}  // namespace sonavel
