#include "tools/lang/parser.h"

#include "tools/lang/diagnostic.h"
#include "tools/lang/lexer.h"

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <cstdlib>
#include <cstring>
#include <algorithm>
#include <optional>
#include <unordered_map>

namespace klvr {

namespace {

// What kind of block a line of code sits in.
enum class BlockKind : std::uint8_t { Method, If, ElsePart, For, While, Do, Select, Try, With };

// A line that ends (or continues) a block instead of being a statement.
enum class Term : std::uint8_t {
    None, MethodEnd, EndIf, EndSelect, Wend, Next, Loop, Else, ElseIf, Case, Catch, Finally, EndTry, EndWith, EndOther, Decl
};

const char* methodWord(MethodKind k) {
    switch (k) {
    case MethodKind::Sub: return "Sub";
    case MethodKind::Function: return "Function";
    case MethodKind::Action: return "Action";
    case MethodKind::Event: return "Event";
    case MethodKind::Delegate: return "Delegate";
    case MethodKind::IBAction: return "IBAction";
    }
    return "Sub";
}

bool isMethodKeyword(Kw k) {
    return k == Kw::Sub || k == Kw::Function || k == Kw::Action || k == Kw::Event || k == Kw::Delegate || k == Kw::IBAction;
}

MethodKind methodKindOf(Kw k) {
    switch (k) {
    case Kw::Function: return MethodKind::Function;
    case Kw::Action: return MethodKind::Action;
    case Kw::Event: return MethodKind::Event;
    case Kw::Delegate: return MethodKind::Delegate;
    case Kw::IBAction: return MethodKind::IBAction;
    default: return MethodKind::Sub;
    }
}

// Action and IBAction are the same kind of method, and the IDE's Action template ends
// with "End IBAction", so either end closes either.
bool methodEndMatches(MethodKind open, MethodKind end) {
    const auto family = [](MethodKind k) { return k == MethodKind::IBAction ? MethodKind::Action : k; };
    return family(open) == family(end);
}

DeclType declTypeOf(std::string_view name) {
    const std::string lower = lowerName(name);
    if (lower == "integer" || lower == "long" || lower == "int64")
        return DeclType::Integer;
    if (lower == "double" || lower == "single")
        return DeclType::Double;
    if (lower == "string")
        return DeclType::String;
    if (lower == "boolean")
        return DeclType::Boolean;
    return DeclType::Variant;
}

const std::unordered_map<std::string, Builtin>& builtinTable() {
    static const std::unordered_map<std::string, Builtin> table = {
        {"len", Builtin::Len}, {"left", Builtin::Left}, {"right", Builtin::Right}, {"mid", Builtin::Mid},
        {"instr", Builtin::InStr}, {"ucase", Builtin::UCase}, {"lcase", Builtin::LCase},
        {"trim", Builtin::Trim}, {"str", Builtin::Str}, {"val", Builtin::Val}, {"alert", Builtin::Alert},
        {"msgbox", Builtin::MsgBox}, {"print", Builtin::Print},
        {"ltrim", Builtin::LTrim}, {"rtrim", Builtin::RTrim}, {"instrrev", Builtin::InStrRev},
        {"replace", Builtin::Replace}, {"split", Builtin::Split}, {"join", Builtin::Join},
        {"strreverse", Builtin::StrReverse}, {"strcomp", Builtin::StrComp}, {"space", Builtin::Space},
        {"chr", Builtin::Chr}, {"asc", Builtin::Asc}, {"hex", Builtin::Hex}, {"oct", Builtin::Oct},
        {"abs", Builtin::Abs}, {"sqr", Builtin::Sqr}, {"int", Builtin::Int}, {"fix", Builtin::Fix},
        {"round", Builtin::Round}, {"sgn", Builtin::Sgn}, {"rnd", Builtin::Rnd}, {"randomize", Builtin::Randomize},
        {"sin", Builtin::Sin}, {"cos", Builtin::Cos}, {"tan", Builtin::Tan}, {"atn", Builtin::Atn},
        {"exp", Builtin::Exp}, {"log", Builtin::Log}, {"min", Builtin::Min}, {"max", Builtin::Max},
        {"cstr", Builtin::CStr}, {"cint", Builtin::CInt}, {"clng", Builtin::CLng}, {"cdbl", Builtin::CDbl},
        {"cbool", Builtin::CBool}, {"isnumeric", Builtin::IsNumeric}, {"isnil", Builtin::IsNil},
        {"isarray", Builtin::IsArray}, {"ubound", Builtin::UBound}, {"lbound", Builtin::LBound},
        {"now", Builtin::Now}, {"today", Builtin::Today}, {"timer", Builtin::Timer}, {"year", Builtin::Year},
        {"month", Builtin::Month}, {"day", Builtin::Day}, {"hour", Builtin::Hour}, {"minute", Builtin::Minute},
        {"second", Builtin::Second}, {"weekday", Builtin::Weekday}, {"dateadd", Builtin::DateAdd},
        {"datediff", Builtin::DateDiff}, {"sleep", Builtin::Sleep}, {"readstring", Builtin::ReadString},
        {"writestring", Builtin::WriteString}, {"fileexists", Builtin::FileExists},
        {"folderexists", Builtin::FolderExists},
    };
    return table;
}

const std::unordered_map<std::string, CollMember>& collectionMembers() {
    static const std::unordered_map<std::string, CollMember> table = {
        {"append", CollMember::Append}, {"addobject", CollMember::Append}, {"insert", CollMember::Insert},
        {"insertobject", CollMember::InsertObject}, {"remove", CollMember::Remove},
        {"removeobjectatindex", CollMember::RemoveAt}, {"removeobject", CollMember::RemoveObject},
        {"removeobjectforkey", CollMember::Remove}, {"removeall", CollMember::RemoveAll},
        {"removeallobjects", CollMember::RemoveAll}, {"removelastobject", CollMember::RemoveLast},
        {"count", CollMember::Count}, {"indexof", CollMember::IndexOf}, {"indexofobject", CollMember::IndexOf},
        {"objectatindex", CollMember::ObjectAt}, {"replaceobjectatindex", CollMember::Replace},
        {"contains", CollMember::Contains}, {"containsobject", CollMember::Contains},
        {"firstobject", CollMember::First}, {"lastobject", CollMember::Last},
        {"componentsjoinedbystring", CollMember::Join}, {"haskey", CollMember::HasKey},
        {"keys", CollMember::Keys}, {"allkeys", CollMember::Keys}, {"values", CollMember::Values},
        {"allvalues", CollMember::Values}, {"objectforkey", CollMember::ObjectForKey},
        {"valueforkey", CollMember::ObjectForKey}, {"setobject", CollMember::SetObject},
        {"setvalue", CollMember::SetObject}, {"message", CollMember::Message}, {"reason", CollMember::Message},
        {"description", CollMember::Message}, {"name", CollMember::Name},
    };
    return table;
}

// Constants a console program uses, with their values.
std::optional<Value> constantValue(const std::string& lower) {
    if (lower == "kcrlf") return Value::ofString(QStringLiteral("\r\n"));
    if (lower == "klf") return Value::ofString(QStringLiteral("\n"));
    if (lower == "kcr") return Value::ofString(QStringLiteral("\r"));
    if (lower == "ktab") return Value::ofString(QStringLiteral("\t"));
    if (lower == "kquote") return Value::ofString(QStringLiteral("\""));
    if (lower == "kpi") return Value::ofDouble(3.14159265358979323846);
    if (lower == "kmaxinteger") return Value::ofInteger(INT64_MAX);
    if (lower == "kmininteger") return Value::ofInteger(INT64_MIN);
    if (lower == "nsnotfound") return Value::ofInteger(-1);
    return std::nullopt;
}

std::optional<NewExpr::Kind> collectionKind(const std::string& lower) {
    if (lower == "array" || lower == "nsmutablearray" || lower == "nsarray")
        return NewExpr::Array;
    if (lower == "dictionary" || lower == "nsmutabledictionary" || lower == "nsdictionary")
        return NewExpr::Dictionary;
    return std::nullopt;
}

struct Member {
    bool isMethod = false;
    int index = 0;
};

class Parser {
public:
    Parser(std::string_view text, std::string file, const CompileContext& context)
        : file_(std::move(file)), context_(context) {
        unit_.file = file_;
        // Names from the file name <Class>.<SuperClass>.klvr.
        const std::string base = std::filesystem::path(file_).filename().string();
        const std::size_t dot = base.find('.');
        unit_.className = base.substr(0, dot);
        className_ = lowerName(unit_.className);
        if (dot != std::string::npos) {
            const std::size_t last = base.rfind('.');
            const std::size_t before = base.rfind('.', last == 0 ? 0 : last - 1);
            if (last != std::string::npos && before != std::string::npos && before >= dot && before < last)
                unit_.superName = base.substr(before + 1, last - before - 1);
        }
        // A byte order mark at the start of the text is not part of the first line.
        if (text.size() >= 3 && text.compare(0, 3, "\xEF\xBB\xBF") == 0)
            text.remove_prefix(3);
        tokenize(text);
    }

