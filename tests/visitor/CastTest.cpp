#include <tav/kernel/util/ReferenceCountingIntf.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

#include <gtest/gtest.h>

#include "support/FakeTypes.h"

#include <string>

namespace {

using namespace TAV::CooperativeVisitor;
using internal::classInfo;
using internal::ClassMetaInfo;
using TAV::ReferenceCountingIntf;

// A two-base class, as the multi-base interfaces are: Both has two
// ReferenceCountingIntf sub-objects and the pointer values of its bases differ.
struct Left : ReferenceCountingIntf {
    int left = 1;
    void* cast(internal::ClassInfo const& info) const override;
    VisitEntry getVisitMethod(DispatchTable const& table) const override;
};

struct Right : ReferenceCountingIntf {
    int right = 2;
    void* cast(internal::ClassInfo const& info) const override;
    VisitEntry getVisitMethod(DispatchTable const& table) const override;
};

struct Both : Left, Right {
    int both = 3;
    void* cast(internal::ClassInfo const& info) const override;
    VisitEntry getVisitMethod(DispatchTable const& table) const override;
};

struct Unrelated : ReferenceCountingIntf {};

// The entry of To in Self's table, reached through Via.
template <class Self, class To, class Via = To>
std::pair<internal::ClassInfo, internal::CastThunk> entry()
{
    return {classInfo<To>(),
            [](void* p) -> void* { return static_cast<To*>(static_cast<Via*>(static_cast<Self*>(p))); }};
}

ClassMetaInfo const& leftInfo()
{
    static ClassMetaInfo const sInfo{entry<Left, Left>(), entry<Left, ReferenceCountingIntf>()};
    return sInfo;
}

ClassMetaInfo const& rightInfo()
{
    static ClassMetaInfo const sInfo{entry<Right, Right>(), entry<Right, ReferenceCountingIntf>()};
    return sInfo;
}

// Bases nearest first; the shared root is reached along the first base.
ClassMetaInfo const& bothInfo()
{
    static ClassMetaInfo const sInfo{entry<Both, Both>(), entry<Both, Left>(), entry<Both, Right>(),
                                     entry<Both, ReferenceCountingIntf, Left>()};
    return sInfo;
}

void* Left::cast(internal::ClassInfo const& info) const { return leftInfo().cast(this, info); }
VisitEntry Left::getVisitMethod(DispatchTable const& table) const { return leftInfo().visit(this, table); }
void* Right::cast(internal::ClassInfo const& info) const { return rightInfo().cast(this, info); }
VisitEntry Right::getVisitMethod(DispatchTable const& table) const { return rightInfo().visit(this, table); }
void* Both::cast(internal::ClassInfo const& info) const { return bothInfo().cast(this, info); }
VisitEntry Both::getVisitMethod(DispatchTable const& table) const { return bothInfo().visit(this, table); }

TEST(CastTest, CastsUpAndDownAcrossBothBases)
{
    Both object;
    Right* const asRight = &object;
    Left* const asLeft = &object;
    ASSERT_NE(static_cast<void*>(asRight), static_cast<void*>(asLeft));

    EXPECT_EQ(asLeft->cast(classInfo<Right>()), asRight) << "sideways through the most derived class";
    EXPECT_EQ(asRight->cast(classInfo<Left>()), asLeft);
    EXPECT_EQ(asRight->cast(classInfo<Both>()), &object) << "downcast";
    EXPECT_EQ(asRight->cast(classInfo<ReferenceCountingIntf>()),
              static_cast<ReferenceCountingIntf*>(asLeft))
        << "the root is the one on the first-base path, from either sub-object";
    EXPECT_EQ(asRight->cast(classInfo<Unrelated>()), nullptr);

    Left alone;
    EXPECT_EQ(alone.cast(classInfo<Both>()), nullptr) << "a base object is not its subclass";
    EXPECT_EQ(alone.cast(classInfo<Left>()), &alone);
}

TEST(CastTest, TagsOutsideATableAreNotClasses)
{
    Both object;
    EXPECT_EQ(object.cast(internal::ClassInfo{}), nullptr);
    EXPECT_EQ(object.cast(internal::ClassInfo{classInfo<Both>().domain, 100000}), nullptr);
    EXPECT_EQ(object.cast(internal::ClassInfo{100000, classInfo<Both>().cls}), nullptr);
    struct OtherDomain {};
    EXPECT_EQ(object.cast(classInfo<Both, OtherDomain>()), nullptr) << "same class, another domain";
}

TEST(CastTest, BaseInterfacesAnswerForThemselvesOnly)
{
    struct Plain : ReferenceCountingIntf {};
    Plain plain;
    EXPECT_EQ(plain.cast(classInfo<ReferenceCountingIntf>()), static_cast<ReferenceCountingIntf*>(&plain));
    EXPECT_EQ(plain.cast(classInfo<Plain>()), nullptr);
}

using tavtest::NamedTypeInfo;

TEST(TagTest, LeadingStarIsIgnoredAndTagsCountPerDomain)
{
    NamedTypeInfo const domain("tavtest.TagDomain");
    NamedTypeInfo const starredDomain("*tavtest.TagDomain");
    NamedTypeInfo const plain("tavtest.Tagged");
    NamedTypeInfo const starred("*tavtest.Tagged");
    NamedTypeInfo const second("tavtest.Second");

    unsigned const tag = internal::GetTag(plain, domain);
    EXPECT_EQ(internal::GetTag(starred, starredDomain), tag);
    EXPECT_EQ(tag, 1u) << "a fresh domain numbers its classes from 1";
    EXPECT_EQ(internal::GetTag(second, domain), 2u);
    EXPECT_EQ(internal::GetTag(plain, domain), tag);

    NamedTypeInfo const other("tavtest.OtherDomain");
    EXPECT_EQ(internal::GetTag(second, other), 1u);
}

TEST(TagTest, NamesBindToClassInfos)
{
    EXPECT_EQ(internal::GetTagFromName("tavtest.Unbound"), internal::ClassInfo{});
    internal::BindTagToName("tavtest.Both", classInfo<Both>());
    EXPECT_EQ(internal::GetTagFromName("tavtest.Both"), classInfo<Both>());
}

// Records what a visit function saw.
struct Recorder : Visitor<std::string, ReferenceCountingIntf> {
    using Visitor::Visitor;
    void const* seen = nullptr;

