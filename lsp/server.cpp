#include "lsp/server.h"

#include "insight/vocabulary_lists.h"
#include "lsp/capabilities.h"
#include "lsp/protocol.h"
#include "insight/source_text.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace lsp {

namespace {

// With KELVARO_LSP_TIMING set, the time each message took the server goes to standard
// error as "method microseconds CPU-microseconds" (the main thread's processor time, which
// a busy machine's other processes do not inflate), for measurements.
const bool timing = std::getenv("KELVARO_LSP_TIMING") != nullptr;

qint64 threadCpuMicroseconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return qint64(now.tv_sec) * 1000000 + now.tv_nsec / 1000;
}

class Stopwatch {
public:
    Stopwatch() { restart(); }
    void restart() {
        wall_.start();
        cpu_ = timing ? threadCpuMicroseconds() : 0;
    }
    void report(const QString& what) const {
        if (timing)
            std::fprintf(stderr, "%s %lld %lld\n", qPrintable(what), static_cast<long long>(wall_.nsecsElapsed() / 1000),
                         static_cast<long long>(threadCpuMicroseconds() - cpu_));
    }

private:
    QElapsedTimer wall_;
    qint64 cpu_ = 0;
};

QString idKey(const QJsonValue& id) { return QString::fromUtf8(QJsonDocument(QJsonArray{id}).toJson(QJsonDocument::Compact)); }

QString uriOf(const QJsonObject& params) {
    return params.value(QLatin1String("textDocument")).toObject().value(QLatin1String("uri")).toString();
}

} // namespace

void CancelledRequests::add(const QJsonValue& id) {
    QMutexLocker lock(&mutex_);
    ids_.insert(idKey(id));
}

bool CancelledRequests::take(const QJsonValue& id) {
    QMutexLocker lock(&mutex_);
    return ids_.remove(idKey(id));
}

Server::Server(Transport& transport, CancelledRequests& cancelled, std::string resourcesDir)
    : transport_(transport), cancelled_(cancelled), resourcesDir_(std::move(resourcesDir)) {
    requests_.insert(QStringLiteral("initialize"), [this](const QJsonObject& p) { return initialize(p); });
    requests_.insert(QStringLiteral("shutdown"), [this](const QJsonObject&) {
        shutDown_ = true;
        return QJsonValue(QJsonValue::Null);
    });
    requests_.insert(QStringLiteral("textDocument/documentSymbol"), [this](const QJsonObject& p) {
        return withDocument(p, [this](const QString& path, const TextDocument& d, TextPosition) {
            return documentSymbols(workspace_, path, d);
        });
    });
    requests_.insert(QStringLiteral("workspace/symbol"), [this](const QJsonObject& p) {
        return QJsonValue(workspaceSymbols(workspace_, p.value(QLatin1String("query")).toString()));
    });
    requests_.insert(QStringLiteral("textDocument/completion"), [this](const QJsonObject& p) {
        return withDocument(p, [this](const QString& path, const TextDocument& d, TextPosition at) {
            return completionItems(workspace_, path, d, at);
        });
    });
    requests_.insert(QStringLiteral("textDocument/definition"), [this](const QJsonObject& p) {
        return withDocument(p, [this](const QString& path, const TextDocument& d, TextPosition at) {
            return definitionAt(workspace_, path, d, at);
        });
    });
    requests_.insert(QStringLiteral("textDocument/hover"), [this](const QJsonObject& p) {
        return withDocument(p, [this](const QString& path, const TextDocument& d, TextPosition at) {
            return hoverAt(workspace_, path, d, at);
        });
    });
    notifications_.insert(QStringLiteral("initialized"), [this](const QJsonObject&) { registerFileWatching(); });
    notifications_.insert(QStringLiteral("workspace/didChangeWatchedFiles"),
                          [this](const QJsonObject& p) { didChangeWatchedFiles(p); });
    notifications_.insert(QStringLiteral("textDocument/didOpen"), [this](const QJsonObject& p) { didOpen(p); });
    notifications_.insert(QStringLiteral("textDocument/didChange"), [this](const QJsonObject& p) { didChange(p); });
    notifications_.insert(QStringLiteral("textDocument/didSave"), [this](const QJsonObject& p) {
        noteProjectFile(pathOfUri(uriOf(p)));
        scheduleDiagnostics(pathOfUri(uriOf(p)));
    });
    notifications_.insert(QStringLiteral("textDocument/didClose"), [this](const QJsonObject& p) { didClose(p); });
}

Server::~Server() { qDeleteAll(diagnosticsTimers_); }

