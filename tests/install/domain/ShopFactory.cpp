#include "ShopFactory.h"

#include "kernel/Shop/NSImplementation/ProductImpl.h"
#include "kernel/Shop/NSImplementation/ShelfImpl.h"

namespace Shop {

template <class Impl>
static Impl* make(TAV::Deviant aRoot)
{
    auto* object = new Impl();
    object->rootDeviant = aRoot;
    object->internal_createDeviation(aRoot);
    return object;
}

Product newProduct(TAV::Deviant aRoot)
{
    return Product(make<NSImplementation::ProductImpl>(aRoot), aRoot);
}

Shelf newShelf(TAV::Deviant aRoot)
{
    return Shelf(make<NSImplementation::ShelfImpl>(aRoot), aRoot);
}

} // namespace Shop
