#pragma once
// The server's output: each message framed with its Content-Length on standard output,
// written whole and flushed, so a client reads it at once.

#include <QJsonObject>
#include <QJsonValue>

#include <cstdio>
#include <mutex>

namespace lsp {

class Transport {
public:
    explicit Transport(std::FILE* out = stdout) : out_(out) {}
    void send(const QJsonObject& message);
    void respond(const QJsonValue& id, const QJsonValue& result);
    void respondError(const QJsonValue& id, int code, const QString& message);
    void notify(const QString& method, const QJsonValue& params);
    void request(int id, const QString& method, const QJsonValue& params); // the server asks the client

private:
    std::FILE* out_;
    std::mutex mutex_;
};

} // namespace lsp
