#include "effects/ui/modulator_dialog.h"

#include <QGridLayout>
#include <QGroupBox>

namespace sonavel {

namespace {

constexpr std::size_t kSecond = 3;  // where the second oscillator's parameters begin
constexpr int kFrequencyPage = 100;
constexpr double kPositionsAHertz = 20;

QString FrequencyText(double position) {
    return QString::asprintf("%.2f Hz", position / kPositionsAHertz);
}

}  // namespace

CModulatorDlg::CModulatorDlg(const EffectDialogContext& context, QWidget* parent)
    : EffectDialog(context, *FindEffect("modulator"), {"Modulator", "   Modulator Settings", ""},
                   parent),
      picture_(new ModulatorPicture(SamplesPerSecond(), this)) {
    AddControls();
    QScrollBar* first = AddOscillator(QStringLiteral("Oscillator 1"), 0);
    AddOscillator(QStringLiteral("Oscillator 2"), kSecond);
    Body().addWidget(picture_, 1);
    for (std::size_t i = 0; i < ControlCount(); ++i)
        connect(&Control(i), &ParameterControl::Changed, this, &CModulatorDlg::ShowGain);
    ShowGain();
    Begin(*first);
}

QScrollBar* CModulatorDlg::AddOscillator(const QString& title, std::size_t first) {
    auto* group = new QGroupBox(title, this);
    auto* grid = new QGridLayout(group);
    ParameterControl& frequency = Control(first);
    QScrollBar* bar = frequency.MakeScrollBar();
    bar->setPageStep(kFrequencyPage);
    grid->addWidget(frequency.MakeNameLabel(bar), 0, 0);
    grid->addWidget(bar, 0, 1, 1, 6);
    grid->addWidget(frequency.MakeValueLabel(FrequencyText), 0, 7);
    for (int field = 0; field < 2; ++field) {
        ParameterControl& control = Control(first + 1 + static_cast<std::size_t>(field));
        QDoubleSpinBox* box = control.MakeSpinBox();
        grid->addWidget(control.MakeNameLabel(box), 1, 4 * field);
        grid->addWidget(box, 1, 4 * field + 1);
        grid->addWidget(control.MakeUnitLabel(), 1, 4 * field + 2);
    }
    grid->setColumnMinimumWidth(3, 24);
    grid->setColumnStretch(3, 1);
    Body().addWidget(group);
    return bar;
}

OscillatorParameters CModulatorDlg::Oscillator(std::size_t first) const {
    return {Control(first).WholeValue(), Control(first + 1).WholeValue(),
            Control(first + 2).WholeValue()};
}

void CModulatorDlg::ShowGain() {
    picture_->SetParameters({Oscillator(0), Oscillator(kSecond)});
}

}  // namespace sonavel
