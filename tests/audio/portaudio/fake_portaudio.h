// Stands in for the PortAudio library: the test says which devices there are, calls back in the
// sound card's place, and lets any call of the library hang.
#pragma once

#include <portaudio.h>

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace sonavel {

class FakePortAudio {
  public:
    // The one that the library's functions act on.
    static FakePortAudio& Get();

    // --- What the test says ---
    // As after the start of the program, with one device of both directions.
    void Reset();
    void SetDevices(int count);
    void Fail(const std::string& call, PaError error);
    // The call does not return before Release, which lets all calls go.
    void Hang(const std::string& call);
    void Release();

    // --- What the sound card does to the stream opened last ---
    struct Heard {
        int result = 0;
        std::vector<std::uint8_t> bytes;
    };
    unsigned outputFrameBytes = 1;
    Heard CallBack(const std::vector<std::uint8_t>& in, PaStreamCallbackFlags flags = 0);
    // The stream ends by itself.
    void Finish();

    // --- What the test asks ---
    int CountOf(const std::string& call);
    int OpenStreams();

    // --- Of the library's functions ---
    struct Stream {
        PaStreamCallback* callback = nullptr;
        PaStreamFinishedCallback* finished = nullptr;
        void* userData = nullptr;
        bool stopped = true;
        bool over = false;
    };
    PaError Call(const std::string& name);
    Stream* Open(PaStreamCallback* callback, void* userData);
    void Close(Stream* stream);
    int ListedDevices();
    void List();
    bool IsStopped(Stream* stream);
    void SetStopped(Stream* stream, bool stopped);

  private:
    std::mutex mutex_;
    std::condition_variable released_;
    std::map<std::string, PaError> failures_;
    std::set<std::string> hanging_;
    std::map<std::string, int> calls_;
    std::vector<Stream*> open_;
    Stream* last_ = nullptr;
    int devices_ = 1;
    int listed_ = 0;
};

}  // namespace sonavel
