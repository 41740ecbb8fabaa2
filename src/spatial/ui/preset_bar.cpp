#include "spatial/ui/preset_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

#include "platform/qt/utf8_text.h"
#include "spatial/ui/preset_name_dialog.h"

namespace sonavel {
namespace {

constexpr const char* kWarning = "WARNING";

QPushButton* MakeButton(const QString& text, QWidget* parent) {
    auto* button = new QPushButton(text, parent);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

PresetBar::PresetBar(PresetStore store, UserPrompts& prompts, QWidget* parent)
    : QWidget(parent),
      store_(std::move(store)),
      prompts_(prompts),
      names_(new QComboBox(this)),
      save_(MakeButton(tr("Sa&ve…"), this)),
      delete_(MakeButton(tr("&Delete"), this)) {
    names_->setPlaceholderText(tr("No preset"));
    names_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    names_->setMinimumContentsLength(14);
    auto* label = new QLabel(tr("P&reset:"), this);
    label->setBuddy(names_);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(label);
    row->addWidget(names_, 1);
    row->addWidget(save_);
    row->addWidget(delete_);
    FillList({});
    connect(names_, &QComboBox::activated, this,
            [this] { LoadPreset(names_->currentText().toStdString()); });
    connect(save_, &QPushButton::clicked, this, &PresetBar::AskNameAndSave);
    connect(delete_, &QPushButton::clicked, this, &PresetBar::DeletePreset);
}

bool PresetBar::LoadFirst() {
    if (names_->count() == 0) return false;
    LoadPreset(names_->itemText(0).toStdString());
    return true;
}

void PresetBar::FillList(const QString& current) {
    names_->clear();
    for (const std::string& name : LoadPresetNames(store_.file.Read()))
        names_->addItem(Utf8Text(name));
    SetCurrent(current);
}

void PresetBar::SetCurrent(const QString& name) {
    names_->setCurrentIndex(names_->findText(name, Qt::MatchFixedString));
    ShowState();
}

void PresetBar::ShowState() {
    names_->setEnabled(names_->count() > 0);
    delete_->setEnabled(CanDeletePreset(names_->currentIndex()));
    delete_->setToolTip(names_->currentIndex() == 0 ? tr("The first preset cannot be deleted.")
                                                    : QString());
}

void PresetBar::LoadPreset(const std::string& name) {
    SetCurrent(Utf8Text(name));
    if (names_->currentIndex() >= 0) store_.load(store_.file.Read(), name);
}

void PresetBar::AskNameAndSave() {
    PresetNameDialog dialog(store_.nameDialogTitle, names_->currentText(), window());
    if (dialog.exec() == QDialog::Accepted) SavePreset(dialog.Name().toStdString());
}

// Section names of the file differ in more than the case of their letters.
bool PresetBar::Exists(const std::string& name) const {
    const std::vector<std::string> names = LoadPresetNames(store_.file.Read());
    return std::any_of(names.begin(), names.end(), [&](const std::string& other) {
        return Utf8Text(other).compare(Utf8Text(name), Qt::CaseInsensitive) == 0;
    });
}

void PresetBar::SavePreset(const std::string& name) {
    constexpr const char* kQuestion = "There is a preset with the same name. Overwrite it?";
    if (Exists(name) && !prompts_.AskYesNo(kQuestion, kWarning)) return;
    if (!store_.save(store_.file, name)) {
        prompts_.ShowMessage("The preset could not be saved: the file \"" +
                             store_.file.Path().string() + "\" cannot be written.");
        return;
    }
    FillList(Utf8Text(name));
}

void PresetBar::DeletePreset() {
    const int index = names_->currentIndex();
    if (!CanDeletePreset(index)) return;
    const std::string name = names_->currentText().toStdString();
    if (!prompts_.AskYesNo(store_.deleteQuestion(name), kWarning)) return;
    if (!sonavel::DeletePreset(store_.file, name)) {
        prompts_.ShowMessage("The preset could not be deleted: the file \"" +
                             store_.file.Path().string() + "\" cannot be written.");
        return;
    }
    names_->removeItem(index);
    LoadPreset(names_->itemText(index - 1).toStdString());
}

}  // namespace sonavel
