// The readers of label files, one for each format, and what they share: a walk over lines and the
// labels that have been taken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/outcome.h"
#include "sound/codec_values.h"

namespace sonavel {

// The lines of a text, which end with LF, CR LF or CR.
class LabelLines {
  public:
    explicit LabelLines(std::string_view text) : rest_(text) {}

    // The next line without its end; nothing behind the last one.
    std::optional<std::string_view> Next();
    // Of the line that came last, from 1.
    std::size_t Number() const { return number_; }

  private:
    std::string_view rest_;
    std::size_t number_ = 0;
};

// "Line 3: expected START<tab>END<tab>NAME."
Outcome BadLine(std::size_t number, std::string_view expected);

// Collects labels, sorted by place in the end.
class LabelTaker {
  public:
    explicit LabelTaker(std::uint32_t samplesPerSecond) : rate_(samplesPerSecond) {}

    // Seconds from the start of the sound, 0 up to kMostLabelSeconds and in this order. False for
    // others, and when there are too many.
    bool Take(double start, double end, const std::string& name);
    std::vector<SoundChapter> Labels();

  private:
    std::uint32_t rate_;
    std::vector<SoundChapter> labels_;
};
inline constexpr double kMostLabelSeconds = 1e9;

// "12.500000", with "," for "." too; nothing for signs, other characters or numbers out of range.
std::optional<double> LabelSeconds(std::string_view text);
std::string_view WithoutBlanks(std::string_view text);

using LabelsRead = Result<std::vector<SoundChapter>>;
LabelsRead ReadLabelTrack(LabelLines& lines, LabelTaker& labels);
LabelsRead ReadLabelTable(std::string_view text, LabelTaker& labels);
LabelsRead ReadCaptions(LabelLines& lines, LabelTaker& labels);
LabelsRead ReadCueSheet(LabelLines& lines, LabelTaker& labels);

}  // namespace sonavel
