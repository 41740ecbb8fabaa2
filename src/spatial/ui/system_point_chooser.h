// The numbers of the system scene's two chosen points, to type, to step through, or to find by
// their places in a list.
#pragma once

#include <QGroupBox>
#include <QListWidget>
#include <QRadioButton>
#include <QSpinBox>
#include <array>

#include "spatial/presets.h"
#include "spatial/ui/source_motion.h"

namespace sonavel {

class SystemPointChooser : public QGroupBox {
    Q_OBJECT

  public:
    // A source at rest has one number to choose; the other is kept as it is.
    explicit SystemPointChooser(SourceMotion motion, QWidget* parent = nullptr);

    SystemPreset Chosen() const;
    void Choose(const SystemPreset& preset);
    void Choose(PathEnd end, int number);
    // The one that a click in the scene chooses, and whose numbers are shown.
    PathEnd Active() const;
    // Ignored for a source at rest, which has its start alone.
    void SetActive(PathEnd end);

  Q_SIGNALS:
    void Changed();

  protected:
    // The keys go to the first number.
    void focusInEvent(QFocusEvent* event) override;

  private:
    struct Row {
        QSpinBox* number = nullptr;
        QRadioButton* active = nullptr;  // null for a source at rest
    };

    void AddRow(PathEnd end, const QString& text, SourceMotion motion);
    QListWidget* MakePlaces();
    void ShowActive();

    std::array<Row, 2> rows_;
    QListWidget* places_;
};

// "front right, 30° up, near".
QString PlaceOfSystemPoint(int number);

}  // namespace sonavel
