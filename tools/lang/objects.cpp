#include "tools/lang/objects.h"

#include <unistd.h>

#include <QHash>

#include <algorithm>
#include <cmath>
#include <functional>

namespace klvr {

namespace {

struct HeapState {
    Container* head = nullptr;
    std::size_t containers = 0;
    std::size_t madeSinceCollection = 0;
    std::size_t aliveAfterCollection = 0;
    std::size_t collections = 0;
    std::size_t collectionBytes = 0;
    std::size_t budget = defaultCollectionBudget();
    bool collecting = false;
    // Objects whose count reached 0 while another one was being freed: freeing them
    // in a loop instead of recursively keeps a long chain of objects off the stack.
    std::vector<HeapObj*> pending;
    bool freeing = false;
};

HeapState& heap() {
    thread_local HeapState state;
    return state;
}

// A collection runs once as many containers were made since the last one as were
// alive after it (at least a few thousand): the work stays proportional to the
// objects made.
constexpr std::size_t kMinCollectionInterval = 4096;

void charge(std::size_t bytes) {
    HeapState& h = heap();
    if (h.collectionBytes + bytes > h.budget) {
        // Dead cycles may hold memory; try once before giving up.
        if (!h.collecting)
            collectCycles();
        if (h.collectionBytes + bytes > h.budget)
            throw RuntimeFailure("Out of memory");
    }
    h.collectionBytes += bytes;
}

void uncharge(std::size_t bytes) {
    HeapState& h = heap();
    h.collectionBytes -= std::min(bytes, h.collectionBytes);
}

constexpr std::size_t kEntryBytes = sizeof(DictObj::Entry) + 16;  // the entry and its share of the index

}  // namespace

void releaseObject(HeapObj* object) noexcept {
    HeapState& h = heap();
    if (h.freeing) {
        h.pending.push_back(object);
        return;
    }
    h.freeing = true;
    delete object;
    while (!h.pending.empty()) {
        HeapObj* next = h.pending.back();
        h.pending.pop_back();
        delete next;
    }
    h.freeing = false;
}

QString objectText(const HeapObj* object) {
    switch (object->kind) {
    case HeapObj::Kind::String: return static_cast<const StrObj*>(object)->text;
    case HeapObj::Kind::Error: return static_cast<const ErrorObj*>(object)->message;
    case HeapObj::Kind::Array:
        return QStringLiteral("Array(%1)").arg(static_cast<const ArrayObj*>(object)->items.size());
    case HeapObj::Kind::Dictionary:
        return QStringLiteral("Dictionary(%1)").arg(static_cast<const DictObj*>(object)->count());
    case HeapObj::Kind::Instance:
        return QString::fromStdString(static_cast<const Instance*>(object)->cls->name);
    }
    return QString();
}

std::size_t defaultCollectionBudget() {
    // A quarter of the memory, and at most 1 GB (67 million values).
    const long pages = sysconf(_SC_PHYS_PAGES), pageSize = sysconf(_SC_PAGESIZE);
    const std::size_t physical = pages > 0 && pageSize > 0 ? static_cast<std::size_t>(pages) * static_cast<std::size_t>(pageSize)
                                                           : std::size_t{4} << 30;
    return std::min(physical / 4, std::size_t{1} << 30);
}

void setCollectionBudget(std::size_t bytes) { heap().budget = bytes; }

HeapStats heapStats() {
    const HeapState& h = heap();
    return HeapStats{h.containers, h.collections, h.collectionBytes};
}

// ---- containers and the cycle collector ----

Container::Container(Kind k) : HeapObj(k) {
    HeapState& h = heap();
    if (++h.madeSinceCollection > std::max(kMinCollectionInterval, h.aliveAfterCollection) && !h.collecting)
        collectCycles();
    next = h.head;
    if (h.head)
        h.head->prev = this;
    h.head = this;
    ++h.containers;
}

Container::~Container() {
    HeapState& h = heap();
    if (prev)
        prev->next = next;
    else
        h.head = next;
    if (next)
        next->prev = prev;
    --h.containers;
}

void collectCycles() {
    // Every reference to a container from outside the containers (a variable, a
    // frame, an argument being evaluated) is counted in its refs but not by any
    // container; what such a reference reaches is alive, the rest is garbage.
    HeapState& h = heap();
    if (h.collecting)
        return;
    h.collecting = true;
    h.madeSinceCollection = 0;
    ++h.collections;
    for (Container* c = h.head; c; c = c->next) {
        c->gcRefs = c->refs;
        c->reachable = false;
    }
    for (Container* c = h.head; c; c = c->next)
        c->visit([](HeapObj* child, void*) {
            if (child->kind == HeapObj::Kind::Instance || child->kind == HeapObj::Kind::Array ||
                child->kind == HeapObj::Kind::Dictionary)
                --static_cast<Container*>(child)->gcRefs;
        }, nullptr);
    std::vector<Container*> work;
    for (Container* c = h.head; c; c = c->next)
        if (c->gcRefs > 0) {
            c->reachable = true;
            work.push_back(c);
        }
    while (!work.empty()) {
        Container* c = work.back();
        work.pop_back();
        c->visit([](HeapObj* child, void* context) {
            if (child->kind != HeapObj::Kind::Instance && child->kind != HeapObj::Kind::Array &&
                child->kind != HeapObj::Kind::Dictionary)
                return;
            auto* target = static_cast<Container*>(child);
            if (!target->reachable) {
                target->reachable = true;
                static_cast<std::vector<Container*>*>(context)->push_back(target);
            }
        }, &work);
    }
    std::vector<Container*> garbage;
    for (Container* c = h.head; c; c = c->next)
        if (!c->reachable)
            garbage.push_back(c);
    // Hold every dead object while their references to each other are dropped, then
    // let them go.
    for (Container* c : garbage)
        ++c->refs;
    for (Container* c : garbage)
        c->clearRefs();
    for (Container* c : garbage)
        if (--c->refs == 0)
            releaseObject(c);
    h.aliveAfterCollection = h.containers;
    h.collecting = false;
}

namespace {

void visitValues(const std::vector<Value>& values, void (*fn)(HeapObj*, void*), void* context) {
    for (const Value& v : values)
        if (v.type == VType::Object)
            fn(v.o, context);
}

}  // namespace

Instance::Instance(const RtClass* c) : Container(Kind::Instance), cls(c) {}

void Instance::visit(void (*fn)(HeapObj*, void*), void* context) const { visitValues(fields, fn, context); }

void Instance::clearRefs() {
    std::vector<Value> dropped;
    dropped.swap(fields);
    fields.resize(dropped.size());
}

// ---- Array ----

ArrayObj::ArrayObj() : Container(Kind::Array) {}

ArrayObj::~ArrayObj() { uncharge(charged_); }

void ArrayObj::reserveFor(std::size_t count) {
    if (count <= items.capacity())
        return;
    const std::size_t capacity = std::max<std::size_t>({count, items.capacity() * 2, 8});
    const std::size_t bytes = capacity * sizeof(Value);
    charge(bytes - charged_);
    try {
        items.reserve(capacity);
    } catch (const std::bad_alloc&) {
        uncharge(bytes - charged_);
        throw RuntimeFailure("Out of memory");
    }
    charged_ = bytes;
}

void ArrayObj::append(Value v) {
    reserveFor(items.size() + 1);
    items.push_back(std::move(v));
}

void ArrayObj::insert(std::int64_t index, Value v) {
    if (index < 0 || index > static_cast<std::int64_t>(items.size()))
        throw RuntimeFailure("Index " + std::to_string(index) + " out of range (0 to " + std::to_string(items.size()) + ")");
    reserveFor(items.size() + 1);
    items.insert(items.begin() + index, std::move(v));
}

Value& ArrayObj::at(std::int64_t index) {
    if (index < 0 || index >= static_cast<std::int64_t>(items.size())) {
        if (items.empty())
            throw RuntimeFailure("Index " + std::to_string(index) + " out of range (the Array is empty)");
        throw RuntimeFailure("Index " + std::to_string(index) + " out of range (0 to " + std::to_string(items.size() - 1) + ")");
    }
    return items[static_cast<std::size_t>(index)];
}

void ArrayObj::removeAt(std::int64_t index) {
    at(index);
    Value removed = std::move(items[static_cast<std::size_t>(index)]);
    items.erase(items.begin() + index);
}

void ArrayObj::visit(void (*fn)(HeapObj*, void*), void* context) const { visitValues(items, fn, context); }

void ArrayObj::clearRefs() {
    std::vector<Value> dropped;
    dropped.swap(items);
}

// ---- Dictionary ----

namespace {

std::size_t keyHash(const Value& key) {
    switch (key.type) {
    case VType::Nil: return 0x9E3779B97F4A7C15ull;
    case VType::Integer: return static_cast<std::size_t>(key.i) * 0x9E3779B97F4A7C15ull;
    case VType::Double: return std::hash<double>()(key.d);
    case VType::Boolean: return key.b ? 1 : 2;
    case VType::String: return qHash(key.str());
    case VType::Object: return std::hash<const void*>()(key.o);
    }
    return 0;
}

bool sameKey(const Value& a, const Value& b) {
    if (a.type != b.type)
        return false;
    switch (a.type) {
    case VType::Nil: return true;
    case VType::Integer: return a.i == b.i;
    case VType::Double: return a.d == b.d;
    case VType::Boolean: return a.b == b.b;
    case VType::String: return a.o == b.o || a.str() == b.str();
    case VType::Object: return a.o == b.o;
    }
    return false;
}

// 3 and 3.0 are the same key.
Value normalKey(const Value& key) {
    if (key.type == VType::Double && std::isfinite(key.d) && key.d == std::trunc(key.d) && std::fabs(key.d) < 9.0e18)
        return Value::ofInteger(static_cast<std::int64_t>(key.d));
    return key;
}

}  // namespace

DictObj::DictObj() : Container(Kind::Dictionary) {}

DictObj::~DictObj() { uncharge(entries.size() * kEntryBytes); }

std::size_t DictObj::probe(const Value& key, std::size_t hash, bool& found) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = (hash ^ (hash >> 29)) & mask;
    std::size_t firstHole = SIZE_MAX;
    for (;;) {
        const std::uint64_t slot = slots_[i];
        if (slot == kEmpty) {
            found = false;
            return firstHole != SIZE_MAX ? firstHole : i;
        }
        if (slot == kHole) {
            if (firstHole == SIZE_MAX)
                firstHole = i;
        } else if ((slot >> 32) == (hash >> 32)) {
            const Entry& e = entries[static_cast<std::uint32_t>(slot)];
            if (e.hash == hash && sameKey(e.key, key)) {
                found = true;
                return i;
            }
        }
        i = (i + 1) & mask;
    }
}

