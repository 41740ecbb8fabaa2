// How failed tests show the view's plain values.
#pragma once

#include <ostream>

#include "view/state/rectangle.h"
#include "view/state/scroll_state.h"

namespace sonavel {

inline void PrintTo(const ScrollState& s, std::ostream* out) {
    *out << "{" << s.minimum << ".." << s.maximum << " page " << s.page << " at " << s.position
         << "}";
}

inline void PrintTo(const Rectangle& r, std::ostream* out) {
    *out << "{" << r.left << "," << r.top << "," << r.right << "," << r.bottom << "}";
}

}  // namespace sonavel
