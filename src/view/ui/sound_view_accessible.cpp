#include "view/ui/sound_view_accessible.h"

#include <QPointer>

#include "platform/code_page_949.h"
#include "platform/qt/utf8_text.h"
#include "view/state/status_texts.h"

namespace sonavel {
namespace {

// One marker, found anew whenever it is asked about: the list may have changed.
class MarkerAccessible : public QAccessibleInterface {
  public:
    MarkerAccessible(SoundViewWidget& widget, int number) : widget_(&widget), number_(number) {}

    bool isValid() const override { return Find() != nullptr; }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return widget_ ? QAccessible::queryAccessibleInterface(widget_.data()) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override { return {}; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        return state;
    }

    QString text(QAccessible::Text kind) const override {
        const Marker* marker = Find();
        if (!marker) return {};
        if (kind == QAccessible::Name)
            return SoundViewWidget::tr("Marker %1").arg(Utf8Text(DisplayText(marker->name)));
        if (kind != QAccessible::Value) return {};
        const CSoundView& view = widget_->View();
        return Utf8Text(PositionText(view.Settings().statusFormat, marker->position,
                                     view.Sound().GetSamplesPerSecond()));
    }

  private:
    const Marker* Find() const {
        if (!widget_) return nullptr;
        const std::vector<Marker>& all = widget_->View().Sound().Markers().All();
        return number_ < static_cast<int>(all.size()) ? &all[static_cast<std::size_t>(number_)]
                                                      : nullptr;
    }

    QPointer<SoundViewWidget> widget_;
    int number_;
};

QString NameOf(SoundPicture picture) {
    switch (picture) {
        case SoundPicture::kWaveform:
            return SoundViewWidget::tr("Waveform");
        case SoundPicture::kSpectrogram:
            return SoundViewWidget::tr("Spectrogram");
        case SoundPicture::kBoth:
            return SoundViewWidget::tr("Waveform and spectrogram");
    }
    return {};
}

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    auto* widget = qobject_cast<SoundViewWidget*>(object);
    return widget ? new SoundViewAccessible(widget) : nullptr;
}

}  // namespace

SoundViewAccessible::SoundViewAccessible(SoundViewWidget* widget)
    : QAccessibleWidget(widget, QAccessible::Canvas) {}

SoundViewAccessible::~SoundViewAccessible() {
    for (const auto& [number, id] : markers_) QAccessible::deleteAccessibleInterface(id);
}

void SoundViewAccessible::Install() {
    QAccessible::installFactory(MakeAccessible);
}

QString SoundViewAccessible::Value() const {
    const CSoundView& view = View();
    const auto format = view.Settings().statusFormat;
    const std::uint32_t rate = view.Sound().GetSamplesPerSecond();
    const std::string selected = SelectionText(format, view.State().GetSelection(), rate);
    const std::string place =
        PositionText(format, view.Playing().PlayFrame().value_or(view.State().Cursor()), rate);
    QStringList parts;
    parts << SoundViewWidget::tr("cursor %1").arg(Utf8Text(place));
    if (!selected.empty()) parts << SoundViewWidget::tr("selected %1").arg(Utf8Text(selected));
    parts << Utf8Text(ZoomText(view.Zoom().TimeRatio(), view.Zoom().TimePercent()));
    parts << Utf8Text(view.Playing().StatusText());
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", ")).simplified();
}

QString SoundViewAccessible::text(QAccessible::Text kind) const {
    switch (kind) {
        case QAccessible::Name:
            return Utf8Text(View().Document().Title());
        case QAccessible::Value:
            return Value();
        case QAccessible::Description:
            return SoundViewWidget::tr("%1 of %2 channels, %3 markers")
                .arg(NameOf(View().Pictures().Now()))
                .arg(View().Sound().GetChannels())
                .arg(View().Sound().Markers().Count());
        default:
            return QAccessibleWidget::text(kind);
    }
}

int SoundViewAccessible::childCount() const {
    return OwnChildren() + static_cast<int>(View().Sound().Markers().Count());
}

QAccessibleInterface* SoundViewAccessible::child(int index) const {
    const int number = index - OwnChildren();
    if (number < 0) return QAccessibleWidget::child(index);
    if (index >= childCount()) return nullptr;
    const auto [entry, isNew] = markers_.try_emplace(number, QAccessible::Id{});
    if (isNew)
        entry->second =
            QAccessible::registerAccessibleInterface(new MarkerAccessible(Widget(), number));
    return QAccessible::accessibleInterface(entry->second);
}

int SoundViewAccessible::indexOfChild(const QAccessibleInterface* child) const {
    for (const auto& [number, id] : markers_)
        if (QAccessible::accessibleInterface(id) == child) return OwnChildren() + number;
    return QAccessibleWidget::indexOfChild(child);
}

}  // namespace sonavel
