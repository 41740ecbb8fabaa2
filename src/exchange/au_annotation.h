// The one text of an AU file, which holds its tags as lines "title=..." as other programs write
// them. A line that begins with a space goes on with the value before it.
#pragma once

#include <string>

#include "exchange/random_bytes.h"
#include "exchange/sound_extras.h"

namespace sonavel {

// The tags as such a text; the program's name where there are none. Tags whose keys are no names of
// comments are left out.
std::string AnnotationOf(const std::vector<SoundTag>& tags);

// A text without such lines is the comment.
void AddAnnotation(std::string_view text, ExtrasKeeper& keeper);

void ReadAuExtras(RandomBytes& bytes, ExtrasKeeper& keeper);

}  // namespace sonavel
