// What the pages of the preferences have in common, and the fields they are made of.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>
#include <span>
#include <vector>

#include "app/preferences/preferences.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class OptionPage : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;

    virtual void ShowPreferences(const Preferences& preferences) = 0;
    // Puts what the page edits into the preferences.
    virtual void TakeInto(Preferences& preferences) const = 0;
    // False while a field holds what is refused.
    virtual bool IsValid() const { return true; }
    // All pages' values together, after each edit.
    virtual void ShowPreview(const Preferences&) {}

  Q_SIGNALS:
    // By the person or by ShowPreferences.
    void Edited();
};

struct FlagText {
    const char* text;  // with "&" before the access key
    int& (*value)(Preferences&);
};

// Check boxes that stand for flags of the preferences.
class FlagBoxes {
  public:
    void Add(QVBoxLayout& column, std::span<const FlagText> flags, OptionPage& page);
    void Show(Preferences preferences);
    void TakeInto(Preferences& preferences) const;

  private:
    struct Box {
        QCheckBox* box;
        int& (*value)(Preferences&);
    };
    std::vector<Box> boxes_;
};

struct NumberRange {
    int lowest = 0;
    int highest = 0;
    int step = 1;
};

// A number with its unit. One out of range stays as it was typed and is refused by the text beside
// it.
class NumberField : public QWidget {
    Q_OBJECT

  public:
    NumberField(const NumberRange& range, const QString& unit, QWidget* parent = nullptr);

    int Value() const { return number_->value(); }
    void SetValue(int value) { number_->setValue(value); }
    bool IsValid() const;

  Q_SIGNALS:
    void Edited();

  private:
    NumberRange range_;
    QSpinBox* number_;
    FieldHint* refusal_;
};

}  // namespace sonavel
