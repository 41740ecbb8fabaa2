#include <QAccessible>
#include <QFileDialog>
#include <QMenuBar>
#include <QSet>

#include "app/accessibility.h"
#include "app/command_ids.h"
#include "app/command_palette.h"
#include "app/exchange/editor_scripts.h"
#include "app/exchange/import_dialog.h"
#include "app/exchange/refused_files_box.h"
#include "app/help/manual_window.h"
#include "app/look.h"
#include "app/recovery/left_work_dialog.h"
#include "app_fixture.h"
#include "catalogue/ui/catalogue_window.h"
#include "effects/effect_table.h"
#include "effects/ui/effect_command_target.h"
#include "meter/ui/play_meter.h"
#include "platform/qt/channel_conversion_dialog.h"
#include "spatial/ui/preset_name_dialog.h"
#include "spatial/ui/scene_widget.h"
#include "spatial/ui/shape_dialog.h"
#include "spatial/ui/spatial_commands.h"
#include "ui/focus_walk.h"
#include "view/commands/view_commands.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {
namespace {

// What a person operates; a label or a frame may be silent.
bool IsControl(QAccessible::Role role) {
    static const QSet<int> roles{
        QAccessible::PushButton,     QAccessible::CheckBox, QAccessible::RadioButton,
        QAccessible::Slider,         QAccessible::SpinBox,  QAccessible::ComboBox,
        QAccessible::EditableText,   QAccessible::PageTab,  QAccessible::ButtonMenu,
        QAccessible::Table,          QAccessible::Tree,     QAccessible::List,
        QAccessible::ButtonDropDown, QAccessible::Canvas};
    return roles.contains(role);
}

QString PathOf(QAccessibleInterface* item) {
    QString path;
    for (QObject* object = item->object(); object; object = object->parent())
        path += QStringLiteral(" < ") + QString::fromLatin1(object->metaObject()->className()) +
                u'#' + object->objectName();
    return path;
}

bool IsShown(QAccessibleInterface* item) {
    const auto* widget = qobject_cast<QWidget*>(item->object());
    return !widget || !widget->isHidden();
}

// The line of a combo or spin box speaks by the box's name.
bool IsPartOfAnother(QAccessibleInterface* item) {
    const QAccessible::Role owner = item->parent() ? item->parent()->role() : QAccessible::NoRole;
    return owner == QAccessible::SpinBox || owner == QAccessible::ComboBox;
}

void CollectNameless(QAccessibleInterface* item, QStringList& nameless) {
    if (!item || !item->isValid() || !IsShown(item)) return;
    const QString name = item->text(QAccessible::Name);
    if (IsControl(item->role()) && !IsPartOfAnother(item) &&
        (name.trimmed().isEmpty() || name.contains(u'\t') || name.contains(u'&')))
        nameless
            << QStringLiteral("\"%1\" role %2%3").arg(name).arg(item->role()).arg(PathOf(item));
    for (int i = 0; i < item->childCount(); ++i) CollectNameless(item->child(i), nameless);
}

// Those of a dialog that say nothing of what they do.
QStringList Unexplained(QWidget& dialog) {
    QStringList names;
    for (QWidget* control : dialog.findChildren<QWidget*>()) {
        QAccessibleInterface* item = QAccessible::queryAccessibleInterface(control);
        if (!control->isVisible() || control->focusPolicy() == Qt::NoFocus || !item) continue;
        const bool isPart =
            IsPartOfAnother(item) || qobject_cast<QAbstractSpinBox*>(control->parent());
        if (IsControl(item->role()) && item->role() != QAccessible::PageTab && !isPart &&
            control->toolTip().isEmpty())
            names << item->text(QAccessible::Name) + PathOf(item);
    }
    return names;
}

std::string Nameless(QWidget& window) {
    QStringList nameless;
    CollectNameless(QAccessible::queryAccessibleInterface(&window), nameless);
    return nameless.join(u'\n').toStdString();
}

class AccessibilityTest : public AppFixture {
  protected:
    AccessibilityTest() {
        InstallAccessibility();
        ApplyLook();
    }

