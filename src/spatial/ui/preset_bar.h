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

    // Asks before it writes over a preset of that name.
    void Save(const std::string& name);

  private:
    void FillList(const QString& current);
    void LoadCurrent();
    void AskNameAndSave();
    void DeleteCurrent();
    void ShowState();
    bool Exists(const std::string& name) const;

    PresetStore store_;
    UserPrompts& prompts_;
    QComboBox* names_;
    QPushButton* save_;
    QPushButton* delete_;
};

}  // namespace sonavel
