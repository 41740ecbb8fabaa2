// The ruler of frequencies beside a spectrogram as plain numbers: ticks and labels in client
// coordinates.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "view/draw/spectrogram.h"
#include "view/state/rectangle.h"

namespace sonavel {

struct FrequencyRulerRequest {
    std::span<const Rectangle> lanes;  // from top to bottom
    FrequencyScale scale = FrequencyScale::kLinear;
    double highest = 0;   // Hz, at the top of a lane
    int labelHeight = 0;  // the rows that a label needs for itself
};

struct FrequencyTick {
    int y = 0;
    double frequency = 0;  // Hz
    std::string label;     // empty without one; labels never touch and lie within their lane
};

// One, two, five and the numbers between them at every power of ten, the round ones labelled first
// where there is not room for all; from the top of each lane down. Nothing of lanes without rows or
// below 100 Hz.
std::vector<FrequencyTick> LayOutFrequencyRuler(const FrequencyRulerRequest& request);

// Where a frequency lies in a lane, and what a row of it stands for; y in client coordinates.
int RowOfFrequency(const Rectangle& lane, FrequencyScale scale, double frequency, double highest);
double FrequencyOfRow(const Rectangle& lane, FrequencyScale scale, int y, double highest);

}  // namespace sonavel
