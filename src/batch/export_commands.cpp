// The command that exports the active document.
#include <algorithm>

#include "batch/batch_session.h"
#include "batch/command_rows.h"
#include "exchange/sound_export.h"

namespace sonavel::batch {
namespace {

std::optional<SoundFileKind> KindOf(const std::filesystem::path& path, const Arguments& words) {
    return words.Has("format") ? ExportKindOf(std::string_view(words.Text("format")))
                               : ExportKindOf(path);
}

EncodedDepth DepthOf(const std::string& word) {
    if (word == "8") return EncodedDepth::k8;
    if (word == "16") return EncodedDepth::k16;
    return word == "24" ? EncodedDepth::k24 : EncodedDepth::kFloat32;
}

std::uint32_t FrameOf(const Arguments& words, std::string_view key, std::uint32_t otherwise) {
    if (!words.Has(key)) return otherwise;
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(words.Whole(key), 0, 0xFFFFFFFF));
}

ExportPart PartOf(const Arguments& words, std::string_view key) {
    return words.Switch(key) ? ExportPart::kWrite : ExportPart::kLeaveOut;
}

Outcome Export(BatchSession& session, const Arguments& words) {
    CSoundDoc& document = session.Document();
    const std::filesystem::path path = AbsolutePath(words.Text("PATH"));
    const std::optional<SoundFileKind> kind = KindOf(path, words);
    if (!kind) return Failed("The extension names no format that can be exported.");
    const CWave& sound = document.Sound();
    ExportChoice choice;
    choice.kind = *kind;
    choice.depth = words.Has("bits") ? DepthOf(words.Text("bits"))
                                     : ExportDepth(*kind, sound, document.Origin());
    choice.quality = static_cast<std::uint32_t>(words.Whole("quality"));
    choice.markers = PartOf(words, "markers");
    choice.tags = PartOf(words, "tags");
    choice.frames = {FrameOf(words, "from", 0), FrameOf(words, "to", sound.GetFrameCount())};
    return ExportSound(path, sound, document.Extras(), choice, &session.Codecs(),
                       document.Sound().FileHost());
}

}  // namespace

std::vector<CommandRow> ExportCommandRows() {
    return {
        {.name = "export",
         .does = "Write a copy of the sound, or of the frames from F to F, in any format",
         .positional = {{"PATH", ValueRule::Path()}},
         .keys = {{"format", ValueRule::OneOf({"wav", "aiff", "au", "flac", "ogg", "opus", "mp3",
                                               "w64", "caf"})},
                  {"bits", ValueRule::OneOf({"8", "16", "24", "float"})},
                  {"quality", ValueRule::Whole(0, kBestQuality), "5"},
                  {"markers", ValueRule::Switch(), "on"},
                  {"tags", ValueRule::Switch(), "on"},
                  {"from", ValueRule::Position()},
                  {"to", ValueRule::Position()}},
         .run = Export},
    };
}

}  // namespace sonavel::batch
