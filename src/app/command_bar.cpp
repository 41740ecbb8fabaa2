#include "app/command_bar.h"

#include <QFontDatabase>

#include "app/command_ids.h"
#include "spatial/ui/spatial_commands.h"
#include "view/commands/view_commands.h"

namespace sonavel {

namespace {

constexpr int kIconPixels = 24;

constexpr int kFileBar[] = {
    app_command::kNew,   app_command::kOpen,  app_command::kSave,   app_command::kSaveAll, kBarGap,
    view_command::kCut,  view_command::kCopy, view_command::kPaste, view_command::kDelete, kBarGap,
    view_command::kUndo, view_command::kRedo,
};

constexpr int kZoomBar[] = {
    view_command::kZoomTimeIn,    view_command::kZoomTimeOut,
    view_command::kZoomTimeFull,  kBarGap,
    view_command::kZoomLevelIn,   view_command::kZoomLevelOut,
    view_command::kZoomLevelFull, kBarGap,
    view_command::kZoomSelection, view_command::kZoomUser,
    view_command::kZoomDefault,
};

constexpr int kTransportBar[] = {
    view_command::kStart,     view_command::kRewind, view_command::kPlay, view_command::kPlayLooped,
    view_command::kPlayToEnd, view_command::kPause,  view_command::kStop, app_command::kRecord,
    view_command::kForward,   view_command::kEnd,
};

constexpr int kSpatialBar[] = {
    spatial_command::kSystemPositional,
    spatial_command::kUserPositional,
    spatial_command::kSystemMoving,
    spatial_command::kUserMoving,
};

// Behind a tab stands the key of a command that has no shortcut of the window.
QString ButtonNameOf(const QAction& action) {
    QString text = action.text().section(u'\t', 0, 0);
    return text.remove(u'&').remove(QStringLiteral("...")).remove(u'…');
}

QString ToolTip(const QAction& action) {
    QString text = ButtonNameOf(action);
    QString key = action.text().section(u'\t', 1);
    if (key.isEmpty()) key = action.shortcut().toString(QKeySequence::NativeText);
    if (!key.isEmpty()) text = QStringLiteral("%1 (%2)").arg(text, key);
    // Two commands of one name, such as those of both axes, differ in what they do.
    return QStringLiteral("%1: %2").arg(text, action.statusTip());
}

}  // namespace

CommandBar::CommandBar(const QString& name, const CommandActions& actions,
                       std::span<const int> commandIds, QWidget* parent)
    : QToolBar(name, parent) {
    setObjectName(QString(name).remove(u' '));
    setIconSize(QSize(kIconPixels, kIconPixels));
    for (const int id : commandIds) {
        QAction* action = id == kBarGap ? nullptr : actions.Action(id);
        if (id == kBarGap) addSeparator();
        if (!action) continue;
        action->setToolTip(ToolTip(*action));
        addAction(action);
        // The action's text holds its key behind a tab.
        widgetForAction(action)->setAccessibleName(ButtonNameOf(*action));
    }
}

TransportBar::TransportBar(const CommandActions& actions, QWidget* parent)
    : CommandBar(tr("Remocon"), actions, TransportBarCommands(), parent),
      readOut_(new QLabel(this)) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(QWidget::font().pointSizeF() * 1.5);
    readOut_->setObjectName(QStringLiteral("readOut"));
    readOut_->setFont(font);
    readOut_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    readOut_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    readOut_->setMargin(2);
    readOut_->setMinimumWidth(
        QFontMetrics(font).horizontalAdvance(QStringLiteral(" 00:00:00.000 ")) + 8);
    readOut_->setToolTip(tr("Position"));
    addSeparator();
    addWidget(readOut_);
    ShowTime({});
}

void TransportBar::ShowTime(const QString& text) {
    readOut_->setText(text.isEmpty() ? QStringLiteral("--:--:--.---") : text);
}

ZoomBar::ZoomBar(const CommandActions& actions, QWidget* parent)
    : CommandBar(tr("Zoom"), actions, ZoomBarCommands(), parent), ratio_(new QLabel(this)) {
    ratio_->setObjectName(QStringLiteral("ratio"));
    ratio_->setAlignment(Qt::AlignCenter);
    ratio_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    ratio_->setMargin(2);
    ratio_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral(" 1 : 888888 ")));
    ratio_->setToolTip(tr("Time zoom, in samples a pixel"));
    addSeparator();
    addWidget(ratio_);
}

void ZoomBar::ShowRatio(const QString& text) {
    ratio_->setText(text);
}

std::span<const int> FileBarCommands() {
    return kFileBar;
}
std::span<const int> ZoomBarCommands() {
    return kZoomBar;
}
std::span<const int> SpatialBarCommands() {
    return kSpatialBar;
}
std::span<const int> TransportBarCommands() {
    return kTransportBar;
}

}  // namespace sonavel
