// Shows the manual: on demand, and where F1 is pressed in a dialog, at the dialog's own page.
// Dialogs get their tool tips here as they come up, scroll bars their names for screen readers.
#pragma once

#include <QObject>
#include <QPointer>

#include "app/help/manual_window.h"

namespace sonavel {

class HelpDesk : public QObject {
    Q_OBJECT

  public:
    // Listens to the keys of the whole program, as long as it exists.
    explicit HelpDesk(QObject* parent = nullptr);
    ~HelpDesk() override;

    // Above the dialog that is open, else beside the editor, in one window for all pages.
    void Show(const QString& page);
    // The one that was shown last; null when there is none.
    ManualWindow* Window() const { return shown_; }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Explain(QObject& shown);
    // Whether there is anything to show about it.
    bool ShowFor(const QWidget& window);
    ManualWindow& WindowFor(QWidget* dialog);

    QPointer<ManualWindow> own_;
    QPointer<ManualWindow> ofDialog_;
    QPointer<ManualWindow> shown_;
};

}  // namespace sonavel
