// What a document asks of its windows.
#pragma once

#include <cstdint>

namespace sonavel {

class DocumentObserver {
  public:
    virtual ~DocumentObserver() = default;

    // The sound changed from this frame on; 0 with a new format or a new length rebuilds
    // everything.
    virtual void OnSoundChanged(std::uint32_t firstChangedFrame) = 0;
    virtual void OnTitleOrModifiedChanged() = 0;
    // Around what holds the program up: the wait cursor.
    enum class Waiting { kBegins, kEnds };
    virtual void OnWaiting(Waiting) {}
};

}  // namespace sonavel
