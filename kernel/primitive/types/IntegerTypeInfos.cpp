#include <tav/kernel/primitive/types/ValueTypeInfos.h>

#include "kernel/primitive/types/TypeInfoSupport.h"

#include <charconv>
#include <locale>
#include <sstream>

namespace TAV {

namespace {

constexpr char kSource[] = "kernel/primitive/types/IntegerTypeInfos";

// Reads as a stream extraction does: leading blanks skipped, trailing text
// ignored, overflow a failure, hexadecimal after "0x". Plain digits to the
// end of the text read the same through from_chars, without building a
// stream, so only the unusual texts pay for one.
template <class Raw>
bool extract(std::string const& text, Raw& out)
{
    bool const hex = text.size() >= 2 && text[0] == '0' && text[1] == 'x';
    char const* const first = text.data() + (hex ? 2 : 0);
    char const* const last = text.data() + text.size();
    // After "0x" the stream takes no sign, from_chars would. (For unsigned
    // types from_chars refuses a sign, and the stream wraps the value.)
    if (first != last && !(hex && *first == '-')) {
        Raw value{};
        auto const [end, ec] = std::from_chars(first, last, value, hex ? 16 : 10);
        if (ec == std::errc() && end == last) {
            out = value;
            return true;
        }
    }
    // The classic locale: file contents must not depend on the host's.
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    if (hex)
        in >> std::hex;
    in >> out;
    return !in.fail();
}

template <class Raw>
std::string decimal(Raw value)
{
    char buffer[16];
    auto const end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return std::string(buffer, end);
}

} // namespace

BRIX::any IntegerTypeInfo::convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const
{
    internal::assertNoErrorYet(errors, kSource, __LINE__);
    std::int32_t value = 0;
    if (!extract(text, value))
        return internal::conversionFailed(errors, text, "' to INT32_T", __FILE__, __LINE__);
    return Integer(value);
}

std::string IntegerTypeInfo::convertToString(BRIX::any const& value) const
{
    return decimal(valueOf(value).value());
}

BRIX::any UnlimitedNaturalTypeInfo::convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const
{
    internal::assertNoErrorYet(errors, kSource, __LINE__);
    if (text == "*" || text == "-1")
        return UnlimitedNatural(UnlimitedNatural::kUnlimited);
    std::uint32_t value = 0;
    if (!extract(text, value))
        return internal::conversionFailed(errors, text, "' to UINT32_T", __FILE__, __LINE__);
    return UnlimitedNatural(value);
}

std::string UnlimitedNaturalTypeInfo::convertToString(BRIX::any const& value) const
{
    UnlimitedNatural const n = valueOf(value);
    return n.isUnlimited() ? "*" : decimal(n.value());
}

} // namespace TAV
