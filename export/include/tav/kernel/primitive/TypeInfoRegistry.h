#pragma once

#include <tav/Export.h>

#include <BRIX/Type.h>

#include <string>

namespace TAV {

class ImmutableDataType;

// Type descriptions by type name, and the metamodel DataType of each value
// type. Filled at start-up and unlocked: registration belongs to one thread.
//
// Names. A type of the kernel's own package has one entry, which answers to
// its bare name ("Boolean", as getTypeName gives it) and to its qualified name
// ("TAV.Boolean", as a property's type gives it) alike: every operation drops
// a leading "TAV." before it looks. So "TAV.PropertyStorage" and
// "PropertyStorage" are one type, registered once under either, and
// registering the other form as well is a duplicate. The kernel's sequence
// and iterator descriptions ("TAV.SequenceOfX", "TAV.XIterator") are found
// with or without the prefix too. A domain's types keep their qualified names
// ("UML.X"): the prefix of another package is part of the name.
class TAV_EXPORT TypeInfoRegistry {
public:
    TypeInfoRegistry() = delete;

    // Asserts that the name is new.
    static void registerTypeInfo(std::string const& aName, BRIX::TypeInfo const& aTypeInfo);
    // Registers the description too; asserts that the DataType is valid.
    static void registerMetaType(std::string const& aName, BRIX::TypeInfo const& aTypeInfo,
                                 ImmutableDataType const& aMetaType);
    static void unregisterTypeInfo(std::string const& aName);
    // Drops the DataType and the description registered with it.
    static void unregisterMetaType(std::string const& aName);

    static bool hasType(std::string const& aName);
    // Asserts that the name is registered.
    static BRIX::TypeInfo const& getTypeInfo(std::string const& aName);
    // A null handle when the name has no DataType.
    static ImmutableDataType getMetaType(std::string const& aName);
};

} // namespace TAV
