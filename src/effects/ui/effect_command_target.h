// The effect commands of the window: each opens its dialog on the active sound, and one makes a
// document of what was last previewed.
#pragma once

#include <functional>
#include <memory>
#include <span>

#include "effects/ui/effect_dialog.h"
#include "platform/command_table.h"

namespace sonavel {

namespace effect_command {
inline constexpr int kOpenPreview = 33103;
inline constexpr int kFadeInAtOnce = 33211;
inline constexpr int kFadeOutAtOnce = 33212;
inline constexpr int kLearnNoise = 33213;
inline constexpr int kConvert = 33214;
inline constexpr int kLiveAtOnce = 33215;
}  // namespace effect_command

// The dialog of an effect's command on the context's view; null for any other command, and for
// effects without settings.
std::unique_ptr<EffectDialog> MakeEffectDialog(int commandId, const EffectDialogContext& context,
                                               QWidget* parent = nullptr);

struct EffectHost {
    // Null when no sound is open.
    std::function<CSoundView*()> activeView;
    // Opens a sound as a new document, titled with the prefix and a number.
    std::function<void(Sound&& sound, std::string_view titlePrefix)> openSound;
    EffectState& state;
    EffectMemory& memory;
    QWidget* window;  // of the dialogs; may be null
};

class EffectCommands : public CommandTarget {
  public:
    explicit EffectCommands(EffectHost host) : host_(std::move(host)) {}

    // In the order of a menu, "Open Preview as New Document" last.
    static std::span<const CommandInfo> Rows();

    bool HandlesCommand(int id) const override;
    CommandState StateOfCommand(int id) const override;
    std::string MenuTextOfCommand(int id) const override;
    Outcome RunCommand(int id) override;

  private:
    Outcome RunEffect(int id, CSoundView& view);
    Outcome FadeAtOnce(const char* name, CSoundView& view);
    Outcome OpenPreview(const CSoundDoc& document);

    EffectHost host_;
};

}  // namespace sonavel
