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
        return true;
    }

  private:
    std::optional<std::vector<std::uint8_t>> image_;
};

}  // namespace sonavel
