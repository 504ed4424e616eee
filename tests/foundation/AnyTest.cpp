#include <BRIX/ErrorHolder.h>
#include <BRIX/Type.h>
#include <BRIX/any.h>

#include <gtest/gtest.h>

#include <string>

namespace {

// type_info's name constructor is protected: a starred and a plain name stand
// for one type as two libraries may each emit it.
struct NamedTypeInfo : std::type_info {
    explicit NamedTypeInfo(char const* name) : std::type_info(name) {}
};

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

// The least a description must give; the rest comes from BRIX::Type.
class IntType : public BRIX::Type {
public:
    BRIX::any convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const override
    {
        try {
            return std::stoi(text);
        } catch (std::exception const&) {
            BRIX_ADD_ERROR(errors, "not an int: " + text);
            return {};
        }
    }
    std::string convertToString(BRIX::any const& value) const override
    {
        return std::to_string(BRIX::any_cast<int>(value));
    }
    BRIX::any defaultConstruct() const override { return 0; }
    std::unique_ptr<BRIX::Type> clone() const override { return std::make_unique<IntType>(); }
};

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
    EXPECT_EQ(errors.getErrorText(), "not an int: x");
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
