#include "tools/lang/vocabulary.h"

#include "tools/lang/lexer.h"

#include <plist/plist.h>

#include <cctype>
#include <cstring>
#include <vector>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace klvr {

namespace {

const std::unordered_map<std::string, Kw>& keywordTable() {
    static const std::unordered_map<std::string, Kw> table = {
        {"public", Kw::Public}, {"private", Kw::Private}, {"sub", Kw::Sub}, {"function", Kw::Function},
        {"action", Kw::Action}, {"event", Kw::Event}, {"delegate", Kw::Delegate},
        {"iboutlet", Kw::IBOutlet}, {"ibaction", Kw::IBAction}, {"dim", Kw::Dim}, {"const", Kw::Const},
        {"declare", Kw::Declare}, {"as", Kw::As}, {"new", Kw::New}, {"end", Kw::End}, {"if", Kw::If},
        {"then", Kw::Then}, {"else", Kw::Else}, {"elseif", Kw::ElseIf}, {"for", Kw::For},
        {"each", Kw::Each}, {"in", Kw::In}, {"to", Kw::To}, {"step", Kw::Step}, {"next", Kw::Next},
        {"while", Kw::While}, {"wend", Kw::Wend}, {"select", Kw::Select}, {"case", Kw::Case},
        {"is", Kw::Is}, {"do", Kw::Do}, {"loop", Kw::Loop}, {"until", Kw::Until}, {"exit", Kw::Exit},
        {"return", Kw::Return}, {"and", Kw::And}, {"or", Kw::Or}, {"xor", Kw::Xor}, {"not", Kw::Not},
        {"mod", Kw::Mod}, {"true", Kw::True}, {"false", Kw::False}, {"nil", Kw::Nil}, {"me", Kw::Me},
        {"byval", Kw::ByVal}, {"byref", Kw::ByRef}, {"optional", Kw::Optional}, {"try", Kw::Try},
        {"catch", Kw::Catch}, {"finally", Kw::Finally}, {"throw", Kw::Throw}, {"with", Kw::With},
        {"static", Kw::Static}, {"call", Kw::Call}, {"continue", Kw::Continue}, {"redim", Kw::Redim},
        {"preserve", Kw::Preserve}, {"stop", Kw::Stop},
    };
    return table;
}

// Words a build without the property lists must still accept: the runner's functions,
// the basic types and the objects every class can name.
constexpr const char* kFallbackNames[] = {
    "Len", "Left", "Right", "Mid", "InStr", "UCase", "LCase", "Trim", "Str", "Val",
    "Alert", "MsgBox", "Print", "Integer", "Double", "String", "Boolean", "id", "Array",
    "Dictionary", "Self", "Super", "NSObject",
};

void addPlistStrings(plist_t node, Vocabulary& vocabulary, bool keys, bool values) {
    if (plist_get_node_type(node) != PLIST_DICT)
        return;
    plist_dict_iter it = nullptr;
    plist_dict_new_iter(node, &it);
    if (!it)
        return;
    for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, it, &key, &value);
        if (!key)
            break;
        if (keys)
            vocabulary.add(key);
        if (values && value && plist_get_node_type(value) == PLIST_STRING) {
            char* text = nullptr;
            plist_get_string_val(value, &text);
            if (text)
                vocabulary.add(text);
            std::free(text);
        }
        std::free(key);
    }
    std::free(it);
}

}  // namespace

Kw keywordOf(std::string_view name) {
    // Called for every name of every file: the keywords are grouped by length and
    // compared in place after lower-casing on the stack, with no hashing.
    struct Entry {
        std::string_view word;
        Kw kw;
    };
    static const std::vector<std::vector<Entry>> byLength = [] {
        std::vector<std::vector<Entry>> groups(9);
        for (const auto& entry : keywordTable())
            groups[entry.first.size()].push_back({entry.first, entry.second});
        return groups;
    }();
    if (name.size() < 2 || name.size() > 8)
        return Kw::None;  // no keyword is shorter or longer
    char lower[8];
    for (std::size_t i = 0; i < name.size(); ++i)
        lower[i] = (name[i] >= 'A' && name[i] <= 'Z') ? static_cast<char>(name[i] - 'A' + 'a') : name[i];
    for (const Entry& entry : byLength[name.size()])
        if (entry.word[0] == lower[0] && std::memcmp(entry.word.data(), lower, name.size()) == 0)
            return entry.kw;
    return Kw::None;
}

Vocabulary::Vocabulary() {
    for (const auto& entry : keywordTable())
        known_.insert(entry.first);
    for (const char* name : kFallbackNames)
        add(name);
}

void Vocabulary::add(std::string_view name) {
    // A vocabulary entry such as "Mid(String, Start)" or "Foo Bar" contributes its
    // leading name only.
    std::size_t end = 0;
    while (end < name.size() && (std::isalnum(static_cast<unsigned char>(name[end])) || name[end] == '_'))
        ++end;
    if (end > 0)
        known_.insert(lowerName(name.substr(0, end)));
}

int Vocabulary::loadPropertyLists(const std::string& resourcesDir) {
    struct ListFile {
        const char* name;
        bool keys;
        bool values;
    };
    static constexpr ListFile kLists[] = {
        {"type.plist", false, true},     {"keyword.plist", false, true}, {"const.plist", false, true},
        {"function.plist", true, false}, {"class.plist", true, false},   {"object.plist", true, false},
    };
    const std::size_t before = known_.size();
    for (const ListFile& list : kLists) {
        std::ifstream in(std::filesystem::path(resourcesDir) / list.name, std::ios::binary);
        if (!in)
            continue;
        const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        plist_t root = nullptr;
        plist_from_memory(bytes.data(), static_cast<uint32_t>(bytes.size()), &root);
        if (!root)
            continue;
        addPlistStrings(root, *this, list.keys, list.values);
        plist_free(root);
    }
    return static_cast<int>(known_.size() - before);
}

std::string defaultResourcesDir(const std::string& executablePath) {
    if (const char* fromEnvironment = std::getenv("KELVARO_RESOURCES"); fromEnvironment && *fromEnvironment)
        return fromEnvironment;
    std::error_code error;
    const std::filesystem::path exe = std::filesystem::weakly_canonical(executablePath, error);
    return (exe.parent_path().parent_path() / "Resources").string();
}

}  // namespace klvr
