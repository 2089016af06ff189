// The runner's objects: instances of the program's classes, Arrays, Dictionaries and
// errors, and the heap that owns them. Values count their references; a cycle
// collector finds groups of objects that only refer to each other, and the heap keeps
// the program's collections within a memory budget, so a runaway program ends with
// "Out of memory" instead of being killed.
#pragma once

#include "tools/lang/ast.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace klvr {

// A class of the running program: its fields (the superclass's first) and its methods
// by lower-case name, a subclass's overriding its superclass's.
struct RtClass {
    std::string name;
    const ClassUnit* unit = nullptr;
    const RtClass* parent = nullptr;
    struct FieldRef {
        const Field* field;
        const RtClass* owner;
    };
    std::vector<FieldRef> fields;
    std::unordered_map<std::string, int> fieldSlots;
    struct MethodRef {
        const Method* method = nullptr;
        const RtClass* owner = nullptr;
    };
    std::unordered_map<std::string, MethodRef> methods;

    bool derivesFrom(const RtClass* other) const {
        for (const RtClass* c = this; c; c = c->parent)
            if (c == other)
                return true;
        return false;
    }
};

// An object the cycle collector knows: it may refer to other objects.
struct Container : HeapObj {
    explicit Container(Kind k);
    ~Container() override;
    Container* prev = nullptr;
    Container* next = nullptr;
    std::int64_t gcRefs = 0;
    bool reachable = false;
    // Calls `fn` for every object this one refers to.
    virtual void visit(void (*fn)(HeapObj*, void*), void* context) const = 0;
    // Drops every reference this one holds (used to break a dead cycle).
    virtual void clearRefs() = 0;
};

struct Instance : Container {
    const RtClass* cls;
    std::vector<Value> fields;
    explicit Instance(const RtClass* c);
    void visit(void (*fn)(HeapObj*, void*), void* context) const override;
    void clearRefs() override;
};

struct ArrayObj : Container {
    std::vector<Value> items;
    ArrayObj();
    ~ArrayObj() override;
    void append(Value v);
    void insert(std::int64_t index, Value v);
    void removeAt(std::int64_t index);
    Value& at(std::int64_t index);
    void visit(void (*fn)(HeapObj*, void*), void* context) const override;
    void clearRefs() override;

private:
    void reserveFor(std::size_t count);
    std::size_t charged_ = 0;
};

// Keys in insertion order; a removed key leaves a hole that is closed up once holes
// make half of the entries. The index is open addressing over positions in `entries`
// (each entry keeps its hash), so a look-up touches two small arrays and no node.
struct DictObj : Container {
    struct Entry {
        Value key, value;
        std::size_t hash = 0;
        bool alive = true;
    };
    std::vector<Entry> entries;

    DictObj();
    ~DictObj() override;
    std::size_t count() const { return live_; }
    Value* find(const Value& key);
    void set(const Value& key, Value v);
    bool remove(const Value& key);
    void removeAll();
    void visit(void (*fn)(HeapObj*, void*), void* context) const override;
    void clearRefs() override;

private:
    // A slot holds the entry's position in its low half and the top of its hash in
    // the high half, so that most keys that are not the one sought are passed over
    // without reading their entry.
    static constexpr std::uint64_t kEmpty = ~std::uint64_t{0}, kHole = kEmpty - 1;
    static std::uint64_t slotOf(std::size_t position, std::size_t hash) {
        return (static_cast<std::uint64_t>(hash >> 32) << 32) | static_cast<std::uint32_t>(position);
    }
    // The slot of `key` in slots_, or the free slot where it would go.
    std::size_t probe(const Value& key, std::size_t hash, bool& found) const;
    void rebuild(std::size_t slotCount);
    void compact();
    std::vector<std::uint64_t> slots_;
    std::size_t live_ = 0;
    std::size_t used_ = 0;  // slots not empty (live and holes)
};

// What a Catch receives: the message of the error (e.Message).
struct ErrorObj : HeapObj {
    QString message;
    explicit ErrorObj(QString m) : HeapObj(Kind::Error), message(std::move(m)) {}
};

// Statistics and knobs of the heap of the running thread.
struct HeapStats {
    std::size_t containers = 0;       // live objects that may refer to others
    std::size_t collections = 0;      // runs of the cycle collector
    std::size_t collectionBytes = 0;  // bytes held by Arrays' and Dictionaries' elements
};
HeapStats heapStats();
// The bytes the elements of all collections may take together; beyond, "Out of memory".
void setCollectionBudget(std::size_t bytes);
std::size_t defaultCollectionBudget();
// Runs the cycle collector now (it also runs by itself as objects are made).
void collectCycles();

}  // namespace klvr
