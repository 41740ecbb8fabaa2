// Reads a file in segments that several threads decode side by side. It is for codings whose
// segments come out the same, bit for bit, wherever decoding starts; where they do not, because the
// file is damaged, it goes on in one piece.
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "codec/main/frame_reader.h"
#include "codec/main/page_block.h"
#include "codec/main/piece_reader.h"

namespace sonavel {

class SplitReader : public FrameReader {
  public:
    // Whether the file is of such a coding and long enough to be worth it on this machine.
    static bool CanRead(const LibraryFile& file, const SoundFileDescription& description);

    SplitReader(const char* path, const LibraryFile& file, const SoundFileDescription& description);
    ~SplitReader() override;

    std::span<const std::uint8_t> Next() override;
    std::size_t KeptCalls() const override { return kKeptSegments; }

  private:
    static constexpr std::size_t kKeptSegments = 2;

    struct Segment {
        bool isDecoded = false;
        PageBlock memory;
        std::size_t frames = 0;  // of the segment and of the seam behind it, which begins the next
        bool isGood = false;     // the frames are all that belong to it
        std::uint64_t silenced = 0;
    };

    std::uint64_t FramesOf(std::uint64_t segment) const;
    Segment& Slot(std::uint64_t segment) { return ring_[segment % ring_.size()]; }

    void Work(SNDFILE* file);
    // The number of a segment whose slot is this thread's until it is decoded; none at the end.
    std::uint64_t Claim();
    void Decode(SNDFILE* file, SampleReader& samples, std::uint64_t segment);
    void Publish(std::uint64_t segment);
    bool FitsTheOneBefore(std::uint64_t segment);

    void Release();
    void StopWorkers();
    std::span<const std::uint8_t> TakeStraight();
    bool SkipTo(std::uint64_t frame);

    const LibraryFile& file_;
    const SoundFileDescription& description_;
    std::size_t frameBytes_;
    std::size_t framesPerRead_;
    std::size_t framesPerSegment_;
    std::uint64_t segments_;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Segment> ring_;
    std::uint64_t nextToDecode_ = 0;
    std::uint64_t nextToTake_ = 0;
    std::uint64_t released_ = 0;  // so many segments, whose slots are free again
    bool stopped_ = false;

    std::vector<LibraryFile> handles_;
    std::vector<std::thread> workers_;
    std::unique_ptr<PieceReader> straight_;
};

}  // namespace sonavel
