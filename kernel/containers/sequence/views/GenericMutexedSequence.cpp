#include <tav/kernel/containers/sequence/views/GenericMutexedSequence.h>

#include "kernel/containers/sequence/SequenceChecks.h"

#include <boost/thread/locks.hpp>
#include <boost/thread/shared_mutex.hpp>

namespace TAV {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/views/GenericMutexedSequence";
using Reading = boost::shared_lock<boost::shared_mutex>;
using Writing = boost::unique_lock<boost::shared_mutex>;
} // namespace

using Generic::IteratorIntf;
using Generic::IteratorPtr;
using Generic::Ref;

GenericMutexedSequence::GenericMutexedSequence(Generic::SequencePtr aWrapped, boost::shared_mutex& aMutex)
    : fWrapped(std::move(aWrapped)), fMutex(aMutex)
{
}

GenericMutexedSequence::~GenericMutexedSequence() = default;

Generic::SequenceIntf& GenericMutexedSequence::target() const
{
    if (!fWrapped)
        Generic::checks::nullUnderlying(kSource, __LINE__);
    return *fWrapped;
}

void* GenericMutexedSequence::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericMutexedSequence, SequenceIntf>(this, aInfo);
}

Ref GenericMutexedSequence::generic_at(Deviant const& aDeviant, int aIndex) const
{
    Reading lock(fMutex);
    return target().generic_at(aDeviant, aIndex);
}
Ref GenericMutexedSequence::generic_front(Deviant const& aDeviant) const
{
    Reading lock(fMutex);
    return target().generic_front(aDeviant);
}
Ref GenericMutexedSequence::generic_back(Deviant const& aDeviant) const
{
    Reading lock(fMutex);
    return target().generic_back(aDeviant);
}
IteratorPtr GenericMutexedSequence::generic_begin(Deviant const& aDeviant) const
{
    Reading lock(fMutex);
    return target().generic_begin(aDeviant);
}
IteratorPtr GenericMutexedSequence::generic_end(Deviant const& aDeviant) const
{
    Reading lock(fMutex);
    return target().generic_end(aDeviant);
}
int GenericMutexedSequence::generic_size(Deviant const& aDeviant) const
{
    Reading lock(fMutex);
    return target().generic_size(aDeviant);
}
bool GenericMutexedSequence::generic_empty(Deviant const& aDeviant) const
{
    Reading lock(fMutex);
    return target().generic_empty(aDeviant);
}
bool GenericMutexedSequence::generic_contains(Deviant const& aDeviant, Ref aValue) const
{
    Reading lock(fMutex);
    return target().generic_contains(aDeviant, std::move(aValue));
}
std::string GenericMutexedSequence::generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const
{
    Reading lock(fMutex);
    return target().generic_getKestName(aImmutable, aIterator, aPrefix);
}

void GenericMutexedSequence::generic_clear(Deviant const& aDeviant)
{
    Writing lock(fMutex);
    target().generic_clear(aDeviant);
}
void GenericMutexedSequence::generic_insert(Deviant const& aDeviant, int aIndex, Ref aValue)
{
    Writing lock(fMutex);
    target().generic_insert(aDeviant, aIndex, std::move(aValue));
}
IteratorPtr GenericMutexedSequence::generic_insert(Deviant const& aDeviant, IteratorIntf const* aPosition, Ref aValue)
{
    Writing lock(fMutex);
    return target().generic_insert(aDeviant, aPosition, std::move(aValue));
}
IteratorPtr GenericMutexedSequence::generic_erase(Deviant const& aDeviant, IteratorIntf const* aPosition)
{
    Writing lock(fMutex);
    return target().generic_erase(aDeviant, aPosition);
}
IteratorPtr GenericMutexedSequence::generic_erase(Deviant const& aDeviant, IteratorIntf const* aFirst,
                                                  IteratorIntf const* aLast)
{
    Writing lock(fMutex);
    return target().generic_erase(aDeviant, aFirst, aLast);
}
void GenericMutexedSequence::generic_erase(Deviant const& aDeviant, int aIndex)
{
    Writing lock(fMutex);
    target().generic_erase(aDeviant, aIndex);
}
void GenericMutexedSequence::generic_pop_back(Deviant const& aDeviant)
{
    Writing lock(fMutex);
    target().generic_pop_back(aDeviant);
}
void GenericMutexedSequence::generic_pop_front(Deviant const& aDeviant)
{
    Writing lock(fMutex);
    target().generic_pop_front(aDeviant);
}
void GenericMutexedSequence::generic_push_back(Deviant const& aDeviant, Ref aValue)
{
    Writing lock(fMutex);
    target().generic_push_back(aDeviant, std::move(aValue));
}
void GenericMutexedSequence::generic_push_front(Deviant const& aDeviant, Ref aValue)
{
    Writing lock(fMutex);
    target().generic_push_front(aDeviant, std::move(aValue));
}
void GenericMutexedSequence::generic_replace(Deviant const& aDeviant, int aIndex, Ref aValue)
{
    Writing lock(fMutex);
    target().generic_replace(aDeviant, aIndex, std::move(aValue));
}
int GenericMutexedSequence::generic_removeAll(Deviant const& aDeviant, Ref aValue)
{
    Writing lock(fMutex);
    return target().generic_removeAll(aDeviant, std::move(aValue));
}

// Comparison and assignment run whole under the lock, with the wrapped
// sequence standing for this one, so that neither takes the lock twice.
bool GenericMutexedSequence::specialized_equal(Deviant const& aDeviant, SequenceIntf const* aOther,
                                               Deviant const& aOtherDeviant, bool& aHandled) const
{
    aHandled = true;
    Reading lock(fMutex);
    return target().generic_equal(aDeviant, aOther == this ? fWrapped.get() : aOther, aOtherDeviant);
}
void GenericMutexedSequence::specialized_assign(Deviant const& aDeviant, SequenceIntf const* aOther,
                                                Deviant const& aOtherDeviant, bool& aHandled)
{
    aHandled = true;
    Writing lock(fMutex);
    target().generic_assign(aDeviant, aOther == this ? fWrapped.get() : aOther, aOtherDeviant);
}

} // namespace TAV
