#include "view/ui/sound_view_widget.h"

#include <QAccessible>
#include <QApplication>
#include <QSignalBlocker>

#include "platform/qt/spoken_message.h"
#include "view/ui/qt_values.h"
#include "view/ui/sound_view_accessible.h"

namespace sonavel {

namespace {

constexpr QSize kDefaultSize(640, 320);
constexpr QSize kLeastSize(160, 100);

void ShowState(QScrollBar& bar, const ScrollState& state) {
    const QSignalBlocker quiet(&bar);
    bar.setRange(static_cast<int>(state.minimum), static_cast<int>(state.LastPosition()));
    bar.setPageStep(static_cast<int>(state.page));
    bar.setSingleStep(1);
    bar.setValue(static_cast<int>(state.position));
}

std::optional<ScrollStep> StepOf(int action) {
    switch (action) {
        case QAbstractSlider::SliderSingleStepAdd:
            return ScrollStep::kLineForward;
        case QAbstractSlider::SliderSingleStepSub:
            return ScrollStep::kLineBack;
        case QAbstractSlider::SliderPageStepAdd:
            return ScrollStep::kPageForward;
        case QAbstractSlider::SliderPageStepSub:
            return ScrollStep::kPageBack;
        case QAbstractSlider::SliderToMinimum:
            return ScrollStep::kToStart;
        case QAbstractSlider::SliderToMaximum:
            return ScrollStep::kToEnd;
        default:
            return std::nullopt;
    }
}

}  // namespace

SoundViewWidget::SoundViewWidget(CSoundView& view, CommandActions& actions, QWidget* parent)
    : QWidget(parent), view_(view), actions_(actions), mouse_(view) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    AddScrollBars();
    AddZoomButtons();
    view_.SetObserver(this);
    // Called on the threads that compute.
    view_.Pictures().Tiles().SetListener([this] {
        QMetaObject::invokeMethod(
            this, [this] { ShowNewTiles(); }, Qt::QueuedConnection);
    });
}

SoundViewWidget::~SoundViewWidget() {
    view_.Pictures().Tiles().SetListener({});
    view_.SetObserver(nullptr);
}

QSize SoundViewWidget::sizeHint() const {
    return kDefaultSize;
}
QSize SoundViewWidget::minimumSizeHint() const {
    return kLeastSize;
}

void SoundViewWidget::AddScrollBars() {
    horizontalBar_ = new QScrollBar(Qt::Horizontal, this);
    verticalBar_ = new LevelBar(this);
    horizontalBar_->setAccessibleName(tr("Time"));
    verticalBar_->setAccessibleName(tr("Level"));
    for (QScrollBar* bar : {horizontalBar_, static_cast<QScrollBar*>(verticalBar_)}) {
        bar->setFocusPolicy(Qt::NoFocus);
        bar->setCursor(Qt::ArrowCursor);
        bar->installEventFilter(this);
        connect(bar, &QScrollBar::actionTriggered, this,
                [this, bar](int action) { OnScrollBarAction(bar->orientation(), action); });
    }
    connect(horizontalBar_, &QScrollBar::valueChanged, this,
            [this](int position) { view_.Zoom().ScrollHorizontallyTo(position); });
    connect(verticalBar_, &QScrollBar::valueChanged, this,
            [this](int position) { view_.Zoom().ScrollVerticallyTo(position); });
}

void SoundViewWidget::AddZoomButtons() {
    timeZoom_ =
        AddZoomButton(ZoomButton::Picture::kTime, tr("Time zoom: left click in, right click out"));
    levelZoom_ = AddZoomButton(ZoomButton::Picture::kLevel,
                               tr("Level zoom: left click in, right click out"));
    zoomer_ = AddZoomButton(ZoomButton::Picture::kUser, tr("User defined zoom"));
}

ZoomButton* SoundViewWidget::AddZoomButton(ZoomButton::Picture picture, const QString& toolTip) {
    auto* button = new ZoomButton(picture, toolTip, this);
    button->installEventFilter(this);
    connect(button, &ZoomButton::Pressed, this, [this, button](Qt::MouseButton pressed) {
        const QPoint centre = button->geometry().center();
        const PointerEvent event{centre.x(), centre.y(), false, false};
        const MouseButton with =
            pressed == Qt::RightButton ? MouseButton::kRight : MouseButton::kLeft;
        Carry(mouse_.Press(with, event), centre);
        mouse_.Release(event);
    });
    return button;
}

