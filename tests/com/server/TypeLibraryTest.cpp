// The type library inside the server says what the declarations say.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "adapters/typelib/TypeLibFileReader.hpp"
#include "adapters/win32/Win32FileSystem.hpp"
#include "adapters/win32/Win32TypeLibReader.hpp"
#include "interfaces/PublicClasses.hpp"
#include "support/ComHost.hpp"

namespace hearthmake::com {
namespace {

using automation::Enumeration;
using automation::Interface;
using automation::Member;
using automation::MemberKind;
using automation::Parameter;
using automation::Ref;
using automation::ValueKind;
using automation::ValueType;

Ref<ITypeLib> LoadServer() {
  ITypeLib* found = nullptr;
  EXPECT_EQ(LoadTypeLibEx(win32::ToWide(SERVER_FILE).c_str(), REGKIND_NONE, &found), S_OK);
  return Ref<ITypeLib>::Adopt(found);
}

std::string NameOf(ITypeInfo* type, MEMBERID member = MEMBERID_NIL) {
  Text name;
  type->GetDocumentation(member, name.Place(), nullptr, nullptr, nullptr);
  return name.Utf8();
}

std::string HelpOf(ITypeInfo* type, MEMBERID member) {
  Text help;
  type->GetDocumentation(member, nullptr, help.Place(), nullptr, nullptr);
  return help.Utf8();
}

// Types as text: "VT_8" for one of automation's own, "_Project" for one of the library's, "*" for a pointer.
std::string TypeText(ITypeInfo* type, const TYPEDESC& description) {
  if (description.vt == VT_PTR) return TypeText(type, *description.lptdesc) + "*";
  if (description.vt != VT_USERDEFINED) return "VT_" + std::to_string(description.vt);
  ITypeInfo* found = nullptr;
  if (FAILED(type->GetRefTypeInfo(description.hreftype, &found))) return "?";
  return NameOf(Ref<ITypeInfo>::Adopt(found).Get());
}

std::string TypeText(const ValueType& type) {
  const auto text = [](VARTYPE number) { return "VT_" + std::to_string(number); };
  switch (type.kind) {
    case ValueKind::Void: return text(VT_VOID);
    case ValueKind::Integer: return text(VT_I2);
    case ValueKind::Long: return text(VT_I4);
    case ValueKind::Boolean: return text(VT_BOOL);
    case ValueKind::Double: return text(VT_R8);
    case ValueKind::Date: return text(VT_DATE);
    case ValueKind::String: return text(VT_BSTR);
    case ValueKind::Variant: return text(VT_VARIANT);
    case ValueKind::Enum: return type.enumeration().name;
    // The system knows IDispatch by a number, or as a type of its library.
    case ValueKind::Object:
      return type.object == nullptr ? "IDispatch*" : type.object().InterfaceName() + "*";
  }
  return "?";
}

std::string KindText(INVOKEKIND kind) {
  switch (kind) {
    case INVOKE_FUNC: return "call";
    case INVOKE_PROPERTYGET: return "get";
    case INVOKE_PROPERTYPUT: return "put";
    case INVOKE_PROPERTYPUTREF: return "putref";
  }
  return "?";
}

std::string KindText(MemberKind kind) {
  switch (kind) {
    case MemberKind::Method: return "call";
    case MemberKind::Get: return "get";
    case MemberKind::Let: return "put";
    case MemberKind::Set: return "putref";
  }
  return "?";
}

std::string Corrected(std::string type) {
  if (type == "VT_9") return "IDispatch*";
  if (type == "VT_9*") return "IDispatch**";
  if (type == "VT_13*") return "IUnknown**";
  return type;
}

// One member as the type library has it: kind, id, name, parameters with direction, type and name, help text.
std::string Line(ITypeInfo* type, const FUNCDESC& function) {
  std::string line = KindText(function.invkind) + " " + std::to_string(function.memid) + " " +
                     NameOf(type, function.memid) + "(";
  BSTR names[16] = {};
  UINT count = 0;
  type->GetNames(function.memid, names, 16, &count);
  for (SHORT i = 0; i < function.cParams; ++i) {
    const ELEMDESC& parameter = function.lprgelemdescParam[i];
    const USHORT flags = parameter.paramdesc.wParamFlags;
    line += i == 0 ? "" : ", ";
    line += (flags & PARAMFLAG_FRETVAL) != 0 ? "retval" : (flags & PARAMFLAG_FOUT) != 0 ? "inout" : "in";
    if ((flags & PARAMFLAG_FOPT) != 0) line += " optional";
    line += " " + Corrected(TypeText(type, parameter.tdesc));
    const bool isNamed = static_cast<UINT>(i) + 1 < count && (flags & PARAMFLAG_FRETVAL) == 0 &&
                         !(function.invkind != INVOKE_FUNC && function.invkind != INVOKE_PROPERTYGET &&
                           i + 1 == function.cParams);
    if (isNamed) line += " " + win32::ToUtf8(names[i + 1]);
  }
  for (BSTR name : names) SysFreeString(name);
  if ((function.wFuncFlags & FUNCFLAG_FRESTRICTED) != 0) line += " restricted";
  return line + ") '" + HelpOf(type, function.memid) + "'";
}

std::string Line(const Member& member) {
  std::string line = KindText(member.kind) + " " + std::to_string(member.id) + " " + member.name + "(";
  const std::string start = line;
  const auto append = [&](const std::string& text) { line += (line == start ? "" : ", ") + text; };
  for (const Parameter& parameter : member.parameters) {
    append(std::string(parameter.isInOut ? "inout" : "in") + (parameter.isOptional ? " optional " : " ") +
           TypeText(parameter.type) + (parameter.isInOut ? "*" : "") + " " + parameter.name);
  }
  if (member.kind == MemberKind::Let || member.kind == MemberKind::Set) {
    append("in " + TypeText(member.value));
  } else if (member.id == automation::kNewEnumMember) {
    append("retval IUnknown**");
  } else if (member.value.kind != ValueKind::Void) {
    append("retval " + TypeText(member.value) + "*");
  }
  return line + (member.isRestricted ? " restricted" : "") + ") '" + member.help + "'";
}

Ref<ITypeInfo> FindType(ITypeLib* library, const std::string& id) {
  ITypeInfo* found = nullptr;
  EXPECT_EQ(library->GetTypeInfoOfGuid(ParseGuid(id), &found), S_OK) << id;
  return Ref<ITypeInfo>::Adopt(found);
}

TYPEATTR AttributesOf(ITypeInfo* type) {
  TYPEATTR* attributes = nullptr;
  EXPECT_EQ(type->GetTypeAttr(&attributes), S_OK);
  const TYPEATTR copy = *attributes;
  type->ReleaseTypeAttr(attributes);
  return copy;
}

// The vtable behind the dispatch part of a dual interface.
Ref<ITypeInfo> VtablePart(ITypeInfo* dual) {
  HREFTYPE reference = 0;
  EXPECT_EQ(dual->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
  ITypeInfo* found = nullptr;
  EXPECT_EQ(dual->GetRefTypeInfo(reference, &found), S_OK);
  return Ref<ITypeInfo>::Adopt(found);
}

TEST(TypeLibrary, HasTheDeclaredInterfacesMemberByMember) {
  const auto library = LoadServer();
  for (const PublicClass& entry : PublicClasses()) {
    const Interface& declared = entry.describe();
    const auto dual = FindType(library.Get(), declared.InterfaceId());
    ASSERT_TRUE(dual);
    EXPECT_EQ(NameOf(dual.Get()), declared.InterfaceName());
    const TYPEATTR attributes = AttributesOf(dual.Get());
    EXPECT_EQ(attributes.typekind, TKIND_DISPATCH);
    EXPECT_NE(attributes.wTypeFlags & TYPEFLAG_FDUAL, 0);
    EXPECT_NE(attributes.wTypeFlags & TYPEFLAG_FHIDDEN, 0);
    const auto vtable = VtablePart(dual.Get());
    ASSERT_TRUE(vtable);
    const auto& members = declared.Members();
    ASSERT_EQ(AttributesOf(vtable.Get()).cFuncs, members.size()) << declared.Name();
    for (std::size_t i = 0; i < members.size(); ++i) {
      FUNCDESC* function = nullptr;
      ASSERT_EQ(vtable->GetFuncDesc(static_cast<UINT>(i), &function), S_OK);
      EXPECT_EQ(Line(vtable.Get(), *function), Line(members[i])) << declared.Name();
      EXPECT_EQ(function->elemdescFunc.tdesc.vt, VT_HRESULT);
      EXPECT_EQ(static_cast<std::size_t>(function->oVft), (7 + i) * sizeof(void*));
      vtable->ReleaseFuncDesc(function);
    }
  }
}

TEST(TypeLibrary, HasTheEventsInTheirOrder) {
  const auto library = LoadServer();
  for (const PublicClass& entry : PublicClasses()) {
    const Interface* events = entry.describe().Source();
    if (events == nullptr) continue;
    const auto type = FindType(library.Get(), events->InterfaceId());
    EXPECT_EQ(NameOf(type.Get()), events->InterfaceName());
    // Below the members of IUnknown and IDispatch.
    constexpr UINT kInherited = 7;
    const UINT count = AttributesOf(type.Get()).cFuncs;
    const UINT skipped = count - static_cast<UINT>(events->Members().size());
    ASSERT_TRUE(skipped == 0 || skipped == kInherited);
    for (UINT i = skipped; i < count; ++i) {
      FUNCDESC* function = nullptr;
      ASSERT_EQ(type->GetFuncDesc(i, &function), S_OK);
      EXPECT_EQ(Line(type.Get(), *function), Line(events->Members()[i - skipped]));
      type->ReleaseFuncDesc(function);
    }
  }
}

TEST(TypeLibrary, HasEachClassWithItsInterfaces) {
  const auto library = LoadServer();
  for (const PublicClass& entry : PublicClasses()) {
    const Interface& declared = entry.describe();
    const auto type = FindType(library.Get(), CoclassId(declared));
    ASSERT_TRUE(type);
    EXPECT_EQ(NameOf(type.Get()), declared.Name());
    const TYPEATTR attributes = AttributesOf(type.Get());
    EXPECT_EQ(attributes.typekind, TKIND_COCLASS);
    EXPECT_EQ((attributes.wTypeFlags & TYPEFLAG_FCANCREATE) != 0, entry.create != nullptr) << declared.Name();
    std::vector<std::string> expected = {declared.InterfaceName() + " 1"};
    for (const auto further : declared.Implemented()) expected.push_back(further().InterfaceName() + " 0");
    if (declared.Source() != nullptr) expected.push_back(declared.Source()->InterfaceName() + " 3");
    std::vector<std::string> found;
    for (UINT i = 0; i < attributes.cImplTypes; ++i) {
      HREFTYPE reference = 0;
      INT flags = 0;
      ITypeInfo* implemented = nullptr;
      ASSERT_EQ(type->GetRefTypeOfImplType(i, &reference), S_OK);
      ASSERT_EQ(type->GetImplTypeFlags(i, &flags), S_OK);
      ASSERT_EQ(type->GetRefTypeInfo(reference, &implemented), S_OK);
      found.push_back(NameOf(Ref<ITypeInfo>::Adopt(implemented).Get()) + " " + std::to_string(flags));
    }
    EXPECT_EQ(found, expected) << declared.Name();
  }
}

TEST(TypeLibrary, HasTheEnumerationsWithTheirValues) {
  const auto library = LoadServer();
  for (const Enumeration* enumeration : PublicEnumerations()) {
    const auto type = FindType(library.Get(), enumeration->guid);
    ASSERT_TRUE(type);
    EXPECT_EQ(NameOf(type.Get()), enumeration->name);
    const TYPEATTR attributes = AttributesOf(type.Get());
    EXPECT_EQ(attributes.typekind, TKIND_ENUM);
    ASSERT_EQ(attributes.cVars, enumeration->members.size());
    for (UINT i = 0; i < attributes.cVars; ++i) {
      VARDESC* variable = nullptr;
      ASSERT_EQ(type->GetVarDesc(i, &variable), S_OK);
      EXPECT_EQ(NameOf(type.Get(), variable->memid), enumeration->members[i].first);
      EXPECT_EQ(variable->lpvarValue->lVal, enumeration->members[i].second);
      type->ReleaseVarDesc(variable);
    }
  }
}

// What identifies the library and its types is all that our reader is for: it tells no members, so there are
// none to compare here.
TEST(TypeLibrary, IsReadByOurOwnReaderAsByTheSystems) {
  typelib::TypeLibFileReader own(std::make_shared<win32::Win32FileSystem>());
  win32::Win32TypeLibReader system;
  const auto info = own.Read(SERVER_FILE);
  EXPECT_EQ(info.guid, PublicLibrary().id);
  EXPECT_EQ(info.name, PublicLibrary().name);
  EXPECT_EQ(info.helpString, PublicLibrary().title);
  EXPECT_EQ(info.majorVersion, PublicLibrary().majorVersion);
  EXPECT_EQ(info.minorVersion, PublicLibrary().minorVersion);
  EXPECT_EQ(info.locale, system.Read(SERVER_FILE).locale);
  EXPECT_EQ(info.flags, system.Read(SERVER_FILE).flags);
  const auto line = [](const platform::TypeDescription& type) {
    return std::to_string(static_cast<int>(type.kind)) + " " + type.guid + " " + type.name + " '" +
           type.helpString + "' " + std::to_string(type.flags) + " " + std::to_string(type.majorVersion) +
           "." + std::to_string(type.minorVersion);
  };
  const auto types = own.ReadTypes(SERVER_FILE);
  const auto expected = system.ReadTypes(SERVER_FILE);
  ASSERT_EQ(types.size(), expected.size());
  for (std::size_t i = 0; i < types.size(); ++i) EXPECT_EQ(line(types[i]), line(expected[i]));
}

TEST(TypeLibrary, HasTheTypesOfTheDeclarationsAndNoOthers) {
  std::vector<std::string> expected;
  for (const Enumeration* enumeration : PublicEnumerations()) {
    expected.push_back(enumeration->guid + enumeration->name);
  }
  for (const PublicClass& entry : PublicClasses()) {
    expected.push_back(entry.describe().InterfaceId() + entry.describe().InterfaceName());
    expected.push_back(CoclassId(entry.describe()) + entry.describe().Name());
    const Interface* source = entry.describe().Source();
    if (source != nullptr) expected.push_back(source->InterfaceId() + source->InterfaceName());
  }
  std::vector<std::string> found;
  typelib::TypeLibFileReader reader(std::make_shared<win32::Win32FileSystem>());
  for (const auto& type : reader.ReadTypes(SERVER_FILE)) found.push_back(type.guid + type.name);
  std::sort(found.begin(), found.end());
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(found, expected);
}

}  // namespace
}  // namespace hearthmake::com
