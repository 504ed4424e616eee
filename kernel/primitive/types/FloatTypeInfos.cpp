#include <tav/kernel/primitive/types/DoubleTypeInfo.h>
#include <tav/kernel/primitive/types/RealTypeInfo.h>
#include <tav/kernel/primitive/types/SingleTypeInfo.h>

#include "kernel/primitive/types/TypeInfoSupport.h"

#include <tav/TAV/Double.h>
#include <tav/TAV/Real.h>
#include <tav/TAV/Single.h>

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

// NaN equals NaN and sorts after every number, so that values of these types
// can key ordered containers and a rewrite of NaN is no change.
struct SameFloat {
    template <class V>
    bool operator()(V a, V b) const
    {
        return a.value() == b.value() || (std::isnan(a.value()) && std::isnan(b.value()));
    }
};

struct FloatBefore {
    template <class V>
    bool operator()(V a, V b) const
    {
        return !std::isnan(a.value()) && (std::isnan(b.value()) || a.value() < b.value());
    }
};

} // namespace

#define TAV_FLOAT_TYPE_INFO(X, suffix)                                                                                 \
    BRIX::TypeInfo X##TypeInfo::Create()                                                                               \
    {                                                                                                                  \
        return BRIX::TypeInfo(std::make_unique<X##TypeInfo>());                                                        \
    }                                                                                                                  \
    BRIX::any X##TypeInfo::convertFromString(std::string const& text, BRIX::ErrorHolder& errors) const                 \
    {                                                                                                                  \
        internal::assertNoErrorYet(errors, kSource, __LINE__);                                                         \
        return read<X>(text, errors, suffix);                                                                          \
    }                                                                                                                  \
    std::string X##TypeInfo::convertToString(BRIX::any const& value) const                                             \
    {                                                                                                                  \
        return write(internal::valueOf<X>(value).value());                                                             \
    }                                                                                                                  \
    BRIX::any X##TypeInfo::defaultConstruct() const                                                                    \
    {                                                                                                                  \
        return X();                                                                                                    \
    }                                                                                                                  \
    bool X##TypeInfo::isEqualTo(BRIX::any const& a, BRIX::any const& b) const                                          \
    {                                                                                                                  \
        return internal::typedEqual<X>(a, b, SameFloat());                                                             \
    }                                                                                                                  \
    bool X##TypeInfo::isLessThan(BRIX::any const& a, BRIX::any const& b) const                                         \
    {                                                                                                                  \
        return internal::typedLess<X>(a, b, FloatBefore());                                                            \
    }                                                                                                                  \
    std::unique_ptr<BRIX::Type> X##TypeInfo::clone() const                                                             \
    {                                                                                                                  \
        return std::make_unique<X##TypeInfo>(*this);                                                                   \
    }

TAV_FLOAT_TYPE_INFO(Double, "' to double")
TAV_FLOAT_TYPE_INFO(Real, "' to double")
TAV_FLOAT_TYPE_INFO(Single, "' to float")

#undef TAV_FLOAT_TYPE_INFO

} // namespace TAV
