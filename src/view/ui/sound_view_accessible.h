// What a screen reader says of a sound view: its title, where the cursor or the selection is, what
// is being played, and its markers as children, by the words of the status bar.
#pragma once

#include <QAccessibleWidget>

#include "platform/qt/spoken_items.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {

// "cursor 00:00:01.000"; the selection where there is one, and what plays.
QString PlaceText(const CSoundView& view);

class SoundViewAccessible : public QAccessibleWidget {
  public:
    explicit SoundViewAccessible(SoundViewWidget* widget);

    // What speaks of the widget when it is a sound view, nothing otherwise.
    static QAccessibleInterface* MakeFor(QObject* object);

    QString text(QAccessible::Text kind) const override;
    // The markers come behind the scroll bars and buttons.
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

  private:
    QString Value() const;
    SoundViewWidget& Widget() const { return *static_cast<SoundViewWidget*>(widget()); }
    const CSoundView& View() const { return Widget().View(); }
    int OwnChildren() const { return QAccessibleWidget::childCount(); }

    // By their place in the list.
    mutable SpokenItems markers_;
};

}  // namespace sonavel
