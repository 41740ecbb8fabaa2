// The desktop's clipboard: wave images under the four names that programs use for them.
#pragma once

#include <QMimeData>
#include <QObject>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/wave_clipboard.h"

namespace sonavel {

// Makes an image of 16-bit samples from one of floats; nothing when it cannot.
using RoundedImage =
    std::optional<std::vector<std::uint8_t>> (*)(std::span<const std::uint8_t> image);

// A wave image that is copied only when a program asks for it. Of floats it is offered under a name
// of the editor's own, and rounded under the usual ones.
class WaveMimeData : public QMimeData {
    Q_OBJECT

  public:
    // `number`: of the images that the program has put on the clipboard.
    WaveMimeData(std::vector<std::uint8_t> image, RoundedImage rounded, std::uint64_t number = 0);

    static const QStringList& Names();
    static QString FloatName();
    const std::vector<std::uint8_t>& Image() const { return image_; }
    std::uint64_t Number() const { return number_; }

    bool hasFormat(const QString& name) const override { return offered_.contains(name); }
    QStringList formats() const override { return offered_; }

  protected:
    QVariant retrieveData(const QString& name, QMetaType type) const override;

  private:
    std::vector<std::uint8_t> image_;
    RoundedImage rounded_;
    std::uint64_t number_;
    QStringList offered_;
};

class QtWaveClipboard : public QObject, public WaveClipboard {
    Q_OBJECT

  public:
    explicit QtWaveClipboard(RoundedImage rounded);

    // Asks the owner of the clipboard once for each of its contents: the menus want to know often,
    // and the owner may be slow to answer.
    bool OffersWave() const override;
    std::optional<std::vector<std::uint8_t>> GetImage() const override;
    bool SetImage(std::vector<std::uint8_t> image) override;
    std::uint64_t OwnNumber() const override;

  private:
    RoundedImage rounded_;
    std::uint64_t lastNumber_ = 0;
    mutable std::optional<bool> offersWave_;
};

}  // namespace sonavel