void DictObj::rebuild(std::size_t slotCount) {
    slots_.assign(slotCount, kEmpty);
    used_ = 0;
    const std::size_t mask = slotCount - 1;
    for (std::size_t n = 0; n < entries.size(); ++n) {
        if (!entries[n].alive)
            continue;
        std::size_t i = (entries[n].hash ^ (entries[n].hash >> 29)) & mask;
        while (slots_[i] != kEmpty)
            i = (i + 1) & mask;
        slots_[i] = slotOf(n, entries[n].hash);
        ++used_;
    }
}

Value* DictObj::find(const Value& key) {
    if (live_ == 0)
        return nullptr;
    const Value k = normalKey(key);
    bool found = false;
    const std::size_t slot = probe(k, keyHash(k), found);
    return found ? &entries[static_cast<std::uint32_t>(slots_[slot])].value : nullptr;
}

void DictObj::set(const Value& key, Value v) {
    Value k = normalKey(key);
    const std::size_t hash = keyHash(k);
    if (slots_.empty()) {
        rebuild(8);
    } else if ((used_ + 1) * 4 > slots_.size() * 3) {
        // Too full: grow when the keys need it, otherwise only clear out the holes.
        rebuild((live_ + 1) * 2 > slots_.size() ? slots_.size() * 2 : slots_.size());
    }
    bool found = false;
    const std::size_t slot = probe(k, hash, found);
    if (found) {
        entries[static_cast<std::uint32_t>(slots_[slot])].value = std::move(v);
        return;
    }
    if (entries.size() >= 0xFFFFFFFFu)
        throw RuntimeFailure("Out of memory");
    charge(kEntryBytes);
    try {
        entries.push_back(Entry{std::move(k), std::move(v), hash, true});
    } catch (const std::bad_alloc&) {
        throw RuntimeFailure("Out of memory");
    }
    if (slots_[slot] == kEmpty)
        ++used_;
    slots_[slot] = slotOf(entries.size() - 1, hash);
    ++live_;
}

