#pragma once
// The language server's loop on the main thread: each message the reader thread hands
// over is a request (answered at once, in order), a notification, or a response (ignored).
// Requests before "initialize" are refused; unknown requests are answered with
// MethodNotFound and unknown notifications ignored. Diagnostics of a changed document
// are sent 300 ms after its last change. Class files changed on disk by other programs are
// read again when the client reports them (workspace/didChangeWatchedFiles).

#include "lsp/diagnostics.h"
#include "lsp/message_reader.h"
#include "lsp/transport.h"
#include "lsp/workspace.h"

#include <QHash>
#include <QJsonObject>
#include <QMutex>
#include <QSet>
#include <QTimer>

#include <functional>
#include <memory>

namespace lsp {

// Ids of requests the client cancelled, noted by the reader thread as they arrive.
class CancelledRequests {
public:
    void add(const QJsonValue& id);
    bool take(const QJsonValue& id);

private:
    QMutex mutex_;
    QSet<QString> ids_;
};

class Server {
public:
    Server(Transport& transport, CancelledRequests& cancelled, std::string resourcesDir);
    ~Server();

    void handle(const ReaderEvent& event);
    // "exit" was received: the process ends with this status.
    std::function<void(int status)> onExit;

    static constexpr int diagnosticsDelayMs = 300;

private:
    using Request = std::function<QJsonValue(const QJsonObject& params)>;
    using Notification = std::function<void(const QJsonObject& params)>;

    void handleMessage(const QJsonObject& message);
    QJsonValue initialize(const QJsonObject& params);
    void didOpen(const QJsonObject& params);
    void didChange(const QJsonObject& params);
    void didClose(const QJsonObject& params);
    void noteProjectFile(const QString& path);
    // Files changed, created or deleted on disk by another program (a version-control
    // checkout, a generator): their stored scans and the checker's copy are read again.
    void didChangeWatchedFiles(const QJsonObject& params);
    // Asks a client that can watch files for us to report the project's class files.
    void registerFileWatching();
    void scheduleDiagnostics(const QString& path);
    void publishDiagnostics(const QString& path);
    // Calls `answer` with the document of `params`' textDocument: the open one, or the
    // file as stored; null when there is none.
    QJsonValue withDocument(const QJsonObject& params,
                            const std::function<QJsonValue(const QString&, const TextDocument&, TextPosition)>& answer);

    Transport& transport_;
    CancelledRequests& cancelled_;
    std::string resourcesDir_;
    Workspace workspace_;
    std::unique_ptr<DocumentChecker> checker_;
    QHash<QString, Request> requests_;
    QHash<QString, Notification> notifications_;
    QHash<QString, QTimer*> diagnosticsTimers_;
    bool initialized_ = false;
    bool shutDown_ = false;
    bool clientWatchesFiles_ = false; // the client registers file watchers when asked
    int nextRequestId_ = 1;
};

// `kelvaro --lsp`: serves standard input and output until "exit" or the end of input.
int runLanguageServer(int argc, char** argv);

} // namespace lsp
