#include "effects/ui/normalise_dialog.h"

#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

// In the table's order.
constexpr std::size_t kNormaliseToLine = 0;
constexpr std::size_t kLoudnessLine = 2;
constexpr std::size_t kChannelsLine = 3;

}  // namespace

CNormaliseDlg::CNormaliseDlg(const EffectDialogContext& context, QWidget* parent)
    : PlainEffectDialog(context, *FindEffect("normalise"), parent, Ending::kLeftToTheRest),
      samplePeak_(AddPresentValue(tr("Sample peak now"), "sample peak")),
      truePeak_(AddPresentValue(tr("True peak now"), "true peak")),
      loudness_(AddPresentValue(tr("Loudness now"), "loudness")) {
    connect(&Control(kNormaliseToLine), &ParameterControl::Changed, this,
            &CNormaliseDlg::ShowLines);
    Begin(First());
    ShowLines();
    worker_ = std::make_unique<LoudnessWorker>(
        Document().Sound(), Range(),
        [this](const Result<SoundLoudness>& found) { ShowFound(found); });
}

ValueLabel* CNormaliseDlg::AddPresentValue(const QString& name, const char* objectName) {
    auto* value = new ValueLabel(this);
    value->setObjectName(QLatin1String(objectName));
    value->setText(NotYetText());
    const int row = Grid().rowCount();
    Grid().addWidget(new QLabel(name, this), row, 0);
    Grid().addWidget(value, row, 1);
    return value;
}

void CNormaliseDlg::ShowFound(const Result<SoundLoudness>& found) {
    samplePeak_->setText(found ? DecibelsText(found->samplePeak) : Utf8Text(found.Reason()));
    truePeak_->setText(found ? DecibelsText(found->truePeak) : QString());
    loudness_->setText(found ? IntegratedText(*found) : QString());
}

void CNormaliseDlg::ShowLines() {
    const bool toPeak = Control(kNormaliseToLine).Value() == 0;
    SetLineEnabled(kLoudnessLine, !toPeak);
    SetLineEnabled(kChannelsLine, toPeak && !IsMono());
}

void CNormaliseDlg::done(int result) {
    if (!IsRunning()) worker_.reset();
    PlainEffectDialog::done(result);
}

}  // namespace sonavel
