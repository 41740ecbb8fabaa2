#include "app/preferences/option_grid.h"

#include <QGroupBox>

namespace sonavel {

namespace {

using P = Preferences;

constexpr FlagText kItems[] = {
    {"&Time grid", [](P& p) -> int& { return p.grid.timeGrid; }},
    {"&Level grid", [](P& p) -> int& { return p.grid.levelGrid; }},
    {"Ti&me labels on the time grid", [](P& p) -> int& { return p.grid.timeLabels; }},
};

}  // namespace

COptionGrid::COptionGrid(QWidget* parent)
    : OptionPage(parent),
      type_(new QComboBox(this)),
      location_(new QComboBox(this)),
      widthSpacing_(new NumberField({0, kMostGridMs, 100}, tr("ms"), this)),
      heightSpacing_(new NumberField({0, kMostGridPercent, 5}, tr("% of full scale"), this)),
      preview_(new SoundPreview(this)) {
    // In the order of their numbers in the file.
    type_->addItems({tr("Every so many milliseconds"), tr("At the ruler's ticks")});
    location_->addItems({tr("In front of the waveform"), tr("Behind the waveform"), tr("Nowhere")});
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeItems());
    column->addWidget(MakeForm());
    column->addWidget(preview_, 0, Qt::AlignHCenter);
    column->addStretch(1);
    for (QComboBox* box : {type_, location_})
        connect(box, &QComboBox::currentIndexChanged, this, &OptionPage::Edited);
    for (NumberField* field : {widthSpacing_, heightSpacing_})
        connect(field, &NumberField::Edited, this, &OptionPage::Edited);
}

QWidget* COptionGrid::MakeItems() {
    auto* group = new QGroupBox(tr("Shown"), this);
    auto* row = new QHBoxLayout(group);
    for (const FlagText& item : kItems) {
        auto* column = new QVBoxLayout;
        items_.Add(*column, {&item, 1}, *this);
        row->addLayout(column);
    }
    return group;
}

QWidget* COptionGrid::MakeForm() {
    auto* group = new QGroupBox(tr("Form"), this);
    auto* form = new QFormLayout(group);
    form->addRow(tr("T&ype of the time grid:"), type_);
    form->addRow(tr("&Width spacing:"), widthSpacing_);
    form->addRow(tr("&Height spacing:"), heightSpacing_);
    form->addRow(tr("L&ocation:"), location_);
    return group;
}

void COptionGrid::ShowPreferences(const Preferences& preferences) {
    items_.Show(preferences);
    type_->setCurrentIndex(preferences.grid.type);
    location_->setCurrentIndex(preferences.grid.location);
    widthSpacing_->SetValue(preferences.grid.widthSpacingMs);
    heightSpacing_->SetValue(preferences.grid.heightSpacingPercent);
}

void COptionGrid::TakeInto(Preferences& preferences) const {
    items_.TakeInto(preferences);
    preferences.grid.type = type_->currentIndex();
    preferences.grid.location = location_->currentIndex();
    preferences.grid.widthSpacingMs = widthSpacing_->Value();
    preferences.grid.heightSpacingPercent = heightSpacing_->Value();
}

bool COptionGrid::IsValid() const {
    return widthSpacing_->IsValid() && heightSpacing_->IsValid();
}

void COptionGrid::ShowPreview(const Preferences& preferences) {
    if (IsValid()) preview_->ShowPreferences(preferences);
}

}  // namespace sonavel
