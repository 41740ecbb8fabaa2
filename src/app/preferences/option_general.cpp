#include "app/preferences/option_general.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLocale>

namespace sonavel {

namespace {

constexpr std::uint64_t kMegabyte = std::uint64_t{1} << 20;

QString Megabytes(std::uint64_t bytes) {
    return QLocale().toString(static_cast<qulonglong>((bytes + kMegabyte / 2) / kMegabyte));
}

}  // namespace

COptionGeneral::COptionGeneral(const StorageFacts& facts, QWidget* parent) : OptionPage(parent) {
    auto* left = new QVBoxLayout;
    left->addWidget(MakeOpening());
    left->addWidget(MakeDocument(facts));
    left->addStretch(1);
    auto* right = new QVBoxLayout;
    right->addWidget(MakeView());
    right->addWidget(MakeStatus());
    right->addWidget(MakeMeter());
    right->addStretch(1);
    auto* row = new QHBoxLayout(this);
    row->addLayout(left, 1);
    row->addLayout(right, 1);
}

QWidget* COptionGeneral::MakeOpening() {
    auto* group = new QGroupBox(tr("Opening"), this);
    auto* column = new QVBoxLayout(group);
    AddFlag(*column, SettingId::kOpenAndPlay, tr("&Play a sound when it is opened"));
    AddFlag(*column, SettingId::kOpenAndMaximize, tr("Ma&ximize its window"));
    AddFlag(*column, SettingId::kOpenAndFullTimeZoom, tr("Show every &frame as a pixel"));
    AddFlag(*column, SettingId::kImportRefused, tr("&Import what Open refuses"));
    AddFlag(*column, SettingId::kAutoPlay, tr("Play &samples as they are chosen"));
    return group;
}

NumberField* COptionGeneral::AddRoom(SettingId setting, std::uint64_t automaticBytes) {
    NumberField* field = AddNumber(setting, 256, tr("MB"));
    // Without a number the word alone.
    field->ShowZeroAs(automaticBytes > 0 ? tr("automatic (%1 MB)").arg(Megabytes(automaticBytes))
                                         : tr("automatic"));
    return field;
}

QWidget* COptionGeneral::MakeDocument(const StorageFacts& facts) {
    auto* group = new QGroupBox(tr("Document"), this);
    auto* column = new QVBoxLayout(group);
    AddFlag(*column, SettingId::kSaveUndo, tr("Keep &undo and redo information"));
    auto* form = new QFormLayout;
    form->addRow(tr("&At most in memory:"), AddRoom(SettingId::kUndoMemory, facts.undoMemory));
    const StorageFacts::Recovery recovery = facts.recovery.value_or(StorageFacts::Recovery());
    form->addRow(tr("Recovery, on the &disk:"), AddRoom(SettingId::kRecoveryRoom, recovery.room));
    auto* held = new QLabel(facts.recovery ? tr("%1 MB are in use").arg(Megabytes(recovery.held))
                                           : tr("Unsaved work is not kept"));
    held->setObjectName(QStringLiteral("recoveryHeld"));
    form->addRow(QString(), held);
    column->addLayout(form);
    AddFlag(*column, SettingId::kSaveMarkers,
            QStringLiteral("Save &markers with the sound (마커 저장)"));
    return group;
}

QWidget* COptionGeneral::MakeView() {
    auto* group = new QGroupBox(tr("View"), this);
    auto* column = new QVBoxLayout(group);
    AddFlag(*column, SettingId::kDisplaySampleData, tr("Show sample &values in the status bar"));
    AddFlag(*column, SettingId::kDisplaySeeker, tr("Show the p&lay position"));
    AddFlag(*column, SettingId::kPlayScrolling, tr("Scroll &while playing"));
    AddFlag(*column, SettingId::kPlayFollowsClicks, tr("Play on from &clicks"));
    AddFlag(*column, SettingId::kSnapToZero, tr("Snap to &zero crossings"));
    AddFlag(*column, SettingId::kApplyAutoSkipMode, tr("Apply auto s&kip mode at draw time"));
    return group;
}

QWidget* COptionGeneral::MakeStatus() {
    auto* group = new QGroupBox(tr("Positions and lengths"), this);
    auto* form = new QFormLayout(group);
    form->addRow(tr("Status f&ormat:"),
                 AddChoice(SettingId::kStatusFormat, {tr("Sample"), tr("Time"), tr("Second")}));
    return group;
}

QWidget* COptionGeneral::MakeMeter() {
    auto* group = new QGroupBox(tr("Play meter"), this);
    auto* column = new QVBoxLayout(group);
    auto* form = new QFormLayout;
    // The absolute scale does not come back at a start, so it is none to start with.
    form->addRow(tr("Scale at the s&tart:"),
                 AddChoice(SettingId::kMeterScale,
                           {tr("-30 dB to 0 dB"), tr("-60 dB to 0 dB"), tr("-90 dB to 0 dB")}));
    column->addLayout(form);
    AddFlag(*column, SettingId::kMeterLabels, tr("Show lev&el"));
    return group;
}

}  // namespace sonavel
