#include "app/preferences/option_display.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPainter>

#include "platform/qt/utf8_text.h"
#include "view/ui/qt_values.h"

namespace sonavel {

namespace {

constexpr QSize kSwatch{30, 16};

// The spare ones are kept in the file, but nothing is drawn in them.
constexpr const char* kColourNames[ColourTable::kSlots] = {
    "Waveform", "Background", "Grid",         "Selected waveform", "Selection",  "Center line",
    "Spare 6",  "Cursor",     "End of sound", "Marker label",      "Ruler text", "Marker strip",
    "Spare 12", "Ruler",      "Spare 14",     "Lane separator",
};

QIcon SwatchIcon(const QColor& colour, double pixelRatio) {
    QPixmap pixmap(kSwatch * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    QPainter painter(&pixmap);
    painter.fillRect(QRect({0, 0}, kSwatch), QColor(0x80, 0x80, 0x80));
    painter.fillRect(QRect({0, 0}, kSwatch).adjusted(1, 1, -1, -1), colour);
    return pixmap;
}

Rgb FromQColor(const QColor& colour) {
    const auto part = [](int value) { return static_cast<std::uint8_t>(value); };
    return {part(colour.red()), part(colour.green()), part(colour.blue())};
}

}  // namespace

COptionDisplay::COptionDisplay(const ProfileFile& display, QWidget* parent)
    : OptionPage(parent),
      presets_(display),
      refusal_(new QLabel(this)),
      preview_(new SoundPreview(this)) {
    auto* left = new QVBoxLayout;
    left->addWidget(MakeColours());
    left->addStretch(1);
    auto* right = new QVBoxLayout;
    right->addWidget(preview_);
    right->addWidget(MakeItems());
    right->addWidget(MakePresets());
    right->addStretch(1);
    auto* row = new QHBoxLayout(this);
    row->addLayout(left);
    row->addLayout(right);
}

QWidget* COptionDisplay::MakeColours() {
    auto* group = new QGroupBox(tr("Colors"), this);
    auto* grid = new QGridLayout(group);
    constexpr int kRows = 8;
    for (std::size_t slot = 0; slot < swatches_.size(); ++slot) {
        auto* button = new QPushButton(tr(kColourNames[slot]), group);
        button->setIconSize(kSwatch);
        button->setStyleSheet(QStringLiteral("text-align: left; padding: 4px 8px"));
        button->setAutoDefault(false);
        const int index = static_cast<int>(slot);
        grid->addWidget(button, index % kRows, index / kRows);
        button->setToolTip(tr("Chooses another color: %1.").arg(tr(kColourNames[slot]).toLower()));
        connect(button, &QPushButton::clicked, this, [this, slot] { ChooseColour(slot); });
        swatches_[slot] = button;
    }
    return group;
}

QWidget* COptionDisplay::MakeItems() {
    auto* group = new QGroupBox(tr("Shown"), this);
    auto* row = new QHBoxLayout(group);
    AddFlag(*row, SettingId::kHorizontalRuler, tr("&Horizontal ruler"));
    AddFlag(*row, SettingId::kVerticalRuler, tr("&Vertical ruler"));
    AddFlag(*row, SettingId::kCentreLine, tr("C&enter line"));
    return group;
}

QWidget* COptionDisplay::MakePresets() {
    auto* group = new QGroupBox(tr("Sets of colors"), this);
    auto* grid = new QGridLayout(group);
    preset_ = new QComboBox(group);
    preset_->setEditable(true);
    preset_->setInsertPolicy(QComboBox::NoInsert);
    // Completing would turn a new name into that of another set, which Save then replaces.
    preset_->setCompleter(nullptr);
    preset_->lineEdit()->setPlaceholderText(tr("Name"));
    preset_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QPalette warning = refusal_->palette();
    warning.setColor(QPalette::WindowText, QColor(0xC0, 0, 0));
    refusal_->setPalette(warning);
    auto* name = new QLabel(tr("&Name:"), group);
    name->setBuddy(preset_);
    grid->addWidget(name, 0, 0);
    grid->addWidget(preset_, 0, 1, 1, 2);
    grid->addWidget(refusal_, 0, 3);
    auto* buttons = new QHBoxLayout;
    load_ = AddButton(tr("&Load"), &COptionDisplay::LoadPreset);
    save_ = AddButton(tr("&Save"), &COptionDisplay::SavePreset);
    delete_ = AddButton(tr("&Delete"), &COptionDisplay::DeletePreset);
    QPushButton* defaults = AddButton(tr("De&faults"), &COptionDisplay::RestoreDefaults);
    for (QPushButton* button : {load_, save_, delete_, defaults}) buttons->addWidget(button);
    grid->addLayout(buttons, 1, 0, 1, 4);
    refusal_->setMinimumWidth(
        refusal_->fontMetrics().horizontalAdvance(tr("No blanks at its ends")));
    connect(preset_, &QComboBox::editTextChanged, this, &COptionDisplay::CheckPresetName);
    connect(preset_, &QComboBox::activated, this, &COptionDisplay::LoadPreset);
    ListPresets({});
    return group;
}

QPushButton* COptionDisplay::AddButton(const QString& text, void (COptionDisplay::*slot)()) {
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, slot);
    return button;
}

void COptionDisplay::ShowPreferences(const Preferences& preferences) {
    OptionPage::ShowPreferences(preferences);
    SetColours(preferences.colours);
}

void COptionDisplay::TakeInto(Preferences& preferences) const {
    OptionPage::TakeInto(preferences);
    preferences.colours = colours_;
}

void COptionDisplay::ShowPreview(const Preferences& preferences) {
    preview_->ShowPreferences(preferences);
}

void COptionDisplay::SetColour(std::size_t slot, Rgb colour) {
    colours_.Set(slot, colour);
    ShowSwatch(slot);
    Q_EMIT Edited();
}

void COptionDisplay::SetColours(const ColourTable& colours) {
    colours_ = colours;
    for (std::size_t slot = 0; slot < swatches_.size(); ++slot) ShowSwatch(slot);
    Q_EMIT Edited();
}

void COptionDisplay::ShowSwatch(std::size_t slot) {
    swatches_[slot]->setIcon(SwatchIcon(ToQColor(colours_.At(slot)), devicePixelRatioF()));
}

void COptionDisplay::ChooseColour(std::size_t slot) {
    const Rgb before = colours_.At(slot);
    QColorDialog dialog(ToQColor(before), this);
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    dialog.setWindowTitle(tr(kColourNames[slot]));
    connect(&dialog, &QColorDialog::currentColorChanged, this,
            [this, slot](const QColor& colour) { SetColour(slot, FromQColor(colour)); });
    if (dialog.exec() != QDialog::Accepted) SetColour(slot, before);
}

std::string COptionDisplay::PresetName() const {
    return preset_->currentText().trimmed().toStdString();
}

void COptionDisplay::ListPresets(const QString& chosen) {
    preset_->clear();
    for (const std::string& name : presets_.Names()) preset_->addItem(Utf8Text(name));
    preset_->setCurrentIndex(preset_->findText(chosen));
    preset_->setEditText(chosen);
    CheckPresetName();
}

void COptionDisplay::CheckPresetName() {
    const std::string name = PresetName();
    const QString problem = Utf8Text(ColourPresets::NameProblem(name));
    const bool exists = preset_->findText(Utf8Text(name), Qt::MatchFixedString) >= 0;
    save_->setEnabled(problem.isEmpty());
    load_->setEnabled(exists);
    delete_->setEnabled(exists);
    refusal_->setText(name.empty() ? QString() : problem);
}

void COptionDisplay::SavePreset() {
    if (!presets_.Save(PresetName(), colours_)) return Refuse(tr("Cannot be written"));
    ListPresets(Utf8Text(PresetName()));
}

void COptionDisplay::LoadPreset() {
    SetColours(presets_.Load(PresetName()));
}

void COptionDisplay::DeletePreset() {
    if (!presets_.Delete(PresetName())) return Refuse(tr("Cannot be written"));
    ListPresets({});
}

void COptionDisplay::RestoreDefaults() {
    SetColours(presets_.Defaults());
}

void COptionDisplay::Refuse(const QString& reason) {
    refusal_->setText(reason);
}

}  // namespace sonavel
