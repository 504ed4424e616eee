#pragma once

#include <tav/Export.h>

#include <string>

namespace BRIX {

// A URI reference by RFC 3986, parsed once into its parts. A text that does not parse
// gives an invalid Uri, never an exception; its parts are empty.
class TAV_EXPORT Uri {
public:
    Uri() = default;
    explicit Uri(std::string const& aText);
    Uri(std::string const& aScheme, std::string const& aAuthority, std::string const& aPath,
        std::string const& aQuery, std::string const& aFragment);

    // An absolute local path becomes a "file" URI; anything else is read as a URI.
    static Uri fromLocalFile(std::string const& aPath);
    static Uri fromLocalFileOrUri(std::string const& aText);

    bool isValid() const { return fValid; }
    bool isRelative() const { return fValid && fScheme.empty(); }
    bool hasFragment() const { return fHasFragment; }
    std::string const& getScheme() const { return fScheme; }
    std::string const& getAuthority() const { return fAuthority; }
    std::string const& getPath() const { return fPath; }
    std::string const& getQuery() const { return fQuery; }
    std::string const& getFragment() const { return fFragment; }
    // The text as parsed; empty for an invalid Uri.
    std::string const& toString() const { return fText; }
    // Why the text did not parse, with the position; empty for a valid Uri.
    std::string const& errorString() const { return fError; }

    friend bool operator==(Uri const& a, Uri const& b) { return a.fValid == b.fValid && a.fText == b.fText; }

private:
    void parse(std::string const& aText);

    bool fValid = false;
    bool fHasFragment = false;
    std::string fText, fScheme, fAuthority, fPath, fQuery, fFragment, fError;
};

} // namespace BRIX
