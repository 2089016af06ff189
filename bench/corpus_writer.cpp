#include "corpus_writer.h"

#include <QRandomGenerator>
#include <QStringList>

namespace {

class ClassWriter {
public:
    ClassWriter(const QString& className, quint32 startValue) : className_(className), random_(startValue) {}

    QByteArray write(int lines) {
        line("' " + className_ + " - generated for measurements");
        line("' Holds the state of one window and answers its actions.");
        line("");
        const int fields = 4 + pickNumber(8);
        for (int i = 0; i < fields; ++i)
            field(i);
        line("");
        for (int method = 0; count_ < lines; ++method)
            this->method(method);
        return out_;
    }

private:
    QString pick(const QStringList& from) { return from.at(random_.bounded(int(from.size()))); }
    int pickNumber(int below) { return int(random_.bounded(below)); }
    void line(const QString& text) {
        out_ += text.toUtf8();
        out_ += '\n';
        ++count_;
    }
    QString type() { return pick({"Integer", "String", "Double", "Boolean", "NSArray", "NSDictionary", "NSView"}); }
    QString name(const char* stem, int i) { return QString::fromLatin1(stem) + QString::number(i); }

    void field(int i) {
        switch (pickNumber(4)) {
        case 0: line("Dim " + name("count", i) + " As " + type()); break;
        case 1: line("Private Dim " + name("cache", i) + " As " + type() + " ' kept between calls"); break;
        case 2: line("Const " + name("LIMIT", i) + " = " + QString::number(pickNumber(1000))); break;
        default: line("IBOutlet " + name("field", i) + " As NSTextField"); break;
        }
    }

    QString parameters() {
        QStringList list;
        const int n = pickNumber(4);
        for (int i = 0; i < n; ++i)
            list << name("arg", i) + (pickNumber(5) ? " As " + type() : QString());
        return "(" + list.join(", ") + ")";
    }

    void body(int statements) {
        for (int s = 0; s < statements; ++s) {
            switch (pickNumber(9)) {
            case 0: line("  Dim " + name("local", s) + " As " + type()); break;
            case 1: line("  Dim " + name("text", s) + " As String = \"it's " + name("value", s) + "\""); break;
            case 2: line("  " + name("local", s) + " = " + name("local", s) + " + 1 ' next"); break;
            case 3:
                line("  If " + name("arg", 0) + " > " + QString::number(pickNumber(50)) + " Then");
                line("    Return");
                line("  End If");
                break;
            case 4: line("  NSLog(\"Value: \" & " + name("count", s % 4) + ")"); break;
            case 5: line("  ' " + pick({"check the input first", "the caller owns the array", "see Start"})); break;
            case 6: line("  For i As Integer = 0 To " + QString::number(pickNumber(100))); line("  Next"); break;
            case 7: line(""); break;
            default: line("  Call Refresh(" + name("arg", 0) + ")"); break;
            }
        }
    }

    void method(int i) {
        const int statements = 3 + pickNumber(12);
        switch (pickNumber(10)) {
        case 0:
        case 1:
        case 2:
            line(pick({"", "Public ", "Private "}) + "Sub " + name("Update", i) + parameters());
            body(statements);
            line("End Sub");
            break;
        case 3:
        case 4:
        case 5:
            line(pick({"", "Public "}) + "Function " + name("Compute", i) + parameters() + " As " + type() +
                 " ' result");
            body(statements);
            line("  Return " + name("local", 0));
            line("End Function");
            break;
        case 6: line("Event " + name("Changed", i) + "(sender As NSObject)"); body(statements); line("End Event"); break;
        case 7: line("IBAction " + name("Click", i) + "(sender)"); body(statements); line("End IBAction"); break;
        case 8: line("Action " + name("Act", i) + "(sender)"); body(statements); line("End Action"); break;
        default:
            line("Delegate " + name("tableView", i) + "(view As NSTableView, row As Integer) As " + type());
            body(statements);
            line("End Delegate");
            break;
        }
        line("");
    }

    QString className_;
    QRandomGenerator random_;
    QByteArray out_;
    int count_ = 0;
};

} // namespace

QByteArray kelvaroClassSource(const QString& className, int lines, quint32 startValue) {
    return ClassWriter(className, startValue).write(lines);
}
