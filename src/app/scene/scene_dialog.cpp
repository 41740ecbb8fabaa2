#include "app/scene/scene_dialog.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QVBoxLayout>
#include <utility>

#include "platform/code_page_949.h"
#include "platform/qt/file_names.h"
#include "platform/qt/open_files_dialog.h"
#include "platform/qt/utf8_text.h"
#include "sound/float_block.h"
#include "sound/sample_io.h"
#include "spatial/live_placing.h"
#include "spatial/ui/shape_dialog.h"

namespace sonavel {
namespace {

constexpr std::string_view kScenePrefix = "Scene_";

QString SceneFilters() {
    return SceneDialog::tr("Scenes (*.scene);;All files (*)");
}

void Complain(QWidget* over, const Outcome& why) {
    if (why.IsFailed())
        QMessageBox::warning(over, SceneDialog::tr("Scene"), Utf8Text(why.Reason()));
}

}  // namespace

SceneDialog::SceneDialog(CSoundView& view, const Workspace& sounds, SpatialMemory& memory,
                         std::vector<script::SceneEntry> entries, QWidget* parent)
    : PreviewDialog(view, tr("Scene"), kScenePrefix, parent),
      sounds_(sounds),
      memory_(memory),
      entries_(std::move(entries)),
      scene_(new SceneWidget(this)),
      table_(new SceneTable(this)),
      points_(new UserPointList(PointTimes::kOff, this)),
      way_(new PathBox(ShapeOffer::kOn, LoopOffer::kOff, this)),
      heard_(new SmoothBox(SourceMotion::kMoving, Utf8Text(memory.listener.Measured().name),
                           LawOffer::kOff, this)),
      addMenu_(new QMenu(this)) {
    const QString instruction = tr("Each sound stands at its point or moves along its points");
    Header().SetStatus(instruction);
    Header().SetNotes({tr("Headphones are needed to hear where the sounds are."),
                       tr("OK mixes them into a new stereo sound; they stay as they are.")});
    connect(&MakePreview(instruction), &PreviewToggle::Heard, this, &SceneDialog::MoveBall);
    auto* middle = new QHBoxLayout;
    middle->setContentsMargins(12, 12, 12, 12);
    middle->setSpacing(12);
    middle->addWidget(scene_, 1);
    middle->addLayout(MakeSide());
    Outer().addLayout(middle, 1);
    QLayout* buttons = MakeButtons();
    AddLiveLine();
    Outer().addLayout(buttons);
    connect(table_, &SceneTable::Chosen, this, &SceneDialog::Choose);
    connect(table_, &SceneTable::Timed, this, &SceneDialog::TakeTimes);
    connect(points_, &UserPointList::Changed, this, &SceneDialog::TakeEntry);
    connect(way_, &PathBox::Edited, this, &SceneDialog::TakeEntry);
    connect(way_, &PathBox::ShapeAsked, this, &SceneDialog::AskShape);
    connect(heard_, &SmoothBox::Edited, this, &SceneDialog::TakeEntry);
    connect(scene_, &SceneWidget::PointPicked, this, [this](int ball) {
        Choose(balls_[static_cast<std::size_t>(ball)].entry);
        points_->Select(balls_[static_cast<std::size_t>(ball)].point);
    });
    connect(scene_, &SceneWidget::PointDragged, this, &SceneDialog::DragBall);
    Choose(entries_.empty() ? -1 : 0);
    table_->setFocus();
}

SceneDialog::~SceneDialog() = default;

QLayout* SceneDialog::MakeSide() {
    auto* sounds = new QHBoxLayout;
    sounds->addWidget(table_, 1);
    sounds->addLayout(MakeSoundButtons());
    auto* hint = new QLabel(tr("Points of the chosen sound: it stands at a single one, and moves "
                               "along more."),
                            this);
    hint->setWordWrap(true);
    auto* side = new QVBoxLayout;
    side->addLayout(sounds, 1);
    side->addWidget(hint);
    side->addWidget(points_, 1);
    side->addWidget(way_);
    side->addWidget(heard_);
    return side;
}

QLayout* SceneDialog::MakeSoundButtons() {
    auto* column = new QVBoxLayout;
    auto* add = new QPushButton(tr("Add Soun&d"), this);
    add->setAutoDefault(false);
    add->setMenu(addMenu_);
    connect(addMenu_, &QMenu::aboutToShow, this, &SceneDialog::FillAddMenu);
    column->addWidget(add);
    const auto addButton = [&](const QString& text, void (SceneDialog::*act)()) {
        auto* button = new QPushButton(text, this);
        button->setAutoDefault(false);
        column->addWidget(button);
        connect(button, &QPushButton::clicked, this, act);
        return button;
    };
    remove_ = addButton(tr("&Remove Sound"), &SceneDialog::RemoveCurrent);
    addButton(tr("Open Sc&ene…"), &SceneDialog::AskLoad);
    save_ = addButton(tr("Sa&ve Scene…"), &SceneDialog::AskSave);
    column->addStretch(1);
    return column;
}

QLayout* SceneDialog::MakeButtons() {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(12, 0, 12, 12);
    row->setSpacing(12);
    row->addWidget(Preview()->Button());
    AddLiveButton(*row);
    row->addWidget(Preview()->Bar(), 1);
    row->addWidget(Preview()->Percent());
    row->addSpacing(24);
    ok_ = AddOkAndCancel(*row);
    return row;
}

void SceneDialog::AddLiveButton(QHBoxLayout& row) {
    LiveToggle& live = MakeLiveToggle({QString::fromUtf8(kLivePlacingNote)});
    row.addWidget(live.Button());
    connect(&live, &LiveToggle::Heard, this, &SceneDialog::MoveBall);
    connect(&live, &LiveToggle::Silent, this, [this] {
        live_ = nullptr;
        scene_->SetBall(std::nullopt);
        ShowScene();
    });
}

void SceneDialog::FillAddMenu() {
    addMenu_->clear();
    for (std::size_t i = 0; i < sounds_.Count(); ++i) {
        const CSoundDoc& document = *sounds_.At(i).document;
        if (document.Sound().GetFrameCount() == 0) continue;
        addMenu_->addAction(Utf8Text(DisplayText(document.Title())), this,
                            [this, &document] { Add(script::EntryOf(document)); });
    }
    addMenu_->addSeparator();
    addMenu_->addAction(tr("&File…"), this, &SceneDialog::AddFile);
}

void SceneDialog::Add(script::SceneEntry entry) {
    entries_.push_back(std::move(entry));
    Choose(static_cast<int>(entries_.size()) - 1);
    BeginLiveAnew();
}

void SceneDialog::AddFile() {
    const QString chosen =
        OpenFilesDialog::AskOne(tr("Add Sound"), FolderShown(), tr("All files (*)"), this);
    if (chosen.isEmpty()) return;
    Result<script::SceneEntry> entry = script::EntryOfFile(FilePath(chosen), sounds_);
    if (!entry) return Complain(this, entry.Ended());
    Add(*std::move(entry));
}

void SceneDialog::RemoveCurrent() {
    if (current_ < 0) return;
    entries_.erase(entries_.begin() + current_);
    Choose(std::min(current_, static_cast<int>(entries_.size()) - 1));
    BeginLiveAnew();
}

QString SceneDialog::FolderShown() const {
    return FileText(Document().Path().parent_path());
}

void SceneDialog::AskLoad() {
    const QString chosen =
        OpenFilesDialog::AskOne(tr("Open Scene"), FolderShown(), SceneFilters(), this);
    if (!chosen.isEmpty()) LoadScene(FilePath(chosen));
}

void SceneDialog::AskSave() {
    QFileDialog dialog(this, tr("Save Scene"), FolderShown(), SceneFilters());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("scene"));
    if (dialog.exec() == QDialog::Accepted) SaveScene(FilePath(dialog.selectedFiles().value(0)));
}

