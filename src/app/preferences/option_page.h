// What the pages of the preferences have in common, and the fields they are made of.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>
#include <vector>

#include "app/preferences/preferences.h"
#include "view/ui/form_dialog.h"
#include "view/ui/setting_control.h"

namespace sonavel {

// A number with its unit. One that the setting does not accept stays as it was typed and is refused
// by the text beside it.
class NumberField : public QWidget {
    Q_OBJECT

  public:
    NumberField(SettingId setting, int step, const QString& unit, QWidget* parent = nullptr);

    int Value() const;
    void SetValue(int value);
    bool IsValid() const { return setting_.Accepts(Value()); }
    // For a setting whose 0 leaves the number to the program: shows that text instead, without the
    // unit.
    void ShowZeroAs(const QString& text);

  Q_SIGNALS:
    void Edited();

  private:
    class Box;

    void ShowUnit();

    const Setting& setting_;
    Box* number_;
    QLabel* unit_;
    QString zeroText_;
    FieldHint* refusal_;
};

class OptionPage : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;

    virtual void ShowPreferences(const Preferences& preferences);
    // Puts what the page edits into the preferences.
    virtual void TakeInto(Preferences& preferences) const;
    // False while a field holds what is refused.
    bool IsValid() const;
    // All pages' values together, after each edit.
    virtual void ShowPreview(const Preferences&) {}

  Q_SIGNALS:
    // By the person or by ShowPreferences.
    void Edited();

  protected:
    // The page shows and takes the setting through the control, and its tool tip explains it.
    void AddControl(SettingControl control);
    // A check box; `text` is with "&" before the access key.
    void AddFlag(QBoxLayout& layout, SettingId setting, const QString& text);
    // A list with the names of the numbers 0, 1 and so on.
    QComboBox* AddChoice(SettingId setting, const QStringList& names);
    NumberField* AddNumber(SettingId setting, int step, const QString& unit);

  private:
    std::vector<SettingControl> controls_;
};

}  // namespace sonavel
