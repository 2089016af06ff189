#include "server_process.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QUrl>

ServerProcess::ServerProcess() {
    process_.setProcessChannelMode(QProcess::SeparateChannels);
    process_.start(executable(), {QStringLiteral("--lsp")});
    process_.waitForStarted();
}

ServerProcess::~ServerProcess() {
    if (process_.state() != QProcess::NotRunning) {
        process_.kill();
        process_.waitForFinished(5000);
    }
}

QString ServerProcess::executable() { return QStringLiteral(KELVARO_APP_DIR "/Contents/MacOS/kelvaro"); }

QByteArray ServerProcess::framed(const QJsonObject& message) {
    const QByteArray body = QJsonDocument(message).toJson(QJsonDocument::Compact);
    return "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

QJsonObject ServerProcess::request(int id, const QString& method, const QJsonObject& params) {
    return {{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}};
}

QJsonObject ServerProcess::notification(const QString& method, const QJsonObject& params) {
    return {{"jsonrpc", "2.0"}, {"method", method}, {"params", params}};
}

void ServerProcess::write(const QByteArray& bytes) {
    process_.write(bytes);
    process_.waitForBytesWritten(10000);
}

QJsonObject ServerProcess::next(int ms) {
    QDeadlineTimer deadline(ms);
    for (;;) {
        const qsizetype end = pending_.indexOf("\r\n\r\n");
        if (end >= 0) {
            const QByteArray header = pending_.left(end);
            const qsizetype length = header.mid(header.indexOf(':') + 1).trimmed().toLongLong();
            if (pending_.size() >= end + 4 + length) {
                const QByteArray body = pending_.mid(end + 4, length);
                pending_.remove(0, end + 4 + length);
                return QJsonDocument::fromJson(body).object();
            }
        }
        if (deadline.hasExpired() || !process_.waitForReadyRead(int(qMax<qint64>(1, deadline.remainingTime()))))
            if (process_.bytesAvailable() == 0)
                return {};
        pending_ += process_.readAllStandardOutput();
    }
}

QJsonObject ServerProcess::response(int ms) {
    for (;;) {
        const QJsonObject message = next(ms);
        if (message.isEmpty() || message.contains("id"))
            return message;
    }
}

QJsonObject ServerProcess::initialize(const QString& folder, const QJsonObject& capabilities) {
    send(request(1, "initialize", {{"rootUri", QUrl::fromLocalFile(folder).toString()}, {"capabilities", capabilities}}));
    const QJsonObject answer = response();
    send(notification("initialized"));
    return answer;
}

int ServerProcess::endInput(int ms) {
    process_.closeWriteChannel();
    if (!process_.waitForFinished(ms))
        return -1;
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}
