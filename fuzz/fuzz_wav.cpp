// Fuzzes the WAV reader and the probe before it.
#include "read_fuzzed.h"
#include "sound/wav_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto read = [](const std::filesystem::path& path, const sonavel::TransferHost& host) {
        const auto info = sonavel::ProbeWav(path);
        return info ? sonavel::ReadWav(path, host) : info.Ended();
    };
    sonavel::ReadFuzzed(data, size, read);
    return 0;
}