    void OpenSoundWithMarkers() {
        ASSERT_TRUE(App().OpenFile(WavFile("spoken.wav", 2)));
        MarkerList markers;
        markers.Add(10, "first & best", 0);
        markers.Add(20, "", 5);
        Active().SetMarkers(markers);
    }
    QStringList unexplained_;
    QStringList complaints_;

    // Of the dialog that the command opens, which is then cancelled.
    std::string NamelessInDialogOf(int command) {
        std::string nameless = "no dialog came";
        QTimer timer;
        timer.callOnTimeout([&] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog) return;
            timer.stop();
            nameless = Nameless(*dialog);
            unexplained_ << Unexplained(*dialog);
            // Within the toolkit's own dialog the order is the toolkit's.
            if (!qobject_cast<QFileDialog*>(dialog)) complaints_ << FocusComplaints(*dialog);
            static_cast<QDialog*>(dialog)->reject();
        });
        timer.start(5);
        Frame().Actions().Refresh();
        Frame().Actions().Action(command)->trigger();
        return nameless;
    }
};

TEST_F(AccessibilityTest, EveryControlOfTheMainFrameHasAName) {
    EXPECT_EQ(Nameless(Frame()), "");
    OpenSoundWithMarkers();
    EXPECT_EQ(Nameless(Frame()), "");
    ManualWindow manual;
    EXPECT_EQ(Nameless(manual), "");
}

TEST_F(AccessibilityTest, EveryControlOfTheDialogsHasAName) {
    OpenSoundWithMarkers();
    Run(view_command::kSelectAll);
    Run(view_command::kCopy);
    for (const Effect& effect : Effects()) {
        // What has nothing to set is done at once.
        if (effect.parameters.empty()) continue;
        EXPECT_EQ(NamelessInDialogOf(effect.commandId), "") << effect.name;
    }
    // The editors with a scene need a display; the desktop tests walk over them.
    for (const int command : {int{app_command::kNew},
                              int{app_command::kRecord},
                              int{app_command::kPreferences},
                              int{app_command::kFileProperties},
                              int{app_command::kExport},
                              int{app_command::kAbout},
                              int{view_command::kGoToCursor},
                              int{view_command::kMarkerAdd},
                              int{view_command::kMarkerEdit},
                              int{view_command::kZoomUser},
                              int{view_command::kFindPauses},
                              int{view_command::kSpectrogramSettings},
                              int{view_command::kClipboardContents},
                              int{app_command::kPalette},
                              int{app_command::kKeys},
                              int{app_command::kExportRegions},
                              int{spatial_command::kPlaceMany},
                              int{spatial_command::kCrosstalk},
                              int{app_command::kSaveAs},
                              int{view_command::kMix},
                              int{view_command::kCrossfadeMix},
                              int{view_command::kPasteReplicate},
                              int{effect_command::kConvert}})
        EXPECT_EQ(NamelessInDialogOf(command), "") << command;
    EXPECT_EQ(unexplained_.join(u'\n').toStdString(), "") << "controls without a tool tip";
    EXPECT_EQ(complaints_.join(u'\n').toStdString(), "") << "of the keyboard";
}

// Shows it, walks through it and closes it.
QStringList ComplaintsOfWindow(QWidget& window) {
    window.show();
    const QStringList complaints = FocusComplaints(window);
    window.close();
    return complaints;
}

