#include "tools/lang/interpreter.h"

#include "tools/lang/diagnostic.h"
#include "tools/lang/lexer.h"

#include <cmath>

namespace klvr {

namespace {

const char* builtinName(Builtin fn) {
    switch (fn) {
    case Builtin::Len: return "Len";
    case Builtin::Left: return "Left";
    case Builtin::Right: return "Right";
    case Builtin::Mid: return "Mid";
    case Builtin::InStr: return "InStr";
    case Builtin::UCase: return "UCase";
    case Builtin::LCase: return "LCase";
    case Builtin::Trim: return "Trim";
    case Builtin::Str: return "Str";
    case Builtin::Val: return "Val";
    case Builtin::Alert: return "Alert";
    case Builtin::MsgBox: return "MsgBox";
    case Builtin::Print: return "Print";
    }
    return "?";
}

// Clamps a count or position from the program into the range of a QString.
qsizetype clampSize(std::int64_t n, qsizetype max) {
    if (n < 0)
        return 0;
    return n > static_cast<std::int64_t>(max) ? max : static_cast<qsizetype>(n);
}

}  // namespace

Value LocalExpr::eval(Interpreter& in) const { return in.locals[slot]; }
Value FieldExpr::eval(Interpreter& in) const { return in.fields[static_cast<std::size_t>(slot)]; }

Value UnaryExpr::eval(Interpreter& in) const {
    const Value v = operand->eval(in);
    return isNot ? logicalNot(v) : negate(v);
}

Value BinaryExpr::eval(Interpreter& in) const {
    // And and Or on Booleans stop as soon as the left side decides.
    if (op == BinOp::And || op == BinOp::Or) {
        Value a = left->eval(in);
        if (a.type == VType::Boolean && a.b == (op == BinOp::Or))
            return a;
        return binary(op, a, right->eval(in));
    }
    const Value a = left->eval(in);
    return binary(op, a, right->eval(in));
}

Value CallExpr::eval(Interpreter& in) const { return in.call(*this); }

Value UnsupportedExpr::eval(Interpreter&) const { throw RuntimeFailure(what); }

Value BuiltinExpr::eval(Interpreter& in) const {
    std::size_t minArgs = 1, maxArgs = 1;
    switch (fn) {
    case Builtin::Left: case Builtin::Right: minArgs = maxArgs = 2; break;
    case Builtin::Mid: minArgs = 2; maxArgs = 3; break;
    case Builtin::InStr: minArgs = 2; maxArgs = 4; break;
    case Builtin::Alert: case Builtin::MsgBox: maxArgs = 2; break;
    case Builtin::Print: minArgs = 0; break;
    default: break;
    }
    if (args.size() < minArgs || args.size() > maxArgs)
        throw RuntimeFailure(std::string("Wrong number of arguments for ") + builtinName(fn));
    Value v[4];
    for (std::size_t i = 0; i < args.size(); ++i)
        v[i] = args[i]->eval(in);
    switch (fn) {
    case Builtin::Len:
        return Value::ofInteger(textOf(v[0]).size());
    case Builtin::Left: {
        const QString s = textOf(v[0]);
        return Value::ofString(s.left(clampSize(integerOf(v[1]), s.size())));
    }
    case Builtin::Right: {
        const QString s = textOf(v[0]);
        return Value::ofString(s.right(clampSize(integerOf(v[1]), s.size())));
    }
    case Builtin::Mid: {
        const QString s = textOf(v[0]);
        const qsizetype start = clampSize(integerOf(v[1]), s.size());
        const qsizetype length = args.size() == 3 ? clampSize(integerOf(v[2]), s.size() - start) : s.size() - start;
        return Value::ofString(s.mid(start, length));
    }
    case Builtin::InStr: {
        const QString s = textOf(v[0]);
        const qsizetype start = args.size() >= 3 ? clampSize(integerOf(v[2]), s.size()) : 0;
        const bool matchCase = args.size() == 4 ? truthOf(v[3]) : true;
        return Value::ofInteger(s.indexOf(textOf(v[1]), start, matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive));
    }
    case Builtin::UCase: return Value::ofString(textOf(v[0]).toUpper());
    case Builtin::LCase: return Value::ofString(textOf(v[0]).toLower());
    case Builtin::Trim: return Value::ofString(textOf(v[0]).trimmed());
    case Builtin::Str: return Value::ofString(textOf(v[0]));
    case Builtin::Val: return numberFromText(textOf(v[0]));
    case Builtin::Alert:
    case Builtin::MsgBox:
    case Builtin::Print:
        // A message box shows its title and its text; here each is a line of output.
        if (args.empty())
            in.print(QString());
        for (std::size_t i = 0; i < args.size(); ++i)
            if (i == 0 || !textOf(v[i]).isEmpty())
                in.print(textOf(v[i]));
        return Value();
    }
    return Value();
}

Flow AssignStmt::exec(Interpreter& in) const {
    Value v = value ? convertTo(type, value->eval(in)) : defaultOf(type);
    if (field)
        in.fields[static_cast<std::size_t>(slot)] = std::move(v);
    else
        in.locals[slot] = std::move(v);
    return Flow::Normal;
}

Flow ExprStmt::exec(Interpreter& in) const {
    expr->eval(in);
    return Flow::Normal;
}

Flow IfStmt::exec(Interpreter& in) const {
    for (std::size_t i = 0; i < conditions.size(); ++i) {
        in.line = conditions[i]->line;
        if (truthOf(conditions[i]->eval(in)))
            return in.execBlock(branches[i]);
    }
    return in.execBlock(elseBranch);
}

Flow ForStmt::exec(Interpreter& in) const {
    const Value first = convertTo(type, from->eval(in));
    const Value last = to->eval(in);
    const Value increment = step ? step->eval(in) : Value::ofInteger(1);
    const auto finish = [](Flow f) { return f == Flow::ExitFor ? Flow::Normal : f; };
    if (first.type == VType::Integer && last.type == VType::Integer && increment.type == VType::Integer) {
        std::int64_t i = first.i;
        const std::int64_t end = last.i, by = increment.i;
        while (by >= 0 ? i <= end : i >= end) {
            in.tick();  // an empty body still counts
            in.locals[slot] = Value::ofInteger(i);
            const Flow f = in.execBlock(body);
            if (f != Flow::Normal)
                return finish(f);
            // The body may change the counter; the loop goes on from its value.
            const Value& now = in.locals[slot];
            i = now.type == VType::Integer ? now.i : integerOf(now);
            if (__builtin_add_overflow(i, by, &i))
                break;
            in.line = line;
        }
        in.locals[slot] = Value::ofInteger(i);
        return Flow::Normal;
    }
    // Fractional bounds or steps count in Double.
    const auto number = [](const Value& v) {
        if (v.type == VType::Integer) return static_cast<double>(v.i);
        if (v.type == VType::Double) return v.d;
        if (v.type == VType::Nil) return 0.0;
        throw RuntimeFailure("Type mismatch");
    };
    double x = number(first);
    const double end = number(last), by = number(increment);
    while (by >= 0 ? x <= end : x >= end) {
        in.tick();
        in.locals[slot] = convertTo(type, Value::ofDouble(x));
        const Flow f = in.execBlock(body);
        if (f != Flow::Normal)
            return finish(f);
        x = number(in.locals[slot]) + by;
        in.line = line;
    }
    in.locals[slot] = convertTo(type, Value::ofDouble(x));
    return Flow::Normal;
}

Flow WhileStmt::exec(Interpreter& in) const {
    for (;;) {
        in.tick();
        in.line = line;
        if (!truthOf(condition->eval(in)))
            return Flow::Normal;
        const Flow f = in.execBlock(body);
        if (f == Flow::ExitWhile)
            return Flow::Normal;
        if (f != Flow::Normal)
            return f;
    }
}

Flow DoStmt::exec(Interpreter& in) const {
    for (;;) {
        in.tick();
        in.line = line;
        if (preCondition && truthOf(preCondition->eval(in)) == preUntil)
            return Flow::Normal;
        const Flow f = in.execBlock(body);
        if (f == Flow::ExitDo)
            return Flow::Normal;
        if (f != Flow::Normal)
            return f;
        if (postCondition && truthOf(postCondition->eval(in)) == postUntil)
            return Flow::Normal;
    }
}

Flow SelectStmt::exec(Interpreter& in) const {
    const Value value = subject->eval(in);
    const auto finish = [](Flow f) { return f == Flow::ExitSelect ? Flow::Normal : f; };
    for (std::size_t i = 0; i < tests.size(); ++i) {
        for (const CaseTest& test : tests[i]) {
            bool hit = false;
            switch (test.kind) {
            case CaseTest::Equal:
                hit = binary(BinOp::Eq, value, test.a->eval(in)).b;
                break;
            case CaseTest::Range:
                hit = binary(BinOp::Ge, value, test.a->eval(in)).b && binary(BinOp::Le, value, test.b->eval(in)).b;
                break;
            case CaseTest::Compare:
                hit = binary(test.compare, value, test.a->eval(in)).b;
                break;
            }
            if (hit)
                return finish(in.execBlock(branches[i]));
        }
    }
    return hasElse ? finish(in.execBlock(elseBranch)) : Flow::Normal;
}

Flow TryStmt::exec(Interpreter& in) const {
    const Flow f = in.execBlock(body);
    const Flow after = in.execBlock(finallyBlock);
    return after != Flow::Normal ? after : f;
}

Flow ReturnStmt::exec(Interpreter& in) const {
    in.returnValue = value ? value->eval(in) : Value();
    return Flow::Return;
}

Flow UnsupportedStmt::exec(Interpreter&) const { throw RuntimeFailure(what); }

Interpreter::Interpreter(const ClassUnit& unitToRun, Options options) : unit(unitToRun), options_(std::move(options)) {
    fields.reserve(unit.fields.size());
    for (const Field& field : unit.fields)
        fields.push_back(defaultOf(field.type));
}

Flow Interpreter::execBlock(const Block& block) {
    struct Nesting {
        int& depth;
        explicit Nesting(int& d, int max) : depth(d) {
            if (++depth > max) {
                --depth;
                throw RuntimeFailure("Too many nested calls");
            }
        }
        ~Nesting() { --depth; }
    } nesting(blockDepth_, options_.maxBlockDepth);
    for (const StmtPtr& stmt : block) {
        tick();
        line = stmt->line;
        const Flow f = stmt->exec(*this);
        if (f != Flow::Normal)
            return f;
    }
    return Flow::Normal;
}

Value Interpreter::call(const CallExpr& callExpr) {
    const Method& method = unit.methods[static_cast<std::size_t>(callExpr.method)];
    if (callExpr.args.size() > method.params.size())
        throw RuntimeFailure("Wrong number of arguments for " + method.name);
    for (std::size_t i = callExpr.args.size(); i < method.params.size(); ++i)
        if (!method.params[i].defaultValue)
            throw RuntimeFailure("Wrong number of arguments for " + method.name);
    if (depth_ >= options_.maxCallDepth)
        throw RuntimeFailure("Too many nested calls");
    std::vector<Value> frame(method.localTypes.size());
    for (std::size_t i = 0; i < frame.size(); ++i)
        frame[i] = defaultOf(method.localTypes[i]);
    // Arguments are evaluated in the caller's frame, default values in the callee's,
    // where the parameters before them already hold their values.
    for (std::size_t i = 0; i < callExpr.args.size(); ++i) {
        const Param& param = method.params[i];
        frame[static_cast<std::size_t>(param.slot)] = convertTo(param.type, callExpr.args[i]->eval(*this));
    }
    const int callerLine = line;
    Value* callerLocals = locals;
    locals = frame.data();
    ++depth_;
    Flow f;
    try {
        for (std::size_t i = callExpr.args.size(); i < method.params.size(); ++i) {
            const Param& param = method.params[i];
            frame[static_cast<std::size_t>(param.slot)] = convertTo(param.type, param.defaultValue->eval(*this));
        }
        f = execBlock(method.body);
    } catch (...) {
        --depth_;
        locals = callerLocals;
        throw;  // line stays at the failing statement
    }
    --depth_;
    locals = callerLocals;
    line = callerLine;
    if (f == Flow::EndProgram)
        throw ProgramEnd{};
    Value result;
    if (f == Flow::Return) {
        result = std::move(returnValue);
        returnValue = Value();
    }
    return method.kind == MethodKind::Function || method.kind == MethodKind::Delegate
               ? (result.type == VType::Nil && method.resultType != DeclType::Variant ? defaultOf(method.resultType)
                                                                                       : convertTo(method.resultType, std::move(result)))
               : Value();
}

void Interpreter::run() {
    try {
        std::vector<Value> noLocals;
        locals = noLocals.data();
        const Flow f = execBlock(unit.fieldInits);
        if (f == Flow::EndProgram)
            return;
        for (std::size_t i = 0; i < unit.methods.size(); ++i) {
            const Method& method = unit.methods[i];
            if (method.kind == MethodKind::Event && lowerName(method.name) == "awakefromnib") {
                CallExpr start;
                start.line = method.line;
                start.method = static_cast<int>(i);
                call(start);
                break;
            }
        }
    } catch (const ProgramEnd&) {
    } catch (const RuntimeFailure& failure) {
        throw LanguageError(Diagnostic{failure.what(), line, unit.file});
    }
}

}  // namespace klvr
