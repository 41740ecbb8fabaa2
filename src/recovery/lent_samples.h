// Samples of a change on their way into the journal: they are copied out of the document's sound on
// a thread of their own, so that the edit that made them does not wait for it.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <span>
#include <thread>

#include "sound/sound_buffer.h"

namespace sonavel::recovery {

class LentSamples {
  public:
    // Less is copied at once, in a fraction of a millisecond.
    static constexpr std::uint64_t kLeastBytes = std::uint64_t{256} << 10;

    // `lent` stays where and as it is until Settle() has returned or the copy is complete. Null
    // when there is no memory for the copy.
    static std::shared_ptr<LentSamples> Of(std::span<const std::uint8_t> lent);

    std::uint64_t Size() const { return copy_.Size(); }
    // Copies what nobody copies yet and waits for the rest; on any thread. Behind it the owner of
    // the samples may change them.
    void Settle();
    // The copy, once it is complete.
    std::span<const std::uint8_t> Bytes();

  private:
    LentSamples(std::span<const std::uint8_t> lent, SoundBuffer copy);

    std::span<const std::uint8_t> lent_;
    SoundBuffer copy_;
    std::size_t pieces_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<std::size_t> done_ = 0;
};

// The thread that copies, in the order in which samples came, and waits for no disk.
class SampleCopier {
  public:
    SampleCopier();
    // What nobody waits for is left uncopied.
    ~SampleCopier();
    SampleCopier(const SampleCopier&) = delete;
    SampleCopier& operator=(const SampleCopier&) = delete;

    // Where there is no thread, whoever needs the copy makes it.
    void Add(std::shared_ptr<LentSamples> samples);

  private:
    void Run();

    std::mutex mutex_;
    std::condition_variable added_;
    std::deque<std::shared_ptr<LentSamples>> waiting_;
    bool stops_ = false;
    std::thread thread_;
};

}  // namespace sonavel::recovery
