// What belongs to the person and not to a sound: recent files, the places of windows and bars. Kept
// in the person's own configuration folder.
#pragma once

#include <QSettings>

namespace sonavel {

class PersonSettings : public QSettings {
  public:
    PersonSettings() : QSettings(QStringLiteral("SONAVEL 1.2B"), QStringLiteral("Sonavel")) {}
};

}  // namespace sonavel
