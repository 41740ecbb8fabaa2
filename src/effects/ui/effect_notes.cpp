#include "effects/ui/effect_notes.h"

#include <QObject>

#include <algorithm>
#include <cstdlib>

#include "effects/volume.h"
#include "sound/decibels.h"

namespace sonavel {

namespace {

QStringList NotesOnOk(const EffectTraits& traits, const NotedSound& sound) {
    const bool mono = sound.channels == 1;
    if (traits.storing == Storing::kNothing)
        return {QObject::tr(
            "OK changes nothing: Apply does, and Open Preview as New Document keeps a preview.")};
    if (!traits.appliesToMono && mono)
        return {QObject::tr("OK leaves this mono sound as it is; Apply changes it.")};
    if (traits.monoRefusal && mono)
        return {QObject::tr("Applying needs a stereo sound: OK changes nothing in a mono sound.")};
    if (traits.eightBitNote && sound.bits == 8) return {QObject::tr(traits.eightBitNote)};
    return {};
}

QStringList NotesOnVolume(const NotedSound& sound) {
    const auto reference = static_cast<int>(FullScaleOf(sound.bits) / 2);
    const int peak = std::max(sound.extremes.maximum, std::abs(sound.extremes.minimum));
    const auto level = LevelInDecibels(peak, reference);
    if (!level) return {QObject::tr("Peak of the range: silence.")};
    const QString measured = QObject::tr("Peak of the range: %1 dB (%2 % of full scale).")
                                 .arg(*level, 0, 'f', 1)
                                 .arg(100.0 * peak / reference, 0, 'f', 1);
    const auto tooLoud = FirstTooLoudPercent(sound.extremes, sound.bits);
    if (!tooLoud)
        return {measured, QObject::tr("Within full scale up to %1 %.").arg(kGreatestVolumePercent)};
    const QString loud =
        AreWholeNumbers(sound.bits)
            ? QObject::tr(
                  "Louder than full scale from %1 % on: samples then wrap around "
                  "unless held.")
            : QObject::tr("Louder than full scale from %1 % on: floats keep that unless held.");
    return {measured, loud.arg(*tooLoud)};
}

// The quantizer lifts some positive samples by 128.
QStringList NotesOnLifting(const EffectTraits& traits, const NotedSound& sound) {
    constexpr int kLift = 128;
    if (!AreWholeNumbers(sound.bits)) return {};
    if (sound.bits == 8)
        return {
            QObject::tr("Rounding lifts some samples by 128: in an 8-bit sound they wrap "
                        "around.")};
    const int peak = std::max(sound.extremes.maximum, std::abs(sound.extremes.minimum));
    if (!traits.canRaisePeaks && peak + kLift <= 32767) return {};
    return {QObject::tr("Rounding lifts some samples by 128: the loudest can wrap around.")};
}

QStringList NotesOnWrapping(const EffectTraits& traits, const NotedSound& sound) {
    if (traits.monoRefusal && sound.channels == 1) return {};
    if (traits.storing == Storing::kTruncated) return NotesOnVolume(sound);
    if (traits.storing == Storing::kQuantized) return NotesOnLifting(traits, sound);
    if (traits.peak != PeakRule::kWithin16Bits || sound.bits != ByteSample::kBits) return {};
    return {
        QObject::tr("The result is limited to 16 bits: louder 8-bit samples wrap around to the "
                    "other sign.")};
}

QStringList NotesOnPreview(const EffectTraits& traits, const NotedSound& sound) {
    QStringList notes;
    if (sound.channels == 1)
        notes << (traits.monoPreview == MonoPreview::kLeftOnly
                      ? QObject::tr("Preview plays the first half of a mono range, on the left "
                                    "only.")
                      : QObject::tr("Preview plays the first half of a mono range."));
    if (sound.bits == 8 && !traits.previewScalesEightBits)
        notes << QObject::tr("Preview of an 8-bit sound is very quiet.");
    return notes;
}

}  // namespace

QStringList EffectNotes(const Effect& effect, const NotedSound& sound) {
    const EffectTraits& traits = effect.traits;
    // They are held at full scale, and heard as they will be.
    if (effect.range.compute) return {};
    QStringList notes = NotesOnOk(traits, sound) + NotesOnWrapping(traits, sound);
    return effect.HasPreview() ? notes + NotesOnPreview(traits, sound) : notes;
}

}  // namespace sonavel
