#include "effects/ui/effect_dialog.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>

#include "effects/effect_runner.h"
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
    : QDialog(parent),
      view_(context.view),
      state_(context.state),
      memory_(context.memory),
      effect_(effect),
      texts_(texts),
      header_(new EffectHeader(this)),
      body_(new QVBoxLayout) {
    setWindowTitle(QString::fromUtf8(texts.title));
    setPalette(EffectPalette());
    header_->SetStatus(QString::fromUtf8(texts.header));
    const CWave& sound = Document().Sound();
    header_->SetNotes(EffectNotes(
        effect, {sound.GetChannels(), sound.GetBits(), ExtremesOf(sound, RangeOf(Target()))}));
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addWidget(header_);
    body_->setContentsMargins(12, 12, 12, 12);
    body_->setSpacing(12);
    outer->addLayout(body_, 1);
    AddButtons();
}

EffectDialog::~EffectDialog() = default;

QPushButton* EffectDialog::AddButton(QHBoxLayout& row, const char* text) {
    auto* button = new QPushButton(QString::fromUtf8(text), this);
    button->setAutoDefault(false);
    row.addWidget(button);
    return button;
}

void EffectDialog::AddButtons() {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(12, 0, 12, 12);
    row->setSpacing(kButtonSpacing);
    if (effect_.HasPreview()) AddPreview(*row);
    connect(AddButton(*row, "&Reset"), &QPushButton::clicked, this, [this] { Reset(); });
    if (preview_)
        AddProgress(*row);
    else
        row->addStretch(1);
    QPushButton* ok = AddButton(*row, "&OK");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(AddButton(*row, "&Cancel"), &QPushButton::clicked, this, &QDialog::reject);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

// Between the buttons: there, the bar that keeps its place while nothing is heard costs no line.
void EffectDialog::AddProgress(QHBoxLayout& buttons) {
    QProgressBar* bar = preview_->Bar();
    QSizePolicy policy = bar->sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Ignored);
    bar->setSizePolicy(policy);
    bar->setMinimumWidth(kLeastBarWidth);
    buttons.addSpacing(kButtonSpacing);
    buttons.addWidget(bar, 1);
    buttons.addWidget(preview_->Percent());
    buttons.addSpacing(kButtonSpacing);
}

void EffectDialog::AddPreview(QHBoxLayout& buttons) {
    preview_ = std::make_unique<PreviewToggle>(
        Document(), [this] { return RunPreview(); }, this);
    buttons.addWidget(preview_->Button());
    connect(preview_.get(), &PreviewToggle::Rendering, this, [this] { header_->SetStatus({}); });
    connect(preview_.get(), &PreviewToggle::Silent, this, [this](const QString& reason) {
        header_->SetStatus(reason.isEmpty() ? QString::fromUtf8(texts_.instruction) : reason);
    });
}

void EffectDialog::AddControls(Direction direction) {
    for (const EffectParameter& parameter : effect_.parameters) AddControl(parameter, direction);
}

ParameterControl& EffectDialog::AddControl(const EffectParameter& parameter, Direction direction) {
    controls_.push_back(new ParameterControl(parameter, direction, this));
    return *controls_.back();
}

void EffectDialog::Begin(QWidget& firstControl) {
    RecallAll();
    GiveMnemonics(*this, preview_ ? preview_->ButtonTexts() : QStringList());
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

EffectTarget EffectDialog::Target() {
    const Selection selection = view_.GetSelection();
    return {Document(), selection.start, selection.end, state_};
}

bool EffectDialog::Apply() {
    Document().SetLastError("");
    return ApplyEffect(ChosenEffect(), Target(), Values()).IsDone();
}

bool EffectDialog::RunPreview() {
    bool made = false;
    RunDisabled(
        [&] { made = PreviewEffect(effect_, Target(), Values(), PreviewPlay::kYes).IsDone(); });
    // A preview that was made but cannot be heard leaves no error in the document.
    if (made || Document().LastError().empty())
        Document().SetPreviewTitlePrefix(effect_.titlePrefix);
    return made;
}

void EffectDialog::RunDisabled(const std::function<void()>& run) {
    const QPointer<QWidget> focus = focusWidget();
    running_ = true;
    setEnabled(false);
    run();
    setEnabled(true);
    running_ = false;
    if (focus) focus->setFocus();
}

void EffectDialog::done(int result) {
    if (running_) return;
    RememberAll();
    // The positions go back to the view.
    if (preview_) Document().Preview().Stop(CWavePlayer::StopReport::kSilent);
    preview_.reset();
    QDialog::done(result);
}

void EffectDialog::keyPressEvent(QKeyEvent* event) {
    if (!running_) QDialog::keyPressEvent(event);
}

void EffectDialog::closeEvent(QCloseEvent* event) {
    if (running_)
        event->ignore();
    else
        QDialog::closeEvent(event);
}

}  // namespace sonavel
