#include "effects/ui/tempo_dialog.h"

#include <algorithm>

#include "effects/time_pitch.h"
#include "platform/qt/utf8_text.h"
#include "sound/sound_texts.h"
#include "sound/time_text.h"

namespace sonavel {

namespace {

constexpr std::size_t kTempoLine = 0;

}  // namespace

CTempoDlg::CTempoDlg(const EffectDialogContext& context, QWidget* parent)
    : PlainEffectDialog(context, *FindEffect("tempo"), parent, Ending::kLeftToTheRest),
      length_(new QLineEdit(this)) {
    AddLengths();
    connect(&Control(kTempoLine), &ParameterControl::Changed, this, [this] {
        if (!taking_) ShowLength();
    });
    connect(length_, &QLineEdit::textEdited, this, &CTempoDlg::TakeTyped);
    Begin(First());
    ShowLength();
}

void CTempoDlg::AddLengths() {
    length_->setPalette(ProgramPalette());
    length_->setAlignment(Qt::AlignRight);
    length_->setObjectName(QStringLiteral("length"));
    length_->setToolTip(tr("How long the range becomes: 1:02.5, 62.5s, 250ms or 441000#."));
    auto* name = new QLabel(tr("New length"), this);
    name->setBuddy(length_);
    auto* now = new ValueLabel(this);
    now->setText(LengthText(Range().Frames()));
    const int row = Grid().rowCount();
    Grid().addWidget(name, row, 0);
    Grid().addWidget(length_, row, 1);
    Grid().addWidget(new QLabel(tr("Length now"), this), row + 1, 0);
    Grid().addWidget(now, row + 1, 1);
}

QString CTempoDlg::LengthText(double frames) const {
    return Utf8Text(TimeText(frames / std::max(SamplesPerSecond(), 1U)));
}

std::optional<double> CTempoDlg::TempoOfTyped() const {
    const auto time =
        ParseTime(length_->text().toStdString(), SamplesPerSecond(), BareNumber::kSeconds);
    if (!time || time->from == TimeFrom::kHere || time->frames <= 0) return std::nullopt;
    const double tempo = 100.0 * Range().Frames() / static_cast<double>(time->frames);
    const EffectParameter& allowed = Control(kTempoLine).Parameter();
    if (tempo < allowed.least || tempo > allowed.greatest) return std::nullopt;
    return tempo;
}

void CTempoDlg::TakeTyped() {
    const auto tempo = TempoOfTyped();
    isRefused_ = !tempo;
    if (!tempo) return;
    taking_ = true;
    Control(kTempoLine).SetValue(*tempo);
    taking_ = false;
    exact_ = tempo;
}

void CTempoDlg::ShowLength() {
    exact_.reset();
    isRefused_ = false;
    const double tempo[] = {Control(kTempoLine).Value()};
    length_->setText(LengthText(FramesAtTempo(tempo, Range().Frames())));
}

std::vector<double> CTempoDlg::Values() const {
    if (exact_) return {*exact_};
    return PlainEffectDialog::Values();
}

void CTempoDlg::accept() {
    if (!isRefused_) return PlainEffectDialog::accept();
    const double least[] = {Control(kTempoLine).Parameter().greatest};
    const double greatest[] = {Control(kTempoLine).Parameter().least};
    Header().SetStatus(tr("The length can be %1 to %2.")
                           .arg(LengthText(FramesAtTempo(least, Range().Frames())),
                                LengthText(FramesAtTempo(greatest, Range().Frames()))));
    length_->setFocus();
    length_->selectAll();
}

}  // namespace sonavel
