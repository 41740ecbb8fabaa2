// A clipboard of the program's own.
#pragma once

#include "platform/wave_clipboard.h"

namespace sonavel {

class MemoryClipboard : public WaveClipboard {
  public:
    bool OffersWave() const override { return image_.has_value(); }
    std::optional<std::vector<std::uint8_t>> GetImage() const override { return image_; }
    bool SetImage(std::vector<std::uint8_t> image) override {
        image_ = std::move(image);
        isOwn_ = true;
        ++number_;
        return true;
    }
    std::uint64_t OwnNumber() const override { return isOwn_ ? number_ : 0; }
    // As another program would.
    void PutFromElsewhere(std::vector<std::uint8_t> image) {
        image_ = std::move(image);
        isOwn_ = false;
    }

  private:
    std::optional<std::vector<std::uint8_t>> image_;
    std::uint64_t number_ = 0;  // of the last own one
    bool isOwn_ = false;
};

}  // namespace sonavel
