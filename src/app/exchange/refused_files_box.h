// The one box about all the files of a drop, of Open or of the command line that Open refuses and
// Import reads.
#pragma once

#include <QCheckBox>
#include <vector>

#include "platform/qt/message_box.h"

namespace sonavel {

struct RefusedFile {
    QString path;    // file text
    QString reason;  // a clause: "24-bit sound"
};

class RefusedFilesBox : public MessageBox {
    Q_OBJECT

  public:
    explicit RefusedFilesBox(const std::vector<RefusedFile>& files, QWidget* parent = nullptr);

    // Runs the box. Asked once only, it is also to be done from now on where IsForGood().
    bool AskWhetherToImport();
    bool IsForGood() const { return forGood_->isChecked(); }

  private:
    QCheckBox* forGood_;
};

}  // namespace sonavel
