#include "kernel/TAV/values/TypeIdentity.h"

#include <tav/TAV/Argument.h>
#include <tav/TAV/ExternalToolInfo.h>
#include <tav/TAV/TestDefaultValue.h>
#include <tav/kernel/primitive/ValueObjectFactory.h>
#include <tav/kernel/primitive/types/StructuredTypeInfos.h>
#include <tav/kernel/util/TAVCast.h>

#include <cstring>
#include <functional>

namespace TAV {

namespace {

// The structured descriptions assert on bad text themselves, so the holder
// stays empty.
template <class V>
V parse(String const& aText)
{
    BRIX::ErrorHolder errors;
    return BRIX::any_cast<V>(V::getTypeInfo().convertFromUString(aText.str(), errors));
}

template <class V>
String print(V const& aValue)
{
    return String(V::getTypeInfo().convertToUString(BRIX::any(aValue)));
}

// An unset field is no object at all, as an unset property gives none.
template <class V>
ImmutableObject fieldObject(bool aIsSet, V const& aValue)
{
    return aIsSet ? ImmutableObject(Object(aValue)) : ImmutableObject();
}

String textOf(Object const& aValue)
{
    return aValue.internal_counted() ? String(aValue) : String();
}

enum class Kind { None, Value, ModelObject };

Kind kindOf(ImmutableObject const& aObject)
{
    if (!aObject.internal_counted())
        return Kind::None;
    return isValueObject(aObject) ? Kind::Value : Kind::ModelObject;
}

bool identityBefore(ImmutableObject const& a, ImmutableObject const& b)
{
    return std::less<void const*>()(a.internal_identity(), b.internal_identity());
}

// As BRIX::sameType reads type names, so that the order agrees with it.
char const* typeName(BRIX::any const& aValue)
{
    char const* const name = aValue.type().name();
    return *name == '*' ? name + 1 : name;
}

bool sameValue(ImmutableObject const& a, ImmutableObject const& b)
{
    Kind const kind = kindOf(a);
    if (kind != kindOf(b))
        return false;
    return kind == Kind::Value ? ImmutableValueObject(a) == ImmutableValueObject(b) : a == b;
}

// Values of one type in the type's order, of different types by type name.
bool valueBefore(ImmutableObject const& a, ImmutableObject const& b)
{
    Kind const kind = kindOf(a);
    if (kind != kindOf(b))
        return kind < kindOf(b);
    if (kind == Kind::None)
        return false;
    if (kind == Kind::ModelObject)
        return identityBefore(a, b);
    ImmutableValueObject const valueA(a);
    ImmutableValueObject const valueB(b);
    BRIX::any const& x = valueA.getAny();
    BRIX::any const& y = valueB.getAny();
    if (x.empty() || y.empty())
        return x.empty() && !y.empty();
    if (!BRIX::sameType(x.type(), y.type()))
        return std::strcmp(typeName(x), typeName(y)) < 0;
    BRIX::TypeInfo const& type = valueA.getTypeInfo();
    return type.isValid() ? type->isLessThan(x, y) : identityBefore(a, b);
}

} // namespace

#define TAV_STRUCTURED_VALUE(X)                                                                                        \
    TAV_VALUE_TYPE_IDENTITY(X, X##TypeInfo::Create)                                                                    \
    String X::toString() const                                                                                         \
    {                                                                                                                  \
        return print(*this);                                                                                           \
    }                                                                                                                  \
    X X::fromString(String const& aText)                                                                               \
    {                                                                                                                  \
        return parse<X>(aText);                                                                                        \
    }                                                                                                                  \
    X::X(ImmutableObject const& aObject) : X(TAVCast<X>(aObject)) {}                                                   \
    X::operator ValueObject() const                                                                                    \
    {                                                                                                                  \
        return ValueObjectFactory::createFrom(*this);                                                                  \
    }                                                                                                                  \
    X::operator Object() const                                                                                         \
    {                                                                                                                  \
        return ValueObjectFactory::createFrom(*this);                                                                  \
    }

TAV_STRUCTURED_VALUE(Argument)
TAV_STRUCTURED_VALUE(ExternalToolInfo)
TAV_STRUCTURED_VALUE(TestDefaultValue)

#undef TAV_STRUCTURED_VALUE

ImmutableObject Argument::getNameAsImmutableObject() const
{
    return fieldObject(hasName(), fName);
}

void Argument::setOrAddObjectName(Object const& aValue)
{
    setName(textOf(aValue));
}

bool operator==(Argument const& a, Argument const& b)
{
    return a.fName == b.fName && sameValue(a.fValue, b.fValue);
}

bool operator<(Argument const& a, Argument const& b)
{
    if (a.fName != b.fName)
        return a.fName < b.fName;
    return valueBefore(a.fValue, b.fValue);
}

ImmutableObject ExternalToolInfo::getToolAsImmutableObject() const
{
    return fieldObject(hasTool(), fTool);
}

void ExternalToolInfo::setOrAddObjectTool(Object const& aValue)
{
    setTool(textOf(aValue));
}

ImmutableObject ExternalToolInfo::getExternalIdAsImmutableObject() const
{
    return fieldObject(hasExternalId(), fExternalId);
}

void ExternalToolInfo::setOrAddObjectExternalId(Object const& aValue)
{
    setExternalId(textOf(aValue));
}

ImmutableObject TestDefaultValue::getArgumentAsImmutableObject() const
{
    return fieldObject(hasArgument(), fArgument);
}

void TestDefaultValue::setOrAddObjectArgument(Object const& aValue)
{
    if (aValue.internal_counted())
        setArgument(Argument(aValue));
    else
        removeArgument();
}

} // namespace TAV
