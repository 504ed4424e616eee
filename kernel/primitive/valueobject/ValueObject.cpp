#include "kernel/primitive/valueobject/ValueObjectImpl.h"

#include <tav/TAV/ValueObject_h.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/TAVCast.h>

namespace TAV {

using CooperativeVisitor::internal::classInfo;
using CooperativeVisitor::internal::ClassInfo;
using CooperativeVisitor::internal::ClassMetaInfo;
using NSInterface::ObjectIntf;
using NSInterface::ValueObjectIntf;

namespace {

constexpr char kHandleSource[] = "export/include/tav/TAV/ValueObject_h";

ClassMetaInfo const& metaInfo()
{
    static ClassMetaInfo const sInfo{
        {classInfo<ValueObjectIntf>(), [](void* p) -> void* { return p; }},
        {classInfo<ObjectIntf>(), [](void* p) -> void* { return static_cast<ObjectIntf*>(static_cast<ValueObjectIntf*>(p)); }},
        {classInfo<ReferenceCountingIntf>(),
         [](void* p) -> void* { return static_cast<ReferenceCountingIntf*>(static_cast<ValueObjectIntf*>(p)); }},
    };
    return sInfo;
}

// The value interface of the object a handle holds, without counting it.
ValueObjectIntf const* valueIntf(ImmutableObject const& aObject)
{
    ReferenceCountingIntf const* const counted = aObject.internal_counted();
    return counted ? static_cast<ValueObjectIntf const*>(counted->cast(classInfo<ValueObjectIntf>())) : nullptr;
}

} // namespace

namespace NSInterface {

ValueObjectIntf::~ValueObjectIntf() = default;

CooperativeVisitor::VisitEntry ValueObjectIntf::getVisitMethod(CooperativeVisitor::DispatchTable const& table) const
{
    return metaInfo().visit(this, table);
}

void* ValueObjectIntf::cast(ClassInfo const& info) const
{
    return metaInfo().cast(this, info);
}

} // namespace NSInterface

namespace NSImplementation {

ValueObjectImpl::ValueObjectImpl(BRIX::TypeInfo aTypeInfo, ImmutableDataType aMetaType, BRIX::any aValue)
    : fTypeInfo(std::move(aTypeInfo)), fMetaType(std::move(aMetaType)), fValue(std::move(aValue))
{
}

ValueObjectImpl::~ValueObjectImpl() = default;

void ValueObjectImpl::decRef()
{
    Asserter::Make<Exception>(fRefCount >= 1, "Decrementing the ref count of a ref with count already 0")
        .handle("kernel/primitive/valueobject/ValueObjectImpl", __LINE__, "");
    if (--fRefCount == 0)
        delete this;
}

String ValueObjectImpl::toString(Deviant) const
{
    return String(fTypeInfo.convertToUString(fValue));
}

Object ValueObjectImpl::getDefaultValue(Deviant) const
{
    return ValueObject(new ValueObjectImpl(fTypeInfo, fMetaType, fTypeInfo.defaultConstruct()), Deviant());
}

ImmutableType ValueObjectImpl::getMetaType(Deviant) const
{
    return ImmutableType(static_cast<ImmutableObject const&>(fMetaType));
}

} // namespace NSImplementation

ImmutableValueObject::ImmutableValueObject(ValueObjectIntf const* aObject, Deviant aDeviant)
{
    acquire(const_cast<ValueObjectIntf*>(aObject));
    setDeviant(aDeviant);
}

ImmutableValueObject::ImmutableValueObject(ImmutableObject const& aOther)
{
    if (void* r = castFrom(aOther, classInfo<ValueObjectIntf>()))
        acquire(static_cast<ValueObjectIntf*>(r));
}

// ObjectIntf is a virtual base: only the cast finds the value interface.
ValueObjectIntf* ImmutableValueObject::internal_intf() const
{
    return const_cast<ValueObjectIntf*>(valueIntf(*this));
}

BRIX::any const& ImmutableValueObject::getAny() const
{
    if (!fObject)
        nullReference(kHandleSource, __LINE__);
    return internal_intf()->getAny(fDeviant);
}

BRIX::TypeInfo const& ImmutableValueObject::getTypeInfo() const
{
    if (!fObject)
        nullReference(kHandleSource, __LINE__);
    return internal_intf()->getTypeInfo(fDeviant);
}

ImmutableDataType ImmutableValueObject::getMetaDataType() const
{
    if (!fObject)
        nullReference(kHandleSource, __LINE__);
    return internal_intf()->getMetaDataType(fDeviant);
}

String ImmutableValueObject::toString() const
{
    if (!fObject)
        nullReference(kHandleSource, __LINE__);
    return internal_intf()->toString(fDeviant);
}

bool operator==(ImmutableValueObject const& a, ImmutableValueObject const& b)
{
    BRIX::any const* const va = a.fObject ? &a.getAny() : nullptr;
    BRIX::any const* const vb = b.fObject ? &b.getAny() : nullptr;
    bool const emptyA = !va || va->empty();
    bool const emptyB = !vb || vb->empty();
    if (emptyA || emptyB)
        return emptyA == emptyB;
    if (!BRIX::sameType(va->type(), vb->type()))
        return false;
    BRIX::TypeInfo const& type = a.getTypeInfo();
    return type.isValid() ? type->isEqualTo(*va, *vb) : a.fObject == b.fObject;
}

ValueObject::ValueObject(ValueObjectIntf* aObject, Deviant aDeviant) : ImmutableValueObject(aObject, aDeviant) {}

bool isValueObject(ImmutableObject const& aObject)
{
    return valueIntf(aObject) != nullptr;
}

bool isDataType(ImmutableType const& aType)
{
    return ImmutableDataType(static_cast<ImmutableObject const&>(aType)).isValid();
}

// No handle of its own: the caller's keeps the object, and so the value, alive.
BRIX::any const& internal::carriedValue(ImmutableObject const& aObject, int aLine)
{
    ValueObjectIntf const* const value = valueIntf(aObject);
    if (!value)
        Asserter::MakeAlways<Exception>("%s", Asserter::sNoMessage)
            .handle("export/include/tav/kernel/util/TAVCast", aLine, "");
    return value->getAny(aObject.getDeviant());
}

} // namespace TAV
