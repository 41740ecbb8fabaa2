// Documents with random sounds, and the plain formulas' view of them: one value for each sample.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "document/document_fixture.h"
#include "effects/effect_runner.h"

namespace sonavel::testing {

using Channel = std::vector<float>;

inline Channel ValuesOf(const CWave& sound, unsigned channel) {
    Channel values(sound.GetFrameCount());
    for (std::uint32_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<float>(sound.GetSample(channel, i));
    return values;
}

// What SetSample makes of a value.
inline int Stored(double value, unsigned bits) {
    const auto whole = static_cast<std::int64_t>(value);
    if (bits == 16) return static_cast<std::int16_t>(whole);
    return 128 - static_cast<std::uint8_t>(128 - whole);
}

inline int QuantizedLiterally(double x) {
    const double t = std::trunc(x);
    if (x - t <= 0.5) return static_cast<int>(t);
    const double sign = x > 0 ? 1 : -1;
    return static_cast<int>(std::trunc(sign * (std::abs(x) + 1.0) + 127.0));
}

class EffectTest : public DocumentTest {
  protected:
    static std::vector<double> StartValuesOf(const Effect& effect) {
        std::vector<double> values;
        for (const EffectParameter& parameter : effect.parameters)
            values.push_back(parameter.start);
        return values;
    }
    EffectTarget Target(CSoundDoc& document, std::uint32_t start = 0, std::uint32_t end = 0) {
        return {document, start, end, state_};
    }
    // By the effect's name, with the values that its dialog shows, in their order.
    static Outcome Apply(const char* name, const EffectTarget& target,
                         const std::vector<double>& values) {
        return ApplyEffect(*FindEffect(name), target, values);
    }
    static Outcome Preview(const char* name, const EffectTarget& target,
                           const std::vector<double>& values) {
        return PreviewEffect(*FindEffect(name), target, values, PreviewPlay::kNo);
    }

    EffectState state_;
};

}  // namespace sonavel::testing
