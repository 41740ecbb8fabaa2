#include "spatial/ui/smooth_box.h"

#include <QVBoxLayout>

namespace sonavel {

SmoothBox::SmoothBox(SourceMotion motion, const QString& ears, QWidget* parent)
    : QGroupBox(tr("Heard"), parent), motion_(motion), metres_(new QDoubleSpinBox(this)) {
    new QVBoxLayout(this);
    smooth_ = AddBox(
        tr("Smoot&h"),
        tr("Blends the responses of %1 in place of taking the nearest of the table").arg(ears));
    curve_ =
        AddBox(tr("&Flowing curve through the points"), tr("A curve in place of straight legs"));
    doppler_ = AddBox(tr("Dopp&ler"), tr("The pitch follows the speed towards the head and away"));
    metres_->setObjectName("Metres");
    metres_->setPrefix(tr("1.0 unit is "));
    metres_->setSuffix(tr(" m"));
    metres_->setDecimals(3);
    metres_->setRange(kLeastMetresPerUnit, kGreatestMetresPerUnit);
    metres_->setToolTip(tr("How long a unit of the scene is, for the Doppler shift"));
    layout()->addWidget(metres_);
    connect(metres_, &QDoubleSpinBox::valueChanged, this, &SmoothBox::Edited);
    for (QWidget* of : std::initializer_list<QWidget*>{curve_, doppler_, metres_})
        of->setVisible(motion == SourceMotion::kMoving);
    Show({});
}

QCheckBox* SmoothBox::AddBox(const QString& text, const QString& toolTip) {
    auto* box = new QCheckBox(text, this);
    box->setToolTip(toolTip);
    layout()->addWidget(box);
    connect(box, &QCheckBox::toggled, this, &SmoothBox::EnableFields);
    connect(box, &QCheckBox::clicked, this, &SmoothBox::Edited);
    return box;
}

void SmoothBox::EnableFields() {
    doppler_->setEnabled(smooth_->isChecked());
    metres_->setEnabled(smooth_->isChecked() && doppler_->isChecked());
}

void SmoothBox::Show(const Placing& placing) {
    smooth_->setChecked(placing.smoothness == Smoothness::kSmooth);
    curve_->setChecked(placing.curve == PathCurve::kSpline);
    doppler_->setChecked(placing.doppler == Doppler::kOn);
    metres_->setValue(placing.metresPerUnit);
    EnableFields();
}

Placing SmoothBox::Chosen() const {
    const bool moves = motion_ == SourceMotion::kMoving;
    const bool smooth = smooth_->isChecked();
    return {.kind = moves ? PlacingKind::kPath : PlacingKind::kPoint,
            .curve = moves && curve_->isChecked() ? PathCurve::kSpline : PathCurve::kStraight,
            .smoothness = smooth ? Smoothness::kSmooth : Smoothness::kStepped,
            .doppler = moves && smooth && doppler_->isChecked() ? Doppler::kOn : Doppler::kOff,
            .metresPerUnit = metres_->value()};
}

}  // namespace sonavel
