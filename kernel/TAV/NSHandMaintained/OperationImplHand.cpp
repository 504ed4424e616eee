// Hand-maintained members of Operation: its multiplicity and type are those of its
// return parameter, so an operation stores none of them itself.

#include <tav/TAV/ClassObject_h.h>
#include <tav/TAV/NSInterface/OperationIntf.h>
#include <tav/TAV/Operation_h.h>
#include <tav/TAV/Parameter_h.h>
#include <tav/TAV/Type_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>

namespace TAV::NSInterface {

ImmutableParameter OperationIntf::returnResult(Deviant aDeviant) const
{
    for (ImmutableParameter const& parameter : getOwnedParametersWithoutAssociation(aDeviant))
        if (parameter.getDirection() == ParameterDirectionKind::Return)
            return parameter;
    return ImmutableParameter();
}

namespace {
// Writes reach the return parameter through the operation's own deviant; without one
// there is nothing to write to.
template <class Write>
void toReturn(OperationIntf const* aOperation, Deviant aDeviant, Write aWrite)
{
    if (ImmutableParameter r = aOperation->returnResult(aDeviant); r.internal_intf())
        aWrite(Parameter(r.internal_intf(), r.getDeviant()));
}

template <class V, class Read>
V fromReturn(OperationIntf const* aOperation, Deviant aDeviant, V aNone, Read aRead)
{
    ImmutableParameter r = aOperation->returnResult(aDeviant);
    return r.internal_intf() ? V(aRead(r)) : aNone;
}
} // namespace

// isOrdered and isUnique have a lower bound of 1: always present.
bool OperationIntf::hasIsOrdered(Deviant) const
{
    return true;
}
void OperationIntf::removeIsOrdered(Deviant aDeviant)
{
    toReturn(this, aDeviant, [](Parameter p) { p.removeIsOrdered(); });
}
void OperationIntf::setIsOrdered(Deviant aDeviant, Boolean const& aValue)
{
    toReturn(this, aDeviant, [&](Parameter p) { p.setIsOrdered(aValue); });
}
Boolean OperationIntf::isOrdered(Deviant aDeviant) const
{
    return fromReturn(this, aDeviant, Boolean(false), [](auto r) { return r.isOrdered(); });
}

bool OperationIntf::hasIsUnique(Deviant) const
{
    return true;
}
void OperationIntf::removeIsUnique(Deviant aDeviant)
{
    toReturn(this, aDeviant, [](Parameter p) { p.removeIsUnique(); });
}
void OperationIntf::setIsUnique(Deviant aDeviant, Boolean const& aValue)
{
    toReturn(this, aDeviant, [&](Parameter p) { p.setIsUnique(aValue); });
}
Boolean OperationIntf::isUnique(Deviant aDeviant) const
{
    return fromReturn(this, aDeviant, Boolean(false), [](auto r) { return r.isUnique(); });
}

bool OperationIntf::hasLower(Deviant aDeviant) const
{
    return fromReturn(this, aDeviant, false, [](auto r) { return r.hasLower(); });
}
void OperationIntf::removeLower(Deviant aDeviant)
{
    toReturn(this, aDeviant, [](Parameter p) { p.removeLower(); });
}
void OperationIntf::setLower(Deviant aDeviant, Integer const& aValue)
{
    toReturn(this, aDeviant, [&](Parameter p) { p.setLower(aValue); });
}
Integer OperationIntf::getLower(Deviant aDeviant) const
{
    return fromReturn(this, aDeviant, Integer(1), [](auto r) { return r.getLower(); });
}

bool OperationIntf::hasUpper(Deviant aDeviant) const
{
    return fromReturn(this, aDeviant, false, [](auto r) { return r.hasUpper(); });
}
void OperationIntf::removeUpper(Deviant aDeviant)
{
    toReturn(this, aDeviant, [](Parameter p) { p.removeUpper(); });
}
void OperationIntf::setUpper(Deviant aDeviant, UnlimitedNatural const& aValue)
{
    toReturn(this, aDeviant, [&](Parameter p) { p.setUpper(aValue); });
}
UnlimitedNatural OperationIntf::getUpper(Deviant aDeviant) const
{
    return fromReturn(this, aDeviant, UnlimitedNatural(1u), [](auto r) { return r.getUpper(); });
}

bool OperationIntf::hasType(Deviant aDeviant) const
{
    return fromReturn(this, aDeviant, false, [](auto r) { return r.hasType(); });
}
void OperationIntf::removeType(Deviant aDeviant)
{
    toReturn(this, aDeviant, [](Parameter p) { p.removeType(); });
}
void OperationIntf::setType(Deviant aDeviant, ImmutableType const& aValue)
{
    toReturn(this, aDeviant, [&](Parameter p) { p.setType(aValue); });
}
ImmutableType OperationIntf::getType(Deviant aDeviant) const
{
    return fromReturn(this, aDeviant, ImmutableType(), [](auto r) { return r.getType(); });
}
void OperationIntf::removeOnlyType(Deviant aDeviant)
{
    toReturn(this, aDeviant, [](Parameter p) { p.removeOnlyType(); });
}
void OperationIntf::setOnlyType(Deviant aDeviant, ImmutableType const& aValue)
{
    toReturn(this, aDeviant, [&](Parameter p) { p.setOnlyType(aValue); });
}

} // namespace TAV::NSInterface
