#include "frame/value.h"

#include <QMetaObject>

Value::Value(const QStringList& strings) : data_(std::make_shared<ValueArray>()) {
    auto& list = *std::get<std::shared_ptr<ValueArray>>(data_);
    list.reserve(strings.size());
    for (const QString& s : strings)
        list.append(Value(s));
}

Value Value::bytes(const QByteArray& raw) { return Value(Data(Bytes{raw})); }

Value Value::array(ValueArray items) { return Value(Data(std::make_shared<ValueArray>(std::move(items)))); }

Value Value::dictionary() { return Value(Data(std::make_shared<ValueDictionary>())); }

static QString formatDouble(double d) {
    // Whole numbers print without a fraction, as the language prints them.
    return QString::number(d, 'g', 15);
}

QString Value::toString() const {
    switch (kind()) {
    case Kind::Nil:
        return QString();
    case Kind::String:
        return std::get<QString>(data_);
    case Kind::Integer:
        return QString::number(std::get<qint64>(data_));
    case Kind::Double:
        return formatDouble(std::get<double>(data_));
    case Kind::Boolean:
        return std::get<bool>(data_) ? QStringLiteral("true") : QStringLiteral("false");
    case Kind::Bytes:
        return QString::fromUtf8(std::get<Bytes>(data_).raw);
    case Kind::Array:
    case Kind::Dictionary:
    case Kind::Object:
        return description();
    }
    return QString();
}

QString Value::description() const {
    switch (kind()) {
    case Kind::Nil:
        return QStringLiteral("(null)");
    case Kind::Array: {
        QStringList parts;
        for (const Value& v : items())
            parts << (v.isString() ? QLatin1Char('"') + v.toString() + QLatin1Char('"') : v.description());
        return QStringLiteral("(") + parts.join(QStringLiteral(", ")) + QStringLiteral(")");
    }
    case Kind::Dictionary: {
        const ValueDictionary& d = entries();
        QStringList parts;
        for (qsizetype i = 0; i < d.count(); ++i)
            parts << d.keyAt(i) + QStringLiteral(" = ") + d.valueAt(i).description();
        return QStringLiteral("{") + parts.join(QStringLiteral("; ")) + QStringLiteral("}");
    }
    case Kind::Object: {
        QObject* o = object();
        if (!o)
            return QStringLiteral("(null)");
        QString text = QStringLiteral("<%1: 0x%2>")
                           .arg(QLatin1String(o->metaObject()->className()))
                           .arg(quintptr(o), 0, 16);
        if (!o->objectName().isEmpty())
            text.insert(text.size() - 1, QStringLiteral(" ") + o->objectName());
        return text;
    }
    default:
        return toString();
    }
}

qint64 Value::toInteger() const {
    switch (kind()) {
    case Kind::Integer:
        return std::get<qint64>(data_);
    case Kind::Double:
        return qint64(std::get<double>(data_));
    case Kind::Boolean:
        return std::get<bool>(data_) ? 1 : 0;
    case Kind::String:
    case Kind::Bytes: {
        bool ok = false;
        qint64 n = toString().trimmed().toLongLong(&ok);
        return ok ? n : 0;
    }
    default:
        return 0;
    }
}

double Value::toDouble() const {
    switch (kind()) {
    case Kind::Integer:
        return double(std::get<qint64>(data_));
    case Kind::Double:
        return std::get<double>(data_);
    case Kind::Boolean:
        return std::get<bool>(data_) ? 1.0 : 0.0;
    case Kind::String:
    case Kind::Bytes: {
        bool ok = false;
        double d = toString().trimmed().toDouble(&ok);
        return ok ? d : 0.0;
    }
    default:
        return 0.0;
    }
}

bool Value::toBool() const {
    switch (kind()) {
    case Kind::Boolean:
        return std::get<bool>(data_);
    case Kind::Integer:
        return std::get<qint64>(data_) != 0;
    case Kind::Double:
        return std::get<double>(data_) != 0.0;
    case Kind::Nil:
        return false;
    case Kind::Object:
        return object() != nullptr;
    default:
        return true;
    }
}

QObject* Value::object() const {
    if (kind() != Kind::Object)
        return nullptr;
    return std::get<ObjectRef>(data_).object.data();
}

QByteArray Value::rawBytes() const {
    if (kind() == Kind::Bytes)
        return std::get<Bytes>(data_).raw;
    return toString().toUtf8();
}

ValueArray& Value::items() const {
    if (kind() == Kind::Array)
        return *std::get<std::shared_ptr<ValueArray>>(data_);
    thread_local ValueArray empty;
    empty.clear();
    return empty;
}

ValueDictionary& Value::entries() const {
    if (kind() == Kind::Dictionary)
        return *std::get<std::shared_ptr<ValueDictionary>>(data_);
    thread_local ValueDictionary empty;
    empty.clear();
    return empty;
}

QStringList Value::toStringList() const {
    QStringList out;
    for (const Value& v : items())
        out << v.toString();
    return out;
}

bool Value::operator==(const Value& other) const {
    if (isNumber() && other.isNumber()) {
        if (isInteger() && other.isInteger())
            return toInteger() == other.toInteger();
        return toDouble() == other.toDouble();
    }
    if (kind() != other.kind())
        return false;
    switch (kind()) {
    case Kind::Nil:
        return true;
    case Kind::String:
        return std::get<QString>(data_) == std::get<QString>(other.data_);
    case Kind::Boolean:
        return std::get<bool>(data_) == std::get<bool>(other.data_);
    case Kind::Array:
        return std::get<std::shared_ptr<ValueArray>>(data_) == std::get<std::shared_ptr<ValueArray>>(other.data_);
    case Kind::Dictionary:
        return std::get<std::shared_ptr<ValueDictionary>>(data_) ==
               std::get<std::shared_ptr<ValueDictionary>>(other.data_);
    case Kind::Object:
        return object() == other.object();
    case Kind::Bytes:
        return std::get<Bytes>(data_).raw == std::get<Bytes>(other.data_).raw;
    default:
        return false;
    }
}

Value ValueDictionary::value(const QString& key) const {
    auto it = index_.constFind(key);
    return it == index_.constEnd() ? Value() : values_.at(*it);
}

void ValueDictionary::insert(const QString& key, const Value& value) {
    auto it = index_.constFind(key);
    if (it != index_.constEnd()) {
        values_[*it] = value;
        return;
    }
    index_.insert(key, keys_.size());
    keys_.append(key);
    values_.append(value);
}

void ValueDictionary::remove(const QString& key) {
    auto it = index_.constFind(key);
    if (it == index_.constEnd())
        return;
    qsizetype at = *it;
    keys_.removeAt(at);
    values_.removeAt(at);
    index_.clear();
    for (qsizetype i = 0; i < keys_.size(); ++i)
        index_.insert(keys_.at(i), i);
}

void ValueDictionary::clear() {
    keys_.clear();
    values_.clear();
    index_.clear();
}
