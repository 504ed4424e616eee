// The generated reflection tables: each id reaches its typed accessor, ids outside a
// table's part are refused in the table's own words, association ends keep their upkeep.

#include "handles/FamilyFixture.h"

#include <tav/TAV/NSInterface/ClassIntf.h>
#include <tav/TAV/NSInterface/ElementIntf.h>
#include <tav/TAV/NSInterface/PrimitiveTypeIntf.h>
#include <tav/TAV/ValueObject_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/util/IntrospectiveMethods.h>
#include <tav/kernel/util/TAVCast.h>

#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

namespace TAV::test {
namespace {

// The object's canonical class-object sub-object, as the storages pass it to a table.
NSInterface::ClassObjectIntf* co(ImmutableClassObject const& aObject)
{
    return aObject.internal_intf();
}

using NSInterface::ClassObjectIntf;

// The tables of a metaclass and of its ancestors, each once: every id of the class
// is addressed through the table of the class that declares it.
std::vector<IntrospectiveMethods const*> chain(IntrospectiveMethods const* aTable)
{
    std::vector<IntrospectiveMethods const*> out, todo{aTable};
    while (!todo.empty()) {
        IntrospectiveMethods const* t = todo.back();
        todo.pop_back();
        if (std::find(out.begin(), out.end(), t) != out.end())
            continue;
        out.push_back(t);
        for (MetaClassRef const* s = t->superClasses; s->package; ++s)
            todo.push_back(s->package()->types[s->typeIndex]);
    }
    return out;
}

unsigned rowCount(IntrospectiveMethods const* aTable)
{
    unsigned n = 0;
    while (aTable->descriptions[n + 1])
        ++n;
    return n;
}

bool multi(MetaPropertyDescription const* aRow)
{
    return (aRow->flags & MetaPropertyDescription::kMultiValued) != 0;
}

template <class V>
ImmutableObject asObject(V const& aValue)
{
    if constexpr (std::is_base_of_v<HandleBase, V>)
        return aValue;
    else
        return static_cast<Object>(aValue);
}

class TableTest : public FamilyTest {
protected:
    // Every single-valued row of the object's chain is read through the table of the class
    // that declares it and compared with the typed read of the same name; a row without a
    // typed read here must refuse, so that a new property is not passed over.
    void expectRowsMatch(ImmutableClassObject const& aObject, IntrospectiveMethods const* aTable,
        std::map<std::string, ImmutableObject> const& aTyped)
    {
        std::set<std::string> seen;
        for (IntrospectiveMethods const* t : chain(aTable)) {
            for (unsigned id = 1; id <= rowCount(t); ++id) {
                MetaPropertyDescription const* row = t->descriptions[id];
                auto typed = aTyped.find(row->name);
                if (multi(row)) { // the single-valued functions know no multi-valued id
                    EXPECT_FALSE(t->hasSingleValued(co(aObject), root, id)) << row->name;
                    EXPECT_TAV_THROW(t->getSingleValued(co(aObject), root, id),
                        "getSingleValued on illegal property with id " + std::to_string(id));
                    continue;
                }
                if (typed == aTyped.end()) {
                    EXPECT_ANY_THROW(t->getSingleValued(co(aObject), root, id)) << row->name;
                    continue;
                }
                seen.insert(row->name);
                ImmutableObject const viaTable = t->getSingleValued(co(aObject), root, id);
                if (isValueObject(typed->second))
                    EXPECT_TRUE(ImmutableValueObject(viaTable) == ImmutableValueObject(typed->second)) << row->name;
                else
                    EXPECT_TRUE(viaTable == typed->second) << row->name;
            }
        }
        for (auto const& [name, value] : aTyped)
            EXPECT_TRUE(seen.count(name)) << name << " is no single-valued row of the chain";
    }
};

TEST_F(TableTest, EverySingleRowAnswersAsItsTypedAccessor)
{
    Property p = newProperty();
    Class c = newClass();
    Association a = newAssociation(); // states hold no count: the test keeps it alive
    open(root);
    p.setName("speed");
    p.setIsReadOnly(true);
    p.setDefault("7");
    p.setIsDerivedUnion(true);
    p.setLower(0);
    p.setUpper(4294967295u);
    p.setClass(c);
    p.setAssociation(a);
    p.setIsOrdered(true);
    c.setName("Car");
    c.setIsAbstract(true);
    close(root);

    expectRowsMatch(p, &NSInterface::PropertyIntf::sIntrospectiveMethods,
        {{"name", asObject(p.getName())}, {"visibility", asObject(p.getVisibility())},
            {"persistence", asObject(p.getPersistence())}, {"isReadOnly", asObject(p.isReadOnly())},
            {"default", asObject(p.getDefault())}, {"isComposite", asObject(p.isComposite())},
            {"isDerived", asObject(p.isDerived())}, {"isDerivedUnion", asObject(p.isDerivedUnion())},
            {"isOrdered", asObject(p.isOrdered())}, {"isUnique", asObject(p.isUnique())},
            {"lower", asObject(p.getLower())}, {"upper", asObject(p.getUpper())}, {"storage", asObject(p.getStorage())},
            {"class", asObject(p.getClass())}, {"association", asObject(p.getAssociation())},
            {"datatype", asObject(p.getDatatype())}, {"owningAssociation", asObject(p.getOwningAssociation())},
            {"type", asObject(p.getType())}, {"namespace", asObject(p.getNamespace())},
            {"owner", asObject(p.getOwner())}, {"containerTAV", asObject(p.getContainerTAV())},
            {"modelTAV", asObject(p.getModelTAV())}, {"rootModel", asObject(p.getRootModel())},
            {"externalId", asObject(p.getExternalId())}});
    expectRowsMatch(c, &NSInterface::ClassIntf::sIntrospectiveMethods,
        {{"name", asObject(c.getName())}, {"isAbstract", asObject(c.isAbstract())},
            {"visibility", asObject(c.getVisibility())}, {"persistence", asObject(c.getPersistence())},
            {"package", asObject(c.getPackage())}, {"namespace", asObject(c.getNamespace())},
            {"owner", asObject(c.getOwner())}, {"containerTAV", asObject(c.getContainerTAV())},
            {"modelTAV", asObject(c.getModelTAV())}, {"rootModel", asObject(c.getRootModel())},
            {"externalId", asObject(c.getExternalId())}});
}

TEST_F(TableTest, IllegalIdsAndObjectsAreRefusedInTheTablesOwnWords)
{
    struct Case {
        IntrospectiveMethods const* table;
        char const* name;
    };
    Property p = newProperty();
    ClassObjectIntf* object = co(p);
    Object any;
    for (Case const& k : {Case{&NSInterface::PropertyIntf::sIntrospectiveMethods, "TAV.Property"},
             Case{&NSInterface::ElementIntf::sIntrospectiveMethods, "TAV.Element"},
             Case{&NSInterface::ClassObjectIntf::sIntrospectiveMethods, "TAV.ClassObject"}}) {
        IntrospectiveMethods const& m = *k.table;
        std::string const at = std::string(k.name) + "::";
        unsigned const past = rowCount(k.table) + 1;
        std::string const withId = " on illegal property with id " + std::to_string(past);
        EXPECT_TAV_THROW(m.getSingleValued(object, root, 0), at + "getSingleValued on illegal property");
        EXPECT_TAV_THROW(m.hasSingleValued(object, root, 0), at + "hasSingleValued on illegal property");
        EXPECT_TAV_THROW(m.setSingleValued(object, root, 0, any), at + "setSingleValued on illegal property");
        EXPECT_TAV_THROW(m.setOnlySingleValued(object, root, 0, any), at + "setOnlySingleValued on illegal property");
        EXPECT_TAV_THROW(m.removeSingleValued(object, root, 0), at + "removeSingleValued on illegal property");
        EXPECT_TAV_THROW(m.removeOnlySingleValued(object, root, 0), at + "removeOnlySingleValued on illegal property");
        EXPECT_TAV_THROW(m.getMultiValued(object, root, 0, true), at + "getMultiValued on illegal property");
        EXPECT_TAV_THROW(m.getOnlyMultiValued(object, root, 0, false), at + "getOnlyMultiValued on illegal property");

        EXPECT_TAV_THROW(m.getSingleValued(object, root, past), at + "getSingleValued" + withId);
        EXPECT_FALSE(m.hasSingleValued(object, root, past));
        EXPECT_TAV_THROW(m.setSingleValued(object, root, past, any), at + "setSingleValued" + withId);
        EXPECT_TAV_THROW(m.setOnlySingleValued(object, root, past, any), at + "setOnlySingleValued" + withId);
        EXPECT_TAV_THROW(m.removeSingleValued(object, root, past), at + "removeSingleValued" + withId);
        EXPECT_TAV_THROW(m.removeOnlySingleValued(object, root, past), at + "removeOnlySingleValued" + withId);
        EXPECT_TAV_THROW(m.getMultiValued(object, root, past, true), at + "getMultiValued on illegal property");
        EXPECT_TAV_THROW(m.getSingleValued(nullptr, root, 1), "illegal object");
    }
    Class c = newClass();
    EXPECT_TAV_THROW(
        NSInterface::PropertyIntf::sIntrospectiveMethods.hasSingleValued(co(c), root, 0), "illegal object");
    EXPECT_TAV_THROW(
        NSInterface::PrimitiveTypeIntf::sIntrospectiveMethods.removeSingleValued(co(c), root, 1), "illegal object");
}

TEST_F(TableTest, AssociationEndsKeepOrSkipTheOppositeList)
{
    IntrospectiveMethods const& m = NSInterface::PropertyIntf::sIntrospectiveMethods;
    unsigned const classId = 11;
    ASSERT_EQ(std::string(m.descriptions[classId]->name), "class");
    Property p = newProperty();
    Class c = newClass();
    auto listed = [&] { return c.getOwnedAttributesWithoutAssociation().contains(p); };
    open(root);

    m.setOnlySingleValued(co(p), root, classId, Object(c));
    EXPECT_TRUE(p.getClass() == c);
    EXPECT_FALSE(listed()) << "this end only";

    m.removeOnlySingleValued(co(p), root, classId);
    m.setSingleValued(co(p), root, classId, Object(c));
    EXPECT_TRUE(p.getClass() == c);
    EXPECT_TRUE(listed()) << "both ends";
    EXPECT_TRUE(m.hasSingleValued(co(p), root, classId));

    // An object of another metaclass converts to an empty Class: the end is cleared.
    m.setSingleValued(co(p), root, classId, Object(newAssociation()));
    EXPECT_FALSE(p.hasClass());
    EXPECT_FALSE(listed());
    EXPECT_FALSE(m.hasSingleValued(co(p), root, classId));
    EXPECT_TRUE(m.hasSingleValued(co(p), root, 6)) << "isReadOnly has lower bound 1";
    close(root);
}

TEST_F(TableTest, RedefinitionsReachTheRedefiningAccessor)
{
    // Operation.type is its return parameter's: the table reaches the redefining accessor.
    Operation op = Operation(make<NSImplementation::OperationImpl>(root), root);
    Parameter result(make<NSImplementation::ParameterImpl>(root), root);
    Class c = newClass();
    IntrospectiveMethods const& om = NSInterface::OperationIntf::sIntrospectiveMethods;
    ASSERT_EQ(std::string(om.descriptions[10]->name), "type");
    open(root);
    result.setDirection(ParameterDirectionKind::Return);
    op.getOwnedParametersWithoutAssociation().push_back(result);
    om.setSingleValued(co(op), root, 10, Object(c));
    close(root);
    EXPECT_TRUE(result.getType() == ImmutableType(c));
    EXPECT_TRUE(om.getSingleValued(co(op), root, 10) == Object(c));
}

} // namespace
} // namespace TAV::test
