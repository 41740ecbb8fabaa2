#include "meter/ui/play_meter_bar.h"

#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QPainter>

#include "view/ui/qt_values.h"

namespace sonavel {

namespace {

// The least side at which a lying meter's labels fit.
constexpr int kLeastSide = 46;
constexpr QSize kFirstSize{132, 240};
constexpr int kReadOutPixels = 11;  // on a desktop of ordinary texts

template <MeterScale kScale>
Outcome Choose(PlayMeterBar& bar) {
    bar.SetScale(kScale);
    return Done();
}

template <MeterScale kScale>
CommandState Shows(const PlayMeterBar& bar) {
    return {true, bar.Scale() == kScale};
}

using enum WhileWorking;

constexpr Command<PlayMeterBar> kTable[] = {
    {{meter_command::kThirtyDb, "", "-&30 dB to 0 dB", "", "Show the levels above -30 dB", kAlways},
     Choose<MeterScale::kThirtyDb>,
     Shows<MeterScale::kThirtyDb>},
    {{meter_command::kSixtyDb, "", "-&60 dB to 0 dB", "", "Show the levels above -60 dB", kAlways},
     Choose<MeterScale::kSixtyDb>,
     Shows<MeterScale::kSixtyDb>},
    {{meter_command::kNinetyDb, "", "-&90 dB to 0 dB", "", "Show the levels above -90 dB", kAlways},
     Choose<MeterScale::kNinetyDb>,
     Shows<MeterScale::kNinetyDb>},
    {{meter_command::kAbsolute, "", "&Absolute Gain", "", "Show the levels in percent", kAlways},
     Choose<MeterScale::kAbsolute>,
     Shows<MeterScale::kAbsolute>},
    {{meter_command::kShowLevel, "", "Show Level", "", "Show or hide the labels of the meter",
      kAlways},
     [](PlayMeterBar& bar) {
         bar.SwitchLabels();
         return Done();
     },
     [](const PlayMeterBar& bar) {
         return CommandState{true, bar.ShowsLabels()};
     }},
};

MeterTextSize TextSizeOf(const QFont& font) {
    return {WidthIn(font), QFontMetrics(font).height()};
}

}  // namespace

std::span<const Command<PlayMeterBar>> MeterCommands() {
    return kTable;
}

MeterPanel::MeterPanel(QWidget* parent)
    : QWidget(parent),
      left_(new PlayMeter(QStringLiteral("Sound play left meter"), this)),
      right_(new PlayMeter(QStringLiteral("Sound play Right meter"), this)) {}

QSize MeterPanel::sizeHint() const {
    return kFirstSize;
}

QSize MeterPanel::minimumSizeHint() const {
    return {kLeastSide, kLeastSide};
}

void MeterPanel::SetLevels(std::int32_t left, std::int32_t right, std::int32_t reference) {
    left_->SetLevel({left, reference});
    right_->SetLevel({right, reference});
    for (const Rectangle& readOut : {places_.leftReadOut, places_.rightReadOut})
        if (!readOut.Empty()) update(ToQRect(readOut));
}

void MeterPanel::SetReadOuts(MeterReadOuts readOuts) {
    readOuts_ = readOuts;
    LayOut();
}

void MeterPanel::resizeEvent(QResizeEvent*) {
    LayOut();
}

void MeterPanel::LayOut() {
    const Rectangle bar{0, 0, width(), height()};
    readOutFont_ = font();
    // Small read-outs are better than none.
    int pixels = GrownWithDesktop(kReadOutPixels);
    do {
        readOutFont_.setPixelSize(pixels--);
        places_ = LayOutMeterBar(bar, readOuts_, TextSizeOf(readOutFont_));
    } while (places_.leftReadOut.Empty() && pixels >= kReadOutPixels);
    left_->setGeometry(ToQRect(places_.meters.left));
    right_->setGeometry(ToQRect(places_.meters.right));
    for (PlayMeter* meter : {left_, right_}) meter->SetDirection(places_.meters.direction);
    update();
}

QString MeterPanel::ReadOut(const PlayMeter& meter) const {
    const bool lying = places_.meters.direction == MeterDirection::kToTheRight;
    return ToQString(lying ? MeterReadOutLine(meter.Level()) : MeterReadOut(meter.Level()));
}

void MeterPanel::paintEvent(QPaintEvent*) {
    if (places_.leftReadOut.Empty()) return;
    QPainter painter(this);
    painter.setFont(readOutFont_);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(ToQRect(places_.leftReadOut), Qt::AlignCenter, ReadOut(*left_));
    painter.drawText(ToQRect(places_.rightReadOut), Qt::AlignCenter, ReadOut(*right_));
}

PlayMeterBar::PlayMeterBar(const ProfileFile& options, QWidget* parent)
    : QDockWidget(parent),
      options_(options),
      panel_(new MeterPanel(this)),
      commands_(*this, kTable),
      actions_([this](int) { return &commands_; }) {
    setObjectName(QStringLiteral("Playmeter"));
    setWidget(panel_);
    for (const Command<PlayMeterBar>& row : kTable) actions_.Add(row.info);
    connect(this, &QDockWidget::dockLocationChanged, this, &PlayMeterBar::ShowTitle);
    connect(this, &QDockWidget::topLevelChanged, this, [this](bool floating) {
        if (floating) ShowTitle(Qt::NoDockWidgetArea);
    });
    ShowTitle(Qt::NoDockWidgetArea);
    const MeterSettings settings = MeterSettings::Read(options_.Read());
    ShowScale(settings.scale);
    ShowLabels(settings.showLabels);
    SetColours(ColourTable());
}

void PlayMeterBar::ShowTitle(Qt::DockWidgetArea area) {
    // A title above a flat bar would be as high as the bar, and beside it there is no room for one.
    const bool flat =
        !isFloating() && (area == Qt::TopDockWidgetArea || area == Qt::BottomDockWidgetArea);
    setFeatures(features().setFlag(QDockWidget::DockWidgetVerticalTitleBar, flat));
    setWindowTitle(flat ? QString() : tr("Playmeter"));
    toggleViewAction()->setText(tr("&Playmeter Bar"));
}

void PlayMeterBar::OnPeaks(std::int32_t left, std::int32_t right) {
    left_ = left;
    right_ = right;
    panel_->SetLevels(left_, right_, reference_);
}

void PlayMeterBar::SetReference(std::int32_t fullScale) {
    reference_ = fullScale / 2;
    panel_->SetLevels(left_, right_, reference_);
}

void PlayMeterBar::SetColours(const ColourTable& colours) {
    const MeterColours own{ToQColor(colours[ColourSlot::kBackground]),
                           ToQColor(colours[ColourSlot::kGrid]),
                           ToQColor(colours[ColourSlot::kWaveform])};
    panel_->Left().SetColours(own);
    panel_->Right().SetColours(own);
}

void PlayMeterBar::ReloadSettings() {
    const ProfileText options = options_.Read();
    const MeterSettings settings = MeterSettings::Read(options);
    // The absolute scale is written, but never read back.
    if (StoredNumber(options, SettingId::kMeterScale) != static_cast<int>(scale_))
        ShowScale(settings.scale);
    ShowLabels(settings.showLabels);
}

bool PlayMeterBar::SetScale(MeterScale scale) {
    ShowScale(scale);
    return WriteNumber(options_, SettingId::kMeterScale, static_cast<int>(scale));
}

bool PlayMeterBar::SwitchLabels() {
    ShowLabels(ShowsLabels() ? 0 : 1);
    return WriteNumber(options_, SettingId::kMeterLabels, showLabels_);
}

void PlayMeterBar::ShowScale(MeterScale scale) {
    scale_ = scale;
    panel_->Left().SetScale(scale);
    panel_->Right().SetScale(scale);
}

void PlayMeterBar::ShowLabels(int showLabels) {
    showLabels_ = showLabels;
    panel_->Left().SetShowLabels(ShowsLabels());
    panel_->Right().SetShowLabels(ShowsLabels());
    panel_->SetReadOuts(ShowsLabels() ? MeterReadOuts::kWhereTheyFit : MeterReadOuts::kHidden);
}

void PlayMeterBar::contextMenuEvent(QContextMenuEvent* event) {
    constexpr MenuEntry kEntries[] = {MenuEntry::Command(meter_command::kThirtyDb),
                                      MenuEntry::Command(meter_command::kSixtyDb),
                                      MenuEntry::Command(meter_command::kNinetyDb),
                                      MenuEntry::Command(meter_command::kAbsolute),
                                      MenuEntry::Separator(),
                                      MenuEntry::Command(meter_command::kShowLevel)};
    QMenu menu;
    actions_.FillMenu(menu, kEntries);
    menu.exec(event->globalPos());
}

}  // namespace sonavel
