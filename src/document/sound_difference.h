// What stands between two sounds, and how a document takes over another one as an edit of what
// differs.
#pragma once

#include <optional>
#include <string_view>

#include "document/sound_doc.h"

namespace sonavel {

// What turns a sound into another one: the frames between the first and the last that differ, with
// the format's numbers and the markers; nothing where the sounds are equal. Of the sound as it is
// now, without its samples.
std::optional<EditRecord> DifferenceBetween(const Sound& now, const Sound& wanted);

// A document that is about to take another sound over. All that may fail has been done.
class TakingOver {
  public:
    // Keeps what the undo step needs; neither sound may change until Apply(). On failure the
    // document is as it was.
    static Result<TakingOver> Prepare(CSoundDoc& document, Sound& wanted,
                                      std::string_view stepName);

    bool IsEdit() const { return edit_.has_value(); }
    // Makes the document's sound the wanted one, which is empty afterwards, as one edit; no edit
    // where they are equal. The sounds change places, which takes no memory. Once.
    void Apply();

  private:
    TakingOver(CSoundDoc& document, Sound& wanted) : document_(&document), wanted_(&wanted) {}

    CSoundDoc* document_;
    Sound* wanted_;
    std::optional<SoundEdit> edit_;
    std::uint64_t firstByte_ = 0;
};

}  // namespace sonavel
