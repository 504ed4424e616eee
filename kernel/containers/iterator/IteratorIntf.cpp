#include <tav/kernel/containers/iterator/IteratorIntf.h>

namespace TAV::Generic {

void* IteratorIntf::cast(CooperativeVisitor::internal::ClassInfo const& aInfo) const
{
    return familyCast<IteratorIntf, ReferenceCountingIntf>(this, aInfo);
}

} // namespace TAV::Generic
