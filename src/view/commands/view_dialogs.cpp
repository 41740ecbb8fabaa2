#include "view/commands/view_dialogs.h"

#include <algorithm>
#include <charconv>

namespace sonavel {

double PercentFromText(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return 0;
    const std::size_t end = std::min(text.find('%'), text.size());
    double percent = 0;
    if (first < end) std::from_chars(text.data() + first, text.data() + end, percent);
    return percent;
}

}  // namespace sonavel
