// A document as a copy of another one.
#include <utility>

#include "document/sound_doc.h"

namespace sonavel {

Outcome CSoundDoc::TakeCopyOf(const CSoundDoc& other) {
    Result<sonavel::Sound> copy = other.sound_.Copy();
    if (!copy) return copy.Ended();
    sound_.Adopt(*std::move(copy));
    origin_ = other.origin_;
    extras_ = other.extras_;
    title_ = other.title_;
    ForgetHistory();
    TellChanged(0);
    SetModified(other.GetModified());
    return Done();
}

}  // namespace sonavel
