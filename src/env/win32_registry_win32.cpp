// The registry on Windows: the ANSI advapi32 calls. Library text is UTF-8, so names and
// texts are converted to the system's ANSI code page on the way in and back on the way out.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <cstring>

#include "env/registry_backend.h"

namespace quillet {

namespace {

std::string Convert(const std::string& text, UINT from, UINT to) {
    if (text.empty()) return {};
    int wideSize =
        MultiByteToWideChar(from, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(wideSize), L'\0');
    MultiByteToWideChar(from, 0, text.data(), static_cast<int>(text.size()), wide.data(), wideSize);
    int size = WideCharToMultiByte(to, 0, wide.data(), wideSize, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(to, 0, wide.data(), wideSize, out.data(), size, nullptr, nullptr);
    return out;
}

std::string ToAnsi(const std::string& utf8) {
    return Convert(utf8, CP_UTF8, CP_ACP);
}
std::string FromAnsi(const std::string& ansi) {
    return Convert(ansi, CP_ACP, CP_UTF8);
}

// The predefined roots are sign-extended 32-bit values.
HKEY Root(RootKey root) {
    return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG_PTR>(root)));
}
HKEY Key(KeyHandle key) {
    return reinterpret_cast<HKEY>(key);
}
KeyHandle Handle(HKEY key) {
    return reinterpret_cast<KeyHandle>(key);
}

bool IsText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

class Win32Registry : public RegistryBackend {
  public:
    long OpenKey(RootKey root, const std::string& subKey, std::uint32_t access,
                 KeyHandle& key) override {
        HKEY opened = nullptr;
        LONG rc = RegOpenKeyExA(Root(root), ToAnsi(subKey).c_str(), 0, access, &opened);
        key = Handle(opened);
        return rc;
    }

    long CreateKey(RootKey root, const std::string& subKey, std::uint32_t access, KeyHandle& key,
                   std::uint32_t& disposition) override {
        HKEY created = nullptr;
        DWORD how = 0;
        LONG rc = RegCreateKeyExA(Root(root), ToAnsi(subKey).c_str(), 0, nullptr,
                                  REG_OPTION_NON_VOLATILE, access, nullptr, &created, &how);
        key = Handle(created);
        disposition = how;
        return rc;
    }

    long QueryValue(KeyHandle key, const std::string& name, std::uint32_t& type,
                    unsigned char* data, std::uint32_t& count) override {
        DWORD kind = type, size = count;
        LONG rc = RegQueryValueExA(Key(key), ToAnsi(name).c_str(), nullptr, &kind, data, &size);
        type = kind;
        if (rc != ERROR_SUCCESS || !data || !IsText(kind)) {
            count = size;
            return rc;
        }
        // The text goes back in UTF-8, its terminating zero counted as the registry counted it.
        std::string ansi(reinterpret_cast<const char*>(data), size);
        bool zero = !ansi.empty() && ansi.back() == '\0';
        if (zero) ansi.pop_back();
        std::string utf8 = FromAnsi(ansi);
        auto need = static_cast<std::uint32_t>(utf8.size() + (zero ? 1 : 0));
        bool fits = need <= count;
        count = need;
        if (!fits) return ERROR_MORE_DATA;
        std::memcpy(data, utf8.c_str(), need);
        return ERROR_SUCCESS;
    }

    long SetValue(KeyHandle key, const std::string& name, std::uint32_t type,
                  const unsigned char* data, std::uint32_t count) override {
        if (!IsText(type))
            return RegSetValueExA(Key(key), ToAnsi(name).c_str(), 0, type, data, count);
        std::string text =
            data ? std::string(reinterpret_cast<const char*>(data), count) : std::string();
        if (!text.empty() && text.back() == '\0') text.pop_back();
        std::string ansi = ToAnsi(text);
        // Stored with its terminating zero whether or not the count held it, as the system
        // itself does when a count leaves the zero out of a text that is not empty; so an
        // empty text, too, reads back as it was written and not as a value without bytes.
        return RegSetValueExA(Key(key), ToAnsi(name).c_str(), 0, type,
                              reinterpret_cast<const BYTE*>(ansi.c_str()),
                              static_cast<DWORD>(ansi.size() + 1));
    }

    long CloseKey(KeyHandle key) override { return RegCloseKey(Key(key)); }

    long CreateKeyPlain(RootKey root, const std::string& subKey, KeyHandle& key) override {
        HKEY created = nullptr;
        LONG rc = RegCreateKeyA(Root(root), ToAnsi(subKey).c_str(), &created);
        key = Handle(created);
        return rc;
    }

    long SetDefaultText(KeyHandle key, const std::string& subKey,
                        const std::string& text) override {
        std::string ansi = ToAnsi(text);
        return RegSetValueA(Key(key), ToAnsi(subKey).c_str(), REG_SZ, ansi.c_str(),
                            static_cast<DWORD>(ansi.size()));
    }
};

}  // namespace

std::unique_ptr<RegistryBackend> MakePlatformRegistry() {
    return std::make_unique<Win32Registry>();
}

}  // namespace quillet
