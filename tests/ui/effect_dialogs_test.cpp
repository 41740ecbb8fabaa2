// The effect dialogs: what they show at first, how their controls and labels follow each other, and
// what they remember.
#include <QCheckBox>
#include <QRadioButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSlider>

#include "ui/effect_fixture.h"

namespace sonavel {
namespace {

using namespace effect_command;

class EffectDialogsTest : public EffectFixture {};

struct FirstLook {
    int commandId;
    const char* title;
    const char* header;
    // Of sliders and bars, in order: least, position, greatest.
    std::vector<std::array<int, 3>> positions;
    QStringList values;
};

TEST_F(EffectDialogsTest, OpenWithTheirTextsRangesAndStartValues) {
    const std::array<int, 3> pan{-1000, 0, 1000}, band{-400, 0, 400}, pitch{0, 0, 2000};
    const FirstLook looks[] = {
        {kVolume, "Volume", "   Volume Settings", {{0, 200, 300}}, {"100 "}},
        {kPanpot,
         "Panpot/Crossfade",
         "   Panpot/Crossfade Settings",
         {pan, pan, pan},
         {"center", "center", "center"}},
        {kReverb,
         "Reverberation",
         "   Reverberation Setting",
         {{0, 300, 1000}, {0, 50, 200}, {0, 1500, 6000}},
         {"50", "1500", "70", "30", "300", "1500"}},
        {kFlanger, "Flanger", "   Flanger Settings", {{0, 1, 150}, {0, 1, 100}}, {"0.1", "0.1"}},
        {kModulator, "Modulator", "   Modulator Settings", {pitch, pitch}, {"0.00 Hz", "0.00 Hz"}},
        {kDynamics, "Dynamics", "   Dynamics Setting", {}, {}},
        {kEqualizer, "Graphic EQ", "    7-Band Graphic EQ",
         std::vector<std::array<int, 3>>(7, band), QStringList(7, "0.0")},
    };
    Open({});
    for (const FirstLook& look : looks) {
        SCOPED_TRACE(look.title);
        EffectDialog& dialog = Show(look.commandId);
        EXPECT_EQ(dialog.windowTitle(), look.title);
        EXPECT_EQ(HeaderOf(dialog), look.header);
        std::vector<std::array<int, 3>> positions;
        for (const auto* slider : dialog.findChildren<QAbstractSlider*>())
            positions.push_back({slider->minimum(), slider->value(), slider->maximum()});
        EXPECT_EQ(positions, look.positions);
        EXPECT_EQ(ValueTexts(dialog), look.values);
        std::vector<double> starts;
        for (const EffectParameter& parameter : dialog.Row().parameters)
            starts.push_back(parameter.start);
        EXPECT_EQ(dialog.Values(), starts);
    }
}

TEST_F(EffectDialogsTest, AreDrawnInTheirColours) {
    Open({});
    const QImage image = Show(kVolume).grab().toImage();
    EXPECT_EQ(image.pixel(2, 2), qRgb(0x14, 0xD7, 0xD7));
    EXPECT_EQ(image.pixel(2, image.height() - 2), qRgb(0xC8, 0xD7, 0xD7));
}

TEST_F(EffectDialogsTest, SlidersDrawnInvertedRaiseTheValueWithUp) {
    Open({});
    EffectDialog& volume = Show(kVolume);
    auto* slider = volume.findChild<QSlider*>();
    EXPECT_EQ(slider->tickInterval(), 50);
    QTest::keyClick(slider, Qt::Key_Up);
    EXPECT_EQ(ValueTexts(volume).front(), "101 ");
    EXPECT_EQ(slider->value(), 199);
    slider->setValue(0);
    EXPECT_EQ(volume.Values()[0], 300);

    EffectDialog& equalizer = Show(kEqualizer);
    auto* band = equalizer.findChildren<QSlider*>()[2];
    EXPECT_EQ(band->tickInterval(), 40);
    band->setValue(-123);
    EXPECT_EQ(ValueTexts(equalizer)[2], "12.3");
    QTest::keyClick(band, Qt::Key_PageDown);
    EXPECT_DOUBLE_EQ(equalizer.Values()[2], 11.3);
    // The top end is the loudest, for the mouse too.
    EXPECT_TRUE(band->invertedAppearance());
}

TEST_F(EffectDialogsTest, VolumeCanBeTypedInPercentAndInDecibels) {
    Open({});
    EffectDialog& dialog = Show(kVolume);
    auto* slider = dialog.findChild<QSlider*>();
    const auto boxes = dialog.findChildren<QDoubleSpinBox*>();
    ASSERT_EQ(boxes.size(), 2);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    const auto type = [](QDoubleSpinBox* box, const char* text) {
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QLatin1String(text));
    };
    type(boxes[0], "250");
    EXPECT_EQ(ValueTexts(dialog).front(), "250 ");
    EXPECT_EQ(boxes[1]->text(), "7.96");
    type(boxes[1], "-6.5");
    EXPECT_EQ(dialog.Values()[0], 47);
    EXPECT_EQ(slider->value(), 300 - 47);
    EXPECT_EQ(boxes[0]->text(), "47");
    // What is being typed stays; afterwards the whole percentage shows.
    EXPECT_EQ(boxes[1]->text(), "-6.5");
    QTest::keyClick(boxes[1], Qt::Key_Tab);
    EXPECT_EQ(boxes[1]->text(), "-6.56");
    type(boxes[1], "9.54");
    EXPECT_EQ(dialog.Values()[0], 300);
    slider->setValue(300);
    EXPECT_EQ(boxes[1]->text(), "-inf");
    for (int percent = 0; percent <= 300; ++percent) {
        slider->setValue(300 - percent);
        EXPECT_EQ(dialog.Values()[0], percent);
    }
}

TEST_F(EffectDialogsTest, VolumeRemembersToHoldAtFullScaleUntilReset) {
    Open({});
    auto* hold = Show(kVolume).findChild<QCheckBox*>();
    EXPECT_EQ(hold->text().remove(u'&'), "Hold at full scale");
    hold->click();
    EXPECT_EQ(dialog_->Values(), (std::vector<double>{100, 1}));
    Close();
    EXPECT_EQ(Show(kVolume).Values(), (std::vector<double>{100, 1}));
    ButtonOf(*dialog_, "&Reset")->click();
    EXPECT_EQ(dialog_->Values(), (std::vector<double>{100, 0}));
}

TEST_F(EffectDialogsTest, VolumeMeasuresTheRange) {
    const auto notes = [this] {
        return Named<QLabel>(Show(kVolume), "headerNotes")->text().split(u'\n');
    };
    Open({.channels = 2});
    Sound().SetSample(1, 2000, -19800);
    EXPECT_TRUE(notes()[0].startsWith("Peak of the range: -4.4 dB"));
    EXPECT_TRUE(notes()[1].startsWith("Louder than full scale from 166 % on"));
    View().State().SetSelection(2001, 3000);
    EXPECT_TRUE(notes()[0].startsWith("Peak of the range: -50.3 dB"));
    EXPECT_EQ(notes()[1], "Within full scale up to 300 %.");
    for (std::uint32_t frame = 0; frame < 10; ++frame)
        for (const unsigned channel : {0u, 1u}) Sound().SetSample(channel, frame, 0);
    View().State().SetSelection(0, 10);
    EXPECT_EQ(notes(), QStringList{"Peak of the range: silence."});
}

TEST_F(EffectDialogsTest, PanpotBarsReactInTheirModeAndNameTheirSide) {
    Open({});
    EffectDialog& dialog = Show(kPanpot);
    const auto bars = dialog.findChildren<QScrollBar*>();
    auto* nonlinear = dialog.findChild<QCheckBox*>();
    QTest::keyClick(bars[0], Qt::Key_Right);
    EXPECT_EQ(ValueTexts(dialog)[0], "Right : 0.10");
    QTest::keyClick(bars[0], Qt::Key_Left);
    EXPECT_EQ(ValueTexts(dialog)[0], "Center");
    bars[0]->setValue(-52);
    EXPECT_EQ(ValueTexts(dialog)[0], "Left :  5.20");
    EXPECT_EQ(bars[0]->pageStep(), 100);
    EXPECT_FALSE(bars[1]->isEnabled() || bars[2]->isEnabled() || nonlinear->isEnabled());

    dialog.findChildren<QRadioButton*>()[1]->click();
    EXPECT_FALSE(bars[0]->isEnabled());
    bars[1]->setValue(-1000);
    bars[2]->setValue(1000);
    nonlinear->click();
    EXPECT_EQ(dialog.Values(), (std::vector<double>{1, -52, -1000, 1000, 1}));
}

TEST_F(EffectDialogsTest, ReverberationSharesOutDryAndWetAndShowsItsTimes) {
    Open({});
    EffectDialog& dialog = Show(kReverb);
    const auto bars = dialog.findChildren<QScrollBar*>();
    bars[0]->setValue(455);
    EXPECT_EQ(bars[0]->value(), 455);
    bars[1]->setValue(120);
    bars[2]->setValue(3200);
    EXPECT_EQ(dialog.Values(), (std::vector<double>{120, 3200, 6, 55, 45}));
    EXPECT_EQ(Named<QLabel>(dialog, "EDT")->text(), "653");
    EXPECT_EQ(Named<QLabel>(dialog, "RT60")->text(), "3200");
    dialog.Reset();
    EXPECT_EQ(bars[0]->value(), 300);
}

TEST_F(EffectDialogsTest, ModulatorShowsTwentiethsOfAHertz) {
    Open({});
    EffectDialog& dialog = Show(kModulator);
    dialog.findChildren<QScrollBar*>()[1]->setValue(705);
    EXPECT_EQ(ValueTexts(dialog)[1], "35.25 Hz");
    const auto fields = dialog.findChildren<QDoubleSpinBox*>();
    fields[0]->setValue(1000);
    fields[3]->setValue(60);
    EXPECT_EQ(dialog.Values(), (std::vector<double>{0, 1000, 0, 705, 0, 60}));
}

TEST_F(EffectDialogsTest, EqualizerNamesItsBandsByTheRate) {
    const std::pair<std::uint32_t, QStringList> rates[] = {
        {44100, {"60Hz", "150Hz", "400Hz", "1kHz", "2.4kHz", "6kHz", "15kHz"}},
        {22050, {"30Hz", "75Hz", "200Hz", "500Hz", "1.2kHz", "3kHz", "7.5kHz"}},
        {48000, QStringList(7, "")},
    };
    for (const auto& [rate, names] : rates) {
        Open({.samplesPerSecond = rate});
        EffectDialog& dialog = Show(kEqualizer);
        QStringList shown;
        for (QLabel* label : dialog.findChildren<QLabel*>())
            if (label->buddy()) shown << label->text().remove(u'&');
        EXPECT_EQ(shown, names);
    }
}

// Every key that the dialog answers to, and the fields that one leads to.
struct AltKeys {
    QList<QKeySequence> keys;
    QList<QWidget*> fields;

