#include "adapters/win32/Win32TypeLibReader.hpp"

#include <windows.h>

#include <ole2.h>

#include <array>
#include <string>

#include "adapters/win32/ComPointer.hpp"
#include "adapters/win32/FileFailure.hpp"
#include "adapters/win32/SystemPath.hpp"
#include "adapters/win32/WideText.hpp"
#include "automation/Error.hpp"

namespace hearthmake::win32 {

namespace {

constexpr const char* kSource = "TypeLibReader";

std::string ToText(const GUID& guid) {
  std::array<wchar_t, 39> text{};
  StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
  return ToUtf8(text.data());
}

// The texts of a library or one of its types; -1 is the library itself.
struct Documentation {
  std::string name;
  std::string helpString;
};

std::string TakeText(BSTR text) {
  if (text == nullptr) return {};
  std::string result = ToUtf8({text, SysStringLen(text)});
  SysFreeString(text);
  return result;
}

Documentation DocumentationOf(ITypeLib& library, INT index) {
  BSTR name = nullptr;
  BSTR helpString = nullptr;
  library.GetDocumentation(index, &name, &helpString, nullptr, nullptr);
  return {TakeText(name), TakeText(helpString)};
}

[[noreturn]] void Fail(HRESULT result, std::string_view path) {
  const auto code = static_cast<DWORD>(result);
  const bool isOfSystem = HRESULT_FACILITY(result) == FACILITY_WIN32;
  const DWORD systemError = isOfSystem ? code & 0xFFFFU : 0;
  const bool isMissing = result == TYPE_E_CANTLOADLIBRARY || systemError == ERROR_FILE_NOT_FOUND;
  const std::optional<std::wstring> systemPath = ToSystemPath(path);
  if (isMissing && systemPath && GetFileAttributesW(systemPath->c_str()) == INVALID_FILE_ATTRIBUTES) {
    automation::Raise(FromSystemError(GetLastError()), kSource, std::string(path));
  }
  if (systemError != 0 && systemError != ERROR_BAD_EXE_FORMAT) {
    automation::Raise(FromSystemError(systemError), kSource, std::string(path));
  }
  automation::Raise(automation::kInvalidValue, kSource,
                    std::string(path) + " holds no type library that can be read");
}

ComPointer<ITypeLib> Load(std::string_view path) {
  ComPointer<ITypeLib> library;
  const HRESULT result = LoadTypeLibEx(ToWide(path).c_str(), REGKIND_NONE, library.Out());
  if (FAILED(result)) Fail(result, path);
  return library;
}

// The attributes of a library or a type, which its owner has to take back.
template <class Owner, class Attributes>
class Borrowed {
 public:
  using Getter = HRESULT (STDMETHODCALLTYPE Owner::*)(Attributes**);
  using Giver = void (STDMETHODCALLTYPE Owner::*)(Attributes*);

  Borrowed(Owner& owner, Getter getter, Giver giver) : m_owner(owner), m_giver(giver) {
    if (FAILED((owner.*getter)(&m_attributes))) m_attributes = nullptr;
  }
  Borrowed(const Borrowed&) = delete;
  Borrowed& operator=(const Borrowed&) = delete;
  ~Borrowed() {
    if (m_attributes != nullptr) (m_owner.*m_giver)(m_attributes);
  }
  const Attributes* Get() const { return m_attributes; }

 private:
  Owner& m_owner;
  Giver m_giver;
  Attributes* m_attributes = nullptr;
};

platform::TypeDescription Describe(ITypeLib& library, UINT index, std::string_view path) {
  ComPointer<ITypeInfo> type;
  if (const HRESULT result = library.GetTypeInfo(index, type.Out()); FAILED(result)) Fail(result, path);
  const Borrowed<ITypeInfo, TYPEATTR> attributes(*type.Get(), &ITypeInfo::GetTypeAttr,
                                                 &ITypeInfo::ReleaseTypeAttr);
  if (attributes.Get() == nullptr) Fail(TYPE_E_INVDATAREAD, path);
  Documentation texts = DocumentationOf(library, static_cast<INT>(index));
  const TYPEATTR& from = *attributes.Get();
  platform::TypeDescription description;
  description.kind = static_cast<platform::TypeKind>(from.typekind);  // the port has the system's numbers
  description.guid = IsEqualGUID(from.guid, GUID_NULL) ? "" : ToText(from.guid);
  description.name = std::move(texts.name);
  description.helpString = std::move(texts.helpString);
  description.flags = from.wTypeFlags;
  description.majorVersion = from.wMajorVerNum;
  description.minorVersion = from.wMinorVerNum;
  return description;
}

}  // namespace

platform::TypeLibInfo Win32TypeLibReader::Read(std::string_view path) {
  const ComPointer<ITypeLib> library = Load(path);
  const Borrowed<ITypeLib, TLIBATTR> attributes(*library.Get(), &ITypeLib::GetLibAttr,
                                                &ITypeLib::ReleaseTLibAttr);
  if (attributes.Get() == nullptr) Fail(TYPE_E_INVDATAREAD, path);
  const TLIBATTR& from = *attributes.Get();
  Documentation texts = DocumentationOf(*library.Get(), -1);
  platform::TypeLibInfo info;
  info.guid = ToText(from.guid);
  info.majorVersion = from.wMajorVerNum;
  info.minorVersion = from.wMinorVerNum;
  info.locale = from.lcid;
  info.flags = from.wLibFlags;
  info.name = std::move(texts.name);
  info.helpString = std::move(texts.helpString);
  return info;
}

std::vector<platform::TypeDescription> Win32TypeLibReader::ReadTypes(std::string_view path) {
  const ComPointer<ITypeLib> library = Load(path);
  const UINT count = library->GetTypeInfoCount();
  std::vector<platform::TypeDescription> types;
  types.reserve(count);
  for (UINT i = 0; i < count; ++i) types.push_back(Describe(*library.Get(), i, path));
  return types;
}

}  // namespace hearthmake::win32
