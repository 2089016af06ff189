#include "insight/scan_json.h"

#include <bit>
#include <string>
#include <vector>

namespace {

template <class Char> using View = std::basic_string_view<Char>;

// `,"visibility":"Public","kind":"Sub","name":` for each prefix: the part of an entry
// that its prefix alone decides.
const std::vector<std::string>& entryMiddles() {
    static const std::vector<std::string> middles = [] {
        std::vector<std::string> out;
        for (const DeclarationPrefix& prefix : declarationPrefixes())
            out.push_back(std::string(",\"visibility\":\"") + (prefix.isPublic ? "Public" : "Private") +
                          "\",\"kind\":\"" + declarationKindInfo(prefix.kind).word.toStdString() + "\",\"name\":");
        return out;
    }();
    return middles;
}

// Where one entry's bytes went; they are in one chunk and never move.
struct WrittenEntry {
    const char* at;
    std::size_t size;
};

template <class Char> WrittenEntry writeEntry(JsonOutput& json, const typename ScanRecord<Char>::Entry& e) {
    const std::string& middle = entryMiddles()[size_t(e.prefix)];
    // Room for the whole entry, so that it lands in one chunk.
    json.room(6 * (e.title.size() + e.name.size() + e.parameters.size() + e.type.size()) + middle.size() + 96);
    const char* start = json.position();
    json.literal("{\"title\":");
    json.string(e.title);
    json.literal(",\"line\":");
    json.number(e.line);
    json.raw(middle.data(), middle.size());
    json.string(e.name);
    json.literal(",\"parameters\":");
    json.string(e.parameters);
    json.literal(",\"type\":");
    json.string(e.type);
    json.literal("}");
    return {start, std::size_t(json.position() - start)};
}

// The locals with one slot per distinct key "scope.name", in order of first
// appearance, each holding the local whose type counts (the last one seen). Keys are
// compared as the joined text, so "a.b" + "c" and "a" + "b.c" are the same key.
template <class Char> class LocalTable {
public:
    using Local = typename ScanRecord<Char>::Local;

    explicit LocalTable(std::size_t count) : slots_(std::bit_ceil(2 * count + 2), -1) {}

    void add(const Local& local) {
        const std::size_t mask = slots_.size() - 1;
        for (std::size_t at = hash(local) & mask;; at = (at + 1) & mask) {
            const int index = slots_[at];
            if (index < 0) {
                slots_[at] = int(locals_.size());
                locals_.push_back(&local);
                return;
            }
            if (sameKey(*locals_[size_t(index)], local)) {
                locals_[size_t(index)] = &local;
                return;
            }
        }
    }

    const std::vector<const Local*>& locals() const { return locals_; }

private:
    static std::size_t hash(const Local& local) {
        std::uint64_t h = 0xcbf29ce484222325ull;
        auto mix = [&](std::uint64_t c) { h = (h ^ c) * 0x100000001b3ull; };
        for (Char c : local.scope)
            mix(std::uint64_t(std::make_unsigned_t<Char>(c)));
        mix('.');
        for (Char c : local.name)
            mix(std::uint64_t(std::make_unsigned_t<Char>(c)));
        return std::size_t(h ^ (h >> 29));
    }

    static Char at(const Local& local, std::size_t i) {
        if (i < local.scope.size())
            return local.scope[i];
        return i == local.scope.size() ? Char('.') : local.name[i - local.scope.size() - 1];
    }

    static bool sameKey(const Local& a, const Local& b) {
        if (a.scope.size() == b.scope.size())
            return a.scope == b.scope && a.name == b.name;
        const std::size_t length = a.scope.size() + 1 + a.name.size();
        if (length != b.scope.size() + 1 + b.name.size())
            return false;
        for (std::size_t i = 0; i < length; ++i)
            if (at(a, i) != at(b, i))
                return false;
        return true;
    }

    std::vector<int> slots_;
    std::vector<const Local*> locals_;
};

} // namespace

