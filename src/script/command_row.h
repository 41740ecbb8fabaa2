// A command of scripts as a row: its words, and what it does. The grammar, the help and the
// runs are made from the rows.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/outcome.h"
#include "script/value_rule.h"

namespace sonavel::script {

class ScriptSession;

struct PositionalRule {
    std::string name;  // in capitals, as the help shows it
    ValueRule rule;
};

struct KeyRule {
    std::string name;
    ValueRule rule;
    std::string defaultText{};  // empty: the command finds its own default
};

// The words of one command, checked against its row.
class Arguments {
  public:
    bool Has(std::string_view name) const { return values_.contains(name); }
    const std::string& Text(std::string_view name) const { return Get<std::string>(name); }
    std::int64_t Whole(std::string_view name) const { return Get<std::int64_t>(name); }
    double Decimal(std::string_view name) const { return Get<double>(name); }
    bool Switch(std::string_view name) const { return Get<bool>(name); }
    const std::vector<double>& List(std::string_view name) const {
        return Get<std::vector<double>>(name);
    }
    const Value& Any(std::string_view name) const { return values_.find(name)->second; }
    // All positional words in order, those of a repetition among them.
    const std::vector<Value>& Positional() const { return positional_; }

    void Set(const std::string& name, Value value) { values_[name] = std::move(value); }
    void Append(Value value) { positional_.push_back(std::move(value)); }

  private:
    template <class T>
    const T& Get(std::string_view name) const {
        return std::get<T>(values_.find(name)->second);
    }

    std::map<std::string, Value, std::less<>> values_;
    std::vector<Value> positional_;
};

using Handler = std::function<Outcome(ScriptSession&, const Arguments&)>;

enum class Needs { kNothing, kDocument };
// Rows that stand before another command: its failure is printed and passed by, or its Preview
// button is pressed.
enum class Prefix { kNone, kTry, kPreview };

// Whether it also runs on the sounds of an editor, which keep their files and stay open.
enum class InEditor { kRuns, kRefused };

struct CommandRow {
    std::string name;
    std::string does;
    std::vector<PositionalRule> positional{};
    // From this one on the positional words may be left out, all or none of them.
    std::size_t firstOptional = static_cast<std::size_t>(-1);
    // So many of the last positional words may come again, as often as wanted.
    std::size_t repeated = 0;
    std::vector<KeyRule> keys{};
    Needs needs = Needs::kDocument;
    Prefix prefix = Prefix::kNone;
    InEditor inEditor = InEditor::kRuns;
    Handler run{};
    Handler preview{};  // empty: the command has no preview
};

// "new [rate=44100] [channels=1] [bits=8]"
std::string SignatureOf(const CommandRow& row);

}  // namespace sonavel::script
