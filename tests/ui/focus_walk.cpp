#include "ui/focus_walk.h"

#include <QApplication>
#include <QGroupBox>
#include <QTabWidget>
#include <QTest>
#include <vector>

namespace sonavel {
namespace {

constexpr int kMostStops = 300;
constexpr int kMostTries = 1000;

bool TakesTab(const QWidget& widget) {
    return widget.isVisible() && widget.isEnabled() && !widget.focusProxy() &&
           (widget.focusPolicy() & Qt::TabFocus) != 0;
}

QString NameOf(const QWidget& widget) {
    const QString name =
        widget.accessibleName().isEmpty() ? widget.objectName() : widget.accessibleName();
    const QString text = widget.property("text").toString();
    return QLatin1String(widget.metaObject()->className()) + QStringLiteral(" \"") +
           (name.isEmpty() ? text : name) + u'"';
}

const QGroupBox* GroupOf(const QWidget& widget) {
    for (const QWidget* above = widget.parentWidget(); above; above = above->parentWidget())
        if (const auto* box = qobject_cast<const QGroupBox*>(above)) return box;
    return nullptr;
}

// One stop after the other, until it is where it was before.
class FocusWalk {
  public:
    explicit FocusWalk(QWidget& window) : window_(window) {
        TakeKeyboard();
        PressTab();
        for (QWidget* now = Focused(); now && way_.size() < kMostStops; now = Focused()) {
            if (std::ranges::find(way_, now) != way_.end()) break;
            Stop(*now);
        }
    }

    QStringList Complaints() const {
        QStringList complaints = unseen_;
        for (const QWidget* widget : window_.findChildren<QWidget*>())
            if (TakesTab(*widget) && widget->window() == &window_ &&
                std::ranges::find(way_, widget) == way_.end())
                complaints << QStringLiteral("Tab never comes to ") + NameOf(*widget);
        complaints << Jumps() << Returns();
        return complaints;
    }

  private:
    QWidget* Focused() const { return window_.focusWidget(); }

    void PressTab() const { QTest::keyClick(Focused() ? Focused() : &window_, Qt::Key_Tab); }

    // Again when a window that was shown just before has taken it late.
    void TakeKeyboard() const {
        if (window_.isActiveWindow()) return;
        for (int tries = 0; tries < kMostTries && !window_.isActiveWindow(); ++tries) {
            window_.activateWindow();
            QTest::qWait(1);
        }
        // Coming up without a key, it would not show where the keyboard is.
        window_.setAttribute(Qt::WA_KeyboardFocusChange);
    }

    void Stop(QWidget& now) {
        const QImage with = PictureOf(now);
        way_.push_back(&now);
        PressTab();
        const bool isAlone = Focused() == &now;
        if (isAlone) now.clearFocus();
        if (!with.isNull() && PictureOf(now) == with)
            unseen_ << QStringLiteral("not to be seen: the keyboard on ") + NameOf(now);
        if (isAlone) now.setFocus(Qt::TabFocusReason);
    }

    // None of what the display draws by itself.
    QImage PictureOf(const QWidget& widget) const {
        if (widget.inherits("QOpenGLWidget")) return {};
        TakeKeyboard();
        return window_.grab(PlaceOf(widget)).toImage();
    }

    QRect PlaceOf(const QWidget& widget) const {
        return {widget.mapTo(&window_, QPoint()), widget.size()};
    }

    // Up to the head of the next column is no way back.
    bool GoesBack(const QWidget& last, const QWidget& next) const {
        const QRect from = PlaceOf(last);
        const QRect to = PlaceOf(next);
        const bool isAbove = to.bottom() < from.top() && to.left() <= from.left();
        const bool onOneLine = to.top() <= from.bottom() && from.top() <= to.bottom();
        return isAbove || (onOneLine && to.right() < from.left());
    }

    // One is the way back to the beginning.
    QStringList Jumps() const {
        QStringList jumps;
        for (std::size_t i = 0; i < way_.size(); ++i) {
            const QWidget& next = *way_[(i + 1) % way_.size()];
            if (GoesBack(*way_[i], next))
                jumps << QStringLiteral("back: %1 -> %2").arg(NameOf(*way_[i]), NameOf(next));
        }
        return jumps.size() > 1 ? jumps : QStringList();
    }

    // The walk may have begun within a group, and ends in it then.
    QStringList Returns() const {
        QStringList returns;
        std::vector<const QGroupBox*> left;
        for (std::size_t i = 1; i < way_.size(); ++i) {
            const QGroupBox* group = GroupOf(*way_[i]);
            const QGroupBox* last = GroupOf(*way_[i - 1]);
            if (group == last) continue;
            if (last) left.push_back(last);
            const bool isFirst = group == GroupOf(*way_.front());
            if (group && !isFirst && std::ranges::find(left, group) != left.end())
                returns << QStringLiteral("back into a group: ") + NameOf(*way_[i]);
        }
        return returns;
    }

    QWidget& window_;
    std::vector<QWidget*> way_;
    QStringList unseen_;
};

}  // namespace

QStringList FocusComplaints(QWidget& window) {
    QStringList all;
    auto* tabs = window.findChild<QTabWidget*>();
    for (int page = 0; page < (tabs ? tabs->count() : 1); ++page) {
        if (tabs) tabs->setCurrentIndex(page);
        all << FocusWalk(window).Complaints();
    }
    all.removeDuplicates();
    for (QString& complaint : all) complaint.prepend(window.windowTitle() + QStringLiteral(": "));
    return all;
}

}  // namespace sonavel
