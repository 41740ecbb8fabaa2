#include "spatial/ui/path_box.h"

#include <QGridLayout>

#include "spatial/placing_times.h"

namespace sonavel {
namespace {

constexpr int kRoundDecimals = 2;

}  // namespace

PathBox::PathBox(ShapeOffer shapes, LoopOffer loops, QWidget* parent)
    : QGroupBox(tr("Path"), parent),
      round_(new QDoubleSpinBox(this)),
      shape_(new QPushButton(tr("&New Shape…"), this)) {
    auto* grid = new QGridLayout(this);
    curve_ =
        AddBox(tr("&Flowing curve through the points"), tr("A curve in place of straight legs"));
    loop_ = AddBox(tr("Loop bac&k"), tr("Leads back to the first point, and begins again there"));
    round_->setObjectName("Round");
    round_->setPrefix(tr("a round in "));
    round_->setSuffix(tr(" s"));
    round_->setDecimals(kRoundDecimals);
    round_->setRange(0, kGreatestPathSeconds);
    round_->setSpecialValueText(tr("one round"));
    round_->setToolTip(tr("How long a round takes; at 0 it takes as long as the sound"));
    shape_->setAutoDefault(false);
    shape_->setToolTip(tr("Replaces the points by a circle, a spiral or a way past the head"));
    shape_->setVisible(shapes == ShapeOffer::kOn);
    loop_->setVisible(loops == LoopOffer::kOn);
    round_->setVisible(loops == LoopOffer::kOn);
    grid->addWidget(curve_, 0, 0, 1, 2);
    grid->addWidget(shape_, 0, 2);
    grid->addWidget(loop_, 1, 0);
    grid->addWidget(round_, 1, 1, 1, 2);
    connect(loop_, &QCheckBox::toggled, round_, &QWidget::setEnabled);
    connect(round_, &QDoubleSpinBox::valueChanged, this, &PathBox::Edited);
    connect(shape_, &QPushButton::clicked, this, &PathBox::ShapeAsked);
    Show({});
}

QCheckBox* PathBox::AddBox(const QString& text, const QString& toolTip) {
    auto* box = new QCheckBox(text, this);
    box->setToolTip(toolTip);
    connect(box, &QCheckBox::clicked, this, &PathBox::Edited);
    return box;
}

void PathBox::Show(const Placing& placing) {
    ShowCurve(placing.curve);
    loop_->setChecked(placing.loop == PathLoop::kLoop);
    round_->setValue(placing.roundSeconds);
    round_->setEnabled(loop_->isChecked());
}

void PathBox::ShowCurve(PathCurve curve) {
    curve_->setChecked(curve == PathCurve::kSpline);
}

void PathBox::PutInto(Placing& placing) const {
    placing.curve = curve_->isChecked() ? PathCurve::kSpline : PathCurve::kStraight;
    placing.loop = loop_->isChecked() ? PathLoop::kLoop : PathLoop::kOnce;
    placing.roundSeconds = loop_->isChecked() ? round_->value() : 0;
}

}  // namespace sonavel
