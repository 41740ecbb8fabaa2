// The command that saves the picture of a spectrogram.
#include <string>

#include "exchange/png_picture.h"
#include "script/command_rows.h"
#include "script/script_session.h"
#include "view/draw/spectrogram.h"
#include "view/draw/spectrum_palette.h"

namespace sonavel::script {
namespace {

constexpr int kGreatestExtent = 16384;
constexpr int kGreatestRange = 200;

FrequencyScale ScaleOf(const std::string& word) {
    if (word == "log") return FrequencyScale::kLogarithmic;
    return word == "mel" ? FrequencyScale::kMel : FrequencyScale::kLinear;
}

SpectrogramLook LookOf(const Arguments& words) {
    return {
        .windowFrames = static_cast<unsigned>(std::stoul(words.Text("window"))),
        .shape = words.Text("shape") == "hann" ? WindowShape::kHann : WindowShape::kBlackmanHarris,
        .scale = ScaleOf(words.Text("scale")),
        .rangeDecibels = static_cast<double>(words.Whole("range"))};
}

Outcome SavePicture(ScriptSession& session, const Arguments& words) {
    const CSoundView& view = session.View();
    if (view.FrameCount() == 0) return Failed("The document has no sound.");
    const Selection selection = view.State().GetSelection();
    const Result<SpectrogramPicture> picture = SpectrogramOf(
        view.Sound(), RangeToWorkOn(selection.start, selection.end, view.FrameCount()),
        static_cast<unsigned>(words.Whole("width")), static_cast<unsigned>(words.Whole("height")),
        LookOf(words));
    if (!picture) return picture.Ended();
    const bool isIce = words.Text("palette") == "ice";
    const auto& colours = ColoursOf(isIce ? SpectrumPalette::kIce : SpectrumPalette::kEmber);
    return WritePng(session.PathOf(words.Text("PATH")),
                    {picture->width, picture->height, colours, picture->levels});
}

ValueRule WindowLengths() {
    std::vector<std::string> lengths;
    for (unsigned frames = kLeastSpectrumWindow; frames <= kGreatestSpectrumWindow; frames *= 2)
        lengths.push_back(std::to_string(frames));
    return ValueRule::OneOf(std::move(lengths));
}

}  // namespace

std::vector<CommandRow> SpectrogramCommandRows() {
    const ValueRule extent = ValueRule::Whole(1, kGreatestExtent);
    return {
        {.name = "spectrogram",
         .does = "Save the spectrogram of the range as a PNG picture",
         .positional = {{"PATH", ValueRule::Path()}},
         .keys = {{"width", extent, "1200"},
                  {"height", extent, "400"},
                  {"window", WindowLengths(), "2048"},
                  {"shape", ValueRule::OneOf({"hann", "blackman-harris"}), "hann"},
                  {"scale", ValueRule::OneOf({"linear", "log", "mel"}), "linear"},
                  {"range", ValueRule::Whole(1, kGreatestRange), "90"},
                  {"palette", ValueRule::OneOf({"ember", "ice"}), "ember"}},
         .run = SavePicture},
    };
}

}  // namespace sonavel::script
