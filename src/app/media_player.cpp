#include "app/media_player.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <utility>

#include "app/media_adaptors.h"

namespace sonavel {
namespace {

constexpr const char* kService = "org.mpris.MediaPlayer2.sonavel";
constexpr const char* kObject = "/org/mpris/MediaPlayer2";

// Another editor of this person may have the plain name.
QString ServiceName() {
    return QString::fromLatin1(kService) +
           QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid());
}

}  // namespace

MediaPlayer::MediaPlayer(std::function<void(MediaCommand)> run, QObject* parent)
    : QObject(parent), run_(std::move(run)) {
    new MediaRootAdaptor(*this);
    new MediaPlayerAdaptor(*this);
}

MediaPlayer::~MediaPlayer() {
    Withdraw();
}

void MediaPlayer::Follow(const MediaState& state) {
    const bool changed = state.isActive != state_.isActive || state.isPlaying != state_.isPlaying ||
                         state.title != state_.title;
    state_ = state;
    if (!changed) return;
    if (state.isActive)
        Offer();
    else
        Withdraw();
}

void MediaPlayer::Offer() {
    if (isOffered_) return TellChange();
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.registerObject(QString::fromLatin1(kObject), this)) return;
    isOffered_ = bus.registerService(ServiceName());
    if (!isOffered_) bus.unregisterObject(QString::fromLatin1(kObject));
}

void MediaPlayer::Withdraw() {
    if (!std::exchange(isOffered_, false)) return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(ServiceName());
    bus.unregisterObject(QString::fromLatin1(kObject));
}

void MediaPlayer::TellChange() {
    QDBusMessage message = QDBusMessage::createSignal(
        QString::fromLatin1(kObject), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("PropertiesChanged"));
    const MediaPlayerAdaptor* player = findChild<MediaPlayerAdaptor*>();
    const QVariantMap values{{QStringLiteral("PlaybackStatus"), player->PlaybackStatus()},
                             {QStringLiteral("Metadata"), player->Metadata()}};
    message << QStringLiteral("org.mpris.MediaPlayer2.Player") << values << QStringList();
    QDBusConnection::sessionBus().send(message);
}

}  // namespace sonavel
