// Commands as rows of a table. Each class that handles commands has one table; menus, tool bars,
// context menus, shortcuts and scripts are made from the tables.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <type_traits>

#include "platform/outcome.h"

namespace sonavel {

struct CommandState {
    bool enabled = true;
    bool checked = false;
};

// What a front end needs to know of a command; texts are string literals of the table.
// What becomes of a command while a long operation runs.
enum class WhileWorking : std::uint8_t {
    kWaits,
    // Runs on a sound that is not being changed: it opens no dialog and changes no sound. What Stop
    // records stands in a sound of its own.
    kOnFreeSounds,
    kAlways,
};

struct CommandInfo {
    int id;
    const char* name;      // script name, "" when scripts have another form of it
    const char* menuText;  // with "&" before the access key
    const char* shortcut;  // "Ctrl+Home", several separated by "; ", or ""
    const char* prompt;    // status-bar text
    WhileWorking whileWorking = WhileWorking::kWaits;
};

template <class Target>
struct Command {
    CommandInfo info;
    // Null: the command asks first, and a front end's table says what.
    Outcome (*run)(Target&);
    // Null: always enabled, never checked.
    CommandState (*state)(const Target&) = nullptr;
    // Null: the menu text of `info`, else a text that depends on the target.
    std::string (*menuText)(const Target&) = nullptr;
};

// A handler that is a member function of the target, which returns an Outcome or always does its
// work.
template <class Target, auto operation>
Outcome Call(Target& target) {
    if constexpr (std::is_void_v<decltype((target.*operation)())>) {
        (target.*operation)();
        return Done();
    } else {
        return (target.*operation)();
    }
}

// The face that a command-handling object shows to menus and scripts. Ids that the object does not
// handle are passed by.
class CommandTarget {
  public:
    virtual ~CommandTarget() = default;

    virtual bool HandlesCommand(int id) const = 0;
    virtual CommandState StateOfCommand(int id) const = 0;
    virtual std::string MenuTextOfCommand(int id) const = 0;
    // Fails where the command is not enabled, and says why.
    virtual Outcome Offered(int id) const {
        return DoneIf(StateOfCommand(id).enabled, failure::kNotOffered);
    }
    // Runs the command when it is enabled.
    virtual Outcome RunCommand(int id) = 0;
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

    Outcome RunCommand(int id) override {
        const Command<Target>* row = Find(id);
        if (!row || !row->run || !StateOfCommand(id).enabled) return Failed(failure::kNotOffered);
        return row->run(target_);
    }

  private:
    const Command<Target>* Find(int id) const {
        for (const Command<Target>& row : table_)
            if (row.info.id == id) return &row;
        return nullptr;
    }

    Target& target_;
    std::span<const Command<Target>> table_;
};

}  // namespace sonavel
