// Neovim's own language client (headless) against the real `kelvaro --lsp`, with the
// configuration lines the README gives, over a project of three classes: Global with
// Public members, a chain across two classes, a file with CRLF line ends and one with
// letters beyond ASCII and beyond the Basic Multilingual Plane. Each step of the table
// is one thing the client does; its check is what the server must have answered.
#include "server_process.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

#include <functional>

namespace {

// A declaration on a file's first line is not one (the scanner looks for a line break
// before each), so every file starts with a comment.
const char* const globalText =
    "' Shop\n"
    "Public Dim text As NSString\n"
    "Public Dim shop As Basket\n"
    "Dim hidden As Integer\n"
    "\n"
    "Event AwakeFromNib()\n"
    "  Dim count As Integer\n"
    "  shop = New Basket\n"
    "  shop.Add(\"caf\xc3\xa9\")\n"
    "  Print(shop.owner.Greet(\"you\"))\n"
    "  count = 1\n"
    "End Event\n";
// CRLF line ends.
const char* const basketText =
    "' Basket\r\n"
    "Public Dim owner As Customer\r\n"
    "Public Sub Add(item As String)\r\n"
    "  Dim total As Integer\r\n"
    "  total = 1\r\n"
    "End Sub\r\n"
    "\r\n"
    "Private Sub Forget()\r\n"
    "End Sub\r\n";
// On line 4 `name` starts at UTF-16 column 22 and byte column 26: "ü" and "ß" are one
// unit and two bytes each, "😀" two units and four bytes.
const char* const customerText =
    "' Kund\xc3\xa9 \xe2\x80\x94 \xc3\xbc\n"
    "Public Dim name As NSString\n"
    "\n"
    "Public Function Greet(who As String) As String\n"
    "  Return \"Gr\xc3\xbc\xc3\x9f \xf0\x9f\x98\x80 \" & name\n"
    "End Function\n";

struct Step {
    QJsonObject action;
    std::function<void(const QJsonValue& answer)> check; // empty: nothing to check
};

QJsonObject open(const QString& file) { return {{"op", "open"}, {"file", file}}; }
QJsonObject ask(const char* method, int line, int character) {
    return {{"op", "request"}, {"method", method}, {"line", line}, {"character", character}};
}
QJsonObject edit(int line, int col, int endLine, int endCol, const QStringList& lines) {
    return {{"op", "edit"},          {"line", line}, {"col", col}, {"end_line", endLine}, {"end_col", endCol},
            {"lines", QJsonArray::fromStringList(lines)}};
}

QStringList labels(const QJsonValue& completion) {
    QStringList texts;
    for (const QJsonValue& item : completion["items"].toArray())
        texts << item["label"].toString();
    return texts;
}

// Lists compared as one readable text.
std::string joined(const QStringList& texts) { return texts.join(" | ").toStdString(); }

// The README's Neovim lines, as written there.
QString readmeNeovimLines() {
    QFile readme(QStringLiteral(KELVARO_SOURCE_DIR "/README.md"));
    if (!readme.open(QIODevice::ReadOnly))
        return {};
    const QString text = QString::fromUtf8(readme.readAll());
    const qsizetype section = text.indexOf("## Kelvaro in other editors");
    const QRegularExpression block("```lua\\n(.*?)```", QRegularExpression::DotMatchesEverythingOption);
    return block.match(text, section < 0 ? 0 : section).captured(1);
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

TEST(LspNeovim, EveryCapabilityOverAProject) {
    const QString nvim = QStandardPaths::findExecutable("nvim");
    if (nvim.isEmpty())
        GTEST_SKIP() << "Neovim (Debian package neovim) is not installed";
    QTemporaryDir temp;
    const QString project = temp.path() + QStringLiteral("/Shop \xc3\xa9 project");
    ASSERT_TRUE(QDir().mkpath(project));
    const QString global = project + "/Global.NSObject.klvr";
    const QString basket = project + "/Basket.NSObject.klvr";
    const QString customer = project + "/Customer.NSObject.klvr";
    writeFile(global, globalText);
    writeFile(basket, basketText);
    writeFile(customer, customerText);
    const QString config = readmeNeovimLines();
    ASSERT_TRUE(config.contains("--lsp"));
    writeFile(temp.path() + "/init.lua", config.toUtf8());

    const auto locationIs = [](const QString& file, int line, int character) {
        return [=](const QJsonValue& answer) {
            const QJsonValue location = answer.isArray() ? answer[0] : answer;
            EXPECT_EQ(QUrl(location["uri"].toString()).toLocalFile(), file);
            EXPECT_EQ(location["range"]["start"]["line"].toInt(), line);
            EXPECT_EQ(location["range"]["start"]["character"].toInt(), character);
        };
    };
    const auto hoverHas = [](const QString& text) {
        return [=](const QJsonValue& answer) {
            EXPECT_TRUE(answer["contents"]["value"].toString().contains(text)) << qPrintable(answer["contents"]["value"].toString());
        };
    };
    const auto completionIs = [](const QStringList& expected) {
        return [=](const QJsonValue& answer) { EXPECT_EQ(joined(labels(answer)), joined(expected)); };
    };
    // Each diagnostic as "line: message".
    const auto diagnosticsAre = [](const QStringList& expected) {
        return [=](const QJsonValue& answer) {
            QStringList got;
            for (const QJsonValue& d : answer.toArray())
                got << QString::number(d["line"].toInt()) + ": " + d["message"].toString();
            EXPECT_EQ(joined(got), joined(expected));
        };
    };

    const std::vector<Step> steps = {
        {open(global), [](const QJsonValue& a) { ASSERT_TRUE(a.toBool()) << "the server never attached"; }},
        // Document symbols: kinds, and the method holding its local.
        {ask("textDocument/documentSymbol", 0, 0),
         [](const QJsonValue& a) {
             QStringList got;
             for (const QJsonValue& s : a.toArray()) {
                 got << s["name"].toString() + ":" + QString::number(s["kind"].toInt());
                 for (const QJsonValue& c : s["children"].toArray())
                     got << s["name"].toString() + "/" + c["name"].toString() + ":" + QString::number(c["kind"].toInt());
             }
             EXPECT_EQ(joined(got), joined({"text:8", "shop:8", "hidden:8", "AwakeFromNib:6", "AwakeFromNib/count:13"}));
         }},
        // Completion after "shop." is Basket's Public members; after "shop.owner." Customer's.
        {ask("textDocument/completion", 8, 7), completionIs({"owner", "Add(item As String)"})},
        {ask("textDocument/completion", 9, 19), completionIs({"name", "Greet(who As String)"})},
        {ask("textDocument/completion", 8, 5), [](const QJsonValue& a) {
             EXPECT_TRUE(labels(a).contains("shop")); // the first letter filters as the IDE's list does
             EXPECT_FALSE(labels(a).contains("text"));
         }},
        // Definition: a chain across classes, a Global Public member, a local, a class.
        {ask("textDocument/definition", 9, 22), locationIs(customer, 3, 16)},
        {ask("textDocument/definition", 7, 3), locationIs(global, 2, 11)},
        {ask("textDocument/definition", 10, 3), locationIs(global, 6, 6)},
        {ask("textDocument/definition", 7, 14), locationIs(basket, 0, 0)},
        {ask("textDocument/hover", 9, 13), hoverHas("Public Dim owner As Customer")},
        {ask("textDocument/hover", 1, 13), hoverHas("Public Dim text As NSString")},
        {ask("textDocument/hover", 9, 22), hoverHas("Public Function Greet(who As String) As String")},
        {ask("textDocument/hover", 10, 3), hoverHas("Dim count As Integer")},
        // The CRLF file: positions do not count the "\r".
        {open(basket), nullptr},
        {ask("textDocument/definition", 4, 3), locationIs(basket, 3, 6)},
        {ask("textDocument/completion", 4, 2), [](const QJsonValue& a) {
             EXPECT_TRUE(labels(a).contains("Forget()")); // own Private members too
         }},
        // Beyond ASCII: Neovim sends the edit made at a byte column in UTF-16 units.
        {open(customer), nullptr},
        {ask("textDocument/definition", 4, 23), locationIs(customer, 1, 11)},
        {edit(4, 26, 4, 26, {"me."}), nullptr}, // typed before `name`
        {ask("textDocument/completion", 4, 25), completionIs({"name", "Greet(who As String)"})},
        {ask("textDocument/hover", 4, 26), hoverHas("Public Dim name As NSString")},
        // A built-in function typed in any letter case: its completion text first, inserted
        // in place of the partial word.
        {edit(5, 0, 5, 0, {"  msgb", ""}), nullptr},
        {ask("textDocument/completion", 5, 6), [](const QJsonValue& a) {
             const QJsonValue first = a["items"][0];
             EXPECT_EQ(first["label"].toString(), "MsgBox(text)");
             EXPECT_EQ(first["kind"].toInt(), 3);
             EXPECT_EQ(first["textEdit"]["newText"].toString(), "MsgBox(text)");
             EXPECT_EQ(first["textEdit"]["range"]["start"]["character"].toInt(), 2);
         }},
        // Workspace symbols from every file.
        {{{"op", "request"}, {"method", "workspace/symbol"}, {"query", "gre"}},
         [&](const QJsonValue& a) {
             ASSERT_EQ(a.toArray().size(), 1);
             EXPECT_EQ(a[0]["name"].toString(), "Greet");
             locationIs(customer, 3, 0)(a[0]["location"]);
         }},
        // Diagnostics: the checker's error on the line typed, gone when it is fixed.
        {open(global), nullptr},
        {{{"op", "diagnostics"}, {"wait", 1200}}, diagnosticsAre({})},
        {edit(10, 0, 10, 0, {"  Next", ""}), nullptr},
        {{{"op", "diagnostics"}, {"wait", 1200}}, diagnosticsAre({"10: Next without For"})},
        {edit(10, 0, 11, 0, {""}), nullptr},
        {{{"op", "diagnostics"}, {"wait", 1200}}, diagnosticsAre({})},
    };

    QJsonArray actions;
    for (const Step& step : steps)
        actions.append(step.action);
    const QString stepsFile = temp.path() + "/steps.json";
    const QString answersFile = temp.path() + "/answers.json";
    writeFile(stepsFile, QJsonDocument(actions).toJson());

    QProcess neovim;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", QFileInfo(ServerProcess::executable()).absolutePath() + ":" + environment.value("PATH"));
    environment.insert("KELVARO_STEPS", stepsFile);
    environment.insert("KELVARO_ANSWERS", answersFile);
    environment.insert("XDG_STATE_HOME", temp.path() + "/state");
    environment.insert("XDG_CACHE_HOME", temp.path() + "/cache");
    neovim.setProcessEnvironment(environment);
    neovim.setWorkingDirectory(project);
    neovim.start(nvim, {"--headless", "-n", "-i", "NONE", "-u", temp.path() + "/init.lua", "-c",
                        "luafile " KELVARO_NEOVIM_DRIVER});
    ASSERT_TRUE(neovim.waitForFinished(120000)) << neovim.readAllStandardError().constData();
    QFile answersJson(answersFile);
    ASSERT_TRUE(answersJson.open(QIODevice::ReadOnly)) << neovim.readAllStandardError().constData();
    const QJsonArray answers = QJsonDocument::fromJson(answersJson.readAll()).array();
    ASSERT_EQ(answers.size(), qsizetype(steps.size()));
    for (size_t i = 0; i < steps.size(); ++i) {
        SCOPED_TRACE(QString("step %1: %2").arg(i).arg(QString::fromUtf8(QJsonDocument(steps[i].action).toJson(QJsonDocument::Compact))).toStdString());
        if (steps[i].check)
            steps[i].check(answers[qsizetype(i)]);
    }
}

} // namespace
