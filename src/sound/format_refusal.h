// Why a sound format cannot be edited or saved.
#pragma once

#include <string>

#include "platform/outcome.h"
#include "sound/pcm_format.h"

namespace sonavel {

// A short text for a format that IsEditable() refuses.
std::string FormatRefusal(const PcmFormat& format);

// Fails for samples that the files which Save writes cannot hold: for floats.
Outcome CheckSavedFormat(const PcmFormat& format);

}  // namespace sonavel
