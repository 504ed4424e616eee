#pragma once

#include <tav/Export.h>

#include <string>
#include <vector>

namespace BRIX {

// Collects what went wrong in a conversion that must not throw. Each error
// keeps the source location that reported it.
class TAV_EXPORT ErrorHolder {
public:
    struct Error {
        std::string text;
        std::string file;
        int line = 0;
    };

    bool hasError() const noexcept { return !fErrors.empty(); }
    void addError(std::string text, char const* file, int line);
    std::vector<Error> const& getErrors() const noexcept { return fErrors; }
    // The texts of all errors, one per line, without locations.
    std::string getErrorText() const;
    void clear() noexcept { fErrors.clear(); }

private:
    std::vector<Error> fErrors;
};

} // namespace BRIX

#define BRIX_ADD_ERROR(holder, text) (holder).addError((text), __FILE__, __LINE__)
