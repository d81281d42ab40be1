#include "vbscript/objects/ShellExec.hpp"

#include <utility>

#include "automation/Declare.hpp"

namespace hearthmake::vbscript {

using automation::Make;

ShellExec::ShellExec(Context& context, platform::PipedChild child)
    : m_process(std::move(child.process)),
      m_input(Make<TextStream>(std::make_unique<TextWriter>(std::move(child.input), TextEncoding::Utf8,
                                                            TextWriter::Kind::Console, context.budget))),
      m_output(Make<TextStream>(
          std::make_unique<TextReader>(std::move(child.output), TextEncoding::Utf8, context.budget))),
      m_error(Make<TextStream>(
          std::make_unique<TextReader>(std::move(child.error), TextEncoding::Utf8, context.budget))) {}

const automation::Interface& ShellExec::Declaration() const {
  static const automation::Interface kDeclaration = automation::Declare("IWshExec", "IWshExec", "", "")
                                                        .get<&ShellExec::Status>("Status")
                                                        .get<&ShellExec::StdIn>("StdIn")
                                                        .get<&ShellExec::StdOut>("StdOut")
                                                        .get<&ShellExec::StdErr>("StdErr")
                                                        .get<&ShellExec::ProcessID>("ProcessID")
                                                        .get<&ShellExec::ExitCode>("ExitCode")
                                                        .method<&ShellExec::Terminate>("Terminate")
                                                        .build();
  return kDeclaration;
}

std::int32_t ShellExec::Status() { return m_process->Wait(std::chrono::milliseconds(0)) ? 1 : 0; }

}  // namespace hearthmake::vbscript
