#include "exchange/region_export.h"

#include <algorithm>

#include "exchange/foreign_text.h"
#include "exchange/label_readers.h"
#include "platform/target_folder.h"

namespace sonavel {
namespace {

// --- One progress for all files

constexpr int kFileSteps = 100;

// Stands for the window of one file and moves that of all.
class PartOfProgress final : public ProgressWindow {
  public:
    PartOfProgress(ProgressWindow& whole, int start) : whole_(whole), start_(start) {}

    void SetRange(int lowest, int highest) override {
        lowest_ = lowest;
        highest_ = std::max(highest, lowest + 1);
    }
    void SetPosition(int position) override {
        const std::int64_t done = std::clamp(position, lowest_, highest_) - std::int64_t{lowest_};
        const std::int64_t share = done * kFileSteps / (std::int64_t{highest_} - lowest_);
        whole_.SetPosition(start_ + static_cast<int>(share));
    }
    bool Poll() override { return whole_.Poll(); }

  private:
    ProgressWindow& whole_;
    int start_;
    int lowest_ = 0;
    int highest_ = kFileSteps;
};

class OneProgress final : public ProgressFactory {
  public:
    OneProgress(ProgressFactory& real, std::size_t files)
        : whole_(real.CreateProgress("Export Regions")) {
        whole_->SetRange(0, static_cast<int>(files) * kFileSteps);
    }

    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view) override {
        return std::make_unique<PartOfProgress>(*whole_, start_);
    }
    void NextFile() { whole_->SetPosition(start_ += kFileSteps); }

  private:
    std::unique_ptr<ProgressWindow> whole_;
    int start_ = 0;
};

// --- Parts

void AddPart(std::vector<NamedPart>& parts, FrameRange frames, FrameRange within,
             const std::string& name) {
    const FrameRange cut{std::max(frames.start, within.start), std::min(frames.end, within.end)};
    if (!cut.IsEmpty()) parts.push_back({cut, name});
}

// The beginnings of the stretches between markers; the first of markers at one place names it.
std::vector<NamedPart> StretchStarts(const std::vector<SoundChapter>& markers,
                                     const std::string& title) {
    std::vector<NamedPart> starts;
    if (markers.empty() || markers.front().startFrame > 0) starts.push_back({{0, 0}, title});
    for (const SoundChapter& marker : markers) {
        const auto at = static_cast<std::uint32_t>(marker.startFrame);
        if (starts.empty() || starts.back().frames.start != at)
            starts.push_back({{at, at}, marker.name});
    }
    return starts;
}

// --- Names

constexpr std::size_t kMostNameBytes = 200;  // of the 255 that file systems allow

std::string Number(std::size_t number, std::size_t count) {
    const std::size_t width = std::max<std::size_t>(std::to_string(count).size(), 2);
    std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

// Signs that some file system or other gives a meaning to, and what cannot be seen.
std::string AsFileName(std::string_view text) {
    constexpr std::string_view kSigns = "/\\:*?\"<>|";
    std::string name;
    for (const char c : text) {
        const bool isBad = static_cast<unsigned char>(c) < ' ' || c == '\x7F' ||
                           kSigns.find(c) != std::string_view::npos;
        name += isBad ? '_' : c;
    }
    return name;
}

struct PatternWords {
    std::string number, name, title;
};

Result<std::string> Filled(std::string_view pattern, const PatternWords& words) {
    std::string filled;
    for (std::size_t at = 0; at < pattern.size();) {
        const std::size_t close = pattern.find('}', at);
        if (pattern[at] != '{' || close == std::string_view::npos) {
            filled += pattern[at++];
            continue;
        }
        const std::string_view word = pattern.substr(at + 1, close - at - 1);
        if (word == "number")
            filled += words.number;
        else if (word == "name")
            filled += words.name;
        else if (word == "title")
            filled += words.title;
        else
            return Failed("The pattern knows {number}, {name} and {title}, not {" +
                          std::string(word) + "}.");
        at = close + 1;
    }
    return filled;
}

Outcome CheckNames(const std::vector<std::string>& names) {
    std::vector<std::string> sorted = names;
    std::ranges::sort(sorted);
    for (const std::string& name : names)
        if (name.empty() || name.starts_with('.'))
            return Failed("The pattern makes no file name of \"" + name + "\".");
    const auto twice = std::ranges::adjacent_find(sorted);
    if (twice == sorted.end()) return Done();
    return Failed("Two of the files would be named \"" + *twice +
                  "\"; with {number} in the pattern they differ.");
}

}  // namespace

std::vector<NamedPart> PartsOf(const Sound& sound, SplitAt split, FrameRange within,
                               const std::string& title) {
    const std::vector<SoundChapter> markers = ChaptersOf(sound.Markers());
    const FrameRange bounds = within.ClampedTo(sound.GetFrameCount());
    std::vector<NamedPart> parts;
    if (split == SplitAt::kRegions) {
        for (const SoundChapter& marker : markers) {
            const std::uint64_t end =
                std::min<std::uint64_t>(marker.startFrame + marker.frames, sound.GetFrameCount());
            AddPart(
                parts,
                {static_cast<std::uint32_t>(marker.startFrame), static_cast<std::uint32_t>(end)},
                bounds, marker.name);
        }
        return parts;
    }
    const std::vector<NamedPart> starts = StretchStarts(markers, title);
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const bool isLast = i + 1 == starts.size();
        const std::uint32_t end = isLast ? sound.GetFrameCount() : starts[i + 1].frames.start;
        AddPart(parts, {starts[i].frames.start, end}, bounds, starts[i].name);
    }
    return parts;
}

