#include "effects/ui/preview_toggle.h"

#include "effects/ui/effect_look.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

constexpr const char* kPreviewText = "&Preview";
constexpr const char* kStopText = "&Stop";

void KeepPlaceWhileHidden(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
    widget.hide();
}

}  // namespace

PreviewToggle::PreviewToggle(CSoundDoc& document, Render render, QWidget* dialog)
    : QObject(dialog),
      document_(document),
      render_(std::move(render)),
      button_(new QPushButton(QString::fromUtf8(kPreviewText), dialog)),
      bar_(new QProgressBar(dialog)),
      percent_(new ValueLabel(dialog)) {
    button_->setAutoDefault(false);
    bar_->setRange(0, 100);
    bar_->setTextVisible(false);
    bar_->setPalette(ProgramPalette());
    bar_->setValue(0);
    percent_->setText(QStringLiteral("0%"));
    percent_->setObjectName(QStringLiteral("percent"));
    percent_->setMinimumWidth(percent_->fontMetrics().horizontalAdvance(QStringLiteral("100%")) +
                              12);
    KeepPlaceWhileHidden(*bar_);
    KeepPlaceWhileHidden(*percent_);
    connect(button_, &QPushButton::clicked, this, &PreviewToggle::Toggle);
    document_.Sound().SetPositionObserver(this);
    document_.Preview().SetPositionObserver(this);
}

PreviewToggle::~PreviewToggle() {
    document_.Sound().SetPositionObserver(nullptr);
    document_.Preview().SetPositionObserver(nullptr);
}

QStringList PreviewToggle::ButtonTexts() {
    return {QString::fromUtf8(kPreviewText), QString::fromUtf8(kStopText)};
}

void PreviewToggle::Toggle() {
    if (document_.Preview().IsPlaying()) {
        Stop();
        return;
    }
    // The two would be heard over each other.
    document_.Sound().Stop(CWavePlayer::StopReport::kShow);
    Q_EMIT Rendering();
    ShowBar(0);
    bar_->show();
    percent_->show();
    const Outcome rendered = render_();
    if (rendered && document_.Preview().IsPlaying())
        button_->setText(QString::fromUtf8(kStopText));
    else
        ShowSilent(rendered.IsFailed() ? Utf8Text(rendered.Reason()) : QString());
}

void PreviewToggle::Stop() {
    document_.Preview().Stop(CWavePlayer::StopReport::kSilent);
    ShowSilent();
}

void PreviewToggle::OnPlayPosition(std::uint64_t positionBytes, std::uint64_t totalBytes) {
    constexpr int kPercentOfTheEnd = 99;
    const std::uint64_t total = totalBytes ? totalBytes : 1;
    const auto percent = static_cast<int>(std::uint64_t{positionBytes} * 100 / total);
    ShowBar(percent);
    Q_EMIT Heard(static_cast<double>(positionBytes) / static_cast<double>(total));
    const bool heard = document_.Preview().IsPlaying() || document_.Sound().IsPlaying();
    if (percent > kPercentOfTheEnd || !heard) ShowSilent();
}

void PreviewToggle::ShowBar(int percent) {
    bar_->setValue(percent);
    percent_->setText(QString::asprintf("%3d%%", percent));
}

void PreviewToggle::ShowSilent(const QString& reason) {
    button_->setText(QString::fromUtf8(kPreviewText));
    bar_->hide();
    percent_->hide();
    bar_->setValue(0);
    Q_EMIT Silent(reason);
}

}  // namespace sonavel
