// The sheet "Preference Setting": its pages over the initialisation files and the person's own
// settings, with OK, Cancel and Apply.
#pragma once

#include <QTabWidget>

#include "app/keys_page.h"
#include "app/preferences/option_page.h"
#include "app/preferences/storage_facts.h"
#include "platform/wave_device.h"

namespace sonavel {

class COptionSheet : public FormDialog {
    Q_OBJECT

  public:
    // `commands`: whose keys can be changed.
    COptionSheet(const ProgramFolder& folder, WaveDevices& devices, QWidget* parent = nullptr,
                 const StorageFacts& facts = {}, std::vector<KeyRow> commands = {});

    void accept() override;

  Q_SIGNALS:
    // The files hold other settings than before; open documents, views and the meter read them
    // anew.
    void Changed();

  private:
    void AddPage(OptionPage* page, const QString& title);
    // False when the files cannot be written; the sheet then says so.
    bool Apply();
    Preferences Edited() const;
    void TakeEdit();

    ProgramFolder folder_;
    QTabWidget* tabs_;
    std::vector<OptionPage*> pages_;
    QLabel* problem_;
    Preferences stored_;
};

}  // namespace sonavel
