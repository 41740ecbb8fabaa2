// The view's dialogs: what is typed comes back as values.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>

#include "support/patience.h"
#include "ui/view_fixture.h"
#include "view/ui/clipboard_contents_dialog.h"
#include "view/ui/go_to_dialog.h"
#include "view/ui/level_dialogs.h"
#include "view/ui/marker_dialog.h"
#include "view/ui/record_dialog.h"
#include "view/ui/user_zoom_dialog.h"

namespace sonavel {
namespace {

class ViewDialogsTest : public ::testing::Test {
  protected:
    ViewDialogsTest() { TestApplication(); }
};

template <class Button>
Button* ButtonNamed(QWidget& dialog, const char* text) {
    for (Button* button : dialog.findChildren<Button*>())
        if (button->text() == QLatin1String(text)) return button;
    return nullptr;
}

QPushButton* OkOf(QWidget& dialog) {
    return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
}

// The widget whose label has this text.
template <class Field>
Field* FieldOf(QWidget& dialog, const char* label) {
    for (QLabel* candidate : dialog.findChildren<QLabel*>())
        if (candidate->text() == QLatin1String(label))
            return qobject_cast<Field*>(candidate->buddy());
    return nullptr;
}

TEST_F(ViewDialogsTest, UserZoomTakesOnlyWhatItsTypeCanUse) {
    UserZoom initial;
    initial.levelPercent = 50;
    initial.startSample = 10;
    initial.endSample = 1000;
    initial.endSeconds = 2.5;
    UserZoomDialog dialog(initial);
    EXPECT_EQ(dialog.windowTitle(), "User Defined Zoom");
    auto* level = FieldOf<QComboBox>(dialog, "Zoom &Level(%)");
    EXPECT_EQ(level->currentText(), "50.000%");
    level->setEditText("150.5% of it");
    EXPECT_DOUBLE_EQ(dialog.Choice().levelPercent, 150.5);
    level->setEditText("nothing");
    EXPECT_FALSE(OkOf(dialog)->isEnabled());

    ButtonNamed<QRadioButton>(dialog, "&Sample")->click();
    EXPECT_TRUE(OkOf(dialog)->isEnabled());
    EXPECT_FALSE(level->isEnabled());
    FieldOf<QSpinBox>(dialog, "Start S&ample")->setValue(1000);
    EXPECT_FALSE(OkOf(dialog)->isEnabled());
    FieldOf<QSpinBox>(dialog, "&End Sample")->setValue(1001);
    EXPECT_TRUE(OkOf(dialog)->isEnabled());
    EXPECT_EQ(dialog.Choice().type, UserZoom::Type::kSample);
    EXPECT_EQ(dialog.Choice().endSample, 1001);

    ButtonNamed<QRadioButton>(dialog, "&Time")->click();
    FieldOf<QDoubleSpinBox>(dialog, "Sta&rt Time(Sec)")->setValue(1.25);
    EXPECT_EQ(dialog.Choice().type, UserZoom::Type::kTime);
    EXPECT_DOUBLE_EQ(dialog.Choice().startSeconds, 1.25);
    EXPECT_DOUBLE_EQ(dialog.Choice().endSeconds, 2.5);
}

TEST_F(ViewDialogsTest, APercentageIsTypedAndTakenByOneEnter) {
    UserZoom initial;
    initial.levelPercent = initial.timePercent = 50;
    // "1" is also how entries of the list begin, and "Tab" leads to the time.
    for (const char* typed : {"1", "75", "200%"}) {
        SCOPED_TRACE(typed);
        UserZoomDialog dialog(initial);
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        ASSERT_TRUE(qobject_cast<QComboBox*>(QApplication::focusWidget()));
        QTest::keyClicks(QApplication::focusWidget(), typed);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        ASSERT_TRUE(qobject_cast<QComboBox*>(QApplication::focusWidget()));
        QTest::keyClicks(QApplication::focusWidget(), "80");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_DOUBLE_EQ(dialog.Choice().levelPercent, QString(typed).remove('%').toDouble());
        EXPECT_DOUBLE_EQ(dialog.Choice().timePercent, 80);
    }
}

TEST_F(ViewDialogsTest, ADialogBeginsInAFieldAndEnterPressesOk) {
    RecordRequest locked;
    locked.documentFormat = NewSoundChoice{44100, 2, 16};
    const auto confirmed = [](FormDialog&& dialog) {
        dialog.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QWidget* field = QApplication::focusWidget();
        if (!field || qobject_cast<QPushButton*>(field)) return false;
        QTest::keyClick(field, Qt::Key_Return);
        return dialog.result() == QDialog::Accepted;
    };
    EXPECT_TRUE(confirmed(CRecordDlg({})));
    EXPECT_TRUE(confirmed(CRecordDlg(locked)));
    EXPECT_TRUE(confirmed(GoToDialog({22050, 441000, 44100})));
    EXPECT_TRUE(confirmed(MixDialog({0, 100}, {})));
    EXPECT_TRUE(confirmed(CrossfadeDialog({0, 100}, {})));
    EXPECT_TRUE(confirmed(PasteReplicateDialog(3)));
    EXPECT_TRUE(confirmed(MarkerDialog({})));
}

TEST_F(ViewDialogsTest, LevelsComeBackByTheirGroup) {
    MixDialog mix({0, 100}, {});
    const auto mixSliders = mix.findChildren<PercentSlider*>();
    ASSERT_EQ(mixSliders.size(), 2);
    mixSliders[0]->findChild<QSlider*>()->setValue(30);
    mixSliders[1]->findChild<QSpinBox*>()->setValue(kHighestMixPercent + 5);
    EXPECT_EQ(mix.Choice().clipboardPercent, 30);
    EXPECT_EQ(mix.Choice().destinationPercent, kHighestMixPercent);

    CrossfadeDialog crossfade({0, 100}, {11, 22, 33, 44});
    const CrossfadeChoice choice = crossfade.Choice();
    EXPECT_EQ(choice.clipboardStartPercent, 11);
    EXPECT_EQ(choice.clipboardEndPercent, 22);
    EXPECT_EQ(choice.destinationStartPercent, 33);
    EXPECT_EQ(choice.destinationEndPercent, 44);
}

TEST_F(ViewDialogsTest, MixingSaysBeforehandThatSumsWrap) {
    const std::pair<unsigned, const char*> cases[] = {{16, "louder than full scale"},
                                                      {8, "beyond 255"}};
    for (const auto& [bits, words] : cases) {
        MixDialog mix({0, 100, bits}, {});
        CrossfadeDialog crossfade({0, 100, bits}, {});
        for (QWidget* dialog : {static_cast<QWidget*>(&mix), static_cast<QWidget*>(&crossfade)})
            EXPECT_TRUE(
                dialog->findChild<QLabel*>(QStringLiteral("wrapNote"))->text().contains(words))
                << dialog->windowTitle().toStdString() << bits;
    }
}

TEST_F(ViewDialogsTest, GoToTellsWhichUnitWasTyped) {
    GoToDialog dialog({22050, 44100 * 10, 44100});
    EXPECT_EQ(dialog.Choice().unit, GoToChoice::Unit::kFrame);
    EXPECT_EQ(dialog.Choice().frame, 22050u);
    auto* seconds = dialog.findChild<QDoubleSpinBox*>();
    auto* frame = dialog.findChild<FrameTimeField*>()->findChild<QSpinBox*>();
    EXPECT_DOUBLE_EQ(seconds->value(), 0.5);
    seconds->setValue(2.5);
    EXPECT_EQ(dialog.Choice().unit, GoToChoice::Unit::kTime);
    EXPECT_DOUBLE_EQ(dialog.Choice().seconds, 2.5);
    EXPECT_EQ(frame->value(), 110250);
    frame->setValue(999999);
    EXPECT_EQ(dialog.Choice().unit, GoToChoice::Unit::kFrame);
    EXPECT_EQ(dialog.Choice().frame, 441000u);
}

class MarkerDialogTest : public ViewDialogsTest {
  protected:
    MarkerDialogTest() {
        request_.markers.Add(1000, "One", 0);
        // "가" in code page 949, as an old file has it.
        request_.markers.Add(2000, "\xB0\xA1", 500);
        request_.frameCount = 44100;
        request_.samplesPerSecond = 44100;
        request_.newPosition = 300;
    }
    static QString Cell(MarkerDialog& dialog, int row, int column) {
        return dialog.findChild<QTreeWidget*>()->topLevelItem(row)->text(column);
    }
    static QSpinBox* Frames(MarkerDialog& dialog, int field) {
        return dialog.findChildren<FrameTimeField*>()[field]->findChild<QSpinBox*>();
    }