Result<std::vector<std::string>> PartFileNames(const std::string& pattern,
                                               const std::vector<NamedPart>& parts,
                                               const std::string& title) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        Result<std::string> filled =
            Filled(pattern, {Number(i + 1, parts.size()), parts[i].name, title});
        if (!filled) return filled.Ended();
        // Blanks at a name's ends are overlooked where it is typed, and lost on some file systems.
        names.emplace_back(WithoutBlanks(Utf8Beginning(AsFileName(*filled), kMostNameBytes)));
    }
    if (Outcome good = CheckNames(names); !good) return good;
    return names;
}

std::string ExtensionOf(SoundFileKind kind) {
    return "." + std::string(ExportNameOf(kind));
}

std::filesystem::path PathOfPart(const RegionExport& regions, std::size_t part) {
    return regions.folder / (regions.names[part] + ExtensionOf(regions.choice.kind));
}

std::vector<std::filesystem::path> ExistingParts(const RegionExport& regions) {
    std::vector<std::filesystem::path> existing;
    for (std::size_t part = 0; part < regions.names.size(); ++part) {
        std::error_code ignored;
        const std::filesystem::path path = PathOfPart(regions, part);
        if (std::filesystem::exists(std::filesystem::symlink_status(path, ignored)))
            existing.push_back(path);
    }
    return existing;
}

Outcome ExportRegions(const RegionExport& regions, const Sound& sound, const SoundExtras& extras,
                      const SoundCodecs* codecs, const TransferHost& host,
                      const PartWritten& written) {
    if (regions.existing == ExistingFiles::kRefuse)
        if (const auto existing = ExistingParts(regions); !existing.empty())
            return Failed("There is a file \"" + existing.front().string() +
                          "\" already; nothing was written.");
    if (Outcome made = MakeTargetFolder(regions.folder); !made) return made;
    TransferHost shared = host;
    std::optional<OneProgress> progress;
    if (host.progress) shared.progress = &progress.emplace(*host.progress, regions.parts.size());
    ExportChoice choice = regions.choice;
    for (std::size_t part = 0; part < regions.parts.size(); ++part) {
        choice.frames = regions.parts[part].frames;
        const std::filesystem::path path = PathOfPart(regions, part);
        if (Outcome done = ExportSound(path, sound, extras, choice, codecs, shared); !done)
            return done;
        if (progress) progress->NextFile();
        written(path, choice.frames);
    }
    return Done();
}

}  // namespace sonavel
