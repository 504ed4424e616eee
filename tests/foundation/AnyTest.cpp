#include <BRIX/ErrorHolder.h>
#include <BRIX/Type.h>
#include <BRIX/any.h>

#include <gtest/gtest.h>

#include "support/FakeTypes.h"

#include <limits>
#include <string>

namespace {

using tavtest::IntType;
using tavtest::NamedTypeInfo;

TEST(AnyTest, TypesMatchByNameWithTheLeadingStarSkipped)
{
    NamedTypeInfo const plain("N3tav5ValueE");
    NamedTypeInfo const starred("*N3tav5ValueE");
    NamedTypeInfo const other("N3tav5OtherE");
    EXPECT_TRUE(BRIX::sameType(plain, starred));
    EXPECT_TRUE(BRIX::sameType(starred, plain));
    EXPECT_FALSE(BRIX::sameType(plain, other));
}

TEST(AnyTest, HoldsCopiesAndRefusesOtherTypes)
{
    BRIX::any a = std::string("text");
    BRIX::any b = a;
    *BRIX::any_cast<std::string>(&b) += "!";
    EXPECT_EQ(BRIX::any_cast<std::string>(a), "text") << "a copy is independent";
    EXPECT_EQ(BRIX::any_cast<std::string const&>(b), "text!");

    EXPECT_THROW(BRIX::any_cast<int>(a), BRIX::bad_any_cast);
    EXPECT_EQ(BRIX::any_cast<int>(&a), nullptr);
    // Exact type only: no conversion between related arithmetic types.
    BRIX::any const n = 3;
    EXPECT_THROW(BRIX::any_cast<long>(n), BRIX::bad_any_cast);

    BRIX::any empty;
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(empty.type(), typeid(void));
    EXPECT_THROW(BRIX::any_cast<std::string>(empty), BRIX::bad_any_cast);
    a = empty;
    EXPECT_TRUE(a.empty());
}

TEST(ErrorHolderTest, KeepsEveryErrorWithItsLocation)
{
    BRIX::ErrorHolder errors;
    EXPECT_FALSE(errors.hasError());
    BRIX_ADD_ERROR(errors, "first");
    int const line = __LINE__ - 1;
    errors.addError("second", "here.cpp", 7);
    ASSERT_TRUE(errors.hasError());
    EXPECT_EQ(errors.getErrorText(), "first\nsecond");
    EXPECT_EQ(errors.getErrors()[0].line, line);
    EXPECT_NE(errors.getErrors()[0].file.find("AnyTest.cpp"), std::string::npos);
    errors.clear();
    EXPECT_FALSE(errors.hasError());
}

TEST(TypeTest, DefaultsGoThroughTheTextForm)
{
    BRIX::TypeInfo const info(std::make_unique<IntType>());
    BRIX::ErrorHolder errors;
    BRIX::any const v = info.convertFromUString(u"42", errors);
    EXPECT_FALSE(errors.hasError());
    EXPECT_EQ(BRIX::any_cast<int>(v), 42);
    EXPECT_EQ(info.convertToUString(v), u"42");
    EXPECT_EQ(info->convertToByteArray(v), (BRIX::ByteArray{'4', '2'}));
    EXPECT_EQ(BRIX::any_cast<int>(info->convertFromByteArray({'7'}, errors)), 7);

    EXPECT_TRUE(info->isValid(v));
    EXPECT_FALSE(info->isValid(BRIX::any(std::string("42")))) << "a value of another type";
    EXPECT_FALSE(info->isValid(BRIX::any()));
    EXPECT_TRUE(info->isEqualTo(v, BRIX::any(42)));
    EXPECT_TRUE(info->isEqualTo(BRIX::any(), BRIX::any()));
    EXPECT_FALSE(info->isEqualTo(v, BRIX::any()));
    EXPECT_TRUE(info->isLessThan(BRIX::any(), v)) << "nothing orders first";

    EXPECT_TRUE(info.convertFromUString(u"x", errors).empty());
    EXPECT_EQ(errors.getErrorText(), "Can't convert string 'x' to test int");
}

TEST(TypeTest, ValuesWithAnOrderCompareAsThemselvesOthersByText)
{
    BRIX::TypeInfo const info = IntType::Create();
    EXPECT_TRUE(info->isLessThan(9, 10)) << "as text \"10\" < \"9\"";
    EXPECT_FALSE(info->isLessThan(10, 9));
    EXPECT_TRUE(info->isEqualTo(-0.0, 0.0));
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const inf = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(info->isEqualTo(nan, nan)) << "rewriting NaN is no change";
    EXPECT_TRUE(info->isLessThan(inf, nan)) << "NaN sorts after every number";
    EXPECT_FALSE(info->isLessThan(nan, inf));
    EXPECT_FALSE(info->isLessThan(nan, nan));

    // No operators: the text form, which the int description refuses to give
    // for anything but an int.
    struct Opaque {};
    EXPECT_THROW(info->isEqualTo(Opaque(), Opaque()), BRIX::bad_any_cast);
    EXPECT_THROW(info->isLessThan(1, 1.0), BRIX::bad_any_cast) << "values of two types";
}

TEST(TypeTest, CopiesShareOneDescriptionAndNullOnesRefuseUse)
{
    BRIX::TypeInfo const a(std::make_unique<IntType>());
    BRIX::TypeInfo const b = a;
    EXPECT_EQ(a, b);
    EXPECT_FALSE(a == BRIX::TypeInfo(a->clone())) << "a clone is another description";
    BRIX::TypeInfo const none;
    EXPECT_FALSE(none.isValid());
    EXPECT_THROW(none.defaultConstruct(), std::logic_error);
}

} // namespace
