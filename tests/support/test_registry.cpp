#include "support/test_registry.h"

#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include "env/file_registry_posix.h"
#include "support/test_env.h"
#endif

namespace quillet::testing {

#ifdef _WIN32
namespace {
const char* const kScratchParent = "Software\\Quillet tests";

// A failure here must stop the test: it would otherwise work on the person's own keys.
void Check(LONG rc, const std::string& what) {
    if (rc != ERROR_SUCCESS) throw std::runtime_error(what + " failed with registry error " + std::to_string(rc));
}

HKEY MakeKey(HKEY parent, const std::string& name, DWORD options) {
    HKEY key = nullptr;
    Check(RegCreateKeyExA(parent, name.c_str(), 0, nullptr, options, KEY_ALL_ACCESS, nullptr, &key, nullptr),
          "creating the scratch key " + name);
    return key;
}
}  // namespace

TestRegistry::TestRegistry(const std::string&, Store store) : inner_(MakePlatformRegistry()) {
    static unsigned count = 0;
    scratch_ = std::string(kScratchParent) + "\\" + std::to_string(GetCurrentProcessId()) + "-" +
               std::to_string(++count);
    RegDeleteTreeA(HKEY_CURRENT_USER, scratch_.c_str());
    const DWORD options = store == Store::Refusing ? REG_OPTION_VOLATILE : REG_OPTION_NON_VOLATILE;
    // The scratch key itself lasts, so that a volatile store never makes its parents volatile.
    HKEY scratch = MakeKey(HKEY_CURRENT_USER, scratch_, REG_OPTION_NON_VOLATILE);
    user_ = MakeKey(scratch, "User", options);
    classes_ = MakeKey(static_cast<HKEY>(user_), "Classes", options);
    RegCloseKey(scratch);
}

TestRegistry::~TestRegistry() {
    RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(static_cast<HKEY>(classes_));
    RegCloseKey(static_cast<HKEY>(user_));
    RegDeleteTreeA(HKEY_CURRENT_USER, scratch_.c_str());
    RegDeleteKeyA(HKEY_CURRENT_USER, kScratchParent);  // only once it is empty
}

RegistryBackend& TestRegistry::Enter() {
    Check(RegOverridePredefKey(HKEY_CURRENT_USER, static_cast<HKEY>(user_)), "redirecting a root key");
    Check(RegOverridePredefKey(HKEY_CLASSES_ROOT, static_cast<HKEY>(classes_)), "redirecting a root key");
    return *inner_;
}
#else
namespace {
std::string StoreFolder(const std::string& hiveFolder, TestRegistry::Store store) {
    if (store == TestRegistry::Store::Usable) return hiveFolder;
    WriteBytes(hiveFolder + ".blocker", "a file where a folder should be");
    return hiveFolder + ".blocker/hive";
}
}  // namespace

TestRegistry::TestRegistry(const std::string& hiveFolder, Store store)
    : inner_(std::make_unique<FileRegistry>(StoreFolder(hiveFolder, store))) {}

TestRegistry::~TestRegistry() = default;

RegistryBackend& TestRegistry::Enter() {
    return *inner_;
}
#endif

}  // namespace quillet::testing
