#include "env/file_registry_posix.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <string_view>
#include <utility>

#include "env/codepage.h"
#include "env/errors.h"
#include "env/files.h"
#include "env/text.h"

namespace quillet {

namespace {

struct RegVal {
    std::string name;  // "" is the key's default value
    std::uint32_t type;
    std::string data;  // a text without its terminating zero
};

struct RegKey {
    std::string path;  // below the root, as first spelled; "" is the root itself
    std::vector<RegVal> values;
};

// Upper case with the separator sorting before every character, so that the map holds the
// keys in tree order: "A", "A\B", "A-C".
std::string SortKey(std::string_view path) {
    std::string k = UCase(path);
    for (char& c : k)
        if (c == '\\') c = '\x01';
    return k;
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view TrimBlanks(std::string_view s) {
    while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
    return s;
}

// Names end up on one line of the file.
bool IsGoodName(std::string_view name) {
    return name.find_first_of(std::string_view("\r\n\0", 3)) == name.npos;
}

// A sub-key path: names separated by "\", none of them empty.
bool IsGoodPath(std::string_view path) {
    if (path.empty()) return true;
    if (!IsGoodName(path) || path.front() == '\\' || path.back() == '\\') return false;
    return path.find("\\\\") == path.npos;
}

std::string JoinKey(const std::string& a, const std::string& b) {
    if (a.empty()) return b;
    return b.empty() ? a : a + "\\" + b;
}

const char* RootName(RootKey root) {
    switch (root) {
        case reg::ClassesRoot:
            return "HKEY_CLASSES_ROOT";
        case reg::CurrentUser:
            return "HKEY_CURRENT_USER";
        default:
            return nullptr;
    }
}

}  // namespace

struct FileRegistry::Hive {
    Hive() { keys[""] = RegKey{}; }
    std::map<std::string, RegKey> keys;

    RegKey* Find(const std::string& path) {
        auto it = keys.find(SortKey(path));
        return it == keys.end() ? nullptr : &it->second;
    }
    // Adds the key and its missing parents; true when the key itself is new.
    bool Add(const std::string& path) {
        bool added = false;
        for (std::size_t cut = 0; cut != std::string::npos;) {
            cut = path.find('\\', cut + 1);
            std::string prefix = path.substr(0, cut);
            added = keys.try_emplace(SortKey(prefix), RegKey{prefix, {}}).second;
        }
        return added;
    }
    void Remove(const std::string& path) {
        std::string k = SortKey(path);
        auto it = keys.lower_bound(k);
        while (it != keys.end() &&
               (it->first == k || StartsWith(it->first, k + '\x01') || k.empty()))
            it = keys.erase(it);
        keys.try_emplace("", RegKey{});
    }
};

namespace {

using Hive = FileRegistry::Hive;

RegVal* FindValue(RegKey& key, std::string_view name) {
    for (auto& v : key.values)
        if (EqualsNoCase(v.name, name)) return &v;
    return nullptr;
}

// A new value goes last, the default value first; a replaced one keeps its place and spelling.
void PutValue(RegKey& key, const std::string& name, std::uint32_t type, std::string data) {
    if (RegVal* v = FindValue(key, name)) {
        v->type = type;
        v->data = std::move(data);
    } else if (name.empty()) {
        key.values.insert(key.values.begin(), RegVal{name, type, std::move(data)});
    } else {
        key.values.push_back(RegVal{name, type, std::move(data)});
    }
}

// Sets a value unless it holds that already; true when it changed.
bool Assign(RegKey& key, const std::string& name, std::uint32_t type, const std::string& data) {
    RegVal* v = FindValue(key, name);
    if (v && v->type == type && v->data == data) return false;
    PutValue(key, name, type, data);
    return true;
}

void RemoveValue(RegKey& key, std::string_view name) {
    std::erase_if(key.values, [&](const RegVal& v) { return EqualsNoCase(v.name, name); });
}

// ---- Reading the file ----

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// A quoted text starting at s[pos]; "\\" and "\"" are escapes, any other "\" stands for itself.
bool ParseQuoted(std::string_view s, std::size_t& pos, std::string& out) {
    if (pos >= s.size() || s[pos] != '"') return false;
    for (++pos; pos < s.size(); ++pos) {
        char c = s[pos];
        if (c == '"') {
            ++pos;
            return true;
        }
        if (c == '\\' && pos + 1 < s.size() && (s[pos + 1] == '\\' || s[pos + 1] == '"'))
            c = s[++pos];
        out += c;
    }
    return false;
}

// "01,ff,..." with exactly two digits per byte.
bool ParseHexBytes(std::string_view s, std::string& out) {
    s = TrimBlanks(s);
    if (s.empty()) return true;
    for (;;) {
        auto comma = s.find(',');
        std::string_view piece = TrimBlanks(s.substr(0, comma));
        if (piece.size() != 2 || HexDigit(piece[0]) < 0 || HexDigit(piece[1]) < 0) return false;
        out += static_cast<char>(HexDigit(piece[0]) * 16 + HexDigit(piece[1]));
        if (comma == s.npos) return true;
        s.remove_prefix(comma + 1);
    }
}

class HiveParser {
  public:
    HiveParser(const std::string& rootName, Hive& hive) : rootName_(rootName), hive_(hive) {}

