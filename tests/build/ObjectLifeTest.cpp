// The life of the objects of a build: who keeps whom alive, and that everything goes in the end.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>

#include "build/Build.hpp"
#include "build/Builds.hpp"
#include "support/BuildScene.hpp"
#include "support/ErrorExpect.hpp"

namespace {

// Addresses whose deletion is waited for. The classes are final, so that a test can't count in a
// destructor; every deletion of this program passes here instead.
constexpr std::size_t kWatchLimit = 16;
std::array<void*, kWatchLimit> g_watched{};

void* Allocate(std::size_t size) noexcept { return std::malloc(size == 0 ? 1 : size); }

void* AllocateOrThrow(std::size_t size) {
  void* memory = Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void Free(void* memory) noexcept {
  if (memory == nullptr) return;
  std::replace(g_watched.begin(), g_watched.end(), memory, static_cast<void*>(nullptr));
  std::free(memory);
}

}  // namespace

// All forms together, so that none meets the other half of another allocator.
void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept { Free(memory); }

namespace hearthmake {
namespace {

using automation::Make;
using automation::Ref;
using automation::Variant;
using support::BuildScene;
using support::RecordingEvents;

// Tells whether an object is still there, without holding it.
class Watch {
 public:
  explicit Watch(automation::Object& object)
      : m_slot(std::find(g_watched.begin(), g_watched.end(), nullptr)) {
    if (m_slot == g_watched.end()) std::abort();
    *m_slot = dynamic_cast<void*>(&object);
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
  ~Watch() { *m_slot = nullptr; }

  bool IsAlive() const { return *m_slot != nullptr; }

 private:
  std::array<void*, kWatchLimit>::iterator m_slot;
};

void Delete(Project& project) {
  project.BeginEdit();
  project.Delete();
  project.ApplyEdit();
}

TEST(ObjectLife, AGraphThatNobodyHoldsIsFreedAsAWhole) {
  BuildScene scene;
  const Watch build(*scene.build);
  const Watch project(*scene.Add("A"));
  const Watch projects(scene.build->Projects());
  const Watch references(scene.build->Projects().Item(Variant::FromLong(1))->ReferenceList());
  const Watch packages(scene.build->MTSPackages());
  const Watch scripts(scene.build->Scripts());
  scene.build = nullptr;
  for (const Watch* watch : {&build, &project, &projects, &references, &packages, &scripts})
    EXPECT_FALSE(watch->IsAlive());
}

Ref<SSProject> AddSource(Build& build) {
  auto source = build.SSProjects().Create();
  source->BeginEdit();
  source->ApplyEdit();
  return source;
}

TEST(ObjectLife, ASourceProjectKeepsTheGraphForAsLongAsAHostHoldsIt) {
  BuildScene scene;
  const Watch build(*scene.build);
  auto source = AddSource(*scene.build);
  const Watch watched(*source);
  scene.build = nullptr;
  EXPECT_TRUE(build.IsAlive());
  source = nullptr;
  EXPECT_FALSE(build.IsAlive());
  EXPECT_FALSE(watched.IsAlive());
}

TEST(ObjectLife, ASourceProjectThatWasNeverStoredGoesAlone) {
  BuildScene scene;
  auto source = scene.build->SSProjects().Create();
  const Watch watched(*source);
  const Watch build(*scene.build);
  source = nullptr;
  EXPECT_FALSE(watched.IsAlive());
  source = scene.build->SSProjects().Create();
  scene.build = nullptr;
  EXPECT_TRUE(build.IsAlive());
  EXPECT_EQ(source->Skip(), false);
  source = nullptr;
  EXPECT_FALSE(build.IsAlive());
}

TEST(ObjectLife, AProjectThatAHostKeepsIsUsableAfterTheBuildWasDropped) {
  BuildScene scene;
  scene.Add("A", "Exe");
  const Watch build(*scene.build);
  auto kept = scene.build->Projects().Item(Variant::FromLong(1));
  scene.build = nullptr;
  EXPECT_TRUE(build.IsAlive());
  EXPECT_TRUE(kept->Compile());
  EXPECT_EQ(kept->ParentBuild().Name(), "Suite");
  kept = nullptr;
  EXPECT_FALSE(build.IsAlive());
}

TEST(ObjectLife, AnyMemberKeepsTheWholeGraph) {
  BuildScene scene;
  scene.Add("A", "Exe", BuildScene::RowTo("Outside"));
  const Watch build(*scene.build);
  const Watch projects(scene.build->Projects());
  Ref<automation::Object> reference(
      scene.build->Projects().Item(Variant::FromLong(1))->ReferenceList().Item(Variant::FromLong(1)).Get());
  scene.build = nullptr;
  EXPECT_TRUE(build.IsAlive());
  EXPECT_TRUE(projects.IsAlive());
  reference = nullptr;
  EXPECT_FALSE(build.IsAlive());
  EXPECT_FALSE(projects.IsAlive());
}

TEST(ObjectLife, ACollectionWithoutMembersKeepsItsBuild) {
  BuildScene scene;
  const Watch build(*scene.build);
  Variant packages = scene.build->Get("MTSPackages");
  scene.build = nullptr;
  EXPECT_TRUE(build.IsAlive());
  EXPECT_EQ(automation::ToText(packages.AsObject()->Get("Parent").AsObject()->Get("Name")), "Suite");
  packages = Variant();
  EXPECT_FALSE(build.IsAlive());
}

TEST(ObjectLife, AnEnumeratorKeepsWhatItWalks) {
  BuildScene scene;
  scene.Add("A");
  scene.Add("B");
  const Watch build(*scene.build);
  auto walk = scene.build->Projects().Enumerate();
  scene.build = nullptr;
  Variant item;
  ASSERT_TRUE(walk->Next(item));
  EXPECT_EQ(automation::ToText(item.AsObject()->Get("Name")), "A");
  walk = nullptr;
  EXPECT_TRUE(build.IsAlive()) << "by the item";
  item = Variant();
  EXPECT_FALSE(build.IsAlive());
}

TEST(ObjectLife, TheFailedProjectDoesNotKeepItsBuild) {
  BuildScene scene;
  scene.Add("A", "Exe");
  scene.FailOn("A");
  EXPECT_FALSE(scene.build->Projects().Build(false));
  const Watch build(*scene.build);
  const Watch project(*scene.build->FailedProject());
  scene.build = nullptr;
  EXPECT_FALSE(build.IsAlive());
  EXPECT_FALSE(project.IsAlive());
}

TEST(ObjectLife, TheFailedProjectOfABuildIsKeptAfterItWasTakenOut) {
  BuildScene scene;
  const Watch project(*scene.Add("A", "Exe"));
  scene.FailOn("A");
  scene.build->Projects().Build(false);
  Delete(*scene.build->Projects().Item(Variant::FromLong(1)));
  EXPECT_EQ(scene.build->FailedProject()->Name(), "A");
  scene.build->Kill();
  EXPECT_EQ(scene.build->FailedProject(), nullptr);
  EXPECT_FALSE(project.IsAlive());
}

TEST(ObjectLife, AProjectTakenOutGoesUnlessSomebodyHoldsIt) {
  BuildScene scene;
  const Watch dropped(*scene.Add("A"));
  auto kept = scene.Add("B");
  const Watch held(*kept);
  Delete(*scene.build->Projects().GetByName("A"));
  Delete(*kept);
  EXPECT_FALSE(dropped.IsAlive());
  EXPECT_TRUE(held.IsAlive());
  const Watch build(*scene.build);
  scene.build = nullptr;
  EXPECT_FALSE(build.IsAlive()) << "it stands alone";
  EXPECT_EQ(kept->Name(), "B");
  kept = nullptr;
  EXPECT_FALSE(held.IsAlive());
}

TEST(ObjectLife, AProjectThatCouldNotBeAddedGoes) {
  BuildScene scene;
  scene.Add("A");
  const Watch build(*scene.build);
  support::ErrorOf([&] { scene.Add("A"); });
  support::ErrorOf([&] { scene.build->Projects().Add("C:\\gone.vbp"); });
  scene.build = nullptr;
  EXPECT_FALSE(build.IsAlive());
}

TEST(ObjectLife, KillFreesTheMembersAtOnce) {
  BuildScene scene;
  const Watch project(*scene.Add("A"));
  const Watch projects(scene.build->Projects());
  scene.build->Kill();
  EXPECT_FALSE(project.IsAlive());
  EXPECT_FALSE(projects.IsAlive());
}

TEST(ObjectLife, AMemberThatWasKeptThroughAKillKeepsNothing) {
  BuildScene scene;
  auto kept = scene.Add("A");
  Ref<Projects> projects(&scene.build->Projects());
  const Watch build(*scene.build);
  scene.build->Kill();
  scene.build = nullptr;
  EXPECT_FALSE(build.IsAlive());
  EXPECT_EQ(projects->Count(), 0);
  EXPECT_EQ(kept->Name(), "A");
}

TEST(ObjectLife, ABuildOfAListKeepsTheListAndTheOtherWayRound) {
  const BuildScene scene;
  auto builds = Make<Builds>();
  builds->LoadAll();
  const Watch list(*builds);
  const Watch listed(*builds->Item(Variant::FromLong(1)));
  auto kept = builds->Item(Variant::FromLong(1));
  builds = nullptr;
  EXPECT_TRUE(list.IsAlive());
  kept = nullptr;
  EXPECT_FALSE(list.IsAlive());
  EXPECT_FALSE(listed.IsAlive());
}

TEST(ObjectLife, AKilledBuildLetsItsListGo) {
  const BuildScene scene;
  auto builds = Make<Builds>();
  builds->LoadAll();
  const auto kept = builds->Item(Variant::FromLong(1));
  const Watch list(*builds);
  kept->Kill();
  builds = nullptr;
  EXPECT_FALSE(list.IsAlive());
  kept->Load(kept->Id());
  EXPECT_EQ(kept->Projects().Count(), 0);
}

TEST(ObjectLife, AProjectOfABuildOfAListKeepsThemAll) {
  const BuildScene scene;
  scene.Add("A");
  auto builds = Make<Builds>();
  builds->LoadAll();
  const Watch list(*builds);
  auto project = builds->Item(Variant::FromLong(1))->Projects().Item(Variant::FromLong(1));
  builds = nullptr;
  EXPECT_TRUE(list.IsAlive());
  project = nullptr;
  EXPECT_FALSE(list.IsAlive());
}

TEST(ObjectLife, LoadingAListAgainLetsTheOldBuildsGo) {
  const BuildScene scene;
  const auto builds = Make<Builds>();
  builds->LoadAll();
  const Watch old(*builds->Item(Variant::FromLong(1)));
  const auto kept = builds->Item(Variant::FromLong(1));
  builds->LoadAll();
  EXPECT_TRUE(old.IsAlive());
  EXPECT_EQ(kept->Owner(), nullptr);
  EXPECT_NE(builds->Item(Variant::FromLong(1)), kept);
}

TEST(ObjectLife, ABuildThatIsDroppedDuringItsRunGoesAtTheEndOfIt) {
  BuildScene scene;
  scene.Add("A", "Exe");
  const Watch build(*scene.build);
  RecordingEvents events;
  scene.build->AddSink(events);
  bool wasAlive = false;
  events.On("ProjectCompiled A", [&](bool&) {
    scene.build = nullptr;
    wasAlive = build.IsAlive();
  });
  EXPECT_TRUE(Ref<Projects>(&scene.build->Projects())->Build(false));
  EXPECT_TRUE(wasAlive);
  EXPECT_FALSE(build.IsAlive());
}

}  // namespace
}  // namespace hearthmake
