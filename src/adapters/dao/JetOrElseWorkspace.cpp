#include "adapters/dao/JetOrElseWorkspace.hpp"

#include <algorithm>
#include <utility>

#include "adapters/dao/DaoWorkspace.hpp"
#include "adapters/win32/LateObject.hpp"
#include "adapters/win32/WideText.hpp"
#include "automation/Error.hpp"

namespace hearthmake::dao {

namespace {

using automation::Error;
using platform::Workspace;

// Those that open a format without converting it, best first.
std::vector<const char*> EnginesFor(JetFormat format) {
  switch (format) {
    case JetFormat::Jet3: return {"DAO.DBEngine.35", "DAO.DBEngine.36", "DAO.DBEngine.120"};
    case JetFormat::Jet4: return {"DAO.DBEngine.36", "DAO.DBEngine.120"};
    case JetFormat::Ace: return {"DAO.DBEngine.120"};
  }
  return {};
}

// Null where it isn't installed.
std::shared_ptr<Workspace> MakeEngine(const char* progId) {
  try {
    return std::make_shared<DaoWorkspace>(win32::LateObject::Create(progId));
  } catch (const Error&) {
    return nullptr;
  }
}

}  // namespace

bool HasEngineFor(const std::string& path) {
  const auto format = ReadJetFormat(path);
  if (!format) return false;
  const auto engines = EnginesFor(*format);
  return std::any_of(engines.begin(), engines.end(), [](const char* progId) {
    CLSID id = {};
    return SUCCEEDED(CLSIDFromProgID(win32::ToWide(progId).c_str(), &id));
  });
}

JetOrElseWorkspace::JetOrElseWorkspace(std::shared_ptr<Workspace> otherwise) {
  m_sides.push_back(std::make_unique<Side>(Side{std::move(otherwise)}));
}

std::shared_ptr<platform::Database> JetOrElseWorkspace::OpenDatabase(const std::string& path) {
  const auto format = ReadJetFormat(path);
  const Side* engine = format ? EngineFor(*format) : nullptr;
  return (engine != nullptr ? *engine : *m_sides.front()).workspace->OpenDatabase(path);
}

JetOrElseWorkspace::Side* JetOrElseWorkspace::EngineFor(JetFormat format) {
  for (const char* progId : EnginesFor(format)) {
    const auto known = m_engines.find(progId);
    if (known != m_engines.end()) return known->second;
    auto workspace = MakeEngine(progId);
    if (workspace == nullptr) continue;
    Side& side = *m_sides.emplace_back(std::make_unique<Side>(Side{std::move(workspace)}));
    m_engines[progId] = &side;
    Begin(side);  // a transaction covers what is opened while it runs
    return &side;
  }
  return nullptr;
}

void JetOrElseWorkspace::Begin(Side& side) {
  for (; side.depth < m_depth; ++side.depth) side.workspace->BeginTrans();
}

void JetOrElseWorkspace::BeginTrans() {
  ++m_depth;
  try {
    for (const auto& side : m_sides) Begin(*side);
  } catch (const Error&) {
    Rollback();
    throw;
  }
}

void JetOrElseWorkspace::CommitTrans() { End(&Workspace::CommitTrans); }

void JetOrElseWorkspace::Rollback() { End(&Workspace::Rollback); }

void JetOrElseWorkspace::End(void (Workspace::*end)()) {
  if (m_depth == 0) return (m_sides.front()->workspace.get()->*end)();  // whose error it is
  for (const auto& side : m_sides) {
    if (side->depth != m_depth) continue;
    (side->workspace.get()->*end)();
    --side->depth;
  }
  --m_depth;
}

}  // namespace hearthmake::dao
