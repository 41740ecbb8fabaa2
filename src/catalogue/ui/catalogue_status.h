// The row below the sounds of a catalogue: what is counted, and what was done or went wrong last.
#pragma once

#include <QLabel>
#include <QWidget>

#include "platform/outcome.h"

namespace sonavel {

struct CatalogueCounts {
    std::size_t sounds;
    std::size_t shown;
    std::size_t missing;
    std::size_t selected;
};

class CatalogueStatus : public QWidget {
    Q_OBJECT

  public:
    explicit CatalogueStatus(QWidget* parent = nullptr);

    void ShowCounts(const CatalogueCounts& counts);
    // In the place of the counts.
    void ShowText(const QString& text) { counts_->setText(text); }

    // Empty for none.
    void ShowNote(const QString& text);
    void ShowError(const QString& text);
    // Why something was not done, if it was not.
    void Tell(const Outcome& outcome);
    void TellOf(const QString& name, const Outcome& outcome);

  private:
    void Show(const QString& text, const QPalette& palette);

    QLabel* counts_;
    QLabel* note_;
};

}  // namespace sonavel
