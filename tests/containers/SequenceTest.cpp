// The sequence contract on each implementation: its failures, what an
// iterator survives, equality, sharing of list blocks, and the counting proxy.

#include "SequenceFixture.h"

#include <tav/kernel/containers/sequence/SequenceProxy.h>
#include <tav/kernel/containers/sequence/SequenceType.h>

#include <functional>

namespace TAV::test {
namespace {

using ListOfRefs = ListQImplInternal::ListQImplForRefs;

constexpr char kNullSequence[] = "Cannot access NULL sequence. Use MakeSequence to create sequences.See "
                                 "testSequenceCreation in tav/kernel/unittest/sequence_tests.";

ListOfRefs const* listOf(SequenceRef const& s)
{
    Generic::SequenceIntf* seq = s.internal_sequence();
    if (auto* proxy = static_cast<GenericReferenceCountingSequenceProxy*>(
            seq->cast(CooperativeVisitor::internal::classInfo<GenericReferenceCountingSequenceProxy>())))
        seq = proxy->wrapped();
    return static_cast<ListOfRefs const*>(seq->cast(CooperativeVisitor::internal::classInfo<ListOfRefs>()));
}

// A failed check changes neither the sequence nor any count.
TEST_P(SequenceTest, FailuresNameTheirCauseAndChangeNothing)
{
    std::vector<Property> p = properties(2);
    Sequence<Property> s = make();
    s.push_back(p[0]);
    struct Case {
        char const* what;
        std::function<void(Sequence<Property> const&)> op;
        char const* message;
    };
    Case const cases[] = {
        {"at(-1)", [](auto& s) { s.at(-1); }, "sequence index must be positive"},
        {"at(size)", [](auto& s) { s.at(1); }, "sequence index out of bounds"},
        {"erase(size)", [](auto& s) { s.erase(1); }, "sequence index out of bounds"},
        {"replace(-1)", [&](auto& s) { s.replace(-1, p[1]); }, "sequence index must be positive"},
        {"insert(size + 1)", [&](auto& s) { s.insert(2, p[1]); }, "sequence index out of bounds"},
        {"insert of null", [](auto& s) { s.insert(0, Property()); },
         "null object while inserting into TAV.SequenceOfImmutableProperty"},
        {"push_back of null", [](auto& s) { s.push_back(Property()); }, "null object while inserting into "},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_TAV_THROW(c.op(s), c.message);
        EXPECT_EQ(s.size(), 1);
        EXPECT_EQ(heldBySequence(p[0]), 1);
        EXPECT_EQ(heldBySequence(p[1]), 0);
    }
    s.pop_back();
    for (auto const& op : std::initializer_list<std::function<void()>>{
             [&] { s.front(); }, [&] { s.back(); }, [&] { s.pop_back(); }, [&] { s.pop_front(); }})
        EXPECT_TAV_THROW(op(), "sequence is empty");
    s.insert(0, p[1]);
    EXPECT_EQ(s.at(0), p[1]) << "inserting at the size appends";

    Sequence<Property> const null;
    EXPECT_TRUE(null.isNull()) << "a null handle fails at its first use, not before";
    EXPECT_TAV_THROW(null.size(), kNullSequence);
    EXPECT_TAV_THROW(s.assign(null), kNullSequence);
}

TEST_F(SequenceTest, MakeSequenceRefusesWhatItCannotMake)
{
    EXPECT_TAV_THROW(MakeSequence<Property>({root, STD_VECTOR, true, false}),
                     "cannot use STD_VECTOR and aIsUnique together");
    EXPECT_TAV_THROW(MakeSequence<Property>({root, static_cast<SequenceImplementation>(7), false, false}),
                     "unknown sequence implementation requested");
    Sequence<Property> s = MakeSequence<Property>({root, MULTI_INDEX, true, true});
    EXPECT_EQ(s.internal_sequence()->numRef(), 1) << "the handle holds the proxy's only count";
    EXPECT_EQ(s.internal_sequence()->generic_getKestName(false, true, "kest."), "kest.IteratorOfProperty");

    GenericReferenceCountingSequenceProxy const empty{Generic::SequencePtr()};
    EXPECT_TAV_THROW(empty.generic_size(root), "operating on null sequence");
    for (SequenceImplementation const impl : {STD_VECTOR, MULTI_INDEX}) {
        Sequence<String> values = MakeSequence<String>({root, impl, false, false});
        EXPECT_TAV_THROW(values.internal_sequence()->generic_push_back(root, Generic::Ref()),
                         "null object while inserting into TAV.SequenceOfImmutableString");
    }
}

// Lists hold positions as pointers: a write invalidates them, and insert and
// erase answer fresh ones. Multi-index positions are nodes and survive every
// change but the erasure of their own element.
TEST_P(SequenceTest, IteratorsSurviveWhatTheirImplementationPromises)
{
    std::vector<Property> p = properties(4);
    Sequence<Property> s = make();
    s.push_back(p[0]);
    s.push_back(p[1]);
    Sequence<Property> sharer = make();
    sharer.assign(s);

    auto second = ++s.begin();
    auto const erased = s.erase(second);
    EXPECT_TRUE(erased == s.end()) << "erase answers the position after the erased element";
    EXPECT_EQ(s.size(), 1);
    EXPECT_EQ(s.at(0), p[0]) << "the position taken before the detach named the second element";
    EXPECT_EQ(sharer.size(), 2) << "the other holder of the block is untouched";

    auto first = s.begin();
    auto const inserted = s.insert(first, p[2]);
    EXPECT_EQ(*inserted, p[2]);
    if (GetParam().isList())
        return;
    s.push_back(p[3]);
    s.push_front(p[1]);
    s.erase(s.size() - 1);
    EXPECT_EQ(*first, p[0]) << "a node stays valid until its own element is erased";
    EXPECT_EQ(*inserted, p[2]);
}

// Uniqueness on insert and replace, and the counts it leaves, are the
// randomized test's; it never compares two sequences nor assigns one to itself.
TEST_P(SequenceTest, EqualityAndAssignAcrossImplementations)
{
    std::vector<Property> p = properties(2);
    Sequence<Property> s = make();
    Sequence<Property> list = make(kSequenceKinds[0]);
    EXPECT_TRUE(s.equals(list)) << "two empty sequences";
    list.push_back(p[0]);
    EXPECT_FALSE(s.equals(list));
    list.push_back(p[1]);
    s.push_back(p[1]);
    s.push_back(p[0]);
    EXPECT_FALSE(s.equals(list)) << "order counts";
    s.assign(list);
    EXPECT_TRUE(s.equals(list));
    EXPECT_TRUE(list.equals(s));
    EXPECT_EQ(heldBySequence(p[0]), 2);
    s.assign(s);
    EXPECT_TRUE(s.empty()) << "assigning a sequence to itself clears it first";
}

TEST_F(SequenceTest, ListsShareTheirBlockUntilAWrite)
{
    std::vector<Property> p = properties(3);
    Sequence<Property> a = make(kSequenceKinds[0]);
    Sequence<Property> b = make(kSequenceKinds[1]);
    EXPECT_TRUE(listOf(a)->internal_elements().sharesWith(listOf(b)->internal_elements()))
        << "empty lists share the null block";
    a.push_back(p[0]);
    a.push_back(p[1]);
    b.assign(a);
    EXPECT_TRUE(listOf(a)->internal_elements().sharesWith(listOf(b)->internal_elements()));
    EXPECT_EQ(heldBySequence(p[0]), 2) << "each list holds its own count";
    EXPECT_TRUE(b.equals(a));

    b.push_back(p[2]);
    EXPECT_FALSE(listOf(a)->internal_elements().sharesWith(listOf(b)->internal_elements()));
    EXPECT_EQ(a.size(), 2);
    EXPECT_EQ(listOf(a)->internal_elements().blockCount(), 1);

    // The written replace takes a count on the new element and keeps the one
    // on the old, so that neither is released while still held.
    a.replace(0, p[2]);
    EXPECT_EQ(heldBySequence(p[0]), 2);
    EXPECT_EQ(heldBySequence(p[2]), 2);
    implOf(p[0])->decRef();
}

TEST_F(SequenceTest, TypeDescriptionsHoldTheirElementTypeAndConvertNothing)
{
    BRIX::TypeInfo const element = String::getTypeInfo();
    for (BRIX::TypeInfo const& info : {SequenceType::Create(element), IteratorType::Create(element)}) {
        auto const& type = static_cast<Generic::detail::ElementTypeDescription const&>(info.type());
        EXPECT_EQ(type.elementType(), element);
        std::unique_ptr<BRIX::Type> const copy = type.clone();
        EXPECT_EQ(static_cast<Generic::detail::ElementTypeDescription const&>(*copy).elementType(), element);
        EXPECT_TAV_THROW(type.convertToString(BRIX::any()), "Not Implemented yet");
        EXPECT_TAV_THROW(type.defaultConstruct(), "Not Implemented yet");
        BRIX::ErrorHolder errors;
        type.convertFromString("x", errors);
        EXPECT_TRUE(errors.hasError());
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, SequenceTest, ::testing::ValuesIn(kSequenceKinds),
                         [](auto const& info) { return std::string(info.param.name); });

} // namespace
} // namespace TAV::test
