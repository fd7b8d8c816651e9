#pragma once
// The registry on Linux: each root is one text file in the registry-export format (REGEDIT4,
// UTF-8), HKEY_CURRENT_USER.reg and HKEY_CLASSES_ROOT.reg, that a person can read and edit.
// Key and value names ignore case. A call reads the file under a lock on "<file>.lock", unless
// the file is still the one read last (same inode, size and times, and settled since: see
// FileStamp), and a change replaces the file atomically, so that programs sharing the folder
// never lose each other's values. A call that would change nothing writes nothing. A damaged file reads as empty keys: it is renamed
// aside to "<file>.damaged-<time>", never overwritten, and reported once through TakeNotices.
#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "env/file_stamp_posix.h"
#include "env/registry_backend.h"

namespace quillet {

class FileRegistry : public RegistryBackend {
  public:
    // A hive file changed less than `settled` before it was read is read again at the next
    // call: within the file system's clock tick a change could keep its stamp.
    static constexpr std::chrono::seconds kSettled{2};
    explicit FileRegistry(std::string folder, std::chrono::nanoseconds settled = kSettled);
    ~FileRegistry() override;

    long OpenKey(RootKey root, const std::string& subKey, std::uint32_t access,
                 KeyHandle& key) override;
    long CreateKey(RootKey root, const std::string& subKey, std::uint32_t access, KeyHandle& key,
                   std::uint32_t& disposition) override;
    long QueryValue(KeyHandle key, const std::string& name, std::uint32_t& type,
                    unsigned char* data, std::uint32_t& count) override;
    long SetValue(KeyHandle key, const std::string& name, std::uint32_t type,
                  const unsigned char* data, std::uint32_t count) override;
    long CloseKey(KeyHandle key) override;
    long CreateKeyPlain(RootKey root, const std::string& subKey, KeyHandle& key) override;
    long SetDefaultText(KeyHandle key, const std::string& subKey, const std::string& text) override;
    std::vector<std::string> TakeNotices() override;
    // Inside a batch each hive file is locked and read once, at its first use, and written at
    // most once, when the outermost batch ends; other programs wait for the lock meanwhile.
    void BeginBatch() override;
    void EndBatch() override;

    // The hive file of a root, e.g. "<folder>/HKEY_CURRENT_USER.reg".
    std::string HiveFile(RootKey root) const;

    // How often the hive files were read and written (replaced), both roots together.
    struct Traffic {
        int reads = 0;
        int writes = 0;
    };
    const Traffic& traffic() const { return traffic_; }

    struct Hive;  // a hive file as read, defined beside the parser

  private:
    struct OpenedKey {
        RootKey root;
        std::string path;
        std::uint32_t access;
    };
    template <class Change>
    long WithHive(RootKey root, bool mayChange, Change change);
    enum class Load { Loaded, Unreadable, DamagedInPlace };
    Load LoadHive(RootKey root, const std::string& file, bool locked, Hive& hive);
    KeyHandle Remember(RootKey root, std::string path, std::uint32_t access);
    // The key behind `key` when it was opened with `right`; else null, the reason in `rc`.
    const OpenedKey* Opened(KeyHandle key, std::uint32_t right, long& rc) const;

    // The hive as last read from an unchanged, settled file; else null.
    Hive* Known(RootKey root, const std::string& file);

    struct Batched;  // a hive held under its lock for a batch
    // The hive of `root` in the running batch, loaded under its lock at the first use; null
    // when it cannot be (rc says why).
    Batched* InBatch(RootKey root, bool mayChange, long& rc);

    struct Remembered {
        FileStamp stamp;
        std::unique_ptr<Hive> hive;
    };
    std::string folder_;
    std::chrono::nanoseconds settled_;
    std::map<RootKey, Remembered> known_;
    Traffic traffic_;
    int batchDepth_ = 0;
    std::map<RootKey, std::unique_ptr<Batched>> batched_;
    std::map<KeyHandle, OpenedKey> open_;
    KeyHandle next_ = 1;
    std::vector<std::string> notices_;
    std::set<std::string> reportedInPlace_;  // damaged files that could not be set aside
};

// QUILLET_REGISTRY_DIR when set, else $XDG_CONFIG_HOME/Vantorel, else ~/.config/Vantorel.
std::string DefaultRegistryFolder();

}  // namespace quillet
