#include "app/welcome_page.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>

#include "app/command_ids.h"
#include "platform/qt/file_names.h"

namespace sonavel {
namespace {

constexpr qsizetype kMostRecent = 5;
constexpr int kNameWidth = 420;
constexpr double kTitleScale = 1.6;

constexpr int kWelcomeCommands[] = {app_command::kOpen, app_command::kRecord, app_command::kNew,
                                    app_command::kManual};

QString NameOfButton(const QAction& action) {
    QString text = action.text().section(u'\t', 0, 0);
    return text.remove(QStringLiteral("...")).trimmed();
}

}  // namespace

WelcomePage::WelcomePage(ChildWindows& area, const CommandActions& actions, RecentFiles& recent)
    : QFrame(area.viewport()), area_(area), actions_(actions), recent_(recent) {
    setObjectName(QStringLiteral("Welcome"));
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    setAutoFillBackground(true);
    area.viewport()->installEventFilter(this);
    hide();
}

void WelcomePage::Follow() {
    const bool wanted = !area_.HasAny();
    if (wanted && isHidden()) Fill();
    setVisible(wanted);
}

// Anew each time, since the files used last have changed since.
void WelcomePage::Fill() {
    qDeleteAll(findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
    delete layout();
    lines_ = new QVBoxLayout(this);
    lines_->setContentsMargins(28, 22, 28, 22);
    auto* title = new QLabel(tr("Open a sound, or record one"), this);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * kTitleScale);
    title->setFont(large);
    lines_->addWidget(title);
    AddCommands();
    AddLine(tr("Or drop sounds here."));
    AddRecent();
    Centre();
}

void WelcomePage::AddLine(const QString& text) {
    lines_->addSpacing(8);
    lines_->addWidget(new QLabel(text, this));
}

void WelcomePage::AddCommands() {
    for (const int id : kWelcomeCommands) {
        QAction* action = actions_.Action(id);
        if (!action) continue;
        auto* button = new QPushButton(NameOfButton(*action), this);
        const QString key = action->shortcut().toString(QKeySequence::NativeText);
        button->setToolTip(action->statusTip() + (key.isEmpty() ? key : " (" + key + ')'));
        button->setAccessibleDescription(action->statusTip());
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        lines_->addWidget(button);
    }
}

void WelcomePage::AddRecent() {
    const QStringList paths = recent_.Paths().mid(0, kMostRecent);
    if (paths.isEmpty()) return;
    AddLine(tr("Used last:"));
    for (const QString& path : paths) {
        const QString name = ShownFileText(FileText(FilePath(path).filename()));
        auto* button = new QPushButton(this);
        QString shown = fontMetrics().elidedText(name, Qt::ElideMiddle, kNameWidth);
        button->setText(shown.replace(u'&', QStringLiteral("&&")));
        button->setAccessibleName(name);
        button->setToolTip(ShownFileText(path));
        button->setFlat(true);
        // The page is gone when the sound is there.
        connect(
            button, &QPushButton::clicked, &recent_, [this, path] { Q_EMIT recent_.Chosen(path); },
            Qt::QueuedConnection);
        lines_->addWidget(button);
    }
}

void WelcomePage::Centre() {
    resize(sizeHint().boundedTo(area_.viewport()->size()));
    const QSize room = area_.viewport()->size() - size();
    move(room.width() / 2, room.height() / 2);
}

bool WelcomePage::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Resize && lines_) Centre();
    return QFrame::eventFilter(object, event);
}

}  // namespace sonavel
