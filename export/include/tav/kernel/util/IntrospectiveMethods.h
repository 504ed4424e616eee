#pragma once

// The reflection tables: one MetaPropertyDescription per property row of a
// metamodel, one IntrospectiveMethods per metaclass. The generator fills them.

#include <tav/Export.h>
#include <tav/kernel/deviant/Deviant.h>
#include <tav/kernel/util/SmartPtr.h>

#include <cstdint>

namespace TAV {

class Object;
struct IntrospectiveMethods;
struct PackageIntrospectiveMethods;

namespace NSInterface {
class ClassObjectIntf;
class PropertyIntf;
class TypeIntf;
} // namespace NSInterface

namespace Generic {
class SequenceIntf;
}

using PackageGetter = PackageIntrospectiveMethods* (*)();

// A property of some metaclass, addressed through its package's type table.
struct MetaPropertyRef {
    PackageGetter package;
    std::uint32_t typeIndex;
    std::uint32_t propertyId;
};

struct MetaPropertyRefList {
    unsigned long count;
    MetaPropertyRef const* items;
};

struct MetaPropertyDescription {
    // Flag bits.
    static constexpr unsigned char kReadOnly = 1u << 0, kDerived = 1u << 1, kDerivedUnion = 1u << 2,
                                   kComposite = 1u << 3, kOrdered = 1u << 4, kUnique = 1u << 5,
                                   kMultiValued = 1u << 6;

    struct OppositeEnd {
        unsigned char present;
        PackageGetter package;
        std::uint32_t typeIndex;
        std::uint32_t propertyId;
    };
    struct OwnedEnd {
        char const* name;
    };

    NSInterface::PropertyIntf* property;
    char const* name;
    PackageGetter typePackage;
    std::uint32_t typeIndex;
    char const* documentation[6]; // up to five, null-terminated
    unsigned char flags;
    char const* defaultValue;
    std::int32_t visibility;
    std::int32_t lower;
    std::uint32_t upper; // 0xFFFFFFFF is unlimited
    std::int32_t persistence;
    std::uint32_t id;
    char const* association;
    OppositeEnd oppositeEnd;
    OwnedEnd ownedEnd;
    MetaPropertyRefList redefined;
    MetaPropertyRefList subsetted;
};

struct MetaClassRef {
    PackageGetter package; // null ends a list
    std::uint32_t typeIndex;
};

struct IntrospectiveMethods {
    using SequencePtr = Generic::SmartPtr<Generic::SequenceIntf>;

    Object (*getSingleValued)(NSInterface::ClassObjectIntf const* object, Deviant d, unsigned id);
    bool (*hasSingleValued)(NSInterface::ClassObjectIntf const* object, Deviant d, unsigned id);
    void (*setSingleValued)(NSInterface::ClassObjectIntf* object, Deviant d, unsigned id, Object const& value);
    void (*setOnlySingleValued)(NSInterface::ClassObjectIntf* object, Deviant d, unsigned id, Object const& value);
    void (*removeSingleValued)(NSInterface::ClassObjectIntf* object, Deviant d, unsigned id);
    void (*removeOnlySingleValued)(NSInterface::ClassObjectIntf* object, Deviant d, unsigned id);
    SequencePtr (*getMultiValued)(NSInterface::ClassObjectIntf* object, Deviant d, unsigned id, bool flag);
    SequencePtr (*getOnlyMultiValued)(NSInterface::ClassObjectIntf* object, Deviant d, unsigned id, bool flag);
    MetaPropertyDescription** descriptions; // by property id; entry 0 empty, a null entry after the last
    MetaClassRef const* superClasses;
    NSInterface::TypeIntf* metaType;
    PackageIntrospectiveMethods* package;
};

// The type table of one metamodel package.
struct PackageIntrospectiveMethods {
    IntrospectiveMethods** types;
    unsigned long count;
};

} // namespace TAV
