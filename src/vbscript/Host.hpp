#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/Object.hpp"
#include "platform/Platform.hpp"
#include "vbscript/Console.hpp"

namespace hearthmake::vbscript {

// What the engine asks of the program that it runs in. Texts are UTF-8.
class Host {
 public:
  Host() = default;
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  virtual ~Host() = default;

  // Clock, files, processes and what else the engine's objects work with. The engine itself needs the clock
  // alone; an object whose port is missing is error 429.
  virtual const platform::Platform& Platform() = 0;

  // Shows a message and returns the button that was chosen (vbOK = 1 …). Without anybody to ask: the
  // default button of the style.
  virtual std::int32_t ShowMessage(std::string_view prompt, std::int32_t style, std::string_view title) = 0;
  // Asks for a text; empty when the user gives up.
  virtual std::string AskForText(std::string_view prompt, std::string_view title,
                                 std::string_view defaultText) = 0;

  // A new object of a class by its ProgID, or null when the host knows no such class (the script gets error
  // 429). The engine asks the host first and then its own objects (see objects/StandardObjects.hpp).
  virtual automation::Ref<automation::Object> CreateObject(std::string_view progId) = 0;
  // GetObject: what stands behind a path or moniker, or null (error 432).
  virtual automation::Ref<automation::Object> GetObject(std::string_view path, std::string_view progId) = 0;

  // The standard streams that scripts may use; null where the program keeps them to itself.
  virtual Console* StandardStreams() { return nullptr; }
};

}  // namespace hearthmake::vbscript
