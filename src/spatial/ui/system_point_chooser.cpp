#include "spatial/ui/system_point_chooser.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <cmath>

#include "spatial/scene_points.h"

namespace sonavel {
namespace {

constexpr int kStraightAhead = 8;
constexpr SystemPreset kFirstPath{15, 9};  // from the left to the right in front of the listener

QString AzimuthName(double azimuth) {
    const QString names[] = {
        SystemPointChooser::tr("front"), SystemPointChooser::tr("front right"),
        SystemPointChooser::tr("right"), SystemPointChooser::tr("back right"),
        SystemPointChooser::tr("back"),  SystemPointChooser::tr("back left"),
        SystemPointChooser::tr("left"),  SystemPointChooser::tr("front left"),
    };
    return names[std::lround(azimuth / 45) % 8];
}

QString ElevationName(double elevation) {
    if (elevation < -1) return SystemPointChooser::tr("30° down");
    if (elevation > 1) return SystemPointChooser::tr("30° up");
    return SystemPointChooser::tr("level");
}

}  // namespace

QString PlaceOfSystemPoint(int number) {
    const PolarPosition polar = PolarOf(SystemPoint(number));
    const QString distance =
        number < kSpherePoints ? SystemPointChooser::tr("near") : SystemPointChooser::tr("far");
    if (polar.elevation > 80) return SystemPointChooser::tr("straight above, %1").arg(distance);
    if (polar.elevation < -80) return SystemPointChooser::tr("straight below, %1").arg(distance);
    return QStringLiteral("%1, %2, %3")
        .arg(AzimuthName(polar.azimuth), ElevationName(polar.elevation), distance);
}

SystemPointChooser::SystemPointChooser(SourceMotion motion, QWidget* parent) : QGroupBox(parent) {
    const bool moving = motion == SourceMotion::kMoving;
    setTitle(moving ? tr("Path") : tr("Place"));
    auto* grid = new QGridLayout(this);
    grid->setColumnStretch(2, 1);
    places_ = MakePlaces();
    AddRow(PathEnd::kStart, moving ? tr("St&art:") : tr("Poi&nt:"), motion);
    AddRow(PathEnd::kEnd, tr("E&nd:"), motion);
    const int below = grid->rowCount();
    if (moving) {
        auto* hint = new QLabel(tr(
            "The list and a click in the scene set the marked one, a click with Shift the end."));
        hint->setWordWrap(true);
        grid->addWidget(hint, below, 0, 1, 3);
        rows_[0].active->setChecked(true);
    }
    grid->addWidget(places_, below + 1, 0, 1, 3);
    grid->setRowStretch(below + 1, 1);
    Choose(moving ? kFirstPath : SystemPreset{kStraightAhead, kStraightAhead});
    ShowActive();
}

void SystemPointChooser::AddRow(PathEnd end, const QString& text, SourceMotion motion) {
    auto* grid = static_cast<QGridLayout*>(layout());
    const int line = static_cast<int>(end);
    Row& row = rows_[static_cast<std::size_t>(line)];
    row.number = new QSpinBox(this);
    row.number->setRange(0, kSystemPoints - 1);
    connect(row.number, &QSpinBox::valueChanged, this, [this] {
        ShowActive();
        Q_EMIT Changed();
    });
    if (motion == SourceMotion::kPositional && end == PathEnd::kEnd) {
        row.number->hide();
        return;
    }
    if (motion == SourceMotion::kMoving) {
        row.active = new QRadioButton(text, this);
        grid->addWidget(row.active, line, 0);
        connect(row.active, &QRadioButton::toggled, this, [this] {
            ShowActive();
            Q_EMIT Changed();
        });
    } else {
        auto* label = new QLabel(text, this);
        label->setBuddy(row.number);
        grid->addWidget(label, line, 0);
    }
    row.number->setAccessibleName(QString(text).remove(u'&').remove(u':'));
    grid->addWidget(row.number, line, 1);
}

void SystemPointChooser::focusInEvent(QFocusEvent* event) {
    // A proxy would stand behind its field in the order of Tab, which then came back for ever.
    rows_[0].number->setFocus(event->reason());
}

SystemPreset SystemPointChooser::Chosen() const {
    return {rows_[0].number->value(), rows_[1].number->value()};
}

void SystemPointChooser::Choose(const SystemPreset& preset) {
    {
        const QSignalBlocker quiet(this);
        Choose(PathEnd::kStart, preset.start);
        Choose(PathEnd::kEnd, preset.end);
    }
    Q_EMIT Changed();
}

void SystemPointChooser::Choose(PathEnd end, int number) {
    rows_[static_cast<std::size_t>(end)].number->setValue(number);
}

PathEnd SystemPointChooser::Active() const {
    const QRadioButton* end = rows_[1].active;
    return end && end->isChecked() ? PathEnd::kEnd : PathEnd::kStart;
}

void SystemPointChooser::SetActive(PathEnd end) {
    if (QRadioButton* active = rows_[static_cast<std::size_t>(end)].active)
        active->setChecked(true);
}

QListWidget* SystemPointChooser::MakePlaces() {
    auto* places = new QListWidget(this);
    places->setAccessibleName(tr("Points"));
    constexpr QChar kFigureSpace(0x2007);
    for (int number = 0; number < kSystemPoints; ++number)
        places->addItem(QStringLiteral("%1   %2")
                            .arg(number, 2, 10, kFigureSpace)
                            .arg(PlaceOfSystemPoint(number)));
    connect(places, &QListWidget::currentRowChanged, this,
            [this](int number) { Choose(Active(), number); });
    return places;
}

void SystemPointChooser::ShowActive() {
    const QSignalBlocker quiet(places_);
    places_->setCurrentRow(rows_[static_cast<std::size_t>(Active())].number->value());
}

}  // namespace sonavel
