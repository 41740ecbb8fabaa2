// The fields for how spectrograms are computed and coloured, as the view's dialog and the page of
// the preferences show them.
#pragma once

#include <QComboBox>
#include <QFormLayout>
#include <QObject>
#include <vector>

#include "view/ui/setting_control.h"

namespace sonavel {

class SpectrogramFields : public QObject {
    Q_OBJECT

  public:
    // Adds them to the form, which has its widget already and goes after them.
    SpectrogramFields(QFormLayout& form, QObject* parent);

    const std::vector<SettingControl>& Controls() const { return controls_; }

  Q_SIGNALS:
    void Edited();

  private:
    QComboBox* AddBox(QFormLayout& form, const QString& label, const QStringList& texts);
    void AddWindowLength(QFormLayout& form);
    void AddChoice(QFormLayout& form, SettingId setting, const QString& label,
                   const QStringList& texts);
    void AddRange(QFormLayout& form);
    void AddControl(SettingControl control);

    std::vector<SettingControl> controls_;
};

}  // namespace sonavel
