#include "lsp/transport.h"

#include <QJsonDocument>

namespace lsp {

void Transport::send(const QJsonObject& message) {
    QJsonObject whole = message;
    whole.insert(QStringLiteral("jsonrpc"), QStringLiteral("2.0"));
    const QByteArray body = QJsonDocument(whole).toJson(QJsonDocument::Compact);
    const QByteArray header = "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n";
    std::lock_guard<std::mutex> lock(mutex_);
    std::fwrite(header.constData(), 1, size_t(header.size()), out_);
    std::fwrite(body.constData(), 1, size_t(body.size()), out_);
    std::fflush(out_);
}

void Transport::respond(const QJsonValue& id, const QJsonValue& result) {
    send({{QStringLiteral("id"), id}, {QStringLiteral("result"), result}});
}

void Transport::respondError(const QJsonValue& id, int code, const QString& message) {
    send({{QStringLiteral("id"), id},
          {QStringLiteral("error"), QJsonObject{{QStringLiteral("code"), code}, {QStringLiteral("message"), message}}}});
}

void Transport::notify(const QString& method, const QJsonValue& params) {
    send({{QStringLiteral("method"), method}, {QStringLiteral("params"), params}});
}

void Transport::request(int id, const QString& method, const QJsonValue& params) {
    send({{QStringLiteral("id"), id}, {QStringLiteral("method"), method}, {QStringLiteral("params"), params}});
}

} // namespace lsp
