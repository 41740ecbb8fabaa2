#include "app/save_as_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTreeView>

#include "app/save_details_dialog.h"
#include "platform/qt/file_names.h"

namespace sonavel {

namespace {

constexpr int kFirstOwnRow = 4;
constexpr QSize kFirstSize{860, 680};

QLineEdit* ReadOnlyEdit(QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setReadOnly(true);
    edit->setFocusPolicy(Qt::ClickFocus);
    QPalette palette = edit->palette();
    palette.setColor(QPalette::Base, palette.color(QPalette::Window));
    edit->setPalette(palette);
    return edit;
}

QLabel* LabelFor(const QString& text, QWidget* field, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setBuddy(field);
    return label;
}

QRadioButton* AddChoice(QButtonGroup& group, int id, const QString& text, QWidget* parent) {
    auto* button = new QRadioButton(text, parent);
    group.addButton(button, id);
    return button;
}

}  // namespace

QList<FileFilter> ParseFileFilters(const std::string& filter) {
    QList<FileFilter> filters;
    const QStringList fields = QString::fromStdString(filter).split(u'|');
    for (qsizetype i = 0; i + 1 < fields.size() && !fields[i].isEmpty(); i += 2)
        filters << FileFilter{fields[i], fields[i + 1].split(u';', Qt::SkipEmptyParts)};
    return filters;
}

QStringList NameFilters(const QList<FileFilter>& filters) {
    QStringList names;
    for (const FileFilter& filter : filters) {
        const QString title = filter.description.section(u'(', 0, 0).trimmed();
        QStringList patterns = filter.patterns;
        // A file without a "." in its name is one of all files, too.
        patterns.replaceInStrings(QStringLiteral("*.*"), QStringLiteral("*"));
        names << QStringLiteral("%1 (%2)").arg(title, patterns.join(u' '));
    }
    return names;
}

QString SuffixOf(const FileFilter& filter) {
    const bool one = filter.patterns.size() == 1 && filter.patterns.front().startsWith("*.") &&
                     filter.patterns.front() != QStringLiteral("*.*");
    return one ? filter.patterns.front().mid(2) : QStringLiteral("WAV");
}

SaveAsDialog::SaveAsDialog(const SaveAsRequest& request, const QStringList& recentFolders,
                           SaveNoticeSource notice, QWidget* parent)
    : QFileDialog(parent, tr("Save As")),
      request_(request),
      notice_(std::move(notice)),
      saveMarkers_(request.saveMarkers) {
    SetUpFileList();
    auto* grid = qobject_cast<QGridLayout*>(layout());
    AddRecentRow(*grid, recentFolders);
    AddPathRow(*grid);
    AddPropertyGroup(*grid);
    AddWarningRow(*grid);
    ConnectUpdates();
    UpdateTexts();
    resize(kFirstSize.boundedTo(screen()->availableSize() * 9 / 10));
}

void SaveAsDialog::SetUpFileList() {
    setOption(QFileDialog::DontUseNativeDialog);
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    const QList<FileFilter> filters = ParseFileFilters(request_.filter);
    setNameFilters(NameFilters(filters));
    if (auto* types = findChild<QComboBox*>(QStringLiteral("fileTypeCombo")))
        for (int i = 0; i < filters.size() && i < types->count(); ++i)
            types->setItemText(i, filters[i].description);
    // Sizes and dates whole, the names in what is left.
    if (auto* files = findChild<QTreeView*>(QStringLiteral("treeView"))) {
        files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
    if (!filters.isEmpty()) setDefaultSuffix(SuffixOf(filters.front()));
    fileName_ = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    selectFile(QString::fromStdString(request_.proposedName));
}

void SaveAsDialog::AddRecentRow(QGridLayout& grid, const QStringList& recentFolders) {
    auto* recent = new QComboBox(this);
    recent->setObjectName(QStringLiteral("recentFolders"));
    recent->setPlaceholderText(tr("Folders used last"));
    recent->addItems(recentFolders);
    recent->setCurrentIndex(-1);
    recent->setEnabled(!recentFolders.isEmpty());
    connect(recent, &QComboBox::textActivated, this, &SaveAsDialog::ShowFolder);
    grid.addWidget(LabelFor(QStringLiteral("Recent(&M):"), recent, this), kFirstOwnRow, 0);
    grid.addWidget(recent, kFirstOwnRow, 1);
}

void SaveAsDialog::ShowFolder(const QString& folder) {
    const QString name = fileName_->text();
    setDirectory(folder);
    fileName_->setText(name);
    fileName_->selectAll();
    UpdateTexts();
}

void SaveAsDialog::AddPathRow(QGridLayout& grid) {
    fullPath_ = ReadOnlyEdit(this);
    fullPath_->setObjectName(QStringLiteral("fullPath"));
    grid.addWidget(LabelFor(QStringLiteral("Full Path:"), fullPath_, this), kFirstOwnRow + 1, 0);
    grid.addWidget(fullPath_, kFirstOwnRow + 1, 1, 1, 2);
}

void SaveAsDialog::AddPropertyGroup(QGridLayout& grid) {
    auto* group = new QGroupBox(tr("File Property"), this);
    auto* inner = new QGridLayout(group);
    inner->setHorizontalSpacing(12);
    AddFormatColumn(*inner);
    AddChoiceColumns(*inner);
    inner->setColumnStretch(1, 1);
    grid.addWidget(group, kFirstOwnRow + 2, 0, 1, 3);
}

void SaveAsDialog::AddFormatColumn(QGridLayout& group) {
    auto* format = new QComboBox(this);
    format->addItem(QStringLiteral("PCM"));
    original_ = ReadOnlyEdit(this);
    update_ = ReadOnlyEdit(this);
    original_->setObjectName(QStringLiteral("original"));
    update_->setObjectName(QStringLiteral("update"));
    group.addWidget(LabelFor(tr("&Format:"), format, this), 0, 0);
    group.addWidget(format, 0, 1);
    group.addWidget(LabelFor(tr("Original:"), original_, this), 1, 0);
    group.addWidget(original_, 1, 1);
    group.addWidget(LabelFor(tr("Update:"), update_, this), 2, 0);
    group.addWidget(update_, 2, 1);
}

void SaveAsDialog::AddChoiceColumns(QGridLayout& group) {
    channels_ = new QButtonGroup(this);
    bits_ = new QButtonGroup(this);
    group.addWidget(AddChoice(*channels_, 1, tr("&Mono Channel"), this), 0, 2);
    group.addWidget(AddChoice(*channels_, 2, tr("&Stereo Channel"), this), 1, 2);
    group.addWidget(AddChoice(*bits_, 8, tr("&8 Bit Data"), this), 0, 3);
    group.addWidget(AddChoice(*bits_, 16, tr("&16Bit Data"), this), 1, 3);
    channels_->button(request_.channels == 2 ? 2 : 1)->setChecked(true);
    bits_->button(request_.bits == 8 ? 8 : 16)->setChecked(true);

    auto* more = new QPushButton(QStringLiteral("More(&I)..."), this);
    more->setAutoDefault(false);
    connect(more, &QPushButton::clicked, this, &SaveAsDialog::ShowMore);
    group.addWidget(more, 0, 4);
    auto* noMarkers = new QCheckBox(tr("Not Save Marker"), this);
    noMarkers->setChecked(!saveMarkers_);
    connect(noMarkers, &QCheckBox::clicked, this, [this] {
        saveMarkers_ = !saveMarkers_;
        UpdateTexts();
    });
    group.addWidget(noMarkers, 2, 2, 1, 3);
}

void SaveAsDialog::AddWarningRow(QGridLayout& grid) {
    warningText_ = new QLabel(this);
    warningText_->setObjectName(QStringLiteral("saveWarning"));
    warningText_->setWordWrap(true);
    warningText_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Two lines keep their place, so that nothing moves when a warning comes or goes.
    warningText_->setMinimumHeight(2 * warningText_->fontMetrics().lineSpacing());
    QPalette palette = warningText_->palette();
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    palette.setColor(QPalette::WindowText, dark ? QColor(0xff, 0xb0, 0x60) : QColor(0xa0, 0x40, 0));
    warningText_->setPalette(palette);
    grid.addWidget(warningText_, kFirstOwnRow + 3, 0, 1, 3);
}

void SaveAsDialog::ConnectUpdates() {
    const auto update = [this] { UpdateTexts(); };
    connect(fileName_, &QLineEdit::textChanged, this, update);
    connect(this, &QFileDialog::directoryEntered, this, update);
    connect(this, &QFileDialog::currentChanged, this, update);
    connect(channels_, &QButtonGroup::idClicked, this, update);
    connect(bits_, &QButtonGroup::idClicked, this, update);
    connect(this, &QFileDialog::filterSelected, this, [this](const QString& name) {
        const QList<FileFilter> filters = ParseFileFilters(request_.filter);
        const qsizetype index = nameFilters().indexOf(name);
        if (index >= 0) setDefaultSuffix(SuffixOf(filters[index]));
        UpdateTexts();
    });
}

QString SaveAsDialog::FullPath() const {
    const QString name = fileName_->text();
    if (name.isEmpty()) return directory().absolutePath();
    const QString path = QFileInfo(directory(), name).absoluteFilePath();
    return name.contains(u'.') ? path : path + u'.' + defaultSuffix();
}

SaveAsChoice SaveAsDialog::Choice() const {
    SaveAsChoice choice;
    choice.path = FilePath(FullPath());
    choice.channels = static_cast<unsigned>(channels_->checkedId());
    choice.bits = static_cast<unsigned>(bits_->checkedId());
    choice.saveMarkers = saveMarkers_;
    return choice;
}

void SaveAsDialog::UpdateTexts() {
    const SaveAsChoice choice = Choice();
    fullPath_->setText(FullPath());
    original_->setText(AttributesText(request_.samplesPerSecond, request_.channels, request_.bits));
    update_->setText(AttributesText(request_.samplesPerSecond, choice.channels, choice.bits));
    warningText_->setText(QString::fromStdString(Notice().text));
}

SaveNotice SaveAsDialog::Notice() const {
    return notice_ ? notice_(Choice()) : SaveNotice{};
}

void SaveAsDialog::accept() {
    // The name of a folder leads into it.
    if (QFileInfo(FullPath()).isDir() || Notice().canSave) QFileDialog::accept();
}

void SaveAsDialog::ShowMore() {
    const SaveAsChoice choice = Choice();
    SaveDetailsDialog(request_, choice, this).exec();
}

}  // namespace sonavel
