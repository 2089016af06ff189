// Compiles the text of one class file into a ClassUnit, checking block structure,
// declarations and names on the way. The first problem is thrown as a LanguageError
// carrying the 1-based line and the file name.
#pragma once

#include "tools/lang/ast.h"
#include "tools/lang/vocabulary.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace klvr {

// Blocks deeper than this are refused by the checker, so the runner's recursion over
// the tree stays far from the end of the stack.
constexpr int kMaxBlockDepth = 200;
constexpr int kMaxExpressionDepth = 100;
// Also long chains such as a+b+c+... or a.b.c... make deep trees.
constexpr int kMaxExpressionHeight = 200;

struct CompileContext {
    const Vocabulary* vocabulary = nullptr;
    // Lower-case names of the Global class's Public members; null while compiling the
    // Global class itself.
    const std::unordered_set<std::string>* globalPublics = nullptr;
    // Lower-case class names of the project's files (b.NSView.klvr gives "b").
    const std::unordered_set<std::string>* projectClasses = nullptr;
    // The checker refuses unknown names; the runner only fails when it reaches one.
    bool unknownNamesAreErrors = true;
};

ClassUnit compileClass(std::string_view text, const std::string& fileName, const CompileContext& context);

// Lower-case names of the members a class file declares Public; tolerant of any text.
std::unordered_set<std::string> publicMemberNames(std::string_view text);

}  // namespace klvr
