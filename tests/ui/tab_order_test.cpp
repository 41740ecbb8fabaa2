// Tab leads through fields of several parts, and out of them again.
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "platform/qt/tab_order.h"
#include "spatial/ui/system_point_chooser.h"
#include "support/qt_test_application.h"

namespace sonavel {
namespace {

QString NameOfStop(const QWidget& widget) {
    const QString text = widget.property("text").toString();
    return widget.accessibleName().isEmpty() ? text : widget.accessibleName();
}

// Where the keyboard is after each Tab, up to the way back.
QStringList WayOf(QDialog& dialog, Qt::Key key) {
    constexpr int kMostStops = 20;
    QStringList way;
    while (way.size() < kMostStops) {
        QWidget* now = dialog.focusWidget();
        if (!way.isEmpty() && NameOfStop(*now) == way.front()) break;
        way << NameOfStop(*now);
        QTest::keyClick(now, key);
    }
    return way;
}

TEST(TabOrderTest, TheChoiceOfPointsIsWalkedThroughAndLeft) {
    TestApplication();
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    // Made in another order than laid out.
    auto* after = new QPushButton("after", &dialog);
    auto* chooser = new SystemPointChooser(SourceMotion::kMoving, &dialog);
    auto* before = new QPushButton("before", &dialog);
    for (QWidget* widget : {static_cast<QWidget*>(before), static_cast<QWidget*>(chooser),
                            static_cast<QWidget*>(after)})
        layout->addWidget(widget);
    TabAsLaidOut(dialog);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    before->setFocus();
    EXPECT_EQ(WayOf(dialog, Qt::Key_Tab).join(", ").toStdString(),
              "before, St&art:, Start, End, Points, after");
    before->setFocus();
    EXPECT_EQ(WayOf(dialog, Qt::Key_Backtab).join(", ").toStdString(),
              "before, after, Points, End, Start, St&art:");
    chooser->setFocus();
    EXPECT_EQ(NameOfStop(*dialog.focusWidget()), "Start");
}

}  // namespace
}  // namespace sonavel
