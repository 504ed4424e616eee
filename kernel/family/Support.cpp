#include <tav/kernel/family/Support.h>

#include <tav/TAV/Object_h.h>
#include <tav/TAV/String.h>
#include <tav/kernel/containers/sequence/GenericAssociationSequence.h>
#include <tav/kernel/containers/sequence/GenericDeviantSequence.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

#include <string>
#include <vector>

namespace TAV::family {

void shouldNotBeHit(char const* aSource, int aLine)
{
    Asserter::MakeAlways<Exception>("this code should not be hit").handle(aSource, aLine, "");
    __builtin_unreachable();
}

void notYetAvailable(char const* aOperation, char const* aSource, int aLine)
{
    Asserter::MakeAlways<UnImplementedException>("%s is not available yet", aOperation).handle(aSource, aLine, "");
    __builtin_unreachable();
}

Deviant& metaRegistryRoot()
{
    static Deviant sRoot;
    return sRoot;
}

namespace {

std::string objectSource(ClassIdentity const& aClass)
{
    return std::string("kernel/") + aClass.package + "/NSImplementation/" + aClass.name + "Impl";
}

std::string stateSource(ClassIdentity const& aClass)
{
    return std::string("kernel/") + aClass.package + "/NSImplementation/NSDeviant/" + aClass.name + "DeviantImpl";
}

} // namespace

void assertRootDeviant(Deviant aDeviant, ClassIdentity const& aClass)
{
    if (aDeviant.getDeviantId() == 0)
        return;
    Asserter::MakeAlways<Exception>("no root deviant passed to %sImpl::createRootDeviation", aClass.name)
        .handle(objectSource(aClass).c_str(), __LINE__, "");
}

void countBelowZero(ClassIdentity const& aClass)
{
    Asserter::MakeAlways<Exception>("Decrementing the ref count of a ref with count already 0")
        .handle(objectSource(aClass).c_str(), __LINE__, "");
    __builtin_unreachable();
}

void objectOperationNotYetAvailable(ClassIdentity const& aClass, char const* aOperation)
{
    notYetAvailable(aOperation, objectSource(aClass).c_str(), __LINE__);
}

void stateRefuses(ClassIdentity const& aClass)
{
    shouldNotBeHit(stateSource(aClass).c_str(), __LINE__);
}

String qualifiedName(ClassIdentity const& aClass, bool aImmutable)
{
    return String(std::string(aClass.package) + (aImmutable ? ".Immutable" : ".") + aClass.name);
}

void crossModelCheck(Deviant aDeviant, Deviant aOther, IntrospectiveMethods const* aMethods, unsigned aId,
                     char const* aSource, int aLine)
{
    if (aDeviant.isInDifferentModel(aOther, aMethods, aId))
        Asserter::MakeAlways<Exception>("Cross-model bi-directional associations are currently disallowed!")
            .handle(aSource, aLine, "");
}

Generic::SequencePtr deviantSequence(NSInterface::ClassObjectIntf const* aSelf, Deviant aDeviant,
                                     IntrospectiveMethods const* aMethods, unsigned aId)
{
    return Generic::SequencePtr(new Generic::HeapCounted<GenericDeviantSequence>(
        const_cast<NSInterface::ClassObjectIntf*>(aSelf), aDeviant, aMethods, aId));
}

Generic::SequencePtr associationSequence(NSInterface::ClassObjectIntf const* aSelf, Deviant aDeviant,
                                         Generic::SequencePtr const& aInner,
                                         IntrospectiveMethods const* aOppositeMethods, unsigned aOppositeId)
{
    MetaPropertyDescription const* const opposite = aOppositeMethods->descriptions[aOppositeId];
    bool const single = (opposite->flags & MetaPropertyDescription::kMultiValued) == 0;
    Object const owner(static_cast<NSInterface::ObjectIntf*>(const_cast<NSInterface::ClassObjectIntf*>(aSelf)),
                       aDeviant);
    return Generic::SequencePtr(
        new Generic::HeapCounted<GenericAssociationSequence>(owner, aInner, aOppositeMethods, aOppositeId, single));
}

namespace {
MultiIndexImplInternal::MultiIndexImplForRefs<true>* refsStorage(Generic::SequenceIntf* aStorage)
{
    using Storage = MultiIndexImplInternal::MultiIndexImplForRefs<true>;
    auto* const storage =
        aStorage ? static_cast<Storage*>(aStorage->cast(CooperativeVisitor::internal::classInfo<Storage>())) : nullptr;
    if (!storage)
        Asserter::MakeAlways<Exception>("operating on null sequence").handle("kernel/family/Support", __LINE__, "");
    return storage;
}
} // namespace

void rawAdd(Generic::SequenceIntf* aStorage, NSInterface::ClassObjectIntf const* aItem)
{
    refsStorage(aStorage)->rawAdd(aItem);
}

void rawRemove(Generic::SequenceIntf* aStorage, NSInterface::ClassObjectIntf const* aItem)
{
    refsStorage(aStorage)->rawRemove(aItem);
}

// A deviant of another model acts on the object's own root.
static Deviant normalised(Deviant aRoot, Deviant aDeviant)
{
    if (aDeviant != aRoot && aDeviant.getRootDeviant() != aRoot)
        return aRoot;
    return aDeviant;
}

bool isValidIn(Deviations const& aDeviations, Deviant aRoot, Deviant aDeviant)
{
    if (aDeviations.rootState == Deviant::ModelDestroyed || !aDeviant.isValid())
        return false;
    Deviant d = normalised(aRoot, aDeviant);
    if (d == aRoot || aRoot.isNull())
        return Deviant::isRealState(aDeviations.rootState);
    NSInterface::ObjectIntf* own = d.getStateOfObject(aDeviations.owner);
    if (own == Deviant::InvalidObject)
        return false;
    if (Deviant::isRealState(own))
        return true;
    // Reads through to root as root was before its open transaction.
    NSInterface::ObjectIntf* saved = aRoot.getSavedOldStateOfObject(aDeviations.owner);
    if (saved == Deviant::InvalidObject)
        return false;
    return Deviant::isRealState(saved) || Deviant::isRealState(aDeviations.rootState);
}

void setSlot(Deviations& aDeviations, Deviant aDeviant, NSInterface::ObjectIntf* aState)
{
    if (aDeviant.isNull() || aDeviant.getDeviantId() == 0) {
        NSInterface::ObjectIntf* old = aDeviations.rootState;
        aDeviations.rootState = aState;
        if (Deviant::isRealState(old) && old != aState)
            delete old;
        return;
    }
    NSInterface::ObjectIntf* old = aDeviant.getStateOfObject(aDeviations.owner);
    aDeviant.setStateOfObject(aDeviations.owner, aState);
    if (Deviant::isRealState(old) && old != aState)
        delete old;
}

void commitTransientState(Deviations& aDeviations, Deviant aRoot, Deviant aDeviant, StateFactory const& aFactory)
{
    if (aDeviant != aRoot || aRoot.isNull())
        return;
    NSInterface::ObjectIntf* owner = aDeviations.owner;
    NSInterface::ObjectIntf* old = aRoot.getSavedOldStateOfObject(owner);
    if (!Deviant::isRealState(old) && old != Deviant::InvalidObject)
        old = aDeviations.rootState;
    if (!old)
        return;
    std::vector<Deviant> all;
    aRoot.getAllDeviants(all);
    for (Deviant d : all) {
        // A name looked up but never created stands in the list as a null
        // deviant, which could not take the copy.
        if (d == aRoot || d.isNull())
            continue;
        if (d.isWithinTransaction() && d.getSavedOldStateOfObject(owner) == Deviant::FallbackToRoot) {
            // Its open change set must restore what root showed before; the walk ends here on purpose.
            d.saveOldStateOfObject(owner, Deviations::copyState(d, old, aRoot, aFactory));
            return;
        }
        NSInterface::ObjectIntf* own = d.getStateOfObject(owner);
        if (Deviant::isRealState(own) || own == Deviant::InvalidObject)
            continue;
        d.setStateOfObject(owner, Deviations::copyState(d, old, aRoot, aFactory));
    }
}

} // namespace TAV::family
