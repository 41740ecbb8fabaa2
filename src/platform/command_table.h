// Commands as rows of a table. Each class that handles commands has one table; menus, tool bars,
// context menus, shortcuts and scripts are made from the tables.
#pragma once

#include <span>
#include <string>

namespace sonavel {

struct CommandState {
    bool enabled = true;
    bool checked = false;
};

// What a front end needs to know of a command; texts are string literals of the table.
struct CommandInfo {
    int id;
    const char* name;      // script name, "" when scripts have another form of it
    const char* menuText;  // with "&" before the access key
    const char* shortcut;  // "Ctrl+Home", several separated by "; ", or ""
    const char* prompt;    // status-bar text
};

template <class Target>
struct Command {
    CommandInfo info;
    // False when the command was refused, cancelled or failed; the target's last error says why.
    bool (*run)(Target&);
    // Null: always enabled, never checked.
    CommandState (*state)(const Target&) = nullptr;
    // Null: the menu text of `info`, else a text that depends on the target.
    std::string (*menuText)(const Target&) = nullptr;
};

// The face that a command-handling object shows to menus and scripts. Ids that the object does not
// handle are passed by.
class CommandTarget {
  public:
    virtual ~CommandTarget() = default;

    virtual bool HandlesCommand(int id) const = 0;
    virtual CommandState StateOfCommand(int id) const = 0;
    virtual std::string MenuTextOfCommand(int id) const = 0;
    // Runs the command when it is enabled.
    virtual bool RunCommand(int id) = 0;
    // Why the last command did nothing, for the person; empty when it did its work, and for objects
    // that say so themselves.
    virtual std::string LastFailure() const { return {}; }
};

// A CommandTarget over the rows of one table.
template <class Target>
class TableCommandTarget : public CommandTarget {
  public:
    TableCommandTarget(Target& target, std::span<const Command<Target>> table)
        : target_(target), table_(table) {}

    bool HandlesCommand(int id) const override { return Find(id) != nullptr; }

    CommandState StateOfCommand(int id) const override {
        const Command<Target>* row = Find(id);
        if (!row) return {false, false};
        return row->state ? row->state(target_) : CommandState{};
    }

    std::string MenuTextOfCommand(int id) const override {
        const Command<Target>* row = Find(id);
        if (!row) return {};
        return row->menuText ? row->menuText(target_) : row->info.menuText;
    }

    bool RunCommand(int id) override {
        const Command<Target>* row = Find(id);
        if (!row) return false;
        if constexpr (kKeepsErrors) target_.ClearError();
        return StateOfCommand(id).enabled && row->run(target_);
    }

    std::string LastFailure() const override {
        if constexpr (kKeepsErrors)
            return target_.LastError();
        else
            return {};
    }

  private:
    static constexpr bool kKeepsErrors = requires(Target & target) {
        target.LastError();
        target.ClearError();
    };

    const Command<Target>* Find(int id) const {
        for (const Command<Target>& row : table_)
            if (row.info.id == id) return &row;
        return nullptr;
    }

    Target& target_;
    std::span<const Command<Target>> table_;
};

}  // namespace sonavel
