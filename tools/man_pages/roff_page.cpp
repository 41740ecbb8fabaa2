#include "man_pages/roff_page.h"

#include <algorithm>

namespace sonavel {
namespace {

// A line that begins with a dot or a quote would be a request.
std::string Harmless(std::string_view text) {
    std::string out;
    bool startsLine = true;
    for (const char c : text) {
        if (startsLine && (c == '.' || c == '\'')) out += "\\&";
        startsLine = c == '\n';
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else if (c == '"')
            out += "\\(dq";
        else
            out += c;
    }
    return out;
}

std::string InCapitals(std::string_view text) {
    std::string out(text);
    std::ranges::transform(out, out.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return out;
}

}  // namespace

RoffPage::RoffPage(std::string_view name, std::string_view version, std::string_view does) {
    text_ = ".TH " + Harmless(InCapitals(name)) + " 1 \"\" \"Sonavel " + Harmless(version) +
            "\" \"User Commands\"\n";
    Section("Name");
    text_ += Harmless(name) + " \\- " + Harmless(does) + '\n';
}

void RoffPage::Add(std::string_view macro, std::string_view argument) {
    text_ += std::string(macro) + " \"" + Harmless(argument) + "\"\n";
}

RoffPage& RoffPage::Section(std::string_view title) {
    Add(".SH", InCapitals(title));
    return *this;
}

RoffPage& RoffPage::Subsection(std::string_view title) {
    Add(".SS", title);
    return *this;
}

RoffPage& RoffPage::Paragraph(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = text.find("\n\n");
        const std::string_view part = text.substr(0, end);
        text = end == std::string_view::npos ? "" : text.substr(end + 2);
        if (part.starts_with(' '))
            Lines(part);
        else
            text_ += ".PP\n" + Harmless(part) + '\n';
    }
    return *this;
}

RoffPage& RoffPage::Lines(std::string_view text) {
    text_ += ".PP\n.RS 4\n.nf\n" + Harmless(text) + "\n.fi\n.RE\n";
    return *this;
}

RoffPage& RoffPage::Entry(std::string_view term, std::string_view meaning) {
    text_ += ".TP\n\\fB" + Harmless(term) + "\\fR\n" + Harmless(meaning) + '\n';
    return *this;
}

}  // namespace sonavel
