#include "app/preferences/option_general.h"

#include <QGroupBox>
#include <QHBoxLayout>

namespace sonavel {

namespace {

using P = Preferences;

constexpr FlagText kOpening[] = {
    {"&Play a sound when it is opened", [](P& p) -> int& { return p.options.openAndPlay; }},
    {"Ma&ximize its window", [](P& p) -> int& { return p.options.openAndMaximize; }},
    {"Show every &frame as a pixel", [](P& p) -> int& { return p.options.openAndFullTimeZoom; }},
    {"Play &samples as they are chosen", [](P& p) -> int& { return p.autoPlay; }},
};
constexpr FlagText kView[] = {
    {"Show sample &values in the status bar",
     [](P& p) -> int& { return p.options.displaySampleData; }},
    {"Show the p&lay position", [](P& p) -> int& { return p.options.displaySeeker; }},
    {"Scroll &while playing", [](P& p) -> int& { return p.options.playScrolling; }},
    {"Apply auto s&kip mode at draw time",
     [](P& p) -> int& { return p.options.applyAutoSkipMode; }},
};
constexpr FlagText kDocument[] = {
    {"Keep &undo and redo information", [](P& p) -> int& { return p.options.saveUndo; }},
    {"Save &markers with the sound (마커 저장)",
     [](P& p) -> int& { return p.options.saveMarkers; }},
};
constexpr FlagText kMeter[] = {
    {"Show lev&el", [](P& p) -> int& { return p.meterLabels; }},
};

}  // namespace

COptionGeneral::COptionGeneral(QWidget* parent)
    : OptionPage(parent), statusFormat_(new QComboBox(this)), meterScale_(new QComboBox(this)) {
    auto* left = new QVBoxLayout;
    left->addWidget(MakeGroup(tr("Opening"), kOpening));
    left->addWidget(MakeGroup(tr("Document"), kDocument));
    left->addStretch(1);
    auto* right = new QVBoxLayout;
    right->addWidget(MakeGroup(tr("View"), kView));
    right->addWidget(MakeStatus());
    right->addWidget(MakeMeter());
    right->addStretch(1);
    auto* row = new QHBoxLayout(this);
    row->addLayout(left, 1);
    row->addLayout(right, 1);
    for (QComboBox* box : {statusFormat_, meterScale_})
        connect(box, &QComboBox::currentIndexChanged, this, &OptionPage::Edited);
}

QWidget* COptionGeneral::MakeGroup(const QString& title, std::span<const FlagText> flags) {
    auto* group = new QGroupBox(title, this);
    auto* column = new QVBoxLayout(group);
    flags_.Add(*column, flags, *this);
    return group;
}

QWidget* COptionGeneral::MakeStatus() {
    auto* group = new QGroupBox(tr("Positions and lengths"), this);
    auto* form = new QFormLayout(group);
    statusFormat_->addItems({tr("Sample"), tr("Time"), tr("Second")});
    form->addRow(tr("Status f&ormat:"), statusFormat_);
    return group;
}

QWidget* COptionGeneral::MakeMeter() {
    auto* group = new QGroupBox(tr("Play meter"), this);
    auto* column = new QVBoxLayout(group);
    auto* form = new QFormLayout;
    // The absolute scale does not come back at a start, so it is none to start with.
    meterScale_->addItems({tr("-30 dB to 0 dB"), tr("-60 dB to 0 dB"), tr("-90 dB to 0 dB")});
    form->addRow(tr("Scale at the s&tart:"), meterScale_);
    column->addLayout(form);
    flags_.Add(*column, kMeter, *this);
    return group;
}

void COptionGeneral::ShowPreferences(const Preferences& preferences) {
    flags_.Show(preferences);
    statusFormat_->setCurrentIndex(preferences.statusFormat);
    meterScale_->setCurrentIndex(preferences.meterScale);
}

void COptionGeneral::TakeInto(Preferences& preferences) const {
    flags_.TakeInto(preferences);
    preferences.statusFormat = statusFormat_->currentIndex();
    preferences.meterScale = meterScale_->currentIndex();
}

}  // namespace sonavel
