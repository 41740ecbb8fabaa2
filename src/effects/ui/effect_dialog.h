// What all effect dialogs have in common: the look, the header line, the preview, Reset, OK and
// Cancel, and that they remember their values. A dialog of one effect adds its controls.
#pragma once

#include <QBoxLayout>
#include <QDialog>
#include <QPushButton>
#include <memory>
#include <vector>

#include "effects/effect_table.h"
#include "effects/ui/effect_look.h"
#include "effects/ui/effect_memory.h"
#include "effects/ui/parameter_control.h"
#include "effects/ui/preview_toggle.h"
#include "view/sound_view.h"

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

class EffectDialog : public QDialog {
    Q_OBJECT

  public:
    EffectDialog(const EffectDialogContext& context, const Effect& effect,
                 const EffectDialogTexts& texts, QWidget* parent);
    ~EffectDialog() override;

    // What OK will run, where the dialog stands for more than one row of the effect table.
    virtual const Effect& ChosenEffect() const { return effect_; }
    // One value for each parameter of the chosen effect.
    virtual std::vector<double> Values() const;
    // Runs the effect on the document; to be called after the dialog has ended with OK. False when
    // nothing was done; the document's last error says why.
    bool Apply();
    // The start values of every control.
    virtual void Reset();

    // Remembers the values and ends the preview, whichever way the dialog ends.
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
    CSoundDoc& Document() const { return view_.Document(); }
    bool IsMono() const { return Document().Sound().GetChannels() == 1; }
    std::uint32_t SamplesPerSecond() const { return Document().Sound().GetSamplesPerSecond(); }
    // The last step of a dialog's constructor, once its controls are laid out.
    void Begin(QWidget& firstControl);

    // The values under an effect's name, for controls from `first` on.
    void Remember(const Effect& effect, std::size_t first, std::size_t count);
    void Recall(const Effect& effect, std::size_t first, std::size_t count);
    virtual void RememberAll() { Remember(effect_, 0, controls_.size()); }
    virtual void RecallAll() { Recall(effect_, 0, controls_.size()); }

    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    EffectTarget Target();
    bool RunPreview();
    void RunDisabled(const std::function<void()>& run);
    void AddPreview(QHBoxLayout& buttons);
    void AddProgress(QHBoxLayout& buttons);
    void AddButtons();
    QPushButton* AddButton(QHBoxLayout& row, const char* text);

    CSoundView& view_;
    EffectState& state_;
    EffectMemory& memory_;
    const Effect& effect_;
    EffectDialogTexts texts_;
    EffectHeader* header_;
    QVBoxLayout* body_;
    std::unique_ptr<PreviewToggle> preview_;
    std::vector<ParameterControl*> controls_;
    bool running_ = false;
};

}  // namespace sonavel