    // Fills the hive; on a damaged text returns false with the reason in `why`.
    bool Parse(std::string_view text, std::string& why) {
        if (StartsWith(text, "\xEF\xBB\xBF")) text.remove_prefix(3);
        bool headerSeen = false;
        bool continued = false;
        std::string logical;  // a line with the lines that continue it
        int lineNo = 0, logicalStart = 0;
        while (!text.empty()) {
            auto nl = text.find('\n');
            std::string_view raw = text.substr(0, nl);
            text.remove_prefix(nl == text.npos ? text.size() : nl + 1);
            ++lineNo;
            if (!raw.empty() && raw.back() == '\r') raw.remove_suffix(1);
            if (!continued) {
                logical.clear();
                logicalStart = lineNo;
            }
            logical += DecodeLine(TrimBlanks(raw));
            // A value's bytes may go on over several lines, each but the last ending in "\".
            continued = !logical.empty() && logical.back() == '\\' && logical[0] != '[' &&
                        logical[0] != ';';
            if (continued) {
                logical.pop_back();
                continue;
            }
            if (logical.empty() || (headerSeen && logical[0] == ';')) continue;
            if (!headerSeen) {
                headerSeen =
                    logical == "REGEDIT4" || logical == "Windows Registry Editor Version 5.00";
                if (!headerSeen) break;
            } else if (!Line(logical)) {
                why = "line " + std::to_string(logicalStart) + ": " + problem_;
                return false;
            }
        }
        if (!headerSeen) why = "it does not begin with REGEDIT4";
        if (continued) why = "the file ends inside a value";
        return why.empty();
    }

  private:
    bool Problem(const char* text) {
        problem_ = text;
        return false;
    }

    bool Line(const std::string& line) {
        if (line[0] == '[') {
            if (line.back() != ']') return Problem("the key name is not closed by \"]\"");
            return Section(std::string_view(line).substr(1, line.size() - 2));
        }
        if (line[0] != '"' && line[0] != '@')
            return Problem("this line is neither a key nor a value");
        if (!current_ && !skipping_) return Problem("a value comes before any key");
        return Value(line);
    }

    bool Section(std::string_view name) {
        bool removal = !name.empty() && name[0] == '-';
        if (removal) name.remove_prefix(1);
        std::string path;
        if (EqualsNoCase(name, rootName_)) {
            path.clear();
        } else if (StartsWithNoCase(name, rootName_ + "\\")) {
            path = name.substr(rootName_.size() + 1);
        } else {
            return Problem("the key lies outside this file's root");
        }
        if (!IsGoodPath(path)) return Problem("the key name has an empty part");
        skipping_ = removal;
        current_ = nullptr;
        if (removal) {
            hive_.Remove(path);
        } else {
            hive_.Add(path);
            current_ = hive_.Find(path);
        }
        return true;
    }

