// The table of the sounds of a catalogue. What is selected in it are entries, which stay selected
// while its rows are made anew.
#pragma once

#include <QTableView>
#include <optional>
#include <vector>

#include "catalogue/ui/catalogue_table_model.h"

namespace sonavel {

class CatalogueTableView : public QTableView {
    Q_OBJECT

  public:
    explicit CatalogueTableView(CatalogueTableModel& model, QWidget* parent = nullptr);

    // From top to bottom.
    std::vector<std::size_t> SelectedEntries() const;
    std::optional<std::size_t> CurrentEntry() const;
    // Of the columns that the person has not made wider or narrower.
    void SetColumnWidths();

  Q_SIGNALS:
    void SelectionChanged();  // or the current cell
    void RowChosen();         // by the person, as the current one
    void OpenRequested();     // for the selected sounds

  private:
    void SetUp();
    void KeepSelection();
    void RestoreSelection();

    CatalogueTableModel& model_;
    std::vector<bool> keptEntries_;           // those selected while the rows are made anew
    std::optional<std::size_t> keptCurrent_;  // the current one, only meanwhile
};

}  // namespace sonavel