TEST_F(AccessibilityTest, TheKeyboardGoesThroughTheOtherWindowsInOrder) {
    ImportQuestion question;
    question.description.channels = 6;
    question.description.rate = 48000;
    question.place = ImportQuestion::Place::kMoreFollow;
    LeftWorkRow row;
    row.name = "a";
    const std::unique_ptr<QWidget> windows[] = {
        std::make_unique<ShapeDialog>(ShapeNumbers{}, nullptr),
        std::make_unique<PresetNameDialog>("Save", "one", nullptr),
        std::make_unique<LeftWorkDialog>(std::vector{row, row}),
        std::make_unique<ImportDialog>(question),
        std::make_unique<ChannelConversionDialog>(ChannelConversion::kMonoToStereo),
        std::make_unique<ScriptOutputDialog>("Done", "frames=1"),
        std::make_unique<RefusedFilesBox>(std::vector<RefusedFile>{{"/a.wav", "24-bit sound"}}),
        std::make_unique<ManualWindow>(),
    };
    QStringList complaints;
    for (const auto& window : windows) complaints << ComplaintsOfWindow(*window);
    OpenSoundWithMarkers();
    Run(app_command::kSampleDatabase);
    auto* catalogue = qobject_cast<CatalogueWindow*>(QApplication::activeWindow());
    ASSERT_TRUE(catalogue);
    complaints << ComplaintsOfWindow(*catalogue);
    EXPECT_EQ(complaints.join(u'\n').toStdString(), "");
}

TEST_F(AccessibilityTest, TheWaveformSpeaksOfItsPlaceAndItsMarkers) {
    OpenSoundWithMarkers();
    auto* widget = Frame().findChild<SoundViewWidget*>();
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
    ASSERT_TRUE(spoken);
    EXPECT_EQ(spoken->text(QAccessible::Name), QStringLiteral("spoken.wav"));
    CSoundView& view = widget->View();
    ASSERT_TRUE(view.SetStatusFormat(StatusFormat::kSample));
    view.State().SetSelection(100, 300);
    EXPECT_TRUE(spoken->text(QAccessible::Value).contains(QStringLiteral("selected 100 - 300")))
        << spoken->text(QAccessible::Value).toStdString();
    const int count = spoken->childCount();
    QAccessibleInterface* last = spoken->child(count - 1);
    ASSERT_TRUE(last);
    EXPECT_EQ(last->text(QAccessible::Value), QStringLiteral("20"));
    EXPECT_EQ(last->parent(), spoken);
    EXPECT_EQ(spoken->indexOfChild(last), count - 1);
    // A marker that is gone says nothing more.
    Active().SetMarkers({});
    EXPECT_EQ(spoken->childCount(), count - 2);
    EXPECT_FALSE(last->isValid());
    EXPECT_EQ(last->text(QAccessible::Name), QString());
}

QAccessibleInterface* ChildNamed(QAccessibleInterface* item, const QString& name) {
    for (int i = 0; item && i < item->childCount(); ++i)
        if (item->child(i) && item->child(i)->text(QAccessible::Name) == name)
            return item->child(i);
    return nullptr;
}

TEST_F(AccessibilityTest, MenuItemsSayTheirKeysApartFromTheirNames) {
    OpenSoundWithMarkers();
    Frame().Actions().Refresh();
    auto* edit = Frame().menuBar()->findChild<QMenu*>(QStringLiteral("Edit"));
    ASSERT_TRUE(edit);
    QAccessibleInterface* menu = QAccessible::queryAccessibleInterface(edit);
    EXPECT_EQ(menu->text(QAccessible::Name), QStringLiteral("Edit"));
    QAccessibleInterface* item = ChildNamed(menu, QStringLiteral("Select All"));
    ASSERT_TRUE(item);
    EXPECT_EQ(item->text(QAccessible::Accelerator), QStringLiteral("Ctrl+A"));
    QAccessibleInterface* plainKey = ChildNamed(menu, QStringLiteral("Snap to Zero Crossings"));
    ASSERT_TRUE(plainKey);
    EXPECT_EQ(plainKey->text(QAccessible::Accelerator), QStringLiteral("Z"));
    EXPECT_EQ(menu->child(menu->indexOfChild(item)), item);
    QAccessibleInterface* special = ChildNamed(menu, QStringLiteral("Paste Special"));
    ASSERT_TRUE(special && special->child(0));
    EXPECT_EQ(special->child(0)->parent(), special);
    // The command comes after the answer.
    CSoundView& view = Frame().findChild<SoundViewWidget*>()->View();
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(view.State().HasSelection());
    QCoreApplication::processEvents();
    EXPECT_TRUE(view.State().HasSelection());
}

