// The runner's values: Integer (64-bit), Double, Boolean and Nil held unboxed in a
// 16-byte Value, and Strings and objects (instances of the program's classes, Arrays,
// Dictionaries, errors) held through a reference-counted pointer. Errors are thrown as
// RuntimeFailure and get their line and file from the interpreter.
#pragma once

#include <QString>

#include <cstdint>
#include <stdexcept>

namespace klvr {

enum class VType : std::uint8_t { Nil, Integer, Double, Boolean, String, Object };

// The declared type of a variable; Variant takes whatever is assigned.
enum class DeclType : std::uint8_t { Variant, Integer, Double, String, Boolean };

struct HeapObj;
void releaseObject(HeapObj* object) noexcept;

// What every string and object has in common: a count of the Values that refer to it.
struct HeapObj {
    std::int64_t refs = 0;
    enum class Kind : std::uint8_t { String, Instance, Array, Dictionary, Error } kind;
    explicit HeapObj(Kind k) : kind(k) {}
    virtual ~HeapObj() = default;
    HeapObj(const HeapObj&) = delete;
    HeapObj& operator=(const HeapObj&) = delete;
};

struct StrObj : HeapObj {
    QString text;
    explicit StrObj(QString t) : HeapObj(Kind::String), text(std::move(t)) {}
};

struct Value {
    VType type = VType::Nil;
    union {
        std::int64_t i;
        double d;
        bool b;
        HeapObj* o;
    };

    Value() : i(0) {}
    Value(const Value& v) : type(v.type), i(v.i) {
        if (type >= VType::String)
            ++o->refs;
    }
    Value(Value&& v) noexcept : type(v.type), i(v.i) { v.type = VType::Nil; }
    Value& operator=(const Value& v) {
        if (v.type >= VType::String)
            ++v.o->refs;
        drop();
        type = v.type;
        i = v.i;
        return *this;
    }
    Value& operator=(Value&& v) noexcept {
        if (this != &v) {
            drop();
            type = v.type;
            i = v.i;
            v.type = VType::Nil;
        }
        return *this;
    }
    ~Value() { drop(); }

    static Value ofInteger(std::int64_t v) { Value r; r.type = VType::Integer; r.i = v; return r; }
    static Value ofDouble(double v) { Value r; r.type = VType::Double; r.d = v; return r; }
    static Value ofBoolean(bool v) { Value r; r.type = VType::Boolean; r.b = v; return r; }
    static Value ofString(QString v);
    static Value ofObject(HeapObj* object) {
        Value r;
        r.type = object->kind == HeapObj::Kind::String ? VType::String : VType::Object;
        r.o = object;
        ++object->refs;
        return r;
    }

    // The text of a String value; an empty text for any other value.
    const QString& str() const;
    bool isObject(HeapObj::Kind k) const { return type == VType::Object && o->kind == k; }

private:
    void drop() noexcept {
        if (type >= VType::String && --o->refs == 0)
            releaseObject(o);
    }
};

struct RuntimeFailure : std::runtime_error {
    // A fatal failure (a step limit, the end of the memory budget) is never caught by
    // the program's Try.
    explicit RuntimeFailure(const std::string& what, bool fatal = false) : std::runtime_error(what), fatal(fatal) {}
    RuntimeFailure(const std::string& what, Value thrown) : std::runtime_error(what), payload(std::move(thrown)) {}
    bool fatal = false;
    Value payload;  // what Throw raised; Nil for the runner's own errors
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
// True when a value needs no conversion for a variable of the type.
inline bool matchesType(DeclType type, const Value& v) {
    switch (type) {
    case DeclType::Variant: return true;
    case DeclType::Integer: return v.type == VType::Integer;
    case DeclType::Double: return v.type == VType::Double;
    case DeclType::String: return v.type == VType::String;
    case DeclType::Boolean: return v.type == VType::Boolean;
    }
    return false;
}
Value defaultOf(DeclType type);
// Reads a number from text as Val does: leading blanks skipped, as much as forms a number.
Value numberFromText(const QString& text);
// Integer form for counts and positions given to the string functions.
std::int64_t integerOf(const Value& v);
double doubleOf(const Value& v);
// Equality as = compares; objects are equal only to themselves.
bool valuesEqual(const Value& a, const Value& b);

}  // namespace klvr
