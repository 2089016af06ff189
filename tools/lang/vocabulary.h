// The names a program may use without declaring them: the language's keywords, the
// runner's own functions, and the built-in vocabulary read from the application's
// property lists (keyword, type, const, function, class and object lists).
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace klvr {

// Keywords the grammar itself gives a meaning to.
enum class Kw : unsigned char {
    None, Public, Private, Sub, Function, Action, Event, Delegate, IBOutlet, IBAction,
    Dim, Const, Declare, As, New, End, If, Then, Else, ElseIf, For, Each, In, To, Step,
    Next, While, Wend, Select, Case, Is, Do, Loop, Until, Exit, Return, And, Or, Xor, Not,
    Mod, True, False, Nil, Me, ByVal, ByRef, Optional, Try, Catch, Finally, Throw, With, Static, Call,
    Continue, Redim, Preserve, Stop
};

// Case-insensitive lookup of a keyword (Kw::None for any other name).
Kw keywordOf(std::string_view name);

class Vocabulary {
public:
    // Keywords and the runner's built-in functions only.
    Vocabulary();

    // Adds every name from the six property lists found in `resourcesDir`; missing or
    // unreadable lists are skipped. Returns the number of names added.
    int loadPropertyLists(const std::string& resourcesDir);

    void add(std::string_view name);
    bool contains(std::string_view lowerCaseName) const { return known_.count(std::string(lowerCaseName)) != 0; }
    std::size_t size() const { return known_.size(); }

private:
    std::unordered_set<std::string> known_;  // lower-case
};

// The folder holding the vocabulary lists: $KELVARO_RESOURCES when set, otherwise
// ../Resources beside the running executable.
std::string defaultResourcesDir(const std::string& executablePath);

}  // namespace klvr
