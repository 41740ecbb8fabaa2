#include "effects/ui/preview_dialog.h"

#include <QCloseEvent>
#include <QKeyEvent>

#include "platform/qt/tab_order.h"

namespace sonavel {

PreviewDialog::PreviewDialog(CSoundView& view, const QString& title, std::string_view titlePrefix,
                             QWidget* parent)
    : QDialog(parent),
      view_(view),
      titlePrefix_(titlePrefix),
      header_(new EffectHeader(this)),
      outer_(new QVBoxLayout(this)) {
    setWindowTitle(title);
    setPalette(EffectPalette());
    outer_->setContentsMargins(0, 0, 0, 0);
    outer_->setSpacing(0);
    outer_->addWidget(header_);
}

PreviewDialog::~PreviewDialog() = default;

PreviewToggle& PreviewDialog::MakePreview(const QString& instruction) {
    preview_ = std::make_unique<PreviewToggle>(
        Document(), [this] { return RunPreview(); }, this);
    connect(preview_.get(), &PreviewToggle::Rendering, this, [this] {
        if (live_) live_->Stop();
        header_->SetStatus({});
    });
    connect(preview_.get(), &PreviewToggle::Silent, this,
            [this, instruction](const QString& reason) {
                OnSilent();
                header_->SetStatus(reason.isEmpty() ? instruction : reason);
            });
    return *preview_;
}

LiveToggle& PreviewDialog::MakeLiveToggle(const LiveTexts& texts) {
    live_ = std::make_unique<LiveToggle>(
        View(), [this] { return MakeLive(); }, texts, this);
    connect(live_.get(), &LiveToggle::Starting, this, [this] {
        // They would be heard over each other.
        if (preview_ && Document().Preview().IsPlaying()) preview_->Stop();
        Document().Sound().Stop(CWavePlayer::StopReport::kShow);
    });
    return *live_;
}

void PreviewDialog::AddLiveLine() {
    auto* line = new QHBoxLayout;
    line->setContentsMargins(12, 0, 12, 8);
    line->addWidget(live_->Line());
    outer_->addLayout(line);
}

QPushButton* PreviewDialog::AddButton(QHBoxLayout& row, const QString& text) {
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    row.addWidget(button);
    return button;
}

QPushButton* PreviewDialog::AddOkAndCancel(QHBoxLayout& row) {
    QPushButton* ok = AddButton(row, tr("&OK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(AddButton(row, tr("&Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    return ok;
}

void PreviewDialog::BeginLive() {
    if (live_ && live_->Button()->isEnabled() && !live_->IsPlaying()) live_->Toggle();
}

Outcome PreviewDialog::Apply() {
    return RunWhileOpen(Purpose::kApply);
}

Outcome PreviewDialog::RunWhileOpen(Purpose purpose) {
    if (running_) return Cancelled();
    running_ = true;
    Outcome made = Run(purpose);
    running_ = false;
    return made;
}

Outcome PreviewDialog::RunPreview() {
    Outcome made = RunWhileOpen(Purpose::kPlayedPreview);
    if (made) Document().SetPreviewTitlePrefix(titlePrefix_);
    return made;
}

void PreviewDialog::done(int result) {
    if (running_) return;
    if (live_) live_->Stop();
    live_.reset();
    // The positions go back to the view.
    if (preview_) Document().Preview().Stop(CWavePlayer::StopReport::kSilent);
    preview_.reset();
    QDialog::done(result);
}

void PreviewDialog::showEvent(QShowEvent* event) {
    TabAsLaidOut(*this);
    QDialog::showEvent(event);
}

void PreviewDialog::keyPressEvent(QKeyEvent* event) {
    if (!running_) QDialog::keyPressEvent(event);
}

void PreviewDialog::closeEvent(QCloseEvent* event) {
    if (running_)
        event->ignore();
    else
        QDialog::closeEvent(event);
}

}  // namespace sonavel
