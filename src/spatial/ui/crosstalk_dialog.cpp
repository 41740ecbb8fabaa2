#include "spatial/ui/crosstalk_dialog.h"

#include "spatial/crosstalk.h"

namespace sonavel {

CrosstalkDialog::CrosstalkDialog(double angle, const QString& ears, QWidget* parent)
    : FormDialog(tr("Cross Talk"), parent), angle_(new QDoubleSpinBox(this)) {
    angle_->setRange(kLeastSpeakerAngle, kGreatestSpeakerAngle);
    angle_->setDecimals(1);
    angle_->setPrefix(QStringLiteral("\u00B1 "));
    angle_->setSuffix(QStringLiteral(" \u00B0"));
    angle_->setValue(angle);
    AddForm().addRow(tr("&Loudspeakers at :"), angle_);
    auto* note = new QLabel(
        tr("Makes a sound for headphones right for two loudspeakers: each ear then hears its own "
           "channel. It holds for one place, in the middle before them, and for the responses of "
           "%1.")
            .arg(ears),
        this);
    note->setWordWrap(true);
    Body().addWidget(note);
}

}  // namespace sonavel
