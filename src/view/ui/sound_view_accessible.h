// What a screen reader says of a sound view: its title, where the cursor or the selection is, what
// is being played, and its markers as children, by the words of the status bar.
#pragma once

#include "platform/qt/spoken_items.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {

// "cursor 00:00:01.000"; the selection where there is one, and what plays.
QString PlaceText(const CSoundView& view);

class SoundViewAccessible : public WidgetWithItems {
  public:
    explicit SoundViewAccessible(SoundViewWidget* widget);

    // What speaks of the widget when it is a sound view, nothing otherwise.
    static QAccessibleInterface* MakeFor(QObject* object);

    QString text(QAccessible::Text kind) const override;

  private:
    int ItemCount() const override;
    QAccessibleInterface* MakeItem(int place) const override;
    QString Value() const;
    SoundViewWidget& Widget() const { return *static_cast<SoundViewWidget*>(widget()); }
    const CSoundView& View() const { return Widget().View(); }
};

}  // namespace sonavel
