// What "More" in the Save As dialog shows: the sound's format and size before and after the save.
#pragma once

#include "document/document_questions.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class SaveDetailsDialog : public FormDialog {
    Q_OBJECT

  public:
    SaveDetailsDialog(const SaveAsRequest& original, const SaveAsChoice& update, QWidget* parent);
};

// "44,100 Hz, 16-bit, Stereo".
QString AttributesText(std::uint32_t samplesPerSecond, unsigned channels, unsigned bits);

}  // namespace sonavel