    ClassUnit run() {
        prescan();
        parseClassLevel();
        return std::move(unit_);
    }

    std::unordered_set<std::string> publicNames() {
        prescan();
        return publics_;
    }

    ClassShape shape() {
        prescan();
        ClassShape s;
        s.name = className_;
        s.written = unit_.className;
        if (context_.superclass) {
            s.ancestors.push_back(context_.superclass->name);
            s.ancestors.insert(s.ancestors.end(), context_.superclass->ancestors.begin(), context_.superclass->ancestors.end());
            s.fields = context_.superclass->fields;
            s.methods = context_.superclass->methods;
        }
        for (const Field& field : unit_.fields)
            s.fields.emplace_back(lowerName(field.name), field.isPublic);
        for (const Method& method : unit_.methods)
            s.methods[lowerName(method.name)] = method.isPublic;
        return s;
    }

private:
    struct Line {
        std::uint32_t begin, end;
        int error;  // index into lexErrors_, or -1
    };

    struct DepthGuard {
        Parser& parser;
        explicit DepthGuard(Parser& p) : parser(p) {
            if (++parser.exprDepth_ > kMaxExpressionDepth)
                parser.fail("Expression too deeply nested");
        }
        ~DepthGuard() { --parser.exprDepth_; }
    };

    // ---- tokens and lines ----

    void tokenize(std::string_view text) {
        // About one token per five bytes of code; reserving avoids regrowing.
        toks_.reserve(text.size() / 5 + 16);
        kws_.reserve(text.size() / 5 + 16);
        lines_.reserve(text.size() / 24 + 16);
        std::size_t pos = 0;
        while (pos < text.size()) {
            const void* found = std::memchr(text.data() + pos, '\n', text.size() - pos);
            const std::size_t end = found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) : text.size();
            Line line{static_cast<std::uint32_t>(toks_.size()), 0, -1};
            const char* error = appendLineTokens(text.substr(pos, end - pos), toks_);
            for (std::size_t t = line.begin; t < toks_.size(); ++t)
                kws_.push_back(toks_[t].kind == Tok::Name ? keywordOf(toks_[t].text) : Kw::None);
            line.end = static_cast<std::uint32_t>(toks_.size());
            if (*error) {
                line.error = static_cast<int>(lexErrors_.size());
                lexErrors_.push_back(error);
            }
            lines_.push_back(line);
            pos = end + 1;
        }
    }

    [[noreturn]] void failAt(int line, std::string message) const {
        throw LanguageError(Diagnostic{std::move(message), line, file_});
    }
    [[noreturn]] void fail(std::string message) const { failAt(static_cast<int>(li_) + 1, std::move(message)); }

    void beginLine() {
        const Line& line = lines_[li_];
        if (line.error >= 0)
            fail(lexErrors_[static_cast<std::size_t>(line.error)]);
        p_ = line.begin;
        e_ = line.end;
    }

    bool atEnd() const { return p_ >= e_; }
    Kw kw(std::uint32_t i) const { return i < e_ ? kws_[i] : Kw::None; }
    bool isOp(std::uint32_t i, char op) const {
        return i < e_ && toks_[i].kind == Tok::Op && toks_[i].text.size() == 1 && toks_[i].text[0] == op;
    }
    bool isPlainName(std::uint32_t i) const { return i < e_ && toks_[i].kind == Tok::Name && kws_[i] == Kw::None; }
    std::string text(std::uint32_t i) const { return i < e_ ? std::string(toks_[i].text) : std::string(); }

    // A token as an error message names it: the IDE cuts the message at " in line ",
    // so a string's text never goes in, and an absurdly long name is shortened.
    std::string describe(std::uint32_t i) const {
        if (i >= e_)
            return "the end of the line";
        if (toks_[i].kind == Tok::String)
            return "a string";
        std::string word = text(i);
        if (word.size() > 64)
            word = word.substr(0, 64) + "...";
        return word;
    }

    void expectEnd() const {
        if (!atEnd())
            fail("End of statement expected");
    }

    // ---- declarations known before the bodies are read ----

    void prescan() {
        if (context_.superclass) {
            const ClassShape& super = *context_.superclass;
            for (std::size_t i = 0; i < super.fields.size(); ++i)
                members_.emplace(super.fields[i].first, Member{false, static_cast<int>(i)});
            for (const auto& [name, isPublic] : super.methods)
                members_.emplace(name, Member{true, -1});
            unit_.inheritedFields = static_cast<int>(super.fields.size());
        }
        bool inMethod = false;
        for (std::size_t l = 0; l < lines_.size(); ++l) {
            std::uint32_t p = lines_[l].begin;
            const std::uint32_t e = lines_[l].end;
            e_ = e;
            if (p >= e)
                continue;
            bool isPublic = false;
            if (kws_[p] == Kw::Public || kws_[p] == Kw::Private) {
                isPublic = kws_[p] == Kw::Public;
                ++p;
            }
            if (p >= e)
                continue;
            const Kw k = kws_[p];
            if (isMethodKeyword(k)) {
                if (!inMethod && p + 1 < e && toks_[p + 1].kind == Tok::Name) {
                    Method method;
                    method.name = std::string(toks_[p + 1].text);
                    method.kind = methodKindOf(k);
                    method.isPublic = isPublic;
                    method.line = static_cast<int>(l) + 1;
                    const std::string lower = lowerName(method.name);
                    methodAtLine_[method.line] = static_cast<int>(unit_.methods.size());
                    members_.emplace(lower, Member{true, static_cast<int>(unit_.methods.size())});
                    if (isPublic)
                        publics_.insert(lower);
                    unit_.methods.push_back(std::move(method));
                }
                inMethod = true;
            } else if (k == Kw::End && p + 1 < e && isMethodKeyword(kws_[p + 1])) {
                inMethod = false;
            } else if ((k == Kw::Dim || k == Kw::Const || k == Kw::IBOutlet) && !inMethod) {
                // Every name of the declaration: the first one and each one after a comma
                // outside parentheses and before a start value.
                int depth = 0;
                bool expectName = true, inValue = false;
                for (std::uint32_t i = p + 1; i < e; ++i) {
                    if (isOp(i, '(')) ++depth;
                    else if (isOp(i, ')')) --depth;
                    else if (isOp(i, '=') && depth == 0) inValue = true;
                    else if (isOp(i, ',') && depth == 0) { expectName = true; inValue = false; continue; }
                    if (expectName && !inValue && toks_[i].kind == Tok::Name) {
                        addField(std::string(toks_[i].text), isPublic, static_cast<int>(l) + 1);
                    }
                    expectName = false;
                }
            } else if (k == Kw::Declare && !inMethod) {
                // Declare Sub/Function Name, Declare Class "Name", Declare Framework "Name":
                // the declared names become known words.
                for (std::uint32_t i = p + 1; i < e; ++i) {
                    if (toks_[i].kind == Tok::String)
                        declared_.insert(lowerName(decodeString(toks_[i].text)));
                    else if (toks_[i].kind == Tok::Name && kws_[i] == Kw::None)
                        declared_.insert(lowerName(toks_[i].text));
                }
            }
        }
    }

    int addField(const std::string& name, bool isPublic, int line) {
        const std::string lower = lowerName(name);
        auto found = members_.find(lower);
        if (found != members_.end() && !found->second.isMethod)
            return found->second.index;
        Field field;
        field.name = name;
        field.isPublic = isPublic;
        field.line = line;
        const int slot = unit_.inheritedFields + static_cast<int>(unit_.fields.size());
        unit_.fields.push_back(field);
        members_.emplace(lower, Member{false, slot});
        if (isPublic)
            publics_.insert(lower);
        return slot;
    }

