#pragma once

#include <optional>

#include "automation/Object.hpp"
#include "vbscript/machine/Machine.hpp"

namespace hearthmake::vbscript {

// The Err object of scripts, over the machine's last error.
class ErrObject final : public automation::Object {
 public:
  explicit ErrObject(Machine& machine) : m_machine(machine.Life()) {}
  const automation::Interface& Declaration() const override;

  std::int32_t Number() const;
  void SetNumber(std::int32_t number);
  std::string Source() const;
  void SetSource(const std::string& source);
  std::string Description() const;
  void SetDescription(const std::string& description);
  std::string HelpFile() const;
  void SetHelpFile(const std::string& file);
  std::int32_t HelpContext() const;
  void SetHelpContext(std::int32_t context);
  void Clear();
  void Raise(std::int32_t number, std::optional<std::string> source, std::optional<std::string> description,
             std::optional<std::string> helpFile, std::optional<std::int32_t> helpContext);

 private:
  ErrorState& State() const;

  std::weak_ptr<Machine*> m_machine;
};

}  // namespace hearthmake::vbscript
