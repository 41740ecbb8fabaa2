// The dialog in which files are chosen to be opened. The toolkit's own leaves out files whose names
// are not UTF-8; here they stand in a list below.
#pragma once

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>

namespace sonavel {

class OpenFilesDialog : public QFileDialog {
    Q_OBJECT

  public:
    // `filters` as QFileDialog takes them; several files may be chosen at once.
    OpenFilesDialog(const QString& title, const QString& folder, const QString& filters,
                    QWidget* parent);

    // The names as file texts (platform/qt/file_names.h), cleaned of "." and "..".
    QStringList Chosen() const;

    // Runs a dialog; empty when it was cancelled.
    static QStringList Ask(const QString& title, const QString& folder, const QString& filters,
                           QWidget* parent);
    // Likewise for a single file.
    static QString AskOne(const QString& title, const QString& folder, const QString& filters,
                          QWidget* parent);

  private:
    void ListOddNames();
    void ChooseOddName(int index);

    QLabel* label_;
    QComboBox* oddNames_;
    QStringList odd_;
    QString chosenOdd_;
};

}  // namespace sonavel
