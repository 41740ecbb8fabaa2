#include "audio/live_player.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <system_error>
#include <utility>

namespace sonavel {
namespace {

// As much as bridges the time that a busy machine leaves the rendering thread waiting.
constexpr std::uint32_t kPiecesAhead = 3;
// No device asks for so much at once.
constexpr std::uint32_t kMostPieces = 24;

void RaiseTo(std::atomic<float>& peak, float value) {
    float known = peak.load(std::memory_order_relaxed);
    while (known < value && !peak.compare_exchange_weak(known, value, std::memory_order_relaxed)) {
    }
}

}  // namespace

LivePlayer::LivePlayer(std::unique_ptr<LiveMaker> maker, WaveDevices& devices)
    : maker_(std::move(maker)),
      devices_(devices),
      range_(maker_->Range()),
      aheadFrames_(kPiecesAhead * LiveLoop::PieceFramesAt(range_.framesPerSecond)) {}

LivePlayer::~LivePlayer() {
    Stop();
}

bool LivePlayer::Prepare() try {
    auto untouched = maker_->MakeUntouched();
    if (!untouched || range_.frames == 0) return false;
    loop_ = std::make_unique<LiveLoop>(range_, std::move(untouched));
    piece_.resize(std::size_t{2} * loop_->PieceFrames());
    ring_ = std::make_unique<FrameRing>(std::size_t{kMostPieces} * loop_->PieceFrames());
    making_ = std::thread([this] { MakeUntilStopped(); });
    rendering_ = std::thread([this] { RenderUntilStopped(); });
    return true;
} catch (const std::bad_alloc&) {
    return false;
} catch (const std::system_error&) {
    return false;
}

WaveResult LivePlayer::Start(int deviceId, std::function<void()> onLost) {
    if (out_) return kWaveAllocated;
    out_ = devices_.CreateFrameOut();
    if (!out_) return kWaveNoDriver;
    stopping_ = false;
    WaveResult result = Prepare() ? kWaveSuccess : kWaveNoMemory;
    if (result == kWaveSuccess) {
        MakeAnew();
        result = out_->Open(deviceId, range_.framesPerSecond, *this, std::move(onLost));
    }
    if (result != kWaveSuccess) Stop();
    return result;
}

// The device first: afterwards nobody looks into the ring.
void LivePlayer::Stop() {
    if (out_) out_->Close();
    out_.reset();
    stopping_ = true;
    set_.Raise();
    room_.Raise();
    if (making_.joinable()) making_.join();
    if (rendering_.joinable()) rendering_.join();
    DropMade();
}

void LivePlayer::MakeUntilStopped() {
    while (true) {
        set_.Wait();
        if (stopping_) return;
        auto made = MakeReady();
        if (!made) continue;
        delete made_.exchange(made.release());
        room_.Raise();
    }
}

// What is heard stays as it was where the memory is short.
std::unique_ptr<LiveRenderer> LivePlayer::MakeReady() try {
    auto made = maker_->MakeLatest();
    if (made) made->Prepare(renderedTo_);
    return made;
} catch (const std::bad_alloc&) {
    return nullptr;
}

bool LivePlayer::HasToRender() const {
    const std::size_t wanted = std::min<std::size_t>(aheadFrames_, ring_->Capacity());
    return loop_->IsReady() && ring_->Filled() + loop_->PieceFrames() <= wanted;
}

void LivePlayer::RenderUntilStopped() {
    while (!stopping_) {
        if (LiveRenderer* made = made_.exchange(nullptr))
            loop_->Change(std::unique_ptr<LiveRenderer>(made));
        if (!HasToRender()) {
            room_.Wait();
            continue;
        }
        loop_->SetBypass(bypass_);
        loop_->RenderPiece(piece_);
        renderedTo_ = loop_->Position();
        ring_->Put(piece_);
    }
}

void LivePlayer::Pull(std::span<float> pairs, std::uint32_t latencyFrames) {
    latencyFrames_.store(latencyFrames, std::memory_order_relaxed);
    const auto asked = static_cast<std::uint32_t>(pairs.size() / 2);
    const std::uint32_t enough = asked + asked / 2;
    if (enough > aheadFrames_) aheadFrames_ = enough;
    const std::size_t frames = Flows() ? ring_->Take(pairs) : 0;
    const auto missing = pairs.subspan(2 * frames);
    std::ranges::fill(missing, 0.0f);
    if (ring_->Taken() > 0) missed_ += missing.size() / 2;
    NotePeaks(pairs);
    room_.Raise();
}

// The first frames wait until enough follow them.
bool LivePlayer::Flows() {
    const std::size_t wanted = std::min<std::size_t>(aheadFrames_, ring_->Capacity());
    flows_ = flows_ || ring_->Filled() + loop_->PieceFrames() > wanted;
    return flows_;
}

void LivePlayer::NotePeaks(std::span<const float> pairs) {
    LivePeaks peaks;
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        peaks.left = std::max(peaks.left, std::abs(pairs[i]));
        peaks.right = std::max(peaks.right, std::abs(pairs[i + 1]));
    }
    RaiseTo(leftPeak_, peaks.left);
    RaiseTo(rightPeak_, peaks.right);
}

std::uint32_t LivePlayer::HeardFrame() const {
    if (!ring_) return 0;
    const std::uint64_t taken = ring_->Taken();
    const std::uint64_t heard = taken - std::min<std::uint64_t>(taken, latencyFrames_);
    return static_cast<std::uint32_t>(heard % range_.frames);
}

LivePeaks LivePlayer::TakePeaks() {
    return {leftPeak_.exchange(0), rightPeak_.exchange(0)};
}

}  // namespace sonavel
