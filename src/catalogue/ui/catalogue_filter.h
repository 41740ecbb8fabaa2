// The row above the sounds of a catalogue: which of them are shown.
#pragma once

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QWidget>
#include <vector>

#include "catalogue/catalogue_rows.h"

namespace sonavel {

class CatalogueFilter : public QWidget {
    Q_OBJECT

  public:
    // The keys of the window's actions stay the window's while a text is typed.
    explicit CatalogueFilter(std::vector<QAction*> windowActions, QWidget* parent = nullptr);

    void FocusText();
    RowsShown Shown() const {
        return missingOnly_->isChecked() ? RowsShown::kMissing : RowsShown::kAll;
    }

  Q_SIGNALS:
    void TextChanged(const QString& text);
    void ShownChanged();
    void LeftDownwards();  // by the key, for the sounds below

  private:
    void AddKeys();

    QLineEdit* text_;
    QCheckBox* missingOnly_;
};

}  // namespace sonavel
