#include "view/ui/pauses_dialog.h"

#include <algorithm>
#include <cmath>

namespace sonavel {

namespace {

constexpr int kDelayMs = 150;

}  // namespace

PausesDialog::PausesDialog(CSoundView& view, QWidget* parent)
    : FormDialog(tr("Find Pauses"), parent),
      view_(view),
      proposal_(view),
      threshold_(new QDoubleSpinBox(this)),
      marks_(new QComboBox(this)),
      found_(new QLabel(this)) {
    QFormLayout& form = AddForm();
    threshold_->setRange(-120, 0);
    threshold_->setDecimals(1);
    threshold_->setSuffix(tr(" dB"));
    threshold_->setValue(-40);
    form.addRow(tr("&Quiet below:"), threshold_);
    pause_ = AddSeconds(form, tr("Least &pause:"), 0.5);
    sound_ = AddSeconds(form, tr("Least &sound:"), 0.2);
    marks_->addItems({tr("Markers at pauses"), tr("Mark sounds between pauses")});
    form.addRow(tr("&Set:"), marks_);
    form.addRow(tr("Found:"), found_);
    delay_.setSingleShot(true);
    delay_.setInterval(kDelayMs);
    connect(&delay_, &QTimer::timeout, this, &PausesDialog::Show);
    for (QDoubleSpinBox* box : {threshold_, pause_, sound_})
        connect(box, &QDoubleSpinBox::valueChanged, &delay_, qOverload<>(&QTimer::start));
    connect(marks_, &QComboBox::currentIndexChanged, this, &PausesDialog::Show);
    Show();
}

QDoubleSpinBox* PausesDialog::AddSeconds(QFormLayout& form, const QString& label, double seconds) {
    auto* box = new QDoubleSpinBox(this);
    box->setRange(0, 3600);
    box->setDecimals(3);
    box->setSingleStep(0.1);
    box->setSuffix(tr(" s"));
    box->setValue(seconds);
    form.addRow(label, box);
    return box;
}

void PausesDialog::Show() {
    const double rate = view_.Sound().GetSamplesPerSecond();
    const auto frames = [rate](const QDoubleSpinBox& box) {
        return static_cast<std::uint32_t>(
            std::min<double>(std::round(box.value() * rate), 0xFFFFFFFF));
    };
    const bool marksSounds = marks_->currentIndex() == 1;
    const Result<std::size_t> shown =
        proposal_.Show({.threshold = threshold_->value(),
                        .leastPause = frames(*pause_),
                        .leastSound = frames(*sound_)},
                       marksSounds ? PauseMarks::kRegionsOfSound : PauseMarks::kMarkersAtPauses);
    if (!shown)
        found_->setText(QString::fromStdString(shown.Reason()));
    else
        found_->setText((marksSounds ? tr("%1 sounds") : tr("%1 pauses")).arg(*shown));
    SetOkEnabled(shown && *shown > 0);
}

void PausesDialog::accept() {
    if (delay_.isActive()) Show();
    proposal_.Keep();
    FormDialog::accept();
}

}  // namespace sonavel
