#include "kernel/TAV/NSImplementation/DataTypeImpl.h"

#include <tav/TAV/Argument.h>
#include <tav/TAV/Boolean.h>
#include <tav/TAV/Class_h.h>
#include <tav/TAV/DataType_h.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/ExternalToolInfo.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/NSInterface/ValueObjectIntf.h>
#include <tav/TAV/PackageMergeKind.h>
#include <tav/TAV/ParameterDirectionKind.h>
#include <tav/TAV/PersistenceKind.h>
#include <tav/TAV/Real.h>
#include <tav/TAV/Single.h>
#include <tav/TAV/TestDefaultValue.h>
#include <tav/TAV/UnlimitedNatural.h>
#include <tav/TAV/ValueObject_h.h>
#include <tav/TAV/VisibilityKind.h>
#include <tav/kernel/primitive/TypeInfoRegistry.h>
#include <tav/kernel/primitive/ValueObjectFactory.h>
#include <tav/kernel/util/TAVCast.h>

#include "FamilyFixture.h"
#include "support/FakeTypes.h"

#include <functional>
#include <set>

namespace TAV::test {
namespace {

constexpr char kNoMessage[] = "Internal assertion without a message detected! Please fix me asap";

using tavtest::IntType;

class ValueObjectTest : public FamilyTest {
protected:
    static constexpr char kInt[] = "tavtest.Int";

    ValueObjectTest() { TypeInfoRegistry::registerTypeInfo(kInt, IntType::Create()); }
    ~ValueObjectTest() override { TypeInfoRegistry::unregisterTypeInfo(kInt); }

    static ValueObject value(int v) { return ValueObjectFactory::create(kInt, BRIX::any(v)); }

    DataType newDataType()
    {
        return DataType(make<NSImplementation::DataTypeImpl>(root), root);
    }
};

TEST_F(ValueObjectTest, FactoryMakesValuesOfRegisteredTypesOnly)
{
    EXPECT_TRUE(ValueObjectFactory::isValueObjectType(kInt));
    EXPECT_EQ(ValueObjectFactory::create(kInt).toString(), String("7")) << "the type's default";
    EXPECT_EQ(value(-3).toString(), String("-3"));
    ValueObject const read = ValueObjectFactory::createFromString(kInt, String("42"));
    EXPECT_EQ(BRIX::any_cast<int>(read.getAny()), 42);
    EXPECT_EQ(read.getTypeInfo(), TypeInfoRegistry::getTypeInfo(kInt));
    EXPECT_FALSE(read.getMetaDataType().isValid()) << "no DataType was registered";

    EXPECT_TAV_THROW(ValueObjectFactory::createFromString(kInt, String("4x")), "Can't convert string '4x' to test int");

    for (ValueObject const& none : {ValueObjectFactory::create("tavtest.Unknown"),
                                    ValueObjectFactory::create("tavtest.Unknown", BRIX::any(1)),
                                    ValueObjectFactory::createFromString("tavtest.Unknown", String("1"))}) {
        EXPECT_EQ(none.internal_intf(), nullptr);
        EXPECT_TAV_THROW(none.toString(), "Cannot access NULL ref. Use isValid() before calling methods");
        EXPECT_TAV_THROW(none.getAny(), "ValueObject_h");
    }
}

TEST_F(ValueObjectTest, TravelsAsAnObjectAndComesBackByCast)
{
    ValueObject const original = value(5);
    Object const carried = original;
    EXPECT_TRUE(isValueObject(carried));
    EXPECT_EQ(TAVCast<int>(carried), 5);
    EXPECT_EQ(ValueObject(carried).internal_intf(), original.internal_intf()) << "the same object comes back";
    EXPECT_THROW(TAVCast<std::string>(carried), BRIX::bad_any_cast) << "a value of another type";

    Object const property = newProperty();
    EXPECT_FALSE(isValueObject(property));
    EXPECT_FALSE(isValueObject(Object()));
    EXPECT_TAV_THROW(TAVCast<int>(property), kNoMessage);
    EXPECT_TAV_THROW(TAVCast<int>(Object()), "kernel/util/TAVCast");
    EXPECT_EQ(ValueObject(property).internal_intf(), nullptr);

    // Values have no model: whatever deviant they are given, they hold none.
    EXPECT_TRUE(ValueObject(original.internal_intf(), alpha).getDeviant().isNull());
    EXPECT_TRUE(original.isValid()) << "a value is valid in every deviant";
}

TEST_F(ValueObjectTest, EqualityIsByValueAndOrderIsByObject)
{
    ValueObject const a = value(1);
    ValueObject const b = value(1);
    ValueObject const c = value(2);
    EXPECT_NE(a.internal_intf(), b.internal_intf());
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a != c);
    EXPECT_TRUE(ValueObject() == ValueObject());
    EXPECT_FALSE(a == ValueObject()) << "an empty value differs from any other";
    EXPECT_FALSE(ValueObject() == a);