void SceneDialog::LoadScene(const std::filesystem::path& path) {
    Result<std::vector<script::SceneEntry>> entries = script::ReadScene(path, sounds_);
    if (!entries) return Complain(this, entries.Ended());
    entries_ = *std::move(entries);
    Choose(0);
    scene_->ShowAll();
    BeginLiveAnew();
}

void SceneDialog::SaveScene(const std::filesystem::path& path) {
    Complain(this, script::WriteScene(path, entries_));
}

void SceneDialog::Choose(int entry) {
    current_ = entry;
    table_->Show(entries_, current_);
    remove_->setEnabled(current_ >= 0);
    for (QWidget* of : std::initializer_list<QWidget*>{points_, way_, heard_})
        of->setEnabled(current_ >= 0);
    ShowEntry();
    ShowScene();
}

void SceneDialog::ShowEntry() {
    showing_ = true;
    std::vector<UserPoint> points;
    if (current_ >= 0) {
        const Placing& placing = Current().placing;
        for (const SourcePosition& point : placing.points)
            points.push_back(NearestUserPoint(point));
        heard_->Show(placing);
        way_->Show(placing);
    }
    points_->SetPoints(std::move(points));
    showing_ = false;
}

void SceneDialog::TakeEntry() {
    if (showing_ || current_ < 0) return;
    Placing placing = heard_->Chosen();
    way_->PutInto(placing);
    for (const UserPoint& point : points_->Points()) placing.points.push_back(PositionOf(point));
    if (placing.points.size() < 2) {
        placing.kind = PlacingKind::kPoint;
        placing.doppler = Doppler::kOff;
    }
    Current().placing = std::move(placing);
    ShowScene();
    SetLive();
}

// Other times are another scene, a gain is not.
void SceneDialog::TakeTimes(int entry, double startSeconds, double gain) {
    script::SceneEntry& timed = entries_[static_cast<std::size_t>(entry)];
    timed.gain = gain;
    if (std::exchange(timed.startSeconds, startSeconds) == startSeconds)
        SetLive();
    else
        BeginLiveAnew();
}

