// Conversions of a view's sound: what is said beforehand comes true, as one step, and what is heard
// stays in its place.
#include "effects/convert_format.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

#include "document/edit_operations.h"
#include "sound/made_beside.h"
#include "sound/sample_types.h"
#include "view/view_fixture.h"

namespace sonavel {
namespace {

using Rate = FormatChange::Rate;

class ConvertTest : public ViewTest {
  protected:
    // A sine of 100 Hz, on the right half as loud.
    void OpenSine(unsigned channels, unsigned bits, std::uint32_t rate = 8000) {
        class Sound sound;
        ASSERT_TRUE(sound.Create(channels, bits, rate, rate * 2));
        for (std::uint32_t i = 0; i < rate * 2; ++i)
            for (unsigned c = 0; c < channels; ++c)
                sound.SetSample(c, i, ValueAt(c, bits, static_cast<double>(i) / rate));
        sound.Markers().Add(rate, "one", rate / 2);
        Open(std::move(sound));
        Document().SetModified(false);
    }
    static std::int32_t ValueAt(unsigned channel, unsigned bits, double seconds) {
        return static_cast<std::int32_t>(
            std::lround(ShareAt(channel, seconds) * (bits == 8 ? 127 : 32767)));
    }
    static double ShareAt(unsigned channel, double seconds) {
        return (channel ? 0.25 : 0.5) * std::sin(2 * std::numbers::pi * 100 * seconds);
    }
};

TEST_F(ConvertTest, WhatIsSaidBeforehandComesTrueAsOneStep) {
    const struct {
        FormatChange change;
        FormatOutlook outlook;
    } cases[] = {
        {{48000, Rate::kResampled, 16, {}, 2, ChannelChoice::kBothOrMix},
         {48000, 16, 2, 96000, 384000}},
        {{4000, Rate::kNewSpeed, 16, {}, 2, ChannelChoice::kBothOrMix},
         {4000, 16, 2, 16000, 64000}},
        {{8000, Rate::kResampled, 32, {}, 1, ChannelChoice::kLeft}, {8000, 32, 1, 16000, 64000}},
        {{4000, Rate::kResampled, 8, {}, 1, ChannelChoice::kRight}, {4000, 8, 1, 8000, 8000}},
    };
    for (const auto& [change, outlook] : cases) {
        OpenSine(2, 16);
        const FormatOutlook before = PresentOutlook(Sound());
        const std::size_t steps = Document().History().Count();
        const auto said = OutlookOf(Sound(), change);
        ASSERT_TRUE(said);
        EXPECT_EQ(*said, outlook);
        ASSERT_TRUE(ConvertView(View(), change));
        EXPECT_EQ(PresentOutlook(Sound()), outlook);
        EXPECT_EQ(Document().History().Count(), steps + 1);
        ASSERT_TRUE(Document().Undo());
        EXPECT_EQ(PresentOutlook(Sound()), before);
    }
}

TEST_F(ConvertTest, TheSameFormatIsNoEdit) {
    OpenSine(2, 16);
    ASSERT_TRUE(ConvertView(View(), FormatOf(Sound())));
    EXPECT_FALSE(Document().GetModified());
    EXPECT_FALSE(Document().CanUndo());
}

TEST_F(ConvertTest, ResampledPlacesKeepTheirTimesAndNewSpeedKeepsFrames) {
    for (const Rate way : {Rate::kResampled, Rate::kNewSpeed}) {
        OpenSine(1, 16);
        View().State().SetSelection(4000, 8000);
        View().State().SetCursor(4000);
        FormatChange change = FormatOf(Sound());
        change.samplesPerSecond = 16000;
        change.rate = way;
        ASSERT_TRUE(ConvertView(View(), change));
        const std::uint32_t factor = way == Rate::kResampled ? 2 : 1;
        EXPECT_EQ(View().State().GetSelection().start, 4000 * factor);
        EXPECT_EQ(View().State().GetSelection().end, 8000 * factor);
        EXPECT_EQ(View().State().Cursor(), 4000 * factor);
        EXPECT_EQ(Sound().Markers().All()[0].position, 8000 * factor);
        EXPECT_EQ(Sound().Markers().All()[0].length, 4000 * factor);
    }
}

TEST_F(ConvertTest, TheChosenChannelIsHeard) {
    const struct {
        unsigned from, to;
        ChannelChoice choice;
        double left, right;  // of the sine
    } cases[] = {
        {2, 1, ChannelChoice::kLeft, 0.5, 0},        {2, 1, ChannelChoice::kRight, 0.25, 0},
        {2, 1, ChannelChoice::kBothOrMix, 0.375, 0}, {1, 2, ChannelChoice::kLeft, 0.5, 0},
        {1, 2, ChannelChoice::kRight, 0, 0.5},       {1, 2, ChannelChoice::kBothOrMix, 0.5, 0.5},
    };
    for (const auto& one : cases)
        for (const std::uint32_t rate : {8000u, 32000u}) {
            OpenSine(one.from, 16);
            FormatChange change = FormatOf(Sound());
            change.samplesPerSecond = rate;
            change.channels = one.to;
            change.choice = one.choice;
            ASSERT_TRUE(ConvertView(View(), change));
            for (std::uint32_t i = rate / 10; i < rate; i += 13) {
                const double sine = std::sin(2 * std::numbers::pi * 100 * i / rate);
                ASSERT_NEAR(Sound().GetShare(0, i), one.left * sine, 3e-4) << i;
                if (one.to == 2) {
                    ASSERT_NEAR(Sound().GetShare(1, i), one.right * sine, 3e-4) << i;
                }
            }
        }
}

TEST_F(ConvertTest, AnyConversionOfALongSoundCanBeCancelled) {
    const auto change = [this](unsigned bits, unsigned channels) {
        FormatChange wanted = FormatOf(Sound());
        wanted.bits = bits;
        wanted.channels = channels;
        return ConvertView(View(), wanted);
    };
    const std::function<Outcome()> cases[] = {
        [&] { return change(32, 2); },
        [&] { return change(8, 2); },
        [&] { return change(16, 1); },
        [&] { return edit::ConvertFormat(Document(), 2, ChannelChoice::kBothOrMix, 8); },
    };
    class Sound sound;
    ASSERT_TRUE(sound.Create(2, 16, 8000, kProgressFromBytes / 4));
    FillWithSilence(sound.MutableBytes(), 16);
    Open(std::move(sound));
    Document().SetModified(false);
    const FormatOutlook before = PresentOutlook(Sound());
    for (const auto& convert : cases) {
        progress.titles.clear();
        progress.polls = 0;
        progress.cancelAtPoll = 0;
        EXPECT_TRUE(convert().IsCancelled());
        EXPECT_EQ(progress.titles, std::vector<std::string>{"Progress Convert"});
        EXPECT_EQ(progress.openWindows, 0);
        EXPECT_EQ(PresentOutlook(Sound()), before);
        EXPECT_FALSE(Document().CanUndo() || Document().GetModified());
    }
    progress.cancelAtPoll.reset();
    progress.positions.clear();
    EXPECT_TRUE(change(32, 2));
    EXPECT_EQ(Sound().GetBits(), 32u);
    ASSERT_FALSE(progress.positions.empty());
    EXPECT_GT(progress.positions.back(), 90);
    EXPECT_TRUE(std::ranges::is_sorted(progress.positions));
}

// A level between two steps of the fewer bits is kept on the average by dither alone.
TEST_F(ConvertTest, DitherKeepsWhatLiesBetweenTheSteps) {
    const struct {
        unsigned from, to;
        double share;
    } cases[] = {{16, 8, 0.3 / 128}, {32, 8, 0.3 / 128}, {32, 16, 0.3 / 32768}};
    for (const auto& one : cases)
        for (const Rounding rounding : {Rounding::kDithered, Rounding::kPlain}) {
            class Sound sound;
            ASSERT_TRUE(sound.Create(1, one.from, 8000, 40000));
            for (std::uint32_t i = 0; i < 40000; ++i) {
                if (one.from == 16)
                    sound.SetSample(0, i, static_cast<std::int32_t>(one.share * 32768));
                else
                    SamplesOf<FloatSample>(sound.MutableBytes())[i] = static_cast<float>(one.share);
            }
            Open(std::move(sound));
            FormatChange change = FormatOf(Sound());
            change.bits = one.to;
            change.rounding = rounding;
            ASSERT_TRUE(ConvertView(View(), change));
            double mean = 0;
            for (std::uint32_t i = 0; i < 40000; ++i) mean += Sound().GetShare(0, i) / 40000;
            const double step = one.to == 8 ? 1.0 / 128 : 1.0 / 32768;
            const double kept = rounding == Rounding::kDithered ? one.share : 0;
            EXPECT_NEAR(mean, kept, 0.02 * step) << one.from << " to " << one.to;
        }
}

TEST_F(ConvertTest, PlainBitsAreThoseOfConvertBits) {
    OpenSine(2, 16);
    auto wanted = Converted(Sound(), 2, ChannelChoice::kBothOrMix, 8);
    ASSERT_TRUE(wanted);
    FormatChange change = FormatOf(Sound());
    change.bits = 8;
    change.rounding = Rounding::kPlain;
    ASSERT_TRUE(ConvertView(View(), change));
    EXPECT_TRUE(std::ranges::equal(Sound().Bytes(), wanted->Bytes()));
}

TEST_F(ConvertTest, ACancelLeavesAllAsItWas) {
    OpenSine(2, 16);
    const FormatOutlook before = PresentOutlook(Sound());
    progress.cancelAtPoll = 0;
    FormatChange change = FormatOf(Sound());
    change.samplesPerSecond = 44100;
    change.bits = 32;
    EXPECT_TRUE(ConvertView(View(), change).IsCancelled());
    EXPECT_EQ(PresentOutlook(Sound()), before);
    EXPECT_FALSE(Document().GetModified());
}

TEST_F(ConvertTest, WhatCannotBeIsRefusedBeforehand) {
    OpenSine(1, 16);
    for (const std::uint32_t rate : {0u, 999u, 768001u}) {
        FormatChange change = FormatOf(Sound());
        change.samplesPerSecond = rate;
        EXPECT_FALSE(OutlookOf(Sound(), change)) << rate;
    }
}

}  // namespace
}  // namespace sonavel
