#include "app/preferences/option_grid.h"

#include <QGroupBox>
#include <QHBoxLayout>

namespace sonavel {

COptionGrid::COptionGrid(QWidget* parent) : OptionPage(parent), preview_(new SoundPreview(this)) {
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeItems());
    column->addWidget(MakeForm());
    column->addWidget(preview_, 0, Qt::AlignHCenter);
    column->addStretch(1);
}

QWidget* COptionGrid::MakeItems() {
    auto* group = new QGroupBox(tr("Shown"), this);
    auto* row = new QHBoxLayout(group);
    AddFlag(*row, SettingId::kTimeGrid, tr("&Time grid"));
    AddFlag(*row, SettingId::kLevelGrid, tr("&Level grid"));
    AddFlag(*row, SettingId::kTimeLabels, tr("Ti&me labels on the time grid"));
    return group;
}

QWidget* COptionGrid::MakeForm() {
    auto* group = new QGroupBox(tr("Form"), this);
    auto* form = new QFormLayout(group);
    form->addRow(tr("T&ype of the time grid:"),
                 AddChoice(SettingId::kGridType,
                           {tr("Every so many milliseconds"), tr("At the ruler's ticks")}));
    form->addRow(tr("&Width spacing:"), AddNumber(SettingId::kGridWidthSpacing, 100, tr("ms")));
    form->addRow(tr("&Height spacing:"),
                 AddNumber(SettingId::kGridHeightSpacing, 5, tr("% of full scale")));
    form->addRow(tr("L&ocation:"),
                 AddChoice(SettingId::kGridLocation, {tr("In front of the waveform"),
                                                      tr("Behind the waveform"), tr("Nowhere")}));
    return group;
}

void COptionGrid::ShowPreview(const Preferences& preferences) {
    if (IsValid()) preview_->ShowPreferences(preferences);
}

}  // namespace sonavel