    // ---- class level ----

    void parseClassLevel() {
        while (li_ < lines_.size()) {
            beginLine();
            if (atEnd()) {
                ++li_;
                continue;
            }
            bool isPublic = false, hasModifier = false;
            if (kw(p_) == Kw::Public || kw(p_) == Kw::Private) {
                hasModifier = true;
                isPublic = kw(p_) == Kw::Public;
                ++p_;
                if (atEnd())
                    fail("Declaration expected after " + text(p_ - 1));
            }
            const Kw k = kw(p_);
            if (isMethodKeyword(k)) {
                parseMethod(methodKindOf(k), isPublic);
            } else if (k == Kw::Dim || k == Kw::Const) {
                parseDim(true, isPublic, unit_.fieldInits);
                ++li_;
            } else if (k == Kw::IBOutlet) {
                ++p_;
                if (!isPlainName(p_))
                    fail("Name expected after IBOutlet");
                addField(text(p_), isPublic, static_cast<int>(li_) + 1);
                ++p_;
                if (kw(p_) == Kw::As) {
                    ++p_;
                    parseTypeName();
                }
                expectEnd();
                ++li_;
            } else if (k == Kw::Declare) {
                ++li_;  // its names were taken by the prescan
            } else if (hasModifier) {
                fail("Declaration expected after " + text(p_ - 1));
            } else {
                const Term t = classify();
                if (t == Term::None || t == Term::Decl || t == Term::EndOther)
                    fail("Statement outside a method");
                fail(strayMessage(t));
            }
        }
    }

    DeclType parseTypeName() {
        if (atEnd() || toks_[p_].kind != Tok::Name)
            fail("Type expected after As");
        DeclType type = declTypeOf(toks_[p_].text);
        lastTypeName_ = lowerName(toks_[p_].text);
        ++p_;
        while (isOp(p_, '.') && p_ + 1 < e_ && toks_[p_ + 1].kind == Tok::Name) {
            type = DeclType::Variant;
            p_ += 2;
        }
        if (isOp(p_, '(') && isOp(p_ + 1, ')')) {
            type = DeclType::Variant;  // an array type
            p_ += 2;
        }
        return type;
    }

    void parseMethod(MethodKind kind, bool isPublic) {
        ++p_;
        if (!isPlainName(p_))
            fail(std::string("Name expected after ") + methodWord(kind));
        const int line = static_cast<int>(li_) + 1;
        int index;
        if (auto found = methodAtLine_.find(line); found != methodAtLine_.end()) {
            index = found->second;
        } else {
            index = static_cast<int>(unit_.methods.size());
            unit_.methods.emplace_back();
            unit_.methods.back().name = text(p_);
            unit_.methods.back().kind = kind;
            unit_.methods.back().isPublic = isPublic;
            unit_.methods.back().line = line;
        }
        ++p_;
        method_ = index;
        locals_.clear();
        localTypes_.clear();
        localClass_.clear();
        std::vector<Param> params;
        if (isOp(p_, '(')) {
            ++p_;
            while (!isOp(p_, ')')) {
                while (kw(p_) == Kw::ByVal || kw(p_) == Kw::ByRef || kw(p_) == Kw::Optional)
                    ++p_;
                if (!isPlainName(p_))
                    fail(atEnd() ? "Closing parenthesis expected" : "Parameter name expected");
                const std::string name = text(p_);
                ++p_;
                Param param;
                if (isOp(p_, '(') && isOp(p_ + 1, ')'))
                    p_ += 2;
                bool typed = false;
                if (kw(p_) == Kw::As) {
                    ++p_;
                    param.type = parseTypeName();
                    typed = true;
                }
                if (isOp(p_, '=')) {
                    ++p_;
                    param.defaultValue = parseExpr();
                }
                param.slot = declareLocal(name, param.type);
                localClass_[param.slot] = param.type == DeclType::Variant && typed ? lastTypeName_ : std::string();
                params.push_back(std::move(param));
                if (isOp(p_, ','))
                    ++p_;
                else if (!isOp(p_, ')'))
                    fail("Closing parenthesis expected");
            }
            ++p_;
        }
        DeclType resultType = DeclType::Variant;
        if (kw(p_) == Kw::As) {
            ++p_;
            resultType = parseTypeName();
        }
        expectEnd();
        ++li_;
        open_.push_back(BlockKind::Method);
        openMethodKind_ = kind;
        Block body = parseBody(BlockKind::Method);
        // parseBody stops only at a method end; check that it is this method's.
        const MethodKind endKind = methodKindOf(kw(p_ + 1));
        if (!methodEndMatches(kind, endKind))
            fail(std::string("End ") + methodWord(kind) + " expected");
        p_ += 2;
        expectEnd();
        ++li_;
        open_.pop_back();
        Method& method = unit_.methods[static_cast<std::size_t>(index)];
        method.params = std::move(params);
        method.resultType = resultType;
        method.body = std::move(body);
        method.localTypes = localTypes_;
        method_ = -1;
        locals_.clear();
    }

    int declareLocal(const std::string& name, DeclType type) {
        const std::string lower = lowerName(name);
        if (auto found = locals_.find(lower); found != locals_.end()) {
            localTypes_[static_cast<std::size_t>(found->second)] = type;
            return found->second;
        }
        const int slot = static_cast<int>(localTypes_.size());
        locals_.emplace(lower, slot);
        localTypes_.push_back(type);
        return slot;
    }

    // ---- blocks ----

    static const char* closerOf(BlockKind kind, MethodKind method) {
        switch (kind) {
        case BlockKind::Method:
            switch (method) {
            case MethodKind::Sub: return "End Sub";
            case MethodKind::Function: return "End Function";
            case MethodKind::Action: return "End Action";
            case MethodKind::Event: return "End Event";
            case MethodKind::Delegate: return "End Delegate";
            case MethodKind::IBAction: return "End IBAction";
            }
            return "End Sub";
        case BlockKind::If:
        case BlockKind::ElsePart: return "End If";
        case BlockKind::For: return "Next";
        case BlockKind::While: return "Wend";
        case BlockKind::Do: return "Loop";
        case BlockKind::Select: return "End Select";
        case BlockKind::Try: return "End Try";
        case BlockKind::With: return "End With";
        }
        return "End";
    }

    static bool accepts(BlockKind kind, Term t) {
        switch (kind) {
        case BlockKind::Method: return t == Term::MethodEnd;
        case BlockKind::If: return t == Term::Else || t == Term::ElseIf || t == Term::EndIf;
        case BlockKind::ElsePart: return t == Term::EndIf || t == Term::ElseIf;
        case BlockKind::For: return t == Term::Next;
        case BlockKind::While: return t == Term::Wend;
        case BlockKind::Do: return t == Term::Loop;
        case BlockKind::Select: return t == Term::Case || t == Term::EndSelect;
        case BlockKind::Try: return t == Term::Catch || t == Term::Finally || t == Term::EndTry;
        case BlockKind::With: return t == Term::EndWith;
        }
        return false;
    }

    std::string strayMessage(Term t) const {
        switch (t) {
        case Term::Next: return "Next without For";
        case Term::Wend: return "Wend without While";
        case Term::EndIf: return "End If without If";
        case Term::Else: return "Else without If";
        case Term::ElseIf: return "Else If without If";
        case Term::Loop: return "Loop without Do";
        case Term::Case: return "Case without Select Case";
        case Term::EndSelect: return "End Select without Select Case";
        case Term::Catch: return "Catch without Try";
        case Term::Finally: return "Finally without Try";
        case Term::EndTry: return "End Try without Try";
        case Term::EndWith: return "End With without With";
        case Term::MethodEnd: {
            const char* word = methodWord(methodKindOf(kw(p_ + 1)));
            return std::string("End ") + word + " without " + word;
        }
        default: return "Statement outside a method";
        }
    }