    static void WaitForEndOfTyping(QTreeWidget& list) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !list.viewport()->findChild<QLineEdit*>(); },
                                    kPatienceMs));
        QTest::qWait(10);  // what was typed is taken behind that
    }

    MarkerDialogRequest request_;
};

TEST_F(MarkerDialogTest, KeepsTheBytesOfANameThatWasNotTouched) {
    request_.start = MarkerDialogRequest::Start::kEdit;
    request_.markerId = 2;
    MarkerDialog dialog(request_);
    EXPECT_EQ(Cell(dialog, 1, 1), QStringLiteral("가"));
    EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), QStringLiteral("가"));
    Frames(dialog, 0)->setValue(2500);
    dialog.accept();
    ASSERT_EQ(dialog.Edits().size(), 1u);
    EXPECT_EQ(dialog.Edits()[0].kind, MarkerEdit::Kind::kSet);
    EXPECT_EQ(dialog.Edits()[0].id, 2u);
    EXPECT_EQ(dialog.Edits()[0].position, 2500u);
    EXPECT_EQ(dialog.Edits()[0].length, 500u);
    EXPECT_EQ(dialog.Edits()[0].name, "");
}

TEST_F(MarkerDialogTest, AddsEditsAndDeletesInOrder) {
    MarkerDialog dialog(request_);
    auto* label = dialog.findChild<QLineEdit*>();
    Frames(dialog, 0)->setValue(4000);
    QTest::keyClicks(label, "New");
    ButtonNamed<QPushButton>(dialog, "&Add")->click();
    EXPECT_EQ(Cell(dialog, 2, 0), "3");
    EXPECT_EQ(Cell(dialog, 2, 1), "New");
    Frames(dialog, 1)->setValue(44);
    ButtonNamed<QPushButton>(dialog, "&Edit")->click();
    EXPECT_TRUE(Cell(dialog, 2, 3).startsWith("44 "));
    auto* list = dialog.findChild<QTreeWidget*>();
    list->setCurrentItem(list->topLevelItem(0));
    ButtonNamed<QPushButton>(dialog, "&Delete")->click();
    EXPECT_EQ(list->topLevelItemCount(), 2);
    dialog.accept();

    const std::vector<MarkerEdit>& edits = dialog.Edits();
    ASSERT_EQ(edits.size(), 3u);
    EXPECT_EQ(edits[0].kind, MarkerEdit::Kind::kAdd);
    EXPECT_EQ(edits[0].name, "New");
    EXPECT_EQ(edits[0].position, 4000u);
    EXPECT_EQ(edits[1].kind, MarkerEdit::Kind::kSet);
    EXPECT_EQ(edits[1].id, 3u);
    EXPECT_EQ(edits[1].length, 44u);
    EXPECT_EQ(edits[2].kind, MarkerEdit::Kind::kDelete);
    EXPECT_EQ(edits[2].id, 1u);
}

