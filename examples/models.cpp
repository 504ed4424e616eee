// A first model: a small containment tree built in one transaction, undone and
// redone, a change made apart in a named deviant and then assigned to root, and
// an observer that prints what each commit changed.
#include <tav/TAV/Class_h.h>
#include <tav/TAV/MPackage_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/TAV/Property_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/deviant/Listeners.h>
#include <tav/kernel/util/Transaction.h>

#include <iostream>
#include <string>

namespace {

using namespace TAV;

// Told after every commit, undo and redo in the deviant it is registered with.
struct PrintCommits : ListenerBase {
    void onObserve(ChangeReport const& aReport)
    {
        std::cout << "   [observer] " << aReport.added.size() << " added, " << aReport.modified.size()
                  << " modified, " << aReport.removed.size() << " removed\n";
    }
};

std::string nameOf(ImmutableClassObject const& aObject)
{
    return ImmutableNamedElement(ImmutableObject(aObject)).getName().toUtf8();
}

// The package's tree as the given deviant sees it.
void printTree(Package aPackage, Deviant aDeviant)
{
    aPackage.setDeviant(aDeviant);
    std::cout << "   " << nameOf(aPackage) << " {";
    for (PackageableElement const& element : aPackage.getPackagedElements()) {
        std::cout << ' ' << nameOf(element) << " (";
        for (ImmutableClassObject const& attribute : ImmutableClassObject(element).getContaineeTAVs())
            std::cout << ' ' << nameOf(attribute);
        std::cout << " )";
    }
    std::cout << " }\n";
}

} // namespace

int main()
{
    Model model = Model::create();
    Deviant root = model.getDeviant();
    PrintCommits printer;
    root.registerObservingListener(new internal::ListenerHolder<NSInterface::ObjectIntf, PrintCommits>(&printer));

    std::cout << "-- A package holding a class with two attributes, built in one transaction\n";
    Transaction build(model, "build");
    Package shop = Package::create(model);
    shop.setName("shop");
    Class product = Class::create(model);
    product.setName("Product");
    shop.getPackagedElements().push_back(product);
    for (char const* name : {"name", "price"}) {
        Property attribute = Property::create(model);
        attribute.setName(name);
        product.getOwnedAttributes().push_back(attribute); // its class is set too
    }
    build.commit();
    printTree(shop, root);

    std::cout << "-- Undo takes the whole transaction back, redo replays it\n";
    root.undo();
    std::cout << "   after undo the package " << (shop.isValid() ? "still exists" : "is gone") << '\n';
    root.redo();
    printTree(shop, root);

    std::cout << "-- A rename made apart, in a named deviant: root does not see it\n";
    Deviant draft = model.internal_intf()->createDeviantWithName("draft");
    Class draftProduct = product;
    draftProduct.setDeviant(draft);
    draft.beginTransaction("rename");
    draftProduct.setName("Article");
    draft.commitTransaction();
    printTree(shop, draft);
    printTree(shop, root);

    std::cout << "-- The draft assigned to root, in one of root's transactions\n";
    Transaction assign(model, "assign the draft");
    draft.beginTransaction();
    draft.assignToRoot();
    draft.commitTransaction();
    assign.commit();
    printTree(shop, root);
}
