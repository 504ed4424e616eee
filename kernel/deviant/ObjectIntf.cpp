#include <tav/TAV/NSInterface/ObjectIntf.h>
#include <tav/TAV/Object_h.h>

namespace TAV::NSInterface {

namespace {

using namespace CooperativeVisitor::internal;

ClassMetaInfo const& metaInfo()
{
    static ClassMetaInfo const sInfo{
        {classInfo<ObjectIntf>(), [](void* p) -> void* { return p; }},
        {classInfo<ReferenceCountingIntf>(),
         [](void* p) -> void* { return static_cast<ReferenceCountingIntf*>(static_cast<ObjectIntf*>(p)); }},
    };
    return sInfo;
}

} // namespace

ObjectIntf::~ObjectIntf() = default;

CooperativeVisitor::VisitEntry ObjectIntf::getVisitMethod(CooperativeVisitor::DispatchTable const& table) const
{
    return metaInfo().visit(this, table);
}

void* ObjectIntf::cast(ClassInfo const& info) const
{
    return metaInfo().cast(this, info);
}

ImmutableObject ObjectIntf::This(Deviant d) const
{
    return ImmutableObject(this, d);
}

bool ObjectIntf::deviant_isValid(Deviant) { return false; }
void ObjectIntf::deviant_destroyState(ObjectIntf*) {}
void ObjectIntf::deviant_markModelDestroyed() {}
void ObjectIntf::deviant_commitTransientState(Deviant) {}
ObjectIntf* ObjectIntf::deviant_getCopyOfDeviation(Deviant) { return nullptr; }
ObjectIntf* ObjectIntf::internal_getDeviation(Deviant) { return nullptr; }
void ObjectIntf::internal_setDeviation(Deviant, ObjectIntf*) {}
ObjectIntf* ObjectIntf::internal_createDeviation(Deviant) { return nullptr; }
void ObjectIntf::internal_destroyDeviation(Deviant) {}
void ObjectIntf::internal_deviationAssign(Deviant, ObjectIntf*, Deviant) {}
Deviant ObjectIntf::getRootDeviant() const { return Deviant(); }
String ObjectIntf::getKestName(bool) const { return String(); }
ObjectIntf const* ObjectIntf::getReadDeviantI(Deviant, ObjectIntf const*) const { return nullptr; }
ObjectIntf* ObjectIntf::getWriteDeviantI(Deviant, ObjectIntf const*) const { return nullptr; }

} // namespace TAV::NSInterface
