#include "script/script_lexer.h"

#include <algorithm>

#include "platform/code_page_949.h"

namespace sonavel::script {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsNameStart(char c) {
    return c >= 'a' && c <= 'z';
}
bool IsNamePart(char c) {
    return IsNameStart(c) || (c >= '0' && c <= '9') || c == '-';
}
bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}
bool EndsCommand(char c) {
    return c == '\n' || c == ';';
}

class Lexer {
  public:
    Lexer(std::string_view text, std::vector<GrammarMistake>& mistakes)
        : text_(text), mistakes_(mistakes) {}

    std::vector<ScriptCommand> Run() {
        while (!AtEnd()) Step();
        FinishCommand();
        return std::move(commands_);
    }

  private:
    bool AtEnd() const { return position_ == text_.size(); }
    char Peek() const { return text_[position_]; }

    void Step() {
        const char c = Peek();
        if (EndsCommand(c)) {
            FinishCommand();
            if (c == '\n') ++line_;
            ++position_;
        } else if (c == '#') {
            SkipComment();
        } else if (IsBlank(c)) {
            ++position_;
        } else {
            ReadWord();
        }
    }

    void SkipComment() {
        const std::size_t end = std::min(text_.find('\n', position_), text_.size());
        if (!IsValidUtf8(text_.substr(position_, end - position_)))
            mistakes_.push_back({line_, "expected UTF-8 text"});
        position_ = end;
    }

    void FinishCommand() {
        if (!current_.words.empty()) commands_.push_back(std::move(current_));
        current_ = {};
    }

    void ReadWord() {
        ScriptWord word;
        bool mayBeKey = IsNameStart(Peek());
        while (!AtEnd() && !IsBlank(Peek()) && !EndsCommand(Peek()) && Peek() != '#') {
            const char c = Peek();
            if (c == '=' && mayBeKey) {
                word.key = std::move(word.text);
                word.text.clear();
            }
            const bool isSeparator = c == '=' && mayBeKey;
            mayBeKey = mayBeKey && IsNamePart(c);
            if (c == '"') {
                ReadQuoted(word.text);
            } else {
                if (!isSeparator) word.text += c;
                ++position_;
            }
        }
        if (current_.words.empty()) current_.line = line_;
        current_.words.push_back(std::move(word));
    }

    void ReadQuoted(std::string& text) {
        ++position_;
        while (!AtEnd() && Peek() != '\n') {
            char c = Peek();
            if (c == '"') {
                ++position_;
                return;
            }
            if (c == '\\' && IsEscapable(position_ + 1)) c = text_[++position_];
            text += c;
            ++position_;
        }
        mistakes_.push_back({line_, "expected a closing \" before the end of the line"});
    }

    bool IsEscapable(std::size_t position) const {
        return position < text_.size() && (text_[position] == '"' || text_[position] == '\\');
    }

    std::string_view text_;
    std::vector<GrammarMistake>& mistakes_;
    std::size_t position_ = 0;
    int line_ = 1;
    ScriptCommand current_;
    std::vector<ScriptCommand> commands_;
};

// 0 without one.
int LineOfFirstZeroByte(std::string_view text) {
    const std::size_t zero = text.find('\0');
    if (zero == std::string_view::npos) return 0;
    return 1 + static_cast<int>(std::ranges::count(text.substr(0, zero), '\n'));
}

}  // namespace

std::vector<ScriptCommand> LexScript(std::string_view text, std::vector<GrammarMistake>& mistakes) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    if (const int line = LineOfFirstZeroByte(text)) {
        mistakes.push_back({line, "expected UTF-8 text"});
        return {};
    }
    return Lexer(text, mistakes).Run();
}

}  // namespace sonavel::script
