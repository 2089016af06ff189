#pragma once
// An owner for editor views that answers like the application controller and records
// every call it receives.

#include <QObject>
#include <QString>
#include <QStringList>

namespace editor_test {

// An owner that answers like the application controller and records every call.
class RecordingOwner : public QObject {
    Q_OBJECT
public:
    QStringList calls;
    QStringList candidates = {"Add(item As id)", "Count", "count2", "Remove(i As Integer)"};
    QString completion2 = "MsgBox(text As String)";

    Q_INVOKABLE void KLVR_TextDidChange(QObject* view) { calls << "change:" + view->objectName(); }
    Q_INVOKABLE void KLVR_TextViewDidChangeSelection(QObject*) { calls << "selection"; }
    Q_INVOKABLE QStringList KLVR_TextView_GetCompletion(QObject*, const QString& expression) {
        calls << "completion:" + expression;
        return candidates;
    }
    Q_INVOKABLE QString KLVR_TextView_GetCompletion2(QObject*, const QString& word) {
        calls << "completion2:" + word;
        return completion2;
    }
    Q_INVOKABLE bool textView_shouldChangeTextInRange(QObject*, qint64 location, qint64 length,
                                                      const QString& text) {
        calls << QStringLiteral("should:%1:%2:%3").arg(location).arg(length).arg(text);
        return true;
    }
};

} // namespace editor_test
