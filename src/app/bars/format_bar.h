// The format information bar: rate, bits, channels, length and size of the active sound, and the
// memory that its undo history takes.
#pragma once

#include <QLabel>
#include <QToolBar>
#include <array>

#include "view/sound_view.h"

namespace sonavel {

class FormatBar : public QToolBar {
    Q_OBJECT

  public:
    explicit FormatBar(const QString& name, QWidget* parent = nullptr);

    // The length is in the view's status format.
    void ShowSound(const CSoundDoc& document, const CSoundView& view);
    void Clear();

    // "912 bytes", "1.5 MB".
    static QString MemoryText(std::uint64_t bytes);

  private:
    enum Field { kRate, kBits, kChannels, kLength, kSize, kHistory, kFields };

    void ShowHistory(const CSoundDoc& document);
    void Show(Field field, const QString& text, const QString& toolTip);

    std::array<QLabel*, kFields> fields_{};
};

}  // namespace sonavel
