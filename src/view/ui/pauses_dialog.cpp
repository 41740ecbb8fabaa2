#include "view/ui/pauses_dialog.h"

#include <algorithm>
#include <cmath>

#include "platform/qt/tab_order.h"

namespace sonavel {

namespace {

constexpr int kDelayMs = 150;
// What is done, in the order of the list; the first is to set markers.
constexpr int kMarksSounds = 1;
constexpr int kRemoves = 2;

}  // namespace

PausesDialog::PausesDialog(CSoundView& view, QWidget* parent)
    : FormDialog(tr("Find Pauses"), parent),
      view_(view),
      proposal_(std::in_place, view),
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
    marks_->addItems({tr("Markers at pauses"), tr("Mark sounds between pauses"),
                      tr("Remove pauses longer than")});
    form.addRow(tr("&Do:"), marks_);
    kept_ = AddSeconds(form, tr("&Longer than:"), 1);
    form.addRow(tr("Found:"), found_);
    delay_.setSingleShot(true);
    delay_.setInterval(kDelayMs);
    connect(&delay_, &QTimer::timeout, this, &PausesDialog::Show);
    for (QDoubleSpinBox* box : {threshold_, pause_, sound_, kept_})
        connect(box, &QDoubleSpinBox::valueChanged, &delay_, qOverload<>(&QTimer::start));
    connect(marks_, &QComboBox::currentIndexChanged, this, &PausesDialog::Show);
    TabAsLaidOut(*this);
    Show();
}

QDoubleSpinBox* PausesDialog::AddSeconds(QFormLayout& form, const QString& label, double seconds) {
    QDoubleSpinBox* box = MakeSecondsBox(view_.Sound().GetSamplesPerSecond(), this);
    box->setRange(0, 3600);
    box->setSuffix(tr(" s"));
    box->setValue(seconds);
    form.addRow(label, box);
    return box;
}

bool PausesDialog::Removes() const {
    return marks_->currentIndex() == kRemoves;
}

std::uint32_t PausesDialog::Frames(const QDoubleSpinBox& box) const {
    const double frames = std::round(box.value() * view_.Sound().GetSamplesPerSecond());
    return static_cast<std::uint32_t>(std::min<double>(frames, 0xFFFFFFFF));
}

PauseRule PausesDialog::Rule() const {
    return {.threshold = threshold_->value(),
            .leastPause = Frames(*pause_),
            .leastSound = Frames(*sound_)};
}

void PausesDialog::Show() {
    delay_.stop();
    kept_->setEnabled(Removes());
    Removes() ? ShowGoing() : ShowMarks();
}

void PausesDialog::ShowMarks() {
    const bool marksSounds = marks_->currentIndex() == kMarksSounds;
    const Result<std::size_t> shown = proposal_->Show(
        Rule(), marksSounds ? PauseMarks::kRegionsOfSound : PauseMarks::kMarkersAtPauses);
    if (!shown)
        found_->setText(QString::fromStdString(shown.Reason()));
    else
        found_->setText((marksSounds ? tr("%1 sounds") : tr("%1 pauses")).arg(*shown));
    SetOkEnabled(shown && *shown > 0);
}

void PausesDialog::ShowGoing() {
    const Result<PausesGoing> going = proposal_->ShowGoing(Rule(), Frames(*kept_));
    if (!going) {
        found_->setText(QString::fromStdString(going.Reason()));
    } else {
        const double seconds =
            static_cast<double>(going->frames) / std::max(view_.Sound().GetSamplesPerSecond(), 1U);
        found_->setText(tr("%1 pauses; %2 s go").arg(going->ranges.size()).arg(seconds, 0, 'f', 3));
    }
    SetOkEnabled(going && !going->ranges.empty());
}

void PausesDialog::accept() {
    if (delay_.isActive()) Show();
    if (!Removes()) proposal_->Keep();
    proposal_.reset();
    FormDialog::accept();
}

Outcome PausesDialog::Apply() {
    return Removes() ? RemovePauses(view_, Rule(), Frames(*kept_)) : Done();
}

}  // namespace sonavel
