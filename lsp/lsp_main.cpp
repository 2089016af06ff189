// `kelvaro --lsp`: a reader thread takes standard input apart into messages and hands
// them to the main thread's event loop, where the server answers them in order. The
// end of input ends the server as cleanly as "exit" does.
#include "lsp/server.h"

#include "tools/lang/vocabulary.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QMetaObject>

#include <climits>
#include <optional>
#include <cstdlib>
#include <thread>
#include <unistd.h>

namespace lsp {

namespace {

std::string executablePath(const char* argv0) {
    char self[PATH_MAX];
    const char* resolved = realpath("/proc/self/exe", self);
    return resolved ? std::string(resolved) : std::string(argv0);
}

// A cancellation is noted as soon as it is read, so that a request still waiting in the
// queue is refused instead of answered.
void noteCancellation(const ReaderEvent& event, CancelledRequests& cancelled) {
    if (event.kind != ReaderEvent::Kind::Message || event.body.size() > 4096 ||
        !event.body.contains("$/cancelRequest"))
        return;
    const QJsonObject message = QJsonDocument::fromJson(event.body).object();
    if (message.value(QLatin1String("method")).toString() == QLatin1String("$/cancelRequest"))
        cancelled.add(message.value(QLatin1String("params")).toObject().value(QLatin1String("id")));
}

} // namespace

int runLanguageServer(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Transport transport(stdout);
    CancelledRequests cancelled;
    Server server(transport, cancelled, klvr::defaultResourcesDir(executablePath(argv[0])));
    // The first ending decides the status: "exit" read before the end of input wins, and
    // nothing read after it is handled.
    std::optional<int> status;
    const auto end = [&status](int code) {
        if (!status)
            status = code;
        QCoreApplication::exit(*status);
    };
    server.onExit = end;

    std::thread reader([&] {
        MessageReader framing;
        QList<ReaderEvent> events;
        char buffer[1 << 16];
        for (;;) {
            const ssize_t got = ::read(STDIN_FILENO, buffer, sizeof buffer);
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0)
                break;
            framing.feed(buffer, qsizetype(got), events);
            // Cancellations first, so that a request read together with its
            // cancellation is never answered.
            for (const ReaderEvent& event : events)
                noteCancellation(event, cancelled);
            for (ReaderEvent& event : events) {
                QMetaObject::invokeMethod(
                    &app,
                    [&server, &status, event = std::move(event)] {
                        if (!status)
                            server.handle(event);
                    },
                    Qt::QueuedConnection);
            }
            events.clear();
        }
        QMetaObject::invokeMethod(&app, [&end] { end(0); }, Qt::QueuedConnection);
    });
    const int code = app.exec();
    std::fflush(stdout);
    // The reader may be blocked reading; the process ends without waiting for it.
    std::_Exit(status.value_or(code));
}

} // namespace lsp
