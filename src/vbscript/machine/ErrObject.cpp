#include "vbscript/machine/ErrObject.hpp"

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"

namespace hearthmake::vbscript {

const automation::Interface& ErrObject::Declaration() const {
  static const automation::Interface declaration =
      automation::Declare("Object", "_Err", "")
          .byDefault()
          .let<&ErrObject::SetNumber>("Number")
          .get<&ErrObject::Number>("Number")
          .let<&ErrObject::SetSource>("Source")
          .get<&ErrObject::Source>("Source")
          .let<&ErrObject::SetDescription>("Description")
          .get<&ErrObject::Description>("Description")
          .let<&ErrObject::SetHelpFile>("HelpFile")
          .get<&ErrObject::HelpFile>("HelpFile")
          .let<&ErrObject::SetHelpContext>("HelpContext")
          .get<&ErrObject::HelpContext>("HelpContext")
          .method<&ErrObject::Clear>("Clear")
          .method<&ErrObject::Raise>("Raise", {"number", "source", "description", "helpFile", "helpContext"})
          .build();
  return declaration;
}

ErrorState& ErrObject::State() const {
  const std::shared_ptr<Machine*> machine = m_machine.lock();
  if (!machine) RaiseRuntime(number::kMemberNotFound);
  return (*machine)->Err();
}

std::int32_t ErrObject::Number() const { return State().number; }
void ErrObject::SetNumber(std::int32_t number) { State().number = number; }
std::string ErrObject::Source() const { return State().source; }
void ErrObject::SetSource(const std::string& source) { State().source = source; }
std::string ErrObject::Description() const { return State().description; }
void ErrObject::SetDescription(const std::string& description) { State().description = description; }
std::string ErrObject::HelpFile() const { return State().helpFile; }
void ErrObject::SetHelpFile(const std::string& file) { State().helpFile = file; }
std::int32_t ErrObject::HelpContext() const { return State().helpContext; }
void ErrObject::SetHelpContext(std::int32_t context) { State().helpContext = context; }
void ErrObject::Clear() { State() = {}; }

void ErrObject::Raise(std::int32_t number, std::optional<std::string> source,
                      std::optional<std::string> description, std::optional<std::string> helpFile,
                      std::optional<std::int32_t> helpContext) {
  if (number == 0) RaiseRuntime(number::kInvalidProcedureCall);
  const std::shared_ptr<Machine*> machine = m_machine.lock();
  if (!machine) RaiseRuntime(number::kMemberNotFound);
  // An error carries no help; the machine keeps it until somebody resumes.
  (*machine)->KeepHelp(helpFile.value_or(""), helpContext.value_or(0));
  automation::Raise(number, source.value_or(kRuntimeErrorSource),
                    description.value_or(ErrorText(NumberOfResultCode(number))));
}

}  // namespace hearthmake::vbscript
