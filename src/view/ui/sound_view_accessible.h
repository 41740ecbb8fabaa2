// What a screen reader says of a sound view: its title, where the cursor or the selection is, what
// is being played, and its markers as children, by the words of the status bar.
#pragma once

#include <QAccessibleWidget>
#include <map>
#include <memory>

#include "view/ui/sound_view_widget.h"

namespace sonavel {

class SoundViewAccessible : public QAccessibleWidget {
  public:
    explicit SoundViewAccessible(SoundViewWidget* widget);
    ~SoundViewAccessible() override;

    // Has the toolkit ask this class about sound views. Once a program.
    static void Install();

    QString text(QAccessible::Text kind) const override;
    // The markers come behind the scroll bars and buttons.
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

  private:
    SoundViewWidget& Widget() const { return *static_cast<SoundViewWidget*>(widget()); }
    const CSoundView& View() const { return Widget().View(); }
    int OwnChildren() const { return QAccessibleWidget::childCount(); }
    QString Value() const;

    // Those that were asked for, by their place in the list; each is the toolkit's own.
    mutable std::map<int, QAccessible::Id> markers_;
};

}  // namespace sonavel
