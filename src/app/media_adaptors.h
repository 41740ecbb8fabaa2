// The two interfaces of the desktop's player control, as the bus sees them.
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QStringList>

#include "app/media_player.h"

namespace sonavel {

class MediaRootAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ No)
    Q_PROPERTY(bool CanRaise READ Yes)
    Q_PROPERTY(bool HasTrackList READ No)
    Q_PROPERTY(QString Identity READ Identity)
    Q_PROPERTY(QString DesktopEntry READ DesktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ Nothing)
    Q_PROPERTY(QStringList SupportedMimeTypes READ Nothing)

  public:
    explicit MediaRootAdaptor(MediaPlayer& player)
        : QDBusAbstractAdaptor(&player), player_(player) {}

    bool Yes() const { return true; }
    bool No() const { return false; }
    QString Identity() const { return QStringLiteral("Sonavel"); }
    QString DesktopEntry() const;
    QStringList Nothing() const { return {}; }

  public Q_SLOTS:
    void Raise() { player_.Run(MediaCommand::kRaise); }
    void Quit() {}

  private:
    MediaPlayer& player_;
};

class MediaPlayerAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ PlaybackStatus)
    Q_PROPERTY(double Rate READ One)
    Q_PROPERTY(double MinimumRate READ One)
    Q_PROPERTY(double MaximumRate READ One)
    Q_PROPERTY(double Volume READ One)
    Q_PROPERTY(qlonglong Position READ Position)
    Q_PROPERTY(QVariantMap Metadata READ Metadata)
    Q_PROPERTY(bool CanGoNext READ No)
    Q_PROPERTY(bool CanGoPrevious READ No)
    Q_PROPERTY(bool CanPlay READ Yes)
    Q_PROPERTY(bool CanPause READ Yes)
    Q_PROPERTY(bool CanSeek READ No)
    Q_PROPERTY(bool CanControl READ Yes)

  public:
    explicit MediaPlayerAdaptor(MediaPlayer& player)
        : QDBusAbstractAdaptor(&player), player_(player) {}

    QString PlaybackStatus() const;
    qlonglong Position() const { return player_.State().microseconds; }
    QVariantMap Metadata() const;
    double One() const { return 1; }
    bool Yes() const { return true; }
    bool No() const { return false; }

  public Q_SLOTS:
    void Play();
    void Pause();
    void PlayPause();
    void Stop() { player_.Run(MediaCommand::kStop); }
    void Next() {}
    void Previous() {}
    void Seek(qlonglong) {}
    void SetPosition(const QDBusObjectPath&, qlonglong) {}

  private:
    MediaPlayer& player_;
};

}  // namespace sonavel
