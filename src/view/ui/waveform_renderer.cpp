#include "view/ui/waveform_renderer.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/qt/device_line.h"
#include "view/draw/grid.h"
#include "view/ui/column_raster.h"
#include "view/ui/qt_values.h"
#include "view/ui/spectrogram_painter.h"

namespace sonavel {

namespace {

ScrollState Scaled(const ScrollState& state, double ratio) {
    const auto scaled = [ratio](std::int64_t pixels) {
        return static_cast<std::int64_t>(std::llround(static_cast<double>(pixels) * ratio));
    };
    return {scaled(state.minimum), scaled(state.maximum), scaled(state.page),
            scaled(state.position)};
}

void FillRect(QPainter& painter, const Rectangle& area, Rgb colour) {
    if (!area.Empty()) painter.fillRect(ToQRect(area), ToQColor(colour));
}

}  // namespace

WaveformRenderer::WaveformRenderer(QImage& image, const WaveformLook& look,
                                   const WaveformSource& source)
    : image_(image), look_(look), source_(source) {}

void WaveformRenderer::RenderStrip(ColumnRange strip) {
    strip.first = std::max(strip.first, 0);
    strip.last = std::min(strip.last, look_.waveform.Width());
    if (strip.first >= strip.last) return;
    const auto withPainter = [&](auto draw) {
        QPainter painter(&image_);
        painter.scale(look_.pixelRatio, look_.pixelRatio);
        painter.setClipRect(
            QRect(strip.first, 0, strip.last - strip.first, look_.waveform.Height()));
        draw(painter);
    };
    withPainter([this](QPainter& painter) {
        FillBackground(painter);
        if (look_.grid.Place() == GridPlace::kBehindWaveform) DrawGrid(painter);
        for (unsigned channel = 0; channel < look_.channels; ++channel)
            DrawLaneLines(painter, channel);
    });
    for (unsigned channel = 0; channel < look_.channels; ++channel) {
        DrawEnvelope(channel, {ToDevice(strip.first), ToDevice(strip.last)});
        DrawSpectrogram(channel, {ToDevice(strip.first), ToDevice(strip.last)});
    }
    if (look_.grid.Place() == GridPlace::kInFront)
        withPainter([this](QPainter& painter) { DrawGrid(painter); });
}

Rectangle WaveformRenderer::Local(const Rectangle& rectangle) const {
    const int dx = look_.waveform.left;
    const int dy = look_.waveform.top;
    return {rectangle.left - dx, rectangle.top - dy, rectangle.right - dx, rectangle.bottom - dy};
}

void WaveformRenderer::FillBackground(QPainter& painter) const {
    FillRect(painter, Local(look_.waveform), look_.colours[ColourSlot::kBackground]);
    const PixelMap map(look_.frameCount, look_.horizontal);
    FillRect(painter, Local(SelectionRect(look_.waveform, map, look_.selection)),
             look_.colours[ColourSlot::kSelection]);
    if (!map.Usable()) return;
    FillBetween(painter, look_.lanes);
    FillBetween(painter, look_.spectrogramLanes);
    if (look_.lanes[0].Empty() || !look_.ShowsSpectrogram()) return;
    const Rectangle envelopes = Local(look_.lanes[look_.channels > 1 ? 1 : 0]);
    FillRect(
        painter,
        {envelopes.left, envelopes.bottom, envelopes.right, Local(look_.spectrogramLanes[0]).top},
        look_.colours[ColourSlot::kLaneSeparator]);
}

void WaveformRenderer::FillBetween(QPainter& painter, const std::array<Rectangle, 2>& lanes) const {
    if (look_.channels < 2) return;
    const Rectangle upper = Local(lanes[0]);
    const Rectangle lower = Local(lanes[1]);
    FillRect(painter, {upper.left, upper.bottom, upper.right, lower.top},
             look_.colours[ColourSlot::kLaneSeparator]);
}

void WaveformRenderer::DrawGrid(QPainter& painter) const {
    const QFont font = RulerFont(RulerRoom::kRow);
    const QColor colour = ToQColor(look_.colours[ColourSlot::kGrid]);
    painter.setFont(font);
    painter.setPen(colour);
    for (unsigned channel = 0; channel < look_.channels; ++channel) {
        if (look_.lanes[channel].Empty()) continue;
        const PixelMap map(look_.frameCount, look_.horizontal);
        const Grid grid = LayOutGrid({Local(look_.lanes[channel]), map, look_.vertical, look_.rate,
                                      look_.grid, look_.statusFormat},
                                     WidthIn(font));
        for (const GridLine& line : grid.lines)
            FillLine(painter,
                     QRect(line.x0, line.y0, std::max(1, line.x1 - line.x0),
                           std::max(1, line.y1 - line.y0)),
                     colour);
        for (const GridLabel& label : grid.labels)
            painter.drawText(ToQRect(label.area), Qt::AlignCenter | Qt::TextDontClip,
                             ToQString(label.text));
    }
}

void WaveformRenderer::DrawLaneLines(QPainter& painter, unsigned channel) const {
    if (look_.lanes[channel].Empty()) return;
    const LaneLines lines = LinesOfLane(PixelRequest(channel), LineVisibility::kHidden);
    const Rectangle lane = Local(look_.lanes[channel]);
    if (lines.endOfSoundX)
        FillLine(painter, QRect(*lines.endOfSoundX, lane.top, 1, lane.Height()),
                 ToQColor(look_.colours[ColourSlot::kEndOfSound]));
    if (const std::optional<int> row = CentreRow(channel)) {
        const double pixel = 1 / look_.pixelRatio;
        const double length = lines.centreRight - lines.centreLeft;
        FillLine(painter, {double(lines.centreLeft), *row * pixel, length, pixel},
                 ToQColor(look_.colours[ColourSlot::kCentreLine]));
    }
}

std::optional<int> WaveformRenderer::CentreRow(unsigned channel) const {
    if (!look_.centreLine) return std::nullopt;
    if (!IsWiderThanSound())
        return LinesOfLane(DeviceRequest(channel), LineVisibility::kShown).centreY;
    const auto y = LinesOfLane(PixelRequest(channel), LineVisibility::kShown).centreY;
    return y ? std::optional(ToDevice(*y)) : std::nullopt;
}

void WaveformRenderer::DrawSpectrogram(unsigned channel, ColumnRange deviceStrip) const {
    if (!source_.spectrogram || !look_.ShowsSpectrogram()) return;
    const Rectangle lane = Local(look_.spectrogramLanes[channel]);
    const PixelMap map(look_.frameCount, look_.horizontal);
    const Rectangle selection = Local(SelectionRect(look_.waveform, map, look_.selection));
    const std::int64_t left = look_.VisibleColumns().first;
    // Behind the sound nothing is drawn.
    const std::int64_t end =
        std::min<std::int64_t>(deviceStrip.last, look_.ToDevice(look_.horizontal.maximum) - left);
    deviceStrip.last = static_cast<int>(std::max<std::int64_t>(end, deviceStrip.first));
    DrawSpectrogramColumns(image_,
                           {.picture = source_.spectrogram->Show(
                                channel, {left + deviceStrip.first, left + deviceStrip.last}),
                            .x = deviceStrip.first,
                            .top = ToDevice(lane.top),
                            .bottom = ToDevice(lane.bottom),
                            .selected = {ToDevice(selection.left), ToDevice(selection.right)},
                            .palette = look_.spectrogram.palette,
                            .selectedColour = look_.colours[ColourSlot::kSelectedWaveform]});
}

void WaveformRenderer::DrawEnvelope(unsigned channel, ColumnRange deviceStrip) const {
    if (look_.lanes[channel].Empty()) return;
    // A sound shorter than the lane has a column a frame and no more; those are widened.
    const bool widened = IsWiderThanSound();
    const EnvelopeRequest request = widened ? PixelRequest(channel) : DeviceRequest(channel);
    const LaneLines lines = LinesOfLane(request, LineVisibility::kHidden);
    if (lines.columnCount <= 0) return;
    const auto x = [&](int column) { return widened ? ToDevice(column) : column; };
    const auto y = [&](int row) { return widened ? ToDevice(row) : row; };
    const std::vector<EnvelopeColumn> columns =
        widened ? EnvelopeColumns(request) : EnvelopeColumns(request, deviceStrip);
    const Rectangle lane = Local(look_.lanes[channel]);
    ColumnRaster raster({deviceStrip.first, ToDevice(lane.top),
                         std::min(deviceStrip.last, image_.width()), ToDevice(lane.bottom)});
    QRgb colour = Pen(ColumnPen::kNormal);
    if (!columns.empty() && columns.front().x == lines.firstColumnX)
        raster.LineTo(x(lines.startX), y(lines.startY), colour);
    for (const EnvelopeColumn& column : columns) {
        raster.LineTo(x(column.x), y(column.yMax), colour);
        colour = Pen(column.pen);
        raster.LineTo(x(column.x), y(column.yMin), colour);
    }
    raster.Fill(image_);
}

bool WaveformRenderer::IsWiderThanSound() const {
    constexpr double kLargest = std::numeric_limits<std::int32_t>::max();
    return image_.width() > look_.frameCount ||
           static_cast<double>(look_.horizontal.maximum) * look_.pixelRatio > kLargest;
}

EnvelopeRequest WaveformRenderer::PixelRequest(unsigned channel) const {
    return {source_.wave,     source_.extremes, channel,        Local(look_.lanes[channel]),
            look_.horizontal, look_.vertical,   look_.selection};
}

EnvelopeRequest WaveformRenderer::DeviceRequest(unsigned channel) const {
    EnvelopeRequest request = PixelRequest(channel);
    const Rectangle lane = request.lane;
    request.lane = {0, ToDevice(lane.top), image_.width(), ToDevice(lane.bottom)};
    request.horizontal = Scaled(look_.horizontal, look_.pixelRatio);
    request.vertical = Scaled(look_.vertical, look_.pixelRatio);
    return request;
}

int WaveformRenderer::ToDevice(int pixels) const {
    return static_cast<int>(std::lround(pixels * look_.pixelRatio));
}

QRgb WaveformRenderer::Pen(ColumnPen pen) const {
    const ColourSlot slot =
        pen == ColumnPen::kSelected ? ColourSlot::kSelectedWaveform : ColourSlot::kWaveform;
    return ToQColor(look_.colours[slot]).rgb();
}

}  // namespace sonavel
