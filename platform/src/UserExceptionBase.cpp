#include <BRIX/ObjectOutput.h>
#include <BRIX/UserExceptionBase.h>
#include <hull/i18n.h>

namespace BRIX {

UserExceptionBase::~UserExceptionBase() = default;

const char* UserExceptionBase::what() const noexcept
{
    return "BRIX::UserExceptionBase";
}

void UserExceptionBase::convert_str(std::u16string& out) const
{
    out = ToUstringImpl();
}

void UserExceptionBase::convert_str(std::string& out) const
{
    out = hull::i18n::toUtf8(ToUstringImpl());
}

ObjectOutput::~ObjectOutput() = default;

} // namespace BRIX