    // Looks at the start of the current line.
    Term classify() const {
        switch (kw(p_)) {
        case Kw::End: {
            if (p_ + 1 >= e_)
                return Term::None;  // End alone ends the program
            const Kw next = kw(p_ + 1);
            if (isMethodKeyword(next)) return Term::MethodEnd;
            if (next == Kw::If) return Term::EndIf;
            if (next == Kw::Select) return Term::EndSelect;
            if (next == Kw::While) return Term::Wend;
            if (next == Kw::Try) return Term::EndTry;
            if (next == Kw::With) return Term::EndWith;
            return Term::EndOther;
        }
        case Kw::Wend: return Term::Wend;
        case Kw::Next: return Term::Next;
        case Kw::Loop: return Term::Loop;
        case Kw::Else: return kw(p_ + 1) == Kw::If ? Term::ElseIf : Term::Else;
        case Kw::ElseIf: return Term::ElseIf;
        case Kw::Case: return Term::Case;
        case Kw::Catch: return Term::Catch;
        case Kw::Finally: return Term::Finally;
        case Kw::Public: case Kw::Private: case Kw::Sub: case Kw::Function: case Kw::Action:
        case Kw::Event: case Kw::Delegate: case Kw::IBOutlet: case Kw::IBAction: case Kw::Declare:
            return Term::Decl;
        default: return Term::None;
        }
    }

    bool anyOpenAccepts(Term t) const {
        for (BlockKind kind : open_)
            if (accepts(kind, t))
                return true;
        return false;
    }

    // Reads statements up to a line that ends this block; that line is left current.
    Block parseBody(BlockKind kind) {
        if (static_cast<int>(open_.size()) > kMaxBlockDepth)
            failAt(static_cast<int>(li_), "Blocks nested too deeply");  // the opening line
        Block block;
        const std::string closer = closerOf(kind, openMethodKind_);
        for (;;) {
            if (li_ >= lines_.size())
                failAt(static_cast<int>(lines_.size()), closer + " expected");
            beginLine();
            if (atEnd()) {
                ++li_;
                continue;
            }
            const Term t = classify();
            if (t != Term::None) {
                if (accepts(kind, t))
                    return block;
                if (t == Term::Decl) {
                    std::uint32_t q = p_;
                    if (kw(q) == Kw::Public || kw(q) == Kw::Private)
                        ++q;
                    std::string what = text(q);
                    if (q + 1 < e_ && toks_[q + 1].kind == Tok::Name)
                        what += " " + text(q + 1);
                    fail(closer + " expected before " + what);
                }
                if (t == Term::EndOther)
                    fail("Unexpected End " + describe(p_ + 1));
                if (t == Term::MethodEnd || anyOpenAccepts(t))
                    fail(closer + " expected");
                fail(strayMessage(t));
            }
            parseStatementLine(block);
        }
    }

    void parseStatementLine(Block& out) {
        const int line = static_cast<int>(li_) + 1;
        switch (kw(p_)) {
        case Kw::If: out.push_back(parseIf(false)); return;
        case Kw::For: out.push_back(parseFor()); return;
        case Kw::While: out.push_back(parseWhile()); return;
        case Kw::Do: out.push_back(parseDo()); return;
        case Kw::Select: out.push_back(parseSelect()); return;
        case Kw::Try: out.push_back(parseTry()); return;
        case Kw::With: out.push_back(parseWith()); return;
        case Kw::Dim:
        case Kw::Const:
        case Kw::Static:
            parseDim(false, false, out);
            ++li_;
            return;
        case Kw::Stop:  // a breakpoint for a debugger; the runner goes on
            ++p_;
            expectEnd();
            ++li_;
            return;
        case Kw::End: {
            auto stmt = std::make_unique<FlowStmt>();
            stmt->line = line;
            stmt->flow = Flow::EndProgram;
            out.push_back(std::move(stmt));
            ++p_;
            expectEnd();
            ++li_;
            return;
        }
        default:
            out.push_back(parseSimpleStatement());
            expectEnd();
            ++li_;
        }
    }

    StmtPtr parseIf(bool inlineOnly) {
        const int line = static_cast<int>(li_) + 1;
        auto stmt = std::make_unique<IfStmt>();
        stmt->line = line;
        ++p_;
        stmt->conditions.push_back(parseExpr());
        if (kw(p_) != Kw::Then)
            fail("Then expected");
        ++p_;
        if (!atEnd() || inlineOnly) {
            // One-line form: If c Then statement [Else statement]
            if (atEnd())
                fail("Statement expected after Then");
            Block thenPart;
            thenPart.push_back(parseSimpleStatement());
            stmt->branches.push_back(std::move(thenPart));
            if (kw(p_) == Kw::Else) {
                ++p_;
                if (atEnd())
                    fail("Statement expected after Else");
                stmt->elseBranch.push_back(parseSimpleStatement());
            }
            if (!inlineOnly) {
                expectEnd();
                ++li_;
            }
            return stmt;
        }
        ++li_;
        open_.push_back(BlockKind::If);
        stmt->branches.push_back(parseBody(BlockKind::If));
        for (;;) {
            const Term t = classify();
            if (t == Term::ElseIf) {
                p_ += kw(p_) == Kw::Else ? 2 : 1;
                ExprPtr condition = parseExpr();
                if (kw(p_) != Kw::Then)
                    fail("Then expected");
                ++p_;
                expectEnd();
                ++li_;
                const bool afterElse = open_.back() == BlockKind::ElsePart;
                Block branch = parseBody(open_.back());
                // The IDE's "If Then Else Else If" template puts an Else If after the
                // Else; it is accepted, and never reached, since the Else runs first.
                if (!afterElse) {
                    stmt->conditions.push_back(std::move(condition));
                    stmt->branches.push_back(std::move(branch));
                }
            } else if (t == Term::Else) {
                ++p_;
                expectEnd();
                ++li_;
                open_.back() = BlockKind::ElsePart;
                stmt->elseBranch = parseBody(BlockKind::ElsePart);
            } else {  // End If
                p_ += 2;
                expectEnd();
                ++li_;
                open_.pop_back();
                return stmt;
            }
        }
    }

    // The variable a For loop counts with; a name not declared yet becomes a local.
    void loopVariable(const std::string& name, DeclType type, bool& field, int& slot, DeclType& slotType) {
        const std::string lower = lowerName(name);
        if (auto found = locals_.find(lower); found != locals_.end() && type == DeclType::Variant) {
            field = false;
            slot = found->second;
            slotType = localTypes_[static_cast<std::size_t>(slot)];
            return;
        }
        if (auto found = members_.find(lower); found != members_.end() && !found->second.isMethod && type == DeclType::Variant) {
            field = true;
            slot = found->second.index;
            slotType = fieldType(slot);
            return;
        }
        field = false;
        slot = declareLocal(name, type);
        slotType = type;
    }

    StmtPtr parseFor() {
        const int line = static_cast<int>(li_) + 1;
        ++p_;
        if (kw(p_) == Kw::Each) {
            ++p_;
            if (!isPlainName(p_))
                fail("Variable expected after For Each");
            const std::string name = text(p_);
            ++p_;
            DeclType type = DeclType::Variant;
            if (kw(p_) == Kw::As) {
                ++p_;
                type = parseTypeName();
            }
            if (kw(p_) != Kw::In)
                fail("In expected");
            ++p_;
            auto stmt = std::make_unique<ForEachStmt>();
            stmt->line = line;
            stmt->collection = parseExpr();
            stmt->type = type;
            stmt->slot = declareLocal(name, type);
            localClass_[stmt->slot] = type == DeclType::Variant ? lastTypeName_ : std::string();
            expectEnd();
            ++li_;
            open_.push_back(BlockKind::For);
            stmt->body = parseBody(BlockKind::For);
            finishNext();
            return stmt;
        }
        if (!isPlainName(p_))
            fail("Variable expected after For");
        const std::string name = text(p_);
        ++p_;
        DeclType declared = DeclType::Variant;
        if (kw(p_) == Kw::As) {
            ++p_;
            declared = parseTypeName();
        }
        if (!isOp(p_, '='))
            fail("= expected");
        ++p_;
        auto stmt = std::make_unique<ForStmt>();
        stmt->line = line;
        stmt->from = parseExpr();
        if (kw(p_) != Kw::To)
            fail("To expected");
        ++p_;
        stmt->to = parseExpr();
        if (kw(p_) == Kw::Step) {
            ++p_;
            stmt->step = parseExpr();
        }
        expectEnd();
        loopVariable(name, declared, stmt->field, stmt->slot, stmt->type);
        ++li_;
        open_.push_back(BlockKind::For);
        stmt->body = parseBody(BlockKind::For);
        finishNext();
        return stmt;
    }

    void finishNext() {
        ++p_;  // Next
        if (isPlainName(p_))
            ++p_;
        expectEnd();
        ++li_;
        open_.pop_back();
    }

