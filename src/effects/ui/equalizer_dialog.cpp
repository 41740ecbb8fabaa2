#include "effects/ui/equalizer_dialog.h"

#include <QShortcut>

namespace sonavel {

namespace {

constexpr int kPageStep = 10;
constexpr int kTicks = 40;
constexpr int kSliderHeight = 170;

QString GainText(double decibels) {
    return QString::asprintf("%.1f", decibels);
}

}  // namespace

CGraphicEqDlg::CGraphicEqDlg(const EffectDialogContext& context, QWidget* parent)
    : EffectDialog(context, *FindEffect("equalizer"),
                   {"Graphic EQ", "    7-Band Graphic EQ", "Select Tab Number or Delay Time"},
                   parent),
      picture_(new EqualizerPicture(SamplesPerSecond(), this)) {
    AddControls(Direction::kAgainstValue);
    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("dB"), this), 1, 0);
    grid->addWidget(new QLabel(QStringLiteral("Hz"), this), 2, 0);
    const auto frequencies = EqualizerLabels(SamplesPerSecond());
    QSlider* first = nullptr;
    for (int band = 0; band < kEqualizerBands; ++band) {
        QSlider* slider = AddBand(*grid, band, frequencies[band]);
        if (!first) first = slider;
    }
    Body().addLayout(grid);
    Body().addWidget(picture_, 1);
    ShowResponse();
    Begin(*first);
}

QSlider* CGraphicEqDlg::AddBand(QGridLayout& grid, int band, const char* frequency) {
    ParameterControl& control = Control(static_cast<std::size_t>(band));
    QSlider* slider = control.MakeSlider(Qt::Vertical);
    slider->setPageStep(kPageStep);
    slider->setTickInterval(kTicks);
    slider->setTickPosition(QSlider::TicksBothSides);
    slider->setMinimumHeight(kSliderHeight);
    slider->setAccessibleName(QString::fromUtf8(frequency));
    if (slider->toolTip().isEmpty())
        slider->setToolTip(tr("How much louder or softer the sound becomes round this frequency."));
    ValueLabel* gain = control.MakeValueLabel(GainText);
    gain->setAlignment(Qt::AlignCenter);
    auto* label = new QLabel(QString::fromUtf8(frequency), this);
    label->setBuddy(slider);
    if (!*frequency) NumberBand(*slider, band + 1);
    const int column = band + 1;
    grid.addWidget(slider, 0, column, Qt::AlignHCenter);
    grid.addWidget(gain, 1, column, Qt::AlignHCenter);
    grid.addWidget(label, 2, column, Qt::AlignHCenter);
    grid.setColumnStretch(column, 1);
    connect(&control, &ParameterControl::Changed, this, &CGraphicEqDlg::ShowResponse);
    return slider;
}

// A band without a name is reached by its number.
void CGraphicEqDlg::NumberBand(QSlider& slider, int number) {
    slider.setAccessibleName(tr("Band %1").arg(number));
    auto* key = new QShortcut(Qt::ALT | static_cast<Qt::Key>(Qt::Key_0 + number), &slider);
    connect(key, &QShortcut::activated, &slider, [&slider] { slider.setFocus(); });
    slider.setToolTip(key->key().toString(QKeySequence::NativeText));
}

void CGraphicEqDlg::ShowResponse() {
    EqualizerParameters parameters;
    for (int band = 0; band < kEqualizerBands; ++band)
        parameters.positions[band] = -qRound(Control(static_cast<std::size_t>(band)).Value() * 10);
    picture_->SetParameters(parameters);
}

}  // namespace sonavel
