#include "spatial/ui/scene_accessible.h"

#include "spatial/scene_points.h"

namespace sonavel {
namespace {

constexpr int kPointReach = 8;  // pixels round a point that count as it

QString Number(double value) {
    return QString::number(value, 'f', 2);
}

QString PointPlaceText(const SourcePosition& position) {
    const PolarPosition polar = PolarOf(position);
    return SceneWidget::tr("right %1, front %2, up %3; azimuth %4°, elevation %5°, distance %6")
        .arg(Number(position.x), Number(position.y), Number(position.z),
             QString::number(qRound(polar.azimuth)), QString::number(qRound(polar.elevation)),
             Number(polar.distance));
}

QString RoleText(PointRole role) {
    switch (role) {
        case PointRole::kSelected:
            return SceneWidget::tr(", selected");
        case PointRole::kStart:
            return SceneWidget::tr(", start");
        case PointRole::kEnd:
            return SceneWidget::tr(", end");
        default:
            return {};
    }
}

// One point, found anew whenever it is asked about.
class PointAccessible : public SpokenItem, public QAccessibleActionInterface {
  public:
    PointAccessible(SceneWidget& scene, int index)
        : SpokenItem(scene, QAccessible::ListItem), index_(index) {}

    bool isValid() const override { return Find() != nullptr; }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }
    void doAction(const QString& name) override {
        if (isValid() && name == pressAction()) Q_EMIT Scene()->PointPicked(index_, {});
    }

    QString text(QAccessible::Text kind) const override {
        const ScenePoint* point = Find();
        if (!point) return {};
        if (kind == QAccessible::Name)
            return SceneWidget::tr("Point %1%2").arg(point->number).arg(RoleText(point->role));
        if (kind == QAccessible::Value || kind == QAccessible::Description)
            return PointPlaceText(point->position);
        return {};
    }

    QAccessible::State state() const override {
        QAccessible::State state = SpokenItem::state();
        const ScenePoint* point = Find();
        state.selectable = true;
        state.selected = point && point->role != PointRole::kPlain;
        return state;
    }

    QRect rect() const override {
        const ScenePoint* point = Find();
        const auto place =
            point ? Scene()->Camera().Project(ToVector(point->position)) : std::nullopt;
        if (!place) return {};
        const QPoint centre = Scene()->mapToGlobal(place->toPoint());
        return {centre - QPoint(kPointReach, kPointReach), QSize(2 * kPointReach, 2 * kPointReach)};
    }

  private:
    SceneWidget* Scene() const { return static_cast<SceneWidget*>(Owner()); }
    const ScenePoint* Find() const {
        if (!Scene()) return nullptr;
        const std::vector<ScenePoint>& all = Scene()->Content().points;
        return index_ < static_cast<int>(all.size()) ? &all[static_cast<std::size_t>(index_)]
                                                     : nullptr;
    }

    int index_;
};

}  // namespace

QAccessibleInterface* SceneAccessible::MakeFor(QObject* object) {
    auto* scene = qobject_cast<SceneWidget*>(object);
    return scene ? new SceneAccessible(scene) : nullptr;
}

QString SceneAccessible::text(QAccessible::Text kind) const {
    if (kind != QAccessible::Value && kind != QAccessible::Description)
        return QAccessibleWidget::text(kind);
    const SceneContent& content = Scene().Content();
    QString text = SceneWidget::tr("%1 points").arg(content.points.size());
    for (const ScenePoint& point : content.points)
        if (point.role != PointRole::kPlain)
            text += SceneWidget::tr("; point %1%2: %3")
                        .arg(QString::number(point.number), RoleText(point.role),
                             PointPlaceText(point.position));
    if (Scene().Ball())
        text += SceneWidget::tr("; playing at %1").arg(PointPlaceText(*Scene().Ball()));
    return text;
}

int SceneAccessible::ItemCount() const {
    return static_cast<int>(Scene().Content().points.size());
}

QAccessibleInterface* SceneAccessible::MakeItem(int place) const {
    return new PointAccessible(Scene(), place);
}

}  // namespace sonavel
