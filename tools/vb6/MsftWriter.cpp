#include "vb6/MsftWriter.hpp"

#include <algorithm>
#include <vector>

#include "automation/Utf.hpp"
#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr std::uint32_t kHeaderSize = 0x54;
constexpr std::uint32_t kSegmentCount = 15;
constexpr std::uint32_t kTypeSize = 0x64;
constexpr std::uint32_t kEnglish = 0x409;
constexpr char kFiller = 'W';

// Kinds of types with the alignment bits that compilers put beside them.
constexpr std::uint32_t kDualInterface = 0x2234;
constexpr std::uint32_t kDispatchInterface = 0x2124;
constexpr std::uint32_t kCoClass = 0x2225;

// TYPEFLAGS.
constexpr std::uint32_t kCanCreate = 0x2;
constexpr std::uint32_t kHidden = 0x10;
constexpr std::uint32_t kControl = 0x20;
constexpr std::uint32_t kDual = 0x40;
constexpr std::uint32_t kNonExtensible = 0x80;
constexpr std::uint32_t kOleAutomation = 0x100;
constexpr std::uint32_t kDispatchable = 0x1000;

constexpr std::uint32_t kLibraryOfControls = 2;  // LIBFLAGS
constexpr std::uint32_t kHiddenFunction = 0x40;  // FUNCFLAGS

// IMPLTYPEFLAGS.
constexpr std::uint32_t kDefault = 1;
constexpr std::uint32_t kSource = 2;

// PARAMFLAGS.
constexpr std::uint32_t kIn = 1;
constexpr std::uint32_t kOut = 2;
constexpr std::uint32_t kReturned = 8;
constexpr std::uint32_t kOptional = 0x10;

// The flags word of a function: its kind, how it is invoked, stdcall, whether it returns a value.
constexpr std::uint32_t kPureVirtual = 1;
constexpr std::uint32_t kDispatchFunction = 4;
constexpr std::uint32_t kStdCall = 0x400;
constexpr std::uint32_t kReturnsValue = 0x4000;

constexpr std::uint32_t kPointer = 26;
constexpr std::uint32_t kSafeArray = 27;
constexpr std::uint32_t kVoid = 24;
constexpr std::uint32_t kResult = 25;  // HRESULT

// The slots of IUnknown and IDispatch.
constexpr std::uint32_t kInheritedSlots = 7;
constexpr std::uint32_t kInheritedTypes = 2;

constexpr std::uint32_t kFunctionRecord = 24;
constexpr std::uint32_t kArgumentRecord = 12;
// Sizes of a loader's structures for a function, a parameter and a type behind a pointer.
constexpr std::uint32_t kFunctionMemory = 52;
constexpr std::uint32_t kParameterMemory = 16;
constexpr std::uint32_t kIndirectionMemory = 8;

// A type that needs no description of its own stands twice in its number.
std::uint32_t Simple(std::uint32_t type) { return 0x80000000U | (type << 16) | type; }

std::uint32_t InvokeBits(MemberKind kind) {
  switch (kind) {
    case MemberKind::Get: return 2U << 3;
    case MemberKind::Let: return 4U << 3;
    case MemberKind::Set: return 8U << 3;
    case MemberKind::Method:
    case MemberKind::Event: break;
  }
  return 1U << 3;
}

// Letters are compared without regard to case and accents, and W as V, Y as U.
std::uint8_t HashedCharacter(std::uint8_t c) {
  constexpr std::string_view kFolded = "AAAAAAACEEEEIIIIDNOOOOO\xD7OUUUUU\xDE\xDF";
  if (c >= 'a' && c <= 'z') c = static_cast<std::uint8_t>(c - 'a' + 'A');
  if (c == 'W') return 'V';
  if (c == 'Y' || c == 0x9F || c == 0xFF) return 'U';
  if (c == 0x8A || c == 0x9A) return 'S';
  if (c == 0x8C || c == 0x9C) return 0x8C;
  if (c == 0x83) return 'F';
  if (c == 0xF7 || c < 0xC0) return c;
  return static_cast<std::uint8_t>(kFolded[c & 0x1FU]);
}

}  // namespace

