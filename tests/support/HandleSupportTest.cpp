#include <tav/kernel/util/Cager.h>
#include <tav/kernel/util/Exception.h>
#include <tav/kernel/util/Ref.h>
#include <tav/kernel/util/RefBase.h>
#include <tav/kernel/util/SmartPtr.h>

#include "support/Expect.h"

#include <string>
#include <type_traits>
#include <vector>

namespace {

struct Counted : TAV::ReferenceCountingIntf {
    int count = 0;
    void incRef() override { ++count; }
    void decRef() override { --count; }
    int numRef() const override { return count; }
    int answer() const { return 42; }
};

// A value whose live instances are counted, to see heap copies freed.
struct Tracked {
    static inline int sLive = 0;
    int v;
    explicit Tracked(int a) : v(a) { ++sLive; }
    Tracked(Tracked const& o) : v(o.v) { ++sLive; }
    ~Tracked() { --sLive; }
    bool operator==(Tracked const& o) const { return v == o.v; }
};

TEST(GenericRefTest, PrimitiveCopiesShareOneCountedHeapValue)
{
    {
        TAV::Generic::Ref const a = TAV::Generic::Ref::fromValue(Tracked(5));
        EXPECT_EQ(Tracked::sLive, 1);
        {
            TAV::Generic::Ref b = a;
            TAV::Generic::Ref c;
            c = b;
            EXPECT_EQ(Tracked::sLive, 1) << "copies retain, they do not copy the value";
            EXPECT_EQ(c.value<Tracked>().v, 5);
            EXPECT_EQ(c.payload, a.payload);
        }
        EXPECT_EQ(Tracked::sLive, 1) << "the first reference still holds it";
        EXPECT_EQ(a, TAV::Generic::Ref::fromValue(Tracked(5))) << "primitives compare by value";
        EXPECT_FALSE(a == TAV::Generic::Ref::fromValue(Tracked(6)));
        // Another module brings its own table, and its own functions, for the same type.
        static TAV::Generic::RefOps const* sHere = a.ops;
        TAV::Generic::RefOps otherModules = *a.ops;
        otherModules.equals = [](void const* x, void const* y) { return sHere->equals(x, y); };
        TAV::Generic::Ref fromThere = TAV::Generic::Ref::fromValue(Tracked(5));
        fromThere.ops = &otherModules;
        EXPECT_EQ(a, fromThere);
        EXPECT_FALSE(a == TAV::Generic::Ref::fromValue(5)) << "another type";
        EXPECT_EQ(a.object(), nullptr);
        EXPECT_FALSE(TAV::Generic::Ref(nullptr, TAV::Deviant()) == TAV::Generic::Ref::fromValue(0))
            << "an object never equals a primitive";
    }
    EXPECT_EQ(Tracked::sLive, 0) << "the last release frees the copy";
}

// The counting handles over a plain counted object.
template <class H>
class CountingHandleTest : public ::testing::Test {
protected:
    static H make(Counted* p)
    {
        if constexpr (std::is_same_v<H, TAV::Generic::Ref>)
            return H(p, TAV::Deviant());
        else
            return H(p);
    }
};

using CountingHandles = ::testing::Types<TAV::RefBase<Counted*>, TAV::Generic::SmartPtr<Counted>, TAV::Generic::Ref>;
TYPED_TEST_SUITE(CountingHandleTest, CountingHandles);

TYPED_TEST(CountingHandleTest, EveryLiveHandleHoldsOneCountAndComparesByObject)
{
    Counted object, other;
    {
        TypeParam const a = TestFixture::make(&object);
        TypeParam b = a;
        EXPECT_EQ(object.count, 2);
        TypeParam moved(std::move(b));
        EXPECT_EQ(object.count, 2) << "a move takes the count over";
        moved = TestFixture::make(&other);
        EXPECT_EQ(object.count, 1);
        EXPECT_EQ(other.count, 1);
        EXPECT_FALSE(a == moved);
        EXPECT_TRUE(a == TestFixture::make(&object));
        moved = TypeParam();
        EXPECT_EQ(other.count, 0);
    }
    EXPECT_EQ(object.count, 0);
}

TEST(RefBaseTest, NullAccessIsRefused)
{
    TAV::RefBase<Counted*> const null;
    EXPECT_FALSE(null.isValid());
    EXPECT_RAISES(null->answer(), TAV::Exception, "Cannot access NULL ref. Use isValid() before calling methods");
    EXPECT_RAISES(null->answer(), TAV::Exception, "export/include/tav/kernel/util/RefBase");
}

TEST(SmartPtrTest, ABaseCopyCountsToo)
{
    Counted object;
    {
        TAV::Generic::SmartPtr<Counted> p(&object);
        TAV::Generic::SmartPtr<TAV::ReferenceCountingIntf> base = p;
        EXPECT_EQ(object.count, 2);
    }
    EXPECT_EQ(object.count, 0);
}

// Stands for a model handle: one count on the model per copy.
struct FakeModel {
    explicit FakeModel(Counted* m) : model(m) { model->incRef(); }
    FakeModel(FakeModel const& o) : model(o.model) { model->incRef(); }
    ~FakeModel()
    {
        model->decRef();
        order().push_back(model);
    }
    static std::vector<Counted*>& order()
    {
        static std::vector<Counted*> sOrder;
        return sOrder;
    }
    Counted* model;
};

TEST(CagerTest, NestsLastInFirstOutAndReleasesHeldModelsInOrder)
{
    Counted first, second;
    std::size_t const depth = TAV::getCagers().size();
    {
        TAV::Cager outer;
        EXPECT_EQ(TAV::getCagers().top(), &outer);
        {
            TAV::Cager inner;
            EXPECT_EQ(TAV::getCagers().top(), &inner);
            EXPECT_FALSE(inner == outer);
            FakeModel a(&first), b(&second);
            inner.addRef(a);
            inner.addRef(b);
            FakeModel::order().clear();
        }
        EXPECT_EQ(FakeModel::order(), (std::vector<Counted*>{&second, &first, &first, &second}))
            << "locals go in reverse, then the Cager's copies in the order they were added";
        EXPECT_EQ(first.count, 0);
        EXPECT_EQ(TAV::getCagers().top(), &outer);
    }
    EXPECT_EQ(TAV::getCagers().size(), depth);
}

} // namespace