    bool Value(std::string_view line) {
        std::string name;
        std::size_t pos = 1;
        if (line[0] == '"') {
            pos = 0;
            if (!ParseQuoted(line, pos, name))
                return Problem("the value name is not closed by a quote");
        }
        while (pos < line.size() && IsBlank(line[pos])) ++pos;
        if (pos >= line.size() || line[pos] != '=')
            return Problem("\"=\" is missing after the value name");
        std::string_view data = TrimBlanks(line.substr(pos + 1));
        std::string bytes;
        std::uint32_t type;
        if (data == "-") {
            if (current_) RemoveValue(*current_, name);
            return true;
        }
        if (!data.empty() && data[0] == '"') {
            std::size_t end = 0;
            if (!ParseQuoted(data, end, bytes) || end != data.size())
                return Problem("the text is not closed by a quote");
            type = reg::Sz;
        } else if (StartsWithNoCase(data, "dword:")) {
            data.remove_prefix(6);
            std::uint32_t n = 0;
            if (data.size() != 8) return Problem("a dword needs eight hex digits");
            for (char c : data) {
                if (HexDigit(c) < 0) return Problem("a dword needs eight hex digits");
                n = n * 16 + static_cast<std::uint32_t>(HexDigit(c));
            }
            for (int i = 0; i < 4; ++i) bytes += static_cast<char>(n >> (8 * i));
            type = reg::Dword;
        } else if (!ParseHexValue(data, type, bytes)) {
            return Problem("the value is neither text, dword nor hex bytes");
        }
        if (current_) PutValue(*current_, name, type, std::move(bytes));
        return true;
    }

    // "hex:01,02" (binary) or "hex(N):..." (any type N, in hex digits).
    static bool ParseHexValue(std::string_view data, std::uint32_t& type, std::string& bytes) {
        type = reg::Binary;
        if (StartsWithNoCase(data, "hex(")) {
            auto close = data.find("):");
            if (close == data.npos || close == 4 || close > 12) return false;
            type = 0;
            for (char c : data.substr(4, close - 4)) {
                if (HexDigit(c) < 0) return false;
                type = type * 16 + static_cast<std::uint32_t>(HexDigit(c));
            }
            data.remove_prefix(close + 2);
        } else if (StartsWithNoCase(data, "hex:")) {
            data.remove_prefix(4);
        } else {
            return false;
        }
        if (!ParseHexBytes(data, bytes)) return false;
        if (type == reg::Sz && !bytes.empty() && bytes.back() == '\0') bytes.pop_back();
        return true;
    }

    const std::string& rootName_;
    Hive& hive_;
    RegKey* current_ = nullptr;
    bool skipping_ = false;  // inside a section that removes its key
    std::string problem_;
};

// ---- Writing the file ----

std::string Quote(std::string_view s) {
    std::string out = "\"";
    for (char c : s) {
        if (c == '\\' || c == '"') out += '\\';
        out += c;
    }
    return out + "\"";
}

// Texts that fit between quotes on one line; others are written as hex(1) bytes.
bool IsPlainText(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c) < 0x20 && c != '\t') return false;
    return IsValidUtf8(s);
}

// Byte lists are wrapped before column 80, as registry exports are.
std::string HexLine(std::string line, std::string_view bytes) {
    std::size_t column = line.size();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (column + 3 > 79) {
            line += "\\\n  ";
            column = 2;
        }
        char piece[4];
        std::snprintf(piece, sizeof piece, i + 1 < bytes.size() ? "%02x," : "%02x",
                      static_cast<unsigned char>(bytes[i]));
        line += piece;
        column += 3;
    }
    return line;
}

std::string FormatValue(const RegVal& v) {
    std::string lead = (v.name.empty() ? std::string("@") : Quote(v.name)) + "=";
    if (v.type == reg::Sz && IsPlainText(v.data)) return lead + Quote(v.data);
    if (v.type == reg::Dword && v.data.size() == 4) {
        std::uint32_t n = 0;
        for (int i = 3; i >= 0; --i)
            n = n << 8 | static_cast<unsigned char>(v.data[static_cast<std::size_t>(i)]);
        char text[16];
        std::snprintf(text, sizeof text, "dword:%08x", n);
        return lead + text;
    }
    if (v.type == reg::Binary) return HexLine(lead + "hex:", v.data);
    char typeText[24];
    std::snprintf(typeText, sizeof typeText, "hex(%x):", v.type);
    return HexLine(lead + typeText, v.type == reg::Sz ? v.data + '\0' : v.data);
}

