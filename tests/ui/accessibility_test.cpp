#include <QAccessible>
#include <QSet>

#include "app/command_ids.h"
#include "app/help/manual_window.h"
#include "app_fixture.h"
#include "effects/ui/effect_command_target.h"
#include "spatial/ui/spatial_commands.h"
#include "view/commands/view_commands.h"
#include "view/ui/sound_view_accessible.h"

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
    AccessibilityTest() { SoundViewAccessible::Install(); }

    void OpenSoundWithMarkers() {
        ASSERT_TRUE(App().OpenFile(WavFile("spoken.wav")));
        MarkerList markers;
        markers.Add(10, "first & best", 0);
        markers.Add(20, "", 5);
        Active().SetMarkers(markers);
    }
    QStringList unexplained_;

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
    for (const Effect& effect : Effects()) {
        // The sound is mono; and what has nothing to set is done at once.
        if (effect.traits.monoRefusal || effect.parameters.empty()) continue;
        EXPECT_EQ(NamelessInDialogOf(effect.commandId), "") << effect.name;
    }
    for (const int command :
         {int{app_command::kNew}, int{app_command::kRecord}, int{app_command::kPreferences},
          int{app_command::kFileProperties}, int{app_command::kExport}, int{app_command::kAbout},
          int{view_command::kGoToCursor}, int{view_command::kMarkerAdd},
          int{view_command::kMarkerEdit}, int{view_command::kZoomUser},
          int{view_command::kFindPauses}, int{app_command::kKeys}, int{app_command::kExportRegions},
          int{spatial_command::kPlaceMany}, int{effect_command::kConvert}})
        EXPECT_EQ(NamelessInDialogOf(command), "") << command;
    EXPECT_EQ(unexplained_.join(u'\n').toStdString(), "") << "controls without a tool tip";
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

}  // namespace
}  // namespace sonavel
