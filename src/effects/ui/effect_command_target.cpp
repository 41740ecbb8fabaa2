#include "effects/ui/effect_command_target.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "effects/effect_runner.h"
#include "effects/ui/convert_dialog.h"
#include "effects/ui/dynamics_dialog.h"
#include "effects/ui/equalizer_dialog.h"
#include "effects/ui/fade_dialog.h"
#include "effects/ui/flanger_dialog.h"
#include "effects/ui/modulator_dialog.h"
#include "effects/ui/normalise_dialog.h"
#include "effects/ui/panpot_dialog.h"
#include "effects/ui/pitch_dialog.h"
#include "effects/ui/plain_effect_dialog.h"
#include "effects/ui/reverb_dialog.h"
#include "effects/ui/tempo_dialog.h"
#include "effects/ui/volume_dialog.h"

namespace sonavel {

namespace {

constexpr CommandInfo kOtherRows[] = {
    {effect_command::kFadeInAtOnce, "", "Fade In at Once", "Ctrl+Alt+I",
     "Raise the sound from silence by the last curve"},
    {effect_command::kFadeOutAtOnce, "", "Fade Out at Once", "Ctrl+Alt+O",
     "Lower the sound to silence by the last curve"},
    {effect_command::kLearnNoise, "", "&Learn Noise", "",
     "Learn from the selection the noise that is to be reduced"},
    {effect_command::kConvert, "", "&Convert...", "",
     "Give the sound another rate, other bits or channels"},
    {effect_command::kLiveAtOnce, "", "Live &at Once", "",
     "Hear effects live as soon as their dialogs open"},
    {effect_command::kOpenPreview, "", "&Open Preview as New Document", "",
     "Open a copy of what was last previewed as a new sound"}};

// What is done every day has a key.
const char* KeysOf(const Effect& effect) {
    return effect.commandId == effect_command::kNormalise ? "Ctrl+Alt+N" : "";
}

// Without names for scripts, which run effects by name and values instead.
std::vector<CommandInfo> MakeRows() {
    std::vector<CommandInfo> rows;
    for (const Effect& effect : Effects())
        rows.push_back({effect.commandId, "", effect.menuText, KeysOf(effect), effect.prompt});
    rows.insert(rows.end(), std::begin(kOtherRows), std::end(kOtherRows));
    return rows;
}

const CommandInfo* Find(int id) {
    const auto rows = EffectCommands::Rows();
    const auto row = std::ranges::find(rows, id, &CommandInfo::id);
    return row == rows.end() ? nullptr : &*row;
}

}  // namespace

std::unique_ptr<EffectDialog> MakeEffectDialog(int commandId, const EffectDialogContext& context,
                                               QWidget* parent) {
    switch (commandId) {
        case effect_command::kVolume:
            return std::make_unique<CVolumeDlg>(context, parent);
        case effect_command::kPanpot:
            return std::make_unique<CPanpotDlg>(context, parent);
        case effect_command::kReverb:
            return std::make_unique<CReverbDlg>(context, parent);
        case effect_command::kFlanger:
            return std::make_unique<CFlangerDlg>(context, parent);
        case effect_command::kModulator:
            return std::make_unique<CModulatorDlg>(context, parent);
        case effect_command::kDynamics:
            return std::make_unique<CDynamicsDlg>(context, parent);
        case effect_command::kEqualizer:
            return std::make_unique<CGraphicEqDlg>(context, parent);
        case effect_command::kFadeIn:
            return std::make_unique<CFadeDlg>(FadePicture::Way::kIn, context, parent);
        case effect_command::kFadeOut:
            return std::make_unique<CFadeDlg>(FadePicture::Way::kOut, context, parent);
        case effect_command::kNormalise:
            return std::make_unique<CNormaliseDlg>(context, parent);
        case effect_command::kTempo:
            return std::make_unique<CTempoDlg>(context, parent);
        case effect_command::kPitch:
            return std::make_unique<CPitchDlg>(context, parent);
        default:
            break;
    }
    const auto effect = std::ranges::find(Effects(), commandId, &Effect::commandId);
    if (effect == Effects().end() || effect->parameters.empty()) return nullptr;
    return std::make_unique<PlainEffectDialog>(context, *effect, parent);
}

std::span<const CommandInfo> EffectCommands::Rows() {
    static const std::vector<CommandInfo> kRows = MakeRows();
    return kRows;
}

bool EffectCommands::HandlesCommand(int id) const {
    return Find(id) != nullptr;
}

CommandState EffectCommands::StateOfCommand(int id) const {
    if (id == effect_command::kLiveAtOnce) return {true, host_.memory.beginsLive};
    const CSoundView* view = host_.activeView();
    if (!view || view->Sound().IsRecording()) return {false, false};
    const CSoundDoc& document = view->Document();
    if (id == effect_command::kOpenPreview) return {document.Preview().HasData(), false};
    return {HandlesCommand(id) && document.Sound().HasData(), false};
}

std::string EffectCommands::MenuTextOfCommand(int id) const {
    const CommandInfo* row = Find(id);
    return row ? row->menuText : "";
}

Outcome EffectCommands::RunCommand(int id) {
    if (!StateOfCommand(id).enabled) return Failed(failure::kNotOffered);
    if (id == effect_command::kLiveAtOnce) {
        host_.memory.beginsLive = !host_.memory.beginsLive;
        return Done();
    }
    CSoundView& view = *host_.activeView();
    const Selection at = view.State().GetSelection();
    switch (id) {
        case effect_command::kOpenPreview:
            return OpenPreview(view.Document());
        case effect_command::kFadeInAtOnce:
            return FadeAtOnce("fade-in", view);
        case effect_command::kFadeOutAtOnce:
            return FadeAtOnce("fade-out", view);
        case effect_command::kLearnNoise:
            return LearnNoiseFrom({view.Document(), at.start, at.end, host_.state});
        case effect_command::kConvert:
            return AskConversion(view, host_.window);
        default:
            return RunEffect(id, view);
    }
}

Outcome EffectCommands::RunEffect(int id, CSoundView& view) {
    const auto dialog = MakeEffectDialog(id, {view, host_.state, host_.memory}, host_.window);
    if (dialog && host_.memory.beginsLive) dialog->BeginLive();
    if (dialog) return dialog->exec() == QDialog::Accepted ? dialog->Apply() : Cancelled();
    const auto effect = std::ranges::find(Effects(), id, &Effect::commandId);
    return ApplyEffectTo(view, host_.state, *effect, {});
}

// By what the dialog was last left with.
Outcome EffectCommands::FadeAtOnce(const char* name, CSoundView& view) {
    const Effect& effect = *FindEffect(name);
    const auto last = host_.memory.values.find(effect.name);
    std::vector<double> values;
    if (last != host_.memory.values.end()) values = last->second;
    if (values.empty()) values.push_back(effect.parameters.front().start);
    return ApplyEffectTo(view, host_.state, effect, values);
}

Outcome EffectCommands::OpenPreview(const CSoundDoc& document) {
    Result<Sound> copy = document.Preview().Copy();
    if (!copy) return copy.Ended();
    host_.openSound(std::move(*copy), document.PreviewTitlePrefix());
    return Done();
}

}  // namespace sonavel
