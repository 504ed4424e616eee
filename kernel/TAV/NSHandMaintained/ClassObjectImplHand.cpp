// Hand-maintained members of ClassObject, and what the runtime asks of class objects,
// answered through the generated interfaces.

#include <tav/TAV/Class_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/TAV/Property_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/deviant/ClassObjectHooks.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/ModelCache.h>
#include <tav/kernel/util/ObjectLookup.h>
#include <tav/kernel/util/propertystorage/PropertyStorage.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

namespace TAV {
namespace NSInterface {

namespace {
constexpr char kSource[] = "kernel/TAV/NSImplementation/ClassObjectImpl";

[[noreturn]] void rootModelIsDerived(int aLine)
{
    Asserter::MakeAlways<Exception>("rootModel is a derived property and thus cannot have the remove method implemented")
        .handle(kSource, aLine, "");
    __builtin_unreachable();
}
} // namespace

bool ClassObjectIntf::hasRootModel(Deviant aDeviant) const
{
    return ImmutableObject(getRootModel(aDeviant)).isValid();
}

void ClassObjectIntf::removeRootModel(Deviant)
{
    rootModelIsDerived(__LINE__);
}

ImmutableModel ClassObjectIntf::getRootModel(Deviant aDeviant) const
{
    return getModelTAV(aDeviant);
}

void ClassObjectIntf::removeOnlyRootModel(Deviant)
{
    rootModelIsDerived(__LINE__);
}

// The URI of an object is its model's, with the object's id as the fragment; it is derived
// and cannot be written.
namespace {
constexpr char kHandSource[] = "kernel/TAV/NSHandMaintained/ClassObjectImplHand";

[[noreturn]] void uriIsReadOnly(int aLine)
{
    Asserter::MakeAlways<Exception>("The ClassObject.uri derived property is read-only!").handle(kHandSource, aLine, "");
    __builtin_unreachable();
}
} // namespace

bool ClassObjectIntf::hasUri(Deviant aDeviant) const
{
    ImmutableModel const model = getModelTAV(aDeviant);
    if (!model.internal_intf())
        Asserter::MakeAlways<Exception>("Cannot access NULL ref. Use isValid() before calling methods")
            .handle(kHandSource, __LINE__, "");
    return model.internal_intf()->hasTAV_Model_Uri(model.getDeviant());
}

void ClassObjectIntf::removeUri(Deviant)
{
    uriIsReadOnly(__LINE__);
}

void ClassObjectIntf::setUri(Deviant, String const&)
{
    uriIsReadOnly(__LINE__);
}

String ClassObjectIntf::getUri(Deviant aDeviant) const
{
    ImmutableModel const model = getModelTAV(aDeviant);
    return String(model.getUri().str() + u"#" + SerializeId(ImmutableClassObject(this, aDeviant)).str());
}

// Reflection by property: the property's storage does the work on this object.
namespace {

PropertyStorage storageOf(ImmutableProperty const& aProperty, char const* aRefusal, int aLine)
{
    Asserter::Make<Exception>(aProperty.internal_intf() && aProperty.isValid(), "%s", aRefusal)
        .handle(kSource, aLine, "");
    return aProperty.getStorage();
}

PropertyStorage readStorage(ImmutableProperty const& aProperty, int aLine)
{
    return storageOf(aProperty, "Trying to get invalid property!", aLine);
}

PropertyStorage writeStorage(ImmutableProperty const& aProperty, int aLine)
{
    return storageOf(aProperty, "Trying to set invalid property!", aLine);
}

bool usable(ImmutableProperty const& aProperty)
{
    return aProperty.internal_intf() && aProperty.isValid();
}

} // namespace

ImmutableSequence<ImmutableObject> ClassObjectIntf::get(Deviant aDeviant, ImmutableProperty const& aProperty) const
{
    PropertyStorage const storage = readStorage(aProperty, __LINE__);
    return storage.get(ImmutableClassObject(this, aDeviant));
}

ImmutableObject ClassObjectIntf::getOne(Deviant aDeviant, ImmutableProperty const& aProperty) const
{
    if (!usable(aProperty))
        return ImmutableObject();
    PropertyStorage const storage = aProperty.getStorage();
    return storage.getOne(ImmutableClassObject(this, aDeviant));
}

Boolean ClassObjectIntf::has(Deviant aDeviant, ImmutableProperty const& aProperty) const
{
    return usable(aProperty) && aProperty.getStorage().has(ImmutableClassObject(this, aDeviant));
}

void ClassObjectIntf::setOrAdd(Deviant aDeviant, ImmutableProperty const& aProperty, Object const& aValue)
{
    writeStorage(aProperty, __LINE__).setOrAdd(ClassObject(this, aDeviant), aValue);
}

void ClassObjectIntf::setOrAddOnly(Deviant aDeviant, ImmutableProperty const& aProperty, Object const& aValue)
{
    writeStorage(aProperty, __LINE__).setOrAddEndOnly(ClassObject(this, aDeviant), aValue);
}

void ClassObjectIntf::remove(Deviant aDeviant, ImmutableProperty const& aProperty, Object const& aValue)
{
    writeStorage(aProperty, __LINE__).remove(ClassObject(this, aDeviant), aValue);
}

void ClassObjectIntf::remove(Deviant aDeviant, ImmutableProperty const& aProperty)
{
    writeStorage(aProperty, __LINE__).remove(ClassObject(this, aDeviant));
}

void ClassObjectIntf::removeOnly(Deviant aDeviant, ImmutableProperty const& aProperty, Object const& aValue)
{
    writeStorage(aProperty, __LINE__).removeEndOnly(ClassObject(this, aDeviant), aValue);
}

void ClassObjectIntf::removeOne(Deviant aDeviant, ImmutableProperty const& aProperty)
{
    writeStorage(aProperty, __LINE__).removeOne(ClassObject(this, aDeviant));
}

void ClassObjectIntf::removeOneOnly(Deviant aDeviant, ImmutableProperty const& aProperty)
{
    writeStorage(aProperty, __LINE__).removeOneEndOnly(ClassObject(this, aDeviant));
}

// One entry per tool: the one a tool's name finds, or the empty info.
ExternalToolInfo ClassObjectIntf::getExternalToolInfo(Deviant aDeviant, String const& aTool) const
{
    if (!hasExternalToolInfos(aDeviant))
        return ExternalToolInfo();
    for (ExternalToolInfo const& info : getExternalToolInfosWithoutAssociation(aDeviant))
        if (info.getTool() == aTool)
            return info;
    return ExternalToolInfo();
}

// Replaces the entry of the same tool, or adds one; an equal entry is left alone,
// so that an unchanged write copies no state.
void ClassObjectIntf::setExternalToolInfo(Deviant aDeviant, ExternalToolInfo const& aInfo)
{
    Sequence<ExternalToolInfo> const infos = getExternalToolInfosWithoutAssociation(aDeviant);
    int const size = hasExternalToolInfos(aDeviant) ? infos.size() : 0;
    for (int i = 0; i < size; ++i) {
        ExternalToolInfo const current = infos.at(i);
        if (current.getTool() != aInfo.getTool())
            continue;
        if (current != aInfo)
            infos.replace(i, aInfo);
        return;
    }
    infos.push_back(aInfo);
}

void ClassObjectIntf::removeExternalToolInfo(Deviant aDeviant, ExternalToolInfo const& aInfo)
{
    if (hasExternalToolInfos(aDeviant))
        getExternalToolInfosWithoutAssociation(aDeviant).removeAll(aInfo);
}

} // namespace NSInterface

namespace {

NSInterface::ClassObjectIntf const* asClassObject(NSInterface::ObjectIntf const* aObject)
{
    if (!aObject)
        return nullptr;
    return static_cast<NSInterface::ClassObjectIntf const*>(
        aObject->cast(CooperativeVisitor::internal::classInfo<NSInterface::ClassObjectIntf>()));
}

bool isModel(NSInterface::ObjectIntf const* aObject)
{
    return aObject && aObject->cast(CooperativeVisitor::internal::classInfo<NSInterface::ModelIntf>()) != nullptr;
}

bool isClassObject(NSInterface::ObjectIntf const* aObject)
{
    return asClassObject(aObject) != nullptr;
}

std::string metaClassName(NSInterface::ObjectIntf const* aObject)
{
    auto const* object = asClassObject(aObject);
    if (!object)
        return {};
    ImmutableClass const metaClass = object->getMetaClass(object->getRootDeviant());
    if (metaClass.internal_intf())
        return metaClass.getName().toUtf8();
    // Before the meta-registry stands, the generated dotted name ("TAV.Property").
    std::string const dotted = object->getKestName(false).toUtf8();
    return dotted.substr(dotted.rfind('.') + 1);
}

long long objectIndex(NSInterface::ObjectIntf const* aObject, Deviant aDeviant)
{
    auto const* object = asClassObject(aObject);
    return object ? static_cast<long long>(static_cast<std::int32_t>(object->getObjectIndex(aDeviant))) : -1;
}

NSInterface::ObjectIntf* modelObject(NSInterface::ModelIntf* aModel)
{
    return static_cast<NSInterface::ObjectIntf*>(static_cast<NSInterface::ClassObjectIntf*>(aModel));
}

// Runs when the library loads, before any model exists.
struct InstallHooks {
    InstallHooks()
    {
        auto& hooks = internal::classObjectHooks();
        hooks.isModel = &isModel;
        hooks.isClassObject = &isClassObject;
        hooks.metaClassName = &metaClassName;
        hooks.objectIndex = &objectIndex;
        hooks.modelObject = &modelObject;
        hooks.unbindModel = [](NSInterface::ModelIntf* aModel) { ModelCache::unbindIfCached(aModel); };
    }
} sInstallHooks;

} // namespace
} // namespace TAV