TEST_F(MarkerDialogTest, NamesAndTimesAreTypedIntoTheList) {
    MarkerDialog dialog(request_);
    dialog.show();
    auto* list = dialog.findChild<QTreeWidget*>();
    const auto type = [&](int row, int column, const char* text) {
        list->setCurrentItem(list->topLevelItem(row));
        list->editItem(list->topLevelItem(row), column);
        auto* field = list->viewport()->findChild<QLineEdit*>();
        ASSERT_NE(field, nullptr);
        field->setText(QString::fromUtf8(text));
        QTest::keyClick(field, Qt::Key_Return);
        WaitForEndOfTyping(*list);
    };
    type(0, 1, "후렴");
    type(0, 2, "0:00.5");
    type(1, 3, "441#");
    EXPECT_TRUE(dialog.isVisible()) << "Enter ends the typing alone";
    for (const char* wrong : {"word", "2", "-1"}) {
        type(1, 2, wrong);
        EXPECT_TRUE(dialog.findChild<FieldHint*>()->isVisible()) << wrong;
    }
    ASSERT_EQ(dialog.Edits().size(), 3u);
    EXPECT_EQ(dialog.Edits()[0].name, "후렴");
    EXPECT_EQ(dialog.Edits()[0].position, 1000u);
    EXPECT_EQ(dialog.Edits()[1].position, 22050u);
    EXPECT_EQ(dialog.Edits()[1].name, "") << "as it is";
    EXPECT_EQ(Cell(dialog, 1, 1), QStringLiteral("후렴")) << "sorted anew";
    EXPECT_EQ(dialog.Edits()[2].length, 441u);
}

TEST_F(MarkerDialogTest, TheListIsChangedByKeysAlone) {
    MarkerDialog dialog(request_);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    auto* list = dialog.findChild<QTreeWidget*>();
    list->setFocus();
    list->setCurrentItem(list->topLevelItem(0));
    QTest::keyClick(list, Qt::Key_F2);
    auto* field = list->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, "New");
    QTest::keyClick(field, Qt::Key_Return);
    WaitForEndOfTyping(*list);
    EXPECT_EQ(Cell(dialog, 0, 1), "New");
    list->setCurrentItem(list->topLevelItem(1));
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(list->topLevelItemCount(), 1);
}

