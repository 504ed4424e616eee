#include <tav/TAV/PackageMergeKind.h>
#include <tav/TAV/ParameterDirectionKind.h>
#include <tav/TAV/PersistenceKind.h>
#include <tav/TAV/VisibilityKind.h>

#include "kernel/TAV/values/TypeIdentity.h"
#include "kernel/TAV/values/ValueText.h"

#include <BRIX/EnumType.h>

namespace TAV {

template <class Derived>
EnumerationOf<Derived>::EnumerationOf(String const& aText) : ScalarValue<Derived, int>(fromString(aText))
{
}

template <class Derived>
String EnumerationOf<Derived>::toString() const
{
    return internal::textOfValue(static_cast<Derived const&>(*this));
}

template <class Derived>
Derived EnumerationOf<Derived>::fromString(String const& aText)
{
    return internal::valueFromText<Derived>(aText, "kernel/TAV/values/Enumerations", __LINE__,
                                            "Unable to convert from string to %s!", Derived::getTypeName().c_str());
}

VisibilityKind::Literals const& VisibilityKind::getLiterals()
{
    static Literals const sLiterals{{Public, "public"}, {Private, "private"}, {Protected, "protected"}, {Package, "package"}};
    return sLiterals;
}

ParameterDirectionKind::Literals const& ParameterDirectionKind::getLiterals()
{
    static Literals const sLiterals{{In, "in"}, {Inout, "inout"}, {Out, "out"}, {Return, "return"}};
    return sLiterals;
}

PersistenceKind::Literals const& PersistenceKind::getLiterals()
{
    static Literals const sLiterals{{Default, "default"}, {Transient, "transient"}, {Extension, "extension"}};
    return sLiterals;
}

// "exdend" is the literal as the metamodel spells it; files carry it so.
PackageMergeKind::Literals const& PackageMergeKind::getLiterals()
{
    static Literals const sLiterals{{Extend, "exdend"}, {Define, "define"}};
    return sLiterals;
}

TAV_VALUE_TYPE_IDENTITY(VisibilityKind, BRIX::SpecificEnumType<VisibilityKind>::Create)
TAV_VALUE_TYPE_IDENTITY(ParameterDirectionKind, BRIX::SpecificEnumType<ParameterDirectionKind>::Create)
TAV_VALUE_TYPE_IDENTITY(PersistenceKind, BRIX::SpecificEnumType<PersistenceKind>::Create)
TAV_VALUE_TYPE_IDENTITY(PackageMergeKind, BRIX::SpecificEnumType<PackageMergeKind>::Create)

template class EnumerationOf<VisibilityKind>;
template class EnumerationOf<ParameterDirectionKind>;
template class EnumerationOf<PersistenceKind>;
template class EnumerationOf<PackageMergeKind>;

} // namespace TAV
