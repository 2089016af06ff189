// The tree a source file is compiled to. Names are resolved when the tree is built:
// variables are slots in the method's frame or the class's fields, calls point at the
// method by index, so running the tree does no look-up by name.
#pragma once

#include "tools/lang/node_pool.h"
#include "tools/lang/value.h"

#include <memory>
#include <string>
#include <vector>

namespace klvr {

class Interpreter;

struct Expr : PooledNode {
    int line = 0;
    int height = 1;  // levels of the tree below and including this node
    virtual ~Expr() = default;
    virtual Value eval(Interpreter& in) const = 0;
};
using ExprPtr = std::unique_ptr<Expr>;

// What a statement asks of the statements around it after it ran.
enum class Flow : std::uint8_t { Normal, Return, ExitFor, ExitWhile, ExitDo, ExitSelect, EndProgram };

struct Stmt : PooledNode {
    int line = 0;
    virtual ~Stmt() = default;
    virtual Flow exec(Interpreter& in) const = 0;
};
using StmtPtr = std::unique_ptr<Stmt>;
using Block = std::vector<StmtPtr>;

// ---- expressions ----

struct LiteralExpr : Expr {
    Value value;
    Value eval(Interpreter&) const override { return value; }
};

struct LocalExpr : Expr {
    int slot = 0;
    Value eval(Interpreter& in) const override;
};

// A field of the current object (Me).
struct FieldExpr : Expr {
    int slot = 0;
    Value eval(Interpreter& in) const override;
};

// A Public field of Global used by its plain name from another class.
struct GlobalFieldExpr : Expr {
    int slot = 0;
    Value eval(Interpreter& in) const override;
};

// Me; as Super, members are looked up from the superclass of the running method's class.
struct MeExpr : Expr {
    bool isSuper = false;
    Value eval(Interpreter& in) const override;
};

struct RtClass;

// New Array, New Dictionary, New ClassName(arguments for its Init).
struct NewExpr : Expr {
    enum Kind : std::uint8_t { Array, Dictionary, Class } kind = Class;
    std::string className;  // lower case
    std::vector<ExprPtr> args;
    Value eval(Interpreter& in) const override;
};

struct UnaryExpr : Expr {
    bool isNot = false;  // otherwise a minus
    ExprPtr operand;
    Value eval(Interpreter& in) const override;
};

struct BinaryExpr : Expr {
    BinOp op = BinOp::Add;
    ExprPtr left, right;
    Value eval(Interpreter& in) const override;
};

// A call of a method of the current object (or of Global) by its plain name. The
// method is looked up in the object's class, so a subclass's override is the one
// called; the last class seen and its method are kept.
// A local variable and a whole-number constant (n - 1, i < 10): the most common
// operation of loops and recursion, read without copying the variable. Returns null
// for an operator it does not cover.
ExprPtr makeLocalConstant(BinOp op, int slot, std::int64_t constant);

struct CallExpr : Expr {
    std::string name;  // lower case
    bool onGlobal = false;
    std::vector<ExprPtr> args;
    mutable const RtClass* cachedClass = nullptr;
    mutable const void* cachedMethod = nullptr;
    Value eval(Interpreter& in) const override;
};

// Members of Arrays, Dictionaries and errors, known by name when the tree is built.
enum class CollMember : std::uint8_t {
    None, Append, Insert, InsertObject, Remove, RemoveAt, RemoveObject, RemoveAll, RemoveLast, Count, IndexOf,
    ObjectAt, Replace, Contains, First, Last, Join, HasKey, Keys, Values, ObjectForKey, SetObject, Message, Name
};

// object.member or object.member(arguments): a method or field of an object of the
// program, or a member of an Array, a Dictionary or an error.
struct MemberExpr : Expr {
    ExprPtr object;
    std::string name;  // lower case
    std::string written;
    bool hasArgs = false;
    bool onSuper = false;  // Super.member
    CollMember builtin = CollMember::None;
    std::vector<ExprPtr> args;
    mutable const RtClass* cachedClass = nullptr;
    mutable const void* cachedMethod = nullptr;
    mutable int cachedSlot = -1;
    Value eval(Interpreter& in) const override;
};

// list(i) and dictionary(key).
struct IndexExpr : Expr {
    ExprPtr target, index;
    Value eval(Interpreter& in) const override;
};

enum class Builtin : std::uint8_t {
    Len, Left, Right, Mid, InStr, UCase, LCase, Trim, Str, Val, Alert, MsgBox, Print,
    LTrim, RTrim, InStrRev, Replace, Split, Join, StrReverse, StrComp, Space, Chr, Asc, Hex, Oct,
    Abs, Sqr, Int, Fix, Round, Sgn, Rnd, Randomize, Sin, Cos, Tan, Atn, Exp, Log, Min, Max,
    CStr, CInt, CLng, CDbl, CBool, IsNumeric, IsNil, IsArray, UBound, LBound,
    Now, Today, Timer, Year, Month, Day, Hour, Minute, Second, Weekday, DateAdd, DateDiff,
    Sleep, ReadString, WriteString, FileExists, FolderExists
};

struct BuiltinExpr : Expr {
    Builtin fn = Builtin::Len;
    std::vector<ExprPtr> args;
    Value eval(Interpreter& in) const override;
};

// Something the checker accepts but the runner cannot do (members of objects, library
// classes, arrays); it fails only when it is reached.
struct UnsupportedExpr : Expr {
    std::string what;
    std::vector<ExprPtr> parts;  // kept so that their names were checked
    Value eval(Interpreter& in) const override;
};

// ---- statements ----

struct AssignStmt : Stmt {
    enum Target : std::uint8_t { Local, Field, GlobalField } target = Local;
    int slot = 0;
    DeclType type = DeclType::Variant;
    ExprPtr value;  // null for a Dim without a start value: the slot gets its default
    Flow exec(Interpreter& in) const override;
};

struct ExprStmt : Stmt {
    ExprPtr expr;
    Flow exec(Interpreter& in) const override;
};

struct IfStmt : Stmt {
    std::vector<ExprPtr> conditions;  // If and every Else If
    std::vector<Block> branches;      // one per condition
    Block elseBranch;
    Flow exec(Interpreter& in) const override;
};

struct ForStmt : Stmt {
    int slot = 0;
    bool field = false;  // the counter is a field of the current object
    DeclType type = DeclType::Variant;
    ExprPtr from, to, step;  // step may be null (1)
    Block body;
    Flow exec(Interpreter& in) const override;
};

struct WhileStmt : Stmt {
    ExprPtr condition;
    Block body;
    Flow exec(Interpreter& in) const override;
};

struct DoStmt : Stmt {
    ExprPtr preCondition, postCondition;  // either may be null
    bool preUntil = false, postUntil = false;
    Block body;
    Flow exec(Interpreter& in) const override;
};

struct CaseTest {
    enum Kind : std::uint8_t { Equal, Range, Compare } kind = Equal;
    BinOp compare = BinOp::Eq;
    ExprPtr a, b;
};

struct SelectStmt : Stmt {
    ExprPtr subject;
    std::vector<std::vector<CaseTest>> tests;  // one list per Case
    std::vector<Block> branches;
    bool hasElse = false;
    Block elseBranch;
    Flow exec(Interpreter& in) const override;
};

struct SetMemberStmt : Stmt {
    std::unique_ptr<MemberExpr> target;
    ExprPtr value;
    Flow exec(Interpreter& in) const override;
};

struct SetIndexStmt : Stmt {
    ExprPtr target, index, value;
    Flow exec(Interpreter& in) const override;
};

// For Each item In list: the elements of an Array, the keys of a Dictionary.
struct ForEachStmt : Stmt {
    int slot = 0;
    DeclType type = DeclType::Variant;
    ExprPtr collection;
    Block body;
    Flow exec(Interpreter& in) const override;
};

// Try … Catch e … Finally … End Try. A runtime error in the Try part runs the Catch
// part with e holding the error; the Finally part runs however the others end.
struct TryStmt : Stmt {
    Block body, catchBlock, finallyBlock;
    bool hasCatch = false;
    int catchSlot = -1;  // the local that receives the error, or -1
    Flow exec(Interpreter& in) const override;
};

struct ThrowStmt : Stmt {
    ExprPtr value;  // an error, or any value whose text is the message; null rethrows
    Flow exec(Interpreter& in) const override;
};

struct ReturnStmt : Stmt {
    ExprPtr value;  // may be null
    Flow exec(Interpreter& in) const override;
};

struct FlowStmt : Stmt {
    Flow flow = Flow::Normal;  // Exit For, Exit While, Exit Do, Exit Sub (Return), End
    Flow exec(Interpreter&) const override { return flow; }
};

struct UnsupportedStmt : Stmt {
    std::string what;
    std::vector<ExprPtr> parts;
    Flow exec(Interpreter& in) const override;
};

// ---- declarations ----

enum class MethodKind : std::uint8_t { Sub, Function, Action, Event, Delegate, IBAction };

struct Param {
    int slot = 0;
    DeclType type = DeclType::Variant;
    ExprPtr defaultValue;  // null when the argument is required
};

struct Method {
    std::string name;
    MethodKind kind = MethodKind::Sub;
    bool isPublic = false;
    int line = 0;
    std::vector<Param> params;
    DeclType resultType = DeclType::Variant;
    std::vector<DeclType> localTypes;  // every slot, parameters first
    Block body;
};

struct Field {
    std::string name;
    bool isPublic = false;
    int line = 0;
    DeclType type = DeclType::Variant;
};

// One compiled source file (one class).
struct ClassUnit {
    std::string file;  // relative to the project folder
    std::string className, superName;  // from the file name <Class>.<SuperClass>.klvr
    int inheritedFields = 0;  // the superclass's fields come first; own slots follow
    std::vector<Field> fields;  // own fields only
    std::vector<Method> methods;
    Block fieldInits;  // class-level start values, run before the first event
};

}  // namespace klvr
