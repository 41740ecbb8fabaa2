#include "app/preferences/sound_preview.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/qt/device_line.h"
#include "view/draw/marker_strip.h"
#include "view/ui/qt_values.h"
#include "view/ui/ruler_painter.h"
#include "view/ui/waveform_renderer.h"

namespace sonavel {

namespace {

constexpr QSize kSize{420, 240};
// Of the row of scroll bars below a view, which the preview has not.
constexpr int kBottomRow = 22;
// Fewer frames than the waveform has pixels, so that the end of the sound is to be seen.
constexpr std::uint32_t kFrames = 372;
constexpr std::uint32_t kRate = 125;
constexpr Selection kSelection{130, 215};
constexpr std::uint32_t kCursor = 250;
constexpr int kMarkerPixels = 10;

RulerVisibility Visibility(int shown) {
    return shown ? RulerVisibility::kShown : RulerVisibility::kHidden;
}

int PreviewSample(unsigned channel, std::uint32_t frame) {
    const double place = static_cast<double>(frame) / kFrames;
    const double swell = std::sin(std::numbers::pi * place) * (0.6 + 0.4 * std::sin(19 * place));
    const double wave = std::sin(frame * (channel == 0 ? 0.9 : 0.55) + 8 * place * place);
    return static_cast<int>(std::lround(115 * swell * wave));
}

}  // namespace

SoundPreview::SoundPreview(QWidget* parent) : QWidget(parent) {
    setFixedSize(kSize);
    setAccessibleName(tr("Preview"));
    MakeSound();
}

void SoundPreview::MakeSound() {
    if (!sound_.Create(2, 8, kRate, kFrames)) return;
    for (std::uint32_t frame = 0; frame < kFrames; ++frame)
        for (unsigned channel = 0; channel < 2; ++channel)
            sound_.SetSample(channel, frame, PreviewSample(channel, frame));
    sound_.Markers().Add(60, "Intro", 0);
    sound_.Markers().Add(280, "마커", 50);
    extremes_.Rebuild(sound_, 0);
}

void SoundPreview::ShowPreferences(const Preferences& preferences) {
    preferences_ = preferences;
    update();
}

QColor SoundPreview::Colour(ColourSlot slot) const {
    return ToQColor(preferences_.colours[slot]);
}

WaveformLook SoundPreview::Look(const ViewGeometry& geometry) const {
    WaveformLook look;
    look.waveform = geometry.waveform;
    look.channels = sound_.GetChannels();
    for (unsigned channel = 0; channel < 2; ++channel)
        look.lanes[channel] = geometry.Lane(channel, 2);
    look.frameCount = sound_.GetFrameCount();
    look.rate = sound_.GetRate();
    const std::int64_t width = std::min<std::int64_t>(look.frameCount, look.waveform.Width());
    look.horizontal = ScrollState{0, width, kWholeRangePage, 0}.Clamped();
    look.vertical = ScrollState{0, look.waveform.Height() / 2, kWholeRangePage, 0}.Clamped();
    look.selection = kSelection;
    look.colours = preferences_.colours;
    look.centreLine = preferences_.settings[SettingId::kCentreLine];
    look.grid = GridSettings::Read(preferences_.settings);
    look.statusFormat = ReadStatusFormat(preferences_.settings);
    look.pixelRatio = devicePixelRatioF();
    return look;
}

void SoundPreview::paintEvent(QPaintEvent*) {
    const DisplaySettings display = DisplaySettings::Read(preferences_.settings);
    const ViewGeometry geometry = ViewGeometry::Layout({{0, 0, width(), height() + kBottomRow},
                                                        Visibility(display.horizontalRuler),
                                                        Visibility(display.verticalRuler)});
    const WaveformLook look = Look(geometry);
    const PixelMap map(look.frameCount, look.horizontal);
    QPainter painter(this);
    PaintWaveform(painter, look);
    FillLine(painter, ToQRect(CursorRect(look.waveform, map, kCursor)),
             Colour(ColourSlot::kCursor));
    PaintMarkers(painter, geometry.markerStrip, map);
    if (display.horizontalRuler)
        PaintHorizontalRuler(
            painter, {geometry.horizontalRuler, map, kRate, look.statusFormat, kCursor, kSelection},
            look.colours);
    if (display.verticalRuler)
        PaintVerticalRuler(
            painter,
            {geometry.verticalRuler, look.lanes, look.vertical, FullScaleOf(sound_.GetBits())},
            look.colours);
}

void SoundPreview::PaintWaveform(QPainter& painter, const WaveformLook& look) const {
    const QSize size = ToQRect(look.waveform).size() * look.pixelRatio;
    QImage image(size, QImage::Format_RGB32);
    WaveformRenderer(image, look, {sound_, extremes_}).RenderStrip({0, look.waveform.Width()});
    painter.drawImage(QRectF(ToQRect(look.waveform)), image);
}

void SoundPreview::PaintMarkers(QPainter& painter, const Rectangle& strip,
                                const PixelMap& map) const {
    QFont font = painter.font();
    font.setPixelSize(kMarkerPixels);
    painter.setFont(font);
    painter.setPen(Colour(ColourSlot::kMarkerLabel));
    painter.fillRect(ToQRect(strip), Colour(ColourSlot::kMarkerStrip));
    for (const MarkerFlag& marker :
         LayOutMarkerStrip(strip, map, sound_.Markers(), WidthIn(font))) {
        painter.fillRect(ToQRect(marker.flag), Colour(ColourSlot::kEndOfSound));
        painter.drawText(QRect(marker.labelX, strip.top, strip.Width(), strip.Height()),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                         ToQString(marker.label));
    }
}

}  // namespace sonavel
