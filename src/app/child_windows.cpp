#include "app/child_windows.h"

#include <QMenu>
#include <QPointer>
#include <QTabBar>

namespace sonavel {

namespace {

// New windows come a title bar below and beside the one before, then from the corner again.
constexpr int kCascadeStep = 30;
constexpr int kCascadeSteps = 5;

}  // namespace

ChildWindows::ChildWindows(QWidget* parent) : QMdiArea(parent) {
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setBackground(parent->palette().brush(QPalette::Mid));
    setTabsClosable(true);
    setTabsMovable(true);
    setDocumentMode(true);
    connect(this, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* window) {
        auto* frame = qobject_cast<CChildFrame*>(window);
        if (frame && removing_ == 0) Q_EMIT Activated(*frame);
    });
}

CChildFrame* ChildWindows::FrameOf(const OpenSound& sound) const {
    for (QMdiSubWindow* window : subWindowList()) {
        auto* frame = qobject_cast<CChildFrame*>(window);
        if (frame && &frame->Sound() == &sound) return frame;
    }
    return nullptr;
}

void ChildWindows::Add(CChildFrame& frame) {
    frame.resize(size() * 4 / 5);
    const auto others = static_cast<int>(subWindowList().size()) - 1;
    const int step = kCascadeStep * (others % kCascadeSteps);
    frame.move(step, step);
    frame.show();
}

void ChildWindows::Remove(CChildFrame& frame) {
    ++removing_;
    frame.LetGo();
    removeSubWindow(&frame);
    --removing_;
    // Taking a window away restores the one behind it, which has to fill the page of its tab.
    if (ShowsTabs() && activeSubWindow()) activeSubWindow()->showMaximized();
    frame.deleteLater();
}

void ChildWindows::Choose(CChildFrame& frame) {
    if (frame.isMinimized()) frame.showNormal();
    setActiveSubWindow(&frame);
}

void ChildWindows::RepaintAll() {
    for (QMdiSubWindow* window : subWindowList())
        for (QWidget* part : window->findChildren<QWidget*>()) part->update();
}

void ChildWindows::Tile(Tiling tiling) {
    QList<QMdiSubWindow*> windows = subWindowList();
    windows.removeIf([](const QMdiSubWindow* window) { return window->isMinimized(); });
    const int width = viewport()->width();
    const int height = viewport()->height();
    const auto count = static_cast<int>(windows.size());
    const auto show = [&](int i, int start, int end) {
        if (tiling == Tiling::kRows)
            windows[i]->setGeometry(0, start, width, end - start);
        else
            windows[i]->setGeometry(start, 0, end - start, height);
    };
    const int extent = tiling == Tiling::kRows ? height : width;
    for (int i = 0; i < count; ++i) {
        windows[i]->showNormal();
        show(i, extent * i / count, extent * (i + 1) / count);
    }
}

void ChildWindows::SwitchTabs() {
    setViewMode(ShowsTabs() ? SubWindowView : TabbedView);
    if (auto* tabs = findChild<QTabBar*>()) tabs->setExpanding(false);
}

void ChildWindows::FillMenu(QMenu& menu) {
    const QList<QMdiSubWindow*> windows = subWindowList();
    for (qsizetype i = 0; i < windows.size(); ++i) {
        QString title = windows[i]->windowTitle();
        title.replace(QStringLiteral("[*]"), windows[i]->isWindowModified() ? "*" : "");
        title.replace(u'&', QStringLiteral("&&"));
        const QString key = i < 9 ? QStringLiteral("&%1  ").arg(i + 1) : QString();
        QAction* action = menu.addAction(key + title);
        action->setCheckable(true);
        action->setChecked(windows[i] == activeSubWindow());
        connect(action, &QAction::triggered, this,
                [this, window = QPointer(windows[i])] { setActiveSubWindow(window); });
    }
}

}  // namespace sonavel
