#pragma once
// The registry a test works on. Linux: a file hive in the given folder. Windows: the system's
// own registry, with HKEY_CURRENT_USER and HKEY_CLASSES_ROOT redirected, on every call, into
// a scratch key of this object, so that no test reads or changes the person's settings or
// file types and several stores can be used side by side.
#include <memory>
#include <string>

#include "env/registry_backend.h"

namespace quillet::testing {

class TestRegistry : public RegistryBackend {
  public:
    // A refusing store cannot create any key: its folder lies under a file (Linux), its
    // scratch key is volatile and so takes no lasting sub-keys (Windows).
    enum class Store { Usable, Refusing };
    explicit TestRegistry(const std::string& hiveFolder, Store store = Store::Usable);
    ~TestRegistry() override;
    TestRegistry(const TestRegistry&) = delete;
    TestRegistry& operator=(const TestRegistry&) = delete;

    long OpenKey(RootKey root, const std::string& subKey, std::uint32_t access,
                 KeyHandle& key) override {
        return Enter().OpenKey(root, subKey, access, key);
    }
    long CreateKey(RootKey root, const std::string& subKey, std::uint32_t access, KeyHandle& key,
                   std::uint32_t& disposition) override {
        return Enter().CreateKey(root, subKey, access, key, disposition);
    }
    long QueryValue(KeyHandle key, const std::string& name, std::uint32_t& type,
                    unsigned char* data, std::uint32_t& count) override {
        return Enter().QueryValue(key, name, type, data, count);
    }
    long SetValue(KeyHandle key, const std::string& name, std::uint32_t type,
                  const unsigned char* data, std::uint32_t count) override {
        return Enter().SetValue(key, name, type, data, count);
    }
    long CloseKey(KeyHandle key) override { return Enter().CloseKey(key); }
    long CreateKeyPlain(RootKey root, const std::string& subKey, KeyHandle& key) override {
        return Enter().CreateKeyPlain(root, subKey, key);
    }
    long SetDefaultText(KeyHandle key, const std::string& subKey,
                        const std::string& text) override {
        return Enter().SetDefaultText(key, subKey, text);
    }
    std::vector<std::string> TakeNotices() override { return Enter().TakeNotices(); }
    void BeginBatch() override { Enter().BeginBatch(); }
    void EndBatch() override { Enter().EndBatch(); }

    // Windows: makes the two roots this store's for the system's own calls too, until another
    // store is used.
    RegistryBackend& Enter();

  private:
    std::unique_ptr<RegistryBackend> inner_;
    std::string scratch_;  // Windows: the scratch key under the real HKEY_CURRENT_USER
    void* user_ = nullptr;
    void* classes_ = nullptr;
};

}  // namespace quillet::testing
