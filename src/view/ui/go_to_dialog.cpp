#include "view/ui/go_to_dialog.h"

#include "sound/sound_texts.h"

namespace sonavel {

GoToDialog::GoToDialog(const GoToRequest& request, QWidget* parent)
    : FormDialog(tr("Go to Cursor"), parent),
      timeText_(new QLabel(this)),
      place_(new FrameTimeField(request.frameCount, request.samplesPerSecond, this)) {
    QFormLayout& form = AddForm();
    form.addRow(tr("&Go to:"), place_);
    form.addRow(tr("Time:"), timeText_);
    form.addRow(tr("Range:"), new QLabel(tr("0 to %1 Samples").arg(request.frameCount), this));
    const auto showTime = [this] {
        timeText_->setText(QString::fromStdString(TimeText(place_->Seconds())));
    };
    connect(place_, &FrameTimeField::Edited, this, showTime);
    place_->SetFrame(request.cursorFrame);
    showTime();
    place_->setFocus();
    place_->SelectFrameText();
}

GoToChoice GoToDialog::Choice() const {
    const bool byTime = place_->LastUnit() == FrameTimeField::Unit::kTime;
    return {byTime ? GoToChoice::Unit::kTime : GoToChoice::Unit::kFrame, place_->Frame(),
            place_->Seconds()};
}

}  // namespace sonavel
