#include "effects/ui/volume_dialog.h"

#include <QGridLayout>

namespace sonavel {

namespace {

constexpr int kTicks = 50;
constexpr int kSliderHeight = 200;

QString PercentText(double percent) {
    return QString::asprintf("%d ", qRound(percent));
}

}  // namespace

CVolumeDlg::CVolumeDlg(const EffectDialogContext& context, QWidget* parent)
    : EffectDialog(context, *FindEffect("volume"),
                   {"Volume", "   Volume Settings", "Select Volume "}, parent) {
    AddControls(Direction::kAgainstValue);
    QSlider* slider = Control(0).MakeSlider(Qt::Vertical);
    slider->setTickInterval(kTicks);
    slider->setTickPosition(QSlider::TicksBothSides);
    slider->setMinimumHeight(kSliderHeight);
    auto* grid = new QGridLayout;
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(4, 1);
    grid->addWidget(Control(0).MakeNameLabel(slider), 0, 1, Qt::AlignVCenter);
    grid->addWidget(slider, 0, 2);
    auto* value = new QHBoxLayout;
    value->setSpacing(6);
    value->addWidget(Control(0).MakeValueLabel(PercentText));
    value->addWidget(Control(0).MakeUnitLabel());
    grid->addLayout(value, 0, 3, Qt::AlignVCenter);
    grid->setHorizontalSpacing(16);
    Body().addLayout(grid, 1);
    Begin(*slider);
}

}  // namespace sonavel
