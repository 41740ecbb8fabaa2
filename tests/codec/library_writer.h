// Sound files as the sound library itself writes them, for tests to read back.
#pragma once

#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <vector>

namespace sonavel {

// Writes samples that are left-aligned in 32 bits; `before` may add to the file first.
inline void WriteByLibrary(const std::filesystem::path& path, int format, int channels, int rate,
                           const std::vector<std::int32_t>& samples,
                           const std::function<void(SNDFILE*)>& before = {}) {
    SF_INFO info{};
    info.format = format;
    info.channels = channels;
    info.samplerate = rate;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << std::hex << format << " " << sf_strerror(nullptr);
    if (before) before(file);
    // Its Vorbis encoder overflows the stack with much at once.
    const auto count = static_cast<sf_count_t>(samples.size());
    const sf_count_t most = sf_count_t{4096} * channels;
    for (sf_count_t at = 0; at < count; at += most)
        EXPECT_GT(sf_write_int(file, samples.data() + at, std::min(most, count - at)), 0);
    sf_close(file);
}

// All samples as floats, as the library reads them from the first to the last.
inline std::vector<float> ReadByLibrary(const std::filesystem::path& path) {
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    std::vector<float> samples, piece(65536 * 2);
    sf_count_t got = 0;
    while (file != nullptr &&
           (got = sf_readf_float(file, piece.data(), 65536 * 2 / info.channels)) > 0)
        samples.insert(samples.end(), piece.begin(), piece.begin() + got * info.channels);
    if (file != nullptr) sf_close(file);
    return samples;
}

}  // namespace sonavel
