// The server in the hands of a host that was compiled against its type library, and of one that calls late.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "support/ComServer.hpp"
#include "support/ComTypes.hpp"

// Stands on the other headers of Windows.
#include <psapi.h>

namespace hearthmake::com {
namespace {

using automation::Ref;

// What a property or method gives, as a reference or text that frees itself.
template <class T, class O>
Ref<T> GetObject(O* object, HRESULT (STDMETHODCALLTYPE O::*member)(T**)) {
  T* found = nullptr;
  EXPECT_EQ((object->*member)(&found), S_OK);
  return Ref<T>::Adopt(found);
}
template <class O>
std::string GetText(O* object, HRESULT (STDMETHODCALLTYPE O::*member)(BSTR*)) {
  Text text;
  EXPECT_EQ((object->*member)(text.Place()), S_OK);
  return text.Utf8();
}
template <class T, class O>
T GetValue(O* object, HRESULT (STDMETHODCALLTYPE O::*member)(T*)) {
  T value = {};
  EXPECT_EQ((object->*member)(&value), S_OK);
  return value;
}

class ServerTest : public testing::Test {
 protected:
  ServerTest() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const auto settings = server.Create<_Settings>(__uuidof(Settings), __uuidof(_Settings));
    EXPECT_EQ(settings->BeginEdit(), S_OK);
    EXPECT_EQ(settings->put_VBExe(Text(COMPILER_FILE)), S_OK);
    EXPECT_EQ(settings->put_RunScripts(VARIANT_TRUE), S_OK);
    EXPECT_EQ(settings->put_CreateReport(VARIANT_FALSE), S_OK);
    EXPECT_EQ(settings->put_BuildReport(Text(server.Folder().string().c_str())), S_OK);
    EXPECT_EQ(settings->ApplyEdit(), S_OK);
  }
  ~ServerTest() override { CoUninitialize(); }

  Ref<_Build> MakeBuild(const char* name = "Suite") const {
    const auto build = server.Create<_Build>(__uuidof(Build), __uuidof(_Build));
    EXPECT_EQ(build->BeginEdit(), S_OK);
    EXPECT_EQ(build->put_Name(Text(name)), S_OK);
    EXPECT_EQ(build->ApplyEdit(), S_OK);
    return build;
  }
  Ref<_Project> Add(_Projects* projects, const char* name) const {
    _Project* added = nullptr;
    EXPECT_EQ(projects->Add(Text(server.AddProjectFile(name).c_str()), &added), S_OK) << TakeError().text;
    return Ref<_Project>::Adopt(added);
  }
  static bool Run(_Projects* projects) {
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(projects->Build(VARIANT_FALSE, &done), S_OK) << TakeError().text;
    return done != VARIANT_FALSE;
  }

  Server server;
};

// Hears the events of a build by their ids, which stand in the type library.
Ref<HostDispatch> MakeSink(std::function<void(DISPID, DISPPARAMS&)> handler) {
  return Ref<HostDispatch>(new HostDispatch(
      [handler = std::move(handler)](DISPID id, DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        handler(id, parameters);
        return S_OK;
      },
      __uuidof(__Build)));
}

struct Connected {
  Connected(IUnknown* object, IUnknown* sink) {
    const auto container = Query<IConnectionPointContainer>(object, IID_IConnectionPointContainer);
    IConnectionPoint* found = nullptr;
    EXPECT_EQ(container->FindConnectionPoint(__uuidof(__Build), &found), S_OK);
    point = Ref<IConnectionPoint>::Adopt(found);
    EXPECT_EQ(point->Advise(sink, &number), S_OK);
  }
  ~Connected() { EXPECT_EQ(point->Unadvise(number), S_OK); }
  Connected(const Connected&) = delete;
  Connected& operator=(const Connected&) = delete;

