#pragma once
// What the scanner engine records for one text, before anything is turned into Qt
// strings: positions, line numbers and views into the scanned text (or into the
// record's arena for the few texts the scan makes itself). The parser turns a record
// into DeclarationLists; `kelvaro --scan` writes its JSON straight from the record,
// which spares it tens of thousands of small string allocations.
//
// Char is char for a text scanned as its UTF-8 bytes (ASCII, or UTF-8 without the two
// letters that fold onto ASCII ones; see scannableAsBytes) and char16_t for any other
// text, decoded. Positions are UTF-16 units either way, as the editor counts them.

#include "insight/declarations.h"
#include "insight/text_arena.h"

#include <QtGlobal>
#include <string_view>
#include <vector>

// One of the kind prefixes ("\nPublic Sub "), in the order the kinds and their prefixes
// are searched.
struct DeclarationPrefix {
    DeclarationKind kind;
    bool isPublic;
    std::u16string text; // "\nPublic Sub "
};
const std::vector<DeclarationPrefix>& declarationPrefixes();

template <class Char> struct ScanRecord {
    using View = std::basic_string_view<Char>;

    struct Entry {
        qint64 position; // the line break before the declaration's line, in UTF-16 units
        qint64 line;     // 1-based
        int prefix;      // index into declarationPrefixes()
        View title;      // carriage returns removed
        View name;
        View parameters;
        View type; // no line breaks
    };

    // A local variable or parameter: the key is scope + "." + name.
    struct Local {
        View scope;
        View name;
        View type;
    };

    std::vector<Entry> entries; // every entry, in line order
    std::vector<Local> dims;    // indented Dim lines, in line order
    // Parameters of the declarations written with a prefix's exact letter case, per
    // prefix; they come after the Dims and replace a Dim of the same key.
    std::vector<std::vector<Local>> parameters;
    TextArena<Char> arena;
};

// Copies every text of `record` that is a view into `text` into the record's arena, so
// that the record no longer needs `text`. Views into one title stay views into its copy.
template <class Char> void keepOwnCopies(ScanRecord<Char>& record, std::basic_string_view<Char> text) {
    using View = std::basic_string_view<Char>;
    const Char* const begin = text.data();
    const Char* const end = begin + text.size();
    auto inText = [&](View v) { return !v.empty() && v.data() >= begin && v.data() < end; };
    // `part` of `from`, moved to the same place in `to`.
    auto moved = [](View part, View from, View to) {
        if (part.empty() || part.data() < from.data() || part.data() + part.size() > from.data() + from.size())
            return part;
        return View(to.data() + (part.data() - from.data()), part.size());
    };
    for (auto& entry : record.entries) {
        if (!inText(entry.title))
            continue;
        const View copy = record.arena.copy(entry.title);
        entry.name = moved(entry.name, entry.title, copy);
        entry.parameters = moved(entry.parameters, entry.title, copy);
        entry.type = moved(entry.type, entry.title, copy);
        entry.title = copy;
    }
    // Consecutive locals mostly share their scope: one copy for a run of them.
    View lastOriginal;
    View lastCopy;
    auto own = [&](View v) {
        if (!inText(v))
            return v;
        if (v.data() != lastOriginal.data() || v.size() != lastOriginal.size()) {
            lastOriginal = v;
            lastCopy = record.arena.copy(v);
        }
        return lastCopy;
    };
    for (auto& local : record.dims)
        local.scope = own(local.scope); // names and types of Dim lines are copies already
    for (auto& parameters : record.parameters) {
        for (auto& parameter : parameters) {
            parameter.scope = own(parameter.scope);
            if (inText(parameter.name))
                parameter.name = record.arena.copy(parameter.name);
            if (inText(parameter.type))
                parameter.type = record.arena.copy(parameter.type);
        }
    }
}

// Entry rows in navigator order: for each kind, for each of its prefixes, the entries
// in line order. `each(kind, entryIndex)` is called once per entry.
template <class Char, class Each> void forEachEntryByKind(const ScanRecord<Char>& record, Each each) {
    const auto& prefixes = declarationPrefixes();
    std::vector<std::vector<int>> byPrefix(prefixes.size());
    for (int i = 0; i < int(record.entries.size()); ++i)
        byPrefix[size_t(record.entries[size_t(i)].prefix)].push_back(i);
    for (DeclarationKind kind : allDeclarationKinds())
        for (size_t p = 0; p < prefixes.size(); ++p)
            if (prefixes[p].kind == kind)
                for (int i : byPrefix[p])
                    each(kind, i);
}
