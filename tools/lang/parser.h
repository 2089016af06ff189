// Compiles the text of one class file into a ClassUnit, checking block structure,
// declarations and names on the way. The first problem is thrown as a LanguageError
// carrying the 1-based line and the file name.
#pragma once

#include "tools/lang/ast.h"
#include "tools/lang/vocabulary.h"

#include <optional>
#include <string>
#include <unordered_map>
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

// The members of a class as other classes see them, read from its text without
// compiling it: fields in slot order (the superclass's first) and methods, each with
// its visibility.
struct ClassShape {
    std::string name;  // lower case
    std::string written;  // as in the file name
    std::vector<std::string> ancestors;  // lower case, the superclass first
    std::vector<std::pair<std::string, bool>> fields;  // lower-case name, Public
    std::unordered_map<std::string, bool> methods;     // lower-case name → Public
    // Public of a member by lower-case name; nullopt when the class has none of that name.
    std::optional<bool> isPublic(const std::string& member) const;
};

// The shape of the class in `text`, including what it inherits from `superclass`.
ClassShape classShape(std::string_view text, const std::string& fileName, const ClassShape* superclass);

struct CompileContext {
    const Vocabulary* vocabulary = nullptr;
    // Lower-case names of the Global class's Public members; null while compiling the
    // Global class itself.
    const std::unordered_set<std::string>* globalPublics = nullptr;
    // Lower-case class names of the project's files (b.NSView.klvr gives "b").
    const std::unordered_set<std::string>* projectClasses = nullptr;
    // The shape of Global, so that its Public members resolve to its fields and methods.
    const ClassShape* global = nullptr;
    // The shape of the superclass when it is a class of the project.
    const ClassShape* superclass = nullptr;
    // Shapes of the project's classes by lower-case name: a Private member used
    // through a variable declared with one of these types is an error.
    const std::unordered_map<std::string, ClassShape>* classes = nullptr;
    // The checker refuses unknown names; the runner only fails when it reaches one.
    bool unknownNamesAreErrors = true;
};

ClassUnit compileClass(std::string_view text, const std::string& fileName, const CompileContext& context);

// Lower-case names of the members a class file declares Public; tolerant of any text.
std::unordered_set<std::string> publicMemberNames(std::string_view text);

}  // namespace klvr