    StmtPtr parseWhile() {
        auto stmt = std::make_unique<WhileStmt>();
        stmt->line = static_cast<int>(li_) + 1;
        ++p_;
        stmt->condition = parseExpr();
        expectEnd();
        ++li_;
        open_.push_back(BlockKind::While);
        stmt->body = parseBody(BlockKind::While);
        p_ += kw(p_) == Kw::End ? 2 : 1;
        expectEnd();
        ++li_;
        open_.pop_back();
        return stmt;
    }

    StmtPtr parseDo() {
        auto stmt = std::make_unique<DoStmt>();
        stmt->line = static_cast<int>(li_) + 1;
        ++p_;
        if (kw(p_) == Kw::While || kw(p_) == Kw::Until) {
            stmt->preUntil = kw(p_) == Kw::Until;
            ++p_;
            stmt->preCondition = parseExpr();
        }
        expectEnd();
        ++li_;
        open_.push_back(BlockKind::Do);
        stmt->body = parseBody(BlockKind::Do);
        ++p_;  // Loop
        if (kw(p_) == Kw::While || kw(p_) == Kw::Until) {
            stmt->postUntil = kw(p_) == Kw::Until;
            ++p_;
            stmt->postCondition = parseExpr();
        }
        expectEnd();
        ++li_;
        open_.pop_back();
        return stmt;
    }

    StmtPtr parseTry() {
        auto stmt = std::make_unique<TryStmt>();
        stmt->line = static_cast<int>(li_) + 1;
        ++p_;
        expectEnd();
        ++li_;
        open_.push_back(BlockKind::Try);
        stmt->body = parseBody(BlockKind::Try);
        for (;;) {
            const Term t = classify();
            if (t == Term::EndTry) {
                p_ += 2;
                expectEnd();
                ++li_;
                open_.pop_back();
                return stmt;
            }
            ++p_;
            if (t == Term::Catch && isPlainName(p_)) {
                const std::string name = text(p_);
                ++p_;
                if (kw(p_) == Kw::As) {
                    ++p_;
                    parseTypeName();
                }
                stmt->catchSlot = declareLocal(name, DeclType::Variant);
            }
            expectEnd();
            ++li_;
            Block part = parseBody(BlockKind::Try);
            if (t == Term::Finally) {
                stmt->finallyBlock = std::move(part);
            } else if (!stmt->hasCatch) {
                stmt->hasCatch = true;
                stmt->catchBlock = std::move(part);
            }
        }
    }

    StmtPtr parseWith() {
        auto stmt = std::make_unique<UnsupportedStmt>();
        stmt->line = static_cast<int>(li_) + 1;
        stmt->what = "With is not supported by the runner";
        ++p_;
        stmt->parts.push_back(parseExpr());
        expectEnd();
        ++li_;
        open_.push_back(BlockKind::With);
        ++withDepth_;
        Block body = parseBody(BlockKind::With);
        --withDepth_;
        p_ += 2;
        expectEnd();
        ++li_;
        open_.pop_back();
        return stmt;
    }

    StmtPtr parseSelect() {
        auto stmt = std::make_unique<SelectStmt>();
        stmt->line = static_cast<int>(li_) + 1;
        ++p_;
        if (kw(p_) != Kw::Case)
            fail("Case expected after Select");
        ++p_;
        stmt->subject = parseExpr();
        expectEnd();
        ++li_;
        open_.push_back(BlockKind::Select);
        for (;;) {
            // Only Case lines and End Select may follow directly.
            while (li_ < lines_.size()) {
                beginLine();
                if (!atEnd())
                    break;
                ++li_;
            }
            if (li_ >= lines_.size())
                failAt(static_cast<int>(lines_.size()), "End Select expected");
            const Term t = classify();
            if (t == Term::EndSelect) {
                p_ += 2;
                expectEnd();
                ++li_;
                open_.pop_back();
                return stmt;
            }
            if (t != Term::Case) {
                if (stmt->branches.empty() && !stmt->hasElse)
                    fail("Case expected");
                break;
            }
            ++p_;
            if (kw(p_) == Kw::Else) {
                ++p_;
                expectEnd();
                ++li_;
                stmt->hasElse = true;
                stmt->elseBranch = parseBody(BlockKind::Select);
                continue;
            }
            std::vector<CaseTest> tests;
            for (;;) {
                CaseTest test;
                if (kw(p_) == Kw::Is) {
                    ++p_;
                    test.kind = CaseTest::Compare;
                    test.compare = comparisonAt(p_);
                    ++p_;
                    test.a = parseConcat();
                } else {
                    test.a = parseExpr();
                    if (kw(p_) == Kw::To) {
                        ++p_;
                        test.kind = CaseTest::Range;
                        test.b = parseExpr();
                    }
                }
                tests.push_back(std::move(test));
                if (!isOp(p_, ','))
                    break;
                ++p_;
            }
            expectEnd();
            ++li_;
            stmt->tests.push_back(std::move(tests));
            stmt->branches.push_back(parseBody(BlockKind::Select));
        }
        // A statement where a Case belongs: report it like any unclosed block.
        fail("End Select expected");
    }

    BinOp comparisonAt(std::uint32_t i) const {
        if (i < e_ && toks_[i].kind == Tok::Op) {
            const std::string_view op = toks_[i].text;
            if (op == "=") return BinOp::Eq;
            if (op == "<>") return BinOp::Ne;
            if (op == "<") return BinOp::Lt;
            if (op == ">") return BinOp::Gt;
            if (op == "<=") return BinOp::Le;
            if (op == ">=") return BinOp::Ge;
        }
        fail("Comparison expected after Is");
    }

    void parseDim(bool classLevel, bool isPublic, Block& out) {
        const int line = static_cast<int>(li_) + 1;
        const std::string word = text(p_);
        ++p_;
        for (;;) {
            if (!isPlainName(p_))
                fail("Name expected after " + word);
            const std::string name = text(p_);
            ++p_;
            bool isArray = false;
            if (isOp(p_, '(')) {
                isArray = true;
                auto ignored = parseArgs();
            }
            DeclType type = DeclType::Variant;
            ExprPtr made;  // the object of "As New Type"
            std::string typeName;
            if (kw(p_) == Kw::As) {
                ++p_;
                if (kw(p_) == Kw::New) {
                    made = parseNew();
                    typeName = lastTypeName_;
                } else {
                    type = parseTypeName();
                    typeName = lastTypeName_;
                }
            }
            if (isArray)
                type = DeclType::Variant;
            ExprPtr value = std::move(made);
            if (isOp(p_, '=')) {
                ++p_;
                value = parseExpr();
            } else if (isArray && !value) {
                // Dim list() As Integer: an empty Array.
                auto make = std::make_unique<NewExpr>();
                make->line = line;
                make->kind = NewExpr::Array;
                value = std::move(make);
            }
            auto stmt = std::make_unique<AssignStmt>();
            stmt->line = line;
            stmt->type = type;
            stmt->value = std::move(value);
            if (classLevel) {
                stmt->target = AssignStmt::Field;
                stmt->slot = addField(name, isPublic, line);
                if (stmt->slot >= unit_.inheritedFields)
                    unit_.fields[static_cast<std::size_t>(stmt->slot - unit_.inheritedFields)].type = type;
                fieldClass_[stmt->slot] = typeName;
            } else {
                stmt->slot = declareLocal(name, type);
                localClass_[stmt->slot] = typeName;
            }
            out.push_back(std::move(stmt));
            if (!isOp(p_, ','))
                break;
            ++p_;
        }
        expectEnd();
    }

