#include "kernel/deviant/DeviantImpl.h"
#include "kernel/deviant/Raise.h"

#include <tav/TAV/NSInterface/ClassObjectIntf.h>
#include <tav/kernel/deviant/ClassObjectHooks.h>
#include <tav/kernel/deviant/Deviant.h>

#include <string>
#include <typeinfo>
#include <utility>

namespace TAV {

using NSInterface::ObjectIntf;

namespace {

constexpr char kSource[] = "kernel/deviant/Deviant";

std::string metaClassName(ObjectIntf const* object)
{
    auto const hook = internal::classObjectHooks().metaClassName;
    return hook && object ? hook(object) : std::string();
}

std::string objectIndex(ObjectIntf const* object, Deviant d)
{
    auto const hook = internal::classObjectHooks().objectIndex;
    return std::to_string(hook && object ? hook(object, d) : -1);
}

std::string describe(ObjectIntf const* object, Deviant d)
{
    return "object of type '" + metaClassName(object) + "' [id = " + objectIndex(object, d) + " ]";
}

} // namespace

namespace internal {

ClassObjectHooks& classObjectHooks()
{
    static ClassObjectHooks sHooks;
    return sHooks;
}

} // namespace internal

bool DeviantAssertions::sAssertionsEnabled = true;
bool DeviantAssertions::sAssertionsThrowExceptionsEnabled = true;

bool DeviantAssertions::enableAssertions(bool enable)
{
    return std::exchange(sAssertionsEnabled, enable);
}

bool DeviantAssertions::enableExceptionThrowing(bool enable)
{
    return std::exchange(sAssertionsThrowExceptionsEnabled, enable);
}

void DeviantAssertions::internalAssert(bool condition, char const* message)
{
    if (!condition && sAssertionsThrowExceptionsEnabled)
        internal::raise(message, kSource, __LINE__);
}

void DeviantAssertions::internalAssertAlways(char const* message)
{
    if (sAssertionsThrowExceptionsEnabled)
        internal::raise(message, kSource, __LINE__);
}

void DeviantAssertions::internal_assertWritable(NSInterface::ClassObjectIntf const* object) const
{
    assertWritableObject(object);
}

void DeviantAssertions::assertWritableObject(ObjectIntf const* object) const
{
    if (!fImpl) {
        internalAssertAlways("cannot operate on null deviant");
        return;
    }
    if (fImpl->transactionDepth != 0)
        return;
    std::string const meta = metaClassName(object);
    if (meta.empty()) {
        std::string const message =
            std::string("object without metaClass ") + (object ? typeid(*object).name() : typeid(object).name());
        internalAssertAlways(message.c_str());
        return;
    }
    std::string const message = " Deviant '" + fImpl->name + "' not opened for transactions.\n" +
                                "Attempt to modify " + describe(object, Deviant(fImpl)) + " ";
    internalAssertAlways(message.c_str());
}

void DeviantAssertions::internal_assertWritable(ObjectIntf const* state) const
{
    if (!fImpl) {
        internalAssertAlways("cannot operate on null deviant");
        return;
    }
    if (fImpl->transactionDepth != 0 || fImpl->withinUndoOrRedoOrCancel)
        return;
    auto const isClassObject = internal::classObjectHooks().isClassObject;
    if (isClassObject && state && isClassObject(state)) {
        assertWritableObject(state);
        return;
    }
    std::string const message = " Deviant '" + fImpl->name + "' not opened for transactions.\n";
    internalAssertAlways(message.c_str());
}

void DeviantAssertions::assertObjectNotPresentInDeviant(ObjectIntf const* object) const
{
    Deviant const d(fImpl);
    std::string const message = " Deviant '" + d.getName() + "' : \n " + describe(object, d) + " is not present";
    internalAssertAlways(message.c_str());
}

void DeviantAssertions::assertObjectAlreadyCreated(ObjectIntf const* object) const
{
    Deviant const d(fImpl);
    std::string const message =
        " Deviant '" + d.getName() + "' : \n " + describe(object, d) + " has already been created";
    internalAssertAlways(message.c_str());
}

void DeviantAssertions::assertThatModelHasBeenDestroyed(ObjectIntf const* object)
{
    std::string const message = "Attempt to access " + describe(object, Deviant()) + " after its model has been destroyed";
    internalAssertAlways(message.c_str());
}

} // namespace TAV
