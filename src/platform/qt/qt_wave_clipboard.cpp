#include "platform/qt/qt_wave_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>

namespace sonavel {

const QStringList& WaveMimeData::Names() {
    static const QStringList names{QStringLiteral("audio/vnd.wave"), QStringLiteral("audio/x-wav"),
                                   QStringLiteral("audio/wav"), QStringLiteral("audio/wave")};
    return names;
}

QString WaveMimeData::FloatName() {
    return QStringLiteral("application/x-sonavel-float-wave");
}

namespace {

constexpr std::size_t kFormatTagOffset = 20;
constexpr std::uint8_t kFloatTag = 3;

bool HoldsFloats(std::span<const std::uint8_t> image) {
    return image.size() > kFormatTagOffset && image[kFormatTagOffset] == kFloatTag;
}

QByteArray BytesOf(std::span<const std::uint8_t> image) {
    return {reinterpret_cast<const char*>(image.data()), static_cast<qsizetype>(image.size())};
}

}  // namespace

WaveMimeData::WaveMimeData(std::vector<std::uint8_t> image, RoundedImage rounded,
                           std::uint64_t number)
    : image_(std::move(image)), rounded_(rounded), number_(number), offered_(Names()) {
    if (HoldsFloats(image_)) offered_.prepend(FloatName());
}

QVariant WaveMimeData::retrieveData(const QString& name, QMetaType type) const {
    if (!hasFormat(name)) return QMimeData::retrieveData(name, type);
    if (!HoldsFloats(image_) || name == FloatName()) return BytesOf(image_);
    const auto rounded = rounded_(image_);
    return rounded ? BytesOf(*rounded) : QByteArray();
}

namespace {

bool HasWaveName(const QMimeData* offered) {
    if (!offered) return false;
    const QStringList names = offered->formats();
    return std::any_of(names.begin(), names.end(),
                       [](const QString& name) { return WaveMimeData::Names().contains(name); });
}

}  // namespace

QtWaveClipboard::QtWaveClipboard(RoundedImage rounded) : rounded_(rounded) {
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            [this] { offersWave_.reset(); });
}

bool QtWaveClipboard::OffersWave() const {
    if (!offersWave_) offersWave_ = HasWaveName(QGuiApplication::clipboard()->mimeData());
    return *offersWave_;
}

std::optional<std::vector<std::uint8_t>> QtWaveClipboard::GetImage() const {
    const QMimeData* offered = QGuiApplication::clipboard()->mimeData();
    if (!offered) return std::nullopt;
    if (const auto* own = qobject_cast<const WaveMimeData*>(offered)) return own->Image();
    const QStringList names = offered->formats();
    for (const QString& name : QStringList(WaveMimeData::FloatName()) + WaveMimeData::Names()) {
        if (!names.contains(name)) continue;
        const QByteArray data = offered->data(name);
        if (!data.isEmpty()) return std::vector<std::uint8_t>(data.begin(), data.end());
    }
    return std::nullopt;
}

bool QtWaveClipboard::SetImage(std::vector<std::uint8_t> image) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    auto* offered = new WaveMimeData(std::move(image), rounded_, ++lastNumber_);
    clipboard->setMimeData(offered);  // takes it over
    offersWave_.reset();
    return clipboard->mimeData() == offered;
}

std::uint64_t QtWaveClipboard::OwnNumber() const {
    const auto* own = qobject_cast<const WaveMimeData*>(QGuiApplication::clipboard()->mimeData());
    return own ? own->Number() : 0;
}

}  // namespace sonavel