// --- Size and scroll bars

void SoundViewWidget::FitView() {
    if (view_.State().IsShown())
        view_.Resize(width(), height());
    else
        view_.Show(width(), height());
    LayOutChildren();
    ShowScrollStates();
}

void SoundViewWidget::resizeEvent(QResizeEvent*) {
    if (isVisible() || view_.State().IsShown()) FitView();
}

void SoundViewWidget::showEvent(QShowEvent*) {
    FitView();
}

void SoundViewWidget::LayOutChildren() {
    const ViewGeometry& geometry = view_.State().Geometry();
    horizontalBar_->setGeometry(ToQRect(geometry.horizontalScrollBar));
    // Its lower arrow would lie beneath the button in the corner.
    Rectangle vertical = geometry.verticalScrollBar;
    vertical.bottom = geometry.zoomerButton.top;
    verticalBar_->setGeometry(ToQRect(vertical));
    timeZoom_->setGeometry(ToQRect(geometry.timeZoomButton));
    levelZoom_->setGeometry(ToQRect(geometry.levelZoomButton));
    zoomer_->setGeometry(ToQRect(geometry.zoomerButton));
}

void SoundViewWidget::ShowScrollStates() {
    ShowState(*horizontalBar_, view_.Zoom().Horizontal());
    ShowState(*verticalBar_, view_.Zoom().Vertical());
    verticalBar_->SetLevel(IsLevelZoomed(view_.Zoom().State()) ? LevelBar::Level::kInPart
                                                               : LevelBar::Level::kWhole);
}

void SoundViewWidget::OnScrollBarAction(Qt::Orientation orientation, int action) {
    const std::optional<ScrollStep> step = StepOf(action);
    if (!step) return;
    const bool horizontal = orientation == Qt::Horizontal;
    if (horizontal)
        view_.Zoom().ScrollHorizontally(*step);
    else
        view_.Zoom().ScrollVertically(*step);
    // The bar is about to take its own idea of a step, which the view's replaces.
    const ScrollState& state = horizontal ? view_.Zoom().Horizontal() : view_.Zoom().Vertical();
    QScrollBar& bar = horizontal ? *horizontalBar_ : *verticalBar_;
    bar.setSliderPosition(static_cast<int>(state.position));
}

// --- What the view reports

void SoundViewWidget::Invalidate(ViewArea area) {
    const ViewGeometry& geometry = view_.State().Geometry();
    switch (area) {
        case ViewArea::kWaveform:
            FollowWaveform();
            update(paintedColumns_);
            break;
        case ViewArea::kHorizontalRuler:
            update(ToQRect(geometry.horizontalRuler));
            break;
        case ViewArea::kVerticalRuler:
            update(ToQRect(geometry.verticalRuler));
            break;
        case ViewArea::kMarkerStrip:
            update(ToQRect(geometry.markerStrip));
            break;
        case ViewArea::kAll:
            LayOutChildren();
            update();
            break;
    }
}

void SoundViewWidget::InvalidateRectangle(const Rectangle& rectangle) {
    FollowWaveform();
    update(ToQRect(rectangle));
}

void SoundViewWidget::OnScrollChanged() {
    FollowWaveform();
    ShowScrollStates();
    Q_EMIT ScrollChanged();
}

void SoundViewWidget::OnSelectionChanged() {
    FollowWaveform();
    if (QAccessible::isActive()) SayOf(*this, PlaceText(view_));
    Q_EMIT SelectionChanged();
}

void SoundViewWidget::OnStatusText(std::string_view text) {
    Q_EMIT StatusTextChanged(ToQString(text));
}

void SoundViewWidget::SetWaitCursor(WaitCursor cursor) {
    if (cursor == WaitCursor::kShow)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void SoundViewWidget::OnColoursChanged() {
    update();
    Q_EMIT ColoursChanged();
}

void SoundViewWidget::OnNameWanted(const NameWanted& wanted) {
    const Rectangle& strip = view_.State().Geometry().markerStrip;
    const auto x = static_cast<int>(view_.Zoom().Pixels().X(wanted.frame));
    new MarkerNameEdit(view_, wanted, {strip.left + x, strip.top}, this);
}

void SoundViewWidget::OnTransportChanged() {
    Q_EMIT TransportChanged();
}

void SoundViewWidget::OnOverviewChanged() {
    Q_EMIT OverviewChanged();
}

}  // namespace sonavel
