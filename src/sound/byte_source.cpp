#include "sound/byte_source.h"

#include <algorithm>

namespace sonavel {

std::uint64_t ByteCursor::Remaining() const {
    const std::uint64_t size = source_.Size();
    return position_ < size ? size - position_ : 0;
}

bool ByteCursor::WindowHolds(std::size_t bytes) const {
    return position_ >= windowStart_ && position_ - windowStart_ + bytes <= windowSize_;
}

std::size_t ByteCursor::Read(std::span<std::uint8_t> to) {
    std::size_t got = 0;
    if (to.size() >= window_.size()) {
        got = source_.ReadAt(position_, to);
    } else {
        if (!WindowHolds(to.size())) {
            windowStart_ = position_;
            windowSize_ = source_.ReadAt(position_, window_);
        }
        got = std::min(to.size(), windowSize_ - (position_ - windowStart_));
        std::copy_n(window_.begin() + (position_ - windowStart_), got, to.begin());
    }
    position_ += got;
    return got;
}

}  // namespace sonavel
