// The runner's values: Integer (64-bit), Double, String, Boolean and Nil, with the
// language's operators and conversions. Errors are thrown as RuntimeFailure and get
// their line and file from the interpreter.
#pragma once

#include <QString>

#include <cstdint>
#include <stdexcept>

namespace klvr {

enum class VType : std::uint8_t { Nil, Integer, Double, String, Boolean };

// The declared type of a variable; Variant takes whatever is assigned.
enum class DeclType : std::uint8_t { Variant, Integer, Double, String, Boolean };

struct RuntimeFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Value {
    VType type = VType::Nil;
    union {
        std::int64_t i;
        double d;
        bool b;
    };
    QString s;

    Value() : i(0) {}
    static Value ofInteger(std::int64_t v) { Value r; r.type = VType::Integer; r.i = v; return r; }
    static Value ofDouble(double v) { Value r; r.type = VType::Double; r.d = v; return r; }
    static Value ofBoolean(bool v) { Value r; r.type = VType::Boolean; r.b = v; return r; }
    static Value ofString(QString v) { Value r; r.type = VType::String; r.s = std::move(v); return r; }
};

enum class BinOp : std::uint8_t {
    Add, Sub, Mul, Div, IntDiv, Mod, Pow, Concat, Eq, Ne, Lt, Gt, Le, Ge, And, Or, Xor, Is
};

// The text form used by Str, Print and concatenation: 42, 3.5, True, "" for Nil.
QString textOf(const Value& v);
Value binary(BinOp op, const Value& a, const Value& b);
Value negate(const Value& v);
Value logicalNot(const Value& v);
// The truth of a condition: Booleans, and numbers other than 0.
bool truthOf(const Value& v);
// Converts a value for a variable of the declared type (Integer, Double, String, Boolean).
Value convertTo(DeclType type, Value v);
Value defaultOf(DeclType type);
// Reads a number from text as Val does: leading blanks skipped, as much as forms a number.
Value numberFromText(const QString& text);
// Integer form for counts and positions given to the string functions.
std::int64_t integerOf(const Value& v);

}  // namespace klvr
