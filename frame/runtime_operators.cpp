// Conversions and the language's operators on boxed values.
#include "frame/runtime.h"

#include <QMetaObject>

qint64 KLVR_INTEGER(const Value& v, bool) { return v.toInteger(); }

bool KLVR_BOOLEAN(const Value& v, bool) {
    if (v.isString())
        return v.toString().compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || v.toInteger() != 0;
    return v.toBool();
}

QString KLVR_CLASSNAME(const QObject* object) {
    return object ? QString::fromLatin1(object->metaObject()->className()) : QString();
}

static Value checkedKind(const Value& v, bool ok, const char* kind) {
    if (v.isNil() || ok)
        return v;
    KLVR_EXCEPTION(QStringLiteral("KLCastException"), QStringLiteral("'%1' expected").arg(QLatin1String(kind)),
                   v.description());
}

Value KLVR__STRING(const Value& v) { return checkedKind(v, v.isString(), "String"); }
Value KLVR__INTEGER(const Value& v) { return checkedKind(v, v.isInteger(), "Integer"); }
Value KLVR__BOOLEAN(const Value& v) { return checkedKind(v, v.isBoolean(), "Boolean"); }
Value KLVR__ARRAY(const Value& v) { return checkedKind(v, v.isArray(), "Array"); }
Value KLVR__DICTIONARY(const Value& v) { return checkedKind(v, v.isDictionary(), "Dictionary"); }

static bool isText(const Value& v) { return v.isString() || v.isBytes(); }

Value KLVR_ADD(const Value& a, const Value& b) {
    if (isText(a) || isText(b))
        return Value(a.toString() + b.toString());
    if (a.isArray() && b.isArray())
        return Value::array(a.items() + b.items());
    if (a.isInteger() && b.isInteger())
        return Value(a.toInteger() + b.toInteger());
    return Value(a.toDouble() + b.toDouble());
}

Value KLVR_CONCAT(const Value& a, const Value& b) { return Value(a.toString() + b.toString()); }

Value KLVR_SUB(const Value& a, const Value& b) {
    if (a.isInteger() && b.isInteger())
        return Value(a.toInteger() - b.toInteger());
    return Value(a.toDouble() - b.toDouble());
}

Value KLVR_MUL(const Value& a, const Value& b) {
    if (a.isInteger() && b.isInteger())
        return Value(a.toInteger() * b.toInteger());
    return Value(a.toDouble() * b.toDouble());
}

Value KLVR_DIV(const Value& a, const Value& b) {
    if (a.isInteger() && b.isInteger()) {
        if (b.toInteger() == 0)
            KLVR_EXCEPTION(QStringLiteral("KLArithmeticException"), QStringLiteral("Division by zero"));
        return Value(a.toInteger() / b.toInteger());
    }
    return Value(a.toDouble() / b.toDouble());
}

Value KLVR_MINUS(const Value& a) {
    if (a.isDouble())
        return Value(-a.toDouble());
    return Value(-a.toInteger());
}

bool KLVR_EQUAL(const Value& a, const Value& b) { return a == b; }
bool KLVR_UNEQUAL(const Value& a, const Value& b) { return !(a == b); }

// Orders numbers by value and strings by their text (exact, case-sensitive).
static int compareValues(const Value& a, const Value& b) {
    if (isText(a) && isText(b))
        return a.toString().compare(b.toString(), Qt::CaseSensitive);
    if (a.isInteger() && b.isInteger())
        return a.toInteger() < b.toInteger() ? -1 : (a.toInteger() > b.toInteger() ? 1 : 0);
    double x = a.toDouble(), y = b.toDouble();
    return x < y ? -1 : (x > y ? 1 : 0);
}

bool KLVR_SMALLER(const Value& a, const Value& b) { return compareValues(a, b) < 0; }
bool KLVR_GREATER(const Value& a, const Value& b) { return compareValues(a, b) > 0; }
bool KLVR_SMALLEREQUAL(const Value& a, const Value& b) { return compareValues(a, b) <= 0; }

Value KLVR_NOT(const Value& a) { return Value(!a.toBool()); }

Value KLVR_AND(const Value& a, const Value& b) {
    if (a.isInteger() && b.isInteger())
        return Value(a.toInteger() & b.toInteger());
    return Value(a.toBool() && b.toBool());
}

Value KLVR_OR(const Value& a, const Value& b) {
    if (a.isInteger() && b.isInteger())
        return Value(a.toInteger() | b.toInteger());
    return Value(a.toBool() || b.toBool());
}

bool KLVR_ANDALSO(const Value& a, const Value& b) { return a.toBool() && b.toBool(); }
