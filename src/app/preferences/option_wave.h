// The page "Wave" of the preferences: the devices for playing and recording and the sizes of their
// blocks.
#pragma once

#include <QComboBox>
#include <QPushButton>

#include "app/preferences/option_page.h"
#include "app/preferences/test_tone.h"

namespace sonavel {

// One direction's device and block size.
class WaveDeviceFields : public QWidget {
    Q_OBJECT

  public:
    explicit WaveDeviceFields(QWidget* parent = nullptr);

    // What there is to choose from; a device that is chosen stays so, also where it is not there.
    void ShowDevices(const WaveDeviceList& list);
    void SetValues(int deviceId, int blockFrames);
    int DeviceId() const { return device_->currentData().toInt(); }
    int BlockFrames() const { return blockFrames_->Value(); }
    bool IsValid() const { return blockFrames_->IsValid(); }
    QFormLayout& Form() { return *form_; }

  Q_SIGNALS:
    void Edited();

  private:
    void Choose(int deviceId);
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

    void ShowPreferences(const Preferences& preferences) override;
    void TakeInto(Preferences& preferences) const override;
    bool IsValid() const override;

  protected:
    // Lists the devices anew: one may have come or gone since the page was seen last.
    void showEvent(QShowEvent* event) override;

  private:
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
