// Has a screen reader say something of the widget that has the keyboard.
#pragma once

#include <QString>
#include <QWidget>

namespace sonavel {

// At once; nothing happens where nobody listens or the widget has not got the keyboard.
void SayOf(QWidget& widget, const QString& text);

}  // namespace sonavel
