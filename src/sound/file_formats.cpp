#include "sound/file_formats.h"

#include <algorithm>

#include "sound/aiff_file.h"
#include "sound/au_file.h"
#include "sound/wav_file.h"

namespace sonavel {
namespace {

constexpr std::string_view kWavExtensions[] = {".wav"};
constexpr std::string_view kAuExtensions[] = {".au", ".snd"};
constexpr std::string_view kAiffExtensions[] = {".aiff", ".aif"};

constexpr FileFormat kFormats[] = {
    {"Wave Files", "Wave File (*.wav)", kWavExtensions, SavedMark::kSaved, ProbeWav, ReadWav,
     WriteWav, LossInWav},
    {"Next/Sun audio files", "Next/Sun audio file (*.au)", kAuExtensions, SavedMark::kSaved,
     ProbeAu, ReadAu, WriteAu, LossInAu},
    {"Apple audio files", "Apple audio files (*.aiff)", kAiffExtensions, SavedMark::kStaysModified,
     ProbeAiff, ReadAiff, WriteAiff, LossInAiff},
};

bool SameLetters(std::string_view a, std::string_view b) {
    const auto small = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    return std::ranges::equal(a, b, {}, small, small);
}

std::string UsualPattern(const FileFormat& format) {
    std::string pattern = "*";
    return pattern += format.extensions.front();
}

}  // namespace

std::span<const FileFormat> FileFormats() {
    return kFormats;
}

const FileFormat* FileFormatOfExtension(std::string_view extension) {
    for (const FileFormat& format : kFormats)
        for (const std::string_view known : format.extensions)
            if (SameLetters(known, extension)) return &format;
    return nullptr;
}

std::string ExtensionFromFirstDot(const std::filesystem::path& path) {
    const std::string text = path.string();
    const std::size_t dot = text.find('.');
    return dot == std::string::npos ? std::string() : text.substr(dot);
}

std::string AllExtensions(std::string_view before, std::string_view between) {
    std::string text;
    for (const FileFormat& format : kFormats)
        for (const std::string_view extension : format.extensions)
            (text += text.empty() ? "" : between).append(before).append(extension);
    return text;
}

// As people know it, with its stray blank and a pattern that no reader stands behind.
std::string SaveFilter() {
    std::string all, each;
    for (const FileFormat& format : kFormats) {
        const std::string pattern = UsualPattern(format);
        (all += all.empty() ? "" : ";") += pattern;
        each.append(format.saveName).append("|").append(pattern).append("|");
    }
    return "Audio Files (" + all + ") |" + all + ";*.mp3|" + each + "All Files (*.*)|*.*||";
}

}  // namespace sonavel
