// Sets how many threads work is spread over, for as long as it lives.
#pragma once

#include <cstdlib>
#include <string>

namespace sonavel {

class ThreadCount {
  public:
    explicit ThreadCount(unsigned threads) {
        setenv("SONAVEL_THREADS", std::to_string(threads).c_str(), 1);
    }
    ~ThreadCount() { unsetenv("SONAVEL_THREADS"); }
    ThreadCount(const ThreadCount&) = delete;
    ThreadCount& operator=(const ThreadCount&) = delete;
};

}  // namespace sonavel
