#include "codec/client/probe_report.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>

#include "codec/wire.h"

namespace sonavel {
namespace {

constexpr double kMostSeconds = 1e9;

// The value between the quotes, with what stands behind a backslash taken as it is, but for the
// signs of a line's end.
std::string Unescaped(std::string_view value) {
    if (value.starts_with('"')) value.remove_prefix(1);
    if (value.ends_with('"')) value.remove_suffix(1);
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        const char escaped = value[++i];
        text += escaped == 'n' ? '\n' : escaped == 'r' ? '\r' : escaped;
    }
    return text;
}

// Steps over `front`; false, and nothing is taken, when the text does not begin with it.
bool TakeFront(std::string_view& text, std::string_view front) {
    if (!text.starts_with(front)) return false;
    text.remove_prefix(front.size());
    return true;
}

std::optional<std::uint32_t> NumberOf(std::string_view text) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

double SecondsOf(std::string_view text) {
    double seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    const bool isGood = error == std::errc{} && std::isfinite(seconds) && seconds >= 0;
    return isGood ? std::min(seconds, kMostSeconds) : 0.0;
}

std::string LowerCase(std::string_view key) {
    std::string lower(key);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

struct ChapterTimes {
    double start = 0;
    double end = 0;
    std::string name;
};

class Collector {
  public:
    void TakeLine(std::string_view line) {
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) return;
        std::string_view key = line.substr(0, equals);
        const std::string_view value = line.substr(equals + 1);
        if (TakeFront(key, "streams.stream.0."))
            TakeOfStream(key, value);
        else if (TakeFront(key, "format."))
            TakeOfFormat(key, value);
        else if (TakeFront(key, "chapters.chapter."))
            TakeOfChapter(key, value);
    }

    std::optional<ProbeReport> Report() {
        if (report_.coding.empty()) return std::nullopt;
        for (auto& [index, times] : chapters_) {
            const auto start = static_cast<std::uint64_t>(std::llround(times.start * report_.rate));
            const auto end = static_cast<std::uint64_t>(std::llround(times.end * report_.rate));
            report_.chapters.push_back(
                {start, end > start ? end - start : 0, std::move(times.name)});
        }
        return std::move(report_);
    }

  private:
    void TakeOfStream(std::string_view key, std::string_view value) {
        const std::string text = Unescaped(value);
        if (key == "codec_name") report_.coding = text.substr(0, wire::kMostNameBytes);
        if (key == "sample_fmt") report_.sampleFormat = text.substr(0, wire::kMostNameBytes);
        if (key == "sample_rate") report_.rate = NumberOf(text).value_or(0);
        if (key == "channels") report_.channels = NumberOf(text).value_or(0);
        if (key == "bits_per_raw_sample") report_.bits = NumberOf(text).value_or(0);
        if (key == "duration") report_.seconds = SecondsOf(text);
        // Ogg files keep their tags with the stream, most others with the file.
        if (TakeFront(key, "tags.")) TakeTag(key, text);
    }
    void TakeOfFormat(std::string_view key, std::string_view value) {
        const std::string text = Unescaped(value);
        if (key == "duration" && report_.seconds <= 0) report_.seconds = SecondsOf(text);
        if (TakeFront(key, "tags.")) TakeTag(key, text);
    }
    void TakeOfChapter(std::string_view key, std::string_view value) {
        const auto index = NumberOf(key.substr(0, key.find('.')));
        if (!index || *index >= wire::kMostChapters) return;
        key.remove_prefix(std::min(key.size(), key.find('.')));
        ChapterTimes& chapter = chapters_[*index];
        const std::string text = Unescaped(value);
        if (key == ".start_time") chapter.start = SecondsOf(text);
        if (key == ".end_time") chapter.end = SecondsOf(text);
        if (key == ".tags.title") chapter.name = text.substr(0, wire::kMostChapterName);
    }

    void TakeTag(std::string_view key, const std::string& value) {
        // What the container says of itself is nothing of the sound's.
        constexpr std::string_view kOfContainer[] = {
            "major_brand",  "minor_version", "language", "compatible_brands",
            "handler_name", "vendor_id",     "encoder",  "creation_time"};
        if (std::ranges::find(kOfContainer, key) != std::end(kOfContainer)) return;
        if (report_.tags.size() == wire::kMostTags || value.size() > kMostTagBytes) return;
        tagBytes_ += key.size() + value.size();
        if (tagBytes_ > kMostTagBytesOfFile) return;
        report_.tags.push_back({LowerCase(key.substr(0, wire::kMostNameBytes)), value});
    }

    ProbeReport report_;
    std::map<std::uint32_t, ChapterTimes> chapters_;
    std::size_t tagBytes_ = 0;
};

}  // namespace

std::optional<ProbeReport> ParseProbeReport(std::string_view lines) {
    Collector collector;
    while (!lines.empty()) {
        const std::size_t size = std::min(lines.size(), lines.find('\n'));
        collector.TakeLine(lines.substr(0, size));
        lines.remove_prefix(std::min(lines.size(), size + 1));
    }
    return collector.Report();
}

}  // namespace sonavel
