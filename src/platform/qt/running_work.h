// The long operations that are under way, as their progress windows know them.
#pragma once

#include <QObject>
#include <QString>
#include <vector>

namespace sonavel {

class CProgressDlg;

class RunningWork : public QObject {
    Q_OBJECT

  public:
    bool IsRunning() const { return !windows_.empty(); }
    // The caption of the one that began first; empty without any.
    QString Caption() const;
    // As if the person had cancelled each of them.
    void CancelAll();

    void Add(CProgressDlg& window);
    void Remove(CProgressDlg& window);

  Q_SIGNALS:
    void Begun();  // where none was under way
    void Ended();  // the last one

  private:
    std::vector<CProgressDlg*> windows_;
};

}  // namespace sonavel
