#include "effects/ui/effect_dialog.h"

#include <QPointer>

#include "effects/range_extremes.h"
#include "effects/ui/effect_notes.h"
#include "effects/ui/mnemonics.h"

namespace sonavel {

namespace {

constexpr int kButtonSpacing = 8;
constexpr int kLeastBarWidth = 60;

}  // namespace

EffectDialog::EffectDialog(const EffectDialogContext& context, const Effect& effect,
                           const EffectDialogTexts& texts, QWidget* parent)
    : PreviewDialog(context.view, QString::fromUtf8(texts.title), effect.titlePrefix, parent),
      state_(context.state),
      memory_(context.memory),
      effect_(effect),
      body_(new QVBoxLayout) {
    Header().SetStatus(QString::fromUtf8(texts.header));
    const CWave& sound = Document().Sound();
    Header().SetNotes(EffectNotes(
        effect, {sound.GetChannels(), sound.GetBits(), ExtremesOf(sound, RangeOf(Target()))}));
    body_->setContentsMargins(12, 12, 12, 12);
    body_->setSpacing(12);
    Outer().addLayout(body_, 1);
    AddButtons(QString::fromUtf8(texts.instruction));
}

EffectDialog::~EffectDialog() = default;

void EffectDialog::AddButtons(const QString& instruction) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(12, 0, 12, 12);
    row->setSpacing(kButtonSpacing);
    if (effect_.HasPreview()) row->addWidget(MakePreview(instruction).Button());
    AddLive(*row);
    connect(AddButton(*row, tr("&Reset")), &QPushButton::clicked, this, [this] { Reset(); });
    if (Preview())
        AddProgress(*row);
    else
        row->addStretch(1);
    AddApply(*row);
    AddOkAndCancel(*row);
    Outer().addLayout(row);
}

void EffectDialog::AddLive(QHBoxLayout& buttons) {
    LiveToggle& live =
        MakeLiveToggle({QString::fromUtf8(LiveNote(effect_)), tr("Li&ve"), tr("B&ypass")});
    buttons.addWidget(live.Button());
    connect(&live, &LiveToggle::Silent, this, [this] { heard_ = nullptr; });
    auto* line = new QHBoxLayout;
    line->setContentsMargins(12, 0, 12, 8);
    line->addWidget(live.Line());
    Outer().addLayout(line);
    const CWave& sound = Document().Sound();
    if (const char* reason = LiveRefusal(effect_, sound)) live.Refuse(QString::fromUtf8(reason));
}

std::unique_ptr<LiveMaker> EffectDialog::MakeLive() {
    const FrameRange range = RangeOf(Target());
    if (range.IsEmpty()) return nullptr;
    auto maker = std::make_unique<LiveEffect>(effect_, Document().Sound(), range);
    heard_ = maker.get();
    heard_->Set(Values());
    return maker;
}

void EffectDialog::SetLive() {
    if (!heard_ || !Live()) return;
    heard_->Set(Values());
    Live()->MakeAnew();
}

void EffectDialog::AddApply(QHBoxLayout& buttons) {
    const EffectTraits& traits = effect_.traits;
    const bool okDoesNothing =
        traits.storing == Storing::kNothing || (!traits.appliesToMono && IsMono());
    if (!okDoesNothing) return;
    QPushButton* apply = AddButton(buttons, tr("&Apply"));
    apply->setToolTip(tr("Changes the sound, which OK does not"));
    connect(apply, &QPushButton::clicked, this, [this] {
        applying_ = Applying::kAlways;
        accept();
    });
}

// Between the buttons: there, the bar that keeps its place while nothing is heard costs no line.
void EffectDialog::AddProgress(QHBoxLayout& buttons) {
    QProgressBar* bar = Preview()->Bar();
    QSizePolicy policy = bar->sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Ignored);
    bar->setSizePolicy(policy);
    bar->setMinimumWidth(kLeastBarWidth);
    buttons.addSpacing(kButtonSpacing);
    buttons.addWidget(bar, 1);
    buttons.addWidget(Preview()->Percent());
    buttons.addSpacing(kButtonSpacing);
}

void EffectDialog::AddControls(Direction direction) {
    for (const EffectParameter& parameter : effect_.parameters) AddControl(parameter, direction);
}

ParameterControl& EffectDialog::AddControl(const EffectParameter& parameter, Direction direction) {
    controls_.push_back(new ParameterControl(parameter, direction, this));
    connect(controls_.back(), &ParameterControl::Changed, this, &EffectDialog::SetLive);
    return *controls_.back();
}

void EffectDialog::Begin(QWidget& firstControl) {
    RecallAll();
    GiveMnemonics(*this, Preview() ? PreviewToggle::ButtonTexts() : QStringList());
    firstControl.setFocus();
    adjustSize();
}

std::vector<double> EffectDialog::Values() const {
    std::vector<double> values;
    for (std::size_t i = 0; i < effect_.parameters.size(); ++i)
        values.push_back(controls_[i]->Value());
    return values;
}

void EffectDialog::Reset() {
    for (ParameterControl* control : controls_) control->Reset();
}

void EffectDialog::Remember(const Effect& effect, std::size_t first, std::size_t count) {
    std::vector<double>& values = memory_.values[effect.name];
    values.clear();
    for (std::size_t i = 0; i < count; ++i) values.push_back(controls_[first + i]->Value());
}

void EffectDialog::Recall(const Effect& effect, std::size_t first, std::size_t count) {
    const auto found = memory_.values.find(effect.name);
    if (found == memory_.values.end()) return;
    for (std::size_t i = 0; i < std::min(count, found->second.size()); ++i)
        controls_[first + i]->SetValue(found->second[i]);
}

FrameRange EffectDialog::Range() const {
    const Selection selection = View().State().GetSelection();
    return RangeToWorkOn(selection.start, selection.end, Document().Sound().GetFrameCount());
}

EffectTarget EffectDialog::Target() {
    const Selection selection = View().State().GetSelection();
    return {Document(), selection.start, selection.end, state_};
}

Outcome EffectDialog::Run(Purpose purpose) {
    if (purpose == Purpose::kPlayedPreview) return RunDisabled();
    return ApplyEffectTo(View(), state_, effect_, Values(), applying_);
}

Outcome EffectDialog::RunDisabled() {
    const QPointer<QWidget> focus = focusWidget();
    setEnabled(false);
    Outcome made = PreviewEffect(effect_, Target(), Values(), PreviewPlay::kYes);
    setEnabled(true);
    if (focus) focus->setFocus();
    return made;
}

void EffectDialog::done(int result) {
    if (IsRunning()) return;
    RememberAll();
    PreviewDialog::done(result);
}

}  // namespace sonavel
