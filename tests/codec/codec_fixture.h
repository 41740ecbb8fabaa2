// A codec service on the built programs, sinks and sources that keep what they see, and sounds that
// show a swap, a shift or a lost bit.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>

#include "codec/client/child_codecs.h"
#include "support/test_files.h"

namespace sonavel {

class CollectingSink : public FrameSink {
  public:
    Outcome Begin(const SoundFileHead& of) override {
        ++begins;
        head = of;
        return begin;
    }
    Outcome Take(std::span<const std::uint8_t> frames) override {
        EXPECT_EQ(begins, 1);
        EXPECT_FALSE(frames.empty());
        EXPECT_EQ(frames.size() % head.description.BytesPerFrame(), 0u);
        bytes.insert(bytes.end(), frames.begin(), frames.end());
        return bytes.size() > mostBytes ? Failed("That is enough.") : Done();
    }
    GoOn Watch() override { return ++watches > mostWatches ? GoOn::kNo : GoOn::kYes; }

    template <class T>
    std::vector<T> Samples() const {
        std::vector<T> samples(bytes.size() / sizeof(T));
        std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(T));
        return samples;
    }
    std::uint64_t Frames() const { return bytes.size() / head.description.BytesPerFrame(); }

    Outcome begin = Done();
    std::size_t mostBytes = std::size_t{256} << 20;
    int mostWatches = 1 << 30;
    int begins = 0;
    int watches = 0;
    SoundFileHead head;
    FileBytes bytes;
};

class BytesSource : public FrameSource {
  public:
    explicit BytesSource(FileBytes bytes) : bytes_(std::move(bytes)) {}

    Outcome Give(std::span<std::uint8_t> to) override {
        if (to.size() > bytes_.size() - given_) return Failed("There is no more.");
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(given_), to.size(), to.begin());
        given_ += to.size();
        return Done();
    }

  private:
    FileBytes bytes_;
    std::size_t given_ = 0;
};

template <class T>
FileBytes BytesOfSamples(const std::vector<T>& samples) {
    FileBytes bytes(samples.size() * sizeof(T));
    std::memcpy(bytes.data(), samples.data(), bytes.size());
    return bytes;
}

// Signed samples of `bits` bits that pass through their whole range, ends included, no two channels
// and no two near frames alike.
inline std::vector<std::int32_t> Ramp(std::size_t samples, int bits) {
    const std::int64_t count = std::int64_t{1} << bits;
    std::vector<std::int32_t> ramp;
    for (std::size_t i = 0; i < samples; ++i) {
        const auto step = static_cast<std::int64_t>(i) * 0x9E3779B1LL;
        ramp.push_back(static_cast<std::int32_t>(step % count - count / 2));
    }
    if (samples >= 2) {
        ramp[0] = static_cast<std::int32_t>(-count / 2);
        ramp[1] = static_cast<std::int32_t>(count / 2 - 1);
    }
    return ramp;
}

class CodecTest : public ::testing::Test {
  protected:
    static CodecSetup BuiltPrograms() {
        CodecSetup setup{FindCodecPrograms(), {}};
        setup.programs.helper = SONAVEL_CODEC_PROGRAM;
        return setup;
    }
    // Whoever runs a test leaves no child and no descriptor behind.
    void SetUp() override { descriptors_ = OpenDescriptors(); }
    void TearDown() override {
        EXPECT_EQ(OpenDescriptors(), descriptors_);
        EXPECT_TRUE(waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD) << "a child is left";
    }

    static std::size_t OpenDescriptors() {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
    }

    Result<DecodedSound> Decode(const std::filesystem::path& path) {
        sink = CollectingSink();
        return codecs.Decode(path, sink);
    }

    TemporaryFolder folder;
    ChildCodecs codecs{BuiltPrograms()};
    CollectingSink sink;

  private:
    std::size_t descriptors_ = 0;
};

inline bool HasProgram(const char* name) {
    return std::system((std::string("command -v ") + name + " >/dev/null 2>&1").c_str()) == 0;
}

}  // namespace sonavel