std::uint16_t MsftWriter::NameHash(std::string_view name) {
  std::uint32_t hash = 0x0DEADBEE;
  for (const char c : name) hash = hash * 37 + HashedCharacter(static_cast<std::uint8_t>(c));
  return static_cast<std::uint16_t>(hash % 65599);
}

std::string MsftWriter::Write(const PublicInterface& library) { return MsftWriter().Run(library); }

MsftWriter::MsftWriter() {
  m_guidBuckets.fill(kNone);
  m_nameBuckets.fill(kNone);
}

std::string MsftWriter::Run(const PublicInterface& library) {
  constexpr std::uint32_t kLibraryOwner = 0xFFFFFFFE;
  const std::uint32_t guid = AddGuid(library.id, kLibraryOwner);
  const std::uint32_t name = AddName(automation::Utf8ToWindows1252(library.name), kNone);
  const std::uint32_t help = AddString(library.help);
  ImportDispatch();
  for (const PublicClass& c : library.classes) AddClass(c);
  return Assemble(library, guid, name, help);
}

// IDispatch comes from OLE Automation, version 2.0; its reference is number 1.
void MsftWriter::ImportDispatch() {
  constexpr std::string_view kFile = "stdole2.tlb";
  constexpr std::uint32_t kFileOwner = 2;
  constexpr std::uint32_t kTypeOwner = 1;
  constexpr std::uint32_t kInterfaceByGuid = 0x03010000;
  const Guid library = *Guid::Parse("{00020430-0000-0000-C000-000000000046}");
  const Guid dispatch = *Guid::Parse("{00020400-0000-0000-C000-000000000046}");
  m_importFiles.U32(AddGuid(library, kFileOwner));
  m_importFiles.U32(0);  // any language
  m_importFiles.U32(2);  // version 2.0
  m_importFiles.U16(static_cast<std::uint32_t>(kFile.size() << 2) | 1);
  m_importFiles.Raw(kFile);
  m_importFiles.Align(4, kFiller);
  m_imports.U32(kInterfaceByGuid);
  m_imports.U32(0);
  m_imports.U32(AddGuid(dispatch, kTypeOwner));
}

void MsftWriter::AddClass(const PublicClass& c) {
  const Type main = AddInterface(c);
  std::optional<Type> events;
  if (!c.events.empty()) events = AddEvents(c);
  AddCoClass(c, main, events);
}

MsftWriter::Type MsftWriter::AddInterface(const PublicClass& c) {
  const Functions functions = DescribeMembers(c.members, m_typeCount * kTypeSize, true);
  TypeEntry entry;
  entry.kind = kDualInterface;
  entry.flags = kHidden | kDual | kNonExtensible | kOleAutomation | kDispatchable;
  entry.guid = &c.interfaceId;
  entry.name = "_" + c.name;
  entry.implementedTypes = 1;
  entry.vtableSize = 4 * (kInheritedSlots + functions.count);
  entry.dataType = 1;  // IDispatch
  entry.dataType2 = (kInheritedSlots << 16) | kInheritedTypes;
  return AddType(entry, functions);
}

MsftWriter::Type MsftWriter::AddEvents(const PublicClass& c) {
  const Functions functions = DescribeMembers(c.events, m_typeCount * kTypeSize, false);
  TypeEntry entry;
  entry.kind = kDispatchInterface;
  entry.flags = kHidden | kNonExtensible | kDispatchable;
  entry.guid = &c.eventsId;
  entry.name = "__" + c.name;
  entry.implementedTypes = 1;
  entry.vtableSize = 4;
  return AddType(entry, functions);
}

