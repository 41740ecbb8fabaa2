#include "effects/ui/effect_notes.h"

#include <QObject>

#include "effects/effect_table.h"

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
    return NotesOnOk(commandId, sound) + NotesOnPreview(commandId, sound);
}

}  // namespace sonavel
