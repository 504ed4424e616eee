#pragma once

#include <tav/Export.h>

#include <cstddef>
#include <memory>

namespace TAV {

namespace NSInterface {
class ObjectIntf;
}

struct ChangeMapStore;

// Object to state, hashed for lookup and walked in order of first entry.
// The map counts a reference on each object it holds (models excepted, so a
// model in its own map does not keep itself alive) and never deletes states.
class TAV_EXPORT ChangeMap {
public:
    struct Entry {
        NSInterface::ObjectIntf* object;
        // Replaced in place, so an entry keeps its place in the sequence.
        mutable NSInterface::ObjectIntf* state;
    };

    class TAV_EXPORT const_iterator {
    public:
        const_iterator() = default;
        Entry const& operator*() const { return *fEntry; }
        Entry const* operator->() const { return fEntry; }
        const_iterator& operator++();
        friend bool operator==(const_iterator const& a, const_iterator const& b) { return a.fEntry == b.fEntry; }
        friend bool operator!=(const_iterator const& a, const_iterator const& b) { return a.fEntry != b.fEntry; }

    private:
        friend class ChangeMap;
        const_iterator(ChangeMapStore const* store, Entry const* entry) : fStore(store), fEntry(entry) {}
        ChangeMapStore const* fStore = nullptr;
        Entry const* fEntry = nullptr;
    };

    ChangeMap();
    ~ChangeMap();
    ChangeMap(ChangeMap&& other) noexcept;
    ChangeMap& operator=(ChangeMap&& other) noexcept;
    ChangeMap(ChangeMap const&) = delete;
    ChangeMap& operator=(ChangeMap const&) = delete;

    // Null when the object has no entry.
    NSInterface::ObjectIntf* find(NSInterface::ObjectIntf const* object) const;
    bool contains(NSInterface::ObjectIntf const* object) const;
    // Returns the state it replaced (now the caller's), or null for a new key.
    NSInterface::ObjectIntf* insert(NSInterface::ObjectIntf* object, NSInterface::ObjectIntf* state);
    // Removes the entry and returns its state (now the caller's); null if absent.
    NSInterface::ObjectIntf* erase(NSInterface::ObjectIntf const* object);
    void clear();

    std::size_t size() const;
    bool empty() const { return size() == 0; }
    std::size_t bucketCount() const;

    // Walking drops the lookup cache, like any walk of the map.
    const_iterator begin() const;
    const_iterator end() const { return const_iterator(fStore.get(), nullptr); }

private:
    std::unique_ptr<ChangeMapStore> fStore;
};

} // namespace TAV
