// The engine's UTF-8 texts for the toolkit.
#pragma once

#include <QString>
#include <string_view>

namespace sonavel {

inline QString Utf8Text(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace sonavel
