// Text of a manual page in the man macros, piece by piece. Texts are plain; what they hold that the
// macros would take for their own is made harmless.
#pragma once

#include <string>
#include <string_view>

namespace sonavel {

class RoffPage {
  public:
    // `name` in small letters, `section` 1, `does` as in the index of pages.
    RoffPage(std::string_view name, std::string_view version, std::string_view does);

    RoffPage& Section(std::string_view title);
    RoffPage& Subsection(std::string_view title);
    // Filled lines; an empty line in the text begins another paragraph. One that begins with a
    // blank is kept as it is.
    RoffPage& Paragraph(std::string_view text);
    // Lines kept as they are, indented.
    RoffPage& Lines(std::string_view text);
    // A term in bold and what it means.
    RoffPage& Entry(std::string_view term, std::string_view meaning);

    const std::string& Text() const { return text_; }

  private:
    void Add(std::string_view macro, std::string_view argument);

    std::string text_;
};

}  // namespace sonavel
