// The manual beside the editor: contents and search at the left, the page at the right.
#pragma once

#include <QLineEdit>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QWidget>

namespace sonavel {

class ManualWindow : public QWidget {
    Q_OBJECT

  public:
    // A window of its own also with a parent, which it then stands above.
    explicit ManualWindow(QWidget* parent = nullptr);

    // Brings the window to the front.
    void ShowPage(const QString& name);
    QString CurrentPage() const;

  private:
    QWidget* MakeContents();
    QWidget* MakePageSide();
    int WidthOfContents() const;
    void FillContents(const QStringList& names);
    void Search(const QString& words);
    void TakeItem(const QTreeWidgetItem* item);
    void MarkCurrent();
    // Pages of the net are for the person's browser, others are not opened at all.
    void Follow(const QUrl& link);

    QLineEdit* search_;
    QTreeWidget* contents_;
    QTextBrowser* page_;
};

}  // namespace sonavel