    // A statement that fits on one line: assignment, call, Return, Exit, one-line If.
    StmtPtr parseSimpleStatement() {
        const int line = static_cast<int>(li_) + 1;
        const Kw k = kw(p_);
        if (k == Kw::Return) {
            auto stmt = std::make_unique<ReturnStmt>();
            stmt->line = line;
            ++p_;
            if (!atEnd() && kw(p_) != Kw::Else)
                stmt->value = parseExpr();
            return stmt;
        }
        if (k == Kw::Exit) {
            auto stmt = std::make_unique<FlowStmt>();
            stmt->line = line;
            ++p_;
            const Kw what = kw(p_);
            BlockKind needed = BlockKind::Method;
            if (what == Kw::For) { stmt->flow = Flow::ExitFor; needed = BlockKind::For; }
            else if (what == Kw::While) { stmt->flow = Flow::ExitWhile; needed = BlockKind::While; }
            else if (what == Kw::Do) { stmt->flow = Flow::ExitDo; needed = BlockKind::Do; }
            else if (what == Kw::Select) { stmt->flow = Flow::ExitSelect; needed = BlockKind::Select; }
            else if (isMethodKeyword(what)) stmt->flow = Flow::Return;
            else fail("For, While, Do, Select or Sub expected after Exit");
            bool inside = false;
            for (BlockKind open : open_)
                inside = inside || open == needed;
            if (!inside)
                fail("Exit " + text(p_) + " outside " + text(p_));
            ++p_;
            return stmt;
        }
        if (k == Kw::Call) {
            ++p_;
            if (!isPlainName(p_) && kw(p_) != Kw::Me)
                fail("Name expected after Call");
            return parseCallOrAssignment();
        }
        if (k == Kw::Throw) {
            auto stmt = std::make_unique<ThrowStmt>();
            stmt->line = line;
            ++p_;
            if (!atEnd() && kw(p_) != Kw::Else)
                stmt->value = parseExpr();
            return stmt;
        }
        if (k == Kw::Continue || k == Kw::Redim) {
            auto stmt = std::make_unique<UnsupportedStmt>();
            stmt->line = line;
            stmt->what = text(p_) + " is not supported by the runner";
            ++p_;
            if (k == Kw::Continue) {
                const Kw what = kw(p_);
                const BlockKind needed = what == Kw::For ? BlockKind::For : what == Kw::While ? BlockKind::While
                                         : what == Kw::Do ? BlockKind::Do : BlockKind::Method;
                if (needed == BlockKind::Method)
                    fail("For, While or Do expected after Continue");
                bool inside = false;
                for (BlockKind open : open_)
                    inside = inside || open == needed;
                if (!inside)
                    fail("Continue " + text(p_) + " outside " + text(p_));
                ++p_;
            } else {
                if (k == Kw::Redim && kw(p_) == Kw::Preserve)
                    ++p_;
                for (auto& part : parseArgList())
                    stmt->parts.push_back(std::move(part));
            }
            return stmt;
        }
        if (k == Kw::If) {
            DepthGuard guard(*this);  // one-line Ifs may nest: If a Then If b Then ...
            return parseIf(true);
        }
        if (k == Kw::Me || (k == Kw::None && !atEnd() && toks_[p_].kind == Tok::Name) || (withDepth_ > 0 && isOp(p_, '.')))
            return parseCallOrAssignment();
        if (atEnd())
            fail("Statement expected");
        fail("Statement expected before " + describe(p_));
    }

    StmtPtr parseCallOrAssignment() {
        const int line = static_cast<int>(li_) + 1;
        // "Foo 1, 2" and "obj.Go x": a call whose arguments are not in parentheses.
        const bool bareCall = p_ + 1 < e_ && !isOp(p_ + 1, '(') && !isOp(p_ + 1, '.') && !isOp(p_ + 1, '=') &&
                              kw(p_ + 1) != Kw::Else;
        if (bareCall && kw(p_) == Kw::None && toks_[p_].kind == Tok::Name) {
            const std::uint32_t nameAt = p_;
            ++p_;
            std::vector<ExprPtr> args = parseArgList();
            auto stmt = std::make_unique<ExprStmt>();
            stmt->line = line;
            stmt->expr = resolveName(nameAt, std::move(args), true);
            return stmt;
        }
        ExprPtr target = parsePostfix();
        if (isOp(p_, '=')) {
            ++p_;
            ExprPtr value = parseExpr();
            if (auto* local = dynamic_cast<LocalExpr*>(target.get())) {
                auto stmt = std::make_unique<AssignStmt>();
                stmt->line = line;
                stmt->slot = local->slot;
                stmt->type = localTypes_[static_cast<std::size_t>(local->slot)];
                stmt->value = std::move(value);
                return stmt;
            }
            if (auto* field = dynamic_cast<FieldExpr*>(target.get())) {
                auto stmt = std::make_unique<AssignStmt>();
                stmt->line = line;
                stmt->target = AssignStmt::Field;
                stmt->slot = field->slot;
                stmt->type = fieldType(field->slot);
                stmt->value = std::move(value);
                return stmt;
            }
            if (auto* global = dynamic_cast<GlobalFieldExpr*>(target.get())) {
                auto stmt = std::make_unique<AssignStmt>();
                stmt->line = line;
                stmt->target = AssignStmt::GlobalField;
                stmt->slot = global->slot;
                stmt->value = std::move(value);
                return stmt;
            }
            if (dynamic_cast<MemberExpr*>(target.get())) {
                auto stmt = std::make_unique<SetMemberStmt>();
                stmt->line = line;
                stmt->target.reset(static_cast<MemberExpr*>(target.release()));
                if (stmt->target->hasArgs)
                    fail("Assignment to a call");
                stmt->value = std::move(value);
                return stmt;
            }
            if (auto* indexed = dynamic_cast<IndexExpr*>(target.get())) {
                auto stmt = std::make_unique<SetIndexStmt>();
                stmt->line = line;
                stmt->target = std::move(indexed->target);
                stmt->index = std::move(indexed->index);
                stmt->value = std::move(value);
                return stmt;
            }
            auto stmt = std::make_unique<UnsupportedStmt>();
            stmt->line = line;
            const auto* name = dynamic_cast<UnsupportedExpr*>(target.get());
            stmt->what = name && name->parts.empty() ? name->what  // a library name
                                                     : "Assignment to this target is not supported by the runner";
            stmt->parts.push_back(std::move(target));
            stmt->parts.push_back(std::move(value));
            return stmt;
        }
        if (auto* member = dynamic_cast<MemberExpr*>(target.get()); member && !member->hasArgs && !atEnd() && kw(p_) != Kw::Else) {
            // "obj.Go x, y": a member call without parentheses.
            member->args = parseArgList();
            member->hasArgs = true;
        }
        if (!atEnd() && kw(p_) != Kw::Else && dynamic_cast<UnsupportedExpr*>(target.get())) {
            // "obj.Go x, y": the arguments of a member call without parentheses.
            auto stmt = std::make_unique<UnsupportedStmt>();
            stmt->line = line;
            stmt->what = "Member call is not supported by the runner";
            stmt->parts.push_back(std::move(target));
            for (auto& arg : parseArgList())
                stmt->parts.push_back(std::move(arg));
            return stmt;
        }
        auto stmt = std::make_unique<ExprStmt>();
        stmt->line = line;
        stmt->expr = std::move(target);
        return stmt;
    }

    // Comma-separated expressions up to the end of the statement.
    std::vector<ExprPtr> parseArgList() {
        std::vector<ExprPtr> args;
        if (atEnd() || kw(p_) == Kw::Else)
            return args;
        for (;;) {
            args.push_back(parseExpr());
            if (!isOp(p_, ','))
                return args;
            ++p_;
        }
    }

    // "(" [expr {, expr}] ")" with the cursor on the "(".
    std::vector<ExprPtr> parseArgs() {
        ++p_;
        std::vector<ExprPtr> args;
        if (isOp(p_, ')')) {
            ++p_;
            return args;
        }
        for (;;) {
            args.push_back(parseExpr());
            if (isOp(p_, ',')) {
                ++p_;
                continue;
            }
            if (!isOp(p_, ')'))
                fail("Closing parenthesis expected");
            ++p_;
            return args;
        }
    }

    // ---- expressions ----


    ExprPtr makeBinary(BinOp op, ExprPtr left, ExprPtr right, int line) const {
        const int height = std::max(left->height, right->height) + 1;
        if (height > kMaxExpressionHeight)
            fail("Expression too long");
        if (const auto* local = dynamic_cast<const LocalExpr*>(left.get())) {
            const auto* literal = dynamic_cast<const LiteralExpr*>(right.get());
            if (literal && literal->value.type == VType::Integer)
                if (ExprPtr fast = makeLocalConstant(op, local->slot, literal->value.i)) {
                    fast->height = height;
                    fast->line = line;
                    return fast;
                }
        }
        auto expr = std::make_unique<BinaryExpr>();
        expr->height = height;
        expr->line = line;
        expr->op = op;
        expr->left = std::move(left);
        expr->right = std::move(right);
        return expr;
    }

