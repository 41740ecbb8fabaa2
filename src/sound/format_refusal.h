// Why a sound format cannot be edited.
#pragma once

#include <string>

#include "sound/pcm_format.h"

namespace sonavel {

// A short text for a format that IsEditable() refuses.
std::string FormatRefusal(const PcmFormat& format);

}  // namespace sonavel