void Server::handle(const ReaderEvent& event) {
    if (event.kind == ReaderEvent::Kind::BadHeader) {
        transport_.respondError(QJsonValue::Null, ParseError, event.why);
        return;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(event.body, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()) {
        transport_.respondError(QJsonValue::Null, ParseError,
                                error.error != QJsonParseError::NoError ? error.errorString()
                                                                        : QStringLiteral("not a JSON object"));
        return;
    }
    const Stopwatch clock;
    const QJsonObject message = document.object();
    handleMessage(message);
    clock.report(message.value(QLatin1String("method")).toString());
}

void Server::handleMessage(const QJsonObject& message) {
    const QJsonValue id = message.value(QLatin1String("id"));
    const bool isRequest = !id.isUndefined();
    const QJsonValue methodValue = message.value(QLatin1String("method"));
    if (!methodValue.isString()) {
        if (isRequest && !message.contains(QLatin1String("result")) && !message.contains(QLatin1String("error")))
            transport_.respondError(id, InvalidRequest, QStringLiteral("no method"));
        return; // a response to a request of ours
    }
    const QString method = methodValue.toString();
    const QJsonObject params = message.value(QLatin1String("params")).toObject();
    if (method == QLatin1String("exit")) {
        if (onExit)
            onExit(shutDown_ ? 0 : 1);
        return;
    }
    if (method == QLatin1String("$/cancelRequest")) {
        return; // noted by the reader; a request not yet answered is refused when its turn comes
    }
    if (!isRequest) {
        const auto handler = notifications_.constFind(method);
        if (initialized_ && handler != notifications_.constEnd())
            (*handler)(params);
        return;
    }
    if (cancelled_.take(id)) {
        transport_.respondError(id, RequestCancelled, QStringLiteral("cancelled"));
        return;
    }
    if (!initialized_ && method != QLatin1String("initialize")) {
        transport_.respondError(id, ServerNotInitialized, QStringLiteral("initialize first"));
        return;
    }
    if (shutDown_) {
        transport_.respondError(id, InvalidRequest, QStringLiteral("the server is shut down"));
        return;
    }
    const auto handler = requests_.constFind(method);
    if (handler == requests_.constEnd()) {
        transport_.respondError(id, MethodNotFound, QStringLiteral("unknown method ") + method);
        return;
    }
    transport_.respond(id, (*handler)(params));
}

QJsonValue Server::initialize(const QJsonObject& params) {
    QString folder;
    const QJsonArray folders = params.value(QLatin1String("workspaceFolders")).toArray();
    if (!folders.isEmpty())
        folder = pathOfUri(folders.first().toObject().value(QLatin1String("uri")).toString());
    if (folder.isEmpty())
        folder = pathOfUri(params.value(QLatin1String("rootUri")).toString());
    if (folder.isEmpty())
        folder = params.value(QLatin1String("rootPath")).toString();
    clientWatchesFiles_ = params.value(QLatin1String("capabilities"))
                              .toObject()
                              .value(QLatin1String("workspace"))
                              .toObject()
                              .value(QLatin1String("didChangeWatchedFiles"))
                              .toObject()
                              .value(QLatin1String("dynamicRegistration"))
                              .toBool();
    Stopwatch clock;
    if (!initialized_)
        loadVocabularyLists(QString::fromStdString(resourcesDir_), workspace_.vocabulary.target());
    clock.report(QStringLiteral("initialize/vocabulary"));
    clock.restart();
    workspace_.openFolder(folder);
    clock.report(QStringLiteral("initialize/scan"));
    checker_.reset();
    checker_ = std::make_unique<DocumentChecker>(resourcesDir_, workspace_);
    initialized_ = true;
    const QJsonObject sync{{QStringLiteral("openClose"), true},
                           {QStringLiteral("change"), 2},
                           {QStringLiteral("save"), QJsonObject{{QStringLiteral("includeText"), false}}}};
    const QJsonObject capabilities{
        {QStringLiteral("positionEncoding"), QStringLiteral("utf-16")},
        {QStringLiteral("textDocumentSync"), sync},
        {QStringLiteral("documentSymbolProvider"), true},
        {QStringLiteral("workspaceSymbolProvider"), true},
        {QStringLiteral("completionProvider"), QJsonObject{{QStringLiteral("triggerCharacters"), QJsonArray{QStringLiteral(".")}}}},
        {QStringLiteral("definitionProvider"), true},
        {QStringLiteral("hoverProvider"), true}};
    return QJsonObject{{QStringLiteral("capabilities"), capabilities},
                       {QStringLiteral("serverInfo"), QJsonObject{{QStringLiteral("name"), QStringLiteral("kelvaro")}}}};
}

void Server::didOpen(const QJsonObject& params) {
    const QJsonObject item = params.value(QLatin1String("textDocument")).toObject();
    const QString path = pathOfUri(item.value(QLatin1String("uri")).toString());
    if (path.isEmpty())
        return;
    workspace_.openDocument(path, item.value(QLatin1String("text")).toString());
    noteProjectFile(path);
    scheduleDiagnostics(path);
}

void Server::noteProjectFile(const QString& path) {
    // The checker reads the project again with the new class among its files.
    if (workspace_.noteProjectFile(path))
        checker_ = std::make_unique<DocumentChecker>(resourcesDir_, workspace_);
}

void Server::registerFileWatching() {
    if (!clientWatchesFiles_)
        return;
    const QJsonObject watcher{{QStringLiteral("globPattern"), QStringLiteral("**/*.klvr")}};
    const QJsonObject registration{
        {QStringLiteral("id"), QStringLiteral("kelvaro-class-files")},
        {QStringLiteral("method"), QStringLiteral("workspace/didChangeWatchedFiles")},
        {QStringLiteral("registerOptions"), QJsonObject{{QStringLiteral("watchers"), QJsonArray{watcher}}}}};
    transport_.request(nextRequestId_++, QStringLiteral("client/registerCapability"),
                       QJsonObject{{QStringLiteral("registrations"), QJsonArray{registration}}});
}

void Server::didChangeWatchedFiles(const QJsonObject& params) {
    constexpr int Deleted = 3;
    bool changed = false;
    for (const QJsonValue& change : params.value(QLatin1String("changes")).toArray()) {
        const QJsonObject c = change.toObject();
        const QString path = pathOfUri(c.value(QLatin1String("uri")).toString());
        if (path.isEmpty())
            continue;
        workspace_.fileChangedOnDisk(path, c.value(QLatin1String("type")).toInt() == Deleted);
        changed = true;
    }
    if (!changed)
        return;
    // The checker holds the project's files as they were read: it reads them again.
    checker_ = std::make_unique<DocumentChecker>(resourcesDir_, workspace_);
    for (const QString& path : workspace_.openPaths())
        scheduleDiagnostics(path);
}

void Server::didChange(const QJsonObject& params) {
    const QString path = pathOfUri(uriOf(params));
    TextDocument* document = workspace_.document(path);
    if (!document)
        return;
    for (const QJsonValue& change : params.value(QLatin1String("contentChanges")).toArray()) {
        const QJsonObject c = change.toObject();
        const QString text = c.value(QLatin1String("text")).toString();
        if (!c.contains(QLatin1String("range"))) {
            document->setText(text);
            continue;
        }
        const QJsonObject range = c.value(QLatin1String("range")).toObject();
        document->replace(positionOf(range.value(QLatin1String("start"))), positionOf(range.value(QLatin1String("end"))),
                          text);
    }
    workspace_.documentChanged(path);
    scheduleDiagnostics(path);
}

void Server::didClose(const QJsonObject& params) {
    const QString path = pathOfUri(uriOf(params));
    workspace_.closeDocument(path);
    if (checker_)
        checker_->closed(path);
    if (QTimer* timer = diagnosticsTimers_.take(path))
        delete timer;
    transport_.notify(QStringLiteral("textDocument/publishDiagnostics"),
                      QJsonObject{{QStringLiteral("uri"), uriOfPath(path)}, {QStringLiteral("diagnostics"), QJsonArray()}});
}

void Server::scheduleDiagnostics(const QString& path) {
    if (!workspace_.document(path))
        return;
    QTimer*& timer = diagnosticsTimers_[path];
    if (!timer) {
        timer = new QTimer;
        timer->setSingleShot(true);
        timer->setInterval(diagnosticsDelayMs);
        QObject::connect(timer, &QTimer::timeout, [this, path] { publishDiagnostics(path); });
    }
    timer->start();
}

void Server::publishDiagnostics(const QString& path) {
    if (!checker_ || !workspace_.document(path))
        return;
    const Stopwatch clock;
    transport_.notify(QStringLiteral("textDocument/publishDiagnostics"),
                      QJsonObject{{QStringLiteral("uri"), uriOfPath(path)},
                                  {QStringLiteral("diagnostics"), checker_->check(workspace_, path)}});
    clock.report(QStringLiteral("diagnostics"));
}

QJsonValue Server::withDocument(
    const QJsonObject& params,
    const std::function<QJsonValue(const QString&, const TextDocument&, TextPosition)>& answer) {
    const QString path = pathOfUri(uriOf(params));
    const TextPosition at = positionOf(params.value(QLatin1String("position")));
    if (const TextDocument* open = workspace_.document(path))
        return answer(path, *open, at);
    const auto bytes = path.isEmpty() ? std::nullopt : readSourceBytes(path);
    if (!bytes)
        return QJsonValue::Null;
    return answer(path, TextDocument(decodedSourceText(*bytes)), at);
}

} // namespace lsp
