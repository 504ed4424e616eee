#include <tav/kernel/containers/sequence/SequenceIntf.h>
#include <tav/kernel/containers/sequence/SequenceProxy.h>

namespace TAV::Generic {

namespace {

// What a counting proxy stands for; anything else is itself.
SequenceIntf const* lookThrough(SequenceIntf const* aSequence)
{
    using CooperativeVisitor::internal::classInfo;
    if (auto* proxy = static_cast<GenericReferenceCountingSequenceProxy const*>(
            aSequence->cast(classInfo<GenericReferenceCountingSequenceProxy>())))
        return proxy->wrapped();
    return aSequence;
}

} // namespace

void* SequenceIntf::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return familyCast<SequenceIntf, ReferenceCountingIntf>(this, aInfo);
}

bool SequenceIntf::generic_empty(Deviant const& aDeviant) const
{
    return generic_size(aDeviant) == 0;
}

int SequenceIntf::generic_removeAll(Deviant const& aDeviant, Ref aValue)
{
    int removed = 0;
    IteratorPtr it = generic_begin(aDeviant);
    IteratorPtr end = generic_end(aDeviant);
    while (!it->equal(end.get())) {
        if (it->current(aDeviant) == aValue) {
            it = generic_erase(aDeviant, it.get());
            end = generic_end(aDeviant);
            ++removed;
        } else {
            it->next(aDeviant);
        }
    }
    return removed;
}

bool SequenceIntf::specialized_equal(Deviant const&, SequenceIntf const*, Deviant const&, bool&) const
{
    return false;
}

void SequenceIntf::specialized_assign(Deviant const&, SequenceIntf const*, Deviant const&, bool&) {}

bool SequenceIntf::generic_equal(Deviant const& aDeviant, SequenceIntf const* aOther,
                                 Deviant const& aOtherDeviant) const
{
    SequenceIntf const* self = lookThrough(this);
    SequenceIntf const* other = lookThrough(aOther);
    bool handled = false;
    bool const result = self->specialized_equal(aDeviant, other, aOtherDeviant, handled);
    if (handled)
        return result;

    int const size = self->generic_size(aDeviant);
    if (size != other->generic_size(aOtherDeviant))
        return false;
    if (size == 0)
        return true;
    IteratorPtr mine = self->generic_begin(aDeviant);
    IteratorPtr const mineEnd = self->generic_end(aDeviant);
    IteratorPtr theirs = other->generic_begin(aOtherDeviant);
    for (; !mine->equal(mineEnd.get()); mine->next(aDeviant), theirs->next(aOtherDeviant))
        if (!(mine->current(aDeviant) == theirs->current(aOtherDeviant)))
            return false;
    return true;
}

void SequenceIntf::generic_assign(Deviant const& aDeviant, SequenceIntf const* aOther, Deviant const& aOtherDeviant)
{
    auto* self = const_cast<SequenceIntf*>(lookThrough(this));
    SequenceIntf const* other = lookThrough(aOther);
    bool handled = false;
    self->specialized_assign(aDeviant, other, aOtherDeviant, handled);
    if (handled)
        return;

    self->generic_clear(aDeviant);
    IteratorPtr const end = other->generic_end(aOtherDeviant);
    for (IteratorPtr it = other->generic_begin(aOtherDeviant); !it->equal(end.get()); it->next(aOtherDeviant))
        self->generic_push_back(aDeviant, it->current(aOtherDeviant));
}

} // namespace TAV::Generic
