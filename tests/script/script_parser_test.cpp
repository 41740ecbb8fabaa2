#include "script/script_parser.h"

#include <gtest/gtest.h>

#include <set>

#include "script/command_rows.h"

namespace sonavel::script {
namespace {

// "line|word|key:word", a command after another.
std::string Lexed(std::string_view text) {
    std::vector<GrammarMistake> mistakes;
    std::string result;
    for (const ScriptCommand& command : LexScript(text, mistakes)) {
        result += (result.empty() ? "" : " ") + std::to_string(command.line);
        for (const ScriptWord& word : command.words)
            result += '|' + (word.key.empty() ? "" : word.key + ':') + word.text;
    }
    for (const GrammarMistake& mistake : mistakes)
        result += " !" + std::to_string(mistake.line) + ' ' + mistake.text;
    return result;
}

TEST(ScriptLexer, SplitsTextIntoWords) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", ""},
        {" \t ;;\n # only a comment", ""},
        {"a b;c\n\nd", "1|a|b 1|c 3|d"},
        {"a\tb\r\nc", "1|a|b 2|c"},
        {"\xEF\xBB\xBF"
         "a",
         "1|a"},
        {"open \"two words.wav\"", "1|open|two words.wav"},
        {"m name=\"Two words\"", "1|m|name:Two words"},
        {"m name=x na\"me\"=x \"name\"=x -a=x", "1|m|name:x|name=x|name=x|-a=x"},
        {R"(a "q\"u\\o\te")", R"(1|a|q"u\o\te)"},
        {"a pre\"mid; # x\"post", "1|a|premid; # xpost"},
        {"a b#c\nd", "1|a|b 2|d"},
        {"a \"\" key=", "1|a||key:"},
        {"a /x=1/y A=b", "1|a|/x=1/y|A=b"},
        {"a k=v=w", "1|a|k:v=w"},
        {"a 마커", "1|a|마커"},
        {"a a0=1 z9=2", "1|a|a0:1|z9:2"},
        {"a # 마커\nb \xB8\xB6", "1|a 2|b|\xB8\xB6"},  // each comment ends with its line
        {"a \"open\nb", "1|a|open 2|b !1 expected a closing \" before the end of the line"},
        {"a \xB8\xB6", "1|a|\xB8\xB6"},  // a file may be called so
        {"a\n# \xB8\xB6\nb", "1|a 3|b !2 expected UTF-8 text"},
        {std::string_view("a\0b", 3), " !1 expected UTF-8 text"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(Lexed(text), expected) << text;
}

std::string MistakesOf(std::string_view text) {
    std::string result;
    for (const GrammarMistake& mistake : ParseScript(text, AllCommandRows()).mistakes)
        result += std::to_string(mistake.line) + ": " + mistake.text + '\n';
    return result;
}

TEST(ScriptParser, NamesWhatWasExpected) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"select \xB8 1", "expected UTF-8 text"},
        {"marker-add 1 name=\xB8\xB6", "expected UTF-8 text"},
        {"try \xB8\xB6", "expected a command, not \"마\""},
        {"frobnicate", "expected a command, not \"frobnicate\""},
        {"name=x", "expected a command, not \"name=x\""},
        {"open", "expected \"open PATH\""},
        {"open a b", "expected \"open PATH\", not another word \"b\""},
        {"open rate=1", "expected \"open PATH\""},
        {"info now", "expected \"info\", not another word \"now\""},
        {"view 100", "expected \"view [WIDTH HEIGHT]\""},
        {"view 0 100", "expected a whole number from 1 to 32767 for WIDTH, not \"0\""},
        {"new rte=1", "expected rate=, channels= or bits=, not \"rte=1\""},
        {"new rate=1 rate=2", "expected rate= only once"},
        {"new rate=1 stereo", "expected rate=, channels= or bits=, not \"stereo\""},
        {"new bits=12", "expected 8, 16 or 32 for bits=, not \"12\""},
        {"new rate=0", "expected a whole number from 1 to 2147483647 for rate=, not \"0\""},
        {"select 0 1.5", "expected a whole number for END, not \"1.5\""},
        {"select 0 0x10", "expected a whole number for END, not \"0x10\""},
        {"select 0 \"\"", "expected a whole number for END, not \"\""},
        {"cursor 1e3", "expected a whole number for FRAME, not \"1e3\""},
        {"copy name=x", "expected no key=value word, not \"name=x\""},
        {"answer", "expected \"answer WORD ...\""},
        {"answer ok maybe",
         "expected ok, cancel, yes, no, left, right, both or mix for WORD, not \"maybe\""},
        {"save-as a markers=yes", "expected on or off for markers=, not \"yes\""},
        {"convert-channels 1 mode=3", "expected a whole number from 0 to 2 for mode=, not \"3\""},
        {"paste-replicate 1001", "expected a whole number from 1 to 1000 for COUNT, not \"1001\""},
        {"volume percent=301", "expected a whole number from 0 to 300 for percent=, not \"301\""},
        {"flanger delay=1.25",
         "expected a number from 0.0 to 15.0 with at most one decimal for delay=, not \"1.25\""},
        {"flanger delay=15.1",
         "expected a number from 0.0 to 15.0 with at most one decimal for delay=, not \"15.1\""},
        {"equalizer gains=1,2,3,4,5,6",
         "expected 7 numbers from -40.0 to 40.0 with at most one decimal, separated by commas for "
         "gains=, not \"1,2,3,4,5,6\""},
        {"moving 1 2 3 4 5 6 7",
         "expected \"moving X0 Y0 Z0 X1 Y1 Z1 ... [smooth=off] [doppler=off] [metres-per-unit=1] "
         "[curve=straight]\""},
        {"try", "expected a command"},
        {"try try info", "expected a command, not \"try\""},
        {"preview try volume", "expected a command, not \"try\""},
        {"preview info", "expected an effect with a preview, not \"info\""},
        {"preview pan value=1", "expected an effect with a preview, not \"pan\""},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(MistakesOf(text), "1: " + std::string(expected) + '\n') << text;
}

