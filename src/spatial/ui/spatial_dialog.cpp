#include "spatial/ui/spatial_dialog.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "sound/frame_range.h"
#include "sound/sample_types.h"
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

SpatialDialog::SpatialDialog(CSoundView& view, SpatialMemory& memory, SourceMotion motion,
                             const Texts& texts, PointNumbers::Editing editing, QWidget* parent)
    : PreviewDialog(view, texts.title, texts.titlePrefix, parent),
      shared_(memory),
      motion_(motion),
      progressTitle_(texts.progressTitle),
      scene_(new SceneWidget(this)),
      numbers_(new PointNumbers(editing, this)),
      heard_(new SmoothBox(motion, QString::fromStdString(memory.listener.Measured().name),
                           LawOffer::kOn, this)),
      side_(new QVBoxLayout) {
    Header().SetStatus(texts.instruction);
    Header().SetNotes(Notes());
    connect(&MakePreview(texts.instruction), &PreviewToggle::Heard, this,
            &SpatialDialog::FollowPreview);
    auto* sceneColumn = new QVBoxLayout;
    sceneColumn->addWidget(scene_, 1);
    sceneColumn->addWidget(MakeSceneHint(editing, this));
    auto* middle = new QHBoxLayout;
    middle->setContentsMargins(12, 12, 12, 12);
    middle->setSpacing(12);
    middle->addLayout(sceneColumn, 1);
    middle->addLayout(side_);
    Outer().addLayout(middle, 1);
    QLayout* buttons = MakeButtons();
    AddLiveLine();
    Outer().addLayout(buttons);
    if (motion == SourceMotion::kMoving) MakeWay();
    connect(heard_, &SmoothBox::Edited, this, [this] { ShowPoints(content_, selected_); });
    ballTimer_.setInterval(kBallInterval);
    connect(&ballTimer_, &QTimer::timeout, this, &SpatialDialog::MoveBall);
}

SpatialDialog::~SpatialDialog() = default;

QStringList SpatialDialog::Notes() const {
    const CWave& sound = Document().Sound();
    QStringList notes{tr("Headphones are needed to hear where the sound is.")};
    const bool stereo = sound.GetChannels() == 2;
    const unsigned bits = ComputedBits(sound.GetBits());
    const QString result =
        bits == WordSample::kBits ? tr("16-bit stereo") : tr("32-bit float stereo");
    if (stereo && sound.GetBits() == bits)
        notes << tr("The sound stays %1; its left channel is what is placed.").arg(result);
    else if (stereo)
        notes << tr("OK makes the whole sound %1; its left channel is what is placed.").arg(result);
    else
        notes << tr("OK makes the whole sound %1.").arg(result);
    return notes;
}

QLayout* SpatialDialog::MakeButtons() {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(12, 0, 12, 12);
    row->setSpacing(12);
    row->addWidget(Preview()->Button());
    LiveToggle& live = MakeLiveToggle({QString::fromUtf8(kLivePlacingNote)});
    row->addWidget(live.Button());
    connect(&live, &LiveToggle::Heard, this, &SpatialDialog::FollowLive);
    connect(&live, &LiveToggle::Silent, this, [this] {
        live_ = nullptr;
        HideBall();
    });
    row->addWidget(Preview()->Bar(), 1);
    row->addWidget(Preview()->Percent());
    row->addSpacing(24);
    ok_ = AddOkAndCancel(*row);
    return row;
}

PresetBar& SpatialDialog::Begin(QWidget& chooser, PresetStore store) {
    presets_ = new PresetBar(std::move(store), Document().Services().prompts, this);
    side_->addWidget(presets_);
    side_->addWidget(&chooser, 1);
    side_->addWidget(numbers_);
    if (way_) side_->addWidget(way_);
    side_->addWidget(heard_);
    if (const auto& last = shared_.heard[motion_]) {
        heard_->Show(*last);
        if (way_) way_->Show(*last);
    }
    chooser.setFocus();
    return *presets_;
}

