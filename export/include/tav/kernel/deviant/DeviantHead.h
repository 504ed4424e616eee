#pragma once

// What inline code outside change tracking reads of a deviant's record: the
// record (internal::DeviantImpl) is the engine's own and starts with this head,
// its first and only base, so the head lies at the record's address.

namespace TAV::internal {

class DeviantImpl;

struct DeviantHead {
    bool removed = false;
};

inline DeviantHead const& headOf(DeviantImpl const* aImpl)
{
    return *reinterpret_cast<DeviantHead const*>(aImpl);
}

} // namespace TAV::internal
