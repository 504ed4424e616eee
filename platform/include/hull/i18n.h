#pragma once

#include <tav/Export.h>

#include <BRIX/BaseMsgID.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace hull::i18n {

// Invalid sequences are replaced, not reported: texts for display must not fail.
TAV_EXPORT std::u16string toUtf16(std::string_view utf8);
TAV_EXPORT std::string toUtf8(std::u16string_view utf16);

// Path of the shared object or executable that holds `address`; empty if none.
TAV_EXPORT std::string modulePathOf(const void* address);

// A catalogue lookup that cannot be satisfied: unknown catalogue or key, or a
// text whose placeholders do not match the arguments given.
class TAV_EXPORT CatalogueError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    ~CatalogueError() override;
};

// The text of `message` from its catalogue, with its arguments put in, in the
// process's global locale. Throws CatalogueError.
TAV_EXPORT std::u16string messageText(const BRIX::BaseMsgID& message);

// The raw text of `key` in `catalogue`, placeholders left in. Throws CatalogueError.
TAV_EXPORT std::u16string catalogueText(const std::string& catalogue, const std::string& key);

// How many arguments a catalogue text refers to: one more than its highest `{n}`.
TAV_EXPORT std::size_t placeholderCount(std::u16string_view text);

} // namespace hull::i18n