    explicit AltKeys(QWidget& dialog) {
        for (auto* button : dialog.findChildren<QAbstractButton*>())
            Add(QKeySequence::mnemonic(button->text()), button);
        for (auto* label : dialog.findChildren<QLabel*>())
            if (label->buddy() && !label->text().isEmpty())
                Add(QKeySequence::mnemonic(label->text()), label->buddy());
        for (auto* shortcut : dialog.findChildren<QShortcut*>())
            Add(shortcut->key(), qobject_cast<QWidget*>(shortcut->parent()));
    }
    void Add(const QKeySequence& key, QWidget* field) {
        keys << key;
        fields << field;
    }
};

TEST_F(EffectDialogsTest, EveryFieldHasAnAltKeyOfItsOwn) {
    const std::uint32_t rates[] = {44100, 32000, 22050, 48000};
    const int commands[] = {kVolume, kPanpot, kReverb, kFlanger, kModulator, kDynamics, kEqualizer};
    for (const std::uint32_t rate : rates) {
        Open({.samplesPerSecond = rate});
        for (const int commandId : commands) {
            EffectDialog& dialog = Show(commandId);
            SCOPED_TRACE(dialog.windowTitle().toStdString() + " " + std::to_string(rate));
            AltKeys alt(dialog);
            if (ButtonOf(dialog, "&Preview")) alt.keys << QKeySequence::mnemonic("&Stop");
            for (const QKeySequence& key : alt.keys)
                EXPECT_TRUE(key.toString().back().isLetterOrNumber())
                    << key.toString().toStdString();
            EXPECT_EQ(QSet(alt.keys.begin(), alt.keys.end()).size(), alt.keys.size());
            QList<QWidget*> fields;
            for (auto* slider : dialog.findChildren<QAbstractSlider*>()) fields << slider;
            for (auto* box : dialog.findChildren<QAbstractSpinBox*>()) fields << box;
            EXPECT_FALSE(fields.isEmpty());
            for (QWidget* field : fields) EXPECT_TRUE(alt.fields.contains(field));
        }
    }
}

TEST_F(EffectDialogsTest, AnAltKeyLeadsToItsField) {
    Open({.samplesPerSecond = 48000});
    EffectDialog& equalizer = Show(kEqualizer);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&equalizer));
    QTest::keyClick(&equalizer, Qt::Key_3, Qt::AltModifier);
    EXPECT_EQ(equalizer.focusWidget(), equalizer.findChildren<QSlider*>()[2]);

    EffectDialog& dynamics = Show(kDynamics);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dynamics));
    QTest::keyClick(&dynamics, Qt::Key_B, Qt::AltModifier);
    EXPECT_EQ(dynamics.focusWidget(), dynamics.findChildren<QDoubleSpinBox*>()[1]);
}

