// The dialog "Convert Channel Type": which channel a mono/stereo conversion keeps or fills.
#pragma once

#include <QButtonGroup>
#include <QDialog>

#include "platform/user_prompts.h"

namespace sonavel {

class ChannelConversionDialog : public QDialog {
    Q_OBJECT

  public:
    explicit ChannelConversionDialog(ChannelConversion conversion, QWidget* parent = nullptr);
    ChannelChoice Choice() const { return static_cast<ChannelChoice>(choices_->checkedId()); }

  private:
    QButtonGroup* choices_;
};

}  // namespace sonavel
