#include "effects/ui/volume_dialog.h"

#include <QGridLayout>

#include "effects/ui/decibel_box.h"

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
    QSlider* slider = Control(kPercent).MakeSlider(Qt::Vertical);
    slider->setTickInterval(kTicks);
    slider->setTickPosition(QSlider::TicksBothSides);
    slider->setMinimumHeight(kSliderHeight);
    auto* grid = new QGridLayout;
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(4, 1);
    grid->addWidget(Control(kPercent).MakeNameLabel(slider), 0, 1, Qt::AlignVCenter);
    grid->addWidget(slider, 0, 2);
    auto* value = new QHBoxLayout;
    value->setSpacing(6);
    value->addWidget(Control(kPercent).MakeValueLabel(PercentText));
    value->addWidget(Control(kPercent).MakeUnitLabel());
    grid->addLayout(value, 0, 3, Qt::AlignVCenter);
    grid->setHorizontalSpacing(16);
    Body().addLayout(grid, 1);
    AddFields();
    Body().addWidget(
        Control(kHold).MakeCheckBox(QString::fromUtf8(Control(kHold).Parameter().label)));
    Begin(*slider);
}

void CVolumeDlg::AddFields() {
    auto* row = new QHBoxLayout;
    const auto addField = [&](const QString& text, QWidget* field) {
        auto* name = new QLabel(text, this);
        name->setBuddy(field);
        row->addWidget(name);
        row->addWidget(field, 1);
    };
    addField(tr("In percent"), Control(kPercent).MakeSpinBox());
    row->addSpacing(16);
    addField(tr("In dB"), new DecibelBox(Control(kPercent), this));
    Body().addLayout(row);
}

}  // namespace sonavel
