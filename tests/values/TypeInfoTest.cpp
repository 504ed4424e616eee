#include <tav/TAV/PackageMergeKind.h>
#include <tav/TAV/VisibilityKind.h>
#include <tav/kernel/primitive/types/StructuredTypeInfos.h>
#include <tav/kernel/util/Exception.h>

#include "support/Expect.h"

#include <bit>
#include <cmath>
#include <limits>
#include <locale>
#include <vector>

namespace {

using ::testing::HasSubstr;
using TAV::String;

// What a description makes of a text: the value, or the error text.
struct Read {
    BRIX::any value;
    std::string error;
};

Read read(BRIX::TypeInfo const& info, std::string const& text)
{
    BRIX::ErrorHolder errors;
    Read r{info.convertFromString(text, errors), errors.getErrorText()};
    EXPECT_EQ(r.value.empty(), errors.hasError()) << "a failure yields the empty any, a success a value";
    return r;
}

template <class V>
typename V::RawType readAs(BRIX::TypeInfo const& info, std::string const& text)
{
    Read const r = read(info, text);
    V const* v = BRIX::any_cast<V>(&r.value);
    EXPECT_TRUE(v) << "'" << text << "' read as " << V::getTypeName() << ": " << r.error;
    return v ? v->value() : typename V::RawType{};
}

template <class V>
std::string write(typename V::RawType value)
{
    return V::getTypeInfo().convertToString(BRIX::any(V(value)));
}

// A fresh description of every value class, with the text of its default.
struct Description {
    BRIX::TypeInfo info;
    char const* defaultText;
};

std::vector<Description> allDescriptions()
{
    return {{TAV::BooleanTypeInfo::Create(), "false"},
            {TAV::IntegerTypeInfo::Create(), "0"},
            {TAV::UnlimitedNaturalTypeInfo::Create(), "0"},
            {TAV::RealTypeInfo::Create(), "0"},
            {TAV::DoubleTypeInfo::Create(), "0"},
            {TAV::SingleTypeInfo::Create(), "0"},
            {TAV::StringTypeInfo::Create(), ""},
            {TAV::ArgumentTypeInfo::Create(), "|"},
            {TAV::ExternalToolInfoTypeInfo::Create(), "|"},
            {TAV::TestDefaultValueTypeInfo::Create(), "default-argument\\|"}};
}

// What a description makes of a text: the text of the value read, or the
// error in the holder.
std::string readBack(BRIX::TypeInfo const& info, std::string const& text)
{
    Read const r = read(info, text);
    return r.value.empty() ? r.error : info.convertToString(r.value);
}

struct TextCase {
    BRIX::TypeInfo const& info;
    char const* text;
    char const* result;
};

TEST(TypeInfoTest, EachTextReadsAsItsTypeSaysOrFailsNamingIt)
{
    BRIX::TypeInfo const& b = TAV::Boolean::getTypeInfo();
    BRIX::TypeInfo const& i = TAV::Integer::getTypeInfo();
    BRIX::TypeInfo const& u = TAV::UnlimitedNatural::getTypeInfo();
    BRIX::TypeInfo const& d = TAV::Double::getTypeInfo();
    BRIX::TypeInfo const& r = TAV::Real::getTypeInfo();
    BRIX::TypeInfo const& f = TAV::Single::getTypeInfo();
    BRIX::TypeInfo const& v = TAV::VisibilityKind::getTypeInfo();
    BRIX::TypeInfo const& m = TAV::PackageMergeKind::getTypeInfo();
    TextCase const cases[] = {
        {b, "true", "true"}, {b, "false", "false"}, {b, "True", "Can't convert string 'True' to bool"},
        {b, " true", "Can't convert string ' true' to bool"}, {b, "1", "Can't convert string '1' to bool"},
        {b, "", "Can't convert string '' to bool"},
        {i, "42", "42"}, {i, "-2147483648", "-2147483648"}, {i, "0x10", "16"}, {i, "0x7fffffff", "2147483647"},
        {i, "010", "10"},            // no octal
        {i, "12abc", "12"},          // trailing text is not looked at
        {i, "  +7", "7"},            // blanks and '+' as a stream takes them
        {i, "0X10", "0"},            // only a lower-case 0x is hexadecimal
        {i, "abc", "Can't convert string 'abc' to INT32_T"}, {i, "", "Can't convert string '' to INT32_T"},
        {i, "-", "Can't convert string '-' to INT32_T"}, {i, "2147483648", "Can't convert string '2147483648' to INT32_T"},
        {i, "-2147483649", "Can't convert string '-2147483649' to INT32_T"},
        {i, "0x80000000", "Can't convert string '0x80000000' to INT32_T"}, {i, "0x", "Can't convert string '0x' to INT32_T"},
        {i, "0xg", "Can't convert string '0xg' to INT32_T"}, {i, "0x-5", "Can't convert string '0x-5' to INT32_T"},
        {u, "*", "*"}, {u, "-1", "*"}, {u, "4294967295", "*"}, {u, "0xFFFFFFFF", "*"}, {u, "0x10", "16"},
        {u, "4294967294", "4294967294"}, {u, "0", "0"},
        {u, "-5", "4294967291"},     // a stream wraps a negative unsigned
        {u, "4294967296", "Can't convert string '4294967296' to UINT32_T"}, {u, "**", "Can't convert string '**' to UINT32_T"},
        {d, "NaN", "NaN"}, {d, "inf", "inf"}, {d, "-inf", "-inf"}, {d, "-0", "0"}, {d, "1.5abc", "1.5"},
        {d, " +2.5", "2.5"}, {d, "-.5e1", "-5"}, {d, "0.1", "0.1"}, {d, "1e21", "1e+21"},
        {d, "1e-400", "0"},          // underflow is no failure of the stream
        {d, "1e400", "Can't convert string '1e400' to double"}, {d, "nan", "Can't convert string 'nan' to double"},
        {d, "-NaN", "Can't convert string '-NaN' to double"}, {d, "Inf", "Can't convert string 'Inf' to double"},
        {d, "infinity", "Can't convert string 'infinity' to double"}, {d, "1e", "Can't convert string '1e' to double"},
        {d, "1e+", "Can't convert string '1e+' to double"}, {d, "", "Can't convert string '' to double"},
        {d, ".", "Can't convert string '.' to double"}, {d, "x1", "Can't convert string 'x1' to double"},
        {r, "nan", "Can't convert string 'nan' to double"},
        {r, "0x10", "0"},            // no hexadecimal for floats
        {d, "-2.5", "-2.5"}, {r, "1e21", "1e+21"}, {f, "-0", "0"}, {f, "NaN", "NaN"}, {f, "-inf", "-inf"},
        {f, "0.1", "0.1"},           // shortest for a float, not for the double it widens to
        {f, "1e39", "Can't convert string '1e39' to float"}, // beyond a float, not a double
        {v, "protected", "protected"}, {v, "17", "Can't convert string '17' to VisibilityKind"},
        {m, "exdend", "exdend"}, {m, "extend", "Can't convert string 'extend' to PackageMergeKind"},
    };
    for (TextCase const& c : cases)
        EXPECT_EQ(readBack(c.info, c.text), c.result) << "'" << c.text << "'";

    double const negativeZero = readAs<TAV::Double>(d, "-0");
    EXPECT_TRUE(negativeZero == 0 && std::signbit(negativeZero));
    EXPECT_EQ(readAs<TAV::Single>(f, "0.1"), 0.1f);
}

template <class V>
void expectRoundTrips(std::vector<typename V::RawType> const& values)
{
    BRIX::TypeInfo const& info = V::getTypeInfo();
    for (auto const value : values) {
        std::string const text = write<V>(value);
        auto const back = readAs<V>(info, text);
        EXPECT_EQ(std::bit_cast<typename V::RawType>(back), std::bit_cast<typename V::RawType>(value))
            << V::getTypeName() << " " << text;
    }
}

TEST(TypeInfoTest, AwkwardFloatsReadBackBitForBit)
{
    using D = std::numeric_limits<double>;
    expectRoundTrips<TAV::Double>({0.1, 1.0 / 3, D::max(), -D::max(), D::min(), D::denorm_min(), -D::denorm_min(),
                                   D::min() / 3, 2.2250738585072009e-308, 9007199254740993.0, 1e21, 1e-7, 123456.789,
                                   D::epsilon(), D::infinity(), -D::infinity(), 0.0});
    expectRoundTrips<TAV::Real>({0.3, D::max(), D::denorm_min(), 5e-324, 1.7976931348623157e308});

    using F = std::numeric_limits<float>;
    expectRoundTrips<TAV::Single>({0.1f, 1.0f / 3, F::max(), -F::max(), F::min(), F::denorm_min(), -F::denorm_min(),
                                   16777217.0f, 3.4028235e38f, 1e-7f, F::epsilon(), F::infinity(), 0.0f});
}

// A host locale with a decimal comma and grouped thousands.
struct CommaNumbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(TypeInfoTest, TextDoesNotFollowTheHostLocale)
{
    std::locale const previous = std::locale::global(std::locale(std::locale::classic(), new CommaNumbers));
    // Leading blanks keep these off the fast road, on the stream's.
    double const real = readAs<TAV::Double>(TAV::Double::getTypeInfo(), " 1.5");
    std::int32_t const integer = readAs<TAV::Integer>(TAV::Integer::getTypeInfo(), " 1.000");
    std::string const written = write<TAV::Integer>(1000000);
    std::locale::global(previous);
    EXPECT_EQ(real, 1.5);
    EXPECT_EQ(integer, 1);
    EXPECT_EQ(written, "1000000");
}

TEST(TypeInfoTest, EachTypeComparesAsItsValuesDoNotAsItsTextAndDefaultsAsItsClass)
{
    BRIX::TypeInfo const integer = TAV::Integer::getTypeInfo();
    EXPECT_TRUE(integer->isLessThan(TAV::Integer(2), TAV::Integer(10))) << "as text \"10\" < \"2\"";
    EXPECT_TRUE(integer->isLessThan(TAV::Integer(-3), TAV::Integer(-2)));
    EXPECT_FALSE(integer->isEqualTo(TAV::Integer(2), TAV::Integer(3)));

    BRIX::TypeInfo const natural = TAV::UnlimitedNatural::getTypeInfo();
    EXPECT_TRUE(natural->isLessThan(TAV::UnlimitedNatural(9), TAV::UnlimitedNatural(TAV::UnlimitedNatural::kUnlimited)))
        << "unlimited is the greatest, though \"*\" sorts before digits";

    BRIX::TypeInfo const real = TAV::Double::getTypeInfo();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(real->isEqualTo(TAV::Double(nan), TAV::Double(nan))) << "rewriting NaN is no change";
    EXPECT_TRUE(real->isLessThan(TAV::Double(9.5), TAV::Double(10)));
    EXPECT_TRUE(TAV::Single::getTypeInfo()->isLessThan(TAV::Single(-1.0f), TAV::Single(0.5f)));

    BRIX::TypeInfo const text = TAV::String::getTypeInfo();
    EXPECT_TRUE(text->isLessThan(String("ab"), String("b")));
    EXPECT_TRUE(text->isEqualTo(String("\xC3\xA9"), String(u"\u00e9")));
    EXPECT_TRUE(TAV::Boolean::getTypeInfo()->isLessThan(TAV::Boolean(false), TAV::Boolean(true)));

    for (auto const& [info, defaultText] : allDescriptions()) {
        BRIX::any const value = info.defaultConstruct();
        EXPECT_EQ(info.convertToString(value), defaultText);
        std::unique_ptr<BRIX::Type> const clone = info->clone();
        BRIX::Type const& copy = *clone;
        BRIX::Type const& original = info.type();
        EXPECT_EQ(typeid(copy), typeid(original));
        EXPECT_EQ(copy.convertToString(value), defaultText);
        EXPECT_TRUE(info->isEqualTo(BRIX::any(), BRIX::any()));
        EXPECT_FALSE(info->isEqualTo(BRIX::any(), value));
        EXPECT_TRUE(info->isLessThan(BRIX::any(), value)) << "the empty value comes first";
        EXPECT_FALSE(info->isLessThan(value, BRIX::any()));
        EXPECT_TRUE(info->isEqualTo(value, value));
    }
}

TEST(TypeInfoTest, ValuesTravelAsTheValueClassAndAnotherTypeIsABadCast)
{
    BRIX::any const integer = read(TAV::Integer::getTypeInfo(), "1").value;
    EXPECT_TRUE(BRIX::any_cast<TAV::Integer>(&integer));
    EXPECT_FALSE(BRIX::any_cast<std::int32_t>(&integer));
    BRIX::any const real = read(TAV::Real::getTypeInfo(), "1.5").value;
    EXPECT_TRUE(BRIX::any_cast<TAV::Real>(&real));
    EXPECT_FALSE(BRIX::any_cast<TAV::Double>(&real)) << "Real and Double are distinct classes";
    EXPECT_FALSE(BRIX::any_cast<double>(&real)) << "never the raw number";

    EXPECT_THROW(TAV::Double::getTypeInfo().convertToString(real), BRIX::bad_any_cast);
    EXPECT_THROW(TAV::Integer::getTypeInfo().convertToString(BRIX::any(7)), BRIX::bad_any_cast);
    EXPECT_THROW(TAV::Boolean::getTypeInfo().convertToString(BRIX::any()), BRIX::bad_any_cast);
    EXPECT_THROW(TAV::Integer::getTypeInfo()->isEqualTo(TAV::Integer(1), TAV::Single(1)), BRIX::bad_any_cast);
    EXPECT_FALSE(TAV::Single::getTypeInfo()->isValid(TAV::Double(1)));
    EXPECT_TRUE(TAV::Single::getTypeInfo()->isValid(TAV::Single(1)));
}

TEST(TypeInfoTest, ErrorsNameWhereTheyWereFound)
{
    BRIX::ErrorHolder errors;
    TAV::IntegerTypeInfo().convertFromString("x", errors);
    ASSERT_EQ(errors.getErrors().size(), 1u);
    EXPECT_THAT(errors.getErrors()[0].file, HasSubstr("IntegerTypeInfos"));
    EXPECT_GT(errors.getErrors()[0].line, 0);
}

TEST(TypeInfoTest, ReadingIntoAHolderThatAlreadyFailedIsAnAssertion)
{
    for (Description const& d : allDescriptions()) {
        BRIX::ErrorHolder errors;
        errors.addError("earlier", "f", 1);
        EXPECT_RAISES(d.info.convertFromString("1", errors), TAV::Exception,
                      "Assertion failed: Internal assertion without a message detected in FTL generated code! "
                      "Please fix me asap at kernel/primitive/types/");
        EXPECT_EQ(errors.getErrors().size(), 1u);
    }
    BRIX::ErrorHolder errors;
    errors.addError("earlier", "f", 1);
    EXPECT_THROW(TAV::String::getTypeInfo().convertFromUString(u"x", errors), TAV::Exception);
}

TEST(TypeInfoTest, StringIsUtf8OutsideAndUtf16Inside)
{
    BRIX::TypeInfo const info = TAV::String::getTypeInfo();
    EXPECT_EQ(BRIX::any_cast<String>(read(info, "a\xE2\x82\xAC").value).str(), u"a\u20ac");
    EXPECT_EQ(info.convertToString(String(u"a\u20ac")), "a\xE2\x82\xAC");
    BRIX::ErrorHolder errors;
    BRIX::any const lone = info.convertFromUString(std::u16string(1, char16_t(0xD800)), errors);
    EXPECT_EQ(BRIX::any_cast<String>(lone).size(), 1u) << "UTF-16 is taken as it is, even when malformed";
    EXPECT_FALSE(errors.hasError());
}

} // namespace
