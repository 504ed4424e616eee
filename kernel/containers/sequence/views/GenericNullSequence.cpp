#include <tav/kernel/containers/sequence/views/GenericNullSequence.h>

#include <tav/kernel/containers/sequence/ElementTraits.h>

#include <BRIX/ModuleObjectDeleter.h>

namespace TAV {

using Generic::IteratorIntf;
using Generic::IteratorPtr;
using Generic::Ref;

namespace {
// HeapCounted needs a public constructor; the class keeps its own protected.
struct NullSequence : GenericNullSequence {};
} // namespace

GenericNullSequence* GenericNullSequence::getSingleton()
{
    static GenericNullSequence* const sInstance = [] {
        GenericNullSequence* instance = new Generic::HeapCounted<NullSequence>();
        instance->incRef();
        BRIX::ModuleObjectDeleter::registerForCleanup(
            [](void* p) { static_cast<GenericNullSequence*>(p)->decRef(); }, instance);
        return instance;
    }();
    return sInstance;
}

void* GenericNullSequence::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<GenericNullSequence, SequenceIntf>(this, aInfo);
}

Ref GenericNullSequence::generic_at(Deviant const&, int) const { return {}; }
Ref GenericNullSequence::generic_front(Deviant const&) const { return {}; }
Ref GenericNullSequence::generic_back(Deviant const&) const { return {}; }
IteratorPtr GenericNullSequence::generic_begin(Deviant const&) const { return Generic::makeIterator<Iterator>(); }
IteratorPtr GenericNullSequence::generic_end(Deviant const&) const { return Generic::makeIterator<Iterator>(); }
void GenericNullSequence::generic_clear(Deviant const&) {}
int GenericNullSequence::generic_size(Deviant const&) const { return 0; }
void GenericNullSequence::generic_insert(Deviant const&, int, Ref) {}
IteratorPtr GenericNullSequence::generic_insert(Deviant const&, IteratorIntf const*, Ref)
{
    return Generic::makeIterator<Iterator>();
}
IteratorPtr GenericNullSequence::generic_erase(Deviant const&, IteratorIntf const*)
{
    return Generic::makeIterator<Iterator>();
}
IteratorPtr GenericNullSequence::generic_erase(Deviant const&, IteratorIntf const*, IteratorIntf const*)
{
    return Generic::makeIterator<Iterator>();
}
void GenericNullSequence::generic_erase(Deviant const&, int) {}
void GenericNullSequence::generic_pop_back(Deviant const&) {}
void GenericNullSequence::generic_pop_front(Deviant const&) {}
void GenericNullSequence::generic_push_back(Deviant const&, Ref) {}
void GenericNullSequence::generic_push_front(Deviant const&, Ref) {}
void GenericNullSequence::generic_replace(Deviant const&, int, Ref) {}
bool GenericNullSequence::generic_contains(Deviant const&, Ref) const { return false; }
int GenericNullSequence::generic_removeAll(Deviant const&, Ref) { return 0; }
bool GenericNullSequence::specialized_equal(Deviant const&, SequenceIntf const*, Deviant const&, bool&) const
{
    return false;
}
void GenericNullSequence::specialized_assign(Deviant const&, SequenceIntf const*, Deviant const&, bool&) {}

std::string GenericNullSequence::generic_getKestName(bool aImmutable, bool aIterator, char const* aPrefix) const
{
    return Generic::hostName(aImmutable, aIterator, aPrefix, "ClassObject");
}

void* GenericNullSequence::Iterator::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return Generic::familyCast<Iterator, IteratorIntf>(this, aInfo);
}

IteratorPtr GenericNullSequence::Iterator::clone() const
{
    return Generic::makeIterator<Iterator>();
}

bool GenericNullSequence::Iterator::equal(IteratorIntf const* aOther) const
{
    return aOther && aOther->cast(CooperativeVisitor::internal::classInfo<Iterator>());
}

} // namespace TAV
