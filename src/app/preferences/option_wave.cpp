#include "app/preferences/option_wave.h"

#include <QGroupBox>
#include <QHBoxLayout>

#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

constexpr double kUsualRate = 44100;

QGroupBox* GroupWith(const QString& title, QWidget* content) {
    auto* group = new QGroupBox(title);
    auto* column = new QVBoxLayout(group);
    column->addWidget(content);
    return group;
}

}  // namespace

WaveDeviceFields::WaveDeviceFields(SettingId blockFrames, QWidget* parent)
    : QWidget(parent),
      form_(new QFormLayout(this)),
      device_(new QComboBox(this)),
      blockFrames_(new NumberField(blockFrames, 128, tr("frames"), this)),
      latency_(new QLabel(this)) {
    form_->setContentsMargins(0, 0, 0, 0);
    ShowDevices({.devices = {}, .hasDefault = true});
    // Long names are cut off rather than widening the sheet.
    device_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    device_->setMinimumContentsLength(36);
    form_->addRow(tr("Device:"), device_);
    form_->addRow(tr("Block size:"), blockFrames_);
    form_->addRow(tr("Latency:"), latency_);
    connect(device_, &QComboBox::currentIndexChanged, this, &WaveDeviceFields::Edited);
    connect(blockFrames_, &NumberField::Edited, this, [this] {
        ShowLatency();
        Q_EMIT Edited();
    });
    ShowLatency();
}

void WaveDeviceFields::ShowDevices(const WaveDeviceList& list) {
    const QSignalBlocker quiet(device_);
    const int chosen = device_->count() > 0 ? DeviceId() : kDefaultWaveDevice;
    device_->clear();
    device_->addItem(list.hasDefault ? tr("(Default)") : tr("(Default: there is no device now)"),
                     kDefaultWaveDevice);
    device_->addItem(tr("(None)"), kNoWaveDevice);
    for (const WaveDeviceInfo& device : list.devices)
        device_->addItem(Utf8Text(device.name), device.id);
    Choose(chosen);
}

void WaveDeviceFields::Choose(int deviceId) {
    if (device_->findData(deviceId) < 0)
        device_->addItem(tr("Device %1 (not there now)").arg(deviceId), deviceId);
    device_->setCurrentIndex(device_->findData(deviceId));
}

void WaveDeviceFields::ShowLatency() {
    if (!IsValid()) return latency_->setText(QStringLiteral("-"));
    const double blockMs = BlockFrames() * 1000 / kUsualRate;
    latency_->setText(tr("%1 ms a block, %2 ms all %3 blocks (at 44,100 Hz)")
                          .arg(blockMs, 0, 'f', 1)
                          .arg(blockMs * CWavePlayer::kBlockCount, 0, 'f', 0)
                          .arg(CWavePlayer::kBlockCount));
}

COptionWave::COptionWave(WaveDevices& devices, QWidget* parent)
    : OptionPage(parent),
      devices_(devices),
      tone_(devices),
      playback_(AddFields(SettingId::kPlaybackDevice, SettingId::kPlaybackBlockFrames)),
      record_(AddFields(SettingId::kRecordDevice, SettingId::kRecordBlockFrames)),
      test_(new QPushButton(this)),
      testNote_(new QLabel(this)) {
    AddTest();
    auto* column = new QVBoxLayout(this);
    column->addWidget(GroupWith(tr("Playback"), playback_));
    column->addWidget(GroupWith(tr("Record"), record_));
    column->addStretch(1);
    for (WaveDeviceFields* fields : {playback_, record_})
        connect(fields, &WaveDeviceFields::Edited, this, &OptionPage::Edited);
    connect(playback_, &WaveDeviceFields::Edited, this, [this] {
        testNote_->clear();
        ShowTestState();
    });
    connect(&tone_, &TestTone::Ended, this, [this] {
        testNote_->setText(tone_.Problem());
        ShowTestState();
    });
    ShowTestState();
}

WaveDeviceFields* COptionWave::AddFields(SettingId device, SettingId blockFrames) {
    auto* fields = new WaveDeviceFields(blockFrames, this);
    AddControl({device, fields->DeviceField(), [fields](int id) { fields->Choose(id); },
                [fields] { return fields->DeviceId(); }});
    NumberField* const frames = fields->BlockFramesField();
    AddControl({blockFrames, frames, [frames](int number) { frames->SetValue(number); },
                [frames] { return frames->Value(); }});
    return fields;
}

void COptionWave::showEvent(QShowEvent* event) {
    devices_.ListAnew();
    playback_->ShowDevices(devices_.Outputs());
    record_->ShowDevices(devices_.Inputs());
    OptionPage::showEvent(event);
}

void COptionWave::AddTest() {
    auto* row = new QHBoxLayout;
    test_->setObjectName(QStringLiteral("test"));
    test_->setAutoDefault(false);
    testNote_->setObjectName(QStringLiteral("testNote"));
    testNote_->setWordWrap(true);
    row->addWidget(test_);
    row->addWidget(testNote_, 1);
    playback_->Form().addRow(QString(), row);
    connect(test_, &QPushButton::clicked, this, &COptionWave::SwitchTest);
}

void COptionWave::SwitchTest() {
    testNote_->clear();
    if (tone_.IsPlaying()) {
        tone_.Stop();
    } else if (!tone_.Start(playback_->DeviceId(), playback_->BlockFrames())) {
        testNote_->setText(tone_.Problem());
    }
    ShowTestState();
}

void COptionWave::ShowTestState() {
    test_->setText(tone_.IsPlaying() ? tr("S&top") : tr("&Test"));
    test_->setEnabled(tone_.IsPlaying() ||
                      (playback_->IsValid() && playback_->DeviceId() != kNoWaveDevice));
}

}  // namespace sonavel
