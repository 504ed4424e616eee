#include <BRIX/ErrorHolder.h>
#include <BRIX/Type.h>
#include <BRIX/any.h>
#include <hull/i18n.h>

#include <cstring>
#include <stdexcept>

namespace BRIX {

char const* bad_any_cast::what() const noexcept
{
    return "BRIX::bad_any_cast: failed conversion using BRIX::any_cast";
}

bool sameType(std::type_info const& a, std::type_info const& b) noexcept
{
    if (&a == &b)
        return true;
    char const* an = a.name();
    char const* bn = b.name();
    return std::strcmp(an + (*an == '*'), bn + (*bn == '*')) == 0;
}

void ErrorHolder::addError(std::string text, char const* file, int line)
{
    fErrors.push_back({std::move(text), file ? file : "", line});
}

std::string ErrorHolder::getErrorText() const
{
    std::string text;
    for (Error const& e : fErrors) {
        if (!text.empty())
            text += '\n';
        text += e.text;
    }
    return text;
}

Type::~Type() = default;

any Type::convertFromByteArray(ByteArray const& bytes, ErrorHolder& errors) const
{
    return convertFromString(std::string(bytes.begin(), bytes.end()), errors);
}

ByteArray Type::convertToByteArray(any const& value) const
{
    std::string const text = convertToString(value);
    return ByteArray(text.begin(), text.end());
}

any Type::convertFromUString(std::u16string const& text, ErrorHolder& errors) const
{
    return convertFromString(hull::i18n::toUtf8(text), errors);
}

std::u16string Type::convertToUString(any const& value) const
{
    return hull::i18n::toUtf16(convertToString(value));
}

bool Type::isValid(any const& value) const
{
    if (value.empty())
        return false;
    try {
        convertToString(value);
        return true;
    } catch (bad_any_cast const&) {
        return false;
    }
}

namespace {

// Values of one ordered type compare as themselves; a value that is not equal
// to itself (a NaN) is equal to another such and sorts after every other, so
// that such values can key ordered containers and rewriting one is no change.
bool comparable(any const& a, any const& b)
{
    return a.isOrdered() && sameType(a.type(), b.type());
}

bool unordered(any const& a)
{
    return !a.isEqualTo(a);
}

} // namespace

bool Type::isEqualTo(any const& a, any const& b) const
{
    if (a.empty() || b.empty())
        return a.empty() == b.empty();
    if (comparable(a, b))
        return a.isEqualTo(b) || (unordered(a) && unordered(b));
    return convertToString(a) == convertToString(b);
}

bool Type::isLessThan(any const& a, any const& b) const
{
    if (a.empty() || b.empty())
        return a.empty() && !b.empty();
    if (comparable(a, b)) {
        if (unordered(a) || unordered(b))
            return !unordered(a);
        return a.isLessThan(b);
    }
    return convertToString(a) < convertToString(b);
}

Type const& TypeInfo::type() const
{
    if (!fType)
        throw std::logic_error("BRIX::TypeInfo: use of a null type description");
    return *fType;
}

} // namespace BRIX
