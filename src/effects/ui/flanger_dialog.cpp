#include "effects/ui/flanger_dialog.h"

#include <QGridLayout>

namespace sonavel {

namespace {

constexpr std::size_t kDelay = 0;
constexpr std::size_t kModulation = 1;
constexpr int kPageStep = 10;
constexpr int kTicks[] = {10, 5};

QString TenthsText(double value) {
    return QString::asprintf("%.1f", value);
}

int Tenths(const ParameterControl& control) {
    return qRound(control.Value() * 10);
}

}  // namespace

CFlangerDlg::CFlangerDlg(const EffectDialogContext& context, QWidget* parent)
    : EffectDialog(context, *FindEffect("flanger"),
                   {"Flanger", "   Flanger Settings", "Select Delay Factor"}, parent),
      picture_(new FlangerPicture(SamplesPerSecond(), this)) {
    AddControls();
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    QSlider* sliders[2];
    for (int row = 0; row < 2; ++row) {
        ParameterControl& control = Control(static_cast<std::size_t>(row));
        sliders[row] = control.MakeSlider(Qt::Horizontal);
        sliders[row]->setPageStep(kPageStep);
        sliders[row]->setTickInterval(kTicks[row]);
        sliders[row]->setTickPosition(QSlider::TicksBelow);
        grid->addWidget(control.MakeNameLabel(sliders[row]), row, 0);
        grid->addWidget(sliders[row], row, 1);
        grid->addWidget(control.MakeValueLabel(TenthsText), row, 2);
        grid->addWidget(control.MakeUnitLabel(), row, 3);
        connect(&control, &ParameterControl::Changed, this, &CFlangerDlg::ShowSweep);
    }
    Body().addLayout(grid);
    Body().addWidget(picture_, 1);
    ShowSweep();
    Begin(*sliders[0]);
}

void CFlangerDlg::ShowSweep() {
    picture_->SetParameters({Tenths(Control(kDelay)), Tenths(Control(kModulation))});
}

}  // namespace sonavel
