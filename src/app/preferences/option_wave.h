// The page "Wave" of the preferences: the devices for playing and recording and the sizes of their
// blocks.
#pragma once

#include <QPushButton>

#include "app/preferences/option_page.h"
#include "app/preferences/test_tone.h"

namespace sonavel {

// One direction's device and block size.
class WaveDeviceFields : public QWidget {
    Q_OBJECT

  public:
    explicit WaveDeviceFields(SettingId blockFrames, QWidget* parent = nullptr);

    // What there is to choose from; a device that is chosen stays so, also where it is not there.
    void ShowDevices(const WaveDeviceList& list);
    void Choose(int deviceId);
    int DeviceId() const { return device_->currentData().toInt(); }
    int BlockFrames() const { return blockFrames_->Value(); }
    QWidget* DeviceField() { return device_; }
    NumberField* BlockFramesField() { return blockFrames_; }
    bool IsValid() const { return blockFrames_->IsValid(); }
    QFormLayout& Form() { return *form_; }

  Q_SIGNALS:
    void Edited();

  private:
    void ShowLatency();

    QFormLayout* form_;
    QComboBox* device_;
    NumberField* blockFrames_;
    QLabel* latency_;
};

class COptionWave : public OptionPage {
    Q_OBJECT

  public:
    explicit COptionWave(WaveDevices& devices, QWidget* parent = nullptr);

  protected:
    // Lists the devices anew: one may have come or gone since the page was seen last.
    void showEvent(QShowEvent* event) override;

  private:
    WaveDeviceFields* AddFields(SettingId device, SettingId blockFrames);
    void AddTest();
    void SwitchTest();
    void ShowTestState();

    WaveDevices& devices_;
    TestTone tone_;
    WaveDeviceFields* playback_;
    WaveDeviceFields* record_;
    QPushButton* test_;
    QLabel* testNote_;
};

}  // namespace sonavel
