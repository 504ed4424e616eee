#include <tav/kernel/family/HandleBase.h>

#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/kernel/util/Asserter.h>

namespace TAV {

HandleBase& HandleBase::operator=(HandleBase const& aOther)
{
    if (fObject != aOther.fObject) {
        // Count the new one first: dropping the old may release what holds it.
        if (aOther.fObject)
            aOther.fObject->incRef();
        ReferenceCountingIntf* old = std::exchange(fObject, aOther.fObject);
        if (old)
            old->decRef();
    }
    fDeviant = aOther.fDeviant;
    return *this;
}

void HandleBase::reacquire(ReferenceCountingIntf* aObject)
{
    if (aObject)
        aObject->incRef();
    ReferenceCountingIntf* old = std::exchange(fObject, aObject);
    if (old)
        old->decRef();
}

void* HandleBase::castFrom(HandleBase const& aOther, CooperativeVisitor::internal::ClassInfo const& aInfo)
{
    fDeviant = aOther.fDeviant;
    return aOther.fObject ? aOther.fObject->cast(aInfo) : nullptr;
}

void HandleBase::nullReference(char const* aSource, int aLine)
{
    Asserter::MakeAlways<Exception>("Cannot access NULL ref. Use isValid() before calling methods")
        .handle(aSource, aLine, "");
    __builtin_unreachable();
}

void HandleBase::setDeviant(Deviant aDeviant) const
{
    if (!fObject)
        return;
    Deviant root = static_cast<NSInterface::ObjectIntf*>(fObject)->getRootDeviant();
    if (root.isNull())
        fDeviant = Deviant();
    else if (aDeviant != root && aDeviant.getRootDeviant() == root)
        fDeviant = aDeviant;
    else
        fDeviant = root;
}

bool HandleBase::isValid() const
{
    return fObject && static_cast<NSInterface::ObjectIntf*>(fObject)->deviant_isValid(fDeviant);
}

void const* HandleBase::internal_identity() const
{
    return fObject ? fObject->cast(CooperativeVisitor::internal::classInfo<ReferenceCountingIntf>()) : nullptr;
}

bool HandleBase::sameObjectSlow(HandleBase const& aOther) const
{
    // Two sub-objects of one object: the cast names the same canonical one.
    return internal_identity() == aOther.internal_identity();
}

void HandleBase::assertWritableSlow() const
{
    // Handles that write hold class objects.
    fDeviant.internal_assertWritable(
        static_cast<NSInterface::ClassObjectIntf const*>(static_cast<NSInterface::ObjectIntf const*>(fObject)));
}

} // namespace TAV
