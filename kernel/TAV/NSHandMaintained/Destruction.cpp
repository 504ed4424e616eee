// Destruction of a subtree in one deviant. Every link from the subtree to the outside is
// cut while all its objects still exist; then each object leaves its lists and becomes
// invalid in the deviant. Its old state stays in the change set, so undo brings it back.

#include <tav/TAV/ClassObject_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/family/ModelMembership.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/DestroyVisitor.h>
#include <tav/kernel/util/IntrospectiveMethods.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

#include <algorithm>
#include <set>
#include <vector>

namespace TAV {

namespace {

using Row = MetaPropertyDescription;

NSInterface::ObjectIntf* asObject(NSInterface::ClassObjectIntf* aObject)
{
    return static_cast<NSInterface::ObjectIntf*>(aObject);
}

IntrospectiveMethods const* tableOf(PackageGetter aPackage, std::uint32_t aIndex)
{
    PackageIntrospectiveMethods const* package = aPackage ? aPackage() : nullptr;
    return package && aIndex < package->count ? package->types[aIndex] : nullptr;
}

// Each row of the class and its ancestors, each table once.
template <class F>
void forEachRow(IntrospectiveMethods const* aMethods, std::vector<IntrospectiveMethods const*>& aSeen, F const& aVisit)
{
    if (!aMethods || std::find(aSeen.begin(), aSeen.end(), aMethods) != aSeen.end())
        return;
    aSeen.push_back(aMethods);
    if (aMethods->descriptions)
        for (Row** row = aMethods->descriptions + 1; *row; ++row)
            aVisit(aMethods, **row);
    if (aMethods->superClasses)
        for (MetaClassRef const* super = aMethods->superClasses; super->package; ++super)
            forEachRow(tableOf(super->package, super->typeIndex), aSeen, aVisit);
}

template <class F>
void forEachRow(IntrospectiveMethods const* aMethods, F const& aVisit)
{
    std::vector<IntrospectiveMethods const*> seen;
    forEachRow(aMethods, seen, aVisit);
}

bool oppositeIsComposite(Row const& aRow)
{
    IntrospectiveMethods const* far = tableOf(aRow.oppositeEnd.package, aRow.oppositeEnd.typeIndex);
    if (!far || !far->descriptions)
        return false;
    Row const* opposite = far->descriptions[aRow.oppositeEnd.propertyId];
    return opposite && (opposite->flags & Row::kComposite);
}

// A link this object holds to another that keeps an end of its own, not containment.
bool isLinkOut(Row const& aRow)
{
    return aRow.oppositeEnd.present && !(aRow.flags & (Row::kDerived | Row::kComposite)) && !oppositeIsComposite(aRow);
}

// The end through which the object sits in its container's composite list.
bool isContainerEnd(Row const& aRow)
{
    return aRow.oppositeEnd.present && !(aRow.flags & (Row::kDerived | Row::kMultiValued)) && oppositeIsComposite(aRow);
}

// What the object owns, each held by a count so that cutting links frees none of them.
// A model owns its content and its unparented objects as well.
std::vector<ClassObject> childrenOf(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant)
{
    std::vector<ClassObject> children;
    for (ClassObject const& child : aObject->getContaineeTAVsWithoutAssociation(aDeviant))
        children.push_back(child);
    auto* model = static_cast<NSInterface::ModelIntf*>(
        aObject->cast(CooperativeVisitor::internal::classInfo<NSInterface::ModelIntf>()));
    if (model) {
        for (ClassObject const& child : model->getContentsWithoutAssociation(aDeviant))
            children.push_back(child);
        for (ClassObject const& child : model->getUnparentedsWithoutAssociation(aDeviant))
            children.push_back(child);
    }
    return children;
}

bool existsIn(ClassObject const& aObject, Deviant aDeviant)
{
    return asObject(aObject.internal_intf())->deviant_isValid(aDeviant);
}

} // namespace

namespace family {

void destroyObject(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant)
{
    if (DeviantAssertions::sAssertionsEnabled)
        aDeviant.internal_assertWritable(aObject);
    if (!asObject(aObject)->deviant_isValid(aDeviant))
        return;
    auto* model = static_cast<NSInterface::ModelIntf*>(
        aObject->cast(CooperativeVisitor::internal::classInfo<NSInterface::ModelIntf>()));
    std::vector<ClassObject> members;
    if (model)
        for (ClassObject const& member : childrenOf(aObject, aDeviant))
            members.push_back(member);
    asObject(aObject)->disconnectForDestroy(aDeviant);
    asObject(aObject)->destroyContents(aDeviant, true);
    // Whatever left both the tree and the unparented list through a fault stays behind.
    for (ClassObject const& member : members)
        Asserter::Make<Exception>(!existsIn(member, aDeviant),
                                  "object not destroyed: it is neither part of hierarchy nor part of unparented")
            .handle("kernel/TAV/NSImplementation/ModelImpl", __LINE__, "");
}

void disconnectForDestroy(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant, IntrospectiveMethods const* aMethods)
{
    for (ClassObject const& child : childrenOf(aObject, aDeviant))
        if (existsIn(child, aDeviant))
            asObject(child.internal_intf())->disconnectForDestroy(aDeviant);
    // Lists first, then single ends, as the far objects keep them.
    for (bool const multi : {true, false})
        forEachRow(aMethods, [&](IntrospectiveMethods const* aTable, Row const& aRow) {
            if (!isLinkOut(aRow) || ((aRow.flags & Row::kMultiValued) != 0) != multi)
                return;
            if (multi) {
                if (aTable->getMultiValued)
                    if (auto const links = aTable->getMultiValued(aObject, aDeviant, aRow.id, true))
                        links->generic_clear(aDeviant);
            } else if (aTable->hasSingleValued && aTable->removeSingleValued &&
                       aTable->hasSingleValued(aObject, aDeviant, aRow.id)) {
                aTable->removeSingleValued(aObject, aDeviant, aRow.id);
            }
        });
}

void destroyContents(NSInterface::ClassObjectIntf* aObject, Deviant aDeviant, bool aTopLevel,
                     IntrospectiveMethods const* aMethods)
{
    for (ClassObject const& child : childrenOf(aObject, aDeviant))
        if (existsIn(child, aDeviant))
            asObject(child.internal_intf())->destroyContents(aDeviant, false);
    if (aTopLevel) {
        // Out of the container's own composite list, then out of its containees.
        forEachRow(aMethods, [&](IntrospectiveMethods const* aTable, Row const& aRow) {
            if (isContainerEnd(aRow) && aTable->hasSingleValued && aTable->removeSingleValued &&
                aTable->hasSingleValued(aObject, aDeviant, aRow.id))
                aTable->removeSingleValued(aObject, aDeviant, aRow.id);
        });
        aObject->removeContainerTAV(aDeviant);
        leaveUnparented(aObject, aDeviant);
    }
    // Below the top, an object is contained, or unparented in a model that goes whole with its list:
    // leaving the list one by one would cost its length each time.
    if (!asObject(aObject)->deviant_isValid(aDeviant))
        return;
    // A write first, so that the change set keeps the state for undo.
    aObject->getWriteDeviantI(aDeviant, aObject);
    asObject(aObject)->internal_destroyDeviation(aDeviant);
}

} // namespace family

void DestroyVisitor::destroy(ClassObject const& aObject)
{
    NSInterface::ClassObjectIntf* object = aObject.internal_intf();
    if (!object || !aObject.isValid())
        return;
    asObject(object)->destroy(aObject.getDeviant());
}

} // namespace TAV
