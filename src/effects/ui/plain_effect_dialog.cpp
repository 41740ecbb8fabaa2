#include "effects/ui/plain_effect_dialog.h"

#include <QComboBox>
#include <QGridLayout>

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
    : EffectDialog(context, effect, {effect.menuText, effect.prompt, effect.prompt}, parent) {
    setWindowTitle(TitleOf(effect));
    AddControls();
    Begin(*AddLines());
}

QWidget* PlainEffectDialog::AddLines() {
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    QWidget* first = nullptr;
    for (std::size_t i = 0; i < ControlCount(); ++i) {
        ParameterControl& control = Control(i);
        const EffectParameter& parameter = control.Parameter();
        const int row = static_cast<int>(i);
        QWidget* field = nullptr;
        if (parameter.decimals == kSwitch) {
            field = control.MakeCheckBox(QString::fromUtf8(parameter.label));
            grid->addWidget(field, row, 0, 1, 3);
        } else {
            field = parameter.words.empty() ? static_cast<QWidget*>(control.MakeSpinBox())
                                            : MakeChoice(control, this);
            grid->addWidget(control.MakeNameLabel(field), row, 0);
            grid->addWidget(field, row, 1);
            grid->addWidget(control.MakeUnitLabel(), row, 2);
        }
        if (!first) first = field;
    }
    Body().addLayout(grid);
    return first;
}

}  // namespace sonavel
