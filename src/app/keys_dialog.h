// The dialog "Keys": the keys of every command, to be searched and changed, ready sets, and sets
// from files.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <vector>

#include "app/key_sets.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

struct KeyRow {
    int id = 0;
    QString name;     // "Zoom Time > Zoom In"
    QString ownKeys;  // of the command table
};

class KeysDialog : public FormDialog {
    Q_OBJECT

  public:
    KeysDialog(std::vector<KeyRow> rows, ChangedKeys keys, QWidget* parent = nullptr);
    const ChangedKeys& Keys() const { return keys_; }

  private:
    void AddTable();
    void AddFileButtons();
    QString KeysOf(const KeyRow& row) const;
    void ShowKeys();
    void TakeKeys(int tableRow);
    void TakeSet(int index);
    void Search(const QString& typed);
    void ShowConflicts();
    void ImportSet();
    void ExportSet();

    std::vector<KeyRow> rows_;
    ChangedKeys keys_;
    QComboBox* set_;
    QLineEdit* search_;
    QTableWidget* table_;
    QLabel* notice_;
};

}  // namespace sonavel
