// The list of all catalogues beside the open one, with the buttons that make, rename and delete
// them. Names are edited in place.
#pragma once

#include <QAction>
#include <QListWidget>
#include <QWidget>

#include "catalogue/ui/catalogue_keeper.h"

namespace sonavel {

class CatalogueList : public QWidget {
    Q_OBJECT

  public:
    // Questions go to the prompts.
    CatalogueList(CatalogueKeeper& keeper, UserPrompts& prompts, QWidget* parent = nullptr);

    // Reads the names again and shows which one is open.
    void Refill();
    bool IsEmpty() const { return list_->count() == 0; }
    // Makes a catalogue under a free name and opens it.
    bool MakeNew();

  Q_SIGNALS:
    void Chosen(const QString& name);  // to be opened
    void Closed();                     // the open one was deleted
    void Changed();                    // a name is another one, or gone
    void Failed(const QString& reason);

  private:
    void AddActions();
    QAction* AddAction(const char* icon, const QString& text, const QKeySequence& key);
    void RenameTo(QListWidgetItem* item);
    void DeleteCurrent();
    void Tell(const Outcome& outcome);

    CatalogueKeeper& keeper_;
    UserPrompts& prompts_;
    QListWidget* list_;
    bool refilling_ = false;
};

}  // namespace sonavel
