// The generated reflection tables: each id reaches its typed accessor, ids outside a
// table's part are refused in the table's own words, association ends keep their upkeep.

#include "handles/FamilyFixture.h"

#include <tav/TAV/NSInterface/ClassIntf.h>
#include <tav/TAV/NSInterface/ElementIntf.h>
#include <tav/TAV/NSInterface/PrimitiveTypeIntf.h>
#include <tav/TAV/ValueObject_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/family/RawRefList.h>
#include <tav/kernel/util/IntrospectiveMethods.h>
#include <tav/kernel/util/TAVCast.h>

#include <functional>
#include <map>
#include <set>
#include <string>
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
    while (aTable->descriptions[n + 1] && aTable->descriptions[n + 1]->id == n + 1)
        ++n;
    return n;
}

bool multi(MetaPropertyDescription const* aRow)
{
    return (aRow->flags & MetaPropertyDescription::kMultiValued) != 0;
}

using Reader = std::function<ImmutableObject()>;

class TableTest : public FamilyTest {
protected:
    // Every single-valued row of the object's chain that has a typed reader is read through
    // the table and compared; a row that answers without a typed reader here is reported,
    // so that a new property is not passed over.
    void expectRowsMatch(ImmutableClassObject const& aObject, IntrospectiveMethods const* aTable,
                         std::map<std::string, Reader> const& aTyped)
    {
        std::set<std::string> seen;
        for (IntrospectiveMethods const* t : chain(aTable)) {
            for (unsigned id = 1; id <= rowCount(t); ++id) {
                MetaPropertyDescription const* row = t->descriptions[id];
                if (multi(row))
                    continue;
                auto typed = aTyped.find(row->name);
                if (typed == aTyped.end()) {
                    EXPECT_ANY_THROW(t->getSingleValued(aObject.internal_intf(), root, id)) << row->name;
                    continue;
                }
                seen.insert(row->name);
                ImmutableObject viaTable = t->getSingleValued(aObject.internal_intf(), root, id);
                ImmutableObject expected = typed->second();
                if (isValueObject(expected))
                    EXPECT_TRUE(ImmutableValueObject(viaTable) == ImmutableValueObject(expected)) << row->name;
                else
                    EXPECT_TRUE(viaTable == expected) << row->name;
            }
        }
        for (auto const& [name, reader] : aTyped)
            EXPECT_TRUE(seen.count(name)) << name << " is no single-valued row of the chain";
    }
};

template <class V>
Reader value(std::function<V()> aRead)
{
    return [aRead] { return ImmutableObject(static_cast<Object>(aRead())); };
}

TEST_F(TableTest, EverySingleRowAnswersAsItsTypedAccessor)
{
    Property p = newProperty();
    Class c = newClass();
    Association a = newAssociation();
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
                    {{"name", value<String>([&] { return p.getName(); })},
                     {"visibility", value<VisibilityKind>([&] { return p.getVisibility(); })},
                     {"persistence", value<PersistenceKind>([&] { return p.getPersistence(); })},
                     {"isReadOnly", value<Boolean>([&] { return p.isReadOnly(); })},
                     {"default", value<String>([&] { return p.getDefault(); })},
                     {"isComposite", value<Boolean>([&] { return p.isComposite(); })},
                     {"isDerived", value<Boolean>([&] { return p.isDerived(); })},
                     {"isDerivedUnion", value<Boolean>([&] { return p.isDerivedUnion(); })},
                     {"isOrdered", value<Boolean>([&] { return p.isOrdered(); })},
                     {"isUnique", value<Boolean>([&] { return p.isUnique(); })},
                     {"lower", value<Integer>([&] { return p.getLower(); })},
                     {"upper", value<UnlimitedNatural>([&] { return p.getUpper(); })},
                     {"storage", value<PropertyStorage>([&] { return p.getStorage(); })},
                     {"class", [&] { return ImmutableObject(p.getClass()); }},
                     {"association", [&] { return ImmutableObject(p.getAssociation()); }},
                     {"owningAssociation", [&] { return ImmutableObject(p.getOwningAssociation()); }},
                     {"datatype", [&] { return ImmutableObject(p.getDatatype()); }},
                     {"type", [&] { return ImmutableObject(p.getType()); }},
                     {"namespace", [&] { return ImmutableObject(p.getNamespace()); }},
                     {"owner", [&] { return ImmutableObject(p.getOwner()); }},
                     {"containerTAV", [&] { return ImmutableObject(p.getContainerTAV()); }},
                     {"modelTAV", [&] { return ImmutableObject(p.getModelTAV()); }},
                     {"rootModel", [&] { return ImmutableObject(p.getRootModel()); }},
                     {"externalId", value<String>([&] { return p.getExternalId(); })}});
    expectRowsMatch(c, &NSInterface::ClassIntf::sIntrospectiveMethods,
                    {{"name", value<String>([&] { return c.getName(); })},
                     {"isAbstract", value<Boolean>([&] { return c.isAbstract(); })},
                     {"visibility", value<VisibilityKind>([&] { return c.getVisibility(); })},
                     {"persistence", value<PersistenceKind>([&] { return c.getPersistence(); })},
                     {"package", [&] { return ImmutableObject(c.getPackage()); }},
                     {"namespace", [&] { return ImmutableObject(c.getNamespace()); }},
                     {"owner", [&] { return ImmutableObject(c.getOwner()); }},
                     {"containerTAV", [&] { return ImmutableObject(c.getContainerTAV()); }},
                     {"modelTAV", [&] { return ImmutableObject(c.getModelTAV()); }},
                     {"rootModel", [&] { return ImmutableObject(c.getRootModel()); }},
                     {"externalId", value<String>([&] { return c.getExternalId(); })}});
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
    EXPECT_TAV_THROW(NSInterface::PropertyIntf::sIntrospectiveMethods.hasSingleValued(co(c), root, 0),
                     "illegal object");
    EXPECT_TAV_THROW(NSInterface::PrimitiveTypeIntf::sIntrospectiveMethods.removeSingleValued(co(c), root, 1),
                     "illegal object");
}

