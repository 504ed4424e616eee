// The views: what each shows after a change to what it stands on, where each
// write lands, and the words of each refusal.

#include "SequenceFixture.h"

#include <tav/TAV/NamedElement_h.h>
#include <tav/kernel/containers/sequence/views/GenericMutexedSequence.h>
#include <tav/kernel/containers/sequence/views/GenericSubsetSequence.h>
#include <tav/kernel/containers/sequence/views/Views.h>
#include <tav/kernel/util/IntrospectiveMethods.h>

#include <boost/thread/shared_mutex.hpp>

#include <algorithm>
#include <functional>
#include <random>

namespace TAV::test {
namespace {

using Ids = std::vector<void const*>;

template <class S>
Ids ids(S const& aSequence)
{
    Ids result;
    for (auto const& element : aSequence)
        result.push_back(element.internal_identity());
    return result;
}

Ids ids(std::initializer_list<ImmutableClassObject> aObjects)
{
    Ids result;
    for (ImmutableClassObject const& o : aObjects)
        result.push_back(o.internal_identity());
    return result;
}

// Walks backwards from the end, which only the untyped iterators can.
Ids backwards(SequenceRef const& aSequence)
{
    Generic::SequenceIntf* const s = aSequence.internal_sequence();
    Deviant const d = aSequence.getDeviant();
    Ids result;
    Generic::IteratorPtr const begin = s->generic_begin(d);
    for (Generic::IteratorPtr it = s->generic_end(d); !it->equal(begin.get());) {
        it->previous(d);
        result.push_back(ClassObject(Generic::asClassObject(it->current(d).object()), d).internal_identity());
    }
    return result;
}

class ViewTest : public SequenceTest {
protected:
    Property p0 = newProperty(), p1 = newProperty(), p2 = newProperty();
    Class c0 = newClass(), c1 = newClass();
};

// On every kind of storage: [p0 c0 p1 c1], of which the view shows p0 p1.
TEST_P(ViewTest, FilteredViewFollowsItsSequence)
{
    Sequence<NamedElement> all = make<NamedElement>();
    for (NamedElement e : {NamedElement(p0), NamedElement(c0), NamedElement(p1), NamedElement(c1)})
        all.push_back(e);
    Sequence<Property> view = filtered<Property>(all);
    EXPECT_EQ(ids(view), ids({p0, p1}));
    EXPECT_EQ(backwards(view), ids({p1, p0}));
    EXPECT_EQ(view.size(), 2);
    EXPECT_EQ(view.back(), p1);
    EXPECT_FALSE(view.internal_sequence()->generic_contains(root, Generic::ElementTraits<Class>::toRef(c0, root)));

    all.push_back(p2);
    EXPECT_EQ(ids(view), ids({p0, p1, p2})) << "an element added after the view was made";

    Property const added = newProperty(), replacing = newProperty();
    view.insert(1, added);
    EXPECT_EQ(ids(all), ids({p0, c0, added, p1, c1, p2})) << "before the view's second element";
    view.erase(1);
    view.replace(2, replacing);
    EXPECT_EQ(ids(all), ids({p0, c0, p1, c1, replacing}));
    if (GetParam().isList())
        implOf(p2)->decRef(); // a list's replace keeps its count on the element it overwrites
    view.pop_front();
    view.pop_back();
    EXPECT_EQ(ids(all), ids({c0, p1, c1}));
    view.clear();
    EXPECT_EQ(ids(all), ids({c0, c1})) << "clear leaves what the filter refuses";
    EXPECT_TRUE(view.empty());
    EXPECT_TRUE(view.begin() == view.end());
}

INSTANTIATE_TEST_SUITE_P(Kinds, ViewTest, ::testing::ValuesIn(kSequenceKinds),
                         [](auto const& info) { return std::string(info.param.name); });

// Random writes through the parts and through a union of filtered parts,
// checked after each step against plain vectors.
TEST_F(ViewTest, UnionOfFilteredPartsMatchesAReferenceModel)
{
    std::vector<ImmutableClassObject> const pool = {newProperty(), newProperty(), newProperty(), newProperty(),
                                                    newClass(),    newClass(),    p0,            c0};
    auto isProperty = [](ImmutableClassObject const& o) { return ImmutableProperty(o).internal_counted() != nullptr; };
    Sequence<NamedElement> const parts[] = {make<NamedElement>(kSequenceKinds[0]), make<NamedElement>(kSequenceKinds[2]),
                                            make<NamedElement>(kSequenceKinds[3])};
    std::vector<ImmutableClassObject> model[3];
    Sequence<Property> const u = unionOf<Property>(root, filtered<Property>(parts[0]), filtered<Property>(parts[1]),
                                                   filtered<Property>(parts[2]));
    // The part and position of the view's element i.
    auto locate = [&](int i) {
        for (int k = 0; k < 3; ++k)
            for (std::size_t j = 0; j < model[k].size(); ++j)
                if (isProperty(model[k][j]) && i-- == 0)
                    return std::pair(k, j);
        return std::pair(-1, std::size_t(0));
    };
    std::mt19937 random(7);
    for (int step = 0; step < 400; ++step) {
        Ids expected;
        for (auto const& part : model)
            for (ImmutableClassObject const& o : part)
                if (isProperty(o))
                    expected.push_back(o.internal_identity());
        int const size = static_cast<int>(expected.size());
        ASSERT_EQ(ids(u), expected) << "step " << step;
        ASSERT_EQ(u.size(), size);
        ASSERT_EQ(backwards(u), Ids(expected.rbegin(), expected.rend()));

        int const k = static_cast<int>(random() % 3);
        ImmutableClassObject const& o = pool[random() % pool.size()];
        bool const kept = k != 2 || std::find(model[2].begin(), model[2].end(), o) == model[2].end();
        switch (random() % 6) {
        case 0:
        case 1:
            parts[k].push_back(NamedElement(ClassObject(o.internal_intf(), root)));
            if (kept)
                model[k].push_back(o);
            break;
        case 2:
            if (isProperty(o) && std::find(model[0].begin(), model[0].end(), o) == model[0].end()) {
                u.push_back(Property(ClassObject(o.internal_intf(), root)));
                model[0].push_back(o);
            }
            break;
        case 3:
        case 4:
            if (size > 0) {
                int const i = step % 5 == 0 ? 0 : step % 5 == 1 ? size - 1 : static_cast<int>(random() % size);
                auto const [part, at] = locate(i);
                if (i == 0)
                    u.pop_front();
                else if (i == size - 1)
                    u.pop_back();
                else
                    u.erase(i);
                model[part].erase(model[part].begin() + static_cast<long>(at));
            }
            break;
        default:
            if (step % 40 == 0) {
                parts[k].clear();
                model[k].clear();
            }
        }
    }
}

struct Refusal {
    char const* what;
    std::function<void()> op;
    char const* message;
};

void expectRefusals(std::initializer_list<Refusal> aCases, std::function<void()> const& aUnchanged)
{
    for (Refusal const& c : aCases) {
        SCOPED_TRACE(c.what);
        EXPECT_TAV_THROW(c.op(), c.message);
        aUnchanged();
    }
}

// A refusal leaves the underlying sequence as it was.
TEST_F(ViewTest, FilteredViewRefusals)
{
    Sequence<NamedElement> all = make<NamedElement>(kSequenceKinds[0]);
    all.push_back(c0);
    Sequence<Property> const view = filtered<Property>(all);
    Generic::SequenceIntf* const raw = view.internal_sequence();
    Generic::Ref const aClass = Generic::ElementTraits<Class>::toRef(c1, root);
    expectRefusals(
        {
            {"at(0), none passes", [&] { view.at(0); }, "GenericFilteredSequence::generic_at: No items match the filter!"},
            {"back, none passes", [&] { view.back(); }, "GenericFilteredSequence::generic_back: No items match the filter!"},
            {"pop_front", [&] { view.pop_front(); }, "sequence is empty"},
            {"at(-1)", [&] { view.at(-1); }, "GenericFilteredSequence::generic_at: index out of bounds, less than zero size!"},
            {"push_back of a class", [&] { raw->generic_push_back(root, aClass); }, "FilteredSequence: item fails filter"},
            {"insert of a class", [&] { raw->generic_insert(root, 0, aClass); }, "FilteredSequence: item fails filter"},
            {"insert of null", [&] { view.insert(0, Property()); },
             "GenericFilteredSequence::generic_insert: Attempting to insert an invalid ref!"},
            {"insert past the end", [&] { view.insert(1, p0); }, "GenericFilteredSequence::generic_insert: Index out of bounds!"},
            {"replace with null", [&] { view.replace(0, Property()); }, "FilteredSequence: item fails filter"},
            {"removeAll of a class", [&] { raw->generic_removeAll(root, aClass); }, "FilteredSequence: item fails filter"},
        },
        [&] { EXPECT_EQ(ids(all), ids({c0})); });

    all.push_back(p0);
    expectRefusals({{"at(1)", [&] { view.at(1); }, "GenericFilteredSequence::generic_at: index out of bounds!"},
                    {"replace(1)", [&] { view.replace(1, p1); }, "sequence index out of bounds"},
                    {"erase(1)", [&] { view.erase(1); }, "sequence index out of bounds"}},
                   [&] { EXPECT_EQ(ids(all), ids({c0, p0})); });

    GenericFilteredSequence readOnly(all.internal_sequence(),
                                     filtered_sequence_internal::TypeFilter<Property, false>(false));
    EXPECT_TAV_THROW(readOnly.generic_push_back(root, Generic::ElementTraits<Property>::toRef(p1, root)),
                     "insertion not supported by filtered sequence");
    EXPECT_EQ(readOnly.generic_size(root), 1) << "a read-only view still reads";
    GenericFilteredSequence const nothing{Generic::SequencePtr(), filtered_sequence_internal::AcceptAllFilter()};
    EXPECT_TAV_THROW(nothing.generic_size(root), "operating on null sequence");
}

// Parts: properties (empty), classes [c0 c1], properties (empty).
TEST_F(ViewTest, CombinedViewWalksAndRoutesAcrossParts)
{
    Sequence<Property> first = make<Property>(kSequenceKinds[0]), last = make<Property>(kSequenceKinds[2]);
    Sequence<Class> middle = make<Class>(kSequenceKinds[3]);
    Sequence<NamedElement> const none = unionOf<NamedElement>(root, first, make<Class>(kSequenceKinds[0]));
    EXPECT_TRUE(none.begin() == none.end()) << "all parts empty";
    EXPECT_TRUE(none.empty());

    Sequence<NamedElement> const u = unionOf<NamedElement>(root, first, middle, last);
    middle.push_back(c0);
    middle.push_back(c1);
    EXPECT_EQ(ids(u), ids({c0, c1})) << "begins on the first non-empty part";
    EXPECT_EQ(backwards(u), ids({c1, c0}));
    EXPECT_EQ(u.front(), NamedElement(c0));
    EXPECT_EQ(u.back(), NamedElement(c1));
    EXPECT_EQ(u.internal_sequence()->generic_getKestName(true, false, "TAV."), "TAV.SequenceOfImmutableNamedElement");

    u.pop_back();
    EXPECT_EQ(ids(middle), ids({c0})) << "pop_back passes over the empty last part";
    u.push_back(p0);
    u.push_front(p1);
    EXPECT_EQ(ids(first), ids({p1, p0})) << "a value goes to the first part of its class";
    EXPECT_EQ(ids(u), ids({p1, p0, c0}));
    EXPECT_EQ(u.at(2), NamedElement(c0));
    EXPECT_TRUE(u.contains(c0));
    u.erase(1);
    EXPECT_EQ(ids(u), ids({p1, c0}));
    auto at = u.begin();
    ++at;
    EXPECT_TRUE(u.erase(at) == u.end());
    EXPECT_EQ(u.removeAll(p1), 1);
    EXPECT_TRUE(u.empty());

    middle.push_back(c0);
    last.push_back(p2);
    Sequence<Class> const other = make<Class>(kSequenceKinds[0]);
    expectRefusals(
        {
            {"push_back of an association", [&] { u.push_back(newAssociation()); },
             "cannot insert value into the combined sequence"},
            {"insert", [&] { u.insert(0, p0); }, "cannot insert into this data structure"},
            {"replace", [&] { u.replace(0, p0); }, "cannot insert into this data structure"},
            {"range erase", [&] { u.erase(u.begin(), u.end()); }, "cannot insert into this data structure"},
            {"at(size)", [&] { u.at(2); }, "CombinedSequence: invalid subsequence"},
            {"erase(size)", [&] { u.erase(2); }, "erase requested for invalid index"},
            {"erase at another's iterator", [&] { u.internal_sequence()->generic_erase(root, other.begin().internal_position()); },
             "invalid iterator passed to erase"},
        },
        [&] { EXPECT_EQ(ids(u), ids({c0, p2})); });
    u.clear();
    EXPECT_TRUE(middle.empty() && last.empty());
    EXPECT_TAV_THROW(u.pop_back(), "pop_back on empty CombinedSequence");
    EXPECT_TAV_THROW(u.pop_front(), "pop_front on empty CombinedSequence");
}

TEST_F(ViewTest, NullSequenceIsOneEmptySink)
{
    GenericNullSequence* const null = GenericNullSequence::getSingleton();
    EXPECT_EQ(null, GenericNullSequence::getSingleton());
    EXPECT_GE(null->numRef(), 1) << "the library holds it";
    Sequence<Property> const s = unionOf<Property>(root);
    EXPECT_EQ(s.internal_sequence(), null) << "a union of no parts";
    s.push_back(p0);
    s.insert(0, p0);
    EXPECT_EQ(s.size(), 0);
    EXPECT_FALSE(s.contains(p0));
    EXPECT_TRUE(s.begin() == s.end());
    EXPECT_TRUE(s.at(3).internal_identity() == nullptr);
    EXPECT_EQ(implOf(p0)->numRef(), 1) << "nothing kept";
}

// A hand-made table over the container slot, as the generated ones reach it.
IntrospectiveMethods const kContainerTable{
    +[](NSInterface::ClassObjectIntf const* o, Deviant d, unsigned) {
        ImmutableClassObject const v = o->getContainerTAV(d);
        return Object(v.internal_intf(), v.getDeviant());
    },
    +[](NSInterface::ClassObjectIntf const* o, Deviant d, unsigned) { return o->hasContainerTAV(d); },
    +[](NSInterface::ClassObjectIntf* o, Deviant d, unsigned, Object const& v) {
        o->setContainerTAV(d, ImmutableClassObject(v));
    },
    nullptr,
    +[](NSInterface::ClassObjectIntf* o, Deviant d, unsigned) { o->removeContainerTAV(d); },
    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};

TEST_F(ViewTest, PropertyProxyShowsOneSlot)
{
    open(root);
    Sequence<ClassObject> const s = propertyAsSequence(p0, root, &kContainerTable, 3, 0);
    EXPECT_EQ(s.size(), 0);
    EXPECT_TRUE(s.begin() == s.end()) << "an unset property";
    s.clear();
    EXPECT_TAV_THROW(s.front(), "Cannot access NULL ref. Use isValid() before calling methods");

    s.push_back(c0);
    EXPECT_TRUE(p0.getContainerTAV() == ImmutableClassObject(c0));
    EXPECT_EQ(ids(s), ids({c0}));
    EXPECT_TRUE(s.contains(c0));
    EXPECT_EQ(s.removeAll(c1), 0);
    s.replace(0, c1);
    EXPECT_EQ(s.at(0), ClassObject(c1));
    expectRefusals({{"insert(1)", [&] { s.insert(1, c0); }, "Cannot add elements."},
                    {"erase(end)", [&] { s.erase(s.end()); }, "PropertyToSequence: not an end iterator"},
                    {"erase(end, end)", [&] { s.erase(s.end(), s.end()); }, "PropertyToSequence: end iterator"}},
                   [&] { EXPECT_TRUE(p0.getContainerTAV() == ImmutableClassObject(c1)); });
    EXPECT_EQ(s.removeAll(c1), 1);
    EXPECT_FALSE(p0.hasContainerTAV());
    s.push_front(c0);
    EXPECT_TRUE(s.erase(s.begin()) == s.end());
    EXPECT_FALSE(p0.hasContainerTAV());

    Sequence<Class> const classes = filtered<Class>(propertyAsSequence(p1, root, &kContainerTable, 3, 0));
    classes.push_back(c1);
    EXPECT_EQ(ids(classes), ids({c1})) << "a single slot restricted to a class";
    p1.setContainerTAV(newAssociation());
    EXPECT_TRUE(classes.empty());
}

Generic::SequencePtr gSubset;

// Removing through the superset leaves the subset too; adding does not add to it.
TEST_F(ViewTest, SubsetSequenceKeepsItsSubsetsConsistent)
{
    Sequence<Property> const superset = make<Property>(kSequenceKinds[3]);
    Sequence<Property> const subset = make<Property>(kSequenceKinds[3]);
    gSubset = subset.internal_sequence();
    IntrospectiveMethods const table{nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     +[](NSInterface::ClassObjectIntf*, Deviant, unsigned, bool) { return gSubset; },
                                     nullptr, nullptr, nullptr, nullptr, nullptr};
    SubsetSequence<Class, Property> const s(c0, superset, {{&table, 2}});
    for (Property const& p : {p0, p1, p2}) {
        s.push_back(p);
        subset.push_back(p);
    }
    s.push_back(newProperty());
    EXPECT_EQ(subset.size(), 3);
    EXPECT_EQ(s.removeAll(p1), 1);
    EXPECT_EQ(ids(subset), ids({p0, p2}));
    s.erase(0);
    EXPECT_EQ(subset.size(), 2) << "only removeAll and clear reach the subsets";
    s.clear();
    EXPECT_TRUE(superset.empty());
    EXPECT_EQ(ids(subset), ids({p0})) << "p0 left the superset by erase, before the clear";
    gSubset = Generic::SequencePtr();
}

// Single-threaded forwarding; the threaded run is in its own binary.
TEST_F(ViewTest, MutexedSequenceForwardsEachCall)
{
    boost::shared_mutex mutex;
    Sequence<Property> const inner = make<Property>(kSequenceKinds[0]);
    Sequence<Property> const s(Generic::SequencePtr(new Generic::HeapCounted<GenericMutexedSequence>(
                                   inner.internal_sequence(), mutex)),
                               root);
    s.push_back(p0);
    s.insert(0, p1);
    EXPECT_EQ(ids(s), ids({p1, p0}));
    EXPECT_TRUE(s.equals(inner));
    s.assign(s);
    EXPECT_TRUE(inner.empty()) << "assigning to itself clears, and takes the lock once";
}

} // namespace
} // namespace TAV::test