TEST_F(EffectDialogsTest, RememberTheirLastValuesUntilReset) {
    Open({});
    Show(kFlanger).findChildren<QSlider*>()[0]->setValue(80);
    Close();
    EXPECT_EQ(Show(kFlanger).Values(), (std::vector<double>{8, 0.1}));
    ButtonOf(*dialog_, "&Reset")->click();
    EXPECT_EQ(dialog_->Values(), (std::vector<double>{0.1, 0.1}));

    EffectDialog& panpot = Show(kPanpot);
    panpot.findChildren<QScrollBar*>()[0]->setValue(-300);
    panpot.findChildren<QRadioButton*>()[1]->click();
    panpot.findChildren<QScrollBar*>()[2]->setValue(700);
    Close();
    EffectDialog& again = Show(kPanpot);
    EXPECT_EQ(again.Values(), (std::vector<double>{1, -300, 0, 700, 0}));
    EXPECT_EQ(ValueTexts(again), (QStringList{"Left : 30.00", "center", "Right : 70.00"}));

    EffectDialog& dynamics = Show(kDynamics);
    dynamics.findChild<QCheckBox*>()->click();
    dynamics.findChildren<QDoubleSpinBox*>()[3]->setValue(40);
    dynamics.findChildren<QDoubleSpinBox*>()[6]->setValue(25);
    Close();
    EffectDialog& dynamicsAgain = Show(kDynamics);
    EXPECT_EQ(dynamicsAgain.Values(), (std::vector<double>{100, 1, 1, 40, 1, 1}));
    EXPECT_EQ(dynamicsAgain.findChildren<QDoubleSpinBox*>()[6]->value(), 25);
}