bool DictObj::remove(const Value& key) {
    if (live_ == 0)
        return false;
    const Value k = normalKey(key);
    bool found = false;
    const std::size_t slot = probe(k, keyHash(k), found);
    if (!found)
        return false;
    Entry& entry = entries[static_cast<std::uint32_t>(slots_[slot])];
    slots_[slot] = kHole;
    --live_;
    entry.alive = false;
    Value droppedKey = std::move(entry.key), droppedValue = std::move(entry.value);
    if (entries.size() > 32 && live_ < entries.size() / 2)
        compact();
    return true;
}

void DictObj::removeAll() {
    uncharge(entries.size() * kEntryBytes);
    std::vector<Entry> dropped;
    dropped.swap(entries);
    slots_.clear();
    live_ = used_ = 0;
}

void DictObj::compact() {
    const std::size_t before = entries.size();
    std::vector<Entry> kept;
    kept.reserve(live_);
    for (Entry& e : entries)
        if (e.alive)
            kept.push_back(std::move(e));
    entries.swap(kept);
    std::size_t size = 8;
    while (size * 3 < live_ * 4 + 4)
        size *= 2;
    rebuild(size * 2);
    uncharge((before - entries.size()) * kEntryBytes);
}

void DictObj::visit(void (*fn)(HeapObj*, void*), void* context) const {
    for (const Entry& e : entries) {
        if (e.key.type == VType::Object)
            fn(e.key.o, context);
        if (e.value.type == VType::Object)
            fn(e.value.o, context);
    }
}

void DictObj::clearRefs() { removeAll(); }

}  // namespace klvr
