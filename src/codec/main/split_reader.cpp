#include "codec/main/split_reader.h"

#include <algorithm>
#include <cstring>

namespace sonavel {
namespace {

constexpr std::size_t kSegmentBytes = std::size_t{2} << 20;
constexpr unsigned kMostWorkers = 4;
// So many frames of the next segment are decoded with each one: behind damage a decoder may go on
// with what comes later, and then these are others than those that the next segment begins with.
constexpr std::uint64_t kSeamFrames = 2048;
constexpr std::uint64_t kNone = ~std::uint64_t{0};

unsigned WorkerCount() {
    return std::min(std::thread::hardware_concurrency(), kMostWorkers);
}

std::size_t SegmentFrames(const SoundFileDescription& description) {
    return WholeFrames(kSegmentBytes, description.BytesPerFrame()) / description.BytesPerFrame();
}

}  // namespace

bool SplitReader::CanRead(const LibraryFile& file, const SoundFileDescription& description) {
    // A frame of FLAC stands alone; a packet of Vorbis needs the one before it, and MP3 a few
    // frames, which the library decodes when it seeks. Where that is too few of them, as at low bit
    // rates, the first seam shows it.
    const bool standsAlone = description.kind == SoundFileKind::kFlac ||
                             description.kind == SoundFileKind::kOggVorbis ||
                             description.kind == SoundFileKind::kMp3;
    return standsAlone && file.info.seekable != 0 && description.counted == FrameCount::kStated &&
           WorkerCount() > 1 && description.frames >= 4 * SegmentFrames(description);
}

SplitReader::SplitReader(const char* path, const LibraryFile& file,
                         const SoundFileDescription& description)
    : file_(file),
      description_(description),
      frameBytes_(description.BytesPerFrame()),
      framesPerRead_(WholeFrames(kPieceBytes, frameBytes_) / frameBytes_),
      framesPerSegment_(SegmentFrames(description)) {
    segments_ = (description.frames + framesPerSegment_ - 1) / framesPerSegment_;
    ring_.resize(WorkerCount() + kKeptSegments + 1);
    for (Segment& slot : ring_)
        slot.memory = PageBlock((framesPerSegment_ + kSeamFrames) * frameBytes_);
    // All before the first thread starts: the library's own error is one for the whole program.
    for (unsigned i = 0; i < WorkerCount(); ++i) handles_.push_back(OpenLibraryFile(path));
    for (const LibraryFile& handle : handles_)
        workers_.emplace_back([this, of = handle.handle.get()] { Work(of); });
}

SplitReader::~SplitReader() {
    StopWorkers();
}

std::uint64_t SplitReader::FramesOf(std::uint64_t segment) const {
    return std::min<std::uint64_t>(framesPerSegment_,
                                   description_.frames - segment * framesPerSegment_);
}

void SplitReader::Work(SNDFILE* file) {
    SampleReader samples(file, description_);
    for (std::uint64_t segment = Claim(); segment != kNone; segment = Claim()) {
        Decode(file, samples, segment);
        Publish(segment);
    }
}

std::uint64_t SplitReader::Claim() {
    std::unique_lock lock(mutex_);
    if (stopped_ || nextToDecode_ == segments_) return kNone;
    const std::uint64_t segment = nextToDecode_++;
    changed_.wait(lock, [&] { return stopped_ || segment < released_ + ring_.size(); });
    return stopped_ ? kNone : segment;
}

void SplitReader::Decode(SNDFILE* file, SampleReader& samples, std::uint64_t segment) {
    Segment& slot = Slot(segment);
    const std::uint64_t frames = std::min(FramesOf(segment) + kSeamFrames,
                                          description_.frames - segment * framesPerSegment_);
    const auto start = static_cast<sf_count_t>(segment * framesPerSegment_);
    slot.isGood = false;
    if (file == nullptr || sf_seek(file, start, SF_SEEK_SET) != start) return;
    slot.isGood = true;
    slot.frames = 0;
    slot.silenced = 0;
    while (slot.isGood && slot.frames < frames) {
        const std::size_t wanted = std::min<std::size_t>(frames - slot.frames, framesPerRead_);
        const SampleReader::Got got = samples.Read(
            slot.memory.Bytes().subspan(slot.frames * frameBytes_, wanted * frameBytes_));
        slot.frames += got.frames;
        slot.silenced += got.silenced;
        slot.isGood = got.frames == wanted && !got.hadError;
    }
}

void SplitReader::Publish(std::uint64_t segment) {
    const std::lock_guard lock(mutex_);
    Slot(segment).isDecoded = true;
    changed_.notify_all();
}

void SplitReader::Release() {
    const std::lock_guard lock(mutex_);
    Slot(released_).isDecoded = false;
    ++released_;
    changed_.notify_all();
}

void SplitReader::StopWorkers() {
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        changed_.notify_all();
    }
    for (std::thread& worker : workers_) worker.join();
    workers_.clear();
}

std::span<const std::uint8_t> SplitReader::Next() {
    if (straight_) return TakeStraight();
    if (nextToTake_ == segments_) return {};
    if (nextToTake_ - released_ > kKeptSegments) Release();
    Segment& slot = Slot(nextToTake_);
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return slot.isDecoded; });
    }
    if (!slot.isGood || !FitsTheOneBefore(nextToTake_)) return TakeStraight();
    const std::uint64_t frames = FramesOf(nextToTake_++);
    frames_ += frames;
    silenced_ += slot.silenced;
    return slot.memory.Bytes().first(frames * frameBytes_);
}

bool SplitReader::FitsTheOneBefore(std::uint64_t segment) {
    if (segment == 0) return true;
    const auto before = Slot(segment - 1).memory.Bytes().subspan(framesPerSegment_ * frameBytes_);
    const auto bytes = std::min(kSeamFrames, FramesOf(segment)) * frameBytes_;
    return std::memcmp(before.data(), Slot(segment).memory.Bytes().data(), bytes) == 0;
}

// From the first segment on that does not come out whole, the file is read as if it never had been
// split: only so is what can be salvaged of it the same however long it is.
std::span<const std::uint8_t> SplitReader::TakeStraight() {
    if (!straight_) {
        StopWorkers();
        straight_ = std::make_unique<PieceReader>(file_.handle.get(), description_);
        if (!SkipTo(frames_)) return {};
    }
    const std::uint64_t before = straight_->Frames();
    const auto piece = straight_->Next();
    frames_ += straight_->Frames() - before;
    hadError_ = straight_->HadError();
    return piece;
}

bool SplitReader::SkipTo(std::uint64_t frame) {
    SampleReader samples(file_.handle.get(), description_);
    const PageBlock piece(framesPerRead_ * frameBytes_);
    for (std::uint64_t left = frame; left > 0;) {
        const std::uint64_t wanted = std::min<std::uint64_t>(left, framesPerRead_);
        const auto got = samples.Read(piece.Bytes().first(wanted * frameBytes_));
        if (got.frames == 0) return false;
        left -= got.frames;
    }
    return true;
}

}  // namespace sonavel