    int lineNo() const { return static_cast<int>(li_) + 1; }

    ExprPtr parseExpr() {
        DepthGuard guard(*this);
        ExprPtr left = parseAnd();
        while (kw(p_) == Kw::Or || kw(p_) == Kw::Xor) {
            const BinOp op = kw(p_) == Kw::Or ? BinOp::Or : BinOp::Xor;
            ++p_;
            left = makeBinary(op, std::move(left), parseAnd(), lineNo());
        }
        return left;
    }

    ExprPtr parseAnd() {
        ExprPtr left = parseNot();
        while (kw(p_) == Kw::And) {
            ++p_;
            left = makeBinary(BinOp::And, std::move(left), parseNot(), lineNo());
        }
        return left;
    }

    ExprPtr parseNot() {
        if (kw(p_) == Kw::Not) {
            DepthGuard guard(*this);
            ++p_;
            auto expr = std::make_unique<UnaryExpr>();
            expr->line = lineNo();
            expr->isNot = true;
            expr->operand = parseNot();
            return expr;
        }
        return parseCompare();
    }

    bool comparisonNext() const {
        if (atEnd() || toks_[p_].kind != Tok::Op || isIsNext())
            return false;
        const std::string_view op = toks_[p_].text;
        return op == "=" || op == "<>" || op == "<" || op == ">" || op == "<=" || op == ">=";
    }
    bool isIsNext() const { return kw(p_) == Kw::Is; }

    // One left-associative level: operands come from `next`; `opAt` names the operator
    // at the current token, or nothing when the level ends.
    template <class OpAt> ExprPtr leftAssociative(ExprPtr (Parser::*next)(), OpAt opAt) {
        ExprPtr left = (this->*next)();
        while (std::optional<BinOp> op = opAt()) {
            ++p_;
            left = makeBinary(*op, std::move(left), (this->*next)(), lineNo());
        }
        return left;
    }

    ExprPtr parseCompare() {
        return leftAssociative(&Parser::parseConcat, [this]() -> std::optional<BinOp> {
            if (isIsNext())
                return BinOp::Is;
            if (comparisonNext())
                return comparisonAt(p_);
            return std::nullopt;
        });
    }

    ExprPtr parseConcat() {
        return leftAssociative(&Parser::parseAdd, [this]() -> std::optional<BinOp> {
            if (isOp(p_, '&'))
                return BinOp::Concat;
            return std::nullopt;
        });
    }

    ExprPtr parseAdd() {
        return leftAssociative(&Parser::parseMod, [this]() -> std::optional<BinOp> {
            if (isOp(p_, '+'))
                return BinOp::Add;
            if (isOp(p_, '-'))
                return BinOp::Sub;
            return std::nullopt;
        });
    }

    ExprPtr parseMod() {
        return leftAssociative(&Parser::parseIntDiv, [this]() -> std::optional<BinOp> {
            if (kw(p_) == Kw::Mod)
                return BinOp::Mod;
            return std::nullopt;
        });
    }

    ExprPtr parseIntDiv() {
        return leftAssociative(&Parser::parseMul, [this]() -> std::optional<BinOp> {
            if (isOp(p_, '\\'))
                return BinOp::IntDiv;
            return std::nullopt;
        });
    }

    ExprPtr parseMul() {
        return leftAssociative(&Parser::parseUnary, [this]() -> std::optional<BinOp> {
            if (isOp(p_, '*'))
                return BinOp::Mul;
            if (isOp(p_, '/'))
                return BinOp::Div;
            return std::nullopt;
        });
    }

    ExprPtr parseUnary() {
        if (isOp(p_, '-') || isOp(p_, '+')) {
            DepthGuard guard(*this);
            const bool minus = isOp(p_, '-');
            ++p_;
            ExprPtr operand = parseUnary();
            if (!minus)
                return operand;
            auto expr = std::make_unique<UnaryExpr>();
            expr->line = lineNo();
            expr->operand = std::move(operand);
            return expr;
        }
        return parsePow();
    }

    ExprPtr parsePow() {
        ExprPtr left = parsePostfix();
        while (isOp(p_, '^')) {
            ++p_;
            DepthGuard guard(*this);
            left = makeBinary(BinOp::Pow, std::move(left), parseUnary(), lineNo());
        }
        return left;
    }

    ExprPtr unsupported(std::string what, std::vector<ExprPtr> parts, int line) const {
        int height = 1;
        for (const ExprPtr& part : parts)
            height = std::max(height, part->height + 1);
        if (height > kMaxExpressionHeight)
            fail("Expression too long");
        auto expr = std::make_unique<UnsupportedExpr>();
        expr->height = height;
        expr->line = line;
        expr->what = std::move(what) + " is not supported by the runner";
        expr->parts = std::move(parts);
        return expr;
    }

    // New Type or New Type(arguments), with the cursor on New.
    ExprPtr parseNew() {
        const int line = lineNo();
        ++p_;
        const std::string written = text(p_);
        parseTypeName();
        const std::string type = lastTypeName_;
        std::vector<ExprPtr> args;
        if (isOp(p_, '('))
            args = parseArgs();
        if (const auto kind = collectionKind(type)) {
            if (!args.empty())
                fail("New " + type + " takes no arguments");
            auto expr = std::make_unique<NewExpr>();
            expr->line = line;
            expr->kind = *kind;
            return expr;
        }
        if (context_.projectClasses ? context_.projectClasses->count(type) != 0 : type == className_) {
            auto expr = std::make_unique<NewExpr>();
            expr->line = line;
            expr->className = type;
            expr->args = std::move(args);
            return expr;
        }
        return unsupported("New " + written, std::move(args), line);
    }

    DeclType fieldType(int slot) const {
        return slot >= unit_.inheritedFields ? unit_.fields[static_cast<std::size_t>(slot - unit_.inheritedFields)].type
                                             : DeclType::Variant;
    }

    // The project class a variable was declared with, for the check of Private members.
    std::string declaredClass(const Expr* expr) const {
        if (const auto* local = dynamic_cast<const LocalExpr*>(expr)) {
            const auto found = localClass_.find(local->slot);
            return found == localClass_.end() ? std::string() : found->second;
        }
        if (const auto* field = dynamic_cast<const FieldExpr*>(expr)) {
            const auto found = fieldClass_.find(field->slot);
            return found == fieldClass_.end() ? std::string() : found->second;
        }
        if (dynamic_cast<const MeExpr*>(expr))
            return className_;
        return std::string();
    }

    void checkVisible(const Expr* object, const std::string& member, std::uint32_t at) const {
        if (!context_.classes)
            return;
        const std::string cls = declaredClass(object);
        if (cls.empty() || cls == className_)
            return;
        const auto found = context_.classes->find(cls);
        if (found == context_.classes->end())
            return;
        // A subclass sees the members it inherits.
        if (const auto own = context_.classes->find(className_); own != context_.classes->end())
            for (const std::string& ancestor : own->second.ancestors)
                if (ancestor == cls)
                    return;
        const std::optional<bool> isPublic = found->second.isPublic(member);
        if (isPublic && !*isPublic)
            failAt(lineNo(), describe(at) + " is Private in " + found->second.written);
    }

    ExprPtr parsePostfix() {
        ExprPtr expr = parsePrimary();
        for (;;) {
            if (isOp(p_, '.')) {
                ++p_;
                if (atEnd() || toks_[p_].kind != Tok::Name)
                    fail("Member name expected after .");
                const std::uint32_t at = p_;
                ++p_;
                auto member = std::make_unique<MemberExpr>();
                member->line = lineNo();
                member->written = text(at);
                member->name = lowerName(member->written);
                checkVisible(expr.get(), member->name, at);
                if (const auto found = collectionMembers().find(member->name); found != collectionMembers().end())
                    member->builtin = found->second;
                if (isOp(p_, '(')) {
                    member->hasArgs = true;
                    member->args = parseArgs();
                }
                int height = expr->height + 1;
                for (const ExprPtr& arg : member->args)
                    height = std::max(height, arg->height + 1);
                if (height > kMaxExpressionHeight)
                    fail("Expression too long");
                member->height = height;
                const auto* me = dynamic_cast<const MeExpr*>(expr.get());
                member->onSuper = me && me->isSuper;
                member->object = std::move(expr);
                expr = std::move(member);
            } else if (isOp(p_, '(')) {
                std::vector<ExprPtr> args = parseArgs();
                expr = makeIndex(std::move(expr), std::move(args));
            } else {
                return expr;
            }
        }
    }