// Keys are written in tree order; a key without values appears only when it has no sub-keys,
// the others being implied by their sub-keys.
std::string FormatHive(const Hive& hive, const std::string& rootName) {
    std::string out = "REGEDIT4\n\n";
    for (auto it = hive.keys.begin(); it != hive.keys.end(); ++it) {
        const RegKey& key = it->second;
        auto next = std::next(it);
        bool hasSubKeys = next != hive.keys.end() &&
                          (key.path.empty() || StartsWith(next->first, it->first + '\x01'));
        if (key.values.empty() && (hasSubKeys || key.path.empty())) continue;
        out += "[" + rootName + (key.path.empty() ? "" : "\\" + key.path) + "]\n";
        for (const RegVal& v : key.values) out += FormatValue(v) + "\n";
        out += "\n";
    }
    return out;
}

// ---- The file lock ----

class LockFile {
  public:
    explicit LockFile(const std::string& path)
        : fd_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        while (fd_ >= 0 && ::flock(fd_, LOCK_EX) != 0) {
            if (errno == EINTR) continue;
            ::close(fd_);
            fd_ = -1;
        }
    }
    ~LockFile() {
        if (fd_ >= 0) ::close(fd_);
    }
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;
    bool held() const { return fd_ >= 0; }

  private:
    int fd_;
};

bool Exists(const std::string& path) {
    struct stat st {};
    return ::lstat(path.c_str(), &st) == 0;
}

// "<file>.damaged-20260116-013300", with "-2", "-3", ... when that name is taken.
std::string FreeDamagedName(const std::string& file) {
    std::time_t now = std::time(nullptr);
    std::tm t{};
    localtime_r(&now, &t);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y%m%d-%H%M%S", &t);
    std::string base = file + ".damaged-" + stamp;
    std::string name = base;
    for (int n = 2; Exists(name); ++n) name = base + "-" + std::to_string(n);
    return name;
}

}  // namespace

FileRegistry::FileRegistry(std::string folder, std::chrono::nanoseconds settled)
    : folder_(std::move(folder)), settled_(settled) {}

struct FileRegistry::Batched {
    std::unique_ptr<LockFile> lock;
    Hive hive;
    Load load = Load::Loaded;
    bool changed = false;
};

FileRegistry::~FileRegistry() = default;

void FileRegistry::BeginBatch() {
    ++batchDepth_;
}

void FileRegistry::EndBatch() {
    if (batchDepth_ == 0 || --batchDepth_ > 0) return;
    for (auto& [root, b] : batched_) {
        if (!b->changed) continue;
        known_.erase(root);
        // The calls have answered already; a write that fails leaves the file as it was, as a
        // failed change outside a batch does.
        try {
            ++traffic_.writes;
            WriteFileAtomically(HiveFile(root), FormatHive(b->hive, RootName(root)));
        } catch (const RuntimeError&) {
        }
    }
    batched_.clear();  // and with it the locks
}

FileRegistry::Batched* FileRegistry::InBatch(RootKey root, bool mayChange, long& rc) {
    std::unique_ptr<Batched>& slot = batched_[root];
    if (!slot) {
        slot = std::make_unique<Batched>();
        const std::string file = HiveFile(root);
        std::error_code ec;
        std::filesystem::create_directories(folder_, ec);
        slot->lock = std::make_unique<LockFile>(file + ".lock");
        slot->load = LoadHive(root, file, slot->lock->held(), slot->hive);
    }
    const Batched& b = *slot;
    rc = b.load == Load::Unreadable                                                 ? reg::AccessDenied
         : mayChange && (!b.lock->held() || b.load == Load::DamagedInPlace) ? reg::AccessDenied
                                                                                    : reg::Success;
    return rc == reg::Success ? slot.get() : nullptr;
}

FileRegistry::Hive* FileRegistry::Known(RootKey root, const std::string& file) {
    auto it = known_.find(root);
    if (it == known_.end()) return nullptr;
    const auto now = FileStamp::Of(file);
    return now && *now == it->second.stamp ? it->second.hive.get() : nullptr;
}

std::string FileRegistry::HiveFile(RootKey root) const {
    const char* name = RootName(root);
    return name ? folder_ + "/" + name + ".reg" : std::string();
}

std::vector<std::string> FileRegistry::TakeNotices() {
    return std::exchange(notices_, {});
}

