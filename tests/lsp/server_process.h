#pragma once
// A real `kelvaro --lsp` child process spoken to with raw bytes: messages are framed
// here, or written as they are to test what the server does with broken input.

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QString>

class ServerProcess {
public:
    ServerProcess();
    ~ServerProcess();

    static QString executable(); // the built kelvaro
    static QByteArray framed(const QJsonObject& message);
    static QJsonObject request(int id, const QString& method, const QJsonObject& params = {});
    static QJsonObject notification(const QString& method, const QJsonObject& params = {});

    void write(const QByteArray& bytes);
    void send(const QJsonObject& message) { write(framed(message)); }
    // The next message from the server, or an empty object after `ms` without one.
    QJsonObject next(int ms = 10000);
    // The next response (messages without an id, such as diagnostics, are skipped).
    QJsonObject response(int ms = 10000);
    // Sends initialize for `folder` (with the client's `capabilities`) and returns its response.
    QJsonObject initialize(const QString& folder, const QJsonObject& capabilities = {});
    // Closes the server's input and waits; the exit status, or -1 when it did not end.
    int endInput(int ms = 10000);
    QProcess& process() { return process_; }

private:
    QProcess process_;
    QByteArray pending_;
};