TEST_F(TableTest, SingleAndMultiValuedIdsArePartitioned)
{
    Property p = newProperty();
    for (IntrospectiveMethods const* t : chain(&NSInterface::PropertyIntf::sIntrospectiveMethods)) {
        for (unsigned id = 1; id <= rowCount(t); ++id) {
            if (!multi(t->descriptions[id]))
                continue;
            SCOPED_TRACE(t->descriptions[id]->name);
            EXPECT_FALSE(t->hasSingleValued(co(p), root, id));
            EXPECT_TAV_THROW(t->getSingleValued(co(p), root, id),
                             "getSingleValued on illegal property with id " + std::to_string(id));
            EXPECT_TAV_THROW(t->setSingleValued(co(p), root, id, Object()),
                             "setSingleValued on illegal property with id " + std::to_string(id));
        }
    }
}

TEST_F(TableTest, AssociationEndsKeepOrSkipTheOppositeList)
{
    IntrospectiveMethods const& m = NSInterface::PropertyIntf::sIntrospectiveMethods;
    unsigned const classId = 11;
    ASSERT_EQ(std::string(m.descriptions[classId]->name), "class");
    Property p = newProperty();
    Class c = newClass();
    auto listed = [&] { return c.internal_intf()->internal_rawOwnedAttributes(root)->contains(co(p)); };
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
    close(root);
}

TEST_F(TableTest, ValuesWriteThroughTheTableAndRedefinitionsReachTheRedefiningAccessor)
{
    IntrospectiveMethods const& pm = NSInterface::PropertyIntf::sIntrospectiveMethods;
    Property p = newProperty();
    open(root);
    pm.setSingleValued(co(p), root, 7, String("42"));
    pm.setOnlySingleValued(co(p), root, 6, Boolean(true));
    EXPECT_EQ(p.getDefault(), String("42"));
    EXPECT_TRUE(p.isReadOnly());
    EXPECT_TRUE(pm.hasSingleValued(co(p), root, 7));
    pm.removeSingleValued(co(p), root, 7);
    EXPECT_FALSE(p.hasDefault());
    EXPECT_FALSE(pm.hasSingleValued(co(p), root, 7));
    EXPECT_TRUE(pm.hasSingleValued(co(p), root, 6)) << "lower bound 1";
    close(root);

    // Operation.type is its return parameter's: the table reaches the redefining accessor.
    Operation op = Operation(make<NSImplementation::OperationImpl>(root), root);
    Parameter result(make<NSImplementation::ParameterImpl>(root), root);
    Class c = newClass();
    IntrospectiveMethods const& om = NSInterface::OperationIntf::sIntrospectiveMethods;
    ASSERT_EQ(std::string(om.descriptions[10]->name), "type");
    open(root);
    result.setDirection(ParameterDirectionKind::Return);
    op.internal_intf()->internal_rawOwnedParametersForWrite(root)->push_back(co(result));
    om.setSingleValued(co(op), root, 10, Object(c));
    close(root);
    EXPECT_TRUE(result.getType() == ImmutableType(c));
    EXPECT_TRUE(om.getSingleValued(co(op), root, 10) == Object(c));
}

} // namespace
} // namespace TAV::test
