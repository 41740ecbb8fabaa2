// Actions and menus made from command tables: one QAction for each command, shared by every menu,
// bar and context menu that shows it.
#pragma once

#include <QAction>
#include <QMenu>
#include <functional>
#include <map>
#include <span>
#include <unordered_map>
#include <vector>

#include "platform/command_table.h"

namespace sonavel {

// A row of a menu's layout; the texts are string literals.
struct MenuEntry {
    enum class Kind { kCommand, kSeparator, kBeginMenu, kEndMenu };
    Kind kind = Kind::kCommand;
    int commandId = 0;
    const char* title = "";  // of a submenu, with "&" before the access key

    static constexpr MenuEntry Command(int id) { return {Kind::kCommand, id, ""}; }
    static constexpr MenuEntry Separator() { return {Kind::kSeparator, 0, ""}; }
    static constexpr MenuEntry Begin(const char* title) { return {Kind::kBeginMenu, 0, title}; }
    static constexpr MenuEntry End() { return {Kind::kEndMenu, 0, ""}; }
};

// The object that handles a command just now: the active view, its document, the frame, or the
// application. Null when none does.
using CommandRoute = std::function<CommandTarget*(int commandId)>;
// Fails, with the reason, while something holds the command back whatever its target says.
using CommandHold = std::function<Outcome(const CommandInfo& command)>;

class CommandActions : public QObject {
    Q_OBJECT

  public:
    explicit CommandActions(CommandRoute route, QObject* parent = nullptr);

    void SetHold(CommandHold hold) { hold_ = std::move(hold); }
    // Makes the action of a command; a command that has one keeps it.
    QAction* Add(const CommandInfo& info);
    // Null for a command that was never added.
    QAction* Action(int commandId) const;
    const std::unordered_map<int, QAction*>& All() const { return actions_; }

    // Other keys than those of the tables, for these commands alone; written as the tables do.
    void SetKeys(const std::map<int, QString>& changed);
    // Of the table.
    QString OwnKeys(int commandId) const;

    // Takes text, enabled and checked state of every action from the command's target.
    void Refresh();
    // Fails where the command cannot run just now, and says why.
    Outcome Offered(int commandId) const;
    // Runs the command where it is handled just now.
    void Run(int commandId);
    // The command of a key without Ctrl and Alt that is no function key. Such keys are not
    // shortcuts of the whole window, so that typing elsewhere stays typing; the widget with the
    // focus asks here. A row without a menu text comes before the rows that only show the key. 0
    // when there is none.
    int CommandOfPlainKey(const QKeySequence& key) const;
    // Appends the entries; commands without an action are left out. The states are refreshed each
    // time the menu opens.
    void FillMenu(QMenu& menu, std::span<const MenuEntry> entries);

  Q_SIGNALS:
    // After a command ran, or was refused.
    void CommandRun(int commandId, const Outcome& outcome);
    // The pointer is over the command in a menu or on a bar.
    void PromptChanged(const QString& prompt);

  private:
    void AddKeys(const CommandInfo& info, const QString& keys);
    void ShowText(QAction& action, int id, const QString& menuText) const;
    // Null for a command that was never added.
    const CommandInfo* InfoOf(int commandId) const;
    Outcome Held(int commandId) const;

    CommandRoute route_;
    CommandHold hold_;
    std::vector<CommandInfo> infos_;  // in the order of their adding
    std::map<QKeySequence, int> plainKeys_;
    std::unordered_map<int, QString> keyTexts_;  // of commands with nothing but plain keys
    std::unordered_map<int, QAction*> actions_;
};

// "Ctrl+Home; Home" as key sequences.
QList<QKeySequence> ShortcutsFromText(const char* text);

}  // namespace sonavel
