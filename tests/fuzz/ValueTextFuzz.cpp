// libFuzzer target of one text-to-value conversion, named at build time by
// TAV_FUZZ_CONVERSION. A crash, a hang, a sanitizer report or an exception
// other than the refusal the conversion is written to raise is a failure; so
// is a value whose text does not read back as the same value.

#include <tav/TAV/Argument.h>
#include <tav/TAV/Boolean.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/ExternalToolInfo.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/PackageMergeKind.h>
#include <tav/TAV/ParameterDirectionKind.h>
#include <tav/TAV/PersistenceKind.h>
#include <tav/TAV/Real.h>
#include <tav/TAV/Single.h>
#include <tav/TAV/String.h>
#include <tav/TAV/TestDefaultValue.h>
#include <tav/TAV/UnlimitedNatural.h>
#include <tav/TAV/VisibilityKind.h>
#include <tav/kernel/primitive/TypeInfoRegistry.h>
#include <tav/kernel/primitive/ValueObjectFactory.h>
#include <tav/kernel/util/Exception.h>
#include <tav/serializer/utils/DatatypeStringRepresenter.h>

#include <utf8.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using TAV::String;

[[noreturn]] void fail(char const* what, std::string const& detail)
{
    std::fprintf(stderr, "fuzz failure: %s: %s\n", what, detail.c_str());
    std::abort();
}

void require(bool aCondition, char const* what, std::string const& detail = {})
{
    if (!aCondition)
        fail(what, detail);
}

// A refusal is one of the texts the conversion is written to assert.
void expectRefusal(TAV::Exception const& e, std::initializer_list<char const*> refusals)
{
    std::string const text = e.what();
    for (char const* refusal : refusals)
        if (text.find(refusal) != std::string::npos)
            return;
    fail("unexpected assertion", text);
}

// Read, write, read again: the second reading is the first value, and writes
// the same text.
template <class V>
void valueFromString(String const& aText, std::initializer_list<char const*> aRefusals)
{
    V value;
    try {
        value = V::fromString(aText);
    } catch (TAV::Exception const& e) {
        expectRefusal(e, aRefusals);
        return;
    }
    String const written = value.toString();
    V const again = V::fromString(written);
    require(V::getTypeInfo()->isEqualTo(BRIX::any(again), BRIX::any(value)), "text does not read back",
            written.toUtf8());
    require(again.toString() == written, "text is not stable", written.toUtf8());
}

// Scalars and enumerations refuse bad text naming what they convert to.
template <class V>
void fuzzNamed(String const& aText, std::string const& aTarget)
{
    valueFromString<V>(aText, {("Unable to convert from string to " + aTarget + "!").c_str()});
}

constexpr std::initializer_list<char const*> kStructuredRefusals = {"Incorrect parameters count!",
                                                                   "Failed to convert string to type!"};

// Text from a file is UTF-8 of any quality: valid text comes back byte for
// byte, invalid text with replacement characters, and what String makes of it
// survives the way back and forth unchanged.
void fuzzString(std::string const& aBytes)
{
    String const text(aBytes);
    std::string const utf8 = String::to_string(text.str());
    if (utf8::is_valid(aBytes.begin(), aBytes.end()))
        require(utf8 == aBytes, "valid UTF-8 does not come back", utf8);
    else
        require(utf8.find("\xEF\xBF\xBD") != std::string::npos, "invalid UTF-8 taken as valid", utf8);
    require(String::to_ustring(utf8) == text.str(), "UTF-16 does not survive UTF-8", utf8);
    valueFromString<String>(text, {});
}

// Split, combine, split: the fields come back as they were split.
void fuzzSplitCombine(std::string const& aBytes)
{
    String const text(aBytes);
    using TAV::Serializer::DatatypeStringRepresenter;
    std::vector<std::u16string> fields;
    try {
        fields = DatatypeStringRepresenter::splitString(text.str());
    } catch (std::runtime_error const& e) {
        require(std::string(e.what()) == "Cannot split string: unexpected escape symbol", "unexpected error",
                e.what());
        return;
    }
    require(!fields.empty(), "no field from a split");
    std::u16string const combined = DatatypeStringRepresenter::combineStrings(fields);
    require(DatatypeStringRepresenter::splitString(combined) == fields, "fields do not survive",
            String(combined).toUtf8());
}

