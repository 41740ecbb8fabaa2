#include "effects/ui/live_toggle.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <cmath>

#include "sound/sample_types.h"

namespace sonavel {

namespace {

constexpr int kFollowInterval = 16;  // milliseconds

bool IsTheBypassKey(const QKeyEvent& event) {
    return event.key() == Qt::Key_B && event.modifiers() == Qt::NoModifier;
}

}  // namespace

LiveToggle::LiveToggle(CSoundView& view, Make make, const LiveTexts& texts, QWidget* dialog)
    : QObject(dialog),
      view_(view),
      make_(std::move(make)),
      dialog_(dialog),
      button_(new QPushButton(texts.live, dialog)),
      line_(new QWidget(dialog)),
      bypass_(new QCheckBox(texts.bypass, line_)),
      levels_(new LevelBars(line_)),
      note_(new QLabel(line_)) {
    button_->setAutoDefault(false);
    button_->setCheckable(true);
    button_->setToolTip(tr("Plays the range over and over as it is set now (Ctrl+L)"));
    connect(button_, &QPushButton::clicked, this, &LiveToggle::Toggle);
    auto* key = new QShortcut(Qt::CTRL | Qt::Key_L, button_);
    connect(key, &QShortcut::activated, button_, &QPushButton::click);
    MakeLine(texts);
    following_.setInterval(kFollowInterval);
    connect(&following_, &QTimer::timeout, this, &LiveToggle::Follow);
    ShowPlaying(false);
    qApp->installEventFilter(this);
}

LiveToggle::~LiveToggle() {
    qApp->removeEventFilter(this);
    if (player_) player_->Stop();
}

void LiveToggle::MakeLine(const LiveTexts& texts) {
    bypass_->setToolTip(tr("The untouched sound, as loud as what is made of it (B)"));
    connect(bypass_, &QCheckBox::toggled, this, [this](bool on) {
        if (player_) player_->SetBypass(on ? Bypass::kOn : Bypass::kOff);
    });
    note_->setText(texts.note);
    note_->setObjectName(QStringLiteral("liveNote"));
    note_->setWordWrap(true);
    auto* row = new QHBoxLayout(line_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(bypass_);
    row->addWidget(levels_);
    row->addWidget(note_, 1);
}

void LiveToggle::Refuse(const QString& reason) {
    button_->setEnabled(false);
    button_->setToolTip(reason);
    line_->hide();
}

void LiveToggle::Toggle() {
    if (player_)
        Stop();
    else
        Start();
}

void LiveToggle::Start() {
    Q_EMIT Starting();
    std::unique_ptr<LiveMaker> maker = make_();
    if (!maker) return ShowPlaying(false);
    range_ = maker->Range();
    auto player =
        std::make_unique<LivePlayer>(std::move(maker), view_.Document().Services().devices);
    player->SetBypass(IsBypassed() ? Bypass::kOn : Bypass::kOff);
    const WaveResult started =
        player->Start(view_.Document().Options().playbackDeviceId, [this] { NoteLoss(); });
    if (started != kWaveSuccess) {
        player.reset();
        ShowPlaying(false);
        Q_EMIT Silent();
        return view_.Document().Preview().ReportDeviceError(started);
    }
    player_ = std::move(player);
    ShowPlaying(true);
}

void LiveToggle::Stop() {
    if (!player_) return;
    player_->Stop();
    player_.reset();
    ShowPlaying(false);
    ShowPeaks({});
    levels_->Clear();
    Q_EMIT Silent();
}

// The device goes before the message comes, which may wait.
void LiveToggle::NoteLoss() {
    if (!player_ || player_->Loss() == kWaveSuccess) return;
    const WaveResult loss = player_->Loss();
    // Behind the device's own call, which goes with the player.
    QMetaObject::invokeMethod(
        this,
        [this, loss] {
            if (!player_) return;
            Stop();
            view_.Document().Preview().ReportDeviceError(loss);
        },
        Qt::QueuedConnection);
}

void LiveToggle::ShowPlaying(bool plays) {
    button_->setChecked(plays);
    bypass_->setEnabled(plays);
    levels_->setEnabled(plays);
    if (plays)
        following_.start();
    else
        following_.stop();
}

void LiveToggle::MakeAnew() {
    if (player_) player_->MakeAnew();
}

void LiveToggle::ToggleBypass() {
    if (player_) bypass_->toggle();
}

double LiveToggle::HeardShare() const {
    if (!player_ || range_.frames == 0) return 0;
    return static_cast<double>(player_->HeardFrame()) / range_.frames;
}

void LiveToggle::Follow() {
    const LivePeaks peaks = player_->TakePeaks();
    levels_->Show(peaks);
    ShowPeaks(peaks);
    Q_EMIT Heard(HeardShare());
}

// In the values of the document's sound, for the meter of the main window.
void LiveToggle::ShowPeaks(const LivePeaks& peaks) {
    const double half = static_cast<double>(FullScaleOf(view_.Document().Sound().GetBits())) / 2;
    view_.Playing().OnPeaks(static_cast<std::int32_t>(std::lround(peaks.left * half)),
                            static_cast<std::int32_t>(std::lround(peaks.right * half)));
}

// The fields of the dialog take letters, none of which they need, so the key is taken before them.
bool LiveToggle::eventFilter(QObject* watched, QEvent* event) {
    const bool isPress = event->type() == QEvent::KeyPress;
    if (!player_ || (!isPress && event->type() != QEvent::ShortcutOverride)) return false;
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() != dialog_->window()) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!IsTheBypassKey(key)) return false;
    if (isPress && !key.isAutoRepeat()) ToggleBypass();
    event->accept();
    return true;
}

}  // namespace sonavel
