#include "tools/lang/value.h"

#include <cmath>
#include <limits>

namespace klvr {

namespace {

bool isNumeric(const Value& v) { return v.type == VType::Integer || v.type == VType::Double || v.type == VType::Nil; }

[[noreturn]] void overflow() { throw RuntimeFailure("Overflow"); }

std::int64_t checkedAdd(std::int64_t a, std::int64_t b) {
    std::int64_t r;
    if (__builtin_add_overflow(a, b, &r))
        overflow();
    return r;
}
std::int64_t checkedSub(std::int64_t a, std::int64_t b) {
    std::int64_t r;
    if (__builtin_sub_overflow(a, b, &r))
        overflow();
    return r;
}
std::int64_t checkedMul(std::int64_t a, std::int64_t b) {
    std::int64_t r;
    if (__builtin_mul_overflow(a, b, &r))
        overflow();
    return r;
}

[[noreturn]] void mismatch() { throw RuntimeFailure("Type mismatch"); }

std::int64_t roundToInteger(double d) {
    if (!std::isfinite(d) || d >= 9.2233720368547758e18 || d < -9.2233720368547758e18)
        throw RuntimeFailure("Overflow");
    return static_cast<std::int64_t>(std::llround(d));
}

int compareValues(const Value& a, const Value& b) {
    if (a.type == VType::Object || b.type == VType::Object) {
        if (a.type == b.type && a.o == b.o)
            return 0;
        mismatch();
    }
    if (isNumeric(a) && isNumeric(b)) {
        if (a.type == VType::Integer && b.type == VType::Integer)
            return a.i < b.i ? -1 : (a.i > b.i ? 1 : 0);
        const double x = doubleOf(a), y = doubleOf(b);
        return x < y ? -1 : (x > y ? 1 : 0);
    }
    const bool aText = a.type == VType::String || a.type == VType::Nil;
    const bool bText = b.type == VType::String || b.type == VType::Nil;
    if (aText && bText) {
        const int c = QString::compare(a.str(), b.str(), Qt::CaseSensitive);
        return c < 0 ? -1 : (c > 0 ? 1 : 0);
    }
    if (a.type == VType::Boolean && b.type == VType::Boolean)
        return a.b == b.b ? 0 : (a.b ? 1 : -1);
    mismatch();
}

const QString& emptyText() {
    static const QString empty;
    return empty;
}

}  // namespace

QString objectText(const HeapObj* object);  // objects.cpp

Value Value::ofString(QString v) { return ofObject(new StrObj(std::move(v))); }

const QString& Value::str() const {
    return type == VType::String ? static_cast<const StrObj*>(o)->text : emptyText();
}

double doubleOf(const Value& v) {
    switch (v.type) {
    case VType::Integer: return static_cast<double>(v.i);
    case VType::Double: return v.d;
    default: return 0.0;
    }
}

bool valuesEqual(const Value& a, const Value& b) {
    if (a.type == VType::Object || b.type == VType::Object)
        return a.type == b.type && a.o == b.o;
    if ((a.type == VType::Boolean) != (b.type == VType::Boolean))
        return false;
    if ((a.type == VType::String) != (b.type == VType::String) && a.type != VType::Nil && b.type != VType::Nil)
        return false;
    return compareValues(a, b) == 0;
}

QString textOf(const Value& v) {
    switch (v.type) {
    case VType::Nil: return QString();
    case VType::Integer: return QString::number(v.i);
    case VType::Double: return QString::number(v.d, 'g', 15);
    case VType::String: return v.str();
    case VType::Boolean: return v.b ? QStringLiteral("True") : QStringLiteral("False");
    case VType::Object: return objectText(v.o);
    }
    return QString();
}

Value binary(BinOp op, const Value& a, const Value& b) {
    switch (op) {
    case BinOp::Concat:
        return Value::ofString(textOf(a) + textOf(b));
    case BinOp::Add:
        if (a.type == VType::String || b.type == VType::String)
            return Value::ofString(textOf(a) + textOf(b));
        [[fallthrough]];
    case BinOp::Sub:
    case BinOp::Mul: {
        if (!isNumeric(a) || !isNumeric(b))
            mismatch();
        if (a.type != VType::Double && b.type != VType::Double) {
            const std::int64_t x = a.type == VType::Integer ? a.i : 0, y = b.type == VType::Integer ? b.i : 0;
            return Value::ofInteger(op == BinOp::Add ? checkedAdd(x, y) : op == BinOp::Sub ? checkedSub(x, y) : checkedMul(x, y));
        }
        const double x = doubleOf(a), y = doubleOf(b);
        return Value::ofDouble(op == BinOp::Add ? x + y : op == BinOp::Sub ? x - y : x * y);
    }
    case BinOp::Div: {
        if (!isNumeric(a) || !isNumeric(b))
            mismatch();
        const double y = doubleOf(b);
        if (y == 0.0)
            throw RuntimeFailure("Division by zero");
        return Value::ofDouble(doubleOf(a) / y);
    }
    case BinOp::IntDiv:
    case BinOp::Mod: {
        if (!isNumeric(a) || !isNumeric(b))
            mismatch();
        if (op == BinOp::Mod && (a.type == VType::Double || b.type == VType::Double)) {
            const double y = doubleOf(b);
            if (y == 0.0)
                throw RuntimeFailure("Division by zero");
            return Value::ofDouble(std::fmod(doubleOf(a), y));
        }
        const std::int64_t x = a.type == VType::Double ? roundToInteger(a.d) : (a.type == VType::Integer ? a.i : 0);
        const std::int64_t y = b.type == VType::Double ? roundToInteger(b.d) : (b.type == VType::Integer ? b.i : 0);
        if (y == 0)
            throw RuntimeFailure("Division by zero");
        if (y == -1)  // the smallest value divided by -1 is the one that overflows
            return Value::ofInteger(op == BinOp::Mod ? 0 : checkedSub(0, x));
        return Value::ofInteger(op == BinOp::Mod ? x % y : x / y);
    }
    case BinOp::Pow:
        if (!isNumeric(a) || !isNumeric(b))
            mismatch();
        return Value::ofDouble(std::pow(doubleOf(a), doubleOf(b)));
    case BinOp::Is:
        // "x Is Nil": Nil is only itself; objects are only themselves; other values
        // compare as with =.
        if (a.type == VType::Nil || b.type == VType::Nil)
            return Value::ofBoolean(a.type == b.type);
        if (a.type == VType::Object || b.type == VType::Object)
            return Value::ofBoolean(a.type == b.type && a.o == b.o);
        return Value::ofBoolean(compareValues(a, b) == 0);
    case BinOp::Eq: return Value::ofBoolean(a.type == VType::Object || b.type == VType::Object ? valuesEqual(a, b) : compareValues(a, b) == 0);
    case BinOp::Ne: return Value::ofBoolean(a.type == VType::Object || b.type == VType::Object ? !valuesEqual(a, b) : compareValues(a, b) != 0);
    case BinOp::Lt: return Value::ofBoolean(compareValues(a, b) < 0);
    case BinOp::Gt: return Value::ofBoolean(compareValues(a, b) > 0);
    case BinOp::Le: return Value::ofBoolean(compareValues(a, b) <= 0);
    case BinOp::Ge: return Value::ofBoolean(compareValues(a, b) >= 0);
    case BinOp::And:
    case BinOp::Or:
    case BinOp::Xor:
        if (a.type == VType::Boolean && b.type == VType::Boolean)
            return Value::ofBoolean(op == BinOp::And ? (a.b && b.b) : op == BinOp::Or ? (a.b || b.b) : (a.b != b.b));
        if (a.type == VType::Integer && b.type == VType::Integer)
            return Value::ofInteger(op == BinOp::And ? (a.i & b.i) : op == BinOp::Or ? (a.i | b.i) : (a.i ^ b.i));
        mismatch();
    }
    mismatch();
}

Value negate(const Value& v) {
    switch (v.type) {
    case VType::Integer: return Value::ofInteger(checkedSub(0, v.i));
    case VType::Double: return Value::ofDouble(-v.d);
    case VType::Nil: return Value::ofInteger(0);
    default: mismatch();
    }
}

Value logicalNot(const Value& v) {
    if (v.type == VType::Boolean)
        return Value::ofBoolean(!v.b);
    if (v.type == VType::Integer)
        return Value::ofInteger(~v.i);
    mismatch();
}

bool truthOf(const Value& v) {
    switch (v.type) {
    case VType::Boolean: return v.b;
    case VType::Integer: return v.i != 0;
    case VType::Double: return v.d != 0.0;
    case VType::Nil: return false;
    case VType::String:
    case VType::Object: break;
    }
    mismatch();
}

Value numberFromText(const QString& text) {
    int start = 0;
    while (start < text.size() && (text[start] == u' ' || text[start] == u'\t'))
        ++start;
    int end = start;
    if (end < text.size() && (text[end] == u'-' || text[end] == u'+'))
        ++end;
    const int digitsFrom = end;
    while (end < text.size() && text[end].isDigit() && text[end].unicode() < 128)
        ++end;
    bool real = false;
    if (end < text.size() && text[end] == u'.') {
        int k = end + 1;
        while (k < text.size() && text[k].unicode() >= '0' && text[k].unicode() <= '9')
            ++k;
        if (k > end + 1 || end > digitsFrom) {
            real = k > end + 1;
            end = k;
        }
    }
    if (end == digitsFrom)
        return Value::ofInteger(0);
    if (end < text.size() && (text[end] == u'e' || text[end] == u'E')) {
        int k = end + 1;
        if (k < text.size() && (text[k] == u'-' || text[k] == u'+'))
            ++k;
        if (k < text.size() && text[k].unicode() >= '0' && text[k].unicode() <= '9') {
            while (k < text.size() && text[k].unicode() >= '0' && text[k].unicode() <= '9')
                ++k;
            real = true;
            end = k;
        }
    }
    const QString number = text.mid(start, end - start);
    if (!real) {
        bool ok = false;
        const qlonglong n = number.toLongLong(&ok);
        if (ok)
            return Value::ofInteger(n);
    }
    return Value::ofDouble(number.toDouble());
}

std::int64_t integerOf(const Value& v) {
    switch (v.type) {
    case VType::Integer: return v.i;
    case VType::Double: return roundToInteger(v.d);
    case VType::Nil: return 0;
    default: mismatch();
    }
}

Value convertTo(DeclType type, Value v) {
    switch (type) {
    case DeclType::Variant:
        return v;
    case DeclType::Integer:
        if (v.type == VType::Integer)
            return v;
        if (v.type == VType::String) {
            const Value n = numberFromText(v.str());
            return Value::ofInteger(n.type == VType::Integer ? n.i : roundToInteger(n.d));
        }
        if (v.type == VType::Boolean || v.type == VType::Object)
            mismatch();
        return Value::ofInteger(integerOf(v));
    case DeclType::Double:
        if (v.type == VType::String)
            v = numberFromText(v.str());
        if (v.type == VType::Boolean || v.type == VType::Object)
            mismatch();
        return Value::ofDouble(doubleOf(v));
    case DeclType::String:
        return v.type == VType::String ? v : Value::ofString(textOf(v));
    case DeclType::Boolean:
        if (v.type == VType::String) {
            if (v.str().compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
                return Value::ofBoolean(true);
            if (v.str().compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
                return Value::ofBoolean(false);
            mismatch();
        }
        return Value::ofBoolean(truthOf(v));
    }
    return v;
}

Value defaultOf(DeclType type) {
    switch (type) {
    case DeclType::Integer: return Value::ofInteger(0);
    case DeclType::Double: return Value::ofDouble(0.0);
    case DeclType::String: {
        // One shared empty text; its count starts so high that it never reaches 0.
        static const Value empty = [] {
            Value v = Value::ofString(QString(""));
            v.o->refs += std::int64_t{1} << 60;
            return v;
        }();
        return empty;
    }
    case DeclType::Boolean: return Value::ofBoolean(false);
    case DeclType::Variant: break;
    }
    return Value();
}

}  // namespace klvr
