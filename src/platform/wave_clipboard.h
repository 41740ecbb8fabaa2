// The system clipboard as far as the editor uses it: one complete RIFF WAVE image.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace sonavel {

class WaveClipboard {
  public:
    virtual ~WaveClipboard() = default;

    virtual bool OffersWave() const = 0;
    // The image as some program left it there, so hostile; nothing when none can be had.
    virtual std::optional<std::vector<std::uint8_t>> GetImage() const = 0;
    // Empties the clipboard and puts the image there. False when the clipboard cannot be taken.
    virtual bool SetImage(std::vector<std::uint8_t> image) = 0;
    // Which of the images that this program has put there lies there now, counted from 1; 0 for
    // none of them, as when another program has put there what lies there.
    virtual std::uint64_t OwnNumber() const = 0;
};

}  // namespace sonavel
