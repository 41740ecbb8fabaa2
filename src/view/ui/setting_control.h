// How a control stands for a number of the table of settings.
#pragma once

#include <QWidget>
#include <functional>

#include "platform/settings.h"

namespace sonavel {

struct SettingControl {
    SettingId setting;
    QWidget* widget;
    std::function<void(int)> show;
    std::function<int()> number;
};

}  // namespace sonavel
