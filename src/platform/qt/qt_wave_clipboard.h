// The desktop's clipboard: wave images under the four names that programs use for them.
#pragma once

#include <QMimeData>
#include <QObject>
#include <optional>

#include "platform/wave_clipboard.h"

namespace sonavel {

// A wave image that is copied only when a program asks for it.
class WaveMimeData : public QMimeData {
    Q_OBJECT

  public:
    explicit WaveMimeData(std::vector<std::uint8_t> image) : image_(std::move(image)) {}

    static const QStringList& Names();
    const std::vector<std::uint8_t>& Image() const { return image_; }

    bool hasFormat(const QString& name) const override { return Names().contains(name); }
    QStringList formats() const override { return Names(); }

  protected:
    QVariant retrieveData(const QString& name, QMetaType type) const override;

  private:
    std::vector<std::uint8_t> image_;
};

class QtWaveClipboard : public QObject, public WaveClipboard {
    Q_OBJECT

  public:
    QtWaveClipboard();

    // Asks the owner of the clipboard once for each of its contents: the menus want to know often,
    // and the owner may be slow to answer.
    bool OffersWave() const override;
    std::optional<std::vector<std::uint8_t>> GetImage() const override;
    bool SetImage(std::vector<std::uint8_t> image) override;

  private:
    mutable std::optional<bool> offersWave_;
};

}  // namespace sonavel
