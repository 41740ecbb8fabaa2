#include "view/ui/sound_view_accessible.h"

#include "platform/code_page_949.h"
#include "platform/qt/utf8_text.h"
#include "view/state/status_texts.h"

namespace sonavel {
namespace {

// One marker, found anew whenever it is asked about: the list may have changed.
class MarkerAccessible : public SpokenItem {
  public:
    MarkerAccessible(SoundViewWidget& widget, int number)
        : SpokenItem(widget, QAccessible::ListItem), number_(number) {}

    bool isValid() const override { return Find() != nullptr; }

    QString text(QAccessible::Text kind) const override {
        const Marker* marker = Find();
        if (!marker) return {};
        if (kind == QAccessible::Name)
            return SoundViewWidget::tr("Marker %1").arg(Utf8Text(DisplayText(marker->name)));
        if (kind != QAccessible::Value && kind != QAccessible::Description) return {};
        const CSoundView& view = static_cast<SoundViewWidget*>(Owner())->View();
        return Utf8Text(PositionText(view.Settings().statusFormat, marker->position,
                                     view.Sound().GetSamplesPerSecond()));
    }

  private:
    const Marker* Find() const {
        auto* widget = static_cast<SoundViewWidget*>(Owner());
        if (!widget) return nullptr;
        const std::vector<Marker>& all = widget->View().Sound().Markers().All();
        return number_ < static_cast<int>(all.size()) ? &all[static_cast<std::size_t>(number_)]
                                                      : nullptr;
    }

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

}  // namespace

SoundViewAccessible::SoundViewAccessible(SoundViewWidget* widget)
    : WidgetWithItems(widget, QAccessible::Canvas) {}

QAccessibleInterface* SoundViewAccessible::MakeFor(QObject* object) {
    auto* widget = qobject_cast<SoundViewWidget*>(object);
    return widget ? new SoundViewAccessible(widget) : nullptr;
}

QString PlaceText(const CSoundView& view) {
    const auto format = view.Settings().statusFormat;
    const std::uint32_t rate = view.Sound().GetSamplesPerSecond();
    const std::string selected = SelectionText(format, view.State().GetSelection(), rate);
    const std::string place =
        PositionText(format, view.Playing().PlayFrame().value_or(view.State().Cursor()), rate);
    QStringList parts;
    parts << SoundViewWidget::tr("cursor %1").arg(Utf8Text(place));
    if (!selected.empty()) parts << SoundViewWidget::tr("selected %1").arg(Utf8Text(selected));
    parts << Utf8Text(view.Playing().StatusText());
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", ")).simplified();
}

QString SoundViewAccessible::Value() const {
    const ViewZoom& zoom = View().Zoom();
    return QStringLiteral("%1, %2").arg(PlaceText(View()),
                                        Utf8Text(ZoomText(zoom.TimeRatio(), zoom.TimePercent())));
}

QString SoundViewAccessible::text(QAccessible::Text kind) const {
    switch (kind) {
        case QAccessible::Name:
            return Utf8Text(View().Document().Title());
        case QAccessible::Value:
            return Value();
        case QAccessible::Description:
            // Not all that asks for the value can hear it as a text.
            return SoundViewWidget::tr("%1, %2 of %3 channels, %4 markers")
                .arg(Value())
                .arg(NameOf(View().Pictures().Now()).toLower())
                .arg(View().Sound().GetChannels())
                .arg(View().Sound().Markers().Count());
        default:
            return QAccessibleWidget::text(kind);
    }
}

int SoundViewAccessible::ItemCount() const {
    return static_cast<int>(View().Sound().Markers().Count());
}

QAccessibleInterface* SoundViewAccessible::MakeItem(int place) const {
    return new MarkerAccessible(Widget(), place);
}

}  // namespace sonavel
