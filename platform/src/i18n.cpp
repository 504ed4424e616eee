#include <hull/i18n.h>

#include <BRIX/ModuleObjectDeleter.h>
#include <hull/filesystem.h>

#include <fmt/args.h>
#include <fmt/format.h>
#include <utf8.h>

#include <dlfcn.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <locale>
#include <map>
#include <string>

namespace hull::i18n {

std::u16string toUtf16(std::string_view utf8)
{
    std::string valid;
    utf8::replace_invalid(utf8.begin(), utf8.end(), std::back_inserter(valid));
    std::u16string out;
    utf8::utf8to16(valid.begin(), valid.end(), std::back_inserter(out));
    return out;
}

std::string toUtf8(std::u16string_view utf16)
{
    std::string out;
    out.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        char32_t c = utf16[i];
        const bool high = c >= 0xD800 && c <= 0xDBFF;
        const bool low = c >= 0xDC00 && c <= 0xDFFF;
        if (high && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 && utf16[i + 1] <= 0xDFFF)
            c = 0x10000 + ((c - 0xD800) << 10) + (utf16[++i] - 0xDC00);
        else if (high || low)
            c = 0xFFFD; // an unpaired surrogate has no UTF-8 form
        utf8::append(static_cast<utf8::uint32_t>(c), std::back_inserter(out));
    }
    return out;
}

std::string modulePathOf(const void* address)
{
    Dl_info info{};
    if (::dladdr(address, &info) == 0 || !info.dli_fname)
        return {};
    return info.dli_fname;
}

CatalogueError::~CatalogueError() = default;

namespace {

using Texts = std::map<std::string, std::u16string, std::less<>>;

// Catalogues are data files, not compiled tables, so that texts can be
// corrected or translated without rebuilding the library. The catalogue
// "a:b" is the file <data>/catalogues/a/b[.<language>].txt, one "Key = text"
// per line.
std::string cataloguePath(const std::string& catalogue, const std::string& language)
{
    std::string relative = catalogue;
    std::replace(relative.begin(), relative.end(), ':', '/');
    std::string path = hull::filesystem::dataPath() + "/catalogues/" + relative;
    if (!language.empty())
        path += "." + language;
    return path + ".txt";
}

std::string trim(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    const auto last = text.find_last_not_of(" \t\r");
    return std::string(text.substr(first, last - first + 1));
}

std::string unescape(const std::string& text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) {
            const char next = text[++i];
            out += next == 'n' ? '\n' : next == 't' ? '\t' : next;
        } else {
            out += text[i];
        }
    }
    return out;
}

bool load(const std::string& path, Texts& texts)
{
    std::ifstream in(path);
    if (!in)
        return false;
    std::string line;
    while (std::getline(in, line)) {
        const std::string content = trim(line);
        if (content.empty() || content.front() == '#')
            continue;
        const auto eq = content.find('=');
        if (eq == std::string::npos)
            continue;
        texts[trim(std::string_view(content).substr(0, eq))] =
            toUtf16(unescape(trim(std::string_view(content).substr(eq + 1))));
    }
    return true;
}

std::string currentLanguage()
{
    const std::string name = std::locale().name();
    if (name == "C" || name == "POSIX" || name == "*")
        return {};
    return name.substr(0, name.find_first_of("_.@"));
}

const Texts& catalogueTexts(const std::string& catalogue)
{
    struct Cache {
        std::map<std::string, Texts> byFile;
    };
    static Cache* cache = nullptr;
    if (!cache) {
        cache = new Cache;
        BRIX::ModuleObjectDeleter::registerForCleanup(+[](void* p) {
            delete static_cast<Cache*>(p);
            cache = nullptr;
        }, cache);
    }

    const std::string language = currentLanguage();
    const std::string cacheKey = catalogue + "|" + language;
    if (auto found = cache->byFile.find(cacheKey); found != cache->byFile.end())
        return found->second;

    Texts texts;
    const bool loaded = (!language.empty() && load(cataloguePath(catalogue, language), texts))
        || load(cataloguePath(catalogue, {}), texts);
    if (!loaded)
        throw CatalogueError("Message catalogue \"" + catalogue + "\" not found at "
                             + cataloguePath(catalogue, {}));
    return cache->byFile.emplace(cacheKey, std::move(texts)).first->second;
}

} // namespace

std::u16string catalogueText(const std::string& catalogue, const std::string& key)
{
    const Texts& texts = catalogueTexts(catalogue);
    const auto found = texts.find(key);
    if (found == texts.end())
        throw CatalogueError("Message " + catalogue + ":" + key + " has no text in its catalogue");
    return found->second;
}

std::size_t placeholderCount(std::u16string_view text)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'{')
            continue;
        if (i + 1 < text.size() && text[i + 1] == u'{') {
            ++i;
            continue;
        }
        std::size_t index = 0;
        std::size_t j = i + 1;
        while (j < text.size() && text[j] >= u'0' && text[j] <= u'9')
            index = index * 10 + static_cast<std::size_t>(text[j++] - u'0');
        if (j > i + 1)
            count = std::max(count, index + 1);
        i = j - 1;
    }
    return count;
}

std::u16string messageText(const BRIX::BaseMsgID& message)
{
    const std::u16string text = catalogueText(message.catalogue, message.key);
    const std::size_t expected = placeholderCount(text);
    if (expected != message.arguments.size())
        throw CatalogueError("Message " + message.catalogue + ":" + message.key + " takes "
                             + std::to_string(expected) + " argument(s) but was given "
                             + std::to_string(message.arguments.size()));

    fmt::dynamic_format_arg_store<fmt::format_context> store;
    for (const BRIX::MsgArgument& argument : message.arguments) {
        std::visit([&store](const auto& value) {
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<T, std::u16string>)
                store.push_back(toUtf8(value));
            else
                store.push_back(value);
        }, argument);
    }
    try {
        return toUtf16(fmt::vformat(toUtf8(text), store));
    } catch (const fmt::format_error& e) {
        throw CatalogueError("Message " + message.catalogue + ":" + message.key
                             + " has a malformed text: " + e.what());
    }
}

} // namespace hull::i18n
