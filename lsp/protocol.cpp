#include "lsp/protocol.h"

#include <QJsonValue>
#include <QUrl>

namespace lsp {

QString pathOfUri(const QString& uri) {
    const QUrl url(uri);
    return url.isLocalFile() ? url.toLocalFile() : QString();
}

QString uriOfPath(const QString& path) { return QString::fromUtf8(QUrl::fromLocalFile(path).toEncoded()); }

TextPosition positionOf(const QJsonValue& position) {
    return {qsizetype(position[QLatin1String("line")].toInteger(0)),
            qsizetype(position[QLatin1String("character")].toInteger(0))};
}

QJsonObject positionJson(TextPosition position) {
    return {{QStringLiteral("line"), qint64(position.line)}, {QStringLiteral("character"), qint64(position.character)}};
}

QJsonObject rangeJson(TextPosition start, TextPosition end) {
    return {{QStringLiteral("start"), positionJson(start)}, {QStringLiteral("end"), positionJson(end)}};
}

QJsonObject lineRange(const TextDocument& document, qsizetype line) {
    return rangeJson({line, 0}, {line, document.lineText(line).size()});
}

bool isMethodKind(const QString& kind) {
    return kind != QLatin1String("Dim") && kind != QLatin1String("IBOutlet") && kind != QLatin1String("Const");
}

int symbolKindOf(const QString& kind) {
    if (kind == QLatin1String("Const"))
        return ConstantSymbol;
    return isMethodKind(kind) ? MethodSymbol : FieldSymbol;
}

} // namespace lsp
