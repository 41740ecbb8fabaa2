// The command that exports the active document, and the one that exports its regions.
#include <algorithm>
#include <ostream>

#include "exchange/region_export.h"
#include "exchange/sound_export.h"
#include "platform/code_page_949.h"
#include "script/command_rows.h"
#include "script/report_text.h"
#include "script/script_session.h"

namespace sonavel::script {
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

ExportChoice ChoiceOf(const CSoundDoc& document, SoundFileKind kind, const Arguments& words) {
    const CWave& sound = document.Sound();
    ExportChoice choice;
    choice.kind = kind;
    choice.depth = words.Has("bits") ? DepthOf(words.Text("bits"))
                                     : ExportDepth(kind, sound, document.Origin());
    choice.quality = static_cast<std::uint32_t>(words.Whole("quality"));
    choice.markers = PartOf(words, "markers");
    choice.tags = PartOf(words, "tags");
    choice.frames = {FrameOf(words, "from", 0), FrameOf(words, "to", sound.GetFrameCount())};
    return choice;
}

Outcome Export(ScriptSession& session, const Arguments& words) {
    CSoundDoc& document = session.Document();
    const std::filesystem::path path = session.PathOf(words.Text("PATH"));
    const std::optional<SoundFileKind> kind = KindOf(path, words);
    if (!kind) return Failed("The extension names no format that can be exported.");
    document.NoteWriting(path);
    return ExportSound(path, document.Sound(), document.Extras(), ChoiceOf(document, *kind, words),
                       &session.Codecs(), document.Sound().FileHost());
}

Result<RegionExport> RegionsOf(ScriptSession& session, const Arguments& words) {
    const CSoundDoc& document = session.Document();
    RegionExport regions;
    regions.folder = session.PathOf(words.Text("FOLDER"));
    regions.choice =
        ChoiceOf(document, *ExportKindOf(std::string_view(words.Text("format"))), words);
    const std::string title = std::filesystem::path(DisplayText(document.Title())).stem().string();
    const SplitAt split = words.Switch("between-markers") ? SplitAt::kMarkers : SplitAt::kRegions;
    regions.parts = PartsOf(document.Sound(), split, regions.choice.frames, title);
    if (regions.parts.empty()) return Failed("There are no regions to export.");
    Result<std::vector<std::string>> names =
        PartFileNames(words.Text("pattern"), regions.parts, title);
    if (!names) return names.Ended();
    regions.names = *std::move(names);
    if (words.Switch("overwrite")) regions.existing = ExistingFiles::kReplace;
    return regions;
}

Outcome ExportAllRegions(ScriptSession& session, const Arguments& words) {
    CSoundDoc& document = session.Document();
    const Result<RegionExport> regions = RegionsOf(session, words);
    if (!regions) return regions.Ended();
    document.NoteWriting(regions->folder / "regions");
    return ExportRegions(
        *regions, document.Sound(), document.Extras(), &session.Codecs(),
        document.Sound().FileHost(), [&](const std::filesystem::path& path, FrameRange frames) {
            session.Out() << "wrote " << QuotedText(path.string()) << " from=" << frames.start
                          << " to=" << frames.end << '\n';
        });
}

// The keys of every export, with the format that holds without the word.
std::vector<KeyRule> ExportKeys(std::string format) {
    return {{"format",
             ValueRule::OneOf({"wav", "aiff", "au", "flac", "ogg", "opus", "mp3", "w64", "caf"}),
             std::move(format)},
            {"bits", ValueRule::OneOf({"8", "16", "24", "float"})},
            {"quality", ValueRule::Whole(0, kBestQuality), "5"},
            {"markers", ValueRule::Switch(), "on"},
            {"tags", ValueRule::Switch(), "on"},
            {"from", ValueRule::Position()},
            {"to", ValueRule::Position()}};
}

std::vector<KeyRule> RegionKeys() {
    std::vector<KeyRule> keys = {{"pattern", ValueRule::Text(), "{number}_{name}"},
                                 {"between-markers", ValueRule::Switch(), "off"},
                                 {"overwrite", ValueRule::Switch(), "off"}};
    for (KeyRule& key : ExportKeys("wav")) keys.push_back(std::move(key));
    return keys;
}

}  // namespace

std::vector<CommandRow> ExportCommandRows() {
    return {
        {.name = "export",
         .does = "Write a copy of the sound, or of the frames from F to F, in any format",
         .positional = {{"PATH", ValueRule::Path()}},
         .keys = ExportKeys(""),
         .run = Export},
        {.name = "export-regions",
         .does = "Write each region, or each stretch between markers, to a file of its own",
         .positional = {{"FOLDER", ValueRule::Path()}},
         .keys = RegionKeys(),
         .run = ExportAllRegions},
    };
}

}  // namespace sonavel::script
