// What is asked before a file is imported: whether deep samples stay, and which of many channels.
#pragma once

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>

#include "exchange/channel_choices.h"
#include "exchange/sound_import.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

struct ImportQuestion {
    QString fileName;  // as a person reads it
    SoundFileDescription description;
    enum class Depth : std::uint8_t { kNotAsked, kAsked } depth = Depth::kAsked;
    enum class Place : std::uint8_t { kLast, kMoreFollow } place = Place::kLast;
};

class ImportDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit ImportDialog(const ImportQuestion& question, QWidget* parent = nullptr);

    ImportChoice Choice() const;
    // Whether the answer holds for the files that follow, too.
    bool HoldsForAll() const { return forAll_ && forAll_->isChecked(); }

  private:
    void AddDepths();
    void AddChannels(const SoundFileDescription& description);

    QButtonGroup* depths_ = nullptr;  // null while they are not asked for
    QComboBox* channels_ = nullptr;   // likewise
    QCheckBox* forAll_ = nullptr;
    std::vector<ChannelChoiceRow> rows_;
};

}  // namespace sonavel
