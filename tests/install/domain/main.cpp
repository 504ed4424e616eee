// A domain library generated and built against an installed TAV, used from outside.
#include "ShopFactory.h"

#include <tav/kernel/deviant/DeviantManager.h>

#include <iostream>

int main()
{
    TAV::DeviantManager manager;
    TAV::Deviant root = manager.getRoot();
    // Writes outside a transaction, which this program does not open.
    TAV::DeviantAssertions::enableAssertions(false);
    Shop::Shelf shelf = Shop::newShelf(root);
    Shop::Product product = Shop::newProduct(root);
    product.setName("tea");
    product.setShelf(shelf);
    std::cout << "product: " << product.getName().toUtf8() << '\n';
    std::cout << "on its shelf: " << (product.getShelf() == shelf ? "yes" : "no") << '\n';
    std::cout << "contained: " << (product.getContainerTAV() == TAV::ImmutableClassObject(shelf) ? "yes" : "no")
              << '\n';
    std::cout << "shelf holds: " << shelf.getProducts().size() << '\n';
    product.removeShelf();
    std::cout << "after removal: " << (product.hasContainerTAV() ? "contained" : "free") << '\n';
}
