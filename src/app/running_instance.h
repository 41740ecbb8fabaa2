// The editor that runs already on a person's display: a later start hands its files to it and ends.
// They speak through a socket in the person's runtime folder, which only this person can open.
#pragma once

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QStringList>
#include <functional>
#include <optional>

#include "app/call/editor_call.h"

namespace sonavel {

// What a start asks for. Files are absolute file texts (platform/qt/file_names.h).
struct InstanceRequest {
    EditorCall::First first = EditorCall::First::kNothing;
    QStringList files;

    bool operator==(const InstanceRequest&) const = default;
};

// A word of greeting, then what comes first, then the files' names, each ended by a zero byte; an
// empty one ends all.
QByteArray BytesOfRequest(const InstanceRequest& request);
// Nothing for bytes that are no whole request.
std::optional<InstanceRequest> RequestOfBytes(const QByteArray& bytes);

class RunningInstance : public QObject {
    Q_OBJECT

  public:
    enum class Role {
        kFirst,       // this one takes the requests of later ones
        kHandedOver,  // another one has taken `request`
        kAlone,       // neither: the socket cannot be had, or its owner does not answer
    };

    // `socketPath` is absolute; see SocketPath.
    explicit RunningInstance(QString socketPath, QObject* parent = nullptr);

    // One socket a display of the person; empty where the system has no runtime folder.
    static QString SocketPath();

    // Requests wait while this says so, as they do while a dialog is open.
    void SetBusyTest(std::function<bool()> isBusy) { isBusy_ = std::move(isBusy); }
    // Waits at most some seconds for the other one's answer.
    Role Start(const InstanceRequest& request);

  Q_SIGNALS:
    // A later start asks; never while a dialog is open here.
    void Requested(const sonavel::InstanceRequest& request);

  private:
    bool HandOver(const InstanceRequest& request) const;
    void TakeConnection();
    void Read(QLocalSocket& socket);
    void EmitWaiting();

    QString path_;
    QLocalServer server_;
    QList<InstanceRequest> waiting_;
    std::function<bool()> isBusy_;
};

}  // namespace sonavel
