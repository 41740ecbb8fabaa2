// The dialog "Convert Channel Type": which channel a conversion between mono and stereo keeps or
// fills.
#pragma once

#include <QButtonGroup>
#include <optional>

#include "platform/user_prompts.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class ConvertChannelDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit ConvertChannelDialog(ChannelConversion conversion, QWidget* parent = nullptr);
    ChannelChoice Choice() const { return static_cast<ChannelChoice>(choices_.checkedId()); }

  private:
    QButtonGroup choices_;
};

// Shows the dialog; nothing when it was cancelled.
std::optional<ChannelChoice> AskChannelConversion(ChannelConversion conversion, QWidget* parent);

}  // namespace sonavel
