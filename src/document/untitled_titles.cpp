#include "document/untitled_titles.h"

namespace sonavel {

std::string UntitledTitles::Next(std::string_view prefix) {
    const auto counter = counters_.try_emplace(std::string(prefix), 0).first;
    return counter->first + std::to_string(++counter->second);
}

}  // namespace sonavel
