#pragma once
// The boxed, shared value that dynamic data passes around in: vocabulary tables,
// property-list content, represented objects, output chunks. Arrays and dictionaries
// are shared by reference (copying a Value copies the reference, as in the language);
// strings, numbers and flags are plain values. Fields whose type is fixed are typed
// C++ instead.

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <memory>
#include <variant>

class Value;
using ValueArray = QList<Value>;
class ValueDictionary;

class Value {
public:
    enum class Kind { Nil, String, Integer, Double, Boolean, Array, Dictionary, Object, Bytes };

    Value() = default; // nil
    Value(const QString& s) : data_(s) {}
    Value(const char* s) : data_(QString::fromUtf8(s)) {}
    Value(int i) : data_(qint64(i)) {}
    Value(long i) : data_(qint64(i)) {}
    Value(long long i) : data_(qint64(i)) {}
    Value(unsigned long i) : data_(qint64(i)) {}
    Value(double d) : data_(d) {}
    Value(bool b) : data_(b) {}
    Value(QObject* o) : data_(o ? Data(ObjectRef{o}) : Data()) {}
    Value(const QStringList& strings);
    static Value bytes(const QByteArray& raw);
    static Value array(ValueArray items = {});
    static Value dictionary();

    Kind kind() const { return Kind(data_.index()); }
    bool isNil() const { return kind() == Kind::Nil; }
    bool isString() const { return kind() == Kind::String; }
    bool isInteger() const { return kind() == Kind::Integer; }
    bool isDouble() const { return kind() == Kind::Double; }
    bool isNumber() const { return isInteger() || isDouble(); }
    bool isBoolean() const { return kind() == Kind::Boolean; }
    bool isArray() const { return kind() == Kind::Array; }
    bool isDictionary() const { return kind() == Kind::Dictionary; }
    bool isObject() const { return kind() == Kind::Object; }
    bool isBytes() const { return kind() == Kind::Bytes; }

    // The text form (KLVR_STRING): strings as they are, numbers in decimal, Booleans
    // "true"/"false", raw output bytes decoded as UTF-8, nil "", collections and
    // objects their description.
    QString toString() const;
    // The description text (KLVR_INFO).
    QString description() const;
    qint64 toInteger() const;   // numbers, Booleans, decimal text; otherwise 0
    double toDouble() const;
    bool toBool() const;        // KLVR_CBOOL: a Boolean as it is, a number when not 0
    QObject* object() const;    // nil when not an object or when it was destroyed
    QByteArray rawBytes() const;

    // Shared content; empty (and detached) when the value is not of that kind.
    ValueArray& items() const;
    ValueDictionary& entries() const;
    QStringList toStringList() const; // an Array's elements as text

    // Identity of shared content (arrays, dictionaries, objects) or equal plain values.
    bool operator==(const Value& other) const;
    bool operator!=(const Value& other) const { return !(*this == other); }

private:
    struct ObjectRef {
        QPointer<QObject> object;
    };
    struct Bytes {
        QByteArray raw;
    };
    using Data = std::variant<std::monostate, QString, qint64, double, bool, std::shared_ptr<ValueArray>,
                              std::shared_ptr<ValueDictionary>, ObjectRef, Bytes>;
    explicit Value(Data d) : data_(std::move(d)) {}
    Data data_;
};

// A dictionary that keeps its insertion order, which is its enumeration order.
// Keys are compared by their text.
class ValueDictionary {
public:
    qsizetype count() const { return keys_.size(); }
    bool contains(const QString& key) const { return index_.contains(key); }
    Value value(const QString& key) const; // nil when absent
    void insert(const QString& key, const Value& value); // replaces an existing entry in place
    void remove(const QString& key);
    void clear();
    const QString& keyAt(qsizetype i) const { return keys_.at(i); }
    const Value& valueAt(qsizetype i) const { return values_.at(i); }

private:
    QStringList keys_;
    ValueArray values_;
    QHash<QString, qsizetype> index_;
};

Q_DECLARE_METATYPE(Value)