template <class Char> void appendListsJson(JsonOutput& json, QStringView path, const ScanRecord<Char>& record) {
    json.literal("{\"path\":");
    json.string(std::u16string_view(path.utf16(), size_t(path.size())));

    // "All", remembering where each entry went so the kind lists copy its bytes.
    std::vector<WrittenEntry> written;
    written.reserve(record.entries.size());
    json.literal(",\"lists\":{\"All\":[");
    for (std::size_t i = 0; i < record.entries.size(); ++i) {
        if (i)
            json.literal(",");
        written.push_back(writeEntry<Char>(json, record.entries[i]));
    }
    json.literal("]");

    int currentKind = -1;
    bool firstInList = true;
    auto openKind = [&](int kind) {
        while (currentKind < kind) {
            if (currentKind >= 0)
                json.literal("]");
            ++currentKind;
            json.literal(",");
            // Through a view: QString::utf16() copies a literal's text into the shared
            // string itself, which other threads are reading.
            const QStringView word(declarationKindInfo(DeclarationKind(currentKind)).word);
            json.string(std::u16string_view(word.utf16(), size_t(word.size())));
            json.literal(":[");
            firstInList = true;
        }
    };
    forEachEntryByKind(record, [&](DeclarationKind kind, int i) {
        openKind(int(kind));
        if (!firstInList)
            json.literal(",");
        firstInList = false;
        json.raw(written[size_t(i)].at, written[size_t(i)].size);
    });
    openKind(declarationKindCount - 1);
    json.literal("]}");

    // Scope starts: the entries of kinds with a parameter list, in list order.
    std::vector<int> scopeStarts;
    forEachEntryByKind(record, [&](DeclarationKind kind, int i) {
        if (declarationKindInfo(kind).takesParameters)
            scopeStarts.push_back(i);
    });
    json.literal(",\"lineSeparators\":[");
    for (std::size_t k = 0; k < scopeStarts.size(); ++k) {
        if (k)
            json.literal(",");
        json.number(record.entries[size_t(scopeStarts[k])].position);
    }
    json.literal("],\"lineSeparatorsType\":[");
    for (std::size_t k = 0; k < scopeStarts.size(); ++k) {
        if (k)
            json.literal(",");
        json.string(record.entries[size_t(scopeStarts[k])].name);
    }

    json.literal("]");
}

template <class Char> void appendLocalsJson(JsonOutput& json, const ScanRecord<Char>& record) {
    // Parameters come after the Dim lines and replace a Dim of the same key.
    std::size_t localCount = record.dims.size();
    for (const auto& parameters : record.parameters)
        localCount += parameters.size();
    LocalTable<Char> table(localCount);
    for (const auto& dim : record.dims)
        table.add(dim);
    for (const auto& parameters : record.parameters)
        for (const auto& parameter : parameters)
            table.add(parameter);
    json.literal(",\"locals\":{");
    bool first = true;
    for (const auto* local : table.locals()) {
        if (!first)
            json.literal(",");
        first = false;
        json.room(6 * (local->scope.size() + local->name.size() + local->type.size()) + 8);
        json.quote();
        json.stringPart(local->scope);
        json.literal(".");
        json.stringPart(local->name);
        json.literal("\":");
        json.string(local->type);
    }
    json.literal("}}");
}

template <class Char> void appendScanResultJson(JsonOutput& json, QStringView path, const ScanRecord<Char>& record) {
    appendListsJson(json, path, record);
    appendLocalsJson(json, record);
}

template void appendListsJson<char>(JsonOutput&, QStringView, const ScanRecord<char>&);
template void appendListsJson<char16_t>(JsonOutput&, QStringView, const ScanRecord<char16_t>&);
template void appendLocalsJson<char>(JsonOutput&, const ScanRecord<char>&);
template void appendLocalsJson<char16_t>(JsonOutput&, const ScanRecord<char16_t>&);
template void appendScanResultJson<char>(JsonOutput&, QStringView, const ScanRecord<char>&);
template void appendScanResultJson<char16_t>(JsonOutput&, QStringView, const ScanRecord<char16_t>&);
