#include "automation/Object.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "automation/Declare.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::automation {
namespace {

using support::ErrorOf;

// A member that counts itself, and may be told to look at its owner or itself when it goes.
class Leaf final : public Object {
 public:
  explicit Leaf(int& alive) : m_alive(alive) { ++m_alive; }
  static const Interface& Describe() {
    static const Interface kInterface =
        automation::Declare("Leaf", "_Leaf", "").byDefault().get<&Leaf::Name>("Name").build();
    return kInterface;
  }
  const Interface& Declaration() const override { return Describe(); }
  std::string Name() const { return "leaf"; }
  bool looksAtItselfAtTheEnd = false;

 protected:
  ~Leaf() override {
    --m_alive;
    if (looksAtItselfAtTheEnd) const Ref<Leaf> self(this);
  }

 private:
  int& m_alive;
};

// An owner of members, by the rules of the class.
class Trunk final : public Object {
 public:
  explicit Trunk(int& alive) : m_alive(alive) { ++m_alive; }
  static const Interface& Describe() {
    static const Interface kInterface = automation::Declare("Trunk", "_Trunk", "")
                                            .get<&Trunk::First>("First")
                                            .method<&Trunk::Clear>("Clear")
                                            .build();
    return kInterface;
  }
  const Interface& Declaration() const override { return Describe(); }

  void Add(Leaf& leaf) {
    leaf.SetOwner(this);
    m_leaves.emplace_back(&leaf);
  }
  Leaf* First() const { return m_leaves.empty() ? nullptr : m_leaves.front().Get(); }
  void Clear() {
    const auto leaves = std::exchange(m_leaves, {});
    for (const auto& leaf : leaves) leaf->SetOwner(nullptr);
  }

 protected:
  ~Trunk() override {
    Clear();
    --m_alive;
  }

