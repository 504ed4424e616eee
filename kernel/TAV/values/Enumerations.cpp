#include <tav/TAV/PackageMergeKind.h>
#include <tav/TAV/ParameterDirectionKind.h>
#include <tav/TAV/PersistenceKind.h>
#include <tav/TAV/VisibilityKind.h>

#include "kernel/TAV/values/TypeIdentity.h"

#include <BRIX/EnumType.h>

namespace TAV {

std::string EnumerationValue::toString(Literals const& literals, int value)
{
    auto const it = literals.find(value);
    return it == literals.end() ? std::to_string(value) : it->second;
}

bool EnumerationValue::fromString(Literals const& literals, std::string const& name, int& value)
{
    for (auto const& [literal, text] : literals)
        if (text == name) {
            value = literal;
            return true;
        }
    return false;
}

EnumerationValue::Literals const& VisibilityKind::getLiterals()
{
    static Literals const sLiterals{{Public, "public"}, {Private, "private"}, {Protected, "protected"}, {Package, "package"}};
    return sLiterals;
}

EnumerationValue::Literals const& ParameterDirectionKind::getLiterals()
{
    static Literals const sLiterals{{In, "in"}, {Inout, "inout"}, {Out, "out"}, {Return, "return"}};
    return sLiterals;
}

EnumerationValue::Literals const& PersistenceKind::getLiterals()
{
    static Literals const sLiterals{{Default, "default"}, {Transient, "transient"}, {Extension, "extension"}};
    return sLiterals;
}

// "exdend" is the literal as the metamodel spells it; files carry it so.
EnumerationValue::Literals const& PackageMergeKind::getLiterals()
{
    static Literals const sLiterals{{Extend, "exdend"}, {Define, "define"}};
    return sLiterals;
}

TAV_VALUE_TYPE_IDENTITY(VisibilityKind, BRIX::SpecificEnumType<VisibilityKind>::Create)
TAV_VALUE_TYPE_IDENTITY(ParameterDirectionKind, BRIX::SpecificEnumType<ParameterDirectionKind>::Create)
TAV_VALUE_TYPE_IDENTITY(PersistenceKind, BRIX::SpecificEnumType<PersistenceKind>::Create)
TAV_VALUE_TYPE_IDENTITY(PackageMergeKind, BRIX::SpecificEnumType<PackageMergeKind>::Create)

} // namespace TAV
