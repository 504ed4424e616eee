#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace TAV {

namespace NSInterface {
class ClassObjectIntf;
}

// The stored form of a multi-valued reference property inside a state:
// uncounted canonical pointers in order. Sequences wrap it; association upkeep
// appends and removes here directly, so that the opposite end is not revisited.
// One word while empty, which most lists of most states are.
class RawRefList {
public:
    using Item = NSInterface::ClassObjectIntf*;
    using const_iterator = std::vector<Item>::const_iterator;

    RawRefList() = default;
    RawRefList(RawRefList const& aOther) : fItems(copyOf(aOther)) {}
    RawRefList(RawRefList&&) noexcept = default;
    RawRefList& operator=(RawRefList const& aOther)
    {
        if (this != &aOther)
            fItems = copyOf(aOther);
        return *this;
    }
    RawRefList& operator=(RawRefList&&) noexcept = default;

    bool empty() const { return !fItems || fItems->empty(); }
    std::size_t size() const { return fItems ? fItems->size() : 0; }
    Item operator[](std::size_t i) const { return (*fItems)[i]; }
    const_iterator begin() const { return fItems ? fItems->cbegin() : const_iterator(); }
    const_iterator end() const { return fItems ? fItems->cend() : const_iterator(); }

    void push_back(Item aItem)
    {
        if (!fItems)
            fItems = std::make_unique<std::vector<Item>>();
        fItems->push_back(aItem);
    }
    // Removes the first occurrence; false if there was none.
    bool remove(Item aItem)
    {
        if (!fItems)
            return false;
        auto it = std::find(fItems->begin(), fItems->end(), aItem);
        if (it == fItems->end())
            return false;
        fItems->erase(it);
        return true;
    }
    bool contains(Item aItem) const { return std::find(begin(), end(), aItem) != end(); }
    void clear() { fItems.reset(); }

    friend bool operator==(RawRefList const& a, RawRefList const& b)
    {
        return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
    }

private:
    static std::unique_ptr<std::vector<Item>> copyOf(RawRefList const& aOther)
    {
        if (aOther.empty())
            return nullptr;
        return std::make_unique<std::vector<Item>>(*aOther.fItems);
    }

    std::unique_ptr<std::vector<Item>> fItems;
};

} // namespace TAV
