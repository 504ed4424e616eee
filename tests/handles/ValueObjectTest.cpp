#include "kernel/TAV/NSImplementation/DataTypeImpl.h"

#include <tav/TAV/Boolean.h>
#include <tav/TAV/Class_h.h>
#include <tav/TAV/DataType_h.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/NSInterface/ValueObjectIntf.h>
#include <tav/TAV/PackageMergeKind.h>
#include <tav/TAV/Real.h>
#include <tav/TAV/UnlimitedNatural.h>
#include <tav/TAV/ValueObject_h.h>
#include <tav/TAV/VisibilityKind.h>
#include <tav/kernel/primitive/TypeInfoRegistry.h>
#include <tav/kernel/primitive/ValueObjectFactory.h>
#include <tav/kernel/util/TAVCast.h>

#include "FamilyFixture.h"

#include <set>

namespace TAV::test {
namespace {

constexpr char kNoMessage[] = "Internal assertion without a message detected! Please fix me asap";

// Decimal ints: enough of a type to carry values through the registry.
class IntType : public BRIX::Type {
public:
    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override
    {
        std::size_t used = 0;
        try {
            int const v = std::stoi(text, &used);
            if (used == text.size())
                return v;
        } catch (std::exception const&) {
        }
        BRIX_ADD_ERROR(errors, "Can't convert string '" + text + "' to test int");
        return {};
    }
    std::string convertToString(BRIX::any const& value) const override
    {
        return std::to_string(BRIX::any_cast<int>(value));
    }
    BRIX::any defaultConstruct() const override { return 7; }
    std::unique_ptr<BRIX::Type> clone() const override { return std::make_unique<IntType>(); }
};

class ValueObjectTest : public FamilyTest {
protected:
    static constexpr char kInt[] = "tavtest.Int";

    ValueObjectTest() { TypeInfoRegistry::registerTypeInfo(kInt, BRIX::TypeInfo(std::make_unique<IntType>())); }
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

TEST_F(ValueObjectTest, DefaultValueIsAFreshValueOfTheSameType)
{
    ValueObject const v = value(9);
    ValueObject const d(v.internal_intf()->getDefaultValue(Deviant()));
    ASSERT_NE(d.internal_intf(), nullptr);
    EXPECT_NE(d.internal_intf(), v.internal_intf());
    EXPECT_EQ(TAVCast<int>(d), 7);
    EXPECT_EQ(d.getTypeInfo(), v.getTypeInfo());
}

TEST_F(ValueObjectTest, ValueClassesTravelAsObjectsAndComeBack)
{
    Object const i = Integer(-5);
    EXPECT_EQ(TAVCast<Integer>(i), -5);
    EXPECT_EQ(Integer(i), -5);
    EXPECT_EQ(ValueObject(i).toString(), String("-5"));
    EXPECT_EQ(ValueObject(i).getTypeInfo(), Integer::getTypeInfo());

    Object const u = UnlimitedNatural(4294967295u);
    EXPECT_EQ(ValueObject(u).toString(), String("*"));
    EXPECT_EQ(String(Object(String("\u00e9t\u00e9"))), String("\u00e9t\u00e9"));
    EXPECT_EQ(VisibilityKind(Object(VisibilityKind(VisibilityKind::Protected))), VisibilityKind::Protected);
    EXPECT_EQ(ValueObject(Object(PackageMergeKind(PackageMergeKind::Extend))).toString(), String("exdend"));

    // With handles in sight, value classes still convert among themselves by number.
    EXPECT_EQ(Boolean(Double(2.0)), true);
    EXPECT_EQ(String(Double(0.5)), String("0.5"));
    EXPECT_EQ(Integer(UnlimitedNatural(4294967295u)), -1);

    // A value of one class is not a value of another, even of the same width.
    EXPECT_THROW(Double{Object(Real(1.5))}, BRIX::bad_any_cast);
    EXPECT_THROW(Integer{Object(VisibilityKind(VisibilityKind::Private))}, BRIX::bad_any_cast);
    EXPECT_TAV_THROW(Integer{Object(newProperty())}, kNoMessage);

    // No registration needed, and then no DataType.
    EXPECT_FALSE(TypeInfoRegistry::hasType(Boolean::getTypeName()));
    EXPECT_FALSE(ValueObject(Object(Boolean(true))).getMetaDataType().isValid());
    EXPECT_TRUE(ValueObject(Object(Boolean(true))) == ValueObject(Object(Boolean(true))));
    EXPECT_FALSE(ValueObject(Object(Boolean(true))) == ValueObject(Object(Boolean(false))));
}

TEST_F(ValueObjectTest, ClassObjectsDefaultToTheEmptyString)
{
    Property const p = newProperty();
    Object const d = p.internal_intf()->getDefaultValue(root);
    ASSERT_TRUE(isValueObject(d));
    EXPECT_EQ(TAVCast<String>(d), String());
}

TEST_F(ValueObjectTest, RegistryRefusesDuplicatesAndUnknownNames)
{
    BRIX::TypeInfo const other(std::make_unique<IntType>());
    EXPECT_TAV_THROW(TypeInfoRegistry::registerTypeInfo(kInt, other), kNoMessage);
    EXPECT_EQ(TypeInfoRegistry::getTypeInfo(kInt) == other, false) << "the first registration stays";
    EXPECT_FALSE(TypeInfoRegistry::hasType("tavtest.Unknown"));
    EXPECT_TAV_THROW(TypeInfoRegistry::getTypeInfo("tavtest.Unknown"), kNoMessage);
    EXPECT_FALSE(TypeInfoRegistry::getMetaType("tavtest.Unknown").isValid());
}

TEST_F(ValueObjectTest, MetaTypesComeWithTheirDescription)
{
    char const* const name = "tavtest.Measured";
    BRIX::TypeInfo const info(std::make_unique<IntType>());
    EXPECT_TAV_THROW(TypeInfoRegistry::registerMetaType(name, info, ImmutableDataType()), kNoMessage);
    // The description is registered before the DataType is checked, and stays.
    EXPECT_TRUE(TypeInfoRegistry::hasType(name));
    EXPECT_FALSE(TypeInfoRegistry::getMetaType(name).isValid());
    TypeInfoRegistry::unregisterTypeInfo(name);

    DataType const meta = newDataType();
    TypeInfoRegistry::registerMetaType(name, info, meta);
    EXPECT_EQ(TypeInfoRegistry::getMetaType(name), meta);
    ValueObject const v = ValueObjectFactory::create(name);
    EXPECT_EQ(v.getMetaDataType(), meta);
    EXPECT_TRUE(isDataType(v.internal_intf()->getMetaType(Deviant())));

    TypeInfoRegistry::unregisterMetaType(name);
    EXPECT_FALSE(TypeInfoRegistry::hasType(name));
    EXPECT_FALSE(TypeInfoRegistry::getMetaType(name).isValid());
}

TEST_F(ValueObjectTest, DataTypesAreToldApartFromOtherTypes)
{
    EXPECT_TRUE(isDataType(newDataType()));
    EXPECT_FALSE(isDataType(newClass()));
    EXPECT_FALSE(isDataType(ImmutableType()));
}

} // namespace
} // namespace TAV::test
