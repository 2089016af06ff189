// The real server given input no client would send: each case's bytes, the error the
// server must answer with (none for 0), and a request after it that must still be
// answered, so the server neither crashed nor lost its place in the input.
#include "server_process.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

struct BadInput {
    const char* name;
    bool initialized;
    QByteArray bytes;
    int expectedError; // 0: no answer expected
};

QByteArray framedText(const QByteArray& body) {
    return "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

class RawProtocol : public ::testing::TestWithParam<BadInput> {};

TEST_P(RawProtocol, AnswersAndGoesOn) {
    const BadInput& input = GetParam();
    QTemporaryDir folder;
    ServerProcess server;
    if (input.initialized) {
        ASSERT_TRUE(server.initialize(folder.path()).contains("result"));
    }
    server.write(input.bytes);
    if (input.expectedError != 0) {
        const QJsonObject answer = server.response();
        EXPECT_EQ(answer["error"]["code"].toInt(), input.expectedError) << qPrintable(answer.isEmpty() ? "no answer" : "");
    }
    server.send(ServerProcess::request(99, "workspace/symbol", {{"query", "x"}}));
    QJsonObject after = server.response();
    while (!after.isEmpty() && after["id"].toInt() != 99)
        after = server.response(); // answers to the case's own requests
    EXPECT_EQ(after["id"].toInt(), 99);
    EXPECT_EQ(server.endInput(), 0);
}

// The length covers only the start of the body; the rest reads as garbage before the
// next header.
const QByteArray cut =
    QByteArray("Content-Length: 9\r\n\r\n") + R"({"jsonrpc":"2.0","id":5,"method":"workspace/symbol","params":{}})";

INSTANTIATE_TEST_SUITE_P(
    Lsp, RawProtocol,
    ::testing::Values(
        BadInput{"MalformedJson", true, framedText("{\"jsonrpc\":\"2.0\",\"id\":"), -32700},
        BadInput{"NotAnObject", true, framedText("[1,2,3]"), -32700},
        BadInput{"MissingContentLength", true, "Content-Type: application/json\r\n\r\n{}", -32700},
        BadInput{"ContentLengthNotANumber", true, "Content-Length: -x7\r\n\r\n", -32700},
        BadInput{"ContentLengthTooShort", true, cut, -32700},
        BadInput{"UnknownRequest", true,
                 ServerProcess::framed(ServerProcess::request(3, "kelvaro/nothing")), -32601},
        BadInput{"UnknownNotification", true, ServerProcess::framed(ServerProcess::notification("kelvaro/nothing")), 0},
        BadInput{"RequestBeforeInitialize", false,
                 ServerProcess::framed(ServerProcess::request(3, "textDocument/hover")), -32002},
        BadInput{"CancelledRequest", true,
                 ServerProcess::framed(ServerProcess::request(7, "workspace/symbol", {{"query", ""}})) +
                     ServerProcess::framed(ServerProcess::notification("$/cancelRequest", {{"id", 7}})),
                 -32800},
        BadInput{"PositionsPastTheEnd", true,
                 ServerProcess::framed(ServerProcess::notification(
                     "textDocument/didOpen",
                     {{"textDocument", QJsonObject{{"uri", "file:///nowhere/A.NSObject.klvr"}, {"version", 1},
                                                   {"text", "' a\nDim x As Integer\n  x"}}}})) +
                     ServerProcess::framed(ServerProcess::request(
                         3, "textDocument/hover",
                         {{"textDocument", QJsonObject{{"uri", "file:///nowhere/A.NSObject.klvr"}}},
                          {"position", QJsonObject{{"line", 1}, {"character", 900000}}}})) +
                     ServerProcess::framed(ServerProcess::request(
                         4, "textDocument/definition",
                         {{"textDocument", QJsonObject{{"uri", "file:///nowhere/A.NSObject.klvr"}}},
                          {"position", QJsonObject{{"line", 70000}, {"character", 3}}}})) +
                     ServerProcess::framed(ServerProcess::request(
                         5, "textDocument/completion",
                         {{"textDocument", QJsonObject{{"uri", "file:///nowhere/A.NSObject.klvr"}}},
                          {"position", QJsonObject{{"line", -4}, {"character", 70000}}}})),
                 0},
        BadInput{"ChangeOfUnknownDocument", true,
                 ServerProcess::framed(ServerProcess::notification(
                     "textDocument/didChange",
                     {{"textDocument", QJsonObject{{"uri", "file:///nowhere/A.NSObject.klvr"}}},
                      {"contentChanges", QJsonArray{QJsonObject{{"text", "x"}}}}})),
                 0}),
    [](const ::testing::TestParamInfo<BadInput>& info) { return std::string(info.param.name); });

// How the process ends: the exit status after each way of ending the input.
struct Ending {
    const char* name;
    QByteArray bytes;
    int status;
};

class ServerEnding : public ::testing::TestWithParam<Ending> {};

TEST_P(ServerEnding, EndsWithStatus) {
    QTemporaryDir folder;
    ServerProcess server;
    ASSERT_TRUE(server.initialize(folder.path()).contains("result"));
    server.write(GetParam().bytes);
    EXPECT_EQ(server.endInput(), GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(
    Lsp, ServerEnding,
    ::testing::Values(
        Ending{"EndOfInput", "", 0},
        Ending{"HeaderWithoutBody", "Content-Length: 100\r\n\r\n{\"jso", 0},
        Ending{"HalfAHeader", "Content-Len", 0},
        Ending{"ShutdownThenExit",
               ServerProcess::framed(ServerProcess::request(2, "shutdown")) +
                   ServerProcess::framed(ServerProcess::notification("exit")),
               0},
        Ending{"ExitWithoutShutdown", ServerProcess::framed(ServerProcess::notification("exit")), 1}),
    [](const ::testing::TestParamInfo<Ending>& info) { return std::string(info.param.name); });

// A document of 50 MB is taken whole, and a change past its end lands at its end.
TEST(LspLargeDocument, FiftyMegabytesThenAChangePastTheEnd) {
    QTemporaryDir folder;
    ServerProcess server;
    ASSERT_TRUE(server.initialize(folder.path()).contains("result"));
    const QString uri = QUrl::fromLocalFile(folder.path() + "/Big.NSObject.klvr").toString();
    QString text;
    const QString line = QStringLiteral("' ") + QString(98, QLatin1Char('x')) + QLatin1Char('\n');
    text.reserve(50 << 20);
    while (text.size() < (50 << 20))
        text += line;
    server.send(ServerProcess::notification(
        "textDocument/didOpen",
        {{"textDocument", QJsonObject{{"uri", uri}, {"languageId", "kelvaro"}, {"version", 1}, {"text", text}}}}));
    const QJsonObject far{{"line", 10'000'000}, {"character", 5}};
    server.send(ServerProcess::notification(
        "textDocument/didChange",
        {{"textDocument", QJsonObject{{"uri", uri}, {"version", 2}}},
         {"contentChanges", QJsonArray{QJsonObject{{"range", QJsonObject{{"start", far}, {"end", far}}},
                                                   {"text", "Dim zed As Integer\n"}}}}}));
    const int lastLine = int(text.size() / line.size());
    server.send(ServerProcess::request(4, "textDocument/hover",
                                       {{"textDocument", QJsonObject{{"uri", uri}}},
                                        {"position", QJsonObject{{"line", lastLine}, {"character", 5}}}}));
    const QJsonObject answer = server.response(60000);
    EXPECT_TRUE(answer["result"]["contents"]["value"].toString().contains("Dim zed As Integer"))
        << QJsonDocument(answer).toJson().left(500).constData();
    // The compiler's own refusal of so large a file, without compiling it.
    QString refusal = QStringLiteral("no diagnostics sent");
    for (;;) {
        const QJsonObject message = server.next(60000);
        if (message.isEmpty())
            break;
        if (message["method"].toString() == "textDocument/publishDiagnostics") {
            refusal = message["params"]["diagnostics"][0]["message"].toString();
            break;
        }
    }
    EXPECT_EQ(refusal, "File too large");
    EXPECT_EQ(server.endInput(60000), 0);
}

} // namespace

namespace {

// A file outside any project is checked as a project of its own, as typed; its error goes
// when it is fixed.
TEST(LspSingleFile, CheckedAsAProjectOfItsOwn) {
    QTemporaryDir folder;
    ServerProcess server;
    ASSERT_TRUE(server.initialize(folder.path()).contains("result"));
    const QString uri = QUrl::fromLocalFile(folder.path() + "/Lone.NSObject.klvr").toString();
    const auto nextDiagnostics = [&] {
        for (;;) {
            const QJsonObject message = server.next();
            if (message.isEmpty())
                break;
            if (message["method"].toString() == "textDocument/publishDiagnostics")
                return message["params"]["diagnostics"].toArray();
        }
        return QJsonArray{QJsonValue(QStringLiteral("no diagnostics sent"))};
    };
    server.send(ServerProcess::notification(
        "textDocument/didOpen", {{"textDocument", QJsonObject{{"uri", uri}, {"languageId", "kelvaro"}, {"version", 1},
                                                              {"text", "' lone\nSub Go()\n  Next\nEnd Sub\n"}}}}));
    const QJsonArray errors = nextDiagnostics();
    ASSERT_EQ(errors.size(), 1);
    EXPECT_EQ(errors[0]["message"].toString(), "Next without For");
    EXPECT_EQ(errors[0]["range"]["start"]["line"].toInt(), 2);
    const QJsonObject line2{{"line", 2}, {"character", 0}}, line3{{"line", 3}, {"character", 0}};
    server.send(ServerProcess::notification(
        "textDocument/didChange",
        {{"textDocument", QJsonObject{{"uri", uri}, {"version", 2}}},
         {"contentChanges", QJsonArray{QJsonObject{{"range", QJsonObject{{"start", line2}, {"end", line3}}}, {"text", ""}}}}}));
    EXPECT_EQ(nextDiagnostics(), QJsonArray());
}

} // namespace

namespace {

// The server runs on Qt Core: neither the IDE library nor a window system's library is
// ever loaded into it.
TEST(LspProcess, LoadsNoWindowSystem) {
    QTemporaryDir folder;
    ServerProcess server;
    ASSERT_TRUE(server.initialize(folder.path()).contains("result"));
    QFile maps(QStringLiteral("/proc/%1/maps").arg(server.process().processId()));
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    const QByteArray loaded = maps.readAll();
    EXPECT_TRUE(loaded.contains("libQt6Core"));
    for (const char* library : {"libkelvaro_ide", "libQt6Gui", "libQt6Widgets", "libqscintilla"})
        EXPECT_FALSE(loaded.contains(library)) << library;
}

} // namespace

namespace {

// Class files that appear, change or go after the folder was read: one the editor opens
// counts as the project's at once; a client that can watch files is asked to report the
// others, and each report makes the server read them again. Completion after a Global
// member of the class's type tells what the server knows of it (its Public members).
TEST(LspProjectFiles, FollowOpenedAndWatchedFiles) {
    QTemporaryDir folder;
    const auto write = [&](const QString& name, const QByteArray& text) {
        QFile file(folder.path() + "/" + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    };
    write("Global.NSObject.klvr", "' g\nPublic Dim later As Late\n\nSub Go()\n  later.\nEnd Sub\n");
    ServerProcess server;
    const QJsonObject watching{
        {"workspace", QJsonObject{{"didChangeWatchedFiles", QJsonObject{{"dynamicRegistration", true}}}}}};
    ASSERT_TRUE(server.initialize(folder.path(), watching).contains("result"));
    const QJsonObject ask = server.next();
    ASSERT_EQ(ask["method"].toString(), "client/registerCapability");
    const QJsonObject registration = ask["params"]["registrations"][0].toObject();
    EXPECT_EQ(registration["method"].toString(), "workspace/didChangeWatchedFiles");
    EXPECT_EQ(registration["registerOptions"]["watchers"][0]["globPattern"].toString(), "**/*.klvr");
    server.send({{"jsonrpc", "2.0"}, {"id", ask["id"]}, {"result", QJsonValue::Null}});

    const QString late = QUrl::fromLocalFile(folder.path() + "/Late.NSObject.klvr").toString();
    int id = 10;
    const auto membersOfLater = [&] {
        server.send(ServerProcess::request(
            ++id, "textDocument/completion",
            {{"textDocument", QJsonObject{{"uri", QUrl::fromLocalFile(folder.path() + "/Global.NSObject.klvr").toString()}}},
             {"position", QJsonObject{{"line", 4}, {"character", 8}}}}));
        const QJsonObject answer = server.response();
        QStringList labels;
        for (const QJsonValue& item : answer["result"]["items"].toArray())
            labels << item["label"].toString();
        return labels;
    };
    const auto report = [&](int type) {
        server.send(ServerProcess::notification(
            "workspace/didChangeWatchedFiles", {{"changes", QJsonArray{QJsonObject{{"uri", late}, {"type", type}}}}}));
    };
    write("Late.NSObject.klvr", "' l\nPublic Dim size As Integer\nDim hidden As Integer\n");
    server.send(ServerProcess::notification(
        "textDocument/didOpen", {{"textDocument", QJsonObject{{"uri", late}, {"languageId", "kelvaro"}, {"version", 1},
                                                              {"text", "' l\nPublic Dim size As Integer\n"}}}}));
    EXPECT_EQ(membersOfLater(), QStringList{"size"}) << "opened in the editor";
    server.send(ServerProcess::notification("textDocument/didClose", {{"textDocument", QJsonObject{{"uri", late}}}}));
    EXPECT_EQ(membersOfLater(), QStringList{"size"}) << "as stored, after closing";
    write("Late.NSObject.klvr", "' l\nPublic Dim width As Integer\n");
    report(2);
    EXPECT_EQ(membersOfLater(), QStringList{"width"}) << "changed on disk";
    ASSERT_TRUE(QFile::remove(folder.path() + "/Late.NSObject.klvr"));
    report(3);
    EXPECT_EQ(membersOfLater(), QStringList{}) << "deleted";
    write("Late.NSObject.klvr", "' l\nPublic Dim depth As Integer\n");
    report(1);
    EXPECT_EQ(membersOfLater(), QStringList{"depth"}) << "created again";
}

} // namespace