void SpatialDialog::ShowPoints(SceneContent content, int selected) {
    content_ = content;
    selected_ = selected;
    Placing placing = ChosenWay();
    numbers_->SetLaw(placing.law);
    placing.points = std::move(content.path);
    content.path = PathOf(placing);
    const bool any = !content.points.empty();
    if (any && selected >= 0)
        numbers_->ShowPosition(content.points[static_cast<std::size_t>(selected)].position);
    else
        numbers_->ShowNothing();
    ok_->setEnabled(any);
    Preview()->Button()->setEnabled(any || Document().Preview().IsPlaying());
    if (presets_) presets_->SetSavingEnabled(any);
    scene_->SetContent(std::move(content));
    SetLive();
}

std::unique_ptr<LiveMaker> SpatialDialog::MakeLive() {
    const FrameRange range = HeardRange();
    if (range.IsEmpty()) return nullptr;
    auto maker =
        std::make_unique<LivePlacing>(RangeInput{Document().Sound(), range}, shared_.listener);
    live_ = maker.get();
    SetLive();
    return maker;
}

void SpatialDialog::SetLive() {
    if (!live_ || !Live()) return;
    Placing placing = Placed();
    // Without a point, the last one stays heard.
    if (placing.points.empty()) return;
    liveCourse_ = CourseOf(placing, SecondsOfRange());
    live_->Set(std::move(placing));
    Live()->MakeAnew();
}

void SpatialDialog::FollowLive(double share) {
    if (!liveCourse_.corners.empty()) scene_->SetBall(PositionWhilePlaying(liveCourse_, share));
}

void SpatialDialog::MakeWay() {
    const bool ownPoints = numbers_->IsEditable();
    way_ = new PathBox(ownPoints ? ShapeOffer::kOn : ShapeOffer::kOff, LoopOffer::kOn, this);
    connect(way_, &PathBox::Edited, this, [this] { ShowPoints(content_, selected_); });
}

Placing SpatialDialog::ChosenWay() const {
    Placing placing = heard_->Chosen();
    if (way_) way_->PutInto(placing);
    return placing;
}

Placing SpatialDialog::Placed() const {
    Placing placing = ChosenWay();
    placing.points = Path();
    placing.times = Times();
    return placing;
}

FrameRange SpatialDialog::HeardRange() const {
    const Selection selection = View().State().GetSelection();
    return RangeToWorkOn(selection.start, selection.end, Document().Sound().GetFrameCount());
}

double SpatialDialog::SecondsOfRange() const {
    return std::max(1.0, 1.0 * HeardRange().Frames()) / Document().Sound().GetSamplesPerSecond();
}

Outcome SpatialDialog::Run(Purpose purpose) {
    const Placing placing = Placed();
    if (placing.points.empty()) return Cancelled();
    const bool applies = purpose == Purpose::kApply;
    const Selection selection = View().State().GetSelection();
    if (!applies) previewed_ = CourseOf(placing, SecondsOfRange());
    const SpatialTarget target{Document(), selection.start, selection.end, progressTitle_,
                               applies ? SpatialOutcome::kApply : SpatialOutcome::kPlayedPreview};
    return SpatializePlaced(target, placing, shared_.listener);
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
    if (!preview.IsPlaying() || previewed_.corners.empty()) return HideBall();
    const double seconds = 1.0 * preview.GetFrameCount() / preview.GetSamplesPerSecond();
    const double since = static_cast<double>(sinceHeard_.elapsed()) / 1000;
    scene_->SetBall(PositionWhilePlaying(previewed_, heardShare_ + since / seconds));
}

void SpatialDialog::HideBall() {
    ballTimer_.stop();
    scene_->SetBall(std::nullopt);
}

void SpatialDialog::done(int result) {
    if (IsRunning()) return;
    Remember();
    shared_.heard[motion_] = ChosenWay();
    HideBall();
    PreviewDialog::done(result);
}

}  // namespace sonavel
