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
    : EffectDialog(context, *FindEffect("panpot"),
                   {"Panpot/Crossfade", "   Panpot/Crossfade Settings", ""}, parent) {
    AddControls();
    QRadioButton* pan = AddMode(QStringLiteral("Pan"), PanMode::kPan);
    QGridLayout* panGrid = AddGrid();
    widgetsOf_[Number(PanMode::kPan)] = {AddBar(*panGrid, kPan)};

    QRadioButton* crossfade = AddMode(QStringLiteral("Crossfade"), PanMode::kCrossfade);
    QGridLayout* crossfadeGrid = AddGrid();
    QCheckBox* nonlinear =
        Control(kNonlinear).MakeCheckBox(QString::fromUtf8(Control(kNonlinear).Parameter().label));
    widgetsOf_[Number(PanMode::kCrossfade)] = {AddBar(*crossfadeGrid, kFrom),
                                               AddBar(*crossfadeGrid, kTo), nonlinear};
    Body().addWidget(nonlinear);
    Body().addStretch(1);
    connect(&Control(kMode), &ParameterControl::Changed, this, &CPanpotDlg::EnableBars);
    EnableBars();
    Begin(*pan);
    if (crossfade->isChecked()) crossfade->setFocus();
}

QRadioButton* CPanpotDlg::AddMode(const QString& text, PanMode mode) {
    QRadioButton* button = Control(kMode).MakeRadioButton(text, Number(mode));
    Body().addWidget(button);
    return button;
}

QGridLayout* CPanpotDlg::AddGrid() {
    auto* grid = new QGridLayout;
    Body().addLayout(grid);
    return grid;
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

void CPanpotDlg::EnableBars() {
    for (const int mode : {Number(PanMode::kPan), Number(PanMode::kCrossfade)})
        for (QWidget* widget : widgetsOf_[mode])
            widget->setEnabled(mode == Control(kMode).WholeValue());
}

}  // namespace sonavel
