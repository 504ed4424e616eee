#include <tav/kernel/primitive/types/ValueTypeInfos.h>

#include "kernel/primitive/types/TypeInfoSupport.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>

namespace TAV {

namespace {

constexpr char kSource[] = "kernel/primitive/types/FloatTypeInfos";

// The three names are exact; any other text is a stream extraction. A text
// that from_chars reads whole, to a finite value, reads the same through a
// stream; the rest (blanks, '+', trailing text, overflow, underflow) takes
// the stream's own road.
template <class V>
BRIX::any read(std::string const& text, BRIX::ErrorHolder& errors, char const* suffix)
{
    using F = typename V::RawType;
    if (text == "inf")
        return V(std::numeric_limits<F>::infinity());
    if (text == "-inf")
        return V(-std::numeric_limits<F>::infinity());
    if (text == "NaN")
        return V(std::numeric_limits<F>::quiet_NaN());

    F value{};
    char const* const last = text.data() + text.size();
    auto const [end, ec] = std::from_chars(text.data(), last, value);
    if (ec == std::errc() && end == last && std::isfinite(value))
        return V(value);

    // The classic locale: file contents must not depend on the host's.
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    in >> value;
    if (in.fail())
        return internal::conversionFailed(errors, text, suffix, __FILE__, __LINE__);
    if (value != value) {
        errors.addError("NaN is not supported", __FILE__, __LINE__);
        return {};
    }
    return V(value);
}

template <class F>
std::string write(F value)
{
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value > 0 ? "inf" : "-inf";
    if (value == 0)
        return "0";
    char buffer[64];
    auto const end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return std::string(buffer, end);
}

} // namespace

#define TAV_FLOAT_TYPE_INFO(X, suffix)                                                                                 \
    BRIX::any X##TypeInfo::convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const                 \
    {                                                                                                                  \
        internal::assertNoErrorYet(errors, kSource, __LINE__);                                                         \
        return read<X>(text, errors, suffix);                                                                          \
    }                                                                                                                  \
    std::string X##TypeInfo::convertToString(BRIX::any const& value) const                                             \
    {                                                                                                                  \
        return write(valueOf(value).value());                                                                          \
    }

TAV_FLOAT_TYPE_INFO(Double, "' to double")
TAV_FLOAT_TYPE_INFO(Real, "' to double")
TAV_FLOAT_TYPE_INFO(Single, "' to float")

#undef TAV_FLOAT_TYPE_INFO

} // namespace TAV
