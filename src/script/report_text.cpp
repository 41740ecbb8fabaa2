#include "script/report_text.h"

#include <cstdio>

#include "platform/code_page_949.h"
#include "platform/headless/scripted_prompts.h"

namespace sonavel::script {

std::string QuotedText(std::string_view bytes) {
    std::string escaped;
    for (const char c : DisplayText(bytes)) {
        if (c == '"' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return '"' + OnOneLine(escaped) + '"';
}

std::string FixedText(double value, int decimals) {
    char text[400];  // the longest double has 309 digits before the point
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

}  // namespace sonavel::script
