// Captions (WebVTT) and cue sheets: labels that take several lines each.
#include <algorithm>

#include "exchange/label_readers.h"

namespace sonavel {
namespace {

constexpr std::string_view kArrow = "-->";
constexpr double kBase = 60;

// Numbers between colons, the last of them with decimals where they are allowed.
std::optional<double> ClockSeconds(std::string_view text) {
    double seconds = 0;
    int fields = 0;
    for (std::string_view rest = WithoutBlanks(text);; ++fields) {
        const std::size_t end = rest.find(':');
        const auto value = LabelSeconds(rest.substr(0, end));
        if (!value || fields > 2 || (fields > 0 && *value >= kBase)) return std::nullopt;
        seconds = seconds * kBase + *value;
        if (end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
    return fields > 0 ? std::optional(seconds) : std::nullopt;
}

// --- Captions

// Without the tags of voices and styles, and with the signs that entities stand for.
std::string PlainCaption(std::string_view text) {
    constexpr struct {
        std::string_view entity;
        std::string_view sign;
    } kEntities[] = {{"&amp;", "&"},  {"&lt;", "<"}, {"&gt;", ">"},
                     {"&nbsp;", " "}, {"&lrm;", ""}, {"&rlm;", ""}};
    std::string plain;
    while (!text.empty()) {
        std::size_t taken = 1;
        std::string_view sign = text.substr(0, 1);
        if (sign == "<") {
            taken = std::min(text.find('>'), text.size() - 1) + 1;
            sign = "";
        }
        for (const auto& known : kEntities)
            if (text.starts_with(known.entity)) taken = known.entity.size(), sign = known.sign;
        plain += sign;
        text.remove_prefix(taken);
    }
    return plain;
}

struct CaptionTimes {
    double start, end;
};

// Behind the end may stand where the caption is shown.
std::optional<CaptionTimes> TimesOf(std::string_view line) {
    const std::size_t arrow = line.find(kArrow);
    const auto start = ClockSeconds(line.substr(0, arrow));
    const std::string_view behind = WithoutBlanks(line.substr(arrow + kArrow.size()));
    const auto end = ClockSeconds(behind.substr(0, behind.find_first_of(" \t")));
    if (!start || !end) return std::nullopt;
    return CaptionTimes{*start, *end};
}

// The lines up to the next empty one, joined by blanks.
std::string CaptionName(LabelLines& lines) {
    std::string name;
    while (const auto line = lines.Next()) {
        if (line->empty()) break;
        if (!name.empty()) name += ' ';
        name += PlainCaption(*line);
    }
    return name;
}

// What lasts no longer than a millisecond is a point.
double EndOfCaption(const CaptionTimes& times) {
    constexpr double kPoint = 0.0015;
    return times.end >= times.start && times.end - times.start < kPoint ? times.start : times.end;
}

// --- Cue sheets

constexpr double kCueFrames = 75;
constexpr std::string_view kCueIndex = "INDEX NN MM:SS:FF, with 75 frames to a second";

std::string_view TakeWord(std::string_view& line) {
    line = WithoutBlanks(line);
    const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
    const std::string_view word = line.substr(0, end);
    line = WithoutBlanks(line.substr(end));
    return word;
}

std::string Unquoted(std::string_view text) {
    if (text.size() >= 2 && text.starts_with('"') && text.ends_with('"'))
        text = text.substr(1, text.size() - 2);
    return std::string(text);
}

std::optional<double> CueSeconds(std::string_view text) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos || text.find_first_of(".,") != std::string_view::npos)
        return std::nullopt;
    const auto seconds = ClockSeconds(text.substr(0, colon));
    const auto frames = LabelSeconds(text.substr(colon + 1));
    if (!seconds || !frames || *frames >= kCueFrames) return std::nullopt;
    return *seconds + *frames / kCueFrames;
}

class CueSheet {
  public:
    explicit CueSheet(LabelTaker& labels) : labels_(labels) {}

    // What was expected instead of the line; empty for a good one.
    std::string_view Take(std::string_view line) {
        const std::string_view command = TakeWord(line);
        if (command == "FILE" && ++files_ > 1)
            return "no further FILE, whose times would count from its own start";
        if (command == "TRACK") StartTrack(TakeWord(line));
        if (command == "TITLE" && inTrack_) title_ = Unquoted(line);
        return command == "INDEX" ? TakeIndex(line) : "";
    }
    // The title of a track may stand behind its index.
    bool Finish() {
        const bool taken = !start_ || labels_.Take(*start_, *start_, title_);
        start_.reset();
        return taken;
    }

  private:
    void StartTrack(std::string_view number) {
        isTaken_ = Finish();
        inTrack_ = true;
        title_ = "Track " + std::string(number);
    }

    std::string_view TakeIndex(std::string_view line) {
        const std::string_view number = TakeWord(line);
        const auto seconds = CueSeconds(TakeWord(line));
        if (!seconds || !inTrack_ || !isTaken_) return kCueIndex;
        // Index 00 is the gap before the track, those behind 01 are places inside it.
        if (number == "01" || number == "1") start_ = seconds;
        return "";
    }

    LabelTaker& labels_;
    std::optional<double> start_;
    std::string title_;
    int files_ = 0;
    bool inTrack_ = false;
    bool isTaken_ = true;
};

}  // namespace

LabelsRead ReadCaptions(LabelLines& lines, LabelTaker& labels) {
    const auto head = lines.Next();
    if (!head || !head->starts_with("WEBVTT")) return BadLine(1, "WEBVTT");
    bool skips = true;  // what stands behind the head, and notes and styles, up to an empty line
    while (const auto line = lines.Next()) {
        if (line->empty()) skips = false;
        const bool isNote =
            line->starts_with("NOTE") || line->starts_with("STYLE") || line->starts_with("REGION");
        skips = skips || isNote;
        if (skips || line->find(kArrow) == std::string_view::npos) continue;
        const std::size_t number = lines.Number();
        const auto times = TimesOf(*line);
        if (!times || !labels.Take(times->start, EndOfCaption(*times), CaptionName(lines)))
            return BadLine(number, "HH:MM:SS.mmm --> HH:MM:SS.mmm, in this order");
    }
    return labels.Labels();
}

LabelsRead ReadCueSheet(LabelLines& lines, LabelTaker& labels) {
    CueSheet sheet(labels);
    while (const auto line = lines.Next())
        if (const std::string_view expected = sheet.Take(*line); !expected.empty())
            return BadLine(lines.Number(), expected);
    if (!sheet.Finish()) return BadLine(lines.Number(), kCueIndex);
    return labels.Labels();
}

}  // namespace sonavel