const FileRegistry::OpenedKey* FileRegistry::Opened(KeyHandle key, std::uint32_t right,
                                                    long& rc) const {
    auto it = open_.find(key);
    rc = it == open_.end()             ? reg::InvalidHandle
         : (it->second.access & right) ? reg::Success
                                       : reg::AccessDenied;
    return rc == reg::Success ? &it->second : nullptr;
}

KeyHandle FileRegistry::Remember(RootKey root, std::string path, std::uint32_t access) {
    open_[next_] = OpenedKey{root, std::move(path), access};
    return next_++;
}

// Reads the hive file into `hive`. A damaged file is set aside when we hold the lock, and
// reported once; the hive then starts empty.
FileRegistry::Load FileRegistry::LoadHive(RootKey root, const std::string& file, bool locked,
                                          Hive& hive) {
    const std::string rootName = RootName(root);
    // Taken before reading: a change after the stamp gives a new stamp, so what was read is
    // never newer than the stamp says.
    const auto readAt = std::chrono::system_clock::now();
    const auto stamp = FileStamp::Of(file);
    std::string text;
    try {
        ++traffic_.reads;
        text = ReadWholeFile(file);
    } catch (const RuntimeError& e) {
        return e.number() == err::FileNotFound ? Load::Loaded : Load::Unreadable;
    }
    std::string why;
    if (HiveParser(rootName, hive).Parse(text, why)) {
        if (stamp && stamp->SettledBy(readAt, settled_))
            known_[root] = Remembered{*stamp, std::make_unique<Hive>(hive)};
        return Load::Loaded;
    }
    hive = Hive();
    std::string aside = FreeDamagedName(file);
    if (locked && ::rename(file.c_str(), aside.c_str()) == 0) {
        notices_.push_back("The settings file " + file + " is damaged (" + why +
                           "). It has been kept as " + aside + " and the settings start afresh.");
        return Load::Loaded;
    }
    if (reportedInPlace_.insert(file).second)
        notices_.push_back(
            "The settings file " + file + " is damaged (" + why +
            ") and could not be set aside. Its settings are not used, and it is left unchanged.");
    return Load::DamagedInPlace;
}

// Runs `change` on the hive as it is on disk now, under the lock, and writes the hive back
// when `change` says it changed it. Reads of a folder where no lock can be taken go on
// without one. While the file is the one read last, the hive in memory answers: reads and
// changes that change nothing then take neither the lock nor the file.
template <class Change>
long FileRegistry::WithHive(RootKey root, bool mayChange, Change change) {
    const char* rootName = RootName(root);
    if (!rootName) return reg::InvalidHandle;
    std::string file = HiveFile(root);
    bool changed = false;
    if (batchDepth_ > 0) {
        long rc;
        Batched* b = InBatch(root, mayChange, rc);
        if (!b) return rc;
        rc = change(b->hive, changed);
        if (rc == reg::Success && changed) b->changed = true;
        return rc;
    }
    if (Hive* known = Known(root, file)) {
        if (!mayChange) return change(*known, changed);
        Hive trial = *known;
        long rc = change(trial, changed);
        if (rc != reg::Success || !changed) return rc;
        changed = false;  // the change is made again below, on the file as it is under the lock
    }
    known_.erase(root);
    Hive hive;
    if (!mayChange && !Exists(file)) return change(hive, changed);

    std::error_code ec;
    if (mayChange) std::filesystem::create_directories(folder_, ec);
    LockFile lock(file + ".lock");
    if (mayChange && !lock.held()) return reg::AccessDenied;
    switch (LoadHive(root, file, lock.held(), hive)) {
        case Load::Loaded:
            break;
        case Load::Unreadable:
            return reg::AccessDenied;
        case Load::DamagedInPlace:
            if (mayChange) return reg::AccessDenied;
            break;
    }
    long rc = change(hive, changed);
    if (rc != reg::Success || !changed) return rc;
    known_.erase(root);  // what LoadHive kept is about to be replaced
    try {
        ++traffic_.writes;
        WriteFileAtomically(file, FormatHive(hive, rootName));
    } catch (const RuntimeError&) {
        return reg::AccessDenied;
    }
    return rc;
}

