// The line above a waveform that says what an imported file held and what was missing in it.
#pragma once

#include <QFrame>
#include <QLabel>

namespace sonavel {

class OriginLine : public QFrame {
    Q_OBJECT

  public:
    explicit OriginLine(QWidget* parent = nullptr);

    // An empty text hides it; a new one shows it, even if the one before was dismissed.
    void ShowText(const QString& text);
    QString Text() const { return label_->text(); }

  Q_SIGNALS:
    // The person dismissed it; it is hidden.
    void Dismissed();

  private:
    QLabel* label_;
};

}  // namespace sonavel
