#include "effects/ui/plain_effect_dialog.h"

#include <QComboBox>

namespace sonavel {

namespace {

// "Fade &In..." without what belongs to a menu.
QString TitleOf(const Effect& effect) {
    return QString::fromUtf8(effect.menuText).remove(QLatin1Char('&')).remove(QLatin1String("..."));
}

QComboBox* MakeChoice(ParameterControl& control, QWidget* dialog) {
    auto* box = new QComboBox(dialog);
    for (const char* word : control.Parameter().words) box->addItem(QString::fromUtf8(word));
    box->setCurrentIndex(control.WholeValue());
    control.Explain(*box);
    QObject::connect(box, &QComboBox::currentIndexChanged, &control,
                     [&control](int index) { control.SetValue(index); });
    QObject::connect(&control, &ParameterControl::Changed, box,
                     [&control, box] { box->setCurrentIndex(control.WholeValue()); });
    return box;
}

}  // namespace

PlainEffectDialog::PlainEffectDialog(const EffectDialogContext& context, const Effect& effect,
                                     QWidget* parent)
    : PlainEffectDialog(context, effect, parent, Ending::kLeftToTheRest) {
    Begin(First());
}

PlainEffectDialog::PlainEffectDialog(const EffectDialogContext& context, const Effect& effect,
                                     QWidget* parent, Ending)
    : EffectDialog(context, effect, {effect.menuText, effect.prompt, effect.prompt}, parent),
      grid_(new QGridLayout) {
    setWindowTitle(TitleOf(effect));
    AddControls();
    AddLines();
}

void PlainEffectDialog::AddLines() {
    grid_->setColumnStretch(1, 1);
    for (std::size_t i = 0; i < ControlCount(); ++i)
        lines_.push_back(AddLine(Control(i), static_cast<int>(i)));
    Body().addLayout(grid_);
}

PlainEffectDialog::Line PlainEffectDialog::AddLine(ParameterControl& control, int row) {
    const EffectParameter& parameter = control.Parameter();
    Line line;
    if (parameter.decimals == kSwitch) {
        line.field = control.MakeCheckBox(QString::fromUtf8(parameter.label));
        grid_->addWidget(line.field, row, 0, 1, 3);
        return line;
    }
    line.field = parameter.words.empty() ? static_cast<QWidget*>(control.MakeSpinBox())
                                         : MakeChoice(control, this);
    line.name = control.MakeNameLabel(line.field);
    line.unit = control.MakeUnitLabel();
    grid_->addWidget(line.name, row, 0);
    grid_->addWidget(line.field, row, 1);
    grid_->addWidget(line.unit, row, 2);
    return line;
}

void PlainEffectDialog::SetLineEnabled(std::size_t index, bool enabled) {
    const Line& line = lines_[index];
    line.field->setEnabled(enabled);
    if (line.name) line.name->setEnabled(enabled);
    if (line.unit) line.unit->setEnabled(enabled);
}

}  // namespace sonavel
