#pragma once

#include <tav/Export.h>

#include <exception>
#include <string>

namespace BRIX {

// The host's root of user-visible exceptions: whatever the host catches, it
// can copy, rethrow and show in either text width.
class TAV_EXPORT UserExceptionBase : public std::exception {
public:
    virtual UserExceptionBase* clone() const = 0;
    [[noreturn]] virtual void rethrow() const = 0;
    ~UserExceptionBase() override;

    const char* what() const noexcept override;
    // The message in the width the caller holds.
    virtual void convert_str(std::u16string& out) const;
    virtual void convert_str(std::string& out) const;

protected:
    UserExceptionBase() = default;
    UserExceptionBase(const UserExceptionBase&) = default;
    UserExceptionBase& operator=(const UserExceptionBase&) = default;

    virtual std::u16string ToUstringImpl() const = 0;
};

} // namespace BRIX
