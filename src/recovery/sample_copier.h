// The thread that copies lent samples, in the order in which they came, and waits for no disk.
#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

#include "sound/lent_samples.h"

namespace sonavel::recovery {

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
