#include <tav/kernel/util/propertystorage/PropertyStorageIntf.h>

#include <tav/kernel/util/Asserter.h>

namespace TAV {

void PropertyStorageIntf::incRef()
{
    ++fCount;
}

void PropertyStorageIntf::decRef()
{
    Asserter::Make(fCount > 0).handle("kernel/util/propertystorage/PropertyStorageIntf", __LINE__, "fCount > 0");
    if (--fCount == 0)
        delete this;
}

int PropertyStorageIntf::numRef() const
{
    return fCount;
}

PropertyStorageIntf::~PropertyStorageIntf() = default;

} // namespace TAV
