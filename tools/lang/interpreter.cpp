#include "tools/lang/interpreter.h"

#include "tools/lang/diagnostic.h"
#include "tools/lang/lexer.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <functional>
#include <unordered_map>

namespace klvr {

Value LocalExpr::eval(Interpreter& in) const { return in.locals[slot]; }
Value FieldExpr::eval(Interpreter& in) const { return in.self().fields[static_cast<std::size_t>(slot)]; }
Value GlobalFieldExpr::eval(Interpreter& in) const { return in.global().fields[static_cast<std::size_t>(slot)]; }
Value MeExpr::eval(Interpreter& in) const { return *in.selfValue; }

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
    const Value b = right->eval(in);
    // Whole numbers on both sides are the common case; anything unusual (overflow,
    // division by 0 or -1) goes the general way, which reports it.
    if (a.type == VType::Integer && b.type == VType::Integer) {
        std::int64_t r;
        switch (op) {
        case BinOp::Add: if (!__builtin_add_overflow(a.i, b.i, &r)) return Value::ofInteger(r); break;
        case BinOp::Sub: if (!__builtin_sub_overflow(a.i, b.i, &r)) return Value::ofInteger(r); break;
        case BinOp::Mul: if (!__builtin_mul_overflow(a.i, b.i, &r)) return Value::ofInteger(r); break;
        case BinOp::Mod: if (b.i > 0 || b.i < -1) return Value::ofInteger(a.i % b.i); break;
        case BinOp::IntDiv: if (b.i > 0 || b.i < -1) return Value::ofInteger(a.i / b.i); break;
        case BinOp::Eq: return Value::ofBoolean(a.i == b.i);
        case BinOp::Ne: return Value::ofBoolean(a.i != b.i);
        case BinOp::Lt: return Value::ofBoolean(a.i < b.i);
        case BinOp::Gt: return Value::ofBoolean(a.i > b.i);
        case BinOp::Le: return Value::ofBoolean(a.i <= b.i);
        case BinOp::Ge: return Value::ofBoolean(a.i >= b.i);
        default: break;
        }
    }
    return binary(op, a, b);
}

Value UnsupportedExpr::eval(Interpreter&) const { throw RuntimeFailure(what); }

Flow AssignStmt::exec(Interpreter& in) const {
    Value v;
    if (value) {
        v = value->eval(in);
        if (!matchesType(type, v))
            v = convertTo(type, std::move(v));
    } else {
        v = defaultOf(type);
    }
    switch (target) {
    case Local: in.locals[slot] = std::move(v); break;
    case Field: in.self().fields[static_cast<std::size_t>(slot)] = std::move(v); break;
    case GlobalField: in.global().fields[static_cast<std::size_t>(slot)] = std::move(v); break;
    }
    return Flow::Normal;
}

Flow ExprStmt::exec(Interpreter& in) const {
    expr->eval(in);
    return Flow::Normal;
}

Flow IfStmt::exec(Interpreter& in) const {
    for (std::size_t i = 0; i < conditions.size(); ++i) {
        in.line = conditions[i]->line;
        const Value c = conditions[i]->eval(in);
        if (c.type == VType::Boolean ? c.b : truthOf(c))
            return in.execBlock(branches[i]);
    }
    return in.execBlock(elseBranch);
}

