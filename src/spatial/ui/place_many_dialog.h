// Asks for the places and paths of sounds that are to become a file at each of them.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "spatial/place_many.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class PlaceManyDialog : public FormDialog {
    Q_OBJECT

  public:
    PlaceManyDialog(const ManyPlacesChoice& first, QWidget* parent);

    ManyPlacesChoice Choice() const;

  private:
    void AddSounds();
    void ShowSoundsFolder();
    void AddPoints();
    void AddFiles();
    void LoadPoints();
    void BrowseFolder(QLineEdit& into);
    void CheckPoints();

    QComboBox* sounds_;
    QLineEdit* soundsFolder_;
    QWidget* soundsRow_;  // the folder with its button
    QPlainTextEdit* points_;
    QLabel* state_;
    QLineEdit* folder_;
    QLineEdit* pattern_;
    QCheckBox* smooth_;
    QCheckBox* replace_;
};

// Ahead, at the right, behind and at the left.
ManyPlacesChoice FourDirections(const std::filesystem::path& folder);

}  // namespace sonavel
