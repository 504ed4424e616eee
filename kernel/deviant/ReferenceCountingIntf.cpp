#include <tav/kernel/deviant/DeviantRegistry.h>
#include <tav/kernel/util/ReferenceCountingIntf.h>

namespace TAV {

namespace {

using namespace CooperativeVisitor::internal;

ClassMetaInfo const& metaInfo()
{
    static ClassMetaInfo const sInfo{
        {classInfo<ReferenceCountingIntf>(), [](void* p) -> void* { return p; }},
    };
    return sInfo;
}

} // namespace

ReferenceCountingIntf::~ReferenceCountingIntf()
{
    if (fRegistered)
        DeviantRegistry::instance().retract(this);
}

void ReferenceCountingIntf::incRef() {}
void ReferenceCountingIntf::decRef() {}
int ReferenceCountingIntf::numRef() const { return 0; }
ListOfReferences* ReferenceCountingIntf::getListOfReferences() { return nullptr; }

CooperativeVisitor::VisitEntry ReferenceCountingIntf::getVisitMethod(CooperativeVisitor::DispatchTable const& table) const
{
    return metaInfo().visit(this, table);
}

void* ReferenceCountingIntf::cast(ClassInfo const& info) const
{
    return metaInfo().cast(this, info);
}

} // namespace TAV
