#include <tav/serializer/utils/DatatypeStringRepresenter.h>

#include <stdexcept>

namespace TAV::Serializer {

namespace {
constexpr char16_t kSeparator = u'|';
constexpr char16_t kEscape = u'\\';
} // namespace

std::u16string DatatypeStringRepresenter::combineStrings(std::vector<std::u16string> const& fields)
{
    if (fields.empty())
        throw std::runtime_error("Cannot combine zero strings");
    std::u16string text;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i != 0)
            text += kSeparator;
        for (char16_t const c : fields[i]) {
            if (c == kEscape || c == kSeparator)
                text += kEscape;
            text += c;
        }
    }
    return text;
}

std::vector<std::u16string> DatatypeStringRepresenter::splitString(std::u16string const& text)
{
    std::vector<std::u16string> fields(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        char16_t const c = text[i];
        if (c == kSeparator) {
            fields.emplace_back();
        } else if (c == kEscape) {
            if (i + 1 == text.size() || (text[i + 1] != kEscape && text[i + 1] != kSeparator))
                throw std::runtime_error("Cannot split string: unexpected escape symbol");
            fields.back() += text[++i];
        } else {
            fields.back() += c;
        }
    }
    return fields;
}

} // namespace TAV::Serializer
