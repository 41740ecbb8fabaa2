#include "effects/ui/effect_notes.h"

#include <QObject>

#include <algorithm>
#include <cstdlib>

#include "effects/effect_table.h"
#include "effects/volume.h"
#include "view/sound_statistics.h"

namespace sonavel {

namespace {

using namespace effect_command;

QStringList NotesOnOk(int commandId, const NotedSound& sound) {
    const bool mono = sound.channels == 1;
    if (commandId == kEqualizer)
        return {
            QObject::tr("OK changes nothing: keep a preview with Open Preview as New Document.")};
    if (commandId == kFlanger && mono)
        return {QObject::tr("Applying needs a stereo sound: OK leaves this mono sound as it is.")};
    if (commandId == kPanpot && mono)
        return {QObject::tr("Applying needs a stereo sound: OK changes nothing in a mono sound.")};
    if (commandId == kDynamics && sound.bits == 8)
        return {
            QObject::tr("8-bit samples lie below 0.4 % of the curve: they get the gain below "
                        "any higher threshold.")};
    return {};
}

QStringList NotesOnVolume(const NotedSound& sound) {
    const int reference = sound.bits == 8 ? 128 : 32768;
    const int peak = std::max(sound.extremes.maximum, std::abs(sound.extremes.minimum));
    const auto level = LevelInDecibels(peak, reference);
    if (!level) return {QObject::tr("Peak of the range: silence.")};
    const QString measured = QObject::tr("Peak of the range: %1 dB (%2 % of full scale).")
                                 .arg(*level, 0, 'f', 1)
                                 .arg(100.0 * peak / reference, 0, 'f', 1);
    const auto tooLoud = FirstTooLoudPercent(sound.extremes, sound.bits);
    if (!tooLoud)
        return {measured, QObject::tr("Within full scale up to %1 %.").arg(kGreatestVolumePercent)};
    return {measured, QObject::tr("Louder than full scale from %1 % on: samples then wrap around "
                                  "unless held.")
                          .arg(*tooLoud)};
}

// Three effects store through a quantizer that lifts some positive samples by 128.
QStringList NotesOnLifting(int commandId, const NotedSound& sound) {
    constexpr int kLift = 128;
    if (sound.bits == 8)
        return {
            QObject::tr("Rounding lifts some samples by 128: in an 8-bit sound they wrap "
                        "around.")};
    const int peak = std::max(sound.extremes.maximum, std::abs(sound.extremes.minimum));
    // Dynamics can make any sample loud.
    if (commandId != kDynamics && peak + kLift <= 32767) return {};
    return {QObject::tr("Rounding lifts some samples by 128: the loudest can wrap around.")};
}

QStringList NotesOnWrapping(int commandId, const NotedSound& sound) {
    switch (commandId) {
        case kVolume:
            return NotesOnVolume(sound);
        case kPanpot:
            return sound.channels == 1 ? QStringList() : NotesOnLifting(commandId, sound);
        case kModulator:
        case kDynamics:
            return NotesOnLifting(commandId, sound);
        case kReverb:
            if (sound.bits == 16) return {};
            return {
                QObject::tr("The result is limited to 16 bits: louder 8-bit samples wrap "
                            "around to the other sign.")};
        default:
            return {};
    }
}

bool HasPreview(int commandId) {
    for (const Effect& effect : Effects())
        if (effect.commandId == commandId && effect.preview) return true;
    return false;
}

QStringList NotesOnPreview(int commandId, const NotedSound& sound) {
    QStringList notes;
    if (!HasPreview(commandId)) return notes;
    const bool mono = sound.channels == 1;
    const bool oneSided = commandId == kFlanger || commandId == kEqualizer;
    if (mono)
        notes << (oneSided ? QObject::tr("Preview plays the first half of a mono range, on the "
                                         "left only.")
                           : QObject::tr("Preview plays the first half of a mono range."));
    // The reverberation brings 8-bit sound to the range of its 16-bit preview; the others do not.
    if (sound.bits == 8 && commandId != kReverb)
        notes << QObject::tr("Preview of an 8-bit sound is very quiet.");
    return notes;
}

}  // namespace

QStringList EffectNotes(int commandId, const NotedSound& sound) {
    return NotesOnOk(commandId, sound) + NotesOnWrapping(commandId, sound) +
           NotesOnPreview(commandId, sound);
}

}  // namespace sonavel
