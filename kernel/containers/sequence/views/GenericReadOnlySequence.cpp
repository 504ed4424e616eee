#include <tav/kernel/containers/sequence/views/GenericReadOnlySequence.h>

#include "kernel/containers/sequence/views/ViewFailure.h"

namespace TAV {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/views/GenericReadOnlySequence";

[[noreturn]] void refuse(int aLine)
{
    views::fail("This derived sequence is read-only!", kSource, aLine);
}
} // namespace

using Generic::IteratorIntf;
using Generic::IteratorPtr;
using Generic::Ref;

GenericReadOnlySequence::GenericReadOnlySequence(Generic::SequencePtr aShown) : fShown(std::move(aShown)) {}

GenericReadOnlySequence::~GenericReadOnlySequence() = default;

void* GenericReadOnlySequence::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericReadOnlySequence, SequenceIntf>(this, aInfo);
}

Ref GenericReadOnlySequence::generic_at(Deviant const& aDeviant, int aIndex) const
{
    return fShown->generic_at(aDeviant, aIndex);
}
Ref GenericReadOnlySequence::generic_front(Deviant const& aDeviant) const { return fShown->generic_front(aDeviant); }
Ref GenericReadOnlySequence::generic_back(Deviant const& aDeviant) const { return fShown->generic_back(aDeviant); }
IteratorPtr GenericReadOnlySequence::generic_begin(Deviant const& aDeviant) const
{
    return fShown->generic_begin(aDeviant);
}
IteratorPtr GenericReadOnlySequence::generic_end(Deviant const& aDeviant) const { return fShown->generic_end(aDeviant); }
int GenericReadOnlySequence::generic_size(Deviant const& aDeviant) const { return fShown->generic_size(aDeviant); }
bool GenericReadOnlySequence::generic_empty(Deviant const& aDeviant) const { return fShown->generic_empty(aDeviant); }
bool GenericReadOnlySequence::generic_contains(Deviant const& aDeviant, Ref aValue) const
{
    return fShown->generic_contains(aDeviant, std::move(aValue));
}
std::string GenericReadOnlySequence::generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const
{
    return fShown->generic_getKestName(aImmutable, aIterator, aPrefix);
}

void GenericReadOnlySequence::generic_clear(Deviant const&) { refuse(__LINE__); }
void GenericReadOnlySequence::generic_insert(Deviant const&, int, Ref) { refuse(__LINE__); }
IteratorPtr GenericReadOnlySequence::generic_insert(Deviant const&, IteratorIntf const*, Ref) { refuse(__LINE__); }
IteratorPtr GenericReadOnlySequence::generic_erase(Deviant const&, IteratorIntf const*) { refuse(__LINE__); }
IteratorPtr GenericReadOnlySequence::generic_erase(Deviant const&, IteratorIntf const*, IteratorIntf const*)
{
    refuse(__LINE__);
}
void GenericReadOnlySequence::generic_erase(Deviant const&, int) { refuse(__LINE__); }
void GenericReadOnlySequence::generic_pop_back(Deviant const&) { refuse(__LINE__); }
void GenericReadOnlySequence::generic_pop_front(Deviant const&) { refuse(__LINE__); }
void GenericReadOnlySequence::generic_push_back(Deviant const&, Ref) { refuse(__LINE__); }
void GenericReadOnlySequence::generic_push_front(Deviant const&, Ref) { refuse(__LINE__); }
void GenericReadOnlySequence::generic_replace(Deviant const&, int, Ref) { refuse(__LINE__); }
int GenericReadOnlySequence::generic_removeAll(Deviant const&, Ref) { refuse(__LINE__); }

// Compared as the view it shows, with that view standing for this one.
bool GenericReadOnlySequence::specialized_equal(Deviant const& aDeviant, SequenceIntf const* aOther,
                                                Deviant const& aOtherDeviant, bool& aHandled) const
{
    aHandled = true;
    return fShown->generic_equal(aDeviant, aOther == this ? fShown.get() : aOther, aOtherDeviant);
}
void GenericReadOnlySequence::specialized_assign(Deviant const&, SequenceIntf const*, Deviant const&, bool&)
{
    refuse(__LINE__);
}

} // namespace TAV