  Ref<IConnectionPoint> point;
  DWORD number = 0;
};

TEST_F(ServerTest, OffersEveryInterfaceThroughItsVtable) {
  const auto build = MakeBuild();
  EXPECT_EQ(GetText(build.Get(), &_Build::get_Name), "Suite");
  EXPECT_EQ(GetValue(build.Get(), &_Build::get_Id), 1);
  EXPECT_EQ(build->put_StartDllBaseAddress(0x11000000), S_OK);
  EXPECT_EQ(GetValue(build.Get(), &_Build::get_StartDllBaseAddress), 0x11000000);

  const auto projects = GetObject(build.Get(), &_Build::get_Projects);
  const auto project = Add(projects.Get(), "Shop");
  EXPECT_EQ(GetValue(projects.Get(), &_Projects::get_Count), 1);
  EXPECT_EQ(GetText(project.Get(), &_Project::get_Name), "Shop");
  EXPECT_EQ(GetValue(project.Get(), &_Project::get_MajorVer), 1);
  EXPECT_EQ(GetValue(project.Get(), &_Project::get_ProjectType), StandardExe);
  EXPECT_EQ(GetValue(project.Get(), &_Project::get_CompileMe), VARIANT_TRUE);
  _Project* found = nullptr;
  EXPECT_EQ(projects->get_item(LongOf(1), &found), S_OK);
  EXPECT_EQ(Ref<_Project>::Adopt(found).Get(), project.Get());

  const auto names = GetObject(project.Get(), &_Project::get_Properties);
  EXPECT_EQ(GetValue(names.Get(), &_Properties::get_Count), 43);
  const auto references = GetObject(project.Get(), &_Project::get_References);
  VARIANT_BOOL references1 = VARIANT_TRUE;
  EXPECT_EQ(references->IsProjectReferencing(7, &references1), S_OK);
  EXPECT_EQ(references1, VARIANT_FALSE);

  const auto item = Query<_IReportItem>(project.Get(), __uuidof(_IReportItem));
  ASSERT_TRUE(item);
  EXPECT_EQ(GetText(item.Get(), &_IReportItem::get_Name), "Shop");
  EXPECT_NE(GetText(item.Get(), &_IReportItem::get_Details), "");

  const auto scripts = GetObject(build.Get(), &_Build::get_Scripts);
  EXPECT_EQ(scripts->put_BuildFailed(Text("x = 1")), S_OK);
  EXPECT_EQ(GetText(scripts.Get(), &_Scripts::get_BuildFailed), "x = 1");
  EXPECT_EQ(GetValue(GetObject(build.Get(), &_Build::get_SSProjects).Get(), &_SSProjects::get_Count), 0);
  EXPECT_EQ(GetValue(GetObject(build.Get(), &_Build::get_MTSPackages).Get(), &_MTSPackages::get_Count), 0);
  const auto applications = GetObject(build.Get(), &_Build::get_COMApplications);
  EXPECT_EQ(GetValue(applications.Get(), &_COMApplications::get_Count), 0);
  EXPECT_EQ(GetObject(applications.Get(), &_COMApplications::get_Parent).Get(), build.Get());

  const auto builds = server.Create<_Builds>(__uuidof(Builds), __uuidof(_Builds));
  OwnedVariant loaded;
  EXPECT_EQ(builds->LoadAll(&loaded), S_OK);
  EXPECT_EQ(GetValue(builds.Get(), &_Builds::get_Count), 1);
  EXPECT_TRUE(server.Create<_Enums>(__uuidof(Enums), __uuidof(_Enums)));
  EXPECT_TRUE(server.Create<_IReportItem>(__uuidof(IReportItem), __uuidof(_IReportItem)));
  void* none = nullptr;
  EXPECT_EQ(server.GetClass(__uuidof(Projects), IID_IClassFactory, &none), CLASS_E_CLASSNOTAVAILABLE);
}

// With the test above and the settings of the fixture, each interface of the library has been called.
TEST_F(ServerTest, OffersTheItemsOfItsCollectionsThroughTheirVtables) {
  const auto build = MakeBuild();
  const auto projects = GetObject(build.Get(), &_Build::get_Projects);
  const auto used = Add(projects.Get(), "Used");
  const auto using_ = Add(projects.Get(), "Using");
  const auto references = GetObject(using_.Get(), &_Project::get_References);
  _Reference* added = nullptr;
  const HRESULT result = references->AddExternalReference(
      Text("*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#C:\\windows\\stdole2.tlb#OLE Automation"),
      Text("C:\\windows\\stdole2.tlb"), &added);
  ASSERT_EQ(result, S_OK) << TakeError().text;
  const auto reference = Ref<_Reference>::Adopt(added);
  EXPECT_EQ(GetText(reference.Get(), &_Reference::get_Description), "OLE Automation");
  EXPECT_EQ(GetValue(reference.Get(), &_Reference::get_IsExternal), VARIANT_TRUE);
  _Reference* item = nullptr;
  EXPECT_EQ(references->get_item(LongOf(1), &item), S_OK) << TakeError().text;
  EXPECT_EQ(GetText(Ref<_Reference>::Adopt(item).Get(), &_Reference::get_Description), "OLE Automation");

  const auto source = GetObject(GetObject(build.Get(), &_Build::get_SSProjects).Get(), &_SSProjects::Create);
  EXPECT_EQ(source->BeginEdit(), S_OK);
  EXPECT_EQ(source->put_Project(Text("$/Suite")), S_OK);
  EXPECT_EQ(GetText(source.Get(), &_SSProject::get_Project), "$/Suite");
  EXPECT_EQ(source->CancelEdit(), S_OK);

  const auto package =
      GetObject(GetObject(build.Get(), &_Build::get_MTSPackages).Get(), &_MTSPackages::Create);
  EXPECT_EQ(package->BeginEdit(), S_OK);
  EXPECT_EQ(package->put_Name(Text("Orders")), S_OK);
  EXPECT_EQ(GetText(package.Get(), &_MTSPackage::get_Name), "Orders");
  EXPECT_EQ(package->ApplyEdit(), S_OK) << TakeError().text;
  EXPECT_EQ(GetValue(package.Get(), &_MTSPackage::get_Id), 1);

  const auto application =
      GetObject(GetObject(build.Get(), &_Build::get_COMApplications).Get(), &_COMApplications::Create);
  EXPECT_EQ(application->BeginEdit(), S_OK);
  EXPECT_EQ(application->put_EventsEnabled(VARIANT_TRUE), S_OK);
  EXPECT_EQ(GetValue(application.Get(), &_COMApplication::get_EventsEnabled), VARIANT_TRUE);
  EXPECT_EQ(application->CancelEdit(), S_OK);
}

TEST_F(ServerTest, WalksACollectionEarlyBound) {
  const auto build = MakeBuild();
  const auto projects = GetObject(build.Get(), &_Build::get_Projects);
  Add(projects.Get(), "One");
  Add(projects.Get(), "Two");
  const auto unknown = GetObject(projects.Get(), &_Projects::get_NewEnum);
  const auto items = Query<IEnumVARIANT>(unknown.Get(), IID_IEnumVARIANT);
  ASSERT_TRUE(items);
  std::string names;
  while (true) {
    OwnedVariant item;
    if (items->Next(1, &item, nullptr) != S_OK) break;
    names += GetText(Query<_Project>(item.punkVal, __uuidof(_Project)).Get(), &_Project::get_Name) + " ";
  }
  EXPECT_EQ(names, "One Two ");
}

TEST_F(ServerTest, TellsOfARunThroughItsConnectionPoint) {
  const auto build = MakeBuild();
  const auto projects = GetObject(build.Get(), &_Build::get_Projects);
  const auto project = Add(projects.Get(), "Shop");
  std::vector<DISPID> heard;
  const auto sink = MakeSink([&](DISPID id, DISPPARAMS& parameters) {
    heard.push_back(id);
    if (id != 1) return;
    EXPECT_EQ(parameters.rgvarg[1].vt, VT_BYREF | VT_DISPATCH);
    EXPECT_EQ(*parameters.rgvarg[1].ppdispVal, static_cast<IDispatch*>(project.Get()));
  });
  const Connected connected(build.Get(), sink.Get());
  EXPECT_TRUE(Run(projects.Get()));
  // BuildStart, MTSEvent, WillCompile, ProjectCompiled, BuildComplete.
  EXPECT_EQ(heard, (std::vector<DISPID>{10, 5, 1, 9, 7}));
  EXPECT_EQ(GetValue(project.Get(), &_Project::get_CompiledOK), VARIANT_TRUE);
}

TEST_F(ServerTest, LetsASinkCancelTheRun) {
  const auto build = MakeBuild();
  const auto projects = GetObject(build.Get(), &_Build::get_Projects);
  Add(projects.Get(), "Shop");
  std::vector<DISPID> heard;
  const auto sink = MakeSink([&](DISPID id, DISPPARAMS& parameters) {
    heard.push_back(id);
    if (id == 1) *parameters.rgvarg[0].pboolVal = VARIANT_TRUE;
  });
  const Connected connected(build.Get(), sink.Get());
  EXPECT_TRUE(Run(projects.Get()));  // it did not fail
  EXPECT_NE(std::find(heard.begin(), heard.end(), 3), heard.end());
  EXPECT_EQ(std::find(heard.begin(), heard.end(), 9), heard.end());
}

TEST_F(ServerTest, TellsOfAFailedRun) {
  const auto build = MakeBuild();
  const auto projects = GetObject(build.Get(), &_Build::get_Projects);
  const auto bad = Add(projects.Get(), "Bad");
  std::string message;
  const auto sink = MakeSink([&](DISPID id, DISPPARAMS& parameters) {
    if (id != 2) return;
    EXPECT_EQ(parameters.rgvarg[0].vt, VT_BYREF | VT_BOOL);
    message = win32::ToUtf8(*parameters.rgvarg[1].pbstrVal);
  });
  const Connected connected(build.Get(), sink.Get());
  EXPECT_FALSE(Run(projects.Get()));
  EXPECT_NE(message.find("Variable not defined"), std::string::npos) << message;
  EXPECT_EQ(GetObject(build.Get(), &_Build::get_FailedProject).Get(), bad.Get());
}

TEST_F(ServerTest, RaisesErrorsWithNumberSourceAndText) {
  const auto build = MakeBuild();
  EXPECT_EQ(build->put_Name(Text("  ")), static_cast<HRESULT>(0x800A002D));
  LeftError error = TakeError();
  EXPECT_EQ(error.source, "Build.Name");
  EXPECT_EQ(error.text, "Invalid name");
  EXPECT_EQ(build->Load(17), static_cast<HRESULT>(0x80040010));
  error = TakeError();
  EXPECT_EQ(error.source, "Build.Load");
  EXPECT_EQ(error.text, "Build not found!");
}

TEST_F(ServerTest, DoesTheSameLateBound) {
  const auto build = MakeBuild();
  const auto late = Query<IDispatch>(build.Get(), IID_IDispatch);
  VARIANT argument = LongOf(17);
  DISPPARAMS parameters = {&argument, nullptr, 1, 0};
  EXCEPINFO failure = {};
  EXPECT_EQ(late->Invoke(IdOf(late.Get(), L"load"), IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr,
                         &failure, nullptr),
            DISP_E_EXCEPTION);
  EXPECT_EQ(failure.scode, static_cast<SCODE>(0x80040010));
  EXPECT_EQ(win32::ToUtf8(failure.bstrSource), "Build.Load");
  SysFreeString(failure.bstrSource);
  SysFreeString(failure.bstrDescription);
  DISPPARAMS none = {};
  OwnedVariant name;
  EXPECT_EQ(late->Invoke(IdOf(late.Get(), L"NAME"), IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &name, nullptr,
                         nullptr),
            S_OK);
  EXPECT_EQ(TextOf(name), "Suite");
  UINT count = 0;
  EXPECT_EQ(late->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1U);
  ITypeInfo* found = nullptr;
  ASSERT_EQ(late->GetTypeInfo(0, 0, &found), S_OK);
  const auto info = Ref<ITypeInfo>::Adopt(found);
  Text type;
  info->GetDocumentation(MEMBERID_NIL, type.Place(), nullptr, nullptr, nullptr);
  EXPECT_EQ(type.Utf8(), "_Build");
  const auto classInfo = Query<IProvideClassInfo2>(build.Get(), IID_IProvideClassInfo2);
  ASSERT_EQ(classInfo->GetClassInfo(&found), S_OK);
  Ref<ITypeInfo>::Adopt(found)->GetDocumentation(MEMBERID_NIL, type.Place(), nullptr, nullptr, nullptr);
  EXPECT_EQ(type.Utf8(), "Build");
  GUID source = {};
  EXPECT_EQ(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), S_OK);
  EXPECT_TRUE(IsEqualGUID(source, __uuidof(__Build)));
}

