#include <tav/kernel/containers/sequence/SequenceType.h>

#include <tav/kernel/util/Asserter.h>

namespace TAV {

namespace {
constexpr char const* kSource = "kernel/containers/sequence/SequenceType";
constexpr char const* kNotImplemented = "Not Implemented yet";

[[noreturn]] void notImplemented(int aLine)
{
    Asserter::MakeAlways<Exception>("%s", kNotImplemented).handle(kSource, aLine, "");
    __builtin_unreachable();
}
} // namespace

namespace Generic::detail {

// Text conversions never throw: the refusal goes to the error holder.
BRIX::any ElementTypeDescription::convertFromString(std::string const&, BRIX::ErrorHolder& aErrors) const
{
    BRIX_ADD_ERROR(aErrors, kNotImplemented);
    return {};
}

std::string ElementTypeDescription::convertToString(BRIX::any const&) const
{
    notImplemented(__LINE__);
}

BRIX::any ElementTypeDescription::defaultConstruct() const
{
    notImplemented(__LINE__);
}

} // namespace Generic::detail

BRIX::TypeInfo SequenceType::Create(BRIX::TypeInfo aElement)
{
    return BRIX::TypeInfo(std::make_unique<SequenceType>(std::move(aElement)));
}

std::unique_ptr<BRIX::Type> SequenceType::clone() const
{
    return std::make_unique<SequenceType>(*this);
}

BRIX::TypeInfo IteratorType::Create(BRIX::TypeInfo aElement)
{
    return BRIX::TypeInfo(std::make_unique<IteratorType>(std::move(aElement)));
}

std::unique_ptr<BRIX::Type> IteratorType::clone() const
{
    return std::make_unique<IteratorType>(*this);
}

} // namespace TAV
