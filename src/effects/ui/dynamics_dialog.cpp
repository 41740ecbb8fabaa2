#include "effects/ui/dynamics_dialog.h"

#include <QGroupBox>

namespace sonavel {

namespace {

constexpr EffectParameter kTimes[] = {
    {"attack", "Attack Time", "ms", 0, 10, 5000, 1, 0,
     "kept with the dialog; the curve does not use it"},
    {"release", "Release Time", "ms", 0, 100, 5000, 1, 0,
     "kept with the dialog; the curve does not use it"},
};
// Of the times in the dialogs' memory, which are no parameters of the effect.
constexpr Effect kTimesRow{0, "dynamics times", "", "", "", kTimes, nullptr, {}};

// Shows a curve's value in at least five places.
class CurveField : public QDoubleSpinBox {
  public:
    using QDoubleSpinBox::QDoubleSpinBox;
    QString textFromValue(double value) const override { return QString::asprintf("%5.2f", value); }
};

CurveField* MakeCurveField(ParameterControl& control, QWidget* dialog) {
    const EffectParameter& parameter = control.Parameter();
    auto* field = new CurveField(dialog);
    field->setPalette(ProgramPalette());
    field->setLocale(QLocale::c());
    field->setAlignment(Qt::AlignRight);
    control.Explain(*field);
    field->setDecimals(parameter.decimals);
    field->setRange(parameter.least, parameter.greatest);
    field->setSingleStep(parameter.step);
    field->setValue(control.Value());
    QObject::connect(field, &QDoubleSpinBox::valueChanged, &control, &ParameterControl::SetValue);
    QObject::connect(&control, &ParameterControl::Changed, field,
                     [field, &control] { field->setValue(control.Value()); });
    return field;
}

}  // namespace

CDynamicsDlg::CDynamicsDlg(const EffectDialogContext& context, QWidget* parent)
    : EffectDialog(context, *FindEffect("dynamics"), {"Dynamics", "   Dynamics Setting", ""},
                   parent),
      link_(new QCheckBox(tr("&Link left and right"), this)),
      pictures_{new DynamicsPicture(this), new DynamicsPicture(this)} {
    AddControls();
    for (const EffectParameter& time : kTimes) AddControl(time);
    link_->setChecked(true);
    auto* row = new QHBoxLayout;
    QWidget* first = AddChannel(*row, IsMono() ? tr("Curve") : tr("Left"), 0);
    QWidget* right = AddChannel(*row, tr("Right"), kRight)->parentWidget();
    right->setVisible(!IsMono());
    link_->setVisible(!IsMono());
    Body().addLayout(row, 1);
    Body().addWidget(link_);
    AddTimes();
    for (std::size_t i = 0; i < kCurves; ++i)
        connect(&Control(i), &ParameterControl::Changed, this, [this, i] { TakeChange(i); });
    connect(link_, &QCheckBox::toggled, this, &CDynamicsDlg::Link);
    for (const std::size_t channel : {0, 1})
        pictures_[channel]->SetFields(Fields(channel * kRight));
    Begin(*first);
}

QWidget* CDynamicsDlg::AddChannel(QHBoxLayout& row, const QString& title, std::size_t first) {
    auto* group = new QGroupBox(title, this);
    auto* grid = new QGridLayout(group);
    DynamicsPicture* picture = pictures_[first / kRight];
    grid->addWidget(picture, 0, 0, 1, 3);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(1, 1);
    QWidget* fields[3];
    for (int i = 0; i < 3; ++i) {
        ParameterControl& control = Control(first + static_cast<std::size_t>(i));
        fields[i] = MakeCurveField(control, group);
        grid->addWidget(control.MakeNameLabel(fields[i]), i + 1, 0);
        grid->addWidget(fields[i], i + 1, 1);
        grid->addWidget(control.MakeUnitLabel(), i + 1, 2);
    }
    connect(picture, &DynamicsPicture::Dragged, this,
            [this, first](const DynamicsFields& dragged) { TakeFields(first, dragged); });
    row.addWidget(group, 1);
    return fields[0];
}

void CDynamicsDlg::AddTimes() {
    auto* row = new QHBoxLayout;
    for (const std::size_t index : {kAttack, kRelease}) {
        QDoubleSpinBox* box = Control(index).MakeSpinBox();
        row->addWidget(Control(index).MakeNameLabel(box));
        row->addWidget(box);
        row->addWidget(Control(index).MakeUnitLabel());
        row->addSpacing(12);
    }
    row->addWidget(new QLabel(tr("(not used by the curve)"), this));
    row->addStretch(1);
    Body().addLayout(row);
}

DynamicsFields CDynamicsDlg::Fields(std::size_t first) const {
    return {Control(first).Value(), Control(first + 1).Value(), Control(first + 2).Value()};
}

void CDynamicsDlg::TakeFields(std::size_t first, const DynamicsFields& fields) {
    Control(first).SetValue(fields.threshold);
    Control(first + 1).SetValue(fields.below);
    Control(first + 2).SetValue(fields.above);
}

void CDynamicsDlg::TakeChange(std::size_t index) {
    const std::size_t channel = index / kRight;
    pictures_[channel]->SetFields(Fields(channel * kRight));
    if (IsLinked()) Control((index + kRight) % kCurves).SetValue(Control(index).Value());
}

void CDynamicsDlg::Link(bool linked) {
    if (linked) TakeFields(kRight, Fields(0));
}

void CDynamicsDlg::RememberAll() {
    Remember(*FindEffect("dynamics"), 0, kCurves);
    Remember(kTimesRow, kAttack, 2);
    Memory().dynamicsLinked = IsLinked();
}

void CDynamicsDlg::RecallAll() {
    // First, so that two curves come back apart.
    link_->setChecked(Memory().dynamicsLinked);
    Recall(*FindEffect("dynamics"), 0, kCurves);
    Recall(kTimesRow, kAttack, 2);
}

}  // namespace sonavel
