// What a view shows of its sound beside the waveform: where the spectrogram and its ruler lie, what
// is read off them, and the strip with the whole sound.
#include <cmath>
#include <numbers>

#include "view/draw/frequency_ruler.h"
#include "view/draw/overview.h"
#include "view/input/mouse_input.h"
#include "view/state/status_texts.h"
#include "view_fixture.h"

namespace sonavel {
namespace {

class SoundPictureTest : public ViewTest {
  protected:
    // 440 Hz on the left, 1000 Hz on the right, both at half of full scale.
    void OpenTones() {
        class Sound tones;
        ASSERT_TRUE(tones.Create(2, 16, 8000, 40000));
        for (std::uint32_t frame = 0; frame < 40000; ++frame)
            for (const unsigned channel : {0U, 1U}) {
                const double turns = frame * (channel == 0 ? 440.0 : 1000.0) / 8000;
                tones.SetSample(channel, frame,
                                std::lround(16383.5 * std::sin(2 * std::numbers::pi * turns)));
            }
        Open(std::move(tones));
    }
    const ViewGeometry& Geometry() { return View().State().Geometry(); }
};

TEST_F(SoundPictureTest, EachPictureHasItsPlaceAndAllShareTheTime) {
    OpenTones();
    const Rectangle whole = Geometry().waveform;
    EXPECT_EQ(Geometry().Lane(0, 1), whole);
    EXPECT_TRUE(Geometry().SpectrogramLane(0, 1).Empty());
    View().Zoom().Level(LevelZoomIn);
    const double level = View().Zoom().LevelPercent();
    ASSERT_TRUE(Run(view_command::kShowBoth));
    EXPECT_EQ(Geometry().waveform, whole);
    EXPECT_EQ(Geometry().envelope.top, whole.top);
    EXPECT_EQ(Geometry().spectrogram.bottom, whole.bottom);
    EXPECT_EQ(Geometry().spectrogram.top, Geometry().envelope.bottom + 1);
    EXPECT_NEAR(Geometry().spectrogram.Height(), Geometry().envelope.Height(), 1);
    EXPECT_LT(Geometry().SpectrogramLane(0, 2).bottom, Geometry().SpectrogramLane(1, 2).top);
    EXPECT_NEAR(View().Zoom().LevelPercent(), level, 2);
    ASSERT_TRUE(Run(view_command::kShowSpectrogram));
    EXPECT_EQ(Geometry().SpectrogramLane(0, 1), whole);
    EXPECT_FALSE(Geometry().ShowsEnvelope());
    ASSERT_TRUE(Run(view_command::kShowWaveform));
    EXPECT_EQ(Geometry().Lane(0, 1), whole);
    EXPECT_NEAR(View().Zoom().LevelPercent(), level, 2);
}

TEST_F(SoundPictureTest, ThePictureIsTheSoundsOwnAndTheNextSoundsFirst) {
    OpenTones();
    ASSERT_TRUE(Run(view_command::kShowSpectrogram));
    EXPECT_TRUE(Commands().StateOfCommand(view_command::kShowSpectrogram).checked);
    EXPECT_FALSE(Commands().StateOfCommand(view_command::kShowWaveform).checked);
    ProfileFile display = folder.Display();
    ASSERT_TRUE(WriteSoundPicture(display, SoundPicture::kBoth));
    View().ReloadSettings();
    EXPECT_EQ(View().Pictures().Now(), SoundPicture::kSpectrogram);
    OpenTones();
    EXPECT_EQ(View().Pictures().Now(), SoundPicture::kBoth);
    EXPECT_TRUE(Geometry().ShowsSpectrogram());
}

TEST_F(SoundPictureTest, SettingsOutOfRangeGiveWay) {
    SettingValues numbers;  // all 0, as of a file without them
    SpectrogramSettings settings = SpectrogramSettings::Read(numbers);
    EXPECT_EQ(settings, SpectrogramSettings());
    numbers[SettingId::kSpectrumWindow] = 5000;
    numbers[SettingId::kSpectrumScale] = 2;
    numbers[SettingId::kSpectrumPalette] = 7;
    numbers[SettingId::kSpectrumRange] = 999;
    settings = SpectrogramSettings::Read(numbers);
    EXPECT_EQ(settings.look.windowFrames, 4096U);
    EXPECT_EQ(settings.look.scale, FrequencyScale::kMel);
    EXPECT_EQ(settings.palette, SpectrumPalette::kEmber);
    EXPECT_EQ(settings.look.rangeDecibels, 90);
    settings.look.shape = WindowShape::kBlackmanHarris;
    OpenTones();
    EXPECT_TRUE(StoreSpectrogram(View(), settings));
    EXPECT_EQ(View().Settings().spectrogram, settings);
    View().ReloadSettings();
    EXPECT_EQ(View().Settings().spectrogram, settings) << "as stored";
}

TEST_F(SoundPictureTest, ThePointerReadsTimeFrequencyAndLevel) {
    OpenTones();
    ASSERT_TRUE(Run(view_command::kShowBoth));
    Watch();
    MouseInput mouse(View());
    const auto textAt = [&](unsigned channel, double frequency) {
        const Rectangle lane = Geometry().SpectrogramLane(channel, 2);
        mouse.Move({lane.left + 320, RowOfFrequency(lane, FrequencyScale::kLinear, frequency, 4000),
                    false, false});
        return window.texts.back();
    };
    // -6 dB of full scale; rows are 59 Hz apart.
    EXPECT_EQ(textAt(1, 1000).substr(0, 8), "20000 : ");
    EXPECT_NE(textAt(0, 440).find(" dB"), std::string::npos);
    const auto decibelsAt = [&](unsigned channel, double frequency) {
        const std::string text = textAt(channel, frequency);
        return std::stod(text.substr(text.find("Hz, ") + 4));
    };
    View().ShowChosen(SpectrogramSettings{.look = {.windowFrames = 256}});
    EXPECT_NEAR(decibelsAt(1, 1000), -6, 2);
    EXPECT_LT(decibelsAt(0, 1000), -40);
    EXPECT_LT(decibelsAt(1, 3000), -40);
    mouse.Move({Geometry().waveform.left + 320, Geometry().envelope.top + 5, false, false});
    EXPECT_EQ(window.texts.back().substr(0, 14), "(Sample Value)");
}

TEST(StatusTextsOfSpectrogramTest, NotesAreNamed) {
    const std::pair<double, const char*> notes[] = {
        {440, "A4"},   {261.6256, "C4"}, {466.16, "A#4"}, {442, "A4 +8"},
        {16.35, "C0"}, {15, ""},         {0, ""},         {15804, "B9"},
        {17000, ""},   {27.5, "A0"},     {2093, "C7"},    {1000, "B5 +21"},
    };
    for (const auto& [frequency, note] : notes) EXPECT_EQ(NoteText(frequency), note) << frequency;
    EXPECT_EQ(SpectrumText("2.500", 440, -6.02), "2.500 : 440 Hz, -6.0 dB, A4");
    EXPECT_EQ(SpectrumText("2.500", 0, std::nullopt), "2.500 : 0 Hz, silent");
}

TEST(FrequencyRulerTest, LabelsStandAtTheirFrequenciesAndNeverTouch) {
    for (const FrequencyScale scale :
         {FrequencyScale::kLinear, FrequencyScale::kLogarithmic, FrequencyScale::kMel})
        for (const int height : {40, 150, 600}) {
            const Rectangle lanes[] = {{0, 10, 1, 10 + height},
                                       {0, 13 + height, 1, 13 + 2 * height}};
            const auto ticks = LayOutFrequencyRuler(
                {.lanes = lanes, .scale = scale, .highest = 24000, .labelHeight = 9});
            int labels = 0, labelEnd = 0;
            for (const FrequencyTick& tick : ticks) {
                const Rectangle& lane = lanes[tick.y < lanes[1].top ? 0 : 1];
                EXPECT_EQ(RowOfFrequency(lane, scale, tick.frequency, 24000), tick.y);
                EXPECT_LE(FrequencyOfRow(lane, scale, tick.y + 1, 24000), tick.frequency);
                EXPECT_GE(FrequencyOfRow(lane, scale, tick.y - 1, 24000), tick.frequency);
                if (tick.label.empty()) continue;
                ++labels;
                EXPECT_GE(tick.y - 4, labelEnd) << tick.label;
                labelEnd = tick.y + 5;
            }
            EXPECT_GE(labels, 4) << height;
            EXPECT_LE(labels, 2 * height / 10);
        }
}

std::string LabelsOf(const Rectangle& lane, FrequencyScale scale, double highest) {
    std::string labels;
    for (const FrequencyTick& tick : LayOutFrequencyRuler(
             {.lanes = {&lane, 1}, .scale = scale, .highest = highest, .labelHeight = 12}))
        if (!tick.label.empty()) labels += tick.label + " ";
    return labels;
}

TEST(FrequencyRulerTest, RoundFrequenciesAreLabelledFirst) {
    const Rectangle lane = {0, 0, 20, 140};
    EXPECT_EQ(LabelsOf(lane, FrequencyScale::kLogarithmic, 22050), "10k 5k 2k 1k 500 200 100 50 ");
    // Where all stand evenly, multiples of five thousand come before the others.
    EXPECT_EQ(LabelsOf({0, 0, 20, 110}, FrequencyScale::kLinear, 22050), "20k 15k 10k 5k 1k ");
}

// --- The overview

ScrollState Scroll(std::int64_t maximum, std::int64_t position) {
    return ScrollState{0, maximum, 1, position};
}

TEST(OverviewTest, TheFrameShowsWhatIsInSightAndCanAlwaysBeTaken) {
    // 10000 frames; 400 pixels of the view over 300 of the strip.
    EXPECT_EQ(FrameOfOverview(PixelMap(10000, Scroll(400, 0)), 400, 300), (OverviewFrame{0, 300}));
    EXPECT_EQ(FrameOfOverview(PixelMap(10000, Scroll(4000, 1000)), 400, 300),
              (OverviewFrame{75, 105}));
    EXPECT_EQ(FrameOfOverview(PixelMap(10000, Scroll(4000, 3600)), 400, 300),
              (OverviewFrame{270, 300}));
    for (const std::int64_t position : {0, 500000, 999600}) {
        const OverviewFrame thin =
            FrameOfOverview(PixelMap(1 << 20, Scroll(1000000, position)), 400, 300);
        EXPECT_EQ(thin.right - thin.left, 5);
        EXPECT_GE(thin.left, 0);
        EXPECT_LE(thin.right, 300);
    }
    EXPECT_EQ(FrameOfOverview(PixelMap(), 400, 300), OverviewFrame());
    EXPECT_EQ(FrameOfOverview(PixelMap(1 << 20, Scroll(1000000, 5)), 400, 3),
              (OverviewFrame{0, 3}));
}

TEST(OverviewTest, AFrameIsDraggedByWhereItWasTakenAndAClickGoesThere) {
    const PixelMap view(10000, Scroll(4000, 1000));
    OverviewDrag drag;
    EXPECT_EQ(drag.Move(view, 300, 20), std::nullopt) << "no button is held";
    EXPECT_EQ(drag.Press(view, 400, 300, 100), std::nullopt) << "on the frame";
    EXPECT_EQ(drag.Move(view, 300, 103), 1040);
    EXPECT_EQ(drag.Move(PixelMap(10000, Scroll(4000, 1040)), 300, 100), 1000);
    drag.Release();
    EXPECT_FALSE(drag.IsDragging());
    EXPECT_EQ(drag.Press(view, 400, 300, 150), 1800) << "its middle goes there";
    EXPECT_EQ(drag.Move(PixelMap(10000, Scroll(4000, 1800)), 300, 165), 2000);
    EXPECT_EQ(OverviewX(5000, 10000, 300), 150);
    EXPECT_EQ(OverviewX(0xFFFFFFFF, 0xFFFFFFFF, 3000), 3000);
    EXPECT_EQ(OverviewX(7, 0, 300), 0);
}

TEST(OverviewTest, ColumnsHoldTheLoudestOfAllChannels) {
    Sound sound;
    ASSERT_TRUE(sound.Create(2, 16, 1000, 60000));
    FillWithSilence(sound.MutableBytes(), 16);
    sound.SetSample(0, 30070, 32767);
    sound.SetSample(1, 30080, -16384);
    BlockExtremes extremes;
    extremes.Rebuild(sound, 0);
    for (const int width : {100, 1000}) {  // from the table, and read one by one
        const auto columns = OverviewColumns(sound, extremes, width, 40);
        ASSERT_EQ(columns.size(), static_cast<std::size_t>(width));
        const auto at = [&](int tenths) {
            return columns[static_cast<std::size_t>(width) * static_cast<std::size_t>(tenths) /
                           1000];
        };
        EXPECT_EQ(at(501).top, 0) << width;
        EXPECT_NEAR(at(501).bottom, 31, 1) << width;
        EXPECT_EQ(at(300).bottom - at(300).top, 1);
        EXPECT_NEAR(at(300).top, 20, 1);
    }
    EXPECT_TRUE(OverviewColumns(Sound(), BlockExtremes(), 100, 40).empty());
}

TEST_F(SoundPictureTest, LongSoundsHaveAnOverviewUntilToldOtherwise) {
    OpenRamp(600 * 1000);
    EXPECT_FALSE(View().Pictures().ShowsOverview());
    OpenRamp(600 * 1000 + 1);
    EXPECT_TRUE(Commands().StateOfCommand(view_command::kOverview).checked);
    ASSERT_TRUE(Run(view_command::kOverview));
    EXPECT_FALSE(View().Pictures().ShowsOverview());
    OpenRamp(600 * 1000 + 1);
    EXPECT_FALSE(View().Pictures().ShowsOverview()) << "as chosen, after another start";
    ASSERT_TRUE(Run(view_command::kOverview));
    EXPECT_TRUE(View().Pictures().ShowsOverview());
    OpenRamp(1000);
    EXPECT_TRUE(View().Pictures().ShowsOverview());
    ProfileFile display = folder.Display();
    ASSERT_TRUE(WriteOverview(display, OverviewOf::kLongSounds));
    Watch();
    View().ReloadSettings();
    EXPECT_FALSE(View().Pictures().ShowsOverview());
    EXPECT_EQ(window.overviews, 1);
}

}  // namespace
}  // namespace sonavel
