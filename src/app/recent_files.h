// The files used last, newest first, kept from run to run. Paths are file texts
// (platform/qt/file_names.h).
#pragma once

#include <QMenu>
#include <QObject>
#include <QString>
#include <QStringList>

namespace sonavel {

class RecentFiles : public QObject {
    Q_OBJECT

  public:
    static constexpr int kMostFiles = 10;

    explicit RecentFiles(QObject* parent = nullptr);

    const QStringList& Paths() const { return paths_; }
    // Puts the file first; a file that is in the list already moves.
    void Add(const QString& absolutePath);
    void Remove(const QString& absolutePath);
    // Fills the menu with the files each time it opens; choosing one emits Chosen.
    void ShowIn(QMenu& menu);

  Q_SIGNALS:
    void Chosen(const QString& absolutePath);

  private:
    void Load();
    void Store() const;
    void Fill(QMenu& menu);

    QStringList paths_;
};

}  // namespace sonavel
