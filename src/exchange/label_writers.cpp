// The label formats as they are written.
#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "exchange/label_files.h"

namespace sonavel {
namespace {

constexpr std::uint64_t kMilliseconds = 1000;
constexpr std::uint64_t kCueFrames = 75;
constexpr std::uint64_t kMinute = 60;

template <class... Values>
std::string Print(const char* pattern, Values... values) {
    char text[128];
    std::snprintf(text, sizeof text, pattern, values...);
    return text;
}

std::string OnOneLine(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = ' ';
    return text;
}

// A place in units of a part of a second, to the nearest.
std::uint64_t InUnits(std::uint64_t frame, std::uint32_t rate, std::uint64_t unitsPerSecond) {
    return frame / rate * unitsPerSecond + (frame % rate * unitsPerSecond + rate / 2) / rate;
}

std::string Seconds(std::uint64_t frame, std::uint32_t rate) {
    constexpr std::uint64_t kMicroseconds = 1000000;
    const std::uint64_t units = InUnits(frame, rate, kMicroseconds);
    return Print("%" PRIu64 ".%06" PRIu64, units / kMicroseconds, units % kMicroseconds);
}

std::string Clock(std::uint64_t milliseconds) {
    const std::uint64_t seconds = milliseconds / kMilliseconds;
    return Print("%02" PRIu64 ":%02" PRIu64 ":%02" PRIu64 ".%03" PRIu64,
                 seconds / kMinute / kMinute, seconds / kMinute % kMinute, seconds % kMinute,
                 milliseconds % kMilliseconds);
}

std::uint64_t EndOf(const SoundChapter& label) {
    return label.startFrame + label.frames;
}

std::string LabelTrackLine(const SoundChapter& label, std::uint32_t rate) {
    return Seconds(label.startFrame, rate) + '\t' + Seconds(EndOf(label), rate) + '\t' +
           OnOneLine(label.name) + '\n';
}

std::string TableField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + '"';
}

std::string TableLine(const SoundChapter& label, std::uint32_t rate) {
    return TableField(label.name) + ',' + Seconds(label.startFrame, rate) + ',' +
           Seconds(EndOf(label), rate) + '\n';
}

std::string CaptionText(const std::string& name) {
    std::string text;
    for (const char c : OnOneLine(name)) {
        if (c == '&')
            text += "&amp;";
        else if (c == '<')
            text += "&lt;";
        else if (c == '>')
            text += "&gt;";
        else
            text += c;
    }
    return text;
}

// A caption has to end behind its start, so a point lasts a millisecond.
std::string Caption(const SoundChapter& label, std::uint32_t rate) {
    const std::uint64_t start = InUnits(label.startFrame, rate, kMilliseconds);
    const std::uint64_t end = std::max(InUnits(EndOf(label), rate, kMilliseconds), start + 1);
    return Clock(start) + " --> " + Clock(end) + '\n' + CaptionText(label.name) + "\n\n";
}

// Cue sheets have no way to write a quote inside quotes.
std::string CueQuoted(const std::string& text) {
    std::string quoted = OnOneLine(text);
    std::ranges::replace(quoted, '"', '\'');
    return '"' + quoted + '"';
}

std::string CueTrack(std::size_t number, const SoundChapter& label, std::uint32_t rate) {
    const std::uint64_t place = InUnits(label.startFrame, rate, kCueFrames);
    return Print("  TRACK %02zu AUDIO\n", number) + "    TITLE " + CueQuoted(label.name) + '\n' +
           Print("    INDEX 01 %02" PRIu64 ":%02" PRIu64 ":%02" PRIu64 "\n",
                 place / kCueFrames / kMinute, place / kCueFrames % kMinute, place % kCueFrames);
}

}  // namespace

std::string WriteLabels(LabelFormat format, const std::vector<SoundChapter>& labels,
                        const LabelledSound& sound) {
    const std::uint32_t rate = sound.samplesPerSecond;
    std::string text;
    if (format == LabelFormat::kTable) text = "name,start,end\n";
    if (format == LabelFormat::kCaptions) text = "WEBVTT\n\n";
    if (format == LabelFormat::kCueSheet) text = "FILE " + CueQuoted(sound.title) + " WAVE\n";
    std::size_t number = 0;
    for (const SoundChapter& label : labels) {
        ++number;
        if (format == LabelFormat::kLabelTrack) text += LabelTrackLine(label, rate);
        if (format == LabelFormat::kTable) text += TableLine(label, rate);
        if (format == LabelFormat::kCaptions) text += Caption(label, rate);
        if (format == LabelFormat::kCueSheet) text += CueTrack(number, label, rate);
    }
    return text;
}

}  // namespace sonavel
