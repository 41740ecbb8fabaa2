#include "spatial/ui/spatial_dialog.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "spatial/scene_points.h"

namespace sonavel {
namespace {

constexpr int kBallInterval = 16;  // milliseconds

QLabel* MakeSceneHint(PointNumbers::Editing editing, QWidget* parent) {
    QString text;
    if (editing == PointNumbers::Editing::kOn)
        text = SpatialDialog::tr("Drag a point to move it, with Shift up and down. ");
    text += SpatialDialog::tr(
        "Drag the scene to turn it, zoom with the wheel. "
        "F, S, T: front, side, top view; Home: all.");
    auto* hint = new QLabel(text, parent);
    hint->setWordWrap(true);
    return hint;
}

}  // namespace

SpatialDialog::SpatialDialog(CSoundView& view, SourceMotion motion, const Texts& texts,
                             PointNumbers::Editing editing, QWidget* parent)
    : QDialog(parent),
      view_(view),
      motion_(motion),
      progressTitle_(texts.progressTitle),
      titlePrefix_(texts.titlePrefix),
      header_(new EffectHeader(this)),
      scene_(new SceneWidget(this)),
      numbers_(new PointNumbers(editing, this)),
      side_(new QVBoxLayout) {
    setWindowTitle(texts.title);
    setPalette(EffectPalette());
    MakePreview(texts.instruction);
    auto* sceneColumn = new QVBoxLayout;
    sceneColumn->addWidget(scene_, 1);
    sceneColumn->addWidget(MakeSceneHint(editing, this));
    auto* middle = new QHBoxLayout;
    middle->setContentsMargins(12, 12, 12, 12);
    middle->setSpacing(12);
    middle->addLayout(sceneColumn, 1);
    middle->addLayout(side_);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addWidget(header_);
    outer->addLayout(middle, 1);
    outer->addLayout(MakeButtons());
    ballTimer_.setInterval(kBallInterval);
    connect(&ballTimer_, &QTimer::timeout, this, &SpatialDialog::MoveBall);
}

SpatialDialog::~SpatialDialog() = default;

void SpatialDialog::MakePreview(const QString& instruction) {
    header_->SetStatus(instruction);
    header_->SetNotes(Notes());
    preview_ = std::make_unique<PreviewToggle>(
        Document(), [this] { return RunPreview(); }, this);
    connect(preview_.get(), &PreviewToggle::Heard, this, &SpatialDialog::FollowPreview);
    connect(preview_.get(), &PreviewToggle::Rendering, this, [this] { header_->SetStatus({}); });
    connect(preview_.get(), &PreviewToggle::Silent, this,
            [this, instruction](const QString& reason) {
                HideBall();
                header_->SetStatus(reason.isEmpty() ? instruction : reason);
            });
}

QStringList SpatialDialog::Notes() const {
    const CWave& sound = Document().Sound();
    QStringList notes{tr("Headphones are needed to hear where the sound is.")};
    const bool stereo = sound.GetChannels() == 2;
    if (stereo && sound.GetBits() == 16)
        notes << tr("The sound stays 16-bit stereo; its left channel is what is placed.");
    else if (stereo)
        notes << tr("OK makes the whole sound 16-bit stereo; its left channel is what is placed.");
    else
        notes << tr("OK makes the whole sound 16-bit stereo.");
    return notes;
}

QLayout* SpatialDialog::MakeButtons() {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(12, 0, 12, 12);
    row->setSpacing(12);
    row->addWidget(preview_->Button());
    row->addWidget(preview_->Bar(), 1);
    row->addWidget(preview_->Percent());
    row->addSpacing(24);
    ok_ = new QPushButton(tr("&OK"), this);
    ok_->setDefault(true);
    auto* cancel = new QPushButton(tr("&Cancel"), this);
    cancel->setAutoDefault(false);
    row->addWidget(ok_);
    row->addWidget(cancel);
    connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    return row;
}

PresetBar& SpatialDialog::Begin(QWidget& chooser, PresetStore store) {
    presets_ = new PresetBar(std::move(store), Document().Services().prompts, this);
    side_->addWidget(presets_);
    side_->addWidget(&chooser, 1);
    side_->addWidget(numbers_);
    chooser.setFocus();
    return *presets_;
}

void SpatialDialog::ShowPoints(SceneContent content, int selected) {
    const bool any = !content.points.empty();
    if (any && selected >= 0)
        numbers_->ShowPosition(content.points[static_cast<std::size_t>(selected)].position);
    else
        numbers_->ShowNothing();
    ok_->setEnabled(any);
    preview_->Button()->setEnabled(any || Document().Preview().IsPlaying());
    if (presets_) presets_->SetSavingEnabled(any);
    scene_->SetContent(std::move(content));
}

bool SpatialDialog::Apply() {
    Document().SetLastError("");
    return Run(SpatialOutcome::kApply);
}

bool SpatialDialog::RunPreview() {
    previewedPath_ = Path();
    const bool made = Run(SpatialOutcome::kPlayedPreview);
    // A preview that was made but cannot be heard leaves no error in the document.
    if (made || Document().LastError().empty()) Document().SetPreviewTitlePrefix(titlePrefix_);
    return made;
}

bool SpatialDialog::Run(SpatialOutcome outcome) {
    const std::vector<SourcePosition> path = Path();
    if (path.empty() || running_) return false;
    const Selection selection = view_.GetSelection();
    const SpatialTarget target{Document(), selection.start, selection.end, progressTitle_, outcome};
    running_ = true;
    const bool made = motion_ == SourceMotion::kPositional
                          ? SpatializePositional(target, path.front())
                          : SpatializeMoving(target, path);
    running_ = false;
    return made;
}

void SpatialDialog::FollowPreview(double share) {
    heardShare_ = share;
    sinceHeard_.start();
    if (!ballTimer_.isActive()) ballTimer_.start();
    MoveBall();
}

// Between two reports, which are a block of the device apart, the ball goes on by the clock.
void SpatialDialog::MoveBall() {
    const CWavePlayer& preview = Document().Preview();
    if (!preview.IsPlaying() || previewedPath_.empty()) return HideBall();
    const double seconds = 1.0 * preview.GetFrameCount() / preview.GetSamplesPerSecond();
    const double since = static_cast<double>(sinceHeard_.elapsed()) / 1000;
    scene_->SetBall(PositionWhilePlaying(previewedPath_, heardShare_ + since / seconds));
}

void SpatialDialog::HideBall() {
    ballTimer_.stop();
    scene_->SetBall(std::nullopt);
}

void SpatialDialog::done(int result) {
    if (running_) return;
    Remember();
    HideBall();
    // The positions go back to the view.
    if (preview_) Document().Preview().Stop(CWavePlayer::StopReport::kSilent);
    preview_.reset();
    QDialog::done(result);
}

void SpatialDialog::closeEvent(QCloseEvent* event) {
    if (running_)
        event->ignore();
    else
        QDialog::closeEvent(event);
}

}  // namespace sonavel
