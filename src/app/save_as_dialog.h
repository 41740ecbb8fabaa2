// The extended dialog "Save As": below the files stand the folders used last, the whole path, the
// format to save in, and what a save in that format would lose.
#pragma once

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <functional>
#include <string>

#include "document/document_questions.h"

namespace sonavel {

// What a save of this choice would leave out, or why it cannot be; an empty text for nothing.
struct SaveNotice {
    std::string text;
    bool canSave = true;
};
using SaveNoticeSource = std::function<SaveNotice(const SaveAsChoice& choice)>;

class SaveAsDialog : public QFileDialog {
    Q_OBJECT

  public:
    SaveAsDialog(const SaveAsRequest& request, const QStringList& recentFolders,
                 SaveNoticeSource notice, QWidget* parent = nullptr);
    SaveAsChoice Choice() const;
    // Goes to the folder; the typed name stays.
    void ShowFolder(const QString& folder);

    // Stays open, with the reason in sight, for a choice that cannot be saved.
    void accept() override;

  private:
    void SetUpFileList();
    void AddRecentRow(QGridLayout& grid, const QStringList& recentFolders);
    void AddPathRow(QGridLayout& grid);
    void AddPropertyGroup(QGridLayout& grid);
    void AddFormatColumn(QGridLayout& group);
    void AddChoiceColumns(QGridLayout& group);
    void AddWarningRow(QGridLayout& grid);
    void ConnectUpdates();

    QString FullPath() const;
    SaveNotice Notice() const;
    void UpdateTexts();
    void ShowMore();

    SaveAsRequest request_;
    SaveNoticeSource notice_;
    bool saveMarkers_;
    QLineEdit* fileName_ = nullptr;
    QLineEdit* fullPath_ = nullptr;
    QLineEdit* original_ = nullptr;
    QLineEdit* update_ = nullptr;
    QButtonGroup* channels_ = nullptr;  // the ids are channel counts
    QButtonGroup* bits_ = nullptr;      // the ids are bits
    QLabel* warningText_ = nullptr;
};

// A filter of several "description|patterns|" pairs that ends in "||", as Qt wants it.
struct FileFilter {
    QString description;
    QStringList patterns;
};
QList<FileFilter> ParseFileFilters(const std::string& filter);
// The name filters for a file dialog: "Wave File (*.wav)".
QStringList NameFilters(const QList<FileFilter>& filters);
// "au" of a filter with one pattern, else "WAV".
QString SuffixOf(const FileFilter& filter);

}  // namespace sonavel