void MsftWriter::AddCoClass(const PublicClass& c, const Type& main, const std::optional<Type>& events) {
  TypeEntry entry;
  entry.kind = kCoClass;
  entry.flags = (c.creatable ? kCanCreate : 0) | (c.control ? kControl : 0);
  entry.guid = &c.classId;
  entry.name = c.name;
  entry.implementedTypes = events ? 2 : 1;
  entry.dataType = m_references.Offset();
  const auto addReference = [this](const Type& type, std::uint32_t flags, bool last) {
    const std::uint32_t next = m_references.Offset() + 16;
    m_references.U32(type.offset);
    m_references.U32(flags);
    m_references.U32(kNone);
    m_references.U32(last ? kNone : next);
  };
  addReference(main, kDefault, !events);
  if (events) addReference(*events, kDefault | kSource, true);
  AddType(entry, {});
}

MsftWriter::Type MsftWriter::AddType(const TypeEntry& entry, const Functions& functions) {
  const Type type{m_typeCount++, m_types.Offset()};
  const bool hasMembers = functions.count > 0;
  m_types.U32((type.number << 16) | entry.kind);
  m_types.U32(m_members.Offset());  // becomes a place in the file when the tables' sizes are known
  m_types.U32(hasMembers ? functions.memorySize + 8 : 0);
  m_types.U32(hasMembers ? functions.memorySize : kNone);
  m_types.U32(3);
  m_types.U32(0);
  m_types.U32(functions.count);
  for (int i = 0; i < 4; ++i) m_types.U32(0);
  m_types.U32(AddGuid(*entry.guid, type.offset));
  m_types.U32(entry.flags);
  m_types.U32(AddTypeName(automation::Utf8ToWindows1252(entry.name), type.offset));
  m_types.U32(1);  // version 1.0
  m_types.U32(AddString(entry.help));
  m_types.U32(0);
  m_types.U32(0);
  m_types.U32(kNone);
  m_types.U32(entry.implementedTypes | (entry.vtableSize << 16));
  m_types.U32(4);
  m_types.U32(entry.dataType);
  m_types.U32(entry.dataType2);
  m_types.U32(0);
  m_types.U32(kNone);
  if (hasMembers) {
    m_members.U32(functions.records.Offset());
    m_members.Raw(functions.records.Bytes());
    m_members.Raw(functions.ids.Bytes());
    m_members.Raw(functions.names.Bytes());
    m_members.Raw(functions.offsets.Bytes());
  }
  return type;
}

MsftWriter::Functions MsftWriter::DescribeMembers(const std::vector<Member>& members,
                                                  std::uint32_t typeOffset, bool dual) {
  Functions functions;
  for (const Member& member : members) AddFunction(functions, member, typeOffset, dual);
  return functions;
}

void MsftWriter::AddFunction(Functions& functions, const Member& member, std::uint32_t typeOffset,
                             bool dual) {
  const bool isPut = member.kind == MemberKind::Let || member.kind == MemberKind::Set;
  const std::uint32_t name = AddName(automation::Utf8ToWindows1252(member.name), typeOffset);
  ByteWriter arguments;
  std::uint32_t memory = kFunctionMemory;
  std::uint32_t optionalCount = 0;
  for (const Parameter& parameter : member.parameters) {
    const bool isNewValue = isPut && &parameter == &member.parameters.back();
    memory += kParameterMemory + AddParameter(arguments, parameter, !isNewValue);
    if (parameter.optional) ++optionalCount;
    if (parameter.list) optionalCount = 0xFFFF;
  }
  if (dual && member.result) {
    std::uint32_t indirection = 0;
    arguments.U32(EncodeType(*member.result, true, indirection));
    arguments.U32(kNone);
    arguments.U32(kOut | kReturned);
    memory += kParameterMemory + indirection;
  }
  const std::uint32_t argumentCount = arguments.Offset() / kArgumentRecord;
  const std::uint32_t help = AddString(member.help);
  const std::uint32_t size =
      kFunctionRecord + (help == kNone ? 0 : 8) + arguments.Offset();  // a help text follows its number
  ByteWriter& record = functions.records;
  functions.ids.U32(static_cast<std::uint32_t>(member.dispatchId.value_or(0)));
  functions.names.U32(name);
  functions.offsets.U32(record.Offset());
  record.U32(size | (functions.count << 16));
  record.U32(Simple(dual ? kResult : kVoid));
  record.U32(member.hidden ? kHiddenFunction : 0);
  record.U32((dual ? 4 * (kInheritedSlots + functions.count) : 0) | (memory << 16));
  record.U32((dual ? kPureVirtual : kDispatchFunction) | InvokeBits(member.kind) | kStdCall |
             (dual && member.result ? kReturnsValue : 0) | (functions.count << 16));
  record.U32(argumentCount | (optionalCount << 16));
  if (help != kNone) {
    record.U32(0);
    record.U32(help);
  }
  record.Raw(arguments.Bytes());
  functions.memorySize += memory + 4;
  ++functions.count;
}

