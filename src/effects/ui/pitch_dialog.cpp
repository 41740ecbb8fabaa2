#include "effects/ui/pitch_dialog.h"

#include <cmath>

namespace sonavel {

namespace {

constexpr std::size_t kPitchLine = 0;
constexpr double kSemitones = 12;  // of an octave, which doubles the frequency

double PercentOfSemitones(double semitones) {
    return 100 * std::exp2(semitones / kSemitones);
}

}  // namespace

CPitchDlg::CPitchDlg(const EffectDialogContext& context, QWidget* parent)
    : PlainEffectDialog(context, *FindEffect("pitch"), parent, Ending::kLeftToTheRest),
      percent_(new QDoubleSpinBox(this)) {
    const EffectParameter& allowed = Control(kPitchLine).Parameter();
    percent_->setPalette(ProgramPalette());
    percent_->setLocale(QLocale::c());
    percent_->setAlignment(Qt::AlignRight);
    percent_->setDecimals(2);
    percent_->setRange(PercentOfSemitones(allowed.least), PercentOfSemitones(allowed.greatest));
    percent_->setToolTip(tr("The same in percent of the frequency; 200 is an octave up."));
    auto* name = new QLabel(tr("Frequency"), this);
    name->setBuddy(percent_);
    const int row = Grid().rowCount();
    Grid().addWidget(name, row, 0);
    Grid().addWidget(percent_, row, 1);
    Grid().addWidget(new QLabel(QStringLiteral("%"), this), row, 2);
    connect(percent_, &QDoubleSpinBox::valueChanged, this, &CPitchDlg::TakePercent);
    connect(percent_, &QDoubleSpinBox::editingFinished, this, &CPitchDlg::ShowPercent);
    connect(&Control(kPitchLine), &ParameterControl::Changed, this, [this] {
        if (!taking_) ShowPercent();
    });
    Begin(First());
    ShowPercent();
}

void CPitchDlg::TakePercent() {
    taking_ = true;
    Control(kPitchLine).SetValue(kSemitones * std::log2(percent_->value() / 100));
    taking_ = false;
}

// The percentage of what is set, whose last decimal may not be the one that was typed.
void CPitchDlg::ShowPercent() {
    taking_ = true;
    percent_->setValue(PercentOfSemitones(Control(kPitchLine).Value()));
    taking_ = false;
}

}  // namespace sonavel