Flow ForStmt::exec(Interpreter& in) const {
    // The counter's place is found again after each pass: the body may call methods.
    const auto counter = [&]() -> Value& { return field ? in.self().fields[static_cast<std::size_t>(slot)] : in.locals[slot]; };
    const Value first = convertTo(type, from->eval(in));
    const Value last = to->eval(in);
    const Value increment = step ? step->eval(in) : Value::ofInteger(1);
    const auto finish = [](Flow f) { return f == Flow::ExitFor ? Flow::Normal : f; };
    if (first.type == VType::Integer && last.type == VType::Integer && increment.type == VType::Integer) {
        std::int64_t i = first.i;
        const std::int64_t end = last.i, by = increment.i;
        while (by >= 0 ? i <= end : i >= end) {
            in.tick();  // an empty body still counts
            counter() = Value::ofInteger(i);
            const Flow f = in.execBlock(body);
            if (f != Flow::Normal)
                return finish(f);
            // The body may change the counter; the loop goes on from its value.
            const Value& now = counter();
            i = now.type == VType::Integer ? now.i : integerOf(now);
            if (__builtin_add_overflow(i, by, &i))
                break;
            in.line = line;
        }
        counter() = Value::ofInteger(i);
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
        counter() = convertTo(type, Value::ofDouble(x));
        const Flow f = in.execBlock(body);
        if (f != Flow::Normal)
            return finish(f);
        x = number(counter()) + by;
        in.line = line;
    }
    counter() = convertTo(type, Value::ofDouble(x));
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

namespace {

[[noreturn]] void wrongArguments(const std::string& name) { throw RuntimeFailure("Wrong number of arguments for " + name); }

ArrayObj* asArray(const Value& v) { return v.isObject(HeapObj::Kind::Array) ? static_cast<ArrayObj*>(v.o) : nullptr; }
DictObj* asDict(const Value& v) { return v.isObject(HeapObj::Kind::Dictionary) ? static_cast<DictObj*>(v.o) : nullptr; }
Instance* asInstance(const Value& v) { return v.isObject(HeapObj::Kind::Instance) ? static_cast<Instance*>(v.o) : nullptr; }

[[noreturn]] void notAnObject(const Value& v) {
    if (v.type == VType::Nil)
        throw RuntimeFailure("Object is Nil");
    throw RuntimeFailure("Type mismatch");
}

// How a key is named in an error: strings in quotes.
std::string keyText(const Value& key) {
    const std::string text = textOf(key).left(64).toStdString();
    return key.type == VType::String ? "\"" + text + "\"" : text;
}

Value elementOf(const Value& target, const Value& index) {
    if (ArrayObj* array = asArray(target))
        return array->at(integerOf(index));
    if (DictObj* dict = asDict(target)) {
        if (Value* found = dict->find(index))
            return *found;
        throw RuntimeFailure("Key " + keyText(index) + " not found");
    }
    notAnObject(target);
}

Value newArray() { return Value::ofObject(new ArrayObj); }

// The method or field `name` of the class, checked for visibility from the running class.
void findMember(Interpreter& in, const RtClass* cls, const std::string& name, const std::string& written,
                const void*& method, int& slot) {
    method = nullptr;
    slot = -1;
    const RtClass* owner = nullptr;
    bool isPublic = false;
    if (const auto found = cls->methods.find(name); found != cls->methods.end()) {
        method = &found->second;
        owner = found->second.owner;
        isPublic = found->second.method->isPublic;
    } else if (const auto field = cls->fieldSlots.find(name); field != cls->fieldSlots.end()) {
        slot = field->second;
        const RtClass::FieldRef& ref = cls->fields[static_cast<std::size_t>(slot)];
        owner = ref.owner;
        isPublic = ref.field->isPublic;
    } else {
        throw RuntimeFailure(cls->name + " has no member " + written);
    }
    if (!isPublic && !(in.current && in.current->derivesFrom(owner)))
        throw RuntimeFailure(written + " is Private in " + owner->name);
}

Value arrayMember(Interpreter& in, const MemberExpr& m, ArrayObj& array, const Value& holder) {
    const auto arg = [&](std::size_t i) { return m.args[i]->eval(in); };
    const auto need = [&](std::size_t n) {
        if (m.args.size() != n)
            wrongArguments(m.written);
    };
    switch (m.builtin) {
    case CollMember::Append: need(1); array.append(arg(0)); return Value();
    case CollMember::Insert: { need(2); const std::int64_t i = integerOf(arg(0)); array.insert(i, arg(1)); return Value(); }
    case CollMember::InsertObject: { need(2); Value v = arg(0); array.insert(integerOf(arg(1)), std::move(v)); return Value(); }
    case CollMember::Remove:
    case CollMember::RemoveAt: need(1); array.removeAt(integerOf(arg(0))); return Value();
    case CollMember::RemoveObject: {
        need(1);
        const Value v = arg(0);
        std::vector<Value> kept;
        for (Value& item : array.items)
            if (!valuesEqual(item, v))
                kept.push_back(std::move(item));
        array.items.swap(kept);
        return Value();
    }
    case CollMember::RemoveAll: need(0); { std::vector<Value> dropped; dropped.swap(array.items); } return Value();
    case CollMember::RemoveLast:
        need(0);
        array.removeAt(static_cast<std::int64_t>(array.items.size()) - 1);
        return Value();
    case CollMember::Count: need(0); return Value::ofInteger(static_cast<std::int64_t>(array.items.size()));
    case CollMember::IndexOf:
    case CollMember::Contains: {
        need(1);
        const Value v = arg(0);
        for (std::size_t i = 0; i < array.items.size(); ++i)
            if (valuesEqual(array.items[i], v))
                return m.builtin == CollMember::IndexOf ? Value::ofInteger(static_cast<std::int64_t>(i)) : Value::ofBoolean(true);
        return m.builtin == CollMember::IndexOf ? Value::ofInteger(-1) : Value::ofBoolean(false);
    }
    case CollMember::ObjectAt: need(1); return array.at(integerOf(arg(0)));
    case CollMember::Replace: { need(2); const std::int64_t i = integerOf(arg(0)); Value v = arg(1); array.at(i) = std::move(v); return Value(); }
    case CollMember::First: need(0); return array.items.empty() ? Value() : array.items.front();
    case CollMember::Last: need(0); return array.items.empty() ? Value() : array.items.back();
    case CollMember::Join: {
        need(1);
        const QString separator = textOf(arg(0));
        QString joined;
        for (std::size_t i = 0; i < array.items.size(); ++i) {
            if (i)
                joined += separator;
            joined += textOf(array.items[i]);
        }
        return Value::ofString(joined);
    }
    default: break;
    }
    (void)holder;
    throw RuntimeFailure(m.written + " is not supported by the runner for an Array");
}

Value dictMember(Interpreter& in, const MemberExpr& m, DictObj& dict) {
    const auto arg = [&](std::size_t i) { return m.args[i]->eval(in); };
    const auto need = [&](std::size_t n) {
        if (m.args.size() != n)
            wrongArguments(m.written);
    };
    switch (m.builtin) {
    case CollMember::Count: need(0); return Value::ofInteger(static_cast<std::int64_t>(dict.count()));
    case CollMember::HasKey: need(1); return Value::ofBoolean(dict.find(arg(0)) != nullptr);
    case CollMember::Remove: need(1); dict.remove(arg(0)); return Value();
    case CollMember::RemoveAll: need(0); dict.removeAll(); return Value();
    case CollMember::Keys:
    case CollMember::Values: {
        need(0);
        Value list = newArray();
        auto* array = static_cast<ArrayObj*>(list.o);
        for (const DictObj::Entry& e : dict.entries)
            if (e.alive)
                array->append(m.builtin == CollMember::Keys ? e.key : e.value);
        return list;
    }
    case CollMember::ObjectForKey: {
        need(1);
        const Value* found = dict.find(arg(0));
        return found ? *found : Value();
    }
    case CollMember::SetObject: { need(2); Value v = arg(0); dict.set(arg(1), std::move(v)); return Value(); }
    default: break;
    }
    throw RuntimeFailure(m.written + " is not supported by the runner for a Dictionary");
}

}  // namespace

Value NewExpr::eval(Interpreter& in) const {
    switch (kind) {
    case Array: return newArray();
    case Dictionary: return Value::ofObject(new DictObj);
    case Class: break;
    }
    return in.makeObject(className, args);
}

namespace {

template <BinOp Op>
struct LocalConstantExpr : Expr {
    int slot = 0;
    std::int64_t constant = 0;
    Value eval(Interpreter& in) const override {
        const Value& v = in.locals[slot];
        if (v.type == VType::Integer) {
            std::int64_t r;
            if constexpr (Op == BinOp::Add) {
                if (!__builtin_add_overflow(v.i, constant, &r))
                    return Value::ofInteger(r);
            } else if constexpr (Op == BinOp::Sub) {
                if (!__builtin_sub_overflow(v.i, constant, &r))
                    return Value::ofInteger(r);
            } else if constexpr (Op == BinOp::Mul) {
                if (!__builtin_mul_overflow(v.i, constant, &r))
                    return Value::ofInteger(r);
            } else if constexpr (Op == BinOp::Eq) {
                return Value::ofBoolean(v.i == constant);
            } else if constexpr (Op == BinOp::Ne) {
                return Value::ofBoolean(v.i != constant);
            } else if constexpr (Op == BinOp::Lt) {
                return Value::ofBoolean(v.i < constant);
            } else if constexpr (Op == BinOp::Gt) {
                return Value::ofBoolean(v.i > constant);
            } else if constexpr (Op == BinOp::Le) {
                return Value::ofBoolean(v.i <= constant);
            } else if constexpr (Op == BinOp::Ge) {
                return Value::ofBoolean(v.i >= constant);
            } else if constexpr (Op == BinOp::Mod) {
                if (constant > 0)
                    return Value::ofInteger(v.i % constant);
            }
        }
        return binary(Op, v, Value::ofInteger(constant));
    }
};

template <BinOp Op>
ExprPtr localConstant(int slot, std::int64_t constant) {
    auto expr = std::make_unique<LocalConstantExpr<Op>>();
    expr->slot = slot;
    expr->constant = constant;
    return expr;
}

}  // namespace

ExprPtr makeLocalConstant(BinOp op, int slot, std::int64_t constant) {
    switch (op) {
    case BinOp::Add: return localConstant<BinOp::Add>(slot, constant);
    case BinOp::Sub: return localConstant<BinOp::Sub>(slot, constant);
    case BinOp::Mul: return localConstant<BinOp::Mul>(slot, constant);
    case BinOp::Mod: return localConstant<BinOp::Mod>(slot, constant);
    case BinOp::Eq: return localConstant<BinOp::Eq>(slot, constant);
    case BinOp::Ne: return localConstant<BinOp::Ne>(slot, constant);
    case BinOp::Lt: return localConstant<BinOp::Lt>(slot, constant);
    case BinOp::Gt: return localConstant<BinOp::Gt>(slot, constant);
    case BinOp::Le: return localConstant<BinOp::Le>(slot, constant);
    case BinOp::Ge: return localConstant<BinOp::Ge>(slot, constant);
    default: return nullptr;
    }
}

Value CallExpr::eval(Interpreter& in) const {
    const Value& receiver = onGlobal ? in.globalHolder() : *in.selfValue;
    const RtClass* cls = static_cast<const Instance*>(receiver.o)->cls;
    if (cls != cachedClass) {
        const auto found = cls->methods.find(name);
        if (found == cls->methods.end())
            throw RuntimeFailure(name + " is not supported by the runner");
        cachedMethod = &found->second;
        cachedClass = cls;
    }
    return in.invoke(*static_cast<const RtClass::MethodRef*>(cachedMethod), receiver, args);
}

Value MemberExpr::eval(Interpreter& in) const {
    const Value target = object->eval(in);
    if (Instance* instance = asInstance(target)) {
        // Super.member starts the look-up above the class whose method runs.
        const RtClass* cls = onSuper && in.current->parent ? in.current->parent : instance->cls;
        if (cls != cachedClass) {
            findMember(in, cls, name, written, cachedMethod, cachedSlot);
            cachedClass = cls;
        }
        if (cachedMethod)
            return in.invoke(*static_cast<const RtClass::MethodRef*>(cachedMethod), target, args);
        Value v = instance->fields[static_cast<std::size_t>(cachedSlot)];
        if (!hasArgs)
            return v;
        if (args.size() != 1)
            throw RuntimeFailure("One index expected");
        return elementOf(v, args[0]->eval(in));
    }
    if (ArrayObj* array = asArray(target))
        return arrayMember(in, *this, *array, target);
    if (DictObj* dict = asDict(target))
        return dictMember(in, *this, *dict);
    if (target.isObject(HeapObj::Kind::Error)) {
        if (builtin == CollMember::Message)
            return Value::ofString(static_cast<const ErrorObj*>(target.o)->message);
        if (builtin == CollMember::Name)
            return Value::ofString(QStringLiteral("RuntimeError"));
    }
    if (target.type == VType::Nil)
        throw RuntimeFailure("Object is Nil");
    throw RuntimeFailure("Member " + written + " is not supported by the runner");
}

Value IndexExpr::eval(Interpreter& in) const {
    const Value t = target->eval(in);
    return elementOf(t, index->eval(in));
}

Flow SetMemberStmt::exec(Interpreter& in) const {
    const Value object = target->object->eval(in);
    Instance* instance = asInstance(object);
    if (!instance)
        notAnObject(object);
    if (instance->cls != target->cachedClass) {
        findMember(in, instance->cls, target->name, target->written, target->cachedMethod, target->cachedSlot);
        target->cachedClass = instance->cls;
    }
    if (target->cachedMethod)
        throw RuntimeFailure("Cannot assign to the method " + target->written);
    const std::size_t slot = static_cast<std::size_t>(target->cachedSlot);
    Value v = convertTo(instance->cls->fields[slot].field->type, value->eval(in));
    instance->fields[slot] = std::move(v);
    return Flow::Normal;
}

Flow SetIndexStmt::exec(Interpreter& in) const {
    const Value t = target->eval(in);
    if (ArrayObj* array = asArray(t)) {
        const std::int64_t i = integerOf(index->eval(in));
        Value v = value->eval(in);
        array->at(i) = std::move(v);
        return Flow::Normal;
    }
    if (DictObj* dict = asDict(t)) {
        const Value key = index->eval(in);
        dict->set(key, value->eval(in));
        return Flow::Normal;
    }
    notAnObject(t);
}

Flow ForEachStmt::exec(Interpreter& in) const {
    Value list = collection->eval(in);
    if (DictObj* dict = asDict(list)) {
        // The keys as they were when the loop began.
        Value keys = newArray();
        for (const DictObj::Entry& e : dict->entries)
            if (e.alive)
                static_cast<ArrayObj*>(keys.o)->append(e.key);
        list = std::move(keys);
    }
    ArrayObj* array = asArray(list);
    if (!array)
        notAnObject(list);
    // The loop sees elements appended by its body and stops at the end as it is.
    for (std::size_t i = 0; i < array->items.size(); ++i) {
        in.tick();
        in.locals[slot] = convertTo(type, array->items[i]);
        const Flow f = in.execBlock(body);
        if (f == Flow::ExitFor)
            return Flow::Normal;
        if (f != Flow::Normal)
            return f;
        in.line = line;
    }
    return Flow::Normal;
}

namespace {

Value errorValue(const RuntimeFailure& failure) {
    if (failure.payload.type == VType::Object)
        return failure.payload;
    return Value::ofObject(new ErrorObj(QString::fromStdString(failure.what())));
}

}  // namespace

Flow TryStmt::exec(Interpreter& in) const {
    const Interpreter::State state = in.save();
    Flow f = Flow::Normal;
    std::exception_ptr pending;
    int failedLine = 0;
    const RtClass* failedClass = nullptr;
    const auto keep = [&] {
        pending = std::current_exception();
        failedLine = in.line;
        failedClass = in.current;
        in.restore(state);
    };
    try {
        f = in.execBlock(body);
    } catch (const RuntimeFailure& failure) {
        if (failure.fatal)
            throw;
        if (!hasCatch) {
            keep();
        } else {
            in.restore(state);
            Value error = errorValue(failure);
            if (catchSlot >= 0)
                in.locals[catchSlot] = error;
            Value outer = std::move(in.caught);
            in.caught = std::move(error);
            try {
                f = in.execBlock(catchBlock);
            } catch (const RuntimeFailure& again) {
                if (again.fatal)
                    throw;
                keep();
            }
            in.caught = std::move(outer);
        }
    }
    const Flow after = in.execBlock(finallyBlock);
    if (pending) {
        in.line = failedLine;
        in.current = failedClass;
        std::rethrow_exception(pending);
    }
    return after != Flow::Normal ? after : f;
}

Flow ThrowStmt::exec(Interpreter& in) const {
    Value thrown = value ? value->eval(in) : in.caught;
    if (thrown.type == VType::Nil)
        throw RuntimeFailure("Throw without an error");
    const QString message = textOf(thrown);
    throw RuntimeFailure(message.toStdString(), std::move(thrown));
}

Flow ReturnStmt::exec(Interpreter& in) const {
    in.returnValue = value ? value->eval(in) : Value();
    return Flow::Return;
}

Flow UnsupportedStmt::exec(Interpreter&) const { throw RuntimeFailure(what); }

// ---- the interpreter ----

Interpreter::Interpreter(const std::vector<const ClassUnit*>& classes, Options options) : options_(std::move(options)) {
    link(classes);
}

Interpreter::Interpreter(const ClassUnit& global, Options options) : options_(std::move(options)) {
    link({&global});
}

Interpreter::~Interpreter() {
    globalValue = Value();
    caught = Value();
    returnValue = Value();
    collectCycles();  // objects of the program that only referred to each other
}

void Interpreter::link(const std::vector<const ClassUnit*>& units) {
    std::unordered_map<std::string, RtClass*> byName;
    for (const ClassUnit* unit : units) {
        auto cls = std::make_unique<RtClass>();
        cls->name = unit->className.empty() ? std::string("Global") : unit->className;
        cls->unit = unit;
        byName.emplace(lowerName(cls->name), cls.get());
        byName_.emplace(lowerName(cls->name), cls.get());
        classes_.push_back(std::move(cls));
    }
    for (auto& cls : classes_) {
        const auto parent = byName.find(lowerName(cls->unit->superName));
        if (parent != byName.end() && parent->second != cls.get())
            cls->parent = parent->second;
    }
    std::vector<RtClass*> done;
    const std::function<void(RtClass*, std::size_t)> layout = [&](RtClass* cls, std::size_t depth) {
        if (std::find(done.begin(), done.end(), cls) != done.end())
            return;
        if (depth > classes_.size())
            throw LanguageError(Diagnostic{"Class " + cls->name + " derives from itself", 1, cls->unit->file});
        if (cls->parent) {
            layout(const_cast<RtClass*>(cls->parent), depth + 1);
            cls->fields = cls->parent->fields;
            cls->fieldSlots = cls->parent->fieldSlots;
            cls->methods = cls->parent->methods;
        }
        if (static_cast<std::size_t>(cls->unit->inheritedFields) != cls->fields.size())
            throw LanguageError(Diagnostic{"Class " + cls->name + " was compiled without its superclass", 1, cls->unit->file});
        for (const Field& field : cls->unit->fields) {
            cls->fieldSlots[lowerName(field.name)] = static_cast<int>(cls->fields.size());
            cls->fields.push_back(RtClass::FieldRef{&field, cls});
        }
        for (const Method& method : cls->unit->methods)
            cls->methods[lowerName(method.name)] = RtClass::MethodRef{&method, cls};
        done.push_back(cls);
    };
    for (auto& cls : classes_)
        layout(cls.get(), 0);
}

const RtClass* Interpreter::classNamed(const std::string& lower) const {
    const auto found = byName_.find(lower);
    return found == byName_.end() ? nullptr : found->second;
}

void Interpreter::initialize(const Value& object, const RtClass& cls) {
    auto& instance = *static_cast<Instance*>(object.o);
    instance.fields.reserve(cls.fields.size());
    for (const RtClass::FieldRef& ref : cls.fields)
        instance.fields.push_back(defaultOf(ref.field->type));
    std::vector<const RtClass*> chain;
    for (const RtClass* c = &cls; c; c = c->parent)
        chain.insert(chain.begin(), c);
    const State state = save();
    const int callerLine = line;
    Value noLocals;
    for (const RtClass* c : chain) {
        selfValue = &object;
        current = c;
        locals = &noLocals;
        const Flow f = execBlock(c->unit->fieldInits);
        if (f == Flow::EndProgram)
            throw ProgramEnd{};
    }
    restore(state);
    line = callerLine;
}

Value Interpreter::makeObject(const std::string& lowerClass, const std::vector<ExprPtr>& args) {
    const RtClass* cls = classNamed(lowerClass);
    if (!cls)
        throw RuntimeFailure("New " + lowerClass + " is not supported by the runner");
    // Making an object runs its fields' start values, which may make objects in turn.
    if (depth_ >= options_.maxCallDepth)
        throw RuntimeFailure("Too many nested calls");
    Value object = Value::ofObject(new Instance(cls));
    ++depth_;
    initialize(object, *cls);
    --depth_;
    const auto init = cls->methods.find("init");
    if (init != cls->methods.end() && init->second.method->kind == MethodKind::Event)
        invoke(init->second, object, args);
    else if (!args.empty())
        wrongArguments("New " + cls->name);
    return object;
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

Value Interpreter::invoke(const RtClass::MethodRef& ref, const Value& target, const std::vector<ExprPtr>& args) {
    const Method& method = *ref.method;
    if (args.size() > method.params.size())
        wrongArguments(method.name);
    for (std::size_t i = args.size(); i < method.params.size(); ++i)
        if (!method.params[i].defaultValue)
            wrongArguments(method.name);
    if (depth_ >= options_.maxCallDepth)
        throw RuntimeFailure("Too many nested calls");
    // Frames of up to eight variables live on the stack; larger ones on the heap.
    const std::size_t count = method.localTypes.size();
    struct Frame {
        alignas(Value) unsigned char small[8 * sizeof(Value)];
        std::unique_ptr<Value[]> large;
        Value* values;
        std::size_t count;
        explicit Frame(std::size_t n) : count(n) {
            if (n > 8) {
                large = std::make_unique<Value[]>(n);
                values = large.get();
            } else {
                values = reinterpret_cast<Value*>(small);
                for (std::size_t i = 0; i < n; ++i)
                    new (values + i) Value();
            }
        }
        ~Frame() {
            if (!large)
                for (std::size_t i = 0; i < count; ++i)
                    values[i].~Value();
        }
    } storage(count);
    Value* const frame = storage.values;
    // Typed variables start at their type's empty value; a parameter that receives an
    // argument is skipped, its value comes next.
    for (std::size_t i = 0; i < count; ++i) {
        const DeclType type = method.localTypes[i];
        if (type == DeclType::Variant || (i < args.size() && method.params[i].slot == static_cast<int>(i)))
            continue;
        frame[i] = type == DeclType::Integer ? Value::ofInteger(0) : defaultOf(type);
    }
    // Arguments are evaluated in the caller's frame, default values in the callee's,
    // where the parameters before them already hold their values.
    for (std::size_t i = 0; i < args.size(); ++i) {
        const Param& param = method.params[i];
        Value v = args[i]->eval(*this);
        frame[param.slot] = matchesType(param.type, v) ? std::move(v) : convertTo(param.type, std::move(v));
    }
    const State caller = save();
    const int callerLine = line;
    locals = frame;
    selfValue = &target;
    current = ref.owner;
    ++depth_;
    // On an error the state stays at the failing statement; a Try that catches it
    // restores its own.
    for (std::size_t i = args.size(); i < method.params.size(); ++i) {
        const Param& param = method.params[i];
        frame[param.slot] = convertTo(param.type, param.defaultValue->eval(*this));
    }
    const Flow f = execBlock(method.body);
    restore(caller);
    line = callerLine;
    if (f == Flow::EndProgram)
        throw ProgramEnd{};
    Value result;
    if (f == Flow::Return) {
        result = std::move(returnValue);
        returnValue = Value();
    }
    if (method.kind != MethodKind::Function && method.kind != MethodKind::Delegate)
        return Value();
    if (matchesType(method.resultType, result))
        return result;
    if (result.type == VType::Nil)
        return defaultOf(method.resultType);
    return convertTo(method.resultType, std::move(result));
}

void Interpreter::run() {
    const RtClass& globalClass = *classes_.front();
    try {
        try {
            globalValue = Value::ofObject(new Instance(&globalClass));
            initialize(globalValue, globalClass);
            selfValue = &globalValue;
            current = &globalClass;
            const auto start = globalClass.methods.find("awakefromnib");
            if (start != globalClass.methods.end() && start->second.method->kind == MethodKind::Event) {
                line = start->second.method->line;
                invoke(start->second, globalValue, {});
            }
        } catch (const std::bad_alloc&) {
            throw RuntimeFailure("Out of memory");
        }
    } catch (const ProgramEnd&) {
    } catch (const RuntimeFailure& failure) {
        // The message stays on the one line the IDE reads.
        std::string message = failure.what();
        std::replace(message.begin(), message.end(), '\n', ' ');
        std::replace(message.begin(), message.end(), '\r', ' ');
        throw LanguageError(Diagnostic{message, line, current ? current->unit->file : globalClass.unit->file});
    }
}

}  // namespace klvr
