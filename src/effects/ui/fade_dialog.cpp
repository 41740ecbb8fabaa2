#include "effects/ui/fade_dialog.h"

#include <algorithm>

namespace sonavel {

namespace {

constexpr std::size_t kCurveLine = 0;

}  // namespace

CFadeDlg::CFadeDlg(FadePicture::Way way, const EffectDialogContext& context, QWidget* parent)
    : PlainEffectDialog(context, *FindEffect(way == FadePicture::Way::kIn ? "fade-in" : "fade-out"),
                        parent, Ending::kLeftToTheRest),
      picture_(new FadePicture(
          way, std::max<double>(Range().Frames(), 1) / std::max(SamplesPerSecond(), 1U), this)) {
    Body().addWidget(picture_, 1);
    connect(&Control(kCurveLine), &ParameterControl::Changed, this, &CFadeDlg::ShowCurve);
    Begin(First());
    ShowCurve();
}

void CFadeDlg::ShowCurve() {
    picture_->SetCurve(static_cast<FadeCurve>(Control(kCurveLine).WholeValue()));
}

}  // namespace sonavel