TEST(ScriptParser, ReportsEveryWrongLineInOrder) {
    EXPECT_EQ(MistakesOf("info\nbad; worse\nopen \"x\ninfo 1"),
              "2: expected a command, not \"bad\"\n2: expected a command, not \"worse\"\n"
              "3: expected a closing \" before the end of the line\n"
              "4: expected \"info\", not another word \"1\"\n");
}

ParsedCommand Parsed(std::string_view text) {
    ParsedScript script = ParseScript(text, AllCommandRows());
    EXPECT_TRUE(script.mistakes.empty()) << text;
    EXPECT_EQ(script.commands.size(), 1u) << text;
    return script.commands.at(0);
}

TEST(ScriptParser, FillsInValuesAndDefaults) {
    const ParsedCommand made = Parsed("try new bits=16");
    EXPECT_TRUE(made.tried);
    EXPECT_EQ(made.row->name, "new");
    EXPECT_EQ(made.arguments.Whole("rate"), 44100);
    EXPECT_EQ(made.arguments.Text("bits"), "16");

    EXPECT_FALSE(Parsed("save").arguments.Has("PATH"));
    EXPECT_FALSE(Parsed("save-as x").arguments.Has("markers"));
    EXPECT_TRUE(Parsed("try preview volume percent=3").previewed);
    EXPECT_EQ(Parsed("select -5 99999999999999999999").arguments.Whole("END"), INT64_MAX);
    EXPECT_EQ(Parsed("flanger").arguments.Decimal("delay"), 0.1);
    EXPECT_EQ(Parsed("equalizer gains=-40,0,1.5,0,0,0,40").arguments.List("gains"),
              (std::vector<double>{-40, 0, 1.5, 0, 0, 0, 40}));
    EXPECT_EQ(Parsed("answer ok no").arguments.Positional().size(), 2u);
    EXPECT_EQ(Parsed("moving 1 2 3 4 5 6 7 8 -9.25").arguments.Positional().size(), 9u);
}

TEST(CommandRows, HaveDistinctNamesAndDefaultsThatObeyTheirRules) {
    std::set<std::string> names;
    for (const CommandRow& row : AllCommandRows()) {
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        EXPECT_TRUE(row.run || row.prefix != Prefix::kNone) << row.name;
        for (const KeyRule& key : row.keys)
            EXPECT_TRUE(key.defaultText.empty() || ParseValue(key.rule, key.defaultText))
                << row.name << ' ' << key.name;
    }
}

}  // namespace
}  // namespace sonavel::script
