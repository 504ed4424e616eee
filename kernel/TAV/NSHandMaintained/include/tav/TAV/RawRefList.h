#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace TAV {

namespace NSInterface {
class ClassObjectIntf;
}

// The stored form of a multi-valued reference property inside a state:
// uncounted canonical pointers in order. Sequences wrap it; association upkeep
// appends and removes here directly, so that the opposite end is not revisited.
class RawRefList {
public:
    using Item = NSInterface::ClassObjectIntf*;

    bool empty() const { return fItems.empty(); }
    std::size_t size() const { return fItems.size(); }
    Item operator[](std::size_t i) const { return fItems[i]; }
    auto begin() const { return fItems.begin(); }
    auto end() const { return fItems.end(); }

    void push_back(Item aItem) { fItems.push_back(aItem); }
    // Removes the first occurrence; false if there was none.
    bool remove(Item aItem)
    {
        auto it = std::find(fItems.begin(), fItems.end(), aItem);
        if (it == fItems.end())
            return false;
        fItems.erase(it);
        return true;
    }
    bool contains(Item aItem) const { return std::find(fItems.begin(), fItems.end(), aItem) != fItems.end(); }
    void clear() { fItems.clear(); }

    friend bool operator==(RawRefList const& a, RawRefList const& b) { return a.fItems == b.fItems; }

private:
    std::vector<Item> fItems;
};

} // namespace TAV
