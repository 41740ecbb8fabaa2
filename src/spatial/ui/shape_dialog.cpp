#include "spatial/ui/shape_dialog.h"

#include <array>
#include <cmath>

#include "spatial/scene_points.h"

namespace sonavel {
namespace {

int InHundredths(double length) {
    return static_cast<int>(std::lround(kHundredths * length));
}

}  // namespace

ShapeDialog::ShapeDialog(const ShapeNumbers& first, QWidget* parent)
    : FormDialog(tr("Shape"), parent),
      shape_(new QComboBox(this)),
      radius_(new QSpinBox(this)),
      height_(new QSpinBox(this)),
      turns_(new QSpinBox(this)),
      meaning_(new QLabel(this)) {
    shape_->addItems({tr("Circle"), tr("Spiral"), tr("Fly-by")});
    radius_->setRange(InHundredths(kLeastShapeRadius), InHundredths(kGreatestShapeRadius));
    height_->setRange(-InHundredths(kGreatestShapeHeight), InHundredths(kGreatestShapeHeight));
    turns_->setRange(-kMostShapeTurns, kMostShapeTurns);
    turns_->setToolTip(tr("Clockwise; negative ones the other way"));
    QFormLayout& form = AddForm();
    form.addRow(tr("&Shape :"), shape_);
    form.addRow(tr("&Radius :"), radius_);
    form.addRow(tr("&Height :"), height_);
    form.addRow(tr("&Turns :"), turns_);
    meaning_->setWordWrap(true);
    meaning_->setMinimumWidth(40 * fontMetrics().averageCharWidth());
    Body().addWidget(meaning_);
    shape_->setCurrentIndex(static_cast<int>(first.shape));
    radius_->setValue(InHundredths(first.radius));
    height_->setValue(InHundredths(first.height));
    turns_->setValue(first.turns);
    connect(shape_, &QComboBox::currentIndexChanged, this, &ShapeDialog::ShowMeaning);
    ShowMeaning();
}

void ShapeDialog::ShowMeaning() {
    const std::array meanings = {
        tr("Around the head, from straight ahead; lengths in hundredths."),
        tr("Around the head, from the radius to a quarter of it, rising to the height."),
        tr("Past the head from left to right, as near as the radius; from right to left with "
           "negative turns."),
    };
    meaning_->setText(meanings[static_cast<std::size_t>(shape_->currentIndex())]);
}

ShapeNumbers ShapeDialog::Chosen() const {
    return {static_cast<PathShape>(shape_->currentIndex()), radius_->value() / kHundredths,
            height_->value() / kHundredths, turns_->value()};
}

}  // namespace sonavel
