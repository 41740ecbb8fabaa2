// The presets of an editor: a list to load them from, with Save and Delete. The editor says how its
// values are loaded and saved.
#pragma once

#include <QComboBox>
#include <QPushButton>
#include <functional>
#include <string>

#include "platform/user_prompts.h"
#include "spatial/presets.h"

namespace sonavel {

struct PresetStore {
    ProfileFile file;
    QString nameDialogTitle;
    std::string (*deleteQuestion)(std::string_view name);
    std::function<void(const ProfileText& presets, const std::string& name)> load;
    // False when the file cannot be written.
    std::function<bool(ProfileFile& file, const std::string& name)> save;
};

class PresetBar : public QWidget {
    Q_OBJECT

  public:
    PresetBar(PresetStore store, UserPrompts& prompts, QWidget* parent = nullptr);

    // False, with nothing loaded, when there is no preset.
    bool LoadFirst();
    void SetSavingEnabled(bool enabled) { save_->setEnabled(enabled); }

    // The preset that was loaded or saved last; empty for none.
    QString Current() const { return names_->currentText(); }
    // Shows a preset as the current one without loading it, when the file still has it.
    void SetCurrent(const QString& name);

    // Does nothing for a name that the list does not have.
    void LoadPreset(const std::string& name);
    // Asks before it writes over a preset of that name.
    void SavePreset(const std::string& name);
    // The current one. Asks first; the one before it in the list is then loaded.
    void DeletePreset();

  private:
    void FillList(const QString& current);
    void AskNameAndSave();
    void ShowState();
    bool Exists(const std::string& name) const;

    PresetStore store_;
    UserPrompts& prompts_;
    QComboBox* names_;
    QPushButton* save_;
    QPushButton* delete_;
};

}  // namespace sonavel
