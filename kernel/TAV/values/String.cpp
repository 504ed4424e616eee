#include "kernel/TAV/values/TypeIdentity.h"

#include <tav/TAV/Boolean.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/Single.h>
#include <tav/TAV/String.h>
#include <tav/TAV/UnlimitedNatural.h>
#include <tav/kernel/primitive/types/ValueTypeInfos.h>
#include <tav/kernel/util/StringUtil.h>

#include <hull/i18n.h>

#include <sstream>
#include <stdexcept>

namespace TAV {

// Text from files is not trusted to be well formed: malformed UTF-8, overlong
// forms and encoded surrogates included, becomes U+FFFD rather than an error.
String::String(char const* utf8) : fText(utf8 ? hull::i18n::toUtf16(utf8) : u"") {}

String::String(std::string const& utf8) : fText(hull::i18n::toUtf16(utf8)) {}

String::String(int value) : String(Integer(value).toString()) {}

String::String(unsigned int value) : String(UnlimitedNatural(value).toString()) {}

String::String(double value) : String(Double(value).toString()) {}

String::String(float value) : String(Single(value).toString()) {}

String::String(bool value) : String(Boolean(value).toString()) {}

TAV_VALUE_TYPE_IDENTITY(String, StringTypeInfo::Create)

std::string String::to_string(std::u16string const& text)
{
    return hull::i18n::toUtf8(text);
}

std::u16string String::to_ustring(std::string const& text)
{
    return hull::i18n::toUtf16(text);
}

String& String::operator=(String const& other)
{
    if (this != &other) {
        fText = other.fText;
        fUtf8.reset();
    }
    return *this;
}

String& String::operator=(String&& other) noexcept
{
    fText = std::move(other.fText);
    fUtf8 = std::move(other.fUtf8);
    return *this;
}

char const* String::c_str() const
{
    if (!fUtf8)
        fUtf8 = std::make_unique<std::string>(hull::i18n::toUtf8(fText));
    return fUtf8->c_str();
}

std::string String::toUtf8() const
{
    return hull::i18n::toUtf8(fText);
}

void String::clear()
{
    fText.clear();
    fUtf8.reset();
}

String& String::operator+=(String const& other)
{
    fText += other.fText;
    fUtf8.reset();
    return *this;
}

namespace util {

std::u16string UTF8ToUString(std::string const& text)
{
    return String::to_ustring(text);
}

std::string UStringToUTF8(std::u16string const& text)
{
    return String::to_string(text);
}

std::string stringify(double value)
{
    std::ostringstream out;
    if (!(out << value))
        throw std::runtime_error("bad conversion stringify(double)");
    return out.str();
}

} // namespace util

} // namespace TAV
