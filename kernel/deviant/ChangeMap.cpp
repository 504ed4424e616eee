#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/kernel/deviant/ChangeMap.h>
#include <tav/kernel/deviant/ClassObjectHooks.h>

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/sequenced_index.hpp>
#include <boost/multi_index_container.hpp>

#include <cstdint>
#include <utility>

namespace TAV {

using NSInterface::ObjectIntf;

namespace {

// Objects are at least 8-byte aligned: fold the low bits back in.
struct PointerHash {
    std::size_t operator()(ObjectIntf* p) const
    {
        auto const v = reinterpret_cast<std::uintptr_t>(p);
        return (v >> 3) + v;
    }
};

namespace bmi = boost::multi_index;

using Entries = bmi::multi_index_container<
    ChangeMap::Entry,
    bmi::indexed_by<bmi::hashed_unique<bmi::member<ChangeMap::Entry, ObjectIntf*, &ChangeMap::Entry::object>, PointerHash>,
                    bmi::sequenced<>>>;

constexpr std::size_t kInitialBuckets = 53;

void shape(Entries& entries)
{
    entries.get<0>().max_load_factor(1.0f);
    entries.get<0>().rehash(kInitialBuckets);
}

bool isModel(ObjectIntf const* object)
{
    auto const hook = internal::classObjectHooks().isModel;
    return hook && hook(object);
}

void retain(ObjectIntf* object)
{
    if (!isModel(object))
        object->incRef();
}

void release(ObjectIntf* object)
{
    if (!isModel(object))
        object->decRef();
}

} // namespace

struct ChangeMapStore {
    ChangeMapStore() { shape(entries); }

    void forget() const { cacheValid = false; }
    void remember(ObjectIntf const* key, ObjectIntf* value) const
    {
        cacheKey = key;
        cacheValue = value;
        cacheValid = true;
    }

    Entries entries;
    // Generated accessors read the same object several times in a row.
    mutable ObjectIntf const* cacheKey = nullptr;
    mutable ObjectIntf* cacheValue = nullptr;
    mutable bool cacheValid = false;
};

ChangeMap::const_iterator& ChangeMap::const_iterator::operator++()
{
    auto const& sequence = fStore->entries.get<1>();
    auto next = std::next(sequence.iterator_to(*fEntry));
    fEntry = next == sequence.end() ? nullptr : &*next;
    return *this;
}

ChangeMap::ChangeMap() : fStore(std::make_unique<ChangeMapStore>()) {}

ChangeMap::~ChangeMap()
{
    if (fStore)
        clear();
}

ChangeMap::ChangeMap(ChangeMap&& other) noexcept : fStore(std::make_unique<ChangeMapStore>())
{
    std::swap(fStore, other.fStore);
}

ChangeMap& ChangeMap::operator=(ChangeMap&& other) noexcept
{
    std::swap(fStore, other.fStore);
    other.clear();
    return *this;
}

ObjectIntf* ChangeMap::find(ObjectIntf const* object) const
{
    if (fStore->cacheValid && fStore->cacheKey == object)
        return fStore->cacheValue;
    auto const& index = fStore->entries.get<0>();
    auto const it = index.find(const_cast<ObjectIntf*>(object));
    if (it == index.end())
        return nullptr;
    fStore->remember(object, it->state);
    return it->state;
}

bool ChangeMap::contains(ObjectIntf const* object) const
{
    if (fStore->cacheValid && fStore->cacheKey == object)
        return true;
    auto const& index = fStore->entries.get<0>();
    auto const it = index.find(const_cast<ObjectIntf*>(object));
    if (it == index.end())
        return false;
    fStore->remember(object, it->state);
    return true;
}

ObjectIntf* ChangeMap::insert(ObjectIntf* object, ObjectIntf* state)
{
    auto& index = fStore->entries.get<0>();
    auto const it = index.find(object);
    if (it != index.end()) {
        ObjectIntf* const previous = std::exchange(it->state, state);
        fStore->remember(object, state);
        return previous;
    }
    // Count only once the entry is in: a throwing insert leaves no count behind.
    fStore->entries.get<1>().push_back(Entry{object, state});
    retain(object);
    fStore->remember(object, state);
    return nullptr;
}

ObjectIntf* ChangeMap::erase(ObjectIntf const* object)
{
    auto& index = fStore->entries.get<0>();
    auto const it = index.find(const_cast<ObjectIntf*>(object));
    if (it == index.end())
        return nullptr;
    fStore->forget();
    ObjectIntf* const key = it->object;
    ObjectIntf* const state = it->state;
    index.erase(it);
    release(key);
    return state;
}

void ChangeMap::clear()
{
    fStore->forget();
    // Released after the map is empty, so a release that reenters sees a clean map.
    Entries entries;
    shape(entries);
    std::swap(entries, fStore->entries);
    for (Entry const& entry : entries.get<1>())
        release(entry.object);
}

std::size_t ChangeMap::size() const
{
    return fStore->entries.size();
}

std::size_t ChangeMap::bucketCount() const
{
    return fStore->entries.get<0>().bucket_count();
}

ChangeMap::const_iterator ChangeMap::begin() const
{
    fStore->forget();
    auto const& sequence = fStore->entries.get<1>();
    return const_iterator(fStore.get(), sequence.empty() ? nullptr : &sequence.front());
}

} // namespace TAV
