// Runs a compiled program: the classes of a project with Global first. It makes the
// Global object (the start values of its fields), then runs its Event AwakeFromNib().
// Output of Alert, MsgBox and Print goes to a callback.
#pragma once

#include "tools/lang/ast.h"
#include "tools/lang/objects.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace klvr {

class Interpreter {
public:
    struct Options {
        std::int64_t maxSteps = -1;  // statements to run before giving up; -1 for no limit
        int maxCallDepth = 10000;
        // Blocks inside blocks and calls, together; bounds the interpreter's own stack.
        int maxBlockDepth = 100000;
        std::function<void(const QString&)> print;
    };

    // `classes` holds Global first; each class's superclass, when it is one of them,
    // is linked by name. Throws LanguageError for a class that derives from itself.
    // The units must outlive the interpreter.
    Interpreter(const std::vector<const ClassUnit*>& classes, Options options);
    // A program of one class, Global.
    Interpreter(const ClassUnit& global, Options options);
    ~Interpreter();

    // Throws LanguageError with the line and file of the failing statement.
    void run();

    // ---- used by the tree's nodes ----
    Flow execBlock(const Block& block);
    // Calls `method` of `target` (an object of the program) with arguments evaluated here.
    Value invoke(const RtClass::MethodRef& method, const Value& target, const std::vector<ExprPtr>& args);
    Value makeObject(const std::string& lowerClassName, const std::vector<ExprPtr>& args);
    const RtClass* classNamed(const std::string& lowerName) const;
    // Counts one step of work; a program past its step limit stops here.
    void tick() {
        if (options_.maxSteps >= 0 && ++steps_ > options_.maxSteps)
            throw RuntimeFailure("Step limit reached", true);
    }
    void print(const QString& text) {
        if (options_.print)
            options_.print(text);
    }
    Instance& self() const { return *static_cast<Instance*>(selfValue->o); }
    Instance& global() const { return *static_cast<Instance*>(globalValue.o); }
    const Value& globalHolder() const { return globalValue; }

    Value* locals = nullptr;
    const Value* selfValue = nullptr;
    const RtClass* current = nullptr;  // the class whose method runs (for errors and Private)
    Value returnValue;
    Value caught;  // the error the innermost running Catch part handles
    int line = 0;
    std::uint64_t randomState = 0x9E3779B97F4A7C15ull;

    // What a Try restores when it catches an error thrown from deeper calls.
    struct State {
        Value* locals;
        const Value* selfValue;
        const RtClass* current;
        int depth, blockDepth;
    };
    State save() const { return State{locals, selfValue, current, depth_, blockDepth_}; }
    void restore(const State& s) {
        locals = s.locals;
        selfValue = s.selfValue;
        current = s.current;
        depth_ = s.depth;
        blockDepth_ = s.blockDepth;
    }

private:
    void link(const std::vector<const ClassUnit*>& classes);
    void initialize(const Value& object, const RtClass& cls);

    std::vector<std::unique_ptr<RtClass>> classes_;
    std::unordered_map<std::string, const RtClass*> byName_;  // by lower-case name
    Value globalValue;
    Options options_;
    std::int64_t steps_ = 0;
    int depth_ = 0;
    int blockDepth_ = 0;
};

// Thrown by End: stops the program without an error.
struct ProgramEnd {};

}  // namespace klvr