struct NotedCase {
    int commandId;
    EffectSound sound;
    QStringList words;  // one of each line
    int loudest = 100;
};

TEST_F(EffectDialogsTest, SayBeforehandWhereOkOrPreviewDoSomethingElse) {
    const EffectSound stereo{}, mono{.channels = 1}, eightBit{.bits = 8};
    const EffectSound monoEightBit{.channels = 1, .bits = 8};
    const NotedCase cases[] = {
        {kVolume, stereo, {"Peak", "Within full scale"}},
        {kVolume, monoEightBit, {"Peak", "129 % on", "first half", "quiet"}},
        {kPanpot, mono, {"needs a stereo sound"}},
        {kPanpot, stereo, {}},
        {kPanpot, stereo, {"can wrap around"}, 32700},
        {kPanpot, eightBit, {"8-bit sound they wrap"}},
        {kReverb, mono, {"first half"}},
        {kReverb, eightBit, {"8-bit samples wrap"}},
        {kFlanger, stereo, {}},
        {kFlanger, mono, {"Apply changes it", "first half"}},
        {kModulator, stereo, {}},
        {kModulator, stereo, {"can wrap around"}, -32700},
        {kModulator, monoEightBit, {"8-bit sound they wrap"}},
        {kDynamics, stereo, {"can wrap around"}},
        {kDynamics, eightBit, {"0.4 %", "8-bit sound they wrap"}},
        {kEqualizer, stereo, {"OK changes nothing"}},
        {kEqualizer, monoEightBit, {"OK changes nothing", "first half", "quiet"}},
    };
    for (const NotedCase& noted : cases) {
        SCOPED_TRACE(noted.commandId);
        Open(noted.sound);
        Sound().SetSample(0, 1000, noted.loudest);
        const auto* notes = Named<QLabel>(Show(noted.commandId), "headerNotes");
        const QStringList lines = notes->text().split(u'\n', Qt::SkipEmptyParts);
        ASSERT_EQ(lines.size(), noted.words.size());
        EXPECT_EQ(notes->isVisible(), !lines.isEmpty());
        for (qsizetype i = 0; i < lines.size(); ++i)
            EXPECT_TRUE(lines[i].contains(noted.words[i])) << lines[i].toStdString();
    }
}

}  // namespace
}  // namespace sonavel
