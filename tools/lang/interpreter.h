// Runs a compiled Global class: its class-level start values, then its
// Event AwakeFromNib(). Output of Alert, MsgBox and Print goes to a callback.
#pragma once

#include "tools/lang/ast.h"

#include <QString>

#include <cstdint>
#include <functional>
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

    Interpreter(const ClassUnit& unit, Options options);

    // Throws LanguageError with the line and file of the failing statement.
    void run();

    // ---- used by the tree's nodes ----
    Flow execBlock(const Block& block);
    Value call(const CallExpr& call);
    // Counts one step of work; a program past its step limit stops here.
    void tick() {
        if (options_.maxSteps >= 0 && ++steps_ > options_.maxSteps)
            throw RuntimeFailure("Step limit reached");
    }
    void print(const QString& text) {
        if (options_.print)
            options_.print(text);
    }

    const ClassUnit& unit;
    std::vector<Value> fields;
    Value* locals = nullptr;
    Value returnValue;
    int line = 0;

private:
    Options options_;
    std::int64_t steps_ = 0;
    int depth_ = 0;
    int blockDepth_ = 0;
};

// Thrown by End: stops the program without an error.
struct ProgramEnd {};

}  // namespace klvr
