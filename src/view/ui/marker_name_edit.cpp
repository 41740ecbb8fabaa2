#include "view/ui/marker_name_edit.h"

#include <QKeyEvent>
#include <algorithm>
#include <utility>

#include "view/commands/marker_commands.h"

namespace sonavel {

namespace {

constexpr int kWidth = 180;

}  // namespace

MarkerNameEdit::MarkerNameEdit(CSoundView& view, const NameWanted& wanted, QPoint place,
                               QWidget* parent)
    : QLineEdit(QString::fromStdString(wanted.name), parent), view_(view), wanted_(wanted) {
    setObjectName(QStringLiteral("marker name"));
    setPlaceholderText(tr("Name of the marker"));
    const int height = sizeHint().height();
    const int x = std::clamp(place.x(), 0, std::max(parent->width() - kWidth, 0));
    const int y = std::clamp(place.y(), 0, std::max(parent->height() - height, 0));
    setGeometry(x, y, kWidth, height);
    selectAll();
    show();
    setFocus(Qt::OtherFocusReason);
    connect(this, &QLineEdit::returnPressed, this, [this] { End(Ending::kKeep); });
    connect(this, &QLineEdit::editingFinished, this, [this] { End(Ending::kKeep); });
}

bool MarkerNameEdit::event(QEvent* event) {
    // Typing comes before the shortcuts of the window.
    if (event->type() == QEvent::ShortcutOverride) event->accept();
    return QLineEdit::event(event);
}

void MarkerNameEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        End(Ending::kForget);
    else
        QLineEdit::keyPressEvent(event);
}

void MarkerNameEdit::End(Ending ending) {
    if (std::exchange(ended_, true)) return;
    const std::string name = text().trimmed().toStdString();
    if (ending == Ending::kKeep && wanted_.id == 0)
        AddMarker(view_, wanted_.frame, name, 0);
    else if (const Marker* marker = view_.Sound().Markers().Find(wanted_.id);
             ending == Ending::kKeep && marker && name != wanted_.name)
        static_cast<void>(SetMarker(view_, marker->id, marker->position, name, marker->length));
    hide();
    if (parentWidget()) parentWidget()->setFocus();
    deleteLater();
}

}  // namespace sonavel
