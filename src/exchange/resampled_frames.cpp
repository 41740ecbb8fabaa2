#include "exchange/resampled_frames.h"

#include <algorithm>
#include <cstring>

#include "exchange/sample_packing.h"
#include "platform/failure_texts.h"

namespace sonavel {
namespace {

constexpr std::uint64_t kFramesAtOnce = 32768;

}  // namespace

ResampledFrames::ResampledFrames(FrameSource& from, const EncodeRequest& request,
                                 std::uint32_t toRate)
    : from_(from),
      request_(request),
      toRate_(toRate),
      resampler_(request.channels, request.rate, toRate),
      left_(request.frames) {}

EncodeRequest ResampledFrames::Request() const {
    EncodeRequest request = request_;
    request.frames = (request_.frames * toRate_ + request_.rate / 2) / request_.rate;
    request.rate = toRate_;
    request.samples = FrameSamples::kFloat32;
    return request;
}

Outcome ResampledFrames::Refill() {
    ready_.clear();
    given_ = 0;
    if (left_ == 0) {
        isFinished_ = true;
        return DoneIf(resampler_.Finish(ready_), failure::kMemory);
    }
    const std::uint64_t frames = std::min(left_, kFramesAtOnce);
    piece_.resize(static_cast<std::size_t>(frames) * request_.BytesPerFrame());
    if (Outcome given = from_.Give(piece_); !given) return given;
    left_ -= frames;
    floats_.resize(static_cast<std::size_t>(frames) * request_.channels);
    PackSamples(piece_, request_.samples, {.depth = EncodedDepth::kFloat32},
                {reinterpret_cast<std::uint8_t*>(floats_.data()), floats_.size() * sizeof(float)});
    return DoneIf(resampler_.Add(floats_, ready_), failure::kMemory);
}

Outcome ResampledFrames::Give(std::span<std::uint8_t> to) {
    while (!to.empty()) {
        if (given_ == ready_.size() && !isFinished_) {
            if (Outcome refilled = Refill(); !refilled) return refilled;
            continue;
        }
        const std::size_t bytes = std::min(to.size(), (ready_.size() - given_) * sizeof(float));
        // The announced number holds, should the filter end a frame before it.
        if (bytes == 0) {
            std::ranges::fill(to, std::uint8_t{0});
            return Done();
        }
        std::memcpy(to.data(), ready_.data() + given_, bytes);
        given_ += bytes / sizeof(float);
        to = to.subspan(bytes);
    }
    return Done();
}

}  // namespace sonavel