std::unique_ptr<LiveMaker> SceneDialog::MakeLive() {
    if (!IsComplete()) return nullptr;
    const std::uint32_t rate = Document().Sound().GetSamplesPerSecond();
    std::unique_ptr<LiveScene> maker = script::LiveOf(entries_, rate, memory_.listener);
    live_ = maker.get();
    heardSeconds_ = 1.0 * maker->Range().frames / rate;
    return maker;
}

void SceneDialog::SetLive() {
    if (!live_ || !Live()) return;
    live_->Set(script::LiveSettings(entries_));
    Live()->MakeAnew();
}

// The sounds are other ones, or begin at other times.
void SceneDialog::BeginLiveAnew() {
    if (!live_ || !Live()) return;
    Live()->Stop();
    if (IsComplete()) Live()->Toggle();
}

void SceneDialog::AskShape() {
    ShapeDialog dialog(memory_.shape, this);
    if (dialog.exec() != QDialog::Accepted) return;
    memory_.shape = dialog.Chosen();
    way_->ShowCurve(memory_.shape.shape == PathShape::kFlyBy ? PathCurve::kStraight
                                                             : PathCurve::kSpline);
    std::vector<UserPoint> points;
    for (const SourcePosition& point : PointsOfShape(memory_.shape))
        points.push_back(NearestUserPoint(point));
    points_->SetPoints(std::move(points));
}

bool SceneDialog::IsComplete() const {
    return !entries_.empty() && std::ranges::all_of(entries_, [](const script::SceneEntry& entry) {
        return !entry.placing.points.empty();
    });
}

void SceneDialog::AddToScene(int entry, SceneContent& content) {
    const Placing& placing = entries_[static_cast<std::size_t>(entry)].placing;
    const QString letter = SceneLetter(static_cast<std::size_t>(entry));
    const int count = static_cast<int>(placing.points.size());
    for (int point = 0; point < count; ++point) {
        const bool isSelected = entry == current_ && point == points_->Current();
        content.points.push_back({placing.points[static_cast<std::size_t>(point)], point + 1,
                                  isSelected ? PointRole::kSelected : PointRole::kPlain,
                                  count > 1 ? letter + QString::number(point + 1) : letter});
        balls_.push_back({entry, point});
    }
    if (entry == current_)
        content.path = PathOf(placing);
    else
        content.otherPaths.push_back(PathOf(placing));
}

void SceneDialog::ShowScene() {
    SceneContent content;
    content.dragging = PointDragging::kOn;
    content.showsStems = true;
    balls_.clear();
    for (int entry = 0; entry < static_cast<int>(entries_.size()); ++entry)
        AddToScene(entry, content);
    scene_->SetContent(std::move(content));
    ok_->setEnabled(IsComplete());
    save_->setEnabled(IsComplete());
    Preview()->Button()->setEnabled(IsComplete() || Document().Preview().IsPlaying());
    if (Live()) Live()->Button()->setEnabled(IsComplete() || live_);
}

void SceneDialog::DragBall(int ball, const SourcePosition& position) {
    const Ball dragged = balls_[static_cast<std::size_t>(ball)];
    if (dragged.entry != current_) Choose(dragged.entry);
    points_->SetPoint(dragged.point, NearestUserPoint(position));
}

// The ball is the chosen sound, while it sounds.
std::optional<SourcePosition> SceneDialog::PlaceHeard(double share) const {
    if (current_ < 0 || Current().placing.points.empty()) return std::nullopt;
    const Sound& sound = *Current().sound;
    const double seconds = 1.0 * sound.GetFrameCount() / sound.GetSamplesPerSecond();
    const double since = share * heardSeconds_ - Current().startSeconds;
    if (since < 0 || since > seconds) return std::nullopt;
    return PositionWhilePlaying(CourseOf(Current().placing, seconds), since / seconds);
}

// At once: a ball taken away and put back would have the scene drawn each time, and what is dragged
// would wait for that.
void SceneDialog::MoveBall(double share) {
    scene_->SetBall(PlaceHeard(share));
}

Outcome SceneDialog::Run(Purpose purpose) {
    const bool applies = purpose == Purpose::kApply;
    script::SceneSettings settings{memory_.listener, Document().Services().progress};
    if (!applies) settings.rate = Document().Sound().GetSamplesPerSecond();
    Result<Sound> mixed = script::MixEntries(entries_, settings);
    if (!mixed) return mixed.Ended();
    if (applies) {
        mixed_ = *std::move(mixed);
        return Done();
    }
    FloatBlock pairs(std::size_t{2} * mixed->GetFrameCount());
    if (!pairs.HasMemory()) return Failed(failure::kMemory);
    ReadInterleaved(*mixed, 0, pairs.Floats());
    heardSeconds_ = 1.0 * mixed->GetFrameCount() / mixed->GetSamplesPerSecond();
    return Document().MakePreview(pairs.Floats(), CSoundDoc::PreviewPlay::kYes,
                                  std::uint64_t{2} * mixed->GetFrameCount(),
                                  CSoundDoc::PreviewFormat::kComputedStereo);
}

}  // namespace sonavel