TEST_F(MarkerDialogTest, TheListIsInTheOrderOfPlaces) {
    request_.markers.Add(1500, "Between", 0);
    MarkerDialog dialog(request_);
    EXPECT_EQ(Cell(dialog, 1, 1), "Between");
    Frames(dialog, 0)->setValue(0);
    ButtonNamed<QPushButton>(dialog, "&Add")->click();
    EXPECT_EQ(Cell(dialog, 0, 1), "Marker 4");
    EXPECT_EQ(dialog.Edits().size(), 1u);
}

TEST_F(MarkerDialogTest, OkAloneAddsTheProposedMarkerAndLeavesAListAlone) {
    MarkerDialog list(request_);
    list.accept();
    EXPECT_TRUE(list.Edits().empty());

    request_.start = MarkerDialogRequest::Start::kAdd;
    MarkerDialog add(request_);
    add.accept();
    ASSERT_EQ(add.Edits().size(), 1u);
    EXPECT_EQ(add.Edits()[0].kind, MarkerEdit::Kind::kAdd);
    EXPECT_EQ(add.Edits()[0].position, 300u);
}

TEST_F(ViewDialogsTest, RecordLocksTheFormatOfTheDocument) {
    RecordRequest request;
    request.documentFormat = NewSoundChoice{96000, 2, 16};
    CRecordDlg dialog(request);
    auto* rate = dialog.findChild<QComboBox*>();
    auto* mono = ButtonNamed<QRadioButton>(dialog, "&Mono Channel");
    auto* newWindow = ButtonNamed<QCheckBox>(dialog, "&New Window");
    EXPECT_FALSE(rate->isEnabled());
    EXPECT_FALSE(mono->isEnabled());
    EXPECT_TRUE(ButtonNamed<QRadioButton>(dialog, "&Stereo Channel")->isEnabled());
    EXPECT_EQ(dialog.Choice().target, RecordChoice::Target::kActiveDocument);
    EXPECT_EQ(dialog.Choice().format.samplesPerSecond, 96000u);

    newWindow->click();
    EXPECT_TRUE(rate->isEnabled() && mono->isEnabled());
    rate->setCurrentText("8000");
    mono->click();
    EXPECT_EQ(dialog.Choice().target, RecordChoice::Target::kNewDocument);
    EXPECT_EQ(dialog.Choice().format.samplesPerSecond, 8000u);
    EXPECT_EQ(dialog.Choice().format.channels, 1u);

    newWindow->click();
    EXPECT_EQ(dialog.Choice().format.samplesPerSecond, 96000u);
    EXPECT_EQ(dialog.Choice().format.channels, 2u);
    EXPECT_FALSE(mono->isEnabled());

    ButtonNamed<QCheckBox>(dialog, "&Waiting")->click();
    EXPECT_FALSE(dialog.findChild<QSpinBox*>()->isEnabled());
    EXPECT_FALSE(dialog.Choice().waiting);
}

TEST_F(ViewDialogsTest, RecordWithoutADocumentMakesANewOne) {
    CRecordDlg dialog({});
    auto* newWindow = ButtonNamed<QCheckBox>(dialog, "&New Window");
    EXPECT_TRUE(newWindow->isChecked());
    EXPECT_FALSE(newWindow->isEnabled());
    const RecordChoice choice = dialog.Choice();
    EXPECT_EQ(choice.target, RecordChoice::Target::kNewDocument);
    EXPECT_EQ(choice.format.samplesPerSecond, 44100u);
    EXPECT_EQ(choice.format.channels, 1u);
    EXPECT_EQ(choice.format.bits, 8u);
    EXPECT_TRUE(choice.waiting);
    EXPECT_EQ(choice.waitingTenths, 1000);
    ButtonNamed<QRadioButton>(dialog, "32-bit &float")->click();
    EXPECT_EQ(dialog.Choice().format.bits, 32u);
}

TEST_F(ViewDialogsTest, ClipboardPreviewEndsWithItsDialog) {
    struct Preview : ClipboardPreview {
        void Play() override { calls += "play "; }
        void Stop() override { calls += "stop "; }
        std::string calls;
    } preview;
    ClipboardContentsDialog dialog({"44,100 Hz, 16-bit, Stereo", 400, 100, 0.5}, preview);
    ButtonNamed<QPushButton>(dialog, "&Preview")->click();
    OkOf(dialog)->click();
    EXPECT_EQ(preview.calls, "play stop ");
}

}  // namespace
}  // namespace sonavel
