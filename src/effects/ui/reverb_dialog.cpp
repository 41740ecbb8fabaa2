#include "effects/ui/reverb_dialog.h"

#include <QGroupBox>

namespace sonavel {

namespace {

constexpr int kMixingRange = 1000;
constexpr int kLongestEarlyDecayMs = 1200;

QString WholeText(double value) {
    return QString::number(qRound(value));
}

}  // namespace

CReverbDlg::CReverbDlg(const EffectDialogContext& context, QWidget* parent)
    : EffectDialog(context, *FindEffect("reverb"),
                   {"Reverberation", "   Reverberation Setting", "   Reverberation Setting"},
                   parent),
      mixing_(new FocusScrollBar(this)),
      picture_(new ReverbPicture(SamplesPerSecond(), this)) {
    AddControls();
    auto* grid = new QGridLayout;
    grid->setColumnStretch(2, 1);
    QScrollBar* early = AddBar(*grid, kEarly, 10);
    AddBar(*grid, kTime, 100);
    AddMixing(*grid);
    AddReflections(*grid);
    Body().addLayout(grid);
    Body().addWidget(MakeTimes());
    Body().addWidget(picture_, 1);
    for (std::size_t i = 0; i < ControlCount(); ++i)
        connect(&Control(i), &ParameterControl::Changed, this, &CReverbDlg::ShowRoom);
    ShowMixing();
    ShowRoom();
    Begin(*early);
}

QScrollBar* CReverbDlg::AddBar(QGridLayout& grid, Parameter parameter, int pageStep) {
    ParameterControl& control = Control(parameter);
    QScrollBar* bar = control.MakeScrollBar();
    bar->setPageStep(pageStep);
    const int row = grid.rowCount();
    grid.addWidget(control.MakeNameLabel(bar), row, 0);
    grid.addWidget(bar, row, 2);
    grid.addWidget(control.MakeValueLabel(WholeText), row, 3);
    grid.addWidget(control.MakeUnitLabel(), row, 4);
    return bar;
}

void CReverbDlg::AddMixing(QGridLayout& grid) {
    mixing_->setRange(0, kMixingRange);
    mixing_->setSingleStep(10);
    mixing_->setPageStep(100);
    auto* name = new QLabel(QStringLiteral("Mixing"), this);
    name->setBuddy(mixing_);
    const auto addShare = [&](QHBoxLayout& row, Parameter parameter) {
        row.addWidget(Control(parameter).MakeNameLabel(mixing_));
        row.addWidget(Control(parameter).MakeValueLabel(WholeText));
        row.addWidget(Control(parameter).MakeUnitLabel());
    };
    auto* dry = new QHBoxLayout;
    addShare(*dry, kDry);
    auto* wet = new QHBoxLayout;
    addShare(*wet, kWet);
    const int row = grid.rowCount();
    grid.addWidget(name, row, 0);
    grid.addLayout(dry, row, 1);
    grid.addWidget(mixing_, row, 2);
    grid.addLayout(wet, row, 3, 1, 2);
    connect(mixing_, &QScrollBar::valueChanged, this, &CReverbDlg::TakeMixing);
    connect(&Control(kWet), &ParameterControl::Changed, this, &CReverbDlg::ShowMixing);
}

void CReverbDlg::AddReflections(QGridLayout& grid) {
    QDoubleSpinBox* count = Control(kReflections).MakeSpinBox();
    const int row = grid.rowCount();
    grid.addWidget(Control(kReflections).MakeNameLabel(count), row, 0);
    grid.addWidget(count, row, 1);
}

QWidget* CReverbDlg::MakeTimes() {
    auto* group = new QGroupBox(QStringLiteral("Reverb. Time"), this);
    auto* row = new QHBoxLayout(group);
    earlyDecay_ = AddTime(*row, QStringLiteral("EDT"));
    row->addSpacing(24);
    fullDecay_ = AddTime(*row, QStringLiteral("RT60"));
    row->addStretch(1);
    return group;
}

ValueLabel* CReverbDlg::AddTime(QHBoxLayout& row, const QString& name) {
    auto* value = new ValueLabel(this);
    value->setObjectName(name);
    value->setToolTip(name == QStringLiteral("EDT")
                          ? tr("The early decay time: how long the first part of the decay takes.")
                          : tr("How long the echo takes to fall by 60 dB."));
    value->ReserveFor(
        {WholeText(Control(kTime).Parameter().greatest), WholeText(kLongestEarlyDecayMs)});
    row.addWidget(new QLabel(name, this));
    row.addWidget(value);
    row.addWidget(new QLabel(QStringLiteral("ms"), this));
    return value;
}

void CReverbDlg::TakeMixing(int tenths) {
    const int wet = tenths / 10;
    Control(kWet).SetValue(wet);
    Control(kDry).SetValue(100 - wet);
}

// The bar keeps a place between two percentages.
void CReverbDlg::ShowMixing() {
    const int wet = Control(kWet).WholeValue();
    if (mixing_->value() / 10 != wet) mixing_->setValue(wet * 10);
}

void CReverbDlg::ShowRoom() {
    const ReverbParameters room{Control(kEarly).WholeValue(), Control(kTime).WholeValue(),
                                Control(kReflections).WholeValue(), Control(kDry).WholeValue(),
                                Control(kWet).WholeValue()};
    earlyDecay_->setText(QString::number(room.earlyMs + room.timeMs / 6));
    fullDecay_->setText(QString::number(room.timeMs));
    picture_->SetParameters(room);
}

}  // namespace sonavel
