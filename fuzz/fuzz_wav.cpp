// Fuzzes the WAV reader and the probe before it.
#include "read_fuzzed.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sonavel::ReadFuzzed(data, size, [](const std::filesystem::path& path, sonavel::CWave& wave) {
        return wave.IsPCM(path) && wave.Open(path, sonavel::WavOpenMode::kReadAll);
    });
    return 0;
}
