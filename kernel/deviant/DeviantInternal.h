#pragma once

// Unchecked helpers of the runtime: the public operations add the checks.

namespace TAV {

class ChangeMap;

namespace NSInterface {
class ObjectIntf;
}

namespace internal {

class DeviantImpl;

NSInterface::ObjectIntf* lookupState(DeviantImpl const* impl, NSInterface::ObjectIntf const* object);
NSInterface::ObjectIntf* savedOldState(DeviantImpl const* impl, NSInterface::ObjectIntf const* object);
void saveOldState(DeviantImpl* impl, NSInterface::ObjectIntf* object, NSInterface::ObjectIntf* state);
// Deletes every real state of the map directly and clears it; for teardown,
// when the objects may no longer be asked.
void destroyStates(ChangeMap& map);

} // namespace internal
} // namespace TAV
