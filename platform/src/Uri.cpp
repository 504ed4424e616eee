#include <BRIX/Uri.h>

#include <uriparser/Uri.h>

#include <vector>

namespace BRIX {

namespace {

std::string part(UriTextRangeA const& aRange)
{
    return aRange.first ? std::string(aRange.first, aRange.afterLast) : std::string();
}

// The path's segments joined by "/", with the leading "/" of an absolute path.
std::string pathOf(UriUriA const& aUri)
{
    std::string path = aUri.absolutePath || (aUri.hostText.first && aUri.pathHead) ? "/" : "";
    for (UriPathSegmentA const* s = aUri.pathHead; s; s = s->next) {
        path += part(s->text);
        if (s->next)
            path += '/';
    }
    return path;
}

} // namespace

Uri::Uri(std::string const& aText)
{
    parse(aText);
}

Uri::Uri(std::string const& aScheme, std::string const& aAuthority, std::string const& aPath,
         std::string const& aQuery, std::string const& aFragment)
{
    std::string text;
    if (!aScheme.empty())
        text += aScheme + ":";
    if (!aAuthority.empty() || aScheme == "file")
        text += "//" + aAuthority;
    text += aPath;
    if (!aQuery.empty())
        text += "?" + aQuery;
    if (!aFragment.empty())
        text += "#" + aFragment;
    parse(text);
}

Uri Uri::fromLocalFile(std::string const& aPath)
{
    std::vector<char> out(8 + 3 * aPath.size() + 1);
    if (uriUnixFilenameToUriStringA(aPath.c_str(), out.data()) != URI_SUCCESS)
        return Uri();
    return Uri(std::string(out.data()));
}

Uri Uri::fromLocalFileOrUri(std::string const& aText)
{
    return !aText.empty() && aText.front() == '/' && aText.rfind("//", 0) != 0 ? fromLocalFile(aText) : Uri(aText);
}

void Uri::parse(std::string const& aText)
{
    UriUriA uri;
    char const* errorAt = nullptr;
    char const* const first = aText.data();
    if (uriParseSingleUriExA(&uri, first, first + aText.size(), &errorAt) != URI_SUCCESS) {
        fError = "Invalid uri at position " + std::to_string(errorAt ? errorAt - first : 0) + ": " + aText;
        return;
    }
    fValid = true;
    fText = aText;
    fScheme = part(uri.scheme);
    fAuthority = part(uri.hostText);
    if (uri.portText.first)
        fAuthority += ":" + part(uri.portText);
    if (uri.userInfo.first)
        fAuthority = part(uri.userInfo) + "@" + fAuthority;
    fPath = pathOf(uri);
    fQuery = part(uri.query);
    fHasFragment = uri.fragment.first != nullptr;
    fFragment = part(uri.fragment);
    uriFreeUriMembersA(&uri);
}

} // namespace BRIX
