#include "app/help/help_desk.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QScrollBar>

#include "app/help/control_tips.h"
#include "app/help/manual_pages.h"
#include "app/work_gate.h"

namespace sonavel {

HelpDesk::HelpDesk(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
}

HelpDesk::~HelpDesk() {
    delete own_;
    delete ofDialog_;
}

void HelpDesk::Show(const QString& page) {
    ManualWindow& window = WindowFor(QApplication::activeModalWidget());
    shown_ = &window;
    window.ShowPage(page);
}

// While a dialog is open, only windows that belong to it can be used.
ManualWindow& HelpDesk::WindowFor(QWidget* dialog) {
    if (dialog) {
        if (!ofDialog_ || ofDialog_->parentWidget() != dialog) {
            delete ofDialog_;
            ofDialog_ = new ManualWindow(dialog);
        }
        return *ofDialog_;
    }
    if (!own_) {
        own_ = new ManualWindow;
        MarkAsReading(*own_);
        own_->setAttribute(Qt::WA_QuitOnClose, false);
    }
    return *own_;
}

bool HelpDesk::ShowFor(const QWidget& window) {
    const QString page = PageOfWindow(&window);
    if (page.isEmpty() && !qobject_cast<const QDialog*>(&window)) return false;
    Show(page.isEmpty() ? QStringLiteral("index") : page);
    return true;
}

void HelpDesk::Explain(QObject& shown) {
    if (auto* dialog = qobject_cast<QDialog*>(&shown)) AddControlTips(*dialog);
    auto* bar = qobject_cast<QScrollBar*>(&shown);
    // Others are controls of a dialog, named by their labels.
    const bool isOfArea = bar && bar->parentWidget() &&
                          qobject_cast<QAbstractScrollArea*>(bar->parentWidget()->parentWidget());
    if (isOfArea && bar->accessibleName().isEmpty())
        bar->setAccessibleName(bar->orientation() == Qt::Vertical ? tr("Vertical scroll bar")
                                                                  : tr("Horizontal scroll bar"));
}

bool HelpDesk::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Show) Explain(*object);
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const auto* widget = qobject_cast<QWidget*>(object);
        if (widget && key->key() == Qt::Key_F1 && key->modifiers() == Qt::NoModifier)
            return ShowFor(*widget->window());
    }
    return QObject::eventFilter(object, event);
}

}  // namespace sonavel
