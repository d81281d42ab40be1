#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/ComHost.hpp"

namespace hearthmake::com {

// A copy of the server in a folder of its own, which holds its Build.mdb too, loaded as COM would load it.
class Server {
 public:
  Server() {
    static int s_next = 0;
    if (s_next == 0) RemoveOld();
    m_folder = std::filesystem::temp_directory_path() /
               (kPrefix + std::to_string(GetTickCount64()) + "-" + std::to_string(s_next++));
    std::filesystem::create_directories(m_folder);
    std::filesystem::copy_file(SERVER_FILE, Path());
    m_module = LoadLibraryW(Path().c_str());
    EXPECT_NE(m_module, nullptr) << GetLastError();
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server() {
    EXPECT_EQ(CanUnload(), S_OK) << "objects are left";
    FreeLibrary(m_module);
    // The module itself stays until the thread ends: objects of the thread may have code in it to run then.
    for (const auto& entry : std::filesystem::directory_iterator(m_folder)) {
      std::error_code ignored;
      std::filesystem::remove(entry.path(), ignored);
    }
  }

  // Those that earlier processes left.
  static void RemoveOld() {
    const std::string prefix = kPrefix;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
      if (entry.path().filename().string().substr(0, prefix.size()) != prefix) continue;
      std::error_code ignored;
      std::filesystem::remove_all(entry.path(), ignored);
    }
  }

  const std::filesystem::path& Folder() const { return m_folder; }
  std::filesystem::path Path() const { return m_folder / "Hearthmake.dll"; }
  HRESULT CanUnload() const { return Export<HRESULT(STDMETHODCALLTYPE*)()>("DllCanUnloadNow")(); }

  HRESULT GetClass(REFCLSID id, REFIID iid, void** object) const {
    return Export<HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject")(id, iid,
                                                                                              object);
  }
  // A new object; null when it can't be created.
  template <class T>
  automation::Ref<T> Create(REFCLSID id, REFIID iid) const {
    void* found = nullptr;
    if (FAILED(GetClass(id, IID_IClassFactory, &found))) return nullptr;
    const auto factory = automation::Ref<IClassFactory>::Adopt(static_cast<IClassFactory*>(found));
    void* made = nullptr;
    const HRESULT result = factory->CreateInstance(nullptr, iid, &made);
    EXPECT_EQ(result, S_OK);
    return automation::Ref<T>::Adopt(static_cast<T*>(made));
  }

  template <class F>
  F Export(const char* name) const {
    return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
  }

  // A standard project, which the tests' compiler compiles.
  std::string AddProjectFile(const std::string& name) const {
    const std::filesystem::path path = m_folder / (name + ".vbp");
    std::ofstream file(path, std::ios::binary);
    file << "Type=Exe\r\nStartup=\"Sub Main\"\r\nExeName32=\"" << name << ".exe\"\r\nName=\"" << name
         << "\"\r\nMajorVer=1\r\nMinorVer=0\r\nRevisionVer=0\r\n";
    return path.string();
  }

 private:
  static constexpr const char* kPrefix = "hearthmake-com-";

  std::filesystem::path m_folder;
  HMODULE m_module = nullptr;
};

}  // namespace hearthmake::com
