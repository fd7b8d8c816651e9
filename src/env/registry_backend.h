#pragma once
// The registry's primitive calls, shaped after the ANSI advapi32 calls so that the Windows
// back end passes them straight through and the Linux file hive behaves the same way.
// Results are the registry's own result codes (reg::Success, reg::FileNotFound, ...).
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quillet {

// A root key by the 32-bit value of its predefined handle.
using RootKey = std::int32_t;
// An open key; 0 is no key.
using KeyHandle = std::uintptr_t;

namespace reg {
inline constexpr RootKey ClassesRoot = INT32_MIN;  // 0x80000000
inline constexpr RootKey CurrentUser = INT32_MIN + 1;

inline constexpr std::uint32_t Sz = 1;
inline constexpr std::uint32_t Binary = 3;
inline constexpr std::uint32_t Dword = 4;

inline constexpr std::uint32_t QueryValueRight = 0x0001;
inline constexpr std::uint32_t SetValueRight = 0x0002;
inline constexpr std::uint32_t KeyRead = 0x20019;
inline constexpr std::uint32_t KeyWrite = 0x20006;
inline constexpr std::uint32_t KeyAllAccess = 0xF003F;

inline constexpr std::uint32_t CreatedNewKey = 1;
inline constexpr std::uint32_t OpenedExistingKey = 2;

inline constexpr long Success = 0;
inline constexpr long FileNotFound = 2;
inline constexpr long AccessDenied = 5;
inline constexpr long InvalidHandle = 6;
inline constexpr long BadPathname = 161;
inline constexpr long MoreData = 234;
inline constexpr long KeyDeleted = 1018;
}  // namespace reg

class RegistryBackend {
  public:
    virtual ~RegistryBackend() = default;

    // RegOpenKeyExA: opens root\subKey with the given access rights.
    virtual long OpenKey(RootKey root, const std::string& subKey, std::uint32_t access,
                         KeyHandle& key) = 0;
    // RegCreateKeyExA: creates root\subKey and its missing parents, or opens it;
    // `disposition` tells which (reg::CreatedNewKey, reg::OpenedExistingKey).
    virtual long CreateKey(RootKey root, const std::string& subKey, std::uint32_t access,
                           KeyHandle& key, std::uint32_t& disposition) = 0;
    // RegQueryValueExA: `count` holds the buffer's size on entry and the value's size on
    // return; a text comes back with its terminating zero counted. A buffer that is too
    // small gives reg::MoreData.
    virtual long QueryValue(KeyHandle key, const std::string& name, std::uint32_t& type,
                            unsigned char* data, std::uint32_t& count) = 0;
    // RegSetValueExA.
    virtual long SetValue(KeyHandle key, const std::string& name, std::uint32_t type,
                          const unsigned char* data, std::uint32_t count) = 0;
    // RegCloseKey.
    virtual long CloseKey(KeyHandle key) = 0;

    // RegCreateKeyA: creates or opens root\subKey with full access.
    virtual long CreateKeyPlain(RootKey root, const std::string& subKey, KeyHandle& key) = 0;
    // RegSetValueA: sets the default text of key\subKey (of the key itself when subKey is
    // empty), creating subKey when it is missing.
    virtual long SetDefaultText(KeyHandle key, const std::string& subKey,
                                const std::string& text) = 0;

    // Messages about the store itself (a damaged file set aside, ...) that nobody has shown
    // yet; each is handed out once.
    virtual std::vector<std::string> TakeNotices() { return {}; }

    // Between these, a store that replaces a whole file on every change (the Linux hive) may
    // make the changes in memory and write each file once at the end, with one sync. Batches
    // nest; results of the calls inside are as without a batch.
    virtual void BeginBatch() {}
    virtual void EndBatch() {}
};

// A batch for as long as it lives. Hold none while a message box may show: a store may keep
// other programs waiting meanwhile.
class RegistryBatch {
  public:
    explicit RegistryBatch(RegistryBackend& registry) : registry_(registry) { registry_.BeginBatch(); }
    ~RegistryBatch() { registry_.EndBatch(); }
    RegistryBatch(const RegistryBatch&) = delete;
    RegistryBatch& operator=(const RegistryBatch&) = delete;

  private:
    RegistryBackend& registry_;
};

// The registry of the platform: advapi32 on Windows, the file hive elsewhere.
std::unique_ptr<RegistryBackend> MakePlatformRegistry();

}  // namespace quillet
