#include "script/script_parser.h"

#include <algorithm>
#include <optional>
#include <span>

#include "platform/code_page_949.h"
#include "script/command_rows.h"

namespace sonavel::script {
namespace {

using Words = std::span<const ScriptWord>;
// Nothing: the words are right.
using Mistake = std::optional<std::string>;

std::string WordAsWritten(const ScriptWord& word) {
    return word.key.empty() ? word.text : word.key + '=' + word.text;
}

constexpr const char* kExpectedUtf8 = "expected UTF-8 text";

bool IsReadable(const ValueRule& rule, std::string_view text) {
    return rule.kind == ValueRule::Kind::kPath || IsValidUtf8(text);
}

std::string Quoted(std::string_view text) {
    return '"' + DisplayText(text) + '"';
}

class CommandParser {
  public:
    CommandParser(const CommandRow& row, Words words) : row_(row), words_(words) {}

    Mistake Parse(Arguments& arguments) {
        const auto firstKey = std::find_if(
            words_.begin(), words_.end(), [](const ScriptWord& word) { return !word.key.empty(); });
        const auto positional = static_cast<std::size_t>(firstKey - words_.begin());
        if (Mistake mistake = ParsePositional(words_.first(positional), arguments)) return mistake;
        if (Mistake mistake = ParseKeys(words_.subspan(positional), arguments)) return mistake;
        SetDefaults(arguments);
        return std::nullopt;
    }

  private:
    Mistake ParsePositional(Words words, Arguments& arguments) const {
        if (!FitsPositional(words.size())) return CountMistake(words);
        for (std::size_t i = 0; i < words.size(); ++i) {
            const PositionalRule& rule = RuleAt(i);
            if (!IsReadable(rule.rule, words[i].text)) return kExpectedUtf8;
            auto value = ParseValue(rule.rule, words[i].text);
            if (!value)
                return "expected " + DescribeRule(rule.rule) + " for " + rule.name + ", not " +
                       Quoted(words[i].text);
            if (i < row_.positional.size()) arguments.Set(rule.name, *value);
            arguments.Append(*std::move(value));
        }
        return std::nullopt;
    }

    bool FitsPositional(std::size_t count) const {
        const std::size_t all = row_.positional.size();
        if (count == all || count == row_.firstOptional) return true;
        return row_.repeated > 0 && count > all && (count - all) % row_.repeated == 0;
    }

    const PositionalRule& RuleAt(std::size_t index) const {
        const std::size_t all = row_.positional.size();
        if (index < all) return row_.positional[index];
        return row_.positional[all - row_.repeated + (index - all) % row_.repeated];
    }

    std::string CountMistake(Words words) const {
        if (words.size() > row_.positional.size() && row_.repeated == 0)
            return "expected " + Quoted(SignatureOf(row_)) + ", not another word " +
                   Quoted(words[row_.positional.size()].text);
        return "expected " + Quoted(SignatureOf(row_));
    }

    Mistake ParseKeys(Words words, Arguments& arguments) const {
        for (const ScriptWord& word : words) {
            const KeyRule* rule = FindKey(word.key);
            if (!rule) return KeyMistake(word);
            if (!IsReadable(rule->rule, word.text)) return kExpectedUtf8;
            if (arguments.Has(word.key)) return "expected " + word.key + "= only once";
            auto value = ParseValue(rule->rule, word.text);
            if (!value)
                return "expected " + DescribeRule(rule->rule) + " for " + word.key + "=, not " +
                       Quoted(word.text);
            arguments.Set(word.key, *std::move(value));
        }
        return std::nullopt;
    }

    const KeyRule* FindKey(std::string_view name) const {
        for (const KeyRule& key : row_.keys)
            if (key.name == name) return &key;
        return nullptr;
    }

    std::string KeyMistake(const ScriptWord& word) const {
        std::string text = "expected ";
        for (std::size_t i = 0; i < row_.keys.size(); ++i)
            text += (i == 0                      ? ""
                     : i + 1 == row_.keys.size() ? " or "
                                                 : ", ") +
                    row_.keys[i].name + '=';
        if (row_.keys.empty()) text += "no key=value word";
        return text + ", not " + Quoted(WordAsWritten(word));
    }

    void SetDefaults(Arguments& arguments) const {
        for (const KeyRule& key : row_.keys)
            if (!key.defaultText.empty() && !arguments.Has(key.name))
                arguments.Set(key.name, ParseValue(key.rule, key.defaultText).value());
    }

    const CommandRow& row_;
    Words words_;
};

class ScriptChecker {
  public:
    ScriptChecker(const std::vector<CommandRow>& rows, ParsedScript& script)
        : rows_(rows), script_(script) {}

    void Check(const ScriptCommand& command) {
        ParsedCommand parsed{.line = command.line};
        if (Mistake mistake = Parse(command.words, parsed))
            script_.mistakes.push_back({command.line, *std::move(mistake)});
        else
            script_.commands.push_back(std::move(parsed));
    }

  private:
    Mistake Parse(Words words, ParsedCommand& parsed) const {
        Prefix last = Prefix::kNone;
        for (;; words = words.subspan(1)) {
            if (words.empty()) return "expected a command";
            const ScriptWord& name = words.front();
            const CommandRow* row = name.key.empty() ? FindCommandRow(rows_, name.text) : nullptr;
            if (!row) return "expected a command, not " + Quoted(WordAsWritten(name));
            parsed.row = row;
            if (row->prefix == Prefix::kNone) break;
            if (row->prefix == last || last == Prefix::kPreview)
                return "expected a command, not " + Quoted(name.text);
            last = row->prefix;
            (last == Prefix::kTry ? parsed.tried : parsed.previewed) = true;
        }
        if (parsed.previewed && !parsed.row->preview)
            return "expected an effect with a preview, not " + Quoted(parsed.row->name);
        return CommandParser(*parsed.row, words.subspan(1)).Parse(parsed.arguments);
    }

    const std::vector<CommandRow>& rows_;
    ParsedScript& script_;
};

}  // namespace

ParsedScript ParseScript(std::string_view text, const std::vector<CommandRow>& rows) {
    ParsedScript script;
    ScriptChecker checker(rows, script);
    for (const ScriptCommand& command : LexScript(text, script.mistakes)) checker.Check(command);
    std::stable_sort(
        script.mistakes.begin(), script.mistakes.end(),
        [](const GrammarMistake& a, const GrammarMistake& b) { return a.line < b.line; });
    return script;
}

}  // namespace sonavel::script