// Returns what a loader needs for the parameter beyond the fixed size.
std::uint32_t MsftWriter::AddParameter(ByteWriter& arguments, const Parameter& parameter, bool named) {
  std::uint32_t memory = 0;
  const bool byReference = parameter.byReference || parameter.type.array;
  arguments.U32(EncodeType(parameter.type, byReference, memory));
  arguments.U32(named && !parameter.name.empty()
                    ? AddName(automation::Utf8ToWindows1252(parameter.name), kNone)
                    : kNone);
  arguments.U32(kIn | (byReference ? kOut : 0) | (parameter.optional ? kOptional : 0));
  return memory;
}

std::uint32_t MsftWriter::EncodeType(const DeclaredType& type, bool byReference, std::uint32_t& memorySize) {
  const auto base = static_cast<std::uint32_t>(type.type);
  std::uint32_t code = Simple(base);
  std::uint32_t high = base;
  if (type.array) {
    high |= 0x2000;
    code = TypeDescription(kSafeArray | (high << 16), code);
    memorySize += kIndirectionMemory;
  }
  if (byReference) {
    high |= 0x4000;
    code = TypeDescription(kPointer | (high << 16), code);
    memorySize += kIndirectionMemory;
  }
  return code;
}

std::uint32_t MsftWriter::TypeDescription(std::uint32_t low, std::uint32_t high) {
  for (std::uint32_t offset = 0; offset < m_descriptions.Offset(); offset += 8) {
    if (m_descriptions.GetU32(offset) == low && m_descriptions.GetU32(offset + 4) == high) return offset;
  }
  const std::uint32_t offset = m_descriptions.Offset();
  m_descriptions.U32(low);
  m_descriptions.U32(high);
  return offset;
}

std::uint32_t MsftWriter::AddGuid(const Guid& guid, std::uint32_t owner) {
  std::uint32_t bucket = 0;
  for (std::size_t i = 0; i < guid.bytes.size(); i += 2) {
    bucket ^= guid.bytes[i] | (static_cast<std::uint32_t>(guid.bytes[i + 1]) << 8);
  }
  bucket &= 0x1F;
  const std::uint32_t offset = m_guids.Offset();
  for (const std::uint8_t byte : guid.bytes) m_guids.Raw({reinterpret_cast<const char*>(&byte), 1});
  m_guids.U32(owner);
  m_guids.U32(m_guidBuckets[bucket]);
  m_guidBuckets[bucket] = offset;
  return offset;
}

std::optional<std::uint32_t> MsftWriter::FindName(std::string_view name, std::uint16_t hash) const {
  std::uint32_t offset = m_nameBuckets[hash & 0x7FU];
  while (offset != kNone) {
    const std::uint32_t description = m_names.GetU32(offset + 8);
    const std::string_view known = std::string_view(m_names.Bytes()).substr(offset + 12, description & 0xFF);
    if (description >> 16 == hash && EqualNoCase(known, name)) return offset;
    offset = m_names.GetU32(offset + 4);
  }
  return std::nullopt;
}