TEST_F(ServerTest, ShowsHostObjectsToItsScripts) {
  const auto build = MakeBuild();
  const auto scripts = GetObject(build.Get(), &_Build::get_Scripts);
  int asked = 0;
  const Ref<HostDispatch> host(new HostDispatch([&](DISPID, DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
    ++asked;
    if (result != nullptr) *result = LongOf(41);
    return S_OK;
  }));
  EXPECT_EQ(scripts->AddObject(host.Get(), Text("Host")), S_OK) << TakeError().text;
  Text script("If Host.Answer + 1 <> 42 Then Err.Raise 5");
  VARIANT_BOOL done = VARIANT_FALSE;
  EXPECT_EQ(scripts->Execute(script.Reference(), &done), S_OK) << TakeError().text;
  EXPECT_EQ(done, VARIANT_TRUE);
  EXPECT_EQ(asked, 1);
}

TEST_F(ServerTest, LetsItsScriptsCreateClassesOfTheMachine) {
  const auto build = MakeBuild();
  const auto scripts = GetObject(build.Get(), &_Build::get_Scripts);
  Text script(
      "Set expression = New RegExp : expression.Pattern = \"a+\"\r\n"
      "If expression.Replace(\"caat\", \"u\") <> \"cut\" Then Err.Raise 5\r\n"
      "Set found = expression.Execute(\"caat\") : n = 0\r\n"
      "For Each match In found : n = n + match.Length : Next\r\n"
      "If n <> 2 Then Err.Raise 6");
  VARIANT_BOOL done = VARIANT_FALSE;
  EXPECT_EQ(scripts->Execute(script.Reference(), &done), S_OK) << TakeError().text;
  EXPECT_EQ(done, VARIANT_TRUE);
}

