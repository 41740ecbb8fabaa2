#include "app/running_instance.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QLockFile>
#include <QStandardPaths>
#include <QTimer>

#include "platform/qt/file_names.h"

namespace sonavel {
namespace {

constexpr const char* kGreeting = "sonavel 1";
constexpr const char* kTaken = "taken";
constexpr qsizetype kMostBytes = qsizetype{4} << 20;
constexpr int kConnectMs = 500;
constexpr int kAnswerMs = 3000;
constexpr int kLockMs = 3000;
constexpr int kDialogPollMs = 200;

const char* WordOf(EditorCall::First first) {
    switch (first) {
        case EditorCall::First::kNew:
            return "new";
        case EditorCall::First::kRecord:
            return "record";
        case EditorCall::First::kNothing:
            break;
    }
    return "open";
}

std::optional<EditorCall::First> FirstOf(const QByteArray& word) {
    for (const auto first :
         {EditorCall::First::kNothing, EditorCall::First::kNew, EditorCall::First::kRecord})
        if (word == WordOf(first)) return first;
    return std::nullopt;
}

QByteArray DisplayName() {
    const QByteArray wayland = qgetenv("WAYLAND_DISPLAY");
    return wayland.isEmpty() ? qgetenv("DISPLAY") : wayland;
}

}  // namespace

QByteArray BytesOfRequest(const InstanceRequest& request) {
    QByteArray bytes = QByteArray(kGreeting) + '\0' + WordOf(request.first) + '\0';
    for (const QString& file : request.files)
        bytes += QByteArray::fromStdString(FilePath(file).string()) + '\0';
    return bytes + '\0';
}

std::optional<InstanceRequest> RequestOfBytes(const QByteArray& bytes) {
    if (!bytes.endsWith(QByteArray("\0\0", 2))) return std::nullopt;
    const QList<QByteArray> words = bytes.chopped(2).split('\0');
    if (words.size() < 2 || words[0] != kGreeting) return std::nullopt;
    const auto first = FirstOf(words[1]);
    if (!first) return std::nullopt;
    InstanceRequest request{*first, {}};
    for (const QByteArray& name : words.mid(2)) {
        if (!name.startsWith('/')) return std::nullopt;
        request.files << FileText(name.toStdString());
    }
    return request;
}

RunningInstance::RunningInstance(QString socketPath, QObject* parent)
    : QObject(parent), path_(std::move(socketPath)) {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &RunningInstance::TakeConnection);
}

QString RunningInstance::SocketPath() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty()) return {};
    const QByteArray hash = QCryptographicHash::hash(DisplayName(), QCryptographicHash::Sha256);
    return folder + QStringLiteral("/sonavel-") + QString::fromLatin1(hash.toHex().left(8));
}

RunningInstance::Role RunningInstance::Start(const InstanceRequest& request) {
    if (path_.isEmpty()) return Role::kAlone;
    if (HandOver(request)) return Role::kHandedOver;
    // Of two that start at the same time, the later one finds the earlier one's socket.
    QLockFile lock(path_ + QStringLiteral(".lock"));
    if (!lock.tryLock(kLockMs)) return Role::kAlone;
    if (HandOver(request)) return Role::kHandedOver;
    QLocalSocket owner;
    owner.connectToServer(path_);
    if (owner.waitForConnected(kConnectMs)) return Role::kAlone;  // it lives, and does not answer
    QLocalServer::removeServer(path_);
    return server_.listen(path_) ? Role::kFirst : Role::kAlone;
}

bool RunningInstance::HandOver(const InstanceRequest& request) const {
    QLocalSocket socket;
    socket.connectToServer(path_);
    if (!socket.waitForConnected(kConnectMs)) return false;
    socket.write(BytesOfRequest(request));
    if (!socket.waitForBytesWritten(kAnswerMs) || !socket.waitForReadyRead(kAnswerMs)) return false;
    return socket.readAll() == kTaken;
}

void RunningInstance::TakeConnection() {
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { Read(*socket); });
        QTimer::singleShot(kAnswerMs, socket, &QLocalSocket::abort);
        Read(*socket);
    }
}

void RunningInstance::Read(QLocalSocket& socket) {
    if (socket.bytesAvailable() > kMostBytes) return socket.abort();
    const auto request = RequestOfBytes(socket.peek(kMostBytes));
    if (!request) return;
    socket.readAll();
    socket.write(kTaken);
    socket.flush();
    waiting_ << *request;
    QTimer::singleShot(0, this, &RunningInstance::EmitWaiting);
}

void RunningInstance::EmitWaiting() {
    // The commands behind a request are not meant to begin in the midst of another one.
    if (QApplication::activeModalWidget() != nullptr || (isBusy_ && isBusy_())) {
        QTimer::singleShot(kDialogPollMs, this, &RunningInstance::EmitWaiting);
        return;
    }
    if (!waiting_.isEmpty()) Q_EMIT Requested(waiting_.takeFirst());
}

}  // namespace sonavel