// One spelling of a name serves the whole library: that of its first use, as ever with Visual Basic.
std::uint32_t MsftWriter::AddName(std::string_view name, std::uint32_t owner) {
  name = name.substr(0, 0xFF);  // Basic's own limit; the length is one byte
  const std::uint16_t hash = NameHash(name);
  if (const auto known = FindName(name, hash)) {
    if (m_names.GetU32(*known) == kNone) m_names.SetU32(*known, owner);
    return *known;
  }
  const std::uint32_t offset = m_names.Offset();
  m_names.U32(owner);
  m_names.U32(m_nameBuckets[hash & 0x7FU]);
  m_names.U32(static_cast<std::uint32_t>(name.size()) | (static_cast<std::uint32_t>(hash) << 16));
  m_names.Raw(name);
  m_names.Align(4, kFiller);
  m_nameBuckets[hash & 0x7FU] = offset;
  ++m_nameCount;
  m_nameCharacters += static_cast<std::uint32_t>(name.size());
  return offset;
}

std::uint32_t MsftWriter::AddTypeName(std::string_view name, std::uint32_t owner) {
  constexpr std::uint32_t kTypeMark = 0x3800;
  const std::uint32_t offset = AddName(name, owner);
  m_names.SetU32(offset, owner);
  m_names.SetU32(offset + 8, m_names.GetU32(offset + 8) | kTypeMark);
  return offset;
}

std::uint32_t MsftWriter::AddString(std::string_view text) {
  constexpr std::size_t kShortest = 8;
  if (text.empty()) return kNone;
  const std::string bytes = automation::Utf8ToWindows1252(text).substr(0, UINT16_MAX);
  const std::uint32_t offset = m_strings.Offset();
  m_strings.U16(static_cast<std::uint32_t>(bytes.size()));
  m_strings.Raw(bytes);
  m_strings.Align(4, kFiller);
  while (m_strings.Offset() - offset < kShortest) m_strings.Raw({&kFiller, 1});
  return offset;
}

std::string MsftWriter::Assemble(const PublicInterface& library, std::uint32_t libraryGuid,
                                 std::uint32_t libraryName, std::uint32_t help) {
  ByteWriter file;
  file.Raw("MSFT");
  file.U32(0x00010002);
  file.U32(libraryGuid);
  file.U32(kEnglish);
  file.U32(0);
  file.U32(0x41);  // 32-bit Windows
  file.U32(library.majorVersion | (static_cast<std::uint32_t>(library.minorVersion) << 16));
  file.U32(library.controls ? kLibraryOfControls : 0);
  file.U32(m_typeCount);
  file.U32(help);
  file.U32(0);
  file.U32(0);
  file.U32(m_nameCount);
  file.U32(m_nameCharacters);
  file.U32(libraryName);
  file.U32(kNone);
  file.U32(kNone);
  file.U32(0x20);
  file.U32(0x80);
  file.U32(1);  // the reference to IDispatch
  file.U32(1);  // imported types
  for (std::uint32_t i = 0; i < m_typeCount; ++i) file.U32(i * kTypeSize);

  ByteWriter guidBuckets;
  for (const std::uint32_t head : m_guidBuckets) guidBuckets.U32(head);
  ByteWriter nameBuckets;
  for (const std::uint32_t head : m_nameBuckets) nameBuckets.U32(head);
  const ByteWriter absent;
  const std::array<const ByteWriter*, kSegmentCount> segments = {
      &m_types, &m_imports,   &m_importFiles, &m_references, &guidBuckets,
      &m_guids, &nameBuckets, &m_names,       &m_strings,    &m_descriptions,
      &absent,  &absent,      &absent,        &absent,       &absent};

  std::uint32_t place = kHeaderSize + 4 * m_typeCount + 16 * kSegmentCount;
  for (const ByteWriter* segment : segments) {
    file.U32(segment->Size() == 0 ? kNone : place);
    file.U32(segment->Offset());
    file.U32(kNone);
    file.U32(0x0F);
    place += segment->Offset();
  }
  for (std::uint32_t type = 0; type < m_types.Offset(); type += kTypeSize) {
    m_types.SetU32(type + 4, m_types.GetU32(type + 4) + place);
  }
  for (const ByteWriter* segment : segments) file.Raw(segment->Bytes());
  file.Raw(m_members.Bytes());
  return file.Bytes();
}

}  // namespace hearthmake::vb6
