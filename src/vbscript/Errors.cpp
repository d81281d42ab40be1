#include "vbscript/Errors.hpp"

#include <algorithm>
#include <iterator>

namespace hearthmake::vbscript {

namespace {

struct NumberedText {
  std::int32_t number;
  const char* text;
};

constexpr NumberedText kTexts[] = {
    {5, "Invalid procedure call or argument"},
    {6, "Overflow"},
    {7, "Out of memory"},
    {9, "Subscript out of range"},
    {10, "This array is fixed or temporarily locked"},
    {11, "Division by zero"},
    {13, "Type mismatch"},
    {14, "Out of string space"},
    {17, "Can't perform requested operation"},
    {28, "Out of stack space"},
    {35, "Sub or Function not defined"},
    {48, "Error in loading DLL"},
    {51, "Internal error"},
    {52, "Bad file name or number"},
    {53, "File not found"},
    {54, "Bad file mode"},
    {55, "File already open"},
    {57, "Device I/O error"},
    {58, "File already exists"},
    {61, "Disk full"},
    {62, "Input past end of file"},
    {67, "Too many files"},
    {68, "Device unavailable"},
    {70, "Permission denied"},
    {71, "Disk not ready"},
    {74, "Can't rename with different drive"},
    {75, "Path/File access error"},
    {76, "Path not found"},
    {91, "Object variable not set"},
    {92, "For loop not initialized"},
    {94, "Invalid use of Null"},
    {322, "Can't create necessary temporary file"},
    {380, "Invalid property value"},
    {424, "Object required"},
    {429, "ActiveX component can't create object"},
    {430, "Class doesn't support Automation"},
    {432, "File name or class name not found during Automation operation"},
    {438, "Object doesn't support this property or method"},
    {440, "Automation error"},
    {445, "Object doesn't support this action"},
    {446, "Object doesn't support named arguments"},
    {447, "Object doesn't support current locale setting"},
    {448, "Named argument not found"},
    {449, "Argument not optional"},
    {450, "Wrong number of arguments or invalid property assignment"},
    {451, "Object not a collection"},
    {453, "Specified DLL function not found"},
    {455, "Code resource lock error"},
    {457, "This key is already associated with an element of this collection"},
    {458, "Variable uses an Automation type not supported in VBScript"},
    {462, "The remote server machine does not exist or is unavailable"},
    {481, "Invalid picture"},
    {500, "Variable is undefined"},
    {501, "Illegal assignment"},
    {502, "Object not safe for scripting"},
    {503, "Object not safe for initializing"},
    {504, "Object not safe for creating"},
    {505, "Invalid or unqualified reference"},
    {506, "Class not defined"},
    {507, "An exception occurred"},
    {1001, "Out of memory"},
    {1002, "Syntax error"},
    {1003, "Expected ':'"},
    {1005, "Expected '('"},
    {1006, "Expected ')'"},
    {1007, "Expected ']'"},
    {1010, "Expected identifier"},
    {1011, "Expected '='"},
    {1012, "Expected 'If'"},
    {1013, "Expected 'To'"},
    {1014, "Expected 'End'"},
    {1015, "Expected 'Function'"},
    {1016, "Expected 'Sub'"},
    {1017, "Expected 'Then'"},
    {1018, "Expected 'Wend'"},
    {1019, "Expected 'Loop'"},
    {1020, "Expected 'Next'"},
    {1021, "Expected 'Case'"},
    {1022, "Expected 'Select'"},
    {1023, "Expected expression"},
    {1024, "Expected statement"},
    {1025, "Expected end of statement"},
    {1026, "Expected integer constant"},
    {1027, "Expected 'While' or 'Until'"},
    {1028, "Expected 'While', 'Until' or end of statement"},
    {1029, "Expected 'With'"},
    {1030, "Identifier too long"},
    {1031, "Invalid number"},
    {1032, "Invalid character"},
    {1033, "Unterminated string constant"},
    {1034, "Unterminated comment"},
    {1037, "Invalid use of 'Me' keyword"},
    {1038, "'loop' without 'do'"},
    {1039, "Invalid 'exit' statement"},
    {1040, "Invalid 'for' loop control variable"},
    {1041, "Name redefined"},
    {1042, "Must be first statement on the line"},
    {1043, "Cannot assign to non-ByVal argument"},
    {1044, "Cannot use parentheses when calling a Sub"},
    {1045, "Expected literal constant"},
    {1046, "Expected 'In'"},
    {1047, "Expected 'Class'"},
    {1048, "Must be defined inside a Class"},
    {1049, "Expected Let or Set or Get in property declaration"},
    {1050, "Expected 'Property'"},
    {1051, "Number of arguments must be consistent across properties specification"},
    {1052, "Cannot have multiple default property/method in a Class"},
    {1053, "Class initialize or terminate do not have arguments"},
    {1054, "Property set or let must have at least one argument"},
    {1055, "Unexpected 'Next'"},
    {1056, "'Default' can be specified only on 'Property' or 'Function' or 'Sub'"},
    {1057, "'Default' specification must also specify 'Public'"},
    {1058, "'Default' specification can only be on Property Get"},
    {5016, "Regular Expression object expected"},
    {5017, "Syntax error in regular expression"},
    {5018, "Unexpected quantifier"},
    {5019, "Expected ']' in regular expression"},
    {5020, "Expected ')' in regular expression"},
    {5021, "Invalid range in character set"},
    {32811, "Element not found"},
    {32812, "The specified date is not available in the current locale's calendar"},
};

struct ResultCode {
  std::uint32_t code;
  std::int32_t number;
};

constexpr ResultCode kResultCodes[] = {
    {0x80004001, 445},  // E_NOTIMPL
    {0x80004002, 430},  // E_NOINTERFACE
    {0x80004005, 440},  // E_FAIL
    {0x80020001, 438},  // DISP_E_UNKNOWNINTERFACE
    {0x80020003, 438},  // DISP_E_MEMBERNOTFOUND
    {0x80020004, 448},  // DISP_E_PARAMNOTFOUND
    {0x80020005, 13},   // DISP_E_TYPEMISMATCH
    {0x80020006, 438},  // DISP_E_UNKNOWNNAME
    {0x80020007, 446},  // DISP_E_NONAMEDARGS
    {0x80020008, 458},  // DISP_E_BADVARTYPE
    {0x8002000A, 6},    // DISP_E_OVERFLOW
    {0x8002000B, 9},    // DISP_E_BADINDEX
    {0x8002000C, 447},  // DISP_E_UNKNOWNLCID
    {0x8002000D, 10},   // DISP_E_ARRAYISLOCKED
    {0x8002000E, 450},  // DISP_E_BADPARAMCOUNT
    {0x8002000F, 449},  // DISP_E_PARAMNOTOPTIONAL
    {0x80020011, 451},  // DISP_E_NOTACOLLECTION
    {0x8002801D, 453},  // TYPE_E_LIBNOTREGISTERED stands beside the missing library
    {0x8002802F, 453},  // TYPE_E_DLLFUNCTIONNOTFOUND
    {0x80028CA0, 13},   // TYPE_E_TYPEMISMATCH
    {0x80028CA1, 9},    // TYPE_E_OUTOFBOUNDS
    {0x80028CA2, 57},   // TYPE_E_IOERROR
    {0x80028CA3, 322},  // TYPE_E_CANTCREATETMPFILE
    {0x80029C4A, 48},   // TYPE_E_CANTLOADLIBRARY
    {0x80030001, 5},    // STG_E_INVALIDFUNCTION
    {0x80030002, 53},   // STG_E_FILENOTFOUND
    {0x80030003, 76},   // STG_E_PATHNOTFOUND
    {0x80030004, 67},   // STG_E_TOOMANYOPENFILES
    {0x80030005, 70},   // STG_E_ACCESSDENIED
    {0x80030006, 52},   // STG_E_INVALIDHANDLE
    {0x80030008, 7},    // STG_E_INSUFFICIENTMEMORY
    {0x80030012, 53},   // STG_E_NOMOREFILES
    {0x80030013, 70},   // STG_E_DISKISWRITEPROTECTED
    {0x8003001D, 57},   // STG_E_WRITEFAULT
    {0x8003001E, 57},   // STG_E_READFAULT
    {0x80030020, 75},   // STG_E_SHAREVIOLATION
    {0x80030021, 70},   // STG_E_LOCKVIOLATION
    {0x80030050, 58},   // STG_E_FILEALREADYEXISTS
    {0x80030057, 5},    // STG_E_INVALIDPARAMETER
    {0x80030070, 61},   // STG_E_MEDIUMFULL
    {0x800300FC, 53},   // STG_E_INVALIDNAME
    {0x80030100, 70},   // STG_E_INUSE
    {0x80040111, 429},  // CLASS_E_CLASSNOTAVAILABLE
    {0x80040154, 429},  // REGDB_E_CLASSNOTREG
    {0x800401E3, 429},  // MK_E_UNAVAILABLE
    {0x800401E4, 432},  // MK_E_SYNTAX
    {0x800401E6, 432},  // MK_E_INVALIDEXTENSION
    {0x800401EA, 432},  // MK_E_CANTOPENFILE
    {0x800401F3, 429},  // CO_E_CLASSSTRING
    {0x800401F5, 429},  // CO_E_APPNOTFOUND
    {0x800401FE, 429},  // CO_E_APPDIDNTREG
    {0x80070005, 70},   // E_ACCESSDENIED
    {0x8007000E, 7},    // E_OUTOFMEMORY
    {0x80070057, 5},    // E_INVALIDARG
    {0x800706BA, 462},  // RPC_S_SERVER_UNAVAILABLE
    {0x80080005, 429},  // CO_E_SERVER_EXEC_FAILURE
};

constexpr std::uint32_t kControlFacility = 0x800A0000;  // FACILITY_CONTROL: a number of the language

template <class Table, class Key>
auto FindSorted(const Table& table, Key key, Key std::iter_value_t<decltype(std::begin(table))>::*member) {
  const auto found = std::lower_bound(std::begin(table), std::end(table), key,
                                      [member](const auto& entry, Key k) { return entry.*member < k; });
  return found != std::end(table) && (*found).*member == key ? &*found : nullptr;
}

}  // namespace

CompileError::CompileError(CompileErrorNumber number, std::uint32_t offset)
    : Error(static_cast<std::int32_t>(number), kCompileErrorSource,
            ErrorText(static_cast<std::int32_t>(number))),
      m_offset(offset) {}

const char* ErrorText(std::int32_t number) {
  const NumberedText* entry = FindSorted(kTexts, number, &NumberedText::number);
  return entry != nullptr ? entry->text : "Unknown runtime error";
}

std::int32_t NumberOfResultCode(std::int32_t code) {
  const auto bits = static_cast<std::uint32_t>(code);
  if ((bits & 0xFFFF0000u) == kControlFacility) return static_cast<std::int32_t>(bits & 0xFFFFu);
  const ResultCode* entry = FindSorted(kResultCodes, bits, &ResultCode::code);
  return entry != nullptr ? entry->number : code;
}

void RaiseRuntime(std::int32_t number, std::string_view about) {
  std::string text = ErrorText(number);
  if (!about.empty()) text.append(": '").append(about).append("'");
  automation::Raise(number, kRuntimeErrorSource, text);
}

}  // namespace hearthmake::vbscript
