#include "exchange/plain_samples.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/test_files.h"

namespace sonavel {
namespace {

// Of every count, so that the ends of whatever is taken side by side are met.
TEST(PlainSamples, DeepIntegersOfEitherOrderAreExact) {
    const std::int32_t numbers[] = {0,         1,        -1,     0x7FFFFF, -0x800000, 0x010203,
                                    -0x010203, 0x00FF00, -65536, 0x7F0080, 255};
    for (const std::uint32_t bytes : {3u, 4u})
        for (const ByteOrder order : {ByteOrder::kLittle, ByteOrder::kBig})
            for (std::size_t count = 0; count <= std::size(numbers); ++count) {
                FileBytes file;
                for (std::size_t i = 0; i < count; ++i) {
                    const std::uint32_t top = static_cast<std::uint32_t>(numbers[i]) << 8;
                    for (std::uint32_t b = 0; b < bytes; ++b) {
                        const std::uint32_t place = order == ByteOrder::kBig ? b : bytes - 1 - b;
                        file.push_back(static_cast<std::uint8_t>(top >> (24 - 8 * place)));
                    }
                }
                FileBytes samples(count * sizeof(float));
                UnpackSamples(file, {FileDepth::kInteger, bytes, order, EightBitZero::kAt128},
                              samples);
                for (std::size_t i = 0; i < count; ++i) {
                    float value = 0;
                    std::memcpy(&value, &samples[i * sizeof value], sizeof value);
                    EXPECT_EQ(value, static_cast<float>(numbers[i]) / 0x1p23f)
                        << bytes << " bytes, sample " << i << " of " << count;
                }
            }
}

}  // namespace
}  // namespace sonavel