    EXPECT_NE(a < b, b < a);
    EXPECT_EQ(a <= b, !(a > b));
    EXPECT_EQ(std::set<ImmutableValueObject>({a, b, c, a}).size(), 3u) << "equal values are still two objects";

    // As plain objects they are two objects.
    EXPECT_FALSE(static_cast<ImmutableObject const&>(a) == static_cast<ImmutableObject const&>(b));
}

TEST_F(ValueObjectTest, DefaultValuesAreFreshValues)
{
    ValueObject const v = value(9);
    ValueObject const d(v.internal_intf()->getDefaultValue(Deviant()));
    ASSERT_NE(d.internal_intf(), nullptr);
    EXPECT_NE(d.internal_intf(), v.internal_intf());
    EXPECT_EQ(TAVCast<int>(d), 7);
    EXPECT_EQ(d.getTypeInfo(), v.getTypeInfo());

    Object const ofClassObject = newProperty().internal_intf()->getDefaultValue(root);
    ASSERT_TRUE(isValueObject(ofClassObject));
    EXPECT_EQ(TAVCast<String>(ofClassObject), String()) << "class objects default to the empty string";
}

TEST_F(ValueObjectTest, ValueClassesComeBackOnlyAsThemselves)
{
    // With handles in sight, value classes still convert among themselves by number.
    EXPECT_EQ(Boolean(Double(2.0)), true);
    EXPECT_EQ(String(Double(0.5)), String("0.5"));
    EXPECT_EQ(Integer(UnlimitedNatural(4294967295u)), -1);

    // A value of one class is not a value of another, even of the same width.
    EXPECT_THROW(Double{Object(Real(1.5))}, BRIX::bad_any_cast);
    EXPECT_THROW(Integer{Object(VisibilityKind(VisibilityKind::Private))}, BRIX::bad_any_cast);
    EXPECT_THROW(Argument{Object(ExternalToolInfo())}, BRIX::bad_any_cast);
    EXPECT_THROW(TestDefaultValue{Object(Argument())}, BRIX::bad_any_cast);
    EXPECT_TAV_THROW(Integer{Object(newProperty())}, kNoMessage);
    EXPECT_TAV_THROW(ExternalToolInfo{Object(newProperty())}, kNoMessage);
}

TEST_F(ValueObjectTest, RegistryRefusesDuplicatesAndUnknownNamesAndDropsOnlyTheKernelsPrefix)
{
    BRIX::TypeInfo const other = IntType::Create();
    EXPECT_TAV_THROW(TypeInfoRegistry::registerTypeInfo(kInt, other), kNoMessage);
    EXPECT_EQ(TypeInfoRegistry::getTypeInfo(kInt) == other, false) << "the first registration stays";
    EXPECT_FALSE(TypeInfoRegistry::hasType("tavtest.Unknown"));
    EXPECT_TAV_THROW(TypeInfoRegistry::getTypeInfo("tavtest.Unknown"), kNoMessage);
    EXPECT_FALSE(TypeInfoRegistry::getMetaType("tavtest.Unknown").isValid());

    TypeInfoRegistry::registerTypeInfo("tavtest.Domain.Int", IntType::Create());
    EXPECT_TRUE(TypeInfoRegistry::hasType("tavtest.Domain.Int"));
    EXPECT_FALSE(TypeInfoRegistry::hasType("Domain.Int"));
    EXPECT_FALSE(TypeInfoRegistry::hasType("Int"));
    TypeInfoRegistry::unregisterTypeInfo("tavtest.Domain.Int");
    EXPECT_FALSE(TypeInfoRegistry::hasType("tavtest.Domain.Int"));

    TypeInfoRegistry::registerTypeInfo("TAV.SequenceOfTavtest", IntType::Create());
    EXPECT_TRUE(ValueObjectFactory::isValueObjectType("SequenceOfTavtest"));
    TypeInfoRegistry::unregisterTypeInfo("SequenceOfTavtest");
    EXPECT_FALSE(TypeInfoRegistry::hasType("TAV.SequenceOfTavtest"));
    EXPECT_FALSE(TypeInfoRegistry::hasType("TAV.")) << "the prefix alone names nothing registered";

    // A refused DataType: its description was registered before the check, and stays.
    EXPECT_TAV_THROW(TypeInfoRegistry::registerMetaType("tavtest.Measured", other, ImmutableDataType()), kNoMessage);
    EXPECT_TRUE(TypeInfoRegistry::hasType("tavtest.Measured"));
    EXPECT_FALSE(TypeInfoRegistry::getMetaType("tavtest.Measured").isValid());
    TypeInfoRegistry::unregisterTypeInfo("tavtest.Measured");
}

// Every value class, with what its MetaDataType and getMetaDataType answer,
// and a value other than its default, carried as a fresh Object.
struct ValueClassRow {
    std::string const& (*name)();
    BRIX::TypeInfo const& (*info)();
    ImmutableDataType (*meta)();
    ImmutableDataType (*metaOfValue)();
    std::function<Object()> object;
    std::function<bool(Object const&)> isTheValue;
    String text;
};

template <class V>
ValueClassRow row(V const& aValue)
{
    return {&V::getTypeName, &V::getTypeInfo, &V::MetaDataType, [] { return V().getMetaDataType(); },
            [aValue] { return Object(aValue); },
            [aValue](Object const& o) { return V(o) == aValue; }, aValue.toString()};
}

TEST_F(ValueObjectTest, ValueClassesTravelAsObjectsAndFindTheirDataTypeByEitherFormOfTheirName)
{
    Argument const argument(String("n"), Object(String("v")));
    for (ValueClassRow const& v :
         {row(Boolean(true)), row(Integer(-5)), row(UnlimitedNatural(UnlimitedNatural::kUnlimited)), row(Real(1.5)),
          row(Double(-0.25)), row(Single(0.5f)), row(String("\u00e9t\u00e9")), row(argument),
          row(ExternalToolInfo(String("t"), String("id"))), row(TestDefaultValue(argument)),
          row(VisibilityKind(VisibilityKind::Protected)), row(ParameterDirectionKind(ParameterDirectionKind::Return)),
          row(PersistenceKind(PersistenceKind::Transient)), row(PackageMergeKind(PackageMergeKind::Define))}) {
        std::string const& name = v.name();
        EXPECT_TRUE(v.isTheValue(v.object())) << name;
        EXPECT_EQ(ValueObject(v.object()).toString(), v.text) << name;
        EXPECT_EQ(ValueObject(v.object()).getTypeInfo(), v.info()) << name;
        EXPECT_FALSE(v.meta().isValid()) << name << ": null until the metamodel registers it";

        DataType const meta = newDataType();
        TypeInfoRegistry::registerMetaType("TAV." + name, v.info(), meta);
        EXPECT_EQ(v.meta(), meta) << name;
        EXPECT_EQ(v.metaOfValue(), meta) << name;
        EXPECT_EQ(ValueObject(v.object()).getMetaDataType(), meta) << name;
        EXPECT_TRUE(isDataType(ValueObject(v.object()).internal_intf()->getMetaType(Deviant()))) << name;
        EXPECT_EQ(ValueObjectFactory::createFromString(name, v.info().convertToUString(v.info().defaultConstruct()))
                      .getMetaDataType(),
                  meta)
            << name;
        EXPECT_TAV_THROW(TypeInfoRegistry::registerTypeInfo(name, v.info()), kNoMessage) << "one type, one entry";
        TypeInfoRegistry::unregisterMetaType(name);
        EXPECT_FALSE(TypeInfoRegistry::hasType("TAV." + name)) << name;
        EXPECT_FALSE(v.meta().isValid()) << name;
    }
    EXPECT_FALSE(isDataType(newClass()));
    EXPECT_FALSE(isDataType(ImmutableType()));
}

// A static_cast down from a virtual base is ill-formed.
template <class Base, class Derived>
constexpr bool kDowncastable = requires(Base* p) { static_cast<Derived*>(p); };

TEST_F(ValueObjectTest, ObjectIntfIsAVirtualBaseOfTheValueInterface)
{
    EXPECT_TRUE((kDowncastable<ReferenceCountingIntf, NSInterface::ObjectIntf>));
    EXPECT_FALSE((kDowncastable<NSInterface::ObjectIntf, NSInterface::ValueObjectIntf>));
    ValueObject const v = value(3);
    EXPECT_NE(static_cast<void const*>(v.internal_intf()), static_cast<void const*>(v.internal_counted()))
        << "the handle holds the count of the virtual base";
    EXPECT_EQ(ValueObject(Object(v)).internal_intf(), v.internal_intf());
}

} // namespace
} // namespace TAV::test
