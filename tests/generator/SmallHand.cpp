// The hand-maintained operation the small description declares, as a domain author writes it.

#include <small/Item_h.h>
#include <small/NSInterface/ItemIntf.h>

namespace Small::NSInterface {

TAV::Boolean ItemIntf::isHeavy(Deviant aDeviant, TAV::Integer const& aLimit) const
{
    return TAV::Boolean(hasWeight(aDeviant) && getWeight(aDeviant) > aLimit);
}

} // namespace Small::NSInterface
