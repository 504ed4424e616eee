#include "kernel/TAV/values/TypeIdentity.h"

#include <tav/TAV/Boolean.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/Single.h>
#include <tav/TAV/String.h>
#include <tav/TAV/UnlimitedNatural.h>
#include <tav/kernel/primitive/types/ValueTypeInfos.h>
#include <tav/kernel/util/StringUtil.h>

#include <sstream>
#include <stdexcept>

namespace TAV {

namespace {

// Invalid input becomes U+FFFD rather than an exception: text from files is
// not trusted to be well formed.
std::u16string fromUtf8(char const* text, std::size_t size)
{
    std::u16string out;
    out.reserve(size);
    std::size_t i = 0;
    auto const byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    while (i < size) {
        unsigned char const lead = byte(i);
        char32_t cp = 0xFFFD;
        std::size_t length = 1;
        if (lead < 0x80) {
            cp = lead;
        } else if ((lead >> 5) == 0x6) {
            length = 2;
        } else if ((lead >> 4) == 0xE) {
            length = 3;
        } else if ((lead >> 3) == 0x1E) {
            length = 4;
        }
        if (length > 1) {
            if (i + length > size) {
                cp = 0xFFFD;
                length = 1;
            } else {
                cp = lead & (0x7F >> length);
                for (std::size_t k = 1; k < length; ++k) {
                    if ((byte(i + k) & 0xC0) != 0x80) {
                        cp = 0xFFFD;
                        length = k;
                        break;
                    }
                    cp = (cp << 6) | (byte(i + k) & 0x3F);
                }
            }
        }
        i += length;
        if (cp >= 0x10000 && cp <= 0x10FFFF) {
            cp -= 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
        } else {
            out.push_back(static_cast<char16_t>(cp > 0x10FFFF ? 0xFFFD : cp));
        }
    }
    return out;
}

std::string toUtf8(std::u16string const& text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t cp = text[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        } else if (cp >= 0xD800 && cp <= 0xDFFF) {
            cp = 0xFFFD;
        }
        if (cp < 0x80) {
            out.push_back(static_cast<char>(cp));
        } else if (cp < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else if (cp < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        }
    }
    return out;
}

} // namespace

String::String(char const* utf8) : fText(utf8 ? fromUtf8(utf8, std::char_traits<char>::length(utf8)) : u"") {}

String::String(std::string const& utf8) : fText(fromUtf8(utf8.data(), utf8.size())) {}

String::String(int value) : String(Integer(value).toString()) {}

String::String(unsigned int value) : String(UnlimitedNatural(value).toString()) {}

String::String(double value) : String(Double(value).toString()) {}

String::String(float value) : String(Single(value).toString()) {}

String::String(bool value) : String(Boolean(value).toString()) {}

TAV_VALUE_TYPE_IDENTITY(String, StringTypeInfo::Create)

std::string String::to_string(std::u16string const& text)
{
    return TAV::toUtf8(text);
}

std::u16string String::to_ustring(std::string const& text)
{
    return fromUtf8(text.data(), text.size());
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
        fUtf8 = std::make_unique<std::string>(TAV::toUtf8(fText));
    return fUtf8->c_str();
}

std::string String::toUtf8() const
{
    return TAV::toUtf8(fText);
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
