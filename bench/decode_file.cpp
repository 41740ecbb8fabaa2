// Decodes one file through the codec service into memory, as an import does, and prints how much
// came. Usage: decode_file PATH
#include <cstdio>
#include <cstdlib>

#include "codec/client/child_codecs.h"
#include "sound/huge_pages.h"

namespace {

// Grows its block as the editor's sounds do.
class MemorySink : public sonavel::FrameSink {
  public:
    ~MemorySink() override { std::free(block); }

    sonavel::Outcome Begin(const sonavel::SoundFileHead& head) override {
        const auto& of = head.description;
        frameBytes = of.BytesPerFrame();
        if (of.counted != sonavel::FrameCount::kUnknown) Reserve(of.frames * frameBytes);
        return sonavel::Done();
    }
    std::span<std::uint8_t> Room(std::size_t bytes) override {
        if (bytes > reserved - used) Reserve(used + used / 2 + bytes);
        return {block + used, bytes};
    }
    sonavel::Outcome Take(std::span<const std::uint8_t> frames) override {
        used += frames.size();
        return sonavel::Done();
    }

    std::size_t Frames() const { return used / frameBytes; }

  private:
    void Reserve(std::size_t bytes) {
        block = static_cast<std::uint8_t*>(std::realloc(block, bytes));
        if (block == nullptr) std::abort();
        sonavel::AdviseHugePages(block, bytes);
        reserved = bytes;
    }

    std::uint8_t* block = nullptr;
    std::size_t reserved = 0;
    std::size_t used = 0;
    std::size_t frameBytes = 1;
};

}  // namespace

int main(int count, char** words) {
    if (count != 2) return 2;
    sonavel::CodecSetup setup{sonavel::FindCodecPrograms(), {}};
    setup.programs.helper = SONAVEL_CODEC_PROGRAM;
    MemorySink sink;
    const auto decoded = sonavel::ChildCodecs(setup).Decode(words[1], sink);
    if (!decoded) {
        std::fprintf(stderr, "%s: %s\n", words[1], decoded.Reason().c_str());
        return 1;
    }
    std::printf("%zu frames\n", sink.Frames());
    return 0;
}
