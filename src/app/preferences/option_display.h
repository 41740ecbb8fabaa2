// The page "Display" of the preferences: colours, named sets of them, rulers and centre line.
#pragma once

#include <QPushButton>
#include <array>

#include "app/preferences/colour_presets.h"
#include "app/preferences/option_page.h"
#include "app/preferences/sound_preview.h"

namespace sonavel {

class COptionDisplay : public OptionPage {
    Q_OBJECT

  public:
    explicit COptionDisplay(const ProfileFile& display, QWidget* parent = nullptr);

    void ShowPreferences(const Preferences& preferences) override;
    void TakeInto(Preferences& preferences) const override;
    void ShowPreview(const Preferences& preferences) override;

    void SetColour(std::size_t slot, Rgb colour);
    void SetColours(const ColourTable& colours);

  private:
    QWidget* MakeColours();
    QWidget* MakeItems();
    QWidget* MakePresets();
    QPushButton* AddButton(const QString& text, void (COptionDisplay::*slot)());
    void ChooseColour(std::size_t slot);
    void ShowSwatch(std::size_t slot);
    void ListPresets(const QString& chosen);
    void SavePreset();
    void LoadPreset();
    void DeletePreset();
    void RestoreDefaults();
    void CheckPresetName();
    std::string PresetName() const;
    void Refuse(const QString& reason);

    ColourPresets presets_;
    ColourTable colours_;
    std::array<QPushButton*, ColourTable::kSlots> swatches_{};
    QComboBox* preset_ = nullptr;
    QLabel* refusal_;
    QPushButton* save_ = nullptr;
    QPushButton* load_ = nullptr;
    QPushButton* delete_ = nullptr;
    SoundPreview* preview_;
};

}  // namespace sonavel
