// The page "General" of the preferences.
#pragma once

#include "app/preferences/option_page.h"
#include "app/preferences/storage_facts.h"

namespace sonavel {

class COptionGeneral : public OptionPage {
    Q_OBJECT

  public:
    explicit COptionGeneral(const StorageFacts& facts, QWidget* parent = nullptr);

  private:
    QWidget* MakeOpening();
    QWidget* MakeDocument(const StorageFacts& facts);
    // In megabytes, of which 0 stands for `automaticBytes`.
    NumberField* AddRoom(SettingId setting, std::uint64_t automaticBytes);
    QWidget* MakeView();
    QWidget* MakeStatus();
    QWidget* MakeMeter();
};

}  // namespace sonavel
