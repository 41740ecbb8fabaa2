// The palette of all commands: a few letters find one, Enter runs it.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <vector>

#include "view/ui/command_menu.h"

namespace sonavel {

struct PaletteRow {
    int id = 0;
    QString name;  // "Zoom Time > Zoom In"
    QString key;
    QString refusal;  // why it cannot run just now; empty where it can
};

// Every command of the menus with its place in them, in their order.
std::vector<PaletteRow> PaletteRows(const QList<QMenu*>& menus, const CommandActions& actions);

class CommandPalette : public QDialog {
    Q_OBJECT

  public:
    explicit CommandPalette(std::vector<PaletteRow> rows, QWidget* parent = nullptr);
    // 0 while none was chosen.
    int Chosen() const { return chosen_; }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Find(const QString& typed);
    void Choose();
    void ShowRefusal();
    const PaletteRow* Current() const;

    std::vector<PaletteRow> rows_;
    int chosen_ = 0;
    QLineEdit* typed_;
    QListWidget* list_;
    QLabel* refusal_;
};

}  // namespace sonavel