TEST_F(ServerTest, KeepsABuildAsLongAsAProjectIsHeld) {
  auto build = MakeBuild();
  auto projects = GetObject(build.Get(), &_Build::get_Projects);
  const auto project = Add(projects.Get(), "Shop");
  build = nullptr;
  projects = nullptr;
  EXPECT_EQ(server.CanUnload(), S_FALSE);
  EXPECT_EQ(project->BeginEdit(), S_OK);
  EXPECT_EQ(project->put_CompileMe(VARIANT_FALSE), S_OK);
  EXPECT_EQ(project->ApplyEdit(), S_OK);
}

std::size_t MemoryInUse() {
  PROCESS_MEMORY_COUNTERS counters = {};
  counters.cb = sizeof counters;
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.WorkingSetSize;
}

TEST_F(ServerTest, AThousandBuildsLeaveNothingBehind) {
  const long id = GetValue(MakeBuild().Get(), &_Build::get_Id);
  int heard = 0;
  const auto round = [&](bool isKilled) {
    const auto build = server.Create<_Build>(__uuidof(Build), __uuidof(_Build));
    ASSERT_EQ(build->Load(id), S_OK);
    const auto projects = GetObject(build.Get(), &_Build::get_Projects);
    // The sink holds the build, as a form does that has it in a variable.
    const Ref<_Build> held = build;
    const auto sink = MakeSink([held, &heard](DISPID, DISPPARAMS&) { ++heard; });
    {
      const Connected connected(build.Get(), sink.Get());
      EXPECT_TRUE(Run(projects.Get()));
    }
    // The engine holds the build too, and the build the engine.
    Text script("Set kept = Build");
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(GetObject(build.Get(), &_Build::get_Scripts)->Execute(script.Reference(), &done), S_OK)
        << TakeError().text;
    EXPECT_EQ(isKilled ? build->Kill() : S_OK, S_OK);
  };
  for (int i = 0; i < 100; ++i) round(i % 2 == 0);
  const std::size_t before = MemoryInUse();
  for (int i = 0; i < 900; ++i) round(i % 2 == 0);
  EXPECT_GE(heard, 2000);  // the start and the end of each run, and what comes between
  EXPECT_EQ(server.CanUnload(), S_OK);
  EXPECT_GT(before, 0U);
  EXPECT_LT(MemoryInUse(), before + (1U << 20));
}

TEST_F(ServerTest, FreesWhatScriptsKeepWithTheLastObjectOfTheHost) {
  {
    const auto build = MakeBuild();
    Text script("Set b = Build");
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(GetObject(build.Get(), &_Build::get_Scripts)->Execute(script.Reference(), &done), S_OK);
    EXPECT_EQ(server.CanUnload(), S_FALSE);
  }
  EXPECT_EQ(server.CanUnload(), S_OK);
  // The database is let go too.
  std::error_code failed;
  EXPECT_TRUE(std::filesystem::remove(server.Folder() / "Build.mdb", failed)) << failed.message();
}

}  // namespace
}  // namespace hearthmake::com
