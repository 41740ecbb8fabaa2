#include "properties/ui/file_properties_sheet.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeWidget>

#include "platform/qt/utf8_text.h"
#include "properties/ui/property_texts.h"

namespace sonavel {

namespace {

constexpr QSize kSize{520, 380};
constexpr int kBlockSpacing = 14;
constexpr Qt::TextInteractionFlags kSelectable =
    Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;

QLabel* ValueLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(kSelectable);
    return label;
}

// A field without a frame: it scrolls where a long path has no room.
QLineEdit* ValueField(const QString& text) {
    auto* field = new QLineEdit(text);
    field->setReadOnly(true);
    field->setFrame(false);
    field->setCursorPosition(0);
    field->setToolTip(text);
    QPalette palette = field->palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    field->setPalette(palette);
    return field;
}

QWidget* PageOf(const QList<PropertyRow>& rows) {
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    form->setHorizontalSpacing(20);
    form->setVerticalSpacing(6);
    for (const PropertyRow& row : rows) form->addRow(row.name, ValueField(row.value));
    return page;
}

QStringList ChannelNames(unsigned channels) {
    if (channels == 1) return {QObject::tr("Mono")};
    return {QObject::tr("Left"), QObject::tr("Right")};
}

void FillStatistics(QGridLayout& grid, const SoundStatistics& statistics, std::uint32_t rate) {
    const QStringList names = ChannelNames(statistics.channels);
    for (int i = 0; i < names.size(); ++i)
        grid.addWidget(new QLabel(QStringLiteral("<b>%1</b>").arg(names[i])), 0, i + 1,
                       Qt::AlignRight);
    int row = 0;
    for (const StatisticsRow& entry : StatisticsRows(statistics, rate)) {
        grid.addWidget(new QLabel(entry.name), ++row, 0);
        for (int i = 0; i < entry.values.size(); ++i)
            grid.addWidget(ValueLabel(entry.values[i]), row, i + 1, Qt::AlignRight);
    }
    grid.setColumnStretch(static_cast<int>(names.size()) + 1, 1);
}

}  // namespace

CFilePropertiesSheet::CFilePropertiesSheet(const CSoundDoc& document, ProgressFactory& progress,
                                           QWidget* parent)
    : FormDialog(tr("Properties - %1").arg(Utf8Text(document.Title())), parent,
                 QDialogButtonBox::Close),
      document_(document),
      progress_(progress),
      tabs_(new QTabWidget(this)) {
    SetSizing(Sizing::kFree);
    tabs_->addTab(PageOf(FileRows(document)), tr("General"));
    tabs_->addTab(PageOf(FormatRows(document.Sound()) << HistoryRow(document.History())),
                  tr("Format"));
    tabs_->addTab(MakeStatistics(), tr("Statistics"));
    tabs_->addTab(MakeMarkers(), tr("Markers"));
    Body().addWidget(tabs_);
    resize(kSize);
    connect(tabs_, &QTabWidget::currentChanged, this, [this](int index) {
        if (tabs_->widget(index) == statisticsPage_ && !statistics_) ShowStatistics();
    });
    tabs_->setFocus();
}

QWidget* CFilePropertiesSheet::MakeStatistics() {
    statisticsPage_ = new QWidget;
    auto* column = new QVBoxLayout(statisticsPage_);
    column->setSpacing(kBlockSpacing);
    note_ = new QLabel(statisticsPage_);
    again_ = new QPushButton(tr("&Compute"), statisticsPage_);
    again_->setAutoDefault(false);
    column->addWidget(MakeLoudness());
    column->addWidget(note_);
    column->addWidget(again_, 0, Qt::AlignLeft);
    column->addStretch(1);
    connect(again_, &QPushButton::clicked, this, &CFilePropertiesSheet::ShowStatistics);
    return statisticsPage_;
}

QWidget* CFilePropertiesSheet::MakeLoudness() {
    auto* rows = new QWidget(statisticsPage_);
    auto* form = new QFormLayout(rows);
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(28);
    form->setVerticalSpacing(8);
    const auto addRow = [&](const QString& name, const char* objectName) {
        QLabel* value = ValueLabel(NotYetText());
        value->setObjectName(QLatin1String(objectName));
        form->addRow(name, value);
        return value;
    };
    integrated_ = addRow(tr("Integrated loudness:"), "integrated");
    range_ = addRow(tr("Loudness range:"), "range");
    truePeak_ = addRow(tr("True peak:"), "true peak");
    return rows;
}

void CFilePropertiesSheet::MeasureLoudnessAside() {
    if (worker_) return;
    const CWavePlayer& sound = document_.Sound();
    // What is recorded is put in whenever the device ends it.
    if (sound.IsRecording()) return ShowLoudness(Failed(tr("Recording").toStdString()));
    if (!sound.HasData()) return ShowLoudness(SoundLoudness{});
    worker_ = std::make_unique<LoudnessWorker>(
        sound, FrameRange{0, sound.GetFrameCount()},
        [this](const Result<SoundLoudness>& found) { ShowLoudness(found); });
}

void CFilePropertiesSheet::ShowLoudness(const Result<SoundLoudness>& found) {
    integrated_->setText(found ? IntegratedText(*found) : Utf8Text(found.Reason()));
    range_->setText(found ? LoudnessRangeText(*found) : QString());
    truePeak_->setText(found ? DecibelsText(found->truePeak) : QString());
}

void CFilePropertiesSheet::ShowStatistics() {
    if (measuring_ || statistics_) return;
    MeasureLoudnessAside();
    measuring_ = true;
    note_->setText(tr("Computing..."));
    const auto found = MeasureSound(document_.Sound(), progress_);
    measuring_ = false;
    note_->setText(found ? QString() : tr("Cancelled."));
    note_->setVisible(!found);
    again_->setVisible(!found);
    if (!found) return;
    statistics_ = new QWidget(statisticsPage_);
    auto* grid = new QGridLayout(statistics_);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(28);
    grid->setVerticalSpacing(8);
    FillStatistics(*grid, *found, document_.Sound().GetSamplesPerSecond());
    static_cast<QVBoxLayout*>(statisticsPage_->layout())->insertWidget(0, statistics_);
}

QWidget* CFilePropertiesSheet::MakeMarkers() {
    auto* list = new QTreeWidget;
    list->setAccessibleName(tr("Markers"));
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(true);
    list->setHeaderLabels({tr("No."), tr("Position"), tr("Frame"), tr("Length"), tr("Name")});
    constexpr int kNameColumn = 4;
    for (const QStringList& row : MarkerRows(document_.Sound())) {
        auto* item = new QTreeWidgetItem(list, row);
        for (int i = 0; i < kNameColumn; ++i) item->setTextAlignment(i, Qt::AlignRight);
    }
    for (int i = 0; i < kNameColumn; ++i) list->header()->resizeSection(i, i == 0 ? 50 : 95);
    return list;
}

}  // namespace sonavel
