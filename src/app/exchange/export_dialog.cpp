#include "app/exchange/export_dialog.h"

#include <QFileDialog>
#include <QGroupBox>
#include <QLocale>
#include <QPushButton>
#include <algorithm>
#include <array>

#include "codec/kind_rules.h"
#include "platform/qt/file_names.h"
#include "platform/qt/message_box.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

using enum SoundFileKind;

constexpr ExportKind kKinds[] = {
    {kWav, ".wav"},   {kAiff, ".aiff"}, {kAu, ".au"},   {kFlac, ".flac"}, {kOggVorbis, ".ogg"},
    {kOpus, ".opus"}, {kMp3, ".mp3"},   {kW64, ".w64"}, {kCaf, ".caf"},   {kRf64, ".rf64"},
};

struct TagRow {
    const char* key;
    const char* label;
};

constexpr TagRow kTagRows[] = {
    {"title", "&Title:"}, {"artist", "&Artist:"},   {"album", "A&lbum:"},
    {"date", "&Year:"},   {"comment", "&Comment:"}, {"copyright", "C&opyright:"},
};

constexpr int kPathWidth = 420;
constexpr int kNoticeLines = 3;
constexpr int kLongestChoice = 12;  // "32-bit float"

QString DepthText(EncodedDepth depth) {
    const QString texts[] = {QObject::tr("8 bits"), QObject::tr("16 bits"), QObject::tr("24 bits"),
                             QObject::tr("32-bit float")};
    return texts[static_cast<std::size_t>(depth)];
}

std::optional<SoundFileKind> KindNamed(const QString& path) {
    return ExportKindOf(FilePath(path));
}

// Another extension in place of the one of a kind; a name with none of them gets it behind it.
QString WithExtension(const QString& path, const char* extension) {
    const bool hasOne = KindNamed(path).has_value();
    return (hasOne ? path.left(path.lastIndexOf(u'.')) : path) + QLatin1String(extension);
}

// "NAME copy.EXT".
QString WithCopy(const QString& path) {
    QString copy = path;
    return copy.insert(path.lastIndexOf(u'.'), QObject::tr(" copy"));
}

std::string ValueOf(const std::vector<SoundTag>& tags, std::string_view key) {
    const auto found = std::ranges::find(tags, key, &SoundTag::key);
    return found != tags.end() ? found->value : std::string();
}

void SetValue(std::vector<SoundTag>& tags, std::string_view key, const QString& value) {
    std::erase_if(tags, [&](const SoundTag& tag) { return tag.key == key; });
    if (!value.isEmpty()) tags.push_back({std::string(key), value.toStdString()});
}

ExportPart PartOf(const QCheckBox& box) {
    return box.isChecked() ? ExportPart::kWrite : ExportPart::kLeaveOut;
}

}  // namespace

std::vector<ExportKind> ExportKinds() {
    return {std::begin(kKinds), std::end(kKinds)};
}

ExportDialog::ExportDialog(ExportQuestion question, QWidget* parent)
    : FormDialog(question.title, parent), question_(std::move(question)) {
    SetSizing(Sizing::kFree);
    AddFile();
    AddFormat();
    AddTags();
    AddNotice();
    Buttons().button(QDialogButtonBox::Ok)->setText(tr("&Export"));
    TakeKind();
    connect(path_, &QLineEdit::textChanged, this, &ExportDialog::TakeTypedPath);
    connect(kind_, &QComboBox::currentIndexChanged, this, &ExportDialog::TakeKind);
    connect(depth_, &QComboBox::currentIndexChanged, this, &ExportDialog::ShowNotice);
    connect(quality_, &QSpinBox::valueChanged, this, &ExportDialog::ShowNotice);
    for (QCheckBox* box : {markers_, tags_})
        connect(box, &QCheckBox::toggled, this, &ExportDialog::ShowNotice);
    for (QLineEdit* edit : tagEdits_)
        connect(edit, &QLineEdit::textChanged, this, &ExportDialog::ShowNotice);
}

void ExportDialog::AddFile() {
    path_ = new QLineEdit(this);
    Propose(FileText(question_.proposed.path));
    path_->setObjectName(QStringLiteral("path"));
    path_->setMinimumWidth(kPathWidth);
    auto* browse = new QPushButton(tr("&Browse..."), this);
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, &ExportDialog::ChooseFile);
    auto* row = new QHBoxLayout;
    row->addWidget(path_, 1);
    row->addWidget(browse);
    QFormLayout& form = AddForm();
    auto* label = new QLabel(tr("&Path:"), this);
    label->setBuddy(path_);
    form.addRow(label, row);
}

void ExportDialog::AddFormat() {
    QFormLayout& form = AddForm(tr("Format"));
    kind_ = new QComboBox(this);
    kind_->setObjectName(QStringLiteral("kind"));
    for (const ExportKind& row : kKinds)
        kind_->addItem(Utf8Text(KindName(row.kind)), static_cast<int>(row.kind));
    kind_->setCurrentIndex(kind_->findData(static_cast<int>(question_.proposed.kind)));
    depth_ = new QComboBox(this);
    depth_->setObjectName(QStringLiteral("depth"));
    // One width for both, whichever texts they hold.
    for (QComboBox* box : {kind_, depth_}) box->setMinimumContentsLength(kLongestChoice);
    quality_ = new QSpinBox(this);
    quality_->setRange(0, static_cast<int>(kBestQuality));
    quality_->setValue(static_cast<int>(question_.proposed.quality));
    quality_->setToolTip(tr("0 gives the smallest file, 10 the best sound."));
    markers_ = new QCheckBox(tr("Write &markers"), this);
    markers_->setChecked(question_.proposed.markers == ExportPart::kWrite);
    form.addRow(tr("&Format:"), kind_);
    form.addRow(tr("&Samples:"), depth_);
    form.addRow(tr("&Quality:"), quality_);
    form.addRow(QString(), markers_);
}

