// What stands between two sounds, as a record that makes one of the other.
#pragma once

#include <optional>

#include "document/sound_doc.h"

namespace sonavel {

// Of the frames between the first and the last that differ, with the format's numbers and the
// markers; nothing where the sounds are equal. Takes copies of the samples, or, where the memory
// for them cannot be had or the formats have other frames, `wanted` itself, which is empty then.
std::optional<EditRecord> DifferenceFrom(const Sound& now, Sound& wanted);

enum class TakenOver { kNothing, kEdit };

// Makes the document's sound `wanted`, which may be empty afterwards, as one edit with a step of
// that name; no edit where they are equal. On failure the document is as it was.
Result<TakenOver> TakeOver(CSoundDoc& document, Sound& wanted, std::string_view stepName);

}  // namespace sonavel
