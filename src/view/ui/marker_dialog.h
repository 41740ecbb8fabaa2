// The dialog "Marker": the list of a sound's markers in the order of their places, typed into or
// changed by Add, Edit and Delete. It works on a copy and hands back the changes in the order in
// which they were made.
#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <optional>
#include <vector>

#include "view/commands/view_questions.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class MarkerDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit MarkerDialog(const MarkerDialogRequest& request, QWidget* parent = nullptr);
    const std::vector<MarkerEdit>& Edits() const { return edits_; }
    // What stands in the fields and was not added or taken over yet counts too.
    void accept() override;

  private:
    void MakeList();
    void MakeTypable();
    void MakeFields();
    QLayout* MakeButtons();
    void Begin();
    void ShowList(std::uint32_t currentId);
    void AddRow(const Marker& marker);
    void OnCurrentChanged();
    void LoadFields(const QString& name, std::uint32_t position, std::uint32_t length);
    const Marker* Current() const;
    MarkerEdit FromFields(MarkerEdit::Kind kind) const;
    void AddMarker();
    void EditMarker();
    void RemoveMarker();
    void OnFieldEdited();
    QString PlaceText(std::uint32_t frames) const;
    // Into a cell of the list.
    void TakeTyped(int row, int column, const QString& text);
    void Change(MarkerEdit edit);
    // The frame that was typed; nothing where it is no place, which is said below the list.
    std::optional<std::uint32_t> FrameOfTyped(const QString& text, std::uint32_t here);

    MarkerDialogRequest request_;
    MarkerList markers_;
    std::vector<MarkerEdit> edits_;
    bool fieldsChanged_ = false;
    QTreeWidget* list_;
    FieldHint* noPlace_;
    QLineEdit* label_;
    FrameTimeField* position_;
    FrameTimeField* length_;
    QPushButton* edit_;
    QPushButton* delete_;
};

}  // namespace sonavel
