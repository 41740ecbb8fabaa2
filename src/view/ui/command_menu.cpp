#include "view/ui/command_menu.h"

#include <QStringList>
#include <algorithm>
#include <vector>

namespace sonavel {

namespace {

// What the status bar says of the command while nothing holds it back.
constexpr const char* kPromptProperty = "prompt";

bool IsPlainKey(const QKeySequence& sequence) {
    if (sequence.isEmpty()) return false;
    const QKeyCombination key = sequence[0];
    const bool functionKey = key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F35;
    return !functionKey &&
           !(key.keyboardModifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

// A menu text may carry its key behind a tab, or behind a backspace for right alignment; the action
// shows its own shortcut there.
QString WithoutKeyText(const QString& text) {
    const auto end =
        std::find_if(text.begin(), text.end(), [](QChar c) { return c == u'\t' || c == u'\b'; });
    return text.left(end - text.begin());
}

}  // namespace

QList<QKeySequence> ShortcutsFromText(const char* text) {
    QList<QKeySequence> result;
    for (const QString& part : QString::fromUtf8(text).split(u';', Qt::SkipEmptyParts))
        result << QKeySequence::fromString(part.trimmed(), QKeySequence::PortableText);
    return result;
}

CommandActions::CommandActions(CommandRoute route, QObject* parent)
    : QObject(parent), route_(std::move(route)) {}

QAction* CommandActions::Add(const CommandInfo& info) {
    QAction*& action = actions_[info.id];
    if (action) return action;
    action = new QAction(this);
    infos_.push_back(info);
    AddKeys(info, QString::fromUtf8(info.shortcut));
    ShowText(*action, info.id, QString::fromUtf8(info.menuText));
    action->setStatusTip(QString::fromUtf8(info.prompt));
    action->setProperty(kPromptProperty, action->statusTip());
    action->setMenuRole(QAction::NoRole);
    connect(action, &QAction::triggered, this, [this, id = info.id] { Run(id); });
    connect(action, &QAction::hovered, this,
            [this, action = action] { Q_EMIT PromptChanged(action->statusTip()); });
    return action;
}

QAction* CommandActions::Action(int commandId) const {
    const auto found = actions_.find(commandId);
    return found == actions_.end() ? nullptr : found->second;
}

void CommandActions::Refresh() {
    for (auto& [id, action] : actions_) {
        CommandTarget* target = route_(id);
        const CommandState state = target ? target->StateOfCommand(id) : CommandState{false, false};
        if (target) ShowText(*action, id, QString::fromStdString(target->MenuTextOfCommand(id)));
        const Outcome held = Held(id);
        action->setEnabled(state.enabled && held);
        action->setStatusTip(held ? action->property(kPromptProperty).toString()
                                  : QString::fromStdString(held.Reason()));
        if (state.checked) action->setCheckable(true);
        action->setChecked(state.checked);
    }
}

void CommandActions::SetKeys(const std::map<int, QString>& changed) {
    plainKeys_.clear();
    keyTexts_.clear();
    for (const CommandInfo& info : infos_) {
        const auto other = changed.find(info.id);
        AddKeys(info, other == changed.end() ? QString::fromUtf8(info.shortcut) : other->second);
    }
    Refresh();
}

QString CommandActions::OwnKeys(int commandId) const {
    const CommandInfo* info = InfoOf(commandId);
    return info ? QString::fromUtf8(info->shortcut) : QString();
}

const CommandInfo* CommandActions::InfoOf(int commandId) const {
    const auto info = std::ranges::find(infos_, commandId, &CommandInfo::id);
    return info == infos_.end() ? nullptr : &*info;
}

Outcome CommandActions::Held(int commandId) const {
    const CommandInfo* info = InfoOf(commandId);
    return hold_ && info ? hold_(*info) : Done();
}

void CommandActions::AddKeys(const CommandInfo& info, const QString& keys) {
    const bool keyAlone = *info.menuText == '\0';
    const QList<QKeySequence> all = ShortcutsFromText(keys.toUtf8().constData());
    QList<QKeySequence> ofWindow;
    for (const QKeySequence& key : all) {
        if (!IsPlainKey(key)) {
            ofWindow << key;
            continue;
        }
        if (keyAlone) plainKeys_[key] = info.id;
        plainKeys_.try_emplace(key, info.id);
    }
    actions_[info.id]->setShortcuts(ofWindow);
    // As a mere text the key is shown beside the menu text, and works only where the widget asks
    // for it; a shortcut would also work behind an open menu.
    if (ofWindow.isEmpty() && !all.isEmpty())
        keyTexts_[info.id] = u'\t' + all.front().toString(QKeySequence::NativeText);
}

void CommandActions::ShowText(QAction& action, int id, const QString& menuText) const {
    const auto keyText = keyTexts_.find(id);
    action.setText(WithoutKeyText(menuText) +
                   (keyText == keyTexts_.end() ? QString() : keyText->second));
}

int CommandActions::CommandOfPlainKey(const QKeySequence& key) const {
    const auto found = plainKeys_.find(key);
    return found == plainKeys_.end() ? 0 : found->second;
}

void CommandActions::FillMenu(QMenu& menu, std::span<const MenuEntry> entries) {
    connect(&menu, &QMenu::aboutToShow, this, &CommandActions::Refresh);
    std::vector<QMenu*> open{&menu};
    for (const MenuEntry& entry : entries) {
        switch (entry.kind) {
            case MenuEntry::Kind::kCommand:
                if (QAction* action = Action(entry.commandId)) open.back()->addAction(action);
                break;
            case MenuEntry::Kind::kSeparator:
                open.back()->addSeparator();
                break;
            case MenuEntry::Kind::kBeginMenu:
                open.push_back(open.back()->addMenu(QString::fromUtf8(entry.title)));
                break;
            case MenuEntry::Kind::kEndMenu:
                if (open.size() > 1) open.pop_back();
                break;
        }
    }
}

Outcome CommandActions::Offered(int commandId) const {
    if (Outcome held = Held(commandId); !held) return held;
    const CommandTarget* target = route_(commandId);
    return target ? target->Offered(commandId) : Failed("No sound is open.");
}

void CommandActions::Run(int commandId) {
    CommandTarget* target = route_(commandId);
    const Outcome held = Held(commandId);
    const Outcome outcome = !held    ? held
                            : target ? target->RunCommand(commandId)
                                     : Failed(failure::kNotOffered);
    Refresh();
    Q_EMIT CommandRun(commandId, outcome);
}

}  // namespace sonavel