long FileRegistry::OpenKey(RootKey root, const std::string& subKey, std::uint32_t access,
                           KeyHandle& key) {
    if (!IsGoodPath(subKey)) return reg::BadPathname;
    long rc = WithHive(root, false, [&](Hive& hive, bool&) {
        return hive.Find(subKey) ? reg::Success : reg::FileNotFound;
    });
    if (rc == reg::Success) key = Remember(root, subKey, access);
    return rc;
}

long FileRegistry::CreateKey(RootKey root, const std::string& subKey, std::uint32_t access,
                             KeyHandle& key, std::uint32_t& disposition) {
    if (!IsGoodPath(subKey)) return reg::BadPathname;
    long rc = WithHive(root, true, [&](Hive& hive, bool& changed) {
        changed = hive.Add(subKey);
        disposition = changed ? reg::CreatedNewKey : reg::OpenedExistingKey;
        return reg::Success;
    });
    if (rc == reg::Success) key = Remember(root, subKey, access);
    return rc;
}

long FileRegistry::CreateKeyPlain(RootKey root, const std::string& subKey, KeyHandle& key) {
    std::uint32_t disposition = 0;
    return CreateKey(root, subKey, reg::KeyAllAccess, key, disposition);
}

long FileRegistry::QueryValue(KeyHandle key, const std::string& name, std::uint32_t& type,
                              unsigned char* data, std::uint32_t& count) {
    long rc;
    const OpenedKey* k = Opened(key, reg::QueryValueRight, rc);
    if (!k) return rc;
    return WithHive(k->root, false, [&](Hive& hive, bool&) {
        RegKey* found = hive.Find(k->path);
        if (!found) return reg::KeyDeleted;
        RegVal* v = FindValue(*found, name);
        if (!v) return reg::FileNotFound;
        std::string bytes = v->type == reg::Sz ? v->data + '\0' : v->data;
        type = v->type;
        auto need = static_cast<std::uint32_t>(bytes.size());
        bool fits = need <= count;
        count = need;
        if (!data) return reg::Success;
        if (!fits) return reg::MoreData;
        std::memcpy(data, bytes.data(), bytes.size());
        return reg::Success;
    });
}

long FileRegistry::SetValue(KeyHandle key, const std::string& name, std::uint32_t type,
                            const unsigned char* data, std::uint32_t count) {
    long rc;
    const OpenedKey* k = Opened(key, reg::SetValueRight, rc);
    if (!k) return rc;
    if (!IsGoodName(name)) return reg::BadPathname;
    std::string bytes =
        data ? std::string(reinterpret_cast<const char*>(data), count) : std::string();
    if (type == reg::Sz && !bytes.empty() && bytes.back() == '\0') bytes.pop_back();
    return WithHive(k->root, true, [&](Hive& hive, bool& changed) {
        RegKey* found = hive.Find(k->path);
        if (!found) return reg::KeyDeleted;
        changed = Assign(*found, name, type, bytes);
        return reg::Success;
    });
}

long FileRegistry::SetDefaultText(KeyHandle key, const std::string& subKey,
                                  const std::string& text) {
    long rc;
    const OpenedKey* k = Opened(key, reg::SetValueRight, rc);
    if (!k) return rc;
    if (!IsGoodPath(subKey)) return reg::BadPathname;
    std::string path = JoinKey(k->path, subKey);
    return WithHive(k->root, true, [&](Hive& hive, bool& changed) {
        if (!hive.Find(k->path)) return reg::KeyDeleted;
        changed = hive.Add(path);
        changed = Assign(*hive.Find(path), "", reg::Sz, text) || changed;
        return reg::Success;
    });
}

long FileRegistry::CloseKey(KeyHandle key) {
    return open_.erase(key) ? reg::Success : reg::InvalidHandle;
}

std::string DefaultRegistryFolder() {
    if (const char* dir = std::getenv("QUILLET_REGISTRY_DIR"); dir && *dir) return dir;
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg == '/')
        return std::string(xdg) + "/Vantorel";
    const char* home = std::getenv("HOME");
    if (!home || !*home) {
        const passwd* pw = ::getpwuid(::getuid());
        home = pw ? pw->pw_dir : "/tmp";
    }
    return std::string(home) + "/.config/Vantorel";
}

std::unique_ptr<RegistryBackend> MakePlatformRegistry() {
    return std::make_unique<FileRegistry>(DefaultRegistryFolder());
}

}  // namespace quillet
