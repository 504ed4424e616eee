#pragma once

// New objects of the shop in a deviant, until the kernel creates objects by metaclass.

#include <shop/Product_h.h>
#include <shop/Shelf_h.h>

namespace Shop {

Product newProduct(TAV::Deviant aRoot);
Shelf newShelf(TAV::Deviant aRoot);

} // namespace Shop
