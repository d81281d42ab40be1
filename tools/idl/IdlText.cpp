#include "idl/IdlText.hpp"

#include <cstdio>

namespace hearthmake::idl {

namespace {

using automation::Enumeration;
using automation::Interface;
using automation::Member;
using automation::MemberKind;
using automation::Parameter;
using automation::ValueKind;
using automation::ValueType;

// IDL writes ids without braces.
std::string Bare(const std::string& guid) { return guid.substr(1, guid.size() - 2); }

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "\"";
}

std::string TypeText(const ValueType& type) {
  switch (type.kind) {
    case ValueKind::Void: return "void";
    case ValueKind::Integer: return "short";
    case ValueKind::Long: return "long";
    case ValueKind::Boolean: return "VARIANT_BOOL";
    case ValueKind::Double: return "double";
    case ValueKind::Date: return "DATE";
    case ValueKind::String: return "BSTR";
    case ValueKind::Variant: return "VARIANT";
    case ValueKind::Enum: return type.enumeration().name;
    case ValueKind::Object:
      return type.object == nullptr ? "IDispatch*" : type.object().InterfaceName() + "*";
  }
  return "";
}

// A value that a caller can leave out although its type has no way to say so arrives as this.
std::string DefaultValue(const Parameter& parameter) {
  if (!parameter.isOptional || parameter.type.kind == ValueKind::Variant) return "";
  return parameter.type.kind == ValueKind::String ? ", defaultvalue(\"\")" : ", defaultvalue(0)";
}

std::string ParameterText(const Parameter& parameter) {
  const std::string direction = parameter.isInOut ? "in, out" : "in";
  const std::string optional = parameter.isOptional ? ", optional" + DefaultValue(parameter) : "";
  const char* reference = parameter.isInOut ? "* " : " ";
  return "[" + direction + optional + "] " + TypeText(parameter.type) + reference + parameter.name;
}

bool TakesValue(const Member& member) {
  return member.kind == MemberKind::Let || member.kind == MemberKind::Set;
}

std::string ParametersText(const Member& member) {
  std::string text;
  const auto append = [&](const std::string& parameter) { text += (text.empty() ? "" : ", ") + parameter; };
  for (const Parameter& parameter : member.parameters) append(ParameterText(parameter));
  if (TakesValue(member)) {
    append("[in] " + TypeText(member.value) + " value");
  } else if (member.id == automation::kNewEnumMember) {
    append("[out, retval] IUnknown** result");
  } else if (member.value.kind != ValueKind::Void) {
    append("[out, retval] " + TypeText(member.value) + "* result");
  }
  return text;
}

std::string AttributesText(const Member& member) {
  std::string text = "id(" + std::to_string(member.id) + ")";
  switch (member.kind) {
    case MemberKind::Method: break;
    case MemberKind::Get: text += ", propget"; break;
    case MemberKind::Let: text += ", propput"; break;
    case MemberKind::Set: text += ", propputref"; break;
  }
  if (member.isRestricted) text += ", restricted";
  if (!member.help.empty()) text += ", helpstring(" + Quoted(member.help) + ")";
  return text;
}

std::string LibraryHead() {
  const Library& library = PublicLibrary();
  char version[16];
  std::snprintf(version, sizeof version, "%u.%u", library.majorVersion, library.minorVersion);
  return "[uuid(" + Bare(library.id) + "), version(" + version + "), helpstring(" + Quoted(library.title) +
         ")]\nlibrary " + library.name + "\n{\n  importlib(\"stdole2.tlb\");\n\n";
}

// Types may be named before their turn.
std::string ForwardText() {
  std::string text;
  for (const PublicClass& entry : PublicClasses()) {
    text += "  interface " + entry.describe().InterfaceName() + ";\n";
  }
  return text + "\n";
}

}  // namespace

std::string EnumerationText(const Enumeration& enumeration) {
  std::string text = "  typedef [uuid(" + Bare(enumeration.guid) + ")] enum " + enumeration.name + " {\n";
  for (const auto& [name, value] : enumeration.members) {
    text += "    " + name + " = " + std::to_string(value) + ",\n";
  }
  text.replace(text.size() - 2, 1, "");
  return text + "  } " + enumeration.name + ";\n\n";
}

std::string InterfaceText(const Interface& declared) {
  std::string text = "  [odl, uuid(" + Bare(declared.InterfaceId()) +
                     "), hidden, dual, nonextensible, oleautomation]\n  interface " +
                     declared.InterfaceName() + " : IDispatch {\n";
  for (const Member& member : declared.Members()) {
    text += "    [" + AttributesText(member) + "]\n    HRESULT " + member.name + "(" +
            ParametersText(member) + ");\n";
  }
  return text + "  };\n\n";
}

std::string EventsText(const Interface& events) {
  std::string text = "  [uuid(" + Bare(events.InterfaceId()) + "), hidden]\n  dispinterface " +
                     events.InterfaceName() + " {\n  properties:\n  methods:\n";
  for (const Member& member : events.Members()) {
    text += "    [" + AttributesText(member) + "]\n    void " + member.name + "(" + ParametersText(member) +
            ");\n";
  }
  return text + "  };\n\n";
}

std::string CoclassText(const PublicClass& entry) {
  const Interface& declared = entry.describe();
  std::string text = "  [uuid(" + Bare(CoclassId(declared)) + ")" +
                     (entry.create == nullptr ? ", noncreatable" : "") + "]\n  coclass " + declared.Name() +
                     " {\n    [default] interface " + declared.InterfaceName() + ";\n";
  for (const auto further : declared.Implemented()) {
    text += "    interface " + further().InterfaceName() + ";\n";
  }
  if (const Interface* source = declared.Source()) {
    text += "    [default, source] dispinterface " + source->InterfaceName() + ";\n";
  }
  return text + "  };\n\n";
}

std::string LibraryText() {
  std::string text = "import \"oaidl.idl\";\nimport \"ocidl.idl\";\n\n" + LibraryHead() + ForwardText();
  for (const Enumeration* enumeration : PublicEnumerations()) text += EnumerationText(*enumeration);
  for (const PublicClass& entry : PublicClasses()) text += InterfaceText(entry.describe());
  for (const PublicClass& entry : PublicClasses()) {
    if (const Interface* source = entry.describe().Source()) text += EventsText(*source);
  }
  for (const PublicClass& entry : PublicClasses()) text += CoclassText(entry);
  return text + "};\n";
}

}  // namespace hearthmake::idl