    static std::string onLeft(Recorder& r, Left& l)
    {
        r.seen = &l;
        return "left " + std::to_string(l.left);
    }
    static std::string onRight(Recorder& r, Right& x)
    {
        r.seen = &x;
        return "right " + std::to_string(x.right);
    }
    static std::string onBoth(Recorder& r, Both& b)
    {
        r.seen = &b;
        return "both " + std::to_string(b.both);
    }
    static std::string onRoot(Recorder& r, ReferenceCountingIntf& o)
    {
        r.seen = &o;
        return "root";
    }
};

TEST(VisitTest, NearestBoundClassWinsWithThisAdjusted)
{
    Both object;
    Left& asLeft = object;
    Right& asRight = object;

    static DispatchTable sRightAndRoot;
    Recorder::bind<Recorder, Right, &Recorder::onRight>(sRightAndRoot);
    Recorder::bind<Recorder, ReferenceCountingIntf, &Recorder::onRoot>(sRightAndRoot);
    Recorder viaRight(sRightAndRoot);
    EXPECT_EQ(viaRight.visit(asLeft, "none"), "right 2") << "Right is listed before the root";
    EXPECT_EQ(viaRight.seen, &asRight);

    static DispatchTable sAll;
    Recorder::bind<Recorder, Left, &Recorder::onLeft>(sAll);
    Recorder::bind<Recorder, Both, &Recorder::onBoth>(sAll);
    Recorder all(sAll);
    EXPECT_EQ(all.visit(asRight, "none"), "both 3") << "the class's own binding comes first";
    EXPECT_EQ(all.seen, &object);

    Left alone;
    EXPECT_EQ(all.visit(alone, "none"), "left 1");
    Unrelated stranger;
    EXPECT_EQ(all.visit(stranger, "none"), "none");
    EXPECT_EQ(stranger.getVisitMethod(sAll).fn, nullptr);
}

} // namespace
