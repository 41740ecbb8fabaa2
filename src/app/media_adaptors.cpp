#include "app/media_adaptors.h"

#include <QGuiApplication>

namespace sonavel {
namespace {

constexpr const char* kTrack = "/org/sonavel/sound";

}  // namespace

QString MediaRootAdaptor::DesktopEntry() const {
    return QGuiApplication::desktopFileName();
}

QString MediaPlayerAdaptor::PlaybackStatus() const {
    if (!player_.State().isActive) return QStringLiteral("Stopped");
    return player_.State().isPlaying ? QStringLiteral("Playing") : QStringLiteral("Paused");
}

QVariantMap MediaPlayerAdaptor::Metadata() const {
    return {{QStringLiteral("mpris:trackid"),
             QVariant::fromValue(QDBusObjectPath(QString::fromLatin1(kTrack)))},
            {QStringLiteral("xesam:title"), player_.State().title}};
}

void MediaPlayerAdaptor::Play() {
    if (!player_.State().isPlaying) PlayPause();
}

void MediaPlayerAdaptor::Pause() {
    if (player_.State().isPlaying) PlayPause();
}

// The editor's own command pauses what is played, and goes on with what is paused.
void MediaPlayerAdaptor::PlayPause() {
    player_.Run(player_.State().isActive ? MediaCommand::kPause : MediaCommand::kPlay);
}

}  // namespace sonavel
