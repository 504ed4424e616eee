#include <tav/TAV/PackageMergeKind.h>
#include <tav/TAV/ParameterDirectionKind.h>
#include <tav/TAV/PersistenceKind.h>
#include <tav/TAV/VisibilityKind.h>

#include <BRIX/SpecificEnumType.h>

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

std::string const& VisibilityKind::getTypeName()
{
    static std::string const sName("VisibilityKind");
    return sName;
}

BRIX::TypeInfo const& VisibilityKind::getTypeInfo()
{
    static BRIX::TypeInfo const sInfo = BRIX::SpecificEnumType<VisibilityKind>::Create();
    return sInfo;
}

std::string const& ParameterDirectionKind::getTypeName()
{
    static std::string const sName("ParameterDirectionKind");
    return sName;
}

BRIX::TypeInfo const& ParameterDirectionKind::getTypeInfo()
{
    static BRIX::TypeInfo const sInfo = BRIX::SpecificEnumType<ParameterDirectionKind>::Create();
    return sInfo;
}

std::string const& PersistenceKind::getTypeName()
{
    static std::string const sName("PersistenceKind");
    return sName;
}

BRIX::TypeInfo const& PersistenceKind::getTypeInfo()
{
    static BRIX::TypeInfo const sInfo = BRIX::SpecificEnumType<PersistenceKind>::Create();
    return sInfo;
}

std::string const& PackageMergeKind::getTypeName()
{
    static std::string const sName("PackageMergeKind");
    return sName;
}

BRIX::TypeInfo const& PackageMergeKind::getTypeInfo()
{
    static BRIX::TypeInfo const sInfo = BRIX::SpecificEnumType<PackageMergeKind>::Create();
    return sInfo;
}

} // namespace TAV
