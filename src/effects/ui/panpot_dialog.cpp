#include "effects/ui/panpot_dialog.h"

#include <QRadioButton>
#include <cmath>

namespace sonavel {

namespace {

constexpr int kPageStep = 100;

QString PositionText(double value) {
    if (value < 0) return QString::asprintf("Left : %5.2f", std::abs(value) * 0.1);
    if (value > 0) return QString::asprintf("Right : %.2f", value * 0.1);
    return QStringLiteral("Center");
}

int Number(PanMode mode) {
    return static_cast<int>(mode);
}

}  // namespace

CPanpotDlg::CPanpotDlg(const EffectDialogContext& context, QWidget* parent)
    : EffectDialog(context, *FindEffect("crossfade"),
                   {"Panpot/Crossfade", "   Panpot/Crossfade Settings", ""}, parent) {
    AddControl(FindEffect("pan")->parameters[0]);
    AddControls();
    AddMode(QStringLiteral("Pan"), PanMode::kPan);
    auto* panGrid = new QGridLayout;
    Body().addLayout(panGrid);
    widgetsOf_[Number(PanMode::kPan)].push_back(AddBar(*panGrid, kPan));

    AddMode(QStringLiteral("Crossfade"), PanMode::kCrossfade);
    auto* crossfadeGrid = new QGridLayout;
    Body().addLayout(crossfadeGrid);
    QCheckBox* nonlinear =
        Control(kNonlinear).MakeCheckBox(QString::fromUtf8(Control(kNonlinear).Parameter().label));
    auto& crossfade = widgetsOf_[Number(PanMode::kCrossfade)];
    crossfade = {AddBar(*crossfadeGrid, kFrom), AddBar(*crossfadeGrid, kTo), nonlinear};
    Body().addWidget(nonlinear);
    Body().addStretch(1);
    connect(&modes_, &QButtonGroup::idToggled, this, &CPanpotDlg::EnableBars);
    SetMode(PanMode::kPan);
    Begin(*modes_.button(Number(context.memory.panMode)));
}

void CPanpotDlg::AddMode(const QString& text, PanMode mode) {
    auto* radio = new QRadioButton(text, this);
    modes_.addButton(radio, Number(mode));
    Body().addWidget(radio);
}

QScrollBar* CPanpotDlg::AddBar(QGridLayout& grid, std::size_t index) {
    ParameterControl& control = Control(index);
    QScrollBar* bar = control.MakeScrollBar();
    bar->setPageStep(kPageStep);
    bar->setMinimumWidth(320);
    ValueLabel* value = control.MakeValueLabel(PositionText);
    // Until the first change.
    value->setText(QStringLiteral("center"));
    QLabel* name = control.MakeNameLabel(bar);
    name->setMinimumWidth(name->fontMetrics().horizontalAdvance(QStringLiteral("From :")));
    const int row = grid.rowCount();
    grid.addWidget(name, row, 0);
    grid.addWidget(new QLabel(QStringLiteral("Left"), this), row, 1);
    grid.addWidget(bar, row, 2);
    grid.addWidget(new QLabel(QStringLiteral("Right"), this), row, 3);
    grid.addWidget(value, row, 4);
    grid.setColumnStretch(2, 1);
    return bar;
}

PanMode CPanpotDlg::Mode() const {
    return static_cast<PanMode>(modes_.checkedId());
}

void CPanpotDlg::SetMode(PanMode mode) {
    modes_.button(Number(mode))->setChecked(true);
    EnableBars();
}

void CPanpotDlg::EnableBars() {
    for (const PanMode mode : {PanMode::kPan, PanMode::kCrossfade})
        for (QWidget* widget : widgetsOf_[Number(mode)]) widget->setEnabled(mode == Mode());
}

const Effect& CPanpotDlg::ChosenEffect() const {
    return *FindEffect(Mode() == PanMode::kPan ? "pan" : "crossfade");
}

std::vector<double> CPanpotDlg::Values() const {
    if (Mode() == PanMode::kPan) return {Control(kPan).Value()};
    return {Control(kFrom).Value(), Control(kTo).Value(), Control(kNonlinear).Value()};
}

void CPanpotDlg::Reset() {
    EffectDialog::Reset();
    SetMode(PanMode::kPan);
}

void CPanpotDlg::RememberAll() {
    Remember(*FindEffect("pan"), kPan, 1);
    Remember(*FindEffect("crossfade"), kFrom, 3);
    Memory().panMode = Mode();
}

void CPanpotDlg::RecallAll() {
    Recall(*FindEffect("pan"), kPan, 1);
    Recall(*FindEffect("crossfade"), kFrom, 3);
    SetMode(Memory().panMode);
}

}  // namespace sonavel
