#include <tav/TAV/Argument.h>
#include <tav/TAV/ExternalToolInfo.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/MultiplicityElement_h.h>
#include <tav/TAV/TestDefaultValue.h>
#include <tav/kernel/primitive/types/StructuredTypeInfos.h>
#include <tav/kernel/util/TAVCast.h>

#include "FamilyFixture.h"

#include <set>

namespace TAV::test {
namespace {

constexpr char kNoMessage[] = "Internal assertion without a message detected! Please fix me asap";

Object text(char const* aText)
{
    return String(aText);
}

// What the value of an Argument read from text is: a String value object.
String valueText(Argument const& aArgument)
{
    EXPECT_TRUE(isValueObject(aArgument.getValue()));
    return TAVCast<String>(aArgument.getValue());
}

template <class V>
V read(std::string const& aText)
{
    BRIX::ErrorHolder errors;
    BRIX::any const value = V::getTypeInfo().convertFromString(aText, errors);
    EXPECT_FALSE(errors.hasError());
    return BRIX::any_cast<V>(value);
}

template <class V>
std::string write(V const& aValue)
{
    return V::getTypeInfo().convertToString(BRIX::any(aValue));
}

class StructuredValueTest : public FamilyTest {};

TEST_F(StructuredValueTest, ArgumentTextHasAtMostTwoFieldsAndTheValueIsAlwaysAString)
{
    Argument const both = read<Argument>("n|v");
    EXPECT_EQ(both.getName(), String("n"));
    EXPECT_EQ(valueText(both), String("v"));

    Argument const nameOnly = read<Argument>("a");
    EXPECT_EQ(nameOnly.getName(), String("a"));
    EXPECT_TRUE(nameOnly.hasValue()) << "a missing field reads as empty text, not as no value";
    EXPECT_EQ(valueText(nameOnly), String());
    EXPECT_EQ(valueText(read<Argument>("n|42")), String("42")) << "no guessing of the value's type";

    EXPECT_TAV_THROW(read<Argument>("a|b|c"), "Incorrect parameters count!");
    EXPECT_TAV_THROW(Argument::fromString(String("a|b|c")), "Incorrect parameters count!");
    EXPECT_TAV_THROW(read<Argument>("a\\b"), "Failed to convert string to type!");
    EXPECT_TAV_THROW(read<Argument>("a|b\\"), "Failed to convert string to type!");
    EXPECT_TAV_THROW(read<ExternalToolInfo>("a|b|c"), "Incorrect parameters count!");
    EXPECT_TAV_THROW(read<TestDefaultValue>("a|b"), "Incorrect parameters count!");

    ExternalToolInfo const toolOnly = read<ExternalToolInfo>("t");
    EXPECT_EQ(toolOnly, ExternalToolInfo(String("t"), String()));
}

TEST_F(StructuredValueTest, FieldsWithEscapesRoundTrip)
{
    Argument const argument(String("a|b"), text("c\\d"));
    EXPECT_EQ(write(argument), "a\\|b|c\\\\d");
    EXPECT_EQ(Argument::fromString(argument.toString()), argument);

    ExternalToolInfo const info(String("a|b"), String("c\\d \u00e9"));
    EXPECT_EQ(write(info), "a\\|b|c\\\\d \u00e9") << "narrow text is UTF-8";
    EXPECT_EQ(info.toString(), String(u"a\\|b|c\\\\d \u00e9"));
    EXPECT_EQ(ExternalToolInfo::fromString(info.toString()), info);
    EXPECT_EQ(read<ExternalToolInfo>(write(info)), info);

    EXPECT_EQ(write(Argument()), "|") << "no value writes as the empty text";
    EXPECT_TAV_THROW(write(Argument(String("n"), newProperty())), "Failed to convert type to string");
    EXPECT_EQ(write(Argument(String("n"), Integer(-3))), "n|-3") << "any value writes by its own description";
}

TEST_F(StructuredValueTest, TestDefaultValueEscapesItsArgumentsTextOnceMore)
{
    TestDefaultValue const value(Argument(String("n|1"), text("v")));
    EXPECT_EQ(write(value.getArgument()), "n\\|1|v");
    EXPECT_EQ(write(value), "n\\\\\\|1\\|v");
    EXPECT_EQ(TestDefaultValue::fromString(value.toString()), value);
    EXPECT_EQ(read<TestDefaultValue>("x\\|y").getArgument(), Argument(String("x"), text("y")));

    TestDefaultValue const byDefault;
    EXPECT_EQ(byDefault.getArgument().getName(), String("default-argument"));
    EXPECT_FALSE(byDefault.getArgument().hasValue());
    EXPECT_EQ(write(byDefault), "default-argument\\|");
    EXPECT_TAV_THROW(read<TestDefaultValue>("x\\|y\\|z"), "Incorrect parameters count!");
}

TEST_F(StructuredValueTest, ValuesCompareByWhatTheyHoldAndModelObjectsByIdentity)
{
    Argument const a(String("n"), text("v"));
    EXPECT_EQ(a, Argument(String("n"), text("v"))) << "two value objects holding equal values";
    EXPECT_NE(a, Argument(String("n"), text("w")));
    EXPECT_NE(a, Argument(String("m"), text("v")));
    EXPECT_NE(a, Argument(String("n"))) << "no value";
    EXPECT_NE(a, Argument(String("n"), Integer(1))) << "a value of another type";

    // One model object through two of its interfaces is one value.
    Property const p = newProperty();
    MultiplicityElement const sameObject = p;
    Argument const viaProperty(String("n"), p);
    Argument const viaSecondBase(String("n"), Object(sameObject));
    EXPECT_EQ(viaProperty, viaSecondBase);
    EXPECT_FALSE(viaProperty < viaSecondBase || viaSecondBase < viaProperty);
    EXPECT_NE(viaProperty, Argument(String("n"), newProperty()));

    // Name first; then no value, values in their own order, model objects.
    std::vector<Argument> const ordered{Argument(String("a"), p),      Argument(String("b")),
                                        Argument(String("b"), text("")), Argument(String("b"), text("x")),
                                        Argument(String("b"), text("y")), Argument(String("b"), p)};
    for (std::size_t i = 0; i < ordered.size(); ++i)
        for (std::size_t k = 0; k < ordered.size(); ++k)
            EXPECT_EQ(ordered[i] < ordered[k], i < k) << i << " < " << k;

    // Values of different types have one order, whichever side each is on.
    Argument const number(String("n"), Integer(1));
    EXPECT_NE(a < number, number < a);
    std::set<Argument> const distinct{a, number, Argument(String("n"), text("v")), Argument(String("n"), Integer(1))};
    EXPECT_EQ(distinct.size(), 2u);

    EXPECT_TRUE(ExternalToolInfo(String("a"), String("z")) < ExternalToolInfo(String("b"), String("a")));
    EXPECT_TRUE(ExternalToolInfo(String("a"), String("a")) < ExternalToolInfo(String("a"), String("b")));
    EXPECT_FALSE(ExternalToolInfo(String("a"), String("b")) < ExternalToolInfo(String("a"), String("b")));
    EXPECT_TRUE(TestDefaultValue(Argument(String("a"))) < TestDefaultValue());
    EXPECT_TRUE(TestDefaultValue::getTypeInfo()->isLessThan(TestDefaultValue(Argument(String("a"))),
                                                           TestDefaultValue()));
}

// The Object forms: a String value for a set field, none for an unset one.
TEST_F(StructuredValueTest, FieldsAsObjectsAreStringValuesAndNullEmpties)
{
    Argument argument;
    EXPECT_EQ(String(argument.getNameAsImmutableObject()), String()) << "an argument always has a name";
    argument.setOrAddObjectName(text("n"));
    EXPECT_EQ(argument.getName(), String("n"));
    EXPECT_THROW(argument.setOrAddObjectName(Integer(1)), BRIX::bad_any_cast);

    ExternalToolInfo info;
    EXPECT_FALSE(info.getToolAsImmutableObject().isValid());
    info.setOrAddObjectTool(text("t"));
    info.setOrAddObjectExternalId(text("id"));
    EXPECT_EQ(String(info.getToolAsImmutableObject()), String("t"));
    EXPECT_EQ(String(info.getExternalIdAsImmutableObject()), String("id"));
    info.setOrAddObjectTool(Object());
    EXPECT_FALSE(info.hasTool()) << "a null object empties the field";

    TestDefaultValue value;
    EXPECT_FALSE(value.hasArgument());
    EXPECT_FALSE(value.getArgumentAsImmutableObject().isValid());
    value.setOrAddObjectArgument(Argument(String("x")));
    EXPECT_EQ(Argument(value.getArgumentAsImmutableObject()), Argument(String("x")));
    value.setArgument(Argument(String("default-argument"), text("")));
    EXPECT_TRUE(value.hasArgument()) << "an empty value is still a value";
    value.setOrAddObjectArgument(Object());
    EXPECT_EQ(value, TestDefaultValue());
    EXPECT_TAV_THROW(value.setOrAddObjectArgument(newProperty()), kNoMessage);
}

} // namespace
} // namespace TAV::test