TEST_F(AccessibilityTest, AMenuItemThatIsGoneSaysNothingMore) {
    QMenu menu(QStringLiteral("&Names"));
    QAction* action = menu.addAction(QStringLiteral("&One\tX"));
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&menu);
    QAccessibleInterface* item = spoken->child(0);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->text(QAccessible::Name), QStringLiteral("One"));
    delete action;
    EXPECT_FALSE(item->isValid());
    EXPECT_EQ(item->text(QAccessible::Name), QString());
    EXPECT_EQ(spoken->child(0), nullptr);
}

TEST_F(AccessibilityTest, ASliderThatRunsAgainstItsValueTellsTheValue) {
    QSlider slider(Qt::Vertical);
    slider.setRange(0, 300);
    slider.setSingleStep(1);
    slider.setInvertedControls(true);
    slider.setValue(200);
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&slider);
    ASSERT_TRUE(spoken->valueInterface());
    EXPECT_EQ(spoken->valueInterface()->currentValue().toInt(), 100);
    spoken->valueInterface()->setCurrentValue(120);
    EXPECT_EQ(slider.value(), 180);
    spoken->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(spoken->valueInterface()->currentValue().toInt(), 121);
}

TEST_F(AccessibilityTest, TheMeterTellsItsLevelWhenItIsAsked) {
    PlayMeter meter(QStringLiteral("left"));
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&meter);
    EXPECT_EQ(spoken->text(QAccessible::Description), QStringLiteral("-Inf. dB ( 0.00% )"));
    meter.SetLevel({16384, 32768});
    EXPECT_EQ(spoken->text(QAccessible::Description), QStringLiteral("-6.0dB ( 50.00% )"));
    ASSERT_TRUE(spoken->valueInterface());
    EXPECT_DOUBLE_EQ(spoken->valueInterface()->currentValue().toDouble(), 50);
}

TEST_F(AccessibilityTest, TheSceneIsAListOfPointsThatCanBePicked) {
    SceneWidget scene;
    SceneContent content;
    content.points = {{{1, 0, 0}, 7, PointRole::kPlain}, {{0, 2, 0}, 8, PointRole::kStart}};
    scene.SetContent(content);
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&scene);
    ASSERT_GE(spoken->childCount(), 2);
    QAccessibleInterface* first = spoken->child(spoken->childCount() - 2);
    QAccessibleInterface* second = spoken->child(spoken->childCount() - 1);
    EXPECT_EQ(first->text(QAccessible::Name), QStringLiteral("Point 7"));
    EXPECT_EQ(first->text(QAccessible::Description),
              QStringLiteral("right 1.00, front 0.00, up 0.00; azimuth 90°, elevation 0°, "
                             "distance 1.00"));
    EXPECT_EQ(second->text(QAccessible::Name), QStringLiteral("Point 8, start"));
    EXPECT_TRUE(second->state().selected);
    EXPECT_TRUE(spoken->text(QAccessible::Description).contains(QStringLiteral("point 8, start")));
    int picked = -1;
    QObject::connect(&scene, &SceneWidget::PointPicked, [&](int index) { picked = index; });
    second->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(picked, 1);
    scene.SetContent({});
    EXPECT_FALSE(second->isValid());
}

TEST_F(AccessibilityTest, ThePaletteTellsWhichCommandIsChosen) {
    CommandPalette palette({{1, QStringLiteral("Edit > Undo"), QStringLiteral("Ctrl+Z"), {}},
                            {2, QStringLiteral("Edit > Redo"), {}, QStringLiteral("Nothing.")}},
                           nullptr);
    auto* line = palette.findChild<QLineEdit*>();
    line->setText(QStringLiteral("red"));
    EXPECT_EQ(line->accessibleDescription(), QStringLiteral("Edit > Redo, Nothing."));
    line->setText(QStringLiteral("und"));
    EXPECT_EQ(line->accessibleDescription(), QStringLiteral("Edit > Undo, Ctrl+Z"));
}

}  // namespace
}  // namespace sonavel