void ExportDialog::AddTags() {
    QFormLayout& form = AddForm(tr("Tags of the new file"));
    tags_ = new QCheckBox(tr("&Write tags"), this);
    tags_->setChecked(question_.proposed.tags == ExportPart::kWrite);
    form.addRow(QString(), tags_);
    for (const TagRow& row : kTagRows) {
        auto* edit = new QLineEdit(Utf8Text(ValueOf(question_.proposed.tagValues, row.key)), this);
        edit->setObjectName(QLatin1String(row.key));
        edit->setMaxLength(static_cast<int>(kMostTagBytes / 4));
        edit->setEnabled(tags_->isChecked());
        connect(tags_, &QCheckBox::toggled, edit, &QWidget::setEnabled);
        form.addRow(tr(row.label), edit);
        tagEdits_.push_back(edit);
    }
}

void ExportDialog::AddNotice() {
    size_ = new QLabel(this);
    size_->setObjectName(QStringLiteral("size"));
    losses_ = new QLabel(this);
    losses_->setObjectName(QStringLiteral("losses"));
    losses_->setTextFormat(Qt::PlainText);
    losses_->setWordWrap(true);
    losses_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // These keep their place, so that nothing moves when a line comes or goes.
    losses_->setMinimumHeight(kNoticeLines * losses_->fontMetrics().lineSpacing());
    QPalette palette = losses_->palette();
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    palette.setColor(QPalette::WindowText, dark ? QColor(0xff, 0xb0, 0x60) : QColor(0xa0, 0x40, 0));
    losses_->setPalette(palette);
    Body().addWidget(size_);
    Body().addWidget(losses_, 1);
}

SoundFileKind ExportDialog::Kind() const {
    return static_cast<SoundFileKind>(kind_->currentData().toInt());
}

void ExportDialog::ChooseFile() {
    QFileDialog dialog(this, windowTitle());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);  // Export asks
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.selectFile(path_->text());
    if (dialog.exec() == QDialog::Accepted) path_->setText(dialog.selectedFiles().value(0));
}

void ExportDialog::TakeKind() {
    const std::vector<EncodedDepth> depths = question_.depthsOf(Kind());
    const QVariant wanted =
        depth_->count() > 0 ? depth_->currentData() : static_cast<int>(question_.proposed.depth);
    const QSignalBlocker silence(depth_);
    depth_->clear();
    for (const EncodedDepth depth : depths)
        depth_->addItem(DepthText(depth), static_cast<int>(depth));
    depth_->setCurrentIndex(std::max(0, depth_->findData(wanted)));
    depth_->setEnabled(!depths.empty());
    quality_->setEnabled(depths.empty());
    const auto* row = std::ranges::find(kKinds, Kind(), &ExportKind::kind);
    if (KindNamed(path_->text()) != row->kind)
        Propose(WithExtension(path_->text(), row->extension));
    ShowNotice();
}

void ExportDialog::Propose(const QString& path) {
    const bool isOwn = !question_.own.empty() && FilePath(path) == question_.own;
    const QSignalBlocker silent(path_);
    path_->setText(isOwn ? WithCopy(path) : path);
}

void ExportDialog::TakeTypedPath() {
    const std::optional<SoundFileKind> typed = KindNamed(path_->text());
    const int index = typed ? kind_->findData(static_cast<int>(*typed)) : -1;
    if (index >= 0 && index != kind_->currentIndex())
        kind_->setCurrentIndex(index);
    else
        ShowNotice();
}

ExportAnswer ExportDialog::Answer() const {
    ExportAnswer answer = question_.proposed;
    answer.path = FilePath(QFileInfo(path_->text()).absoluteFilePath());
    answer.kind = Kind();
    if (depth_->count() > 0)
        answer.depth = static_cast<EncodedDepth>(depth_->currentData().toInt());
    answer.quality = static_cast<std::uint32_t>(quality_->value());
    answer.markers = PartOf(*markers_);
    answer.tags = PartOf(*tags_);
    for (std::size_t i = 0; i < tagEdits_.size(); ++i)
        SetValue(answer.tagValues, kTagRows[i].key, tagEdits_[i]->text());
    return answer;
}

void ExportDialog::ShowNotice() {
    const bool isNamed = !QFileInfo(path_->text()).fileName().isEmpty();
    const ExportNotice notice = question_.notice(Answer());
    size_->setText(tr("Estimated size: %1")
                       .arg(QLocale().formattedDataSize(static_cast<qint64>(notice.estimatedBytes),
                                                        1, QLocale::DataSizeTraditionalFormat)));
    QStringList lines = notice.losses;
    for (QString& line : lines) line += u'.';
    losses_->setText(notice.refusal.isEmpty() ? lines.join(u'\n') : notice.refusal);
    SetOkEnabled(isNamed && notice.refusal.isEmpty());
}

void ExportDialog::accept() {
    const QFileInfo file(path_->text());
    if (file.exists()) {
        MessageBox box(
            {.text = tr("%1 exists already. Replace it?").arg(ShownFileText(file.fileName())),
             .buttons = QMessageBox::Yes | QMessageBox::No},
            this);
        if (box.exec() != QMessageBox::Yes) return;
    }
    FormDialog::accept();
}

}  // namespace sonavel