 private:
  int& m_alive;
  std::vector<Held<Leaf>> m_leaves;
};

struct Graph {
  int leaves = 0;
  int trunks = 0;
  Ref<Trunk> trunk = Make<Trunk>(trunks);
  Graph() { trunk->Add(*Make<Leaf>(leaves)); }
};

TEST(Object, GoesWithItsLastReference) {
  int alive = 0;
  auto a = Make<Leaf>(alive);
  auto b = a;
  a = nullptr;
  EXPECT_EQ(alive, 1);
  b = nullptr;
  EXPECT_EQ(alive, 0);
}

TEST(Object, GoesWithItsLastHold) {
  int alive = 0;
  {
    Held<Leaf> a(Make<Leaf>(alive));
    Held<Leaf> b = a;
    a = {};
    EXPECT_EQ(alive, 1);
  }
  EXPECT_EQ(alive, 0);
}

TEST(Object, LivesWhileEitherKindOfReferenceIsLeft) {
  int alive = 0;
  Held<Leaf> hold(Make<Leaf>(alive));
  Ref<Leaf> reference(hold.Get());
  hold = {};
  EXPECT_EQ(alive, 1);
  reference = nullptr;
  EXPECT_EQ(alive, 0);
}

TEST(Object, AMovedReferenceCountsOnce) {
  int alive = 0;
  {
    auto a = Make<Leaf>(alive);
    const auto b = std::move(a);
    Held<Leaf> c(b);
    const Held<Leaf> d = std::move(c);
  }
  EXPECT_EQ(alive, 0);
}

TEST(Object, AReferenceCanBeGivenUpAndAdopted) {
  int alive = 0;
  auto a = Make<Leaf>(alive);
  Leaf* raw = a.Detach();
  EXPECT_EQ(alive, 1);
  EXPECT_FALSE(a);
  Ref<Leaf>::Adopt(raw);
  EXPECT_EQ(alive, 0);
}

TEST(Object, AMemberThatSomebodyHoldsKeepsItsOwnerAlive) {
  Graph graph;
  Ref<Leaf> leaf(graph.trunk->First());
  graph.trunk = nullptr;
  EXPECT_EQ(graph.trunks, 1);
  EXPECT_EQ(&leaf->Owner()->Declaration(), &Trunk::Describe());
  leaf = nullptr;
  EXPECT_EQ(graph.trunks, 0);
  EXPECT_EQ(graph.leaves, 0);
}

TEST(Object, AGraphThatNobodyHoldsIsFreedAsAWhole) {
  Graph graph;
  graph.trunk->Add(*Make<Leaf>(graph.leaves));
  EXPECT_EQ(graph.leaves, 2);
  graph.trunk = nullptr;
  EXPECT_EQ(graph.trunks, 0);
  EXPECT_EQ(graph.leaves, 0);
}

TEST(Object, SeveralReferencesOnAMemberCountOnceForItsOwner) {
  Graph graph;
  Ref<Leaf> a(graph.trunk->First());
  Ref<Leaf> b = a;
  graph.trunk = nullptr;
  a = nullptr;
  EXPECT_EQ(graph.trunks, 1);
  b = nullptr;
  EXPECT_EQ(graph.trunks, 0);
}

TEST(Object, AMemberTakenOutStandsAlone) {
  Graph graph;
  const Ref<Leaf> leaf(graph.trunk->First());
  graph.trunk->Clear();
  EXPECT_EQ(leaf->Owner(), nullptr);
  graph.trunk = nullptr;
  EXPECT_EQ(graph.trunks, 0);
  EXPECT_EQ(graph.leaves, 1);
}

TEST(Object, AMemberThatChangesItsOwnerLetsTheOldOneGo) {
  Graph a;
  Graph b;
  const Ref<Leaf> leaf(a.trunk->First());
  b.trunk->Add(*leaf);
  a.trunk = nullptr;
  EXPECT_EQ(a.trunks, 0) << "nothing of it is held any more";
  EXPECT_EQ(b.trunks, 1);
}

TEST(Object, OwnershipGivenToAHeldMemberCountsAtOnce) {
  int leaves = 0;
  int trunks = 0;
  auto leaf = Make<Leaf>(leaves);
  auto trunk = Make<Trunk>(trunks);
  trunk->Add(*leaf);
  trunk = nullptr;
  EXPECT_EQ(trunks, 1);
  leaf = nullptr;
  EXPECT_EQ(trunks, 0);
  EXPECT_EQ(leaves, 0);
}

TEST(Object, MayHandOutReferencesToItselfWhileItGoes) {
  int alive = 0;
  auto leaf = Make<Leaf>(alive);
  leaf->looksAtItselfAtTheEnd = true;
  leaf = nullptr;
  EXPECT_EQ(alive, 0);
  Held<Leaf> held(Make<Leaf>(alive));
  held->looksAtItselfAtTheEnd = true;
  held = {};
  EXPECT_EQ(alive, 0);
}

TEST(Object, MembersAreFoundByNameWithoutRegardToCase) {
  const Graph graph;
  EXPECT_EQ(graph.trunk->FindMember("FIRST"), graph.trunk->FindMember("first"));
  EXPECT_FALSE(graph.trunk->FindMember("Last"));
}

TEST(Object, AnUnknownNameIsNamedByTheError) {
  const Graph graph;
  support::ExpectError([&] { graph.trunk->Get("Last"); }, 438, "Trunk",
                       "Object doesn't support this property or method: Last");
}

TEST(Object, AKindThatTheMemberDoesNotOfferIsRefused) {
  const Graph graph;
  EXPECT_EQ(ErrorOf([&] { graph.trunk->Let("First", {Variant::FromLong(1)}); }).Number(), 438);
  EXPECT_EQ(ErrorOf([&] { graph.trunk->Set("Clear", {Variant::FromLong(1)}); }).Number(), 438);
}

TEST(Object, ACallMayBeAMethodOrARead) {
  const Graph graph;
  EXPECT_EQ(graph.trunk->Call("First").AsObject(), graph.trunk->First());
  EXPECT_TRUE(graph.trunk->Get("Clear").IsEmpty());
  EXPECT_EQ(graph.trunk->Get("First").AsObject(), nullptr);
}

TEST(Object, LivesThroughACallThatDropsItsLastReference) {
  int leaves = 0;
  int trunks = 0;
  Ref<Leaf> leaf;
  {
    const auto trunk = Make<Trunk>(trunks);
    trunk->Add(*Make<Leaf>(leaves));
    leaf = Ref<Leaf>(trunk->First());
  }
  leaf->Owner()->Call("Clear");
  EXPECT_EQ(trunks, 0);
  EXPECT_EQ(leaves, 1);
}

TEST(Object, IsNoCollectionUnlessItSaysSo) {
  const Graph graph;
  EXPECT_FALSE(graph.trunk->Enumerate());
}

}  // namespace
}  // namespace hearthmake::automation