template <class... V>
bool registerAll()
{
    (TAV::TypeInfoRegistry::registerTypeInfo(V::getTypeName(), V::getTypeInfo()), ...);
    return true;
}

// The first line names a type, the rest is the text; every value type of the
// kernel is registered, under either form of its name.
void fuzzValueObjectFactory(std::string const& aBytes)
{
    static bool const sRegistered = registerAll<TAV::Boolean, TAV::Integer, TAV::UnlimitedNatural, TAV::Real,
                                                 TAV::Double, TAV::Single, TAV::String, TAV::Argument,
                                                 TAV::ExternalToolInfo, TAV::TestDefaultValue, TAV::VisibilityKind,
                                                 TAV::ParameterDirectionKind, TAV::PersistenceKind,
                                                 TAV::PackageMergeKind>();
    (void)sRegistered;

    std::u16string const all = String(aBytes).str();
    std::size_t const newline = all.find(u'\n');
    std::string const type = String(all.substr(0, newline)).toUtf8();
    String const text(newline == std::u16string::npos ? std::u16string() : all.substr(newline + 1));
    TAV::ValueObject value;
    try {
        value = TAV::ValueObjectFactory::createFromString(type, text);
    } catch (TAV::Exception const& e) {
        // The error holder's text, or the refusals of the structured values.
        expectRefusal(e, {"Can't convert string '", "NaN is not supported", "Incorrect parameters count!",
                          "Failed to convert string to type!"});
        return;
    }
    require(value.isValid() == TAV::TypeInfoRegistry::hasType(type), "a value exactly for a known type", type);
    if (value.isValid()) {
        String const written = value.toString();
        TAV::ValueObject const again = TAV::ValueObjectFactory::createFromString(type, written);
        require(again == value, "text does not read back", written.toUtf8());
    }
}

using Conversion = void (*)(std::string const&);

struct NamedConversion {
    std::string_view name;
    Conversion run;
};

using Text = std::string const&;
constexpr NamedConversion kConversions[] = {
    {"Boolean", [](Text t) { fuzzNamed<TAV::Boolean>(String(t), "bool"); }},
    {"Integer", [](Text t) { fuzzNamed<TAV::Integer>(String(t), "INT32_T"); }},
    {"UnlimitedNatural", [](Text t) { fuzzNamed<TAV::UnlimitedNatural>(String(t), "UINT32_T"); }},
    {"Real", [](Text t) { fuzzNamed<TAV::Real>(String(t), "double"); }},
    {"Double", [](Text t) { fuzzNamed<TAV::Double>(String(t), "double"); }},
    {"Single", [](Text t) { fuzzNamed<TAV::Single>(String(t), "float"); }},
    {"String", fuzzString},
    // The four enumerations share one description; each reads the text in turn.
    {"Enumerations",
     [](Text t) {
         fuzzNamed<TAV::VisibilityKind>(String(t), "VisibilityKind");
         fuzzNamed<TAV::ParameterDirectionKind>(String(t), "ParameterDirectionKind");
         fuzzNamed<TAV::PersistenceKind>(String(t), "PersistenceKind");
         fuzzNamed<TAV::PackageMergeKind>(String(t), "PackageMergeKind");
     }},
    {"Argument", [](Text t) { valueFromString<TAV::Argument>(String(t), kStructuredRefusals); }},
    {"ExternalToolInfo", [](Text t) { valueFromString<TAV::ExternalToolInfo>(String(t), kStructuredRefusals); }},
    {"TestDefaultValue", [](Text t) { valueFromString<TAV::TestDefaultValue>(String(t), kStructuredRefusals); }},
    {"SplitCombine", fuzzSplitCombine},
    {"ValueObjectFactory", fuzzValueObjectFactory},
};

constexpr std::size_t indexNamed(std::string_view aName)
{
    std::size_t i = 0;
    while (i < std::size(kConversions) && kConversions[i].name != aName)
        ++i;
    return i;
}

constexpr std::size_t kConversion = indexNamed(TAV_FUZZ_CONVERSION);
static_assert(kConversion < std::size(kConversions), "TAV_FUZZ_CONVERSION names no conversion");

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* aData, std::size_t aSize)
{
    kConversions[kConversion].run(std::string(reinterpret_cast<char const*>(aData), aSize));
    return 0;
}