    ExprPtr makeIndex(ExprPtr target, std::vector<ExprPtr> args) {
        if (args.size() != 1)
            fail("One index expected");
        auto expr = std::make_unique<IndexExpr>();
        expr->line = lineNo();
        expr->height = std::max(target->height, args[0]->height) + 1;
        if (expr->height > kMaxExpressionHeight)
            fail("Expression too long");
        expr->target = std::move(target);
        expr->index = std::move(args[0]);
        return expr;
    }

    ExprPtr parsePrimary() {
        if (atEnd())
            fail("Expression expected");
        const Token& t = toks_[p_];
        const int line = lineNo();
        switch (t.kind) {
        case Tok::Integer: {
            auto lit = std::make_unique<LiteralExpr>();
            lit->line = line;
            const std::string digits(t.text);
            errno = 0;
            char* end = nullptr;
            const long long n = std::strtoll(digits.c_str(), &end, 10);
            lit->value = errno == ERANGE ? Value::ofDouble(std::strtod(digits.c_str(), nullptr)) : Value::ofInteger(n);
            ++p_;
            return lit;
        }
        case Tok::Real: {
            auto lit = std::make_unique<LiteralExpr>();
            lit->line = line;
            lit->value = Value::ofDouble(std::strtod(std::string(t.text).c_str(), nullptr));
            ++p_;
            return lit;
        }
        case Tok::String: {
            auto lit = std::make_unique<LiteralExpr>();
            lit->line = line;
            const std::string value = decodeString(t.text);
            lit->value = Value::ofString(QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size())));
            ++p_;
            return lit;
        }
        case Tok::Op:
            if (isOp(p_, '.') && withDepth_ > 0)
                return unsupported("With", {}, line);  // ".member" of the With object; the postfix loop reads it
            if (isOp(p_, '(')) {
                DepthGuard guard(*this);
                ++p_;
                ExprPtr inner = parseExpr();
                if (!isOp(p_, ')'))
                    fail("Closing parenthesis expected");
                ++p_;
                return inner;
            }
            fail("Expression expected before " + describe(p_));
        case Tok::Name:
            break;
        }
        switch (kws_[p_]) {
        case Kw::True:
        case Kw::False: {
            auto lit = std::make_unique<LiteralExpr>();
            lit->line = line;
            lit->value = Value::ofBoolean(kws_[p_] == Kw::True);
            ++p_;
            return lit;
        }
        case Kw::Nil: {
            auto lit = std::make_unique<LiteralExpr>();
            lit->line = line;
            ++p_;
            return lit;
        }
        case Kw::Not: {
            // "a & Not b": Not as an operand binds to the term right after it.
            DepthGuard guard(*this);
            ++p_;
            auto expr = std::make_unique<UnaryExpr>();
            expr->line = line;
            expr->isNot = true;
            expr->operand = parsePostfix();
            expr->height = expr->operand->height + 1;
            return expr;
        }
        case Kw::Me: {
            ++p_;
            auto me = std::make_unique<MeExpr>();
            me->line = line;
            return me;
        }
        case Kw::New:
            return parseNew();
        case Kw::None: {
            const std::uint32_t nameAt = p_;
            ++p_;
            std::vector<ExprPtr> args;
            const bool hasArgs = isOp(p_, '(');
            if (hasArgs)
                args = parseArgs();
            return resolveName(nameAt, std::move(args), hasArgs);
        }
        default:
            fail("Expression expected before " + describe(p_));
        }
    }

    // A plain name, with its argument list when it had one.
    ExprPtr resolveName(std::uint32_t at, std::vector<ExprPtr> args, bool hasArgs) {
        const std::string name(toks_[at].text);
        const std::string lower = lowerName(name);
        const int line = lineNo();
        if (auto found = locals_.find(lower); found != locals_.end()) {
            auto var = std::make_unique<LocalExpr>();
            var->line = line;
            var->slot = found->second;
            if (!hasArgs)
                return var;
            return makeIndex(std::move(var), std::move(args));
        }
        if (auto found = members_.find(lower); found != members_.end()) {
            if (found->second.isMethod) {
                auto call = std::make_unique<CallExpr>();
                call->line = line;
                call->name = lower;
                call->args = std::move(args);
                return call;
            }
            auto var = std::make_unique<FieldExpr>();
            var->line = line;
            var->slot = found->second.index;
            if (!hasArgs)
                return var;
            return makeIndex(std::move(var), std::move(args));
        }
        if (context_.global && className_ != "global") {
            // Public members of Global, by their plain name.
            const ClassShape& global = *context_.global;
            if (const auto method = global.methods.find(lower); method != global.methods.end() && method->second) {
                auto call = std::make_unique<CallExpr>();
                call->line = line;
                call->name = lower;
                call->onGlobal = true;
                call->args = std::move(args);
                return call;
            }
            for (std::size_t i = 0; i < global.fields.size(); ++i)
                if (global.fields[i].first == lower && global.fields[i].second) {
                    auto var = std::make_unique<GlobalFieldExpr>();
                    var->line = line;
                    var->slot = static_cast<int>(i);
                    if (!hasArgs)
                        return var;
                    return makeIndex(std::move(var), std::move(args));
                }
        }
        if (lower == "super" && !hasArgs && context_.superclass) {
            auto super = std::make_unique<MeExpr>();
            super->line = line;
            super->isSuper = true;
            return super;
        }
        if (!hasArgs)
            if (std::optional<Value> constant = constantValue(lower)) {
                auto lit = std::make_unique<LiteralExpr>();
                lit->line = line;
                lit->value = std::move(*constant);
                return lit;
            }
        if (auto found = builtinTable().find(lower); found != builtinTable().end()) {
            auto call = std::make_unique<BuiltinExpr>();
            call->line = line;
            call->fn = found->second;
            call->args = std::move(args);
            return call;
        }
        const bool known = declared_.count(lower) != 0 ||
                           (context_.globalPublics && context_.globalPublics->count(lower) != 0) ||
                           (context_.projectClasses && context_.projectClasses->count(lower) != 0) ||
                           (context_.vocabulary && context_.vocabulary->contains(lower));
        if (!known && context_.unknownNamesAreErrors)
            failAt(line, "Unknown identifier " + describe(at));
        // The runner has no vocabulary lists: a name the checker let through belongs
        // to the library, which the runner does not have.
        return unsupported(name, std::move(args), line);
    }

    std::string file_;
    std::string className_;  // lower case
    std::string lastTypeName_;  // lower case, of the last type read after As or New
    std::unordered_map<int, std::string> localClass_, fieldClass_;  // declared types by slot
    const CompileContext& context_;
    ClassUnit unit_;
    std::vector<Token> toks_;
    std::vector<Kw> kws_;
    std::vector<Line> lines_;
    std::vector<std::string> lexErrors_;
    std::size_t li_ = 0;
    std::uint32_t p_ = 0, e_ = 0;
    std::unordered_map<std::string, Member> members_;
    std::unordered_map<int, int> methodAtLine_;
    std::unordered_set<std::string> publics_;
    std::unordered_set<std::string> declared_;
    int method_ = -1;
    MethodKind openMethodKind_ = MethodKind::Sub;
    std::unordered_map<std::string, int> locals_;
    std::vector<DeclType> localTypes_;
    std::vector<BlockKind> open_;
    int exprDepth_ = 0;
    int withDepth_ = 0;
};

}  // namespace

ClassUnit compileClass(std::string_view text, const std::string& fileName, const CompileContext& context) {
    Parser parser(text, fileName, context);
    return parser.run();
}

std::optional<bool> ClassShape::isPublic(const std::string& member) const {
    if (const auto found = methods.find(member); found != methods.end())
        return found->second;
    for (const auto& [name, isPublic] : fields)
        if (name == member)
            return isPublic;
    return std::nullopt;
}

ClassShape classShape(std::string_view text, const std::string& fileName, const ClassShape* superclass) {
    CompileContext context;
    context.superclass = superclass;
    Parser parser(text, fileName, context);
    return parser.shape();
}

std::unordered_set<std::string> publicMemberNames(std::string_view text) {
    const CompileContext context;
    Parser parser(text, std::string(), context);
    return parser.publicNames();
}

}  // namespace klvr
