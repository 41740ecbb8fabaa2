// The dialog of an effect with a line for each parameter, made from the row, and the base of those
// that show something more below the lines.
#pragma once

#include <QGridLayout>
#include <vector>

#include "effects/ui/effect_dialog.h"

namespace sonavel {

class PlainEffectDialog : public EffectDialog {
    Q_OBJECT

  public:
    PlainEffectDialog(const EffectDialogContext& context, const Effect& effect,
                      QWidget* parent = nullptr);

  protected:
    // Adds the lines alone; whoever derives calls Begin() with First() behind what it adds.
    enum class Ending { kLeftToTheRest };
    PlainEffectDialog(const EffectDialogContext& context, const Effect& effect, QWidget* parent,
                      Ending ending);

    // The widget of the first line, where the keys begin.
    QWidget& First() const { return *lines_.front().field; }
    QGridLayout& Grid() { return *grid_; }
    // The whole line of a parameter, its name and its unit with it.
    void SetLineEnabled(std::size_t index, bool enabled);

  private:
    struct Line {
        QLabel* name = nullptr;
        QWidget* field = nullptr;
        QLabel* unit = nullptr;
    };
    void AddLines();
    Line AddLine(ParameterControl& control, int row);

    QGridLayout* grid_;
    std::vector<Line> lines_;
};

}  // namespace sonavel
