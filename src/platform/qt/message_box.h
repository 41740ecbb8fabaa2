// A message or a question in a box, each of its buttons with an Alt key.
#pragma once

#include <QMessageBox>

namespace sonavel {

struct MessageBoxTexts {
    QString text;
    QString caption = {};  // empty for the program's name
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::Icon icon = QMessageBox::Question;
};

class MessageBox : public QMessageBox {
    Q_OBJECT

  public:
    // The first of the buttons is the default; exec() returns the one that was pressed.
    explicit MessageBox(const MessageBoxTexts& texts, QWidget* parent = nullptr);
};

}  // namespace sonavel
