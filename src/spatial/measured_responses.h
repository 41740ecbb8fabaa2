// Head-related impulse responses as they were measured, of any number of directions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace sonavel {

struct MeasuredDirection {
    double azimuth = 0;    // degrees clockwise from straight ahead, any turn
    double elevation = 0;  // degrees, -90 to 90
    // The responses of both ears.
    std::uint32_t left = 0;
    std::uint32_t right = 0;
};

// Whether arrival times and loudness mean something beside those of other sets.
enum class Scale { kOfTheTable, kOfItsOwn };

struct MeasuredResponses {
    std::string name;
    Scale scale = Scale::kOfTheTable;
    double rate = 44100;  // frames a second
    std::size_t taps = 0;
    std::vector<float> values;   // one response after another; full scale 1
    std::vector<double> delays;  // frames of silence to be thought before each; may be empty
    std::vector<MeasuredDirection> directions;

    std::size_t Count() const { return taps > 0 ? values.size() / taps : 0; }
    std::span<const float> Response(std::size_t index) const {
        return std::span(values).subspan(index * taps, taps);
    }
    double DelayOf(std::size_t index) const { return index < delays.size() ? delays[index] : 0; }
};

// The table's, with the mirror images for the right ear.
MeasuredResponses TableResponses();

}  // namespace sonavel
