// The keys of every command, to be searched and changed, ready sets, and sets from files: what the
// dialog "Keys" and the page of the preferences show.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <vector>

#include "app/key_sets.h"

class QBoxLayout;

namespace sonavel {

struct KeyRow {
    int id = 0;
    QString name;     // "Zoom Time > Zoom In"
    QString ownKeys;  // of the command table
};

class KeysPage : public QWidget {
    Q_OBJECT

  public:
    explicit KeysPage(std::vector<KeyRow> rows, QWidget* parent = nullptr);
    const ChangedKeys& Keys() const { return keys_; }
    void SetKeys(const ChangedKeys& keys);

  Q_SIGNALS:
    // By the person.
    void Edited();

  private:
    void AddFields(QBoxLayout& column);
    void AddTable(QBoxLayout& column);
    void AddFileButtons(QBoxLayout& row);
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
