// Hand-maintained members of Operation: its multiplicity and type are those of its
// return parameter, so an operation stores none of them itself.

#include <tav/TAV/ClassObject_h.h>
#include <tav/TAV/NSInterface/OperationIntf.h>
#include <tav/TAV/Operation_h.h>
#include <tav/TAV/Parameter_h.h>
#include <tav/TAV/Type_h.h>

namespace TAV::NSInterface {

ImmutableParameter OperationIntf::returnResult(Deviant aDeviant) const
{
    RawRefList const* parameters = internal_rawOwnedParameters(aDeviant);
    if (!parameters)
        return ImmutableParameter();
    for (ClassObjectIntf* item : *parameters) {
        ImmutableParameter parameter(ImmutableClassObject(item, aDeviant));
        if (parameter.internal_intf() && parameter.getDirection() == ParameterDirectionKind::Return)
            return parameter;
    }
    return ImmutableParameter();
}

namespace {
// Writes reach the return parameter through the operation's own deviant.
Parameter writable(ImmutableParameter const& aParameter)
{
    return Parameter(aParameter.internal_intf(), aParameter.getDeviant());
}
} // namespace

bool OperationIntf::hasIsOrdered(Deviant) const
{
    return true;
}

void OperationIntf::removeIsOrdered(Deviant aDeviant)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).removeIsOrdered();
}

void OperationIntf::setIsOrdered(Deviant aDeviant, Boolean const& aValue)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).setIsOrdered(aValue);
}

Boolean OperationIntf::isOrdered(Deviant aDeviant) const
{
    ImmutableParameter r = returnResult(aDeviant);
    return r.internal_intf() ? r.isOrdered() : Boolean(false);
}

bool OperationIntf::hasIsUnique(Deviant) const
{
    return true;
}

void OperationIntf::removeIsUnique(Deviant aDeviant)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).removeIsUnique();
}

void OperationIntf::setIsUnique(Deviant aDeviant, Boolean const& aValue)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).setIsUnique(aValue);
}

Boolean OperationIntf::isUnique(Deviant aDeviant) const
{
    ImmutableParameter r = returnResult(aDeviant);
    return r.internal_intf() ? r.isUnique() : Boolean(false);
}

bool OperationIntf::hasLower(Deviant aDeviant) const
{
    ImmutableParameter r = returnResult(aDeviant);
    return r.internal_intf() && r.hasLower();
}

void OperationIntf::removeLower(Deviant aDeviant)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).removeLower();
}

void OperationIntf::setLower(Deviant aDeviant, Integer const& aValue)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).setLower(aValue);
}

Integer OperationIntf::getLower(Deviant aDeviant) const
{
    ImmutableParameter r = returnResult(aDeviant);
    return r.internal_intf() ? r.getLower() : Integer(1);
}

bool OperationIntf::hasUpper(Deviant aDeviant) const
{
    ImmutableParameter r = returnResult(aDeviant);
    return r.internal_intf() && r.hasUpper();
}

void OperationIntf::removeUpper(Deviant aDeviant)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).removeUpper();
}

void OperationIntf::setUpper(Deviant aDeviant, UnlimitedNatural const& aValue)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).setUpper(aValue);
}

UnlimitedNatural OperationIntf::getUpper(Deviant aDeviant) const
{
    ImmutableParameter r = returnResult(aDeviant);
    return r.internal_intf() ? r.getUpper() : UnlimitedNatural(1u);
}

bool OperationIntf::hasType(Deviant aDeviant) const
{
    ImmutableParameter r = returnResult(aDeviant);
    return r.internal_intf() && r.hasType();
}

void OperationIntf::removeType(Deviant aDeviant)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).removeType();
}

void OperationIntf::setType(Deviant aDeviant, ImmutableType const& aValue)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).setType(aValue);
}

ImmutableType OperationIntf::getType(Deviant aDeviant) const
{
    ImmutableParameter r = returnResult(aDeviant);
    return r.internal_intf() ? r.getType() : ImmutableType();
}

void OperationIntf::removeOnlyType(Deviant aDeviant)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).removeOnlyType();
}

void OperationIntf::setOnlyType(Deviant aDeviant, ImmutableType const& aValue)
{
    if (ImmutableParameter r = returnResult(aDeviant); r.internal_intf())
        writable(r).setOnlyType(aValue);
}

} // namespace TAV::NSInterface
