// What all effect dialogs have in common beyond previewing: their controls come from the effect's
// row, Reset, and that they remember their values. A dialog of one effect lays its controls out.
#pragma once

#include <vector>

#include "effects/effect_runner.h"
#include "effects/effect_table.h"
#include "effects/live_effect.h"
#include "effects/ui/effect_memory.h"
#include "effects/ui/parameter_control.h"
#include "effects/ui/preview_dialog.h"
#include "sound/frame_range.h"

namespace sonavel {

struct EffectDialogContext {
    CSoundView& view;
    EffectState& state;
    EffectMemory& memory;
};

struct EffectDialogTexts {
    const char* title;
    const char* header;       // the header line at first
    const char* instruction;  // and after a preview
};

class EffectDialog : public PreviewDialog {
    Q_OBJECT

  public:
    EffectDialog(const EffectDialogContext& context, const Effect& effect,
                 const EffectDialogTexts& texts, QWidget* parent);
    ~EffectDialog() override;

    const Effect& Row() const { return effect_; }
    // One value for each parameter.
    virtual std::vector<double> Values() const;
    // The start values of every control.
    virtual void Reset();

    // Remembers the values too.
    void done(int result) override;

  protected:
    using Direction = ParameterControl::Direction;

    // The effect's parameters in the table's order.
    void AddControls(Direction direction = Direction::kWithValue);
    ParameterControl& AddControl(const EffectParameter& parameter,
                                 Direction direction = Direction::kWithValue);
    ParameterControl& Control(std::size_t index) const { return *controls_[index]; }
    std::size_t ControlCount() const { return controls_.size(); }
    QVBoxLayout& Body() { return *body_; }
    EffectMemory& Memory() { return memory_; }
    bool IsMono() const { return Document().Sound().GetChannels() == 1; }
    // The frames that the effect works on.
    FrameRange Range() const;
    std::uint32_t SamplesPerSecond() const { return Document().Sound().GetSamplesPerSecond(); }
    // The last step of a dialog's constructor, once its controls are laid out.
    void Begin(QWidget& firstControl);

    // The values under an effect's name, for controls from `first` on.
    void Remember(const Effect& effect, std::size_t first, std::size_t count);
    void Recall(const Effect& effect, std::size_t first, std::size_t count);
    virtual void RememberAll() { Remember(effect_, 0, controls_.size()); }
    virtual void RecallAll() { Recall(effect_, 0, controls_.size()); }

    Outcome Run(Purpose purpose) override;
    std::unique_ptr<LiveMaker> MakeLive() override;

  private:
    EffectTarget Target();
    Outcome RunDisabled();
    void AddProgress(QHBoxLayout& buttons);
    void AddButtons(const QString& instruction);
    void AddLive(QHBoxLayout& buttons);
    void SetLive();
    // Applies also where OK would leave this sound as it is; there alone it is shown.
    void AddApply(QHBoxLayout& buttons);

    EffectState& state_;
    EffectMemory& memory_;
    const Effect& effect_;
    Applying applying_ = Applying::kAsOk;
    QVBoxLayout* body_;
    std::vector<ParameterControl*> controls_;
    LiveEffect* heard_ = nullptr;  // while Live plays
};

}  // namespace sonavel
